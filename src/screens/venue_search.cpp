#include "screens/venue_search.h"

#include "screens/controls.h"

namespace lorvane::screens {

using namespace Qt::StringLiterals;

namespace {

// Appends one criterion: its form for a filter with text, or in place of an
// empty one its other form; then the value and the closing text.
void addCriterion(QString& filter, const SearchForms::Form& form, const QString& value) {
    if (!filter.trimmed().isEmpty()) {
        filter += QLatin1String(form.whenText);
    } else {
        filter = QLatin1String(form.whenEmpty);
    }
    filter += value + QLatin1String(form.closing);
}

QString collectionInPeriod(const FrameCriteria& c) {
    return u" al.CodLocale IN (SELECT CodLocale FROM NoteIncassi WHERE DataIncasso>=#"_s +
           sqlDate(c.dallaData) + u"#  AND DataIncasso<=#"_s + sqlDate(c.allaData) + u"#)"_s;
}

}  // namespace

const SearchForms& referenceSearchForms() {
    static const SearchForms forms{
        "SELECT * FROM AnagraficaLocali al ",
        " WHERE al.sospeso = 0 ",
        {" AND al.Insegna like '%", " WHERE al.Insegna like '%", "%'"},
        {" AND al.Citta like '%", " WHERE al.Citta like '%", "%'"},
        {" AND al.codAgente = '", " WHERE al.codAgente = '", "'"},
        {" AND al.Provincia = '", " WHERE al.Provincia = '", "'"},
        {" AND al.codlocale IN (SELECT codLocale FROM MagSchede WHERE CodConcessionario = '",
         " WHERE al.codLocale IN (SELECT codlocale FROM magschede WHERE CodConcessionario = '",
         "') "},
        {" AND al.Codzona='", " WHERE al.Codzona='", "' "},
        collectionInPeriod,
    };
    return forms;
}

QString sqlRicercaLocali(const FrameCriteria& c, const SearchForms& forms) {
    QString filter;
    if (!c.sospesi) filter = QLatin1String(forms.notSuspended);
    if (!c.nomeLocale.isEmpty()) addCriterion(filter, forms.nome, c.nomeLocale);
    if (!c.localita.isEmpty()) addCriterion(filter, forms.localita, c.localita);
    if (!c.agente.isEmpty()) addCriterion(filter, forms.agente, c.agente);
    if (!c.provincia.isEmpty()) addCriterion(filter, forms.provincia, c.provincia);
    if (!c.concessionario.isEmpty()) addCriterion(filter, forms.concessionario, c.concessionario);
    if (!c.zona.isEmpty()) addCriterion(filter, forms.zona, c.zona);
    if (forms.azienda.whenText && !c.azienda.isEmpty())
        addCriterion(filter, forms.azienda, c.azienda);
    if (forms.periodo) addCriterion(filter, {" AND ", " WHERE ", ""}, forms.periodo(c));
    return QLatin1String(forms.head) + filter;
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
