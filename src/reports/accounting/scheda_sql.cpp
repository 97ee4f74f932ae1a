#include "reports/accounting/scheda_sql.h"

namespace lorvane::reports {

using namespace Qt::StringLiterals;
using screens::sqlDate;

namespace {

QString doubled(const QString& text) { return QString(text).replace(u"'"_s, u"''"_s); }

QString collector(const SchedaCriteri& c) {
    return c.esattore.isEmpty() ? QString()
                                : u" AND nt.CodEsattore='"_s + doubled(c.esattore) + u"'"_s;
}

// The code of an account of the range: the range is tested on codes, the
// combos give ids.
QString codiceDiId(const QString& id) {
    return u" (SELECT CodiceConto FROM AnagraficaPianoConti WHERE id="_s + id + u")"_s;
}

QString selectedVenues(const SchedaCriteri& c) {
    return c.tutti ? QString()
                   : u" AND"_s + u" nr.codLocale IN (SELECT CodLocale FROM AnagraficaLocali_Tmp)"_s;
}

// The search's criteria after the period: every form is an AND form, since
// the filter always has the period in it already.
const screens::SearchForms& andForms() {
    static const screens::SearchForms forms{
        "",
        " AND al.sospeso = 0 ",
        {" AND al.Insegna like '%", " AND al.Insegna like '%", "%'"},
        {" AND al.Citta like '%", " AND al.Citta like '%", "%'"},
        {" AND al.codAgente = '", " AND al.codAgente = '", "'"},
        {" AND al.Provincia = '", " AND al.Provincia = '", "'"},
        {" AND al.codlocale IN (SELECT codLocale FROM MagSchede WHERE CodConcessionario = '",
         " AND al.codlocale IN (SELECT codLocale FROM MagSchede WHERE CodConcessionario = '",
         "') "},
        {" AND al.Codzona='", " AND al.Codzona='", "' "},
        nullptr,
    };
    return forms;
}

}  // namespace

QString sqlRicercaSchede(const screens::FrameCriteria& c, const QString& esattore) {
    QString sql = u"SELECT * FROM AnagraficaLocali al "_s + u" WHERE al.CodLocale IN ("_s +
                  u" SELECT DISTINCT nr.codLocale"_s +
                  u" FROM NoteRighe nr INNER JOIN NoteTeste nt ON nt.id=nr.idTesta"_s +
                  u" WHERE nr.Data>=#"_s + sqlDate(c.dallaData) + u"#"_s + u" AND nr.Data<=#"_s +
                  sqlDate(c.allaData) + u"#"_s;
    if (!esattore.isEmpty()) sql += u" AND nt.CodEsattore='"_s + doubled(esattore) + u"'"_s;
    return sql + u" )"_s + screens::sqlRicercaLocali(c, andForms());
}

QString testConto(const SchedaCriteri& c) {
    return u" LIKE '"_s + (c.conto.isEmpty() ? u"03.%"_s : c.conto) + u"'"_s;
}

QString sqlPianoContiClienti(const SchedaCriteri& c) {
    return u"SELECT *, LEFT(CodiceConto, 2) AS Mastro FROM AnagraficaPianoConti WHERE "
           u"LivelloConto=2 AND CodiceConto "_s +
           testConto(c);
}

QString sqlRigheLocale(const SchedaCriteri& c, const QString& codLocale) {
    QString sql =
        u"SELECT *"_s + u" FROM NoteRighe nr INNER JOIN NoteTeste nt ON nt.id=nr.idTesta"_s +
        u" WHERE"_s + u" nr.CodConto "_s + testConto(c) + u" AND"_s + u" nr.Data>=#"_s +
        sqlDate(c.dallaData) + u"#"_s + u" AND"_s + u" nr.Data<=#"_s + sqlDate(c.allaData) +
        u"#"_s + u" AND"_s + u" nr.codLocale='"_s + codLocale + u"'"_s;
    if (!c.azienda.isEmpty()) sql += u" AND nt.CodiceAzienda='"_s + c.azienda + u"'"_s;
    return sql + collector(c);
}

QString sqlSaldiLocale(const SchedaCriteri& c, const QString& codLocale) {
    QString sql =
        u" SELECT apc.id, tmp.CodConto AS CodiceConto, apc.Descrizione, tmp.TotDare AS dare, "
        u"tmp.TotAvere AS avere, (tmp.TotDare - tmp.TotAvere) AS saldo, '03' AS Mastro, "
        u"apc.TipoConto, '"_s +
        codLocale + u"' AS CodiceLocale, apc.LivelloConto"_s + u" FROM"_s +
        u" AnagraficaPianoConti apc INNER JOIN"_s + u" ("_s +
        u" SELECT CodConto, iif(SUM(Dare) IS NULL ; 0 ; SUM(Dare);) AS TotDare, "
        u"iif(SUM(Avere) IS NULL ; 0 ; SUM(Avere);) AS TotAvere"_s +
        u" FROM NoteRighe nr INNER JOIN NoteTeste nt ON nt.id=nr.idTesta"_s + u" WHERE"_s +
        u" nr.CodConto "_s + testConto(c) + u" AND"_s + u" nr.Data<#"_s + sqlDate(c.dallaData) +
        u"#"_s + u" AND"_s + u" nr.codLocale='"_s + codLocale + u"'"_s;
    if (!c.azienda.isEmpty()) sql += u" AND nt.odiceAzienda='"_s + c.azienda + u"')"_s;
    return sql + collector(c) + u" GROUP BY CodConto"_s +
           u" ) tmp ON tmp.CodConto=apc.CodiceConto"_s +
           u" WHERE apc.LivelloConto=2 AND apc.CodiceConto "_s + testConto(c);
}

QString sqlPulisciSaldi() {
    return u" DELETE * FROM SALDI "_s + u" WHERE "_s +
           u" Saldi.CodiceLocale NOT IN (SELECT codLocale FROM NoteRighe) "_s + u" AND "_s +
           u" Saldi.saldo = 0 "_s;
}

QString sqlPianoContiIntervallo(const SchedaCriteri& c) {
    return u" SELECT *, LEFT(CodiceConto, 2) AS Mastro "_s + u" FROM AnagraficaPianoConti "_s +
           u" WHERE "_s + u" CodiceConto >= "_s + codiceDiId(c.idDa) + u" AND "_s +
           u" CodiceConto <= "_s + codiceDiId(c.idA);
}

QString sqlRigheContab(const SchedaCriteri& c) {
    return u" SELECT nr.*,nt.CodEsattore"_s + u" FROM"_s +
           u" NoteRighe nr INNER JOIN NoteTeste nt ON nt.id=nr.idTesta"_s + u" WHERE"_s +
           u" nr.data>=#"_s + sqlDate(c.dallaData) + u"#"_s + u" AND "_s + u" nr.data <= #"_s +
           sqlDate(c.allaData) + u"#"_s + u" AND "_s + u" nt.CodCausale IN ("_s + c.causali +
           u")"_s + selectedVenues(c) + collector(c) + u" AND"_s + u" nr.CodConto>="_s +
           codiceDiId(c.idDa) + u" AND"_s + u" nr.CodConto<="_s + codiceDiId(c.idA);
}

QString sqlSaldiContab(const SchedaCriteri& c) {
    return u" SELECT apc.id, tmp.CodConto AS CodiceConto, apc.Descrizione, tmp.TotDare AS dare, "
           u"tmp.TotAvere AS avere, (tmp.TotDare - tmp.TotAvere) AS saldo, '03' AS Mastro, "
           u"apc.TipoConto, '' AS CodiceLocale, apc.LivelloConto"_s +
           u" FROM"_s + u" AnagraficaPianoConti apc INNER JOIN"_s + u" ("_s +
           u" SELECT nr.CodConto, iif(SUM(nr.Dare) IS NULL ; 0 ; SUM(nr.Dare);) AS TotDare, "
           u"iif(SUM(nr.Avere) IS NULL ; 0 ; SUM(nr.Avere);) AS TotAvere"_s +
           u" FROM"_s + u" NoteRighe nr INNER JOIN NoteTeste nt ON nt.id=nr.idTesta"_s +
           u" WHERE"_s + u" nr.data<#"_s + sqlDate(c.dallaData) + u"#"_s + u" AND"_s +
           u" nt.CodCausale IN ("_s + c.causali + u")"_s + selectedVenues(c) + collector(c) +
           u" GROUP BY CodConto"_s + u" ) tmp ON tmp.CodConto=apc.CodiceConto"_s + u" WHERE"_s +
           u" apc.LivelloConto=2"_s + u" AND "_s + u" apc.CodiceConto>="_s + codiceDiId(c.idDa) +
           u" AND"_s + u" apc.CodiceConto<="_s + codiceDiId(c.idA);
}

QString sqlContiSenzaSaldo() {
    return u" INSERT INTO Saldi"_s + u" SELECT"_s +
           u" apc.id,apc.CodiceConto,apc.Descrizione,0 AS dare,0 AS avere,0 AS saldo,'03' AS "
           u"Mastro,apc.TipoConto,'' AS CodiceLocale,apc.LivelloConto"_s +
           u" FROM"_s + u" AnagraficaPianoConti apc"_s + u" WHERE"_s +
           u" apc.CodiceConto NOT IN (SELECT CodiceConto FROM Saldi)"_s;
}

}  // namespace lorvane::reports
