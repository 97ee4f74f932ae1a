#include "host/demo/demo_note_cases.h"

#include "platform/runtime_error.h"

namespace lorvane::demo {

using namespace Qt::StringLiterals;

namespace {

void exec(Database& db, const QString& sql) { db.exec(sql.toUtf8().constData()); }

// The first column of the first row of `sql`; "" when there is none or it is Null.
QString scalar(Database& db, const QString& sql) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(db.handle(), sql.toUtf8().constData(), -1, &statement, nullptr) !=
        SQLITE_OK)
        throw RuntimeError(QString::fromUtf8(sqlite3_errmsg(db.handle())));
    QString value;
    if (sqlite3_step(statement) == SQLITE_ROW && sqlite3_column_text(statement, 0))
        value = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, 0)));
    sqlite3_finalize(statement);
    return value;
}

QString columnsOf(Database& db, const char* table, const char* skipped) {
    return scalar(db,
                  u"SELECT group_concat(name, ', ') FROM pragma_table_info('%1') WHERE name "
                  u"NOT IN (%2)"_s.arg(QLatin1String(table), QLatin1String(skipped)));
}

// Every seventh slip has a credit note beside it (document type 2) with the
// same rows; every fifth slip has its first row read three days before its
// period began.
void slips(Database& db) {
    const QString heads = columnsOf(db, "QuietanzaTesta", "'id', 'TipoDocumento', 'NumeroDoc'");
    exec(db,
         u"INSERT INTO QuietanzaTesta (TipoDocumento, NumeroDoc, %1) SELECT 2, NumeroDoc + "
         u"1000000, %1 FROM QuietanzaTesta WHERE TipoDocumento = 1 AND id % 7 = 0"_s.arg(heads));
    const QString rows = columnsOf(db, "QuietanzaRighe", "'id', 'idTesta'");
    QString prefixed = rows;
    prefixed.replace(u", "_s, u", r."_s).prepend(u"r."_s);
    exec(db,
         u"INSERT INTO QuietanzaRighe (idTesta, %1) SELECT nh.id, %2 FROM QuietanzaRighe r "
         u"JOIN QuietanzaTesta oh ON oh.id = r.idTesta JOIN QuietanzaTesta nh ON nh.NumeroDoc = "
         u"oh.NumeroDoc + 1000000 AND nh.TipoDocumento = 2 WHERE oh.TipoDocumento = 1 AND oh.id "
         u"% 7 = 0"_s.arg(rows, prefixed));
    exec(db,
         u"UPDATE QuietanzaRighe SET aData = (SELECT strftime('%Y-%m-%d 00:00:00', qt.DaData, "
         u"'-3 days') FROM QuietanzaTesta qt WHERE qt.id = QuietanzaRighe.idTesta) WHERE Riga = 1 "
         u"AND idTesta % 5 = 0 AND idTesta IN (SELECT id FROM QuietanzaTesta WHERE TipoDocumento "
         u"= 1)"_s);
}

// Some collection lines are worked out on a fixed share: at a venue
// percentage of 24.99 or of 25, or with no way of working out at all.
void collectionLines(Database& db) {
    exec(db,
         u"UPDATE NoteIncassi SET TipoCalcolo = CASE id % 11 WHEN 1 THEN 'Fisso' WHEN 2 THEN "
         u"'Fisso' ELSE NULL END, PercLocale = CASE id % 11 WHEN 1 THEN 24.99 WHEN 2 THEN 25 "
         u"ELSE PercLocale END WHERE id % 11 IN (1, 2, 3) AND IdTesta IN (SELECT id FROM "
         u"NoteTeste WHERE CodCausale = 'INC6')"_s);
}

// A note like note `model` on the venue `venue` (both SQL expressions), with
// `changes` made to it; it is the last row inserted.
void copyNote(Database& db, const QString& model, const QString& venue, const QString& changes) {
    const QString heads = columnsOf(db, "NoteTeste", "'id'");
    exec(db,
         u"INSERT INTO NoteTeste (%1) SELECT %1 FROM NoteTeste WHERE id = %2"_s.arg(heads, model));
    exec(
        db,
        u"UPDATE NoteTeste SET CodLocale = %1, %2 WHERE id = (SELECT MAX(id) FROM NoteTeste)"_s.arg(
            venue, changes));
}

// Two lines of the last note inserted: `amount` in Dare of the venue's
// account and in Avere of `credit` (the advances' cash account unless said).
void lines(Database& db, const QString& amount,
           const QString& credit = u"(SELECT CassaAcconti FROM TabAssociazioneConti)"_s) {
    const QString line =
        u"INSERT INTO NoteRighe (IdTesta, Data, Descrizione, Dare, Avere, CodConto, codLocale, "
        u"Riga) SELECT id, DataRegistrazione, Descrizione, %1, %2, %3, CodLocale, %4 FROM "
        u"NoteTeste WHERE id = (SELECT MAX(id) FROM NoteTeste)"_s;
    const QString zero = amount == u"NULL"_s ? amount : u"0"_s;
    exec(db, line.arg(amount, zero,
                      u"(SELECT CodiceConto FROM AnagraficaLocali al WHERE al.CodLocale = "
                      u"NoteTeste.CodLocale)"_s,
                      u"1"_s));
    exec(db, line.arg(zero, amount, credit, u"2"_s));
}

// Beside the advances of the round, on the first venue in use that has one,
// ten days before the last day: an open advance whose amount is Null and one
// whose amount is 0, both with their cash line; one without any line; one
// paid at a machine, with an open line and a closed one. On the first
// suspended venue an open advance whose cash line has neither side filled.
// Every fourth advance of the round was paid at a machine too.
void advances(Database& db, const QDate& lastDay) {
    const QString model = u"(SELECT MAX(id) FROM NoteTeste WHERE CodCausale = 'ACC')"_s;
    const QString venue =
        u"(SELECT MIN(CodLocale) FROM AnagraficaLocali WHERE Sospeso = 0 AND CodLocale IN "
        u"(SELECT CodLocale FROM NoteTeste WHERE CodCausale = 'ACC'))"_s;
    const QString day = u"DataRegistrazione = '%1', Chiuso = 0, "_s.arg(
        lastDay.addDays(-10).toString(u"yyyy-MM-dd 00:00:00"_s));
    const QString machineLine =
        u"INSERT INTO NoteIncassi (IdTesta, CodLocale, DataIncasso, Descrizione, Acconti, "
        u"Chiuso, CodiceAzienda, Riga) SELECT nt.id, nt.CodLocale, nt.DataRegistrazione, '%1', "
        u"%2, %3, nt.CodiceAzienda, %4 FROM NoteTeste nt WHERE %5"_s;
    const QString cassa =
        u"(SELECT nr.Avere FROM NoteRighe nr WHERE nr.IdTesta = nt.id AND nr.CodConto = (SELECT "
        u"CassaAcconti FROM TabAssociazioneConti))"_s;
    exec(db, machineLine.arg(u"Acconto su apparecchio"_s, cassa, u"0"_s, u"1"_s,
                             u"nt.CodCausale = 'ACC' AND nt.id % 4 = 0"_s));
    exec(db, machineLine.arg(u"Acconto su apparecchio (saldato)"_s, u"10"_s, u"-1"_s, u"2"_s,
                             u"nt.CodCausale = 'ACC' AND nt.id % 4 = 0 AND (nt.Chiuso = 0 OR "
                             u"nt.Chiuso IS NULL)"_s));

    copyNote(db, model, venue, day + u"Acconto = NULL, Descrizione = 'Acconto al locale'"_s);
    lines(db, u"150"_s);
    copyNote(db, model, venue, day + u"Acconto = 0, Descrizione = 'Acconto al locale'"_s);
    lines(db, u"230"_s);
    // Paid from the cash box, not from the advances' cash.
    copyNote(db, model, venue, day + u"Acconto = 0, Descrizione = 'Acconto senza registrazione'"_s);
    lines(db, u"80"_s, u"'01.001'"_s);
    copyNote(db, model, venue, day + u"Acconto = 120, Descrizione = 'Acconto su apparecchio'"_s);
    lines(db, u"120"_s);
    exec(db, machineLine.arg(u"Acconto su apparecchio"_s, u"110"_s, u"0"_s, u"1"_s,
                             u"nt.id = (SELECT MAX(id) FROM NoteTeste)"_s));
    exec(db, machineLine.arg(u"Acconto su apparecchio (saldato)"_s, u"10"_s, u"-1"_s, u"2"_s,
                             u"nt.id = (SELECT MAX(id) FROM NoteTeste)"_s));

    const QString suspended = u"(SELECT MIN(CodLocale) FROM AnagraficaLocali WHERE Sospeso <> 0)"_s;
    exec(db,
         u"INSERT INTO NoteTeste (DataRegistrazione, CodLocale, CodCausale, Descrizione, "
         u"CodiceAzienda, Chiuso, Acconto) SELECT '%1', CodLocale, 'ACC', 'Acconto da "
         u"verificare', CodiceAzienda, 0, 0 FROM AnagraficaLocali WHERE CodLocale = %2"_s.arg(
             lastDay.addDays(-10).toString(u"yyyy-MM-dd 00:00:00"_s), suspended));
    if (scalar(db,
               u"SELECT Descrizione FROM NoteTeste WHERE id = (SELECT MAX(id) FROM "
               u"NoteTeste)"_s) == u"Acconto da verificare"_s)
        lines(db, u"NULL"_s);
}

// Every fifth refill, and the last, has a twin the day after, with the same
// lines, that was never read at the machine; the last one's twin is still open.
void refills(Database& db) {
    const QString heads =
        columnsOf(db, "NoteTeste", "'id', 'DataRegistrazione', 'Descrizione', 'Chiuso'");
    const QString lines = columnsOf(db, "NoteRighe", "'id', 'IdTesta', 'Data', 'Descrizione'");
    const QString last = scalar(db, u"SELECT MAX(id) FROM NoteTeste WHERE CodCausale = 'REF'"_s);
    const QStringList models =
        scalar(db,
               u"SELECT group_concat(id) FROM NoteTeste WHERE CodCausale = 'REF' AND (id % 5 "
               u"= 0 OR id = %1)"_s.arg(last.isEmpty() ? u"0"_s : last))
            .split(u',', Qt::SkipEmptyParts);
    for (const QString& model : models) {
        exec(db,
             u"INSERT INTO NoteTeste (DataRegistrazione, Descrizione, Chiuso, %1) SELECT "
             u"strftime('%Y-%m-%d 00:00:00', DataRegistrazione, '+1 day'), 'Refill senza "
             u"lettura', %2, %1 FROM NoteTeste WHERE id = %3"_s.arg(
                 heads, model == last ? u"0"_s : u"Chiuso"_s, model));
        exec(db,
             u"INSERT INTO NoteRighe (IdTesta, Data, Descrizione, %1) SELECT nt.id, "
             u"nt.DataRegistrazione, nt.Descrizione, %2 FROM NoteRighe r, NoteTeste nt WHERE "
             u"r.IdTesta = %3 AND nt.id = (SELECT MAX(id) FROM NoteTeste)"_s.arg(
                 lines, u"r."_s + QString(lines).replace(u", "_s, u", r."_s), model));
    }
}

}  // namespace

void writeNoteCases(Database& db, const QDate& lastDay) {
    slips(db);
    collectionLines(db);
    advances(db, lastDay);
    refills(db);
}

}  // namespace lorvane::demo
