#include "reports/accounting/registri_sql.h"

#include "db/variant.h"
#include "workdb/column_lists.h"

namespace lorvane::reports {

using namespace Qt::StringLiterals;
using screens::FrameCriteria;
using screens::SearchForms;
using screens::shownDate;
using screens::sqlDate;

namespace {

constexpr int itemsPerBatch = 25;

// The clause a note of the registers is kept by when chkEscludi is ticked:
// one of its five amounts a real figure other than 0.
QString esclusione(const RegistriCriteri& c) {
    if (!c.escludi) return {};
    return u" AND ("_s + u" ((nt.UtileLocale <> 0) AND (nt.UtileLocale IS NOT NULL))"_s + u" OR"_s +
           u" ((nt.UtileNoleggiatore <> 0) AND (nt.UtileNoleggiatore IS NOT NULL))"_s + u" OR"_s +
           u" ((nt.TotPreu <> 0) AND (nt.TotPreu IS NOT NULL))"_s + u" OR"_s +
           u" ((nt.TotAAMS <> 0) AND (nt.TotAAMS IS NOT NULL))"_s + u" OR"_s +
           u" ((nt.TotRETE <> 0) AND (nt.TotRETE IS NOT NULL))"_s + u" )"_s;
}

QString doubledQuotes(QString text) { return text.replace(u"'"_s, u"''"_s); }

QString collectionInPeriod(const FrameCriteria& c) {
    return u" al.CodLocale IN (SELECT DISTINCT CodLocale FROM NoteIncassi WHERE DataIncasso>=#"_s +
           sqlDate(c.dallaData) + u"#  AND DataIncasso<=#"_s + sqlDate(c.allaData) + u"#)"_s;
}

}  // namespace

QString elencoQuotato(const QStringList& codes) {
    QString text;
    for (const QString& code : codes) {
        if (!text.isEmpty()) text += u", "_s;
        text += u'\'' + code + u'\'';
    }
    return text;
}

QStringList lottiLocali(const QString& elenco) {
    if (!elenco.contains(u',')) return {elenco};
    const QStringList items = elenco.split(u", "_s);
    const qsizetype u = items.size() - 1;
    const qsizetype lotti = u / itemsPerBatch + (u % itemsPerBatch ? 1 : 0);
    QStringList result;
    for (qsizetype i = 0; i < lotti; ++i) {
        qsizetype count = itemsPerBatch;
        if (i == lotti - 1) {
            count = u % itemsPerBatch + 1;
            if (count == 1 && u == itemsPerBatch) count = itemsPerBatch;
        }
        result << items.mid(i * itemsPerBatch, count).join(u", "_s);
    }
    return result;
}

QString sqlRicercaCassa(const FrameCriteria& c, const QString& esattore) {
    QString sql =
        u"SELECT al.*"_s +
        u" FROM AnagraficaLocali al INNER JOIN NoteTeste nt ON nt.CodLocale=al.CodLocale"_s +
        u" WHERE nt.CodCausale IN ("_s + elencoQuotato(c.causali) + u")"_s +
        u" AND nt.DataRegistrazione>=#"_s + c.dallaData.toString(u"yyyy-MM-dd"_s) + u"#"_s +
        u" AND nt.DataRegistrazione<=#"_s + c.allaData.toString(u"yyyy-MM-dd"_s) + u"#"_s;
    if (!c.sospesi) sql += u" AND al.sospeso=0"_s;
    if (!c.nomeLocale.isEmpty()) sql += u" AND al.Insegna LIKE '%"_s + c.nomeLocale + u"%'"_s;
    if (!c.localita.isEmpty()) sql += u" AND al.Citta LIKE '%"_s + c.localita + u"%'"_s;
    if (!c.agente.isEmpty()) sql += u" AND al.codAgente='"_s + c.agente + u"'"_s;
    if (!c.provincia.isEmpty()) sql += u" AND al.Provincia='"_s + c.provincia + u"'"_s;
    if (!c.concessionario.isEmpty())
        sql +=
            u" AND al.codlocale IN (SELECT CodLocale FROM MagSchede WHERE CodConcessionario='"_s +
            c.concessionario + u"')"_s;
    if (!c.zona.isEmpty()) sql += u" AND al.Codzona='"_s + c.zona + u"'"_s;
    if (!esattore.isEmpty()) sql += u" AND nt.CodEsattore='"_s + doubledQuotes(esattore) + u"'"_s;
    if (!c.azienda.isEmpty())
        sql += u" AND nt.CodiceAzienda='"_s + doubledQuotes(c.azienda) + u"'"_s;
    return sql + u" ORDER BY al.Insegna"_s;
}

const SearchForms& registroSearchForms() {
    static const SearchForms forms{
        "SELECT * FROM AnagraficaLocali al ",
        " WHERE al.sospeso = 0 ",
        {" AND al.Insegna like '%", " WHERE al.Insegna like '%", "%'"},
        {" AND al.Citta like '%", " WHERE al.Citta like '%", "%'"},
        {" AND al.codAgente = '", " WHERE al.codAgente = '", "'"},
        {" AND al.Provincia = '", " WHERE al.Provincia = '", "'"},
        {" AND al.codLocale IN (SELECT codLocale FROM MagSchede WHERE CodConcessionario = '",
         " WHERE al.codLocale IN (SELECT codLocale FROM MagSchede WHERE CodConcessionario = '",
         "') "},
        {" AND al.Codzona='", " WHERE al.Codzona='", "' "},
        collectionInPeriod,
        {" AND al.CodiceAzienda='", " WHERE al.CodiceAzienda='", "' "},
    };
    return forms;
}

QStringList svuotaNote() {
    QStringList statements;
    for (const char* table : {"MagSchede", "NoteIncassi", "NoteRighe", "NoteTeste",
                              "AnagraficaLocali", "AnagraficaAziende", "Parametri"})
        statements << u"DELETE * FROM "_s + QLatin1String(table);
    return statements;
}

QString sqlNoteCassa(const RegistriCriteri& c, const QString& lotto) {
    QString sql = u"SELECT NoteTeste.* FROM NoteTeste WHERE (DataRegistrazione BETWEEN #"_s +
                  sqlDate(c.dallaData) + u"# AND #"_s + sqlDate(c.allaData) + u"#) "_s +
                  u" AND NoteTeste.CodCausale IN ("_s + c.causali + u") "_s;
    if (!c.azienda.isEmpty()) sql += u" AND CodiceAzienda = '"_s + c.azienda + u"'"_s;
    if (!lotto.isEmpty()) sql += u" AND CodLocale IN ("_s + lotto + u")"_s;
    if (!c.esattore.isEmpty()) sql += u" AND CodEsattore='"_s + doubledQuotes(c.esattore) + u"'"_s;
    return sql;
}

QString sqlNoteRegistro(PartiNota parte, const RegistriCriteri& c, const QString& lotto) {
    // Start, causali, company and venues of heads, lines and takings.
    struct Forme {
        const char* inizio;
        const char* causali;
        const char* azienda;
        const char* locali;
    };
    static const Forme forme[] = {
        {"SELECT nt.* FROM NoteTeste nt WHERE (nt.DataRegistrazione BETWEEN #",
         " AND nt.CodCausale IN (", " AND nt.CodiceAzienda = '", " AND nt.CodLocale IN ("},
        {"SELECT nr.* FROM NoteTeste nt, NoteRighe nr WHERE nt.id = nr.idTesta AND "
         "(nt.DataRegistrazione BETWEEN #",
         " And nt.CodCausale IN (", " And nt.CodiceAzienda = '", " And nt.CodLocale IN ("},
        {"SELECT ni.* FROM NoteTeste nt, NoteIncassi ni WHERE nt.id = ni.idTesta AND "
         "(nt.DataRegistrazione BETWEEN #",
         " And nt.CodCausale In (", " AND nt.CodiceAzienda = '", " AND nt.CodLocale IN ("},
    };
    const Forme& f = forme[int(parte)];
    QString sql = QLatin1String(f.inizio) + sqlDate(c.dallaData) + u"# AND #"_s +
                  sqlDate(c.allaData) + u"#) "_s + QLatin1String(f.causali) + c.causali + u") "_s;
    if (!c.azienda.isEmpty()) sql += QLatin1String(f.azienda) + c.azienda + u"'"_s;
    if (!lotto.isEmpty()) sql += QLatin1String(f.locali) + lotto + u")"_s;
    return sql + esclusione(c);
}

const FormeCollegate& localiCassa() {
    static const FormeCollegate forme{
        "SELECT CodLocale FROM NoteTeste GROUP BY CodLocale ",
        "SELECT AnagraficaLocali.* FROM AnagraficaLocali WHERE CodLocale IN (",
        "SELECT * FROM AnagraficaLocali", workdb::columns::AnagraficaLocali57};
    return forme;
}

const FormeCollegate& schedeCassa() {
    static const FormeCollegate forme{"SELECT LinkScheda FROM NoteIncassi GROUP BY LinkScheda ",
                                      "SELECT MagSchede.* FROM MagSchede WHERE id IN (",
                                      "SELECT * FROM MagSchede", workdb::columns::MagSchede55};
    return forme;
}

const FormeCollegate& localiRegistro() {
    static const FormeCollegate forme{
        "SELECT CodLocale FROM NoteTeste Group by CodLocale ",
        "SELECT AnagraficaLocali.* FROM AnagraficaLocali Where CodLocale In (",
        "SELECT * FROM AnagraficaLocali", workdb::columns::AnagraficaLocali57};
    return forme;
}

const FormeCollegate& schedeRegistro() {
    static const FormeCollegate forme{"SELECT LinkScheda FROM NoteIncassi GROUP BY LinkScheda ",
                                      "SELECT MagSchede.* FROM MagSchede Where id In (",
                                      "select * from MagSchede", workdb::columns::MagSchede55};
    return forme;
}

QString sqlAziende(const QString& azienda) {
    QString sql = u"SELECT AnagraficaAziende.* FROM AnagraficaAziende  "_s;
    if (!azienda.isEmpty()) sql += u" Where CodiceAzienda = '"_s + azienda + u"'"_s;
    return sql;
}

QString parametriCassa(const RegistriCriteri& c) {
    QString text = parametriRegistro(c);
    if (!c.esattore.isEmpty()) text += u" - Esattore: "_s + c.esattore;
    return text;
}

QString parametriRegistro(const RegistriCriteri& c) {
    return u" Dal "_s + shownDate(c.dallaData) + u" al "_s + shownDate(c.allaData);
}

QString sqlPrestitiDaAggiornare() {
    return u"SELECT nt.id,nt.VarPrestito,(nr.Dare-nr.Avere) AS Somma"_s +
           u" FROM (NoteTeste nt INNER JOIN NoteRighe nr ON nr.idtesta=nt.id)"_s +
           u" INNER JOIN TabAssociazioneConti tac ON tac.PrestitiALocale=nr.CodConto"_s +
           u" WHERE CodCausale='PRE' AND (nt.VarPrestito=0 OR nt.VarPrestito IS NULL)"_s;
}

QString sqlAggiornaVarPrestito(const QString& somma, const QString& id) {
    return u"UPDATE NoteTeste"_s + u" SET VarPrestito="_s + QString(somma).replace(u","_s, u"."_s) +
           u" WHERE id="_s + id;
}

QList<QDate> giorniCalendario(const QDate& dalla, const QDate& alla) {
    const QDate inizio(dalla.year(), dalla.month(), 1);
    const QDate fine = alla.month() < 12 ? QDate(alla.year(), alla.month() + 1, 1).addDays(-1)
                                         : QDate(alla.year(), 12, 31);
    QList<QDate> giorni;
    for (QDate giorno = inizio; giorno <= fine; giorno = giorno.addDays(1))
        giorni << giorno;
    return giorni;
}

QString sqlComodato(const QDate& dalla, const QDate& alla) {
    const QString formato = u"MM-dd-yyyy"_s;
    return u"SELECT NoteIncassi.IdTesta, Sum(NoteIncassi.ParzialeIn) AS SommaDiParzialeIn, "
           u"NoteIncassi.Contratto, NoteTeste.CodCausale, TipoContratto.PercentualeComodato, "
           u"NoteTeste.DataRegistrazione"_s +
           u" FROM (NoteIncassi INNER JOIN TipoContratto ON NoteIncassi.Contratto = "
           u"TipoContratto.Contratto) INNER JOIN NoteTeste ON NoteIncassi.IdTesta = NoteTeste.id"_s +
           u" GROUP BY NoteIncassi.IdTesta, NoteIncassi.Contratto, NoteTeste.CodCausale, "
           u"TipoContratto.PercentualeComodato, NoteTeste.DataRegistrazione"_s +
           u" HAVING (((NoteTeste.CodCausale)='INC6') AND ((TipoContratto.PercentualeComodato)>0) "
           u"AND ((NoteTeste.DataRegistrazione)>=#"_s +
           dalla.toString(formato) + u"#))"_s + u" and NoteTeste.DataRegistrazione<=#"_s +
           alla.toString(formato) + u"# "_s;
}

double quotaComodato(double sommaParzialeIn, double percentuale) {
    return db::roundHalfEven(sommaParzialeIn * percentuale / 100.0, 2);
}

}  // namespace lorvane::reports
