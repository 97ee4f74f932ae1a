#include "reports/collection/introdotto_sql.h"

#include "screens/frame_criteria.h"

namespace lorvane::reports {

using namespace Qt::StringLiterals;
using screens::shownDate;
using screens::sqlDate;

namespace {

const QString notesWithReadings =
    u" (NoteTeste nt INNER JOIN NoteIncassi ni ON ni.idTesta=nt.id)"_s;
const QString chosenVenues = u" INNER JOIN AnagraficaLocali_Tmp al ON al.CodLocale=nt.CodLocale"_s;

}  // namespace

QString condizioneComune(const IntrodottoCriteri& c) {
    QString condition = u" WHERE"_s + u" nt.DataRegistrazione>=#"_s + sqlDate(c.dallaData) +
                        u"#"_s + u" AND"_s + u" nt.DataRegistrazione<=#"_s + sqlDate(c.allaData) +
                        u"#"_s + u" AND"_s + u" nt.CodCausale='INC6'"_s;
    if (!c.numeroTerminale.isEmpty())
        condition += u" AND nt.NumeroTerminale='"_s + c.numeroTerminale + u"'"_s;
    if (!c.azienda.isEmpty()) condition += u" AND ni.CodiceAzienda = '"_s + c.azienda + u"'"_s;
    if (!c.concessionario2.isEmpty())
        condition += u" AND ni.CodConcessionario='"_s + c.concessionario2 + u"'"_s;
    return condition;
}

QString sqlNote(const IntrodottoCriteri& c) {
    return u"SELECT DISTINCT"_s + u" nt.*"_s + u" FROM"_s + notesWithReadings + chosenVenues +
           condizioneComune(c);
}

QString sqlRighe(const IntrodottoCriteri& c) {
    return u"SELECT DISTINCT"_s + u" nr.*"_s + u" FROM"_s +
           u" ((NoteTeste nt INNER JOIN NoteIncassi ni ON ni.idTesta=nt.id)"_s +
           u" INNER JOIN NoteRighe nr ON nr.idTesta=nt.id)"_s + chosenVenues + condizioneComune(c);
}

QString sqlLetture(const IntrodottoCriteri& c) {
    return u"SELECT DISTINCT"_s + u" ni.*"_s + u" FROM"_s + notesWithReadings + chosenVenues +
           condizioneComune(c);
}

QString sqlAziende(const IntrodottoCriteri& c) {
    QString sql = u"SELECT AnagraficaAziende.* FROM AnagraficaAziende  "_s;
    if (!c.azienda.isEmpty()) sql += u" WHERE CodiceAzienda = '"_s + c.azienda + u"'"_s;
    return sql;
}

QString sqlSchede(const QString& ids) {
    return u"SELECT MagSchede.* FROM MagSchede WHERE id IN ("_s + ids + u")"_s;
}

IntrodottoParametri parametriIntrodotto(const IntrodottoCriteri& c) {
    return {u" Dal "_s + shownDate(c.dallaData) + u" al "_s + shownDate(c.allaData),
            shownDate(c.dallaData), shownDate(c.allaData), c.concessionario2};
}

}  // namespace lorvane::reports
