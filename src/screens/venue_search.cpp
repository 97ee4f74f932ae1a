#include "screens/venue_search.h"

#include "screens/controls.h"

namespace lorvane::screens {

using namespace Qt::StringLiterals;

namespace {

// "mm/dd/yyyy", the form dates take between "#" in the statements.
QString sqlDate(const QDate& date) { return date.toString(u"MM/dd/yyyy"_s); }

// Appends one criterion: its AND form after text, its WHERE form in place of none.
void addCriterion(QString& filter, const QString& andForm, const QString& whereForm,
                  const QString& value, const QString& closing) {
    if (!filter.trimmed().isEmpty()) {
        filter += andForm;
    } else {
        filter = whereForm;
    }
    filter += value + closing;
}

}  // namespace

QString sqlRicercaLocali(const FrameCriteria& c) {
    QString filter;
    if (!c.sospesi) filter = u" WHERE al.sospeso = 0 "_s;
    if (!c.nomeLocale.isEmpty())
        addCriterion(filter, u" AND al.Insegna like '%"_s, u" WHERE al.Insegna like '%"_s,
                     c.nomeLocale, u"%'"_s);
    if (!c.localita.isEmpty())
        addCriterion(filter, u" AND al.Citta like '%"_s, u" WHERE al.Citta like '%"_s, c.localita,
                     u"%'"_s);
    if (!c.agente.isEmpty())
        addCriterion(filter, u" AND al.codAgente = '"_s, u" WHERE al.codAgente = '"_s, c.agente,
                     u"'"_s);
    if (!c.provincia.isEmpty())
        addCriterion(filter, u" AND al.Provincia = '"_s, u" WHERE al.Provincia = '"_s, c.provincia,
                     u"'"_s);
    if (!c.concessionario.isEmpty())
        addCriterion(
            filter,
            u" AND al.codlocale IN (SELECT codLocale FROM MagSchede WHERE CodConcessionario = '"_s,
            u" WHERE al.codLocale IN (SELECT codlocale FROM magschede WHERE CodConcessionario = '"_s,
            c.concessionario, u"') "_s);
    if (!c.zona.isEmpty())
        addCriterion(filter, u" AND al.Codzona='"_s, u" WHERE al.Codzona='"_s, c.zona, u"' "_s);
    addCriterion(filter, u" AND "_s, u" WHERE "_s,
                 u" al.CodLocale IN (SELECT CodLocale FROM NoteIncassi WHERE DataIncasso>=#"_s +
                     sqlDate(c.dallaData) + u"#  AND DataIncasso<=#"_s + sqlDate(c.allaData),
                 u"#)"_s);
    return u"SELECT * FROM AnagraficaLocali al "_s + filter;
}

QString venueNodeText(const QString& insegna, const QString& citta) {
    const auto column = [](const QString& text) { return text.left(20).leftJustified(20); };
    return column(insegna) + u" - "_s + column(citta);
}

void addVenueNode(KeyedTree& tree, db::Recordset& venue) {
    const QString code = venue.Fields(u"CodLocale"_s).Value().toString();
    QTreeWidgetItem* node =
        tree.addNode(QLatin1String(KeyedTree::RootKey), QLatin1String(KeyedTree::RootKey) + code,
                     venueNodeText(venue.Fields(u"Insegna"_s).Value().toString(),
                                   venue.Fields(u"Citta"_s).Value().toString()),
                     KeyedTree::NodeImage);
    tree.setTicked(node, true);
}

}  // namespace lorvane::screens
