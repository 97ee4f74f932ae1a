#include "reports/accounting/bilancio_sql.h"

#include "screens/frame_criteria.h"

namespace lorvane::reports {

using namespace Qt::StringLiterals;

using screens::shownDate;
using screens::sqlDate;

QString criterioConti(const BilancioCriteri& c) {
    QString kinds;
    if (c.contiPatrimoniali) kinds = u" TipoConto=0"_s;
    if (c.contiEconomici) {
        if (!kinds.isEmpty()) kinds += u" OR"_s;
        kinds += u" TipoConto=1"_s;
    }
    return u'(' + kinds + u')';
}

QString sqlPianoConti(const BilancioCriteri& c) {
    return u"SELECT *, LEFT(CodiceConto, 2) AS Mastro FROM AnagraficaPianoConti WHERE "_s +
           criterioConti(c);
}

QString sqlMovimenti(const BilancioCriteri& c) {
    QString sql =
        u" SELECT apc.id, tmp.CodConto AS CodiceConto, apc.Descrizione, tmp.TotDare AS dare, "
        u"tmp.TotAvere AS avere, (tmp.TotDare - tmp.TotAvere) AS saldo, '' AS Mastro, "
        u"apc.TipoConto, '' AS CodiceLocale, apc.LivelloConto "_s;
    sql += u" FROM "_s;
    sql += u" AnagraficaPianoConti apc, "_s;
    sql += u" ( "_s;
    sql +=
        u" SELECT CodConto, iif(SUM(Dare) IS NULL ; 0 ; SUM(Dare);) AS TotDare, "
        u"iif(SUM(Avere) IS NULL ; 0 ; SUM(Avere);) AS TotAvere "_s;
    sql += u" FROM NoteRighe "_s;
    sql += u" WHERE "_s;
    sql += u" CodConto IN (SELECT CodiceConto FROM AnagraficaPianoConti WHERE "_s +
           criterioConti(c) + u") "_s;
    sql += u" AND "_s;
    sql += u" Data >= #"_s + sqlDate(c.dallaData) + u"# "_s;
    sql += u" AND "_s;
    sql += u" Data <= #"_s + sqlDate(c.allaData) + u"# "_s;
    if (!c.azienda.isEmpty())
        sql += u" AND "_s + u" IdTesta IN (SELECT id FROM NoteTeste WHERE CodiceAzienda='"_s +
               c.azienda + u"') "_s;
    sql += u" GROUP BY CodConto "_s;
    sql += u" ) tmp "_s;
    sql += u" WHERE "_s;
    sql += u" tmp.CodConto=apc.CodiceConto "_s;
    return sql;
}

QString sqlContiSenzaMovimento() {
    return u" INSERT INTO Saldi "
           u" SELECT "
           u" apc.id, apc.CodiceConto, apc.Descrizione, 0 AS dare, 0 AS avere, 0 AS saldo, "
           u"'03' AS Mastro, apc.TipoConto, '' AS CodiceLocale, apc.LivelloConto "
           u" FROM "
           u" AnagraficaPianoConti apc "
           u" WHERE "
           u" apc.CodiceConto NOT IN (SELECT CodiceConto FROM Saldi) "_s;
}

// With neither kind chosen the title still says "Economici": it is the last branch.
QString titoloBilancio(const BilancioCriteri& c) {
    QString title =
        u"Dal "_s + shownDate(c.dallaData) + u" Al "_s + shownDate(c.allaData) + u" - Conti "_s;
    if (c.contiPatrimoniali && c.contiEconomici) {
        title += u"Patrimoniali ed Economici"_s;
    } else if (c.contiPatrimoniali) {
        title += u"Patrimoniali"_s;
    } else {
        title += u"Economici"_s;
    }
    if (!c.azienda.isEmpty()) title += u" - Per l'azienda "_s + c.azienda;
    return title;
}

}  // namespace lorvane::reports
