#include "reports/documents/documenti_sql.h"

#include "reports/collection/macchine_sql.h"

namespace lorvane::reports {

using namespace Qt::StringLiterals;
using screens::FrameCriteria;
using screens::SearchForms;
using screens::sqlDate;

namespace {

QString doubled(const QString& text) { return QString(text).replace(u"'"_s, u"''"_s); }

// Venues with a note of any causale in the period.
QString notesInPeriod(const FrameCriteria& c) {
    return u"codlocale IN (SELECT CodLocale FROM NoteTeste WHERE DataRegistrazione >= #"_s +
           sqlDate(c.dallaData) + u"# AND DataRegistrazione <= #"_s + sqlDate(c.allaData) + u"#)"_s;
}

// Venues with a quittance in the period.
QString quittancesInPeriod(const FrameCriteria& c) {
    return u" al.CodLocale IN (SELECT CodLocale FROM QuietanzaTesta WHERE Data>=#"_s +
           sqlDate(c.dallaData) + u"#  AND Data<=#"_s + sqlDate(c.allaData) + u"#)"_s;
}

// Venues with a deed in the period, of the company when one is chosen.
QString deedsInPeriod(const FrameCriteria& c) {
    QString sql = u"al.CodLocale IN "_s + u" ("_s + u" SELECT CodIntestazione"_s +
                  u" FROM DocTeste"_s + u" WHERE"_s + u" TipoDoc=8"_s + u" AND"_s +
                  u" DataDoc >= #"_s + sqlDate(c.dallaData) + u"#"_s + u" AND"_s +
                  u" DataDoc <= #"_s + sqlDate(c.allaData) + u"#"_s;
    if (!c.azienda.isEmpty()) sql += u" AND"_s + u" CodiceAzienda='"_s + c.azienda + u"'"_s;
    return sql + u")"_s;
}

// The period of the quittance heads and, with a company, the company.
QString quittanceConditions(const FrameCriteria& c) {
    QString sql = u" Data >= #"_s + sqlDate(c.dallaData) + u"# "_s + u" AND "_s + u" Data <= #"_s +
                  sqlDate(c.allaData) + u"# "_s + u" AND "_s +
                  u" CodLocale IN (SELECT CodLocale FROM AnagraficaLocali_Tmp) "_s;
    if (!c.azienda.isEmpty()) sql += u" AND "_s + u" CodiceAzienda='"_s + c.azienda + u"' "_s;
    return sql;
}

// The explicit note columns of the option "Includi sconto / rimborso",
// before the share computed with the rounding.
constexpr char noteColumns[] =
    " nt.id, nt.DataRegistrazione, nt.CodLocale, nt.CodEsattore, nt.CodCausale, "
    "nt.Descrizione, nt.Annotazioni, nt.idOnda, nt.Import, nt.CodAgente, nt.PercAgente, "
    "nt.CodiceAzienda, nt.ContoPercAgente, nt.CodSubAgente, nt.PercSubAgente, "
    "nt.ContoPercSubAgente, nt.Chiuso, nt.Fatturato, nt.Bloccato, nt.idData, nt.IdOperatore, "
    "nt.TipologiaIncasso, nt.GestioneDenaro, nt.IncassoGettoni, nt.IncassoTasse, "
    "nt.UtileNoleggiatore, nt.VersatoALocale, nt.FurtoLocale, nt.FurtoNoleggiatore, "
    "nt.AmmancoLocale, nt.AmmancoNoleggiatore, nt.StileIncasso, nt.TotIntrodotto, nt.TotUscite, "
    "nt.TotPreu, nt.TotAAMS, nt.TotRETE, nt.TotDaDividere, nt.VarDebito, nt.VarPrestito, "
    "nt.Riscosso, nt.Rimanenza, nt.Arrotondamenti, nt.Acconto, nt.AnticipoLocale, "
    "nt.AttesaFatture,";
constexpr char shareWithRounding[] =
    " (IIF(nt.UtileLocale IS NOT NULL ; nt.UtileLocale ; 0 ;) + IIF(nt.Arrotondamenti IS NOT "
    "NULL; nt.Arrotondamenti ; 0 ;)) AS UtileLocale";

}  // namespace

const SearchForms& sommeSearchForms() {
    static const SearchForms forms{
        "SELECT * FROM AnagraficaLocali ",
        " WHERE sospeso = 0 ",
        {" AND Insegna like '%", " WHERE  Insegna like '%", "%'"},
        {" AND Citta like '%", " WHERE Citta like '%", "%'"},
        {" AND codAgente = '", " WHERE codAgente = '", "'"},
        {" AND Provincia = '", " WHERE Provincia = '", "'"},
        {" AND codlocale IN (SELECT codLocale FROM MagSchede WHERE CodConcessionario = '",
         " WHERE codLocale IN (SELECT codLocale FROM MagSchede WHERE CodConcessionario = '", "') "},
        {" AND Codzona='", " WHERE  codzona='", "' "},
        notesInPeriod,
    };
    return forms;
}

const SearchForms& quietanzaSearchForms() {
    static const SearchForms forms = [] {
        SearchForms changed = screens::referenceSearchForms();
        changed.concessionario = {
            " AND al.codLocale IN (SELECT codLocale FROM MagSchede WHERE CodConcessionario = '",
            " WHERE al.codLocale IN (SELECT codLocale FROM MagSchede WHERE CodConcessionario = '",
            "') "};
        changed.zona.whenEmpty = " WHERE al.codzona='";
        changed.periodo = quittancesInPeriod;
        return changed;
    }();
    return forms;
}

// The agent's form with text is misspelt, so choosing an agent breaks the
// search unless it is the first criterion.
const SearchForms& attoQuietanzaSearchForms() {
    static const SearchForms forms = [] {
        SearchForms changed = screens::referenceSearchForms();
        changed.nome.whenEmpty = " WHERE  al.Insegna like '%";
        changed.agente.whenText = " al.AND codAgente = '";
        changed.concessionario.whenEmpty =
            " WHERE al.codLocale IN (SELECT codlocale FROM MagSchede WHERE CodConcessionario = '";
        changed.zona.whenEmpty = " WHERE al.codzona='";
        changed.periodo = deedsInPeriod;
        return changed;
    }();
    return forms;
}

QString sqlLocaliConNote(const FrameCriteria& c) {
    QString sql = u" SELECT * FROM AnagraficaLocali "_s + u" WHERE "_s + u" CodLocale IN "_s +
                  u"("_s + u" SELECT nt.CodLocale "_s +
                  u" FROM NoteTeste nt, AnagraficaLocali al "_s + u" WHERE "_s +
                  u" nt.DataRegistrazione >= #"_s + sqlDate(c.dallaData) + u"#"_s + u" AND "_s +
                  u" nt.DataRegistrazione <= #"_s + sqlDate(c.allaData) + u"#"_s + u" AND "_s +
                  u" nt.CodLocale = al.CodLocale "_s;
    if (!c.azienda.isEmpty()) sql += u" AND "_s + u" al.CodiceAzienda = '"_s + c.azienda + u"' "_s;
    sql += u")"_s;
    if (!c.sospesi) sql += u" AND Sospeso=0 "_s;
    return sql;
}

QString sqlNoteSomme(const FrameCriteria& c, bool scontoRimborso) {
    QString sql = u" SELECT"_s;
    sql +=
        scontoRimborso ? QLatin1String(noteColumns) + QLatin1String(shareWithRounding) : u" nt.*"_s;
    sql += u" FROM NoteTeste nt INNER JOIN AnagraficaLocali_Tmp al ON al.CodLocale=nt.CodLocale"_s +
           u" WHERE"_s + u" nt.DataRegistrazione >= #"_s + sqlDate(c.dallaData) + u"#"_s +
           u" AND"_s + u" nt.DataRegistrazione <= #"_s + sqlDate(c.allaData) + u"#"_s + u" AND"_s +
           u" nt.CodCausale IN ('INC6', 'INC')"_s;
    if (!c.azienda.isEmpty()) sql += u" AND"_s + u" al.CodiceAzienda = '"_s + c.azienda + u"'"_s;
    return sql;
}

QString sqlOperatoriDeiLocali(const char* mansione, const char* colonna) {
    return u" SELECT *"_s + u" FROM AnagraficaOperatori"_s + u" WHERE"_s + u" Mansione = '"_s +
           QLatin1String(mansione) + u"'"_s + u" AND"_s + u" codiceOperatore IN"_s + u" ("_s +
           u" SELECT "_s + QLatin1String(colonna) + u" FROM AnagraficaLocali_Tmp"_s + u" )"_s;
}

QString sqlAziendeDeiLocali() {
    return u" SELECT *"_s + u" FROM AnagraficaAziende"_s + u" WHERE"_s + u" CodiceAzienda IN"_s +
           u" ("_s + u" SELECT CodiceAzienda FROM AnagraficaLocali_Tmp"_s + u" )"_s;
}

QString sqlSommePerLocale() {
    return u" SELECT SUM(UtileLocale) AS sommaLocale, CodLocale"_s + u" FROM NoteTeste"_s +
           u" GROUP BY CodLocale"_s;
}

QString parametriSomme(const FrameCriteria& c) {
    MacchineCriteri criteri;
    criteri.dallaData = c.dallaData;
    criteri.allaData = c.allaData;
    criteri.azienda = c.azienda;
    criteri.tutti = c.tutti;
    return parametriPercentuali(criteri);
}

QString sqlTesteQuietanza(const FrameCriteria& c) {
    return u"SELECT * FROM QuietanzaTesta WHERE "_s + quittanceConditions(c);
}

QString sqlRigheQuietanza(const FrameCriteria& c) {
    return u"SELECT * FROM QuietanzaRighe "_s + u"WHERE "_s + u" idTesta IN "_s + u" ( "_s +
           u"SELECT id FROM QuietanzaTesta WHERE "_s + quittanceConditions(c) + u" ) "_s;
}

QString sqlAziendeQuietanza(const FrameCriteria& c) {
    QString sql = u"SELECT * FROM AnagraficaAziende"_s;
    if (!c.azienda.isEmpty()) sql += u" WHERE CodiceAzienda='"_s + c.azienda + u"' "_s;
    return sql;
}

QString sqlConcessionariQuietanza(const FrameCriteria& c) {
    QString sql = u"SELECT * FROM AnagraficaConcessionari"_s;
    if (!c.concessionario.isEmpty())
        sql += u" WHERE codiceConcessionario='"_s + c.concessionario + u"' "_s;
    return sql;
}

QString sqlRigheDaRiparare() {
    return u"SELECT dt.CodSpettabile,dr.id,dr.CodiceAzienda"_s +
           u" FROM DocTeste dt INNER JOIN DocRighe dr ON dr.IdDoc=dt.id"_s +
           u" WHERE dt.TipoDoc=8 AND dr.CodiceAzienda IS NULL AND dt.CodSpettabile IS NOT NULL"_s;
}

QString sqlRiparaRiga(const QString& codSpettabile, const QString& id) {
    return u"UPDATE DocRighe SET CodiceAzienda='"_s + codSpettabile + u"' WHERE id="_s + id;
}

QString sqlCaratteristicheLocale(const QString& codLocale) {
    return u"SELECT * FROM AnagraficaLocaliCaratteristiche WHERE CodLocale='"_s +
           doubled(codLocale) + u"'"_s;
}

QString sqlTitolare(const QString& codTitolare) {
    return u"SELECT * FROM AnagraficaOperatori WHERE Mansione='Titolare' AND codiceOperatore='"_s +
           doubled(codTitolare) + u"'"_s;
}

QString filtroOperatore(const QString& codiceOperatore) {
    return u"codiceOperatore='"_s + doubled(codiceOperatore) + u"'"_s;
}

QString sqlAziendeAtti() { return u" SELECT * "_s + u" FROM AnagraficaAziende "_s; }

QString sqlTesteAtti(const FrameCriteria& c) {
    QString sql = u" SELECT *"_s + u" FROM DocTeste"_s + u" WHERE"_s + u" TipoDoc=8"_s + u" AND"_s +
                  u" DataDoc >= #"_s + sqlDate(c.dallaData) + u"#"_s + u" AND"_s +
                  u" DataDoc <= #"_s + sqlDate(c.allaData) + u"#"_s;
    if (!c.tutti)
        sql += u" AND"_s + u" CodIntestazione IN (SELECT CodLocale FROM AnagraficaLocali_Tmp)"_s;
    if (!c.azienda.isEmpty()) sql += u" AND"_s + u" CodiceAzienda='"_s + c.azienda + u"'"_s;
    return sql;
}

QString sqlRigheAtti(const FrameCriteria& c) {
    QString sql = u" SELECT * "_s + u" FROM DocRighe "_s + u" WHERE "_s + u" IdDoc IN "_s +
                  u" ( "_s + u" SELECT id "_s + u" FROM DocTeste "_s + u" WHERE "_s +
                  u" DataDoc >= #"_s + sqlDate(c.dallaData) + u"# "_s + u" AND "_s +
                  u" DataDoc <= #"_s + sqlDate(c.allaData) + u"# "_s;
    if (!c.tutti)
        sql += u" AND "_s + u" CodIntestazione IN (SELECT CodLocale FROM AnagraficaLocali_Tmp) "_s;
    return sql + u" ) "_s;
}

}  // namespace lorvane::reports
