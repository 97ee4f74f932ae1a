#include "reports/collection/macchine_sql.h"

namespace lorvane::reports {

using namespace Qt::StringLiterals;
using screens::FrameCriteria;
using screens::SearchForms;
using screens::shownDate;
using screens::sqlDate;

namespace {

// The criteria the percentage screens write with the reference's forms.
constexpr SearchForms::Form localita{" AND al.Citta like '%", " WHERE al.Citta like '%", "%'"};
constexpr SearchForms::Form agente{" AND al.codAgente = '", " WHERE al.codAgente = '", "'"};
constexpr SearchForms::Form provincia{" AND al.Provincia = '", " WHERE al.Provincia = '", "'"};
constexpr SearchForms::Form zona{" AND al.Codzona='", " WHERE al.codzona='", "' "};
constexpr char notSuspended[] = " WHERE al.sospeso = 0 ";

// Venues with a collection reading ('INC6') in the period.
QString collectedInPeriod(const FrameCriteria& c) {
    return u"al.CodLocale IN "_s + u"("_s + u" SELECT NoteIncassi.CodLocale"_s +
           u" FROM NoteIncassi INNER JOIN NoteTeste ON NoteIncassi.IdTesta = NoteTeste.id"_s +
           u" WHERE"_s + u" NoteIncassi.DataIncasso >= #"_s + sqlDate(c.dallaData) + u"#"_s +
           u" AND "_s + u" NoteIncassi.DataIncasso <= #"_s + sqlDate(c.allaData) + u"#"_s +
           u" and NoteTeste.codCausale='INC6'"_s + u")"_s;
}

// Venues that hold a machine board, whatever the date.
QString holdingABoard(const FrameCriteria&) {
    return u"al.CodLocale IN "_s + u"("_s + u" SELECT DISTINCT CodLocale FROM MagSchede"_s + u")"_s;
}

// The boards in use, collected as machines are.
QString boardsInUse(const char* space) {
    const QString s = QLatin1String(space);
    return u" WHERE"_s + s + u" Obsoleto=0"_s + s + u" AND"_s + s + u" Venduto=0"_s + s +
           u" AND"_s + s + u" Dismesso=0"_s + s + u" AND"_s + s + u" TipologiaIncasso=6"_s + s;
}

// The venues of the run, or those of the company among them.
QString chosenVenues(const MacchineCriteri& c) {
    QString sql = u" SELECT CodLocale FROM AnagraficaLocali_Tmp"_s;
    if (!c.azienda.isEmpty()) sql += u" WHERE"_s + u" CodiceAzienda = '"_s + c.azienda + u"'"_s;
    return sql;
}

}  // namespace

const SearchForms& percentualiSearchForms() {
    static const SearchForms forms{
        "select * from anagraficalocali al ",
        notSuspended,
        {" AND al.Insegna like '%", " WHERE  al.Insegna like '%", "%'"},
        localita,
        agente,
        provincia,
        {" AND al.codlocale IN (SELECT codLocale FROM MagSchede WHERE CodConcessionario = '",
         " WHERE codLocale al.IN (SELECT codlocale FROM magschede WHERE CodConcessionario = '",
         "') "},
        zona,
        collectedInPeriod,
    };
    return forms;
}

const SearchForms& hopperSearchForms() {
    static const SearchForms forms{
        "SELECT * FROM AnagraficaLocali al ",
        notSuspended,
        {" AND al.Insegna like '%", " WHERE al.Insegna like '%", "%'"},
        localita,
        agente,
        provincia,
        {" AND al.codlocale IN (SELECT codLocale FROM MagSchede WHERE CodConcessionario = '",
         " WHERE al.codLocale IN (SELECT codLocale FROM MagSchede WHERE CodConcessionario = '",
         "') "},
        zona,
        nullptr,
    };
    return forms;
}

const SearchForms& cambiamoneteSearchForms() {
    static const SearchForms forms = [] {
        SearchForms changed = hopperSearchForms();
        changed.periodo = holdingABoard;
        return changed;
    }();
    return forms;
}

QString elencoCodici(const QStringList& codes) {
    QString text;
    QString separator;
    for (const QString& code : codes) {
        text += separator + u"'"_s + QString(code).replace(u"'"_s, u"''"_s) + u"'"_s;
        separator = u","_s;
    }
    return text;
}

QString sqlSchedeGlobali(const MacchineCriteri& c) {
    QString sql = u"SELECT *"_s + u" FROM MagSchede"_s + boardsInUse("") + u" AND"_s +
                  u" UltimoIncasso >= #"_s + sqlDate(c.dallaData) + u"#"_s + u" AND"_s +
                  u" UltimoIncasso <= #"_s + sqlDate(c.allaData) + u"#"_s;
    if (!c.visMag) sql += u" AND"_s + u" CodLocale IS NOT NULL"_s;
    if (!c.azienda.isEmpty()) sql += u" AND"_s + u" CodiceAzienda='"_s + c.azienda + u"'"_s;
    return sql;
}

QString sqlEliminaAltriLocali(const QString& codici) {
    return u"DELETE * FROM MagSchede WHERE (CodLocale NOT IN ("_s + codici +
           u")) AND CodLocale IS NOT NULL"_s;
}

QString sqlLettureParziali(const MacchineCriteri& c) {
    QString sql =
        u" SELECT * "_s +
        u" FROM NoteIncassi INNER JOIN NoteTeste ON NoteIncassi.IdTesta = NoteTeste.id"_s +
        u" WHERE "_s + u" NoteIncassi.DataIncasso >= #"_s + sqlDate(c.dallaData) + u"#"_s +
        u" AND "_s + u" NoteIncassi.DataIncasso <= #"_s + sqlDate(c.allaData) + u"#"_s;
    if (!c.tutti)
        sql += u" AND "_s +
               u" NoteIncassi.CodLocale IN (SELECT CodLocale FROM AnagraficaLocali_Tmp) "_s;
    return sql + u" and NoteTeste.codCausale='INC6' "_s;
}

QString sqlSchedeParziali(const MacchineCriteri& c) {
    QString sql = u" SELECT * "_s + u" FROM MagSchede "_s + boardsInUse(" ");
    if (!c.azienda.isEmpty()) sql += u" AND "_s + u" CodiceAzienda='"_s + c.azienda + u"' "_s;
    sql += u" AND "_s + u" id IN "_s + u" ( "_s + u" SELECT LinkScheda "_s +
           u" FROM NoteIncassi "_s + u" WHERE "_s + u" DataIncasso >= #"_s + sqlDate(c.dallaData) +
           u"#"_s + u" AND "_s + u" DataIncasso <= #"_s + sqlDate(c.allaData) + u"#"_s;
    if (!c.tutti)
        sql += u" AND "_s + u" CodLocale IN (SELECT CodLocale FROM AnagraficaLocali_Tmp) "_s;
    return sql + u" ) "_s;
}

QString parametriPercentuali(const MacchineCriteri& c) {
    QString text = u" incassi dal "_s + shownDate(c.dallaData) + u" al "_s + shownDate(c.allaData);
    if (!c.azienda.isEmpty()) text += u" per l'azienda "_s + c.azienda;
    if (!c.tutti) text += u" con filtro sui locali"_s;
    return u"Parametri di ricerca: "_s + text;
}

QString sqlSchedeHopper(const MacchineCriteri& c) {
    return u"SELECT * FROM MagSchede WHERE"_s + u" CodLocale IN"_s + u" ("_s + chosenVenues(c) +
           u" )"_s;
}

QString sqlUltimiHopper(const MacchineCriteri& c) {
    return u"SELECT ni.*"_s + u" FROM NoteIncassi ni,"_s + u" NoteTeste nt,"_s + u" ("_s +
           u" SELECT MAX(DataIncasso) AS maxData, LinkScheda"_s +
           u" FROM NoteIncassi INNER JOIN NoteTeste ON NoteTeste.id=NoteIncassi.IdTesta WHERE "
           u"NoteTeste.CodCausale = 'CH'"_s +
           u" GROUP BY LinkScheda"_s + u" ) tmp"_s + u" WHERE"_s + u" nt.id = ni.IdTesta"_s +
           u" AND"_s + u" tmp.LinkScheda=ni.LinkScheda"_s + u" AND"_s +
           u" tmp.maxData=ni.DataIncasso"_s + u" AND"_s + u" ni.LinkScheda IN"_s + u" ("_s +
           u" SELECT id FROM MagSchede WHERE"_s + u" CodLocale IN"_s + u" ("_s + chosenVenues(c) +
           u" )"_s + u" )"_s + u" AND"_s + u" nt.CodCausale = 'CH'"_s;
}

QString sqlSchedeCambiamonete(const MacchineCriteri& c) {
    QString sql =
        u"SELECT ms.* FROM MagSchede ms INNER JOIN AnagraficaLocali_Tmp al ON al.CodLocale=ms.CodLocale"_s;
    if (!c.azienda.isEmpty()) sql += u" WHERE"_s + u" al.CodiceAzienda='"_s + c.azienda + u"'"_s;
    return sql;
}

QString sqlUltimiCambiamonete(const MacchineCriteri& c) {
    QString sql = u"SELECT ni.*"_s + u" FROM"_s + u" ("_s + u" ("_s +
                  u" (NoteIncassi ni INNER JOIN NoteTeste nt ON ni.IdTesta=nt.id)"_s +
                  u" INNER JOIN"_s + u" ("_s +
                  u" SELECT MAX(DataIncasso) AS maxData, LinkScheda"_s +
                  u" FROM NoteIncassi, NoteTeste WHERE NoteTeste.id=NoteIncassi.IdTesta AND "
                  u"NoteTeste.CodCausale = 'CAM'"_s +
                  u" GROUP BY LinkScheda"_s + u" ) tmp"_s + u" ON tmp.LinkScheda=ni.LinkScheda"_s +
                  u" ) INNER JOIN MagSchede ms ON ms.id=ni.LinkScheda"_s +
                  u" ) INNER JOIN AnagraficaLocali_Tmp al ON al.CodLocale=ms.CodLocale"_s +
                  u" WHERE"_s + u" tmp.maxData=ni.DataIncasso"_s + u" AND"_s +
                  u" ni.DataIncasso<=#"_s + sqlDate(c.data) + u"#"_s;
    if (!c.azienda.isEmpty()) sql += u" AND"_s + u" al.CodiceAzienda = '"_s + c.azienda + u"'"_s;
    return sql + u" AND"_s + u" nt.CodCausale = 'CAM'"_s;
}

bool filtroSuLocali(const FrameCriteria& c) {
    return !c.nomeLocale.isEmpty() || !c.localita.isEmpty() || !c.provincia.isEmpty() ||
           !c.agente.isEmpty() || !c.zona.isEmpty();
}

QString parametriFiltroLocali(const FrameCriteria& c) {
    return u"Parametri di ricerca: "_s + (filtroSuLocali(c) ? u" filtro su locali"_s : QString());
}

}  // namespace lorvane::reports
