#include "host/demo/demo_machine_cases.h"

#include "platform/runtime_error.h"

namespace lorvane::demo {

using namespace Qt::StringLiterals;

namespace {

// The first column of the first row of `sql`; "" when there is none.
QString scalar(Database& db, const QString& sql) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(db.handle(), sql.toUtf8().constData(), -1, &statement, nullptr) !=
        SQLITE_OK)
        throw RuntimeError(QString::fromUtf8(sqlite3_errmsg(db.handle())));
    QString value;
    if (sqlite3_step(statement) == SQLITE_ROW)
        value = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, 0)));
    sqlite3_finalize(statement);
    return value;
}

void exec(Database& db, const QString& sql) { db.exec(sql.toUtf8().constData()); }

// A second hopper check on the last hopper day of the first board checked:
// the same note again, with that board's reading at other levels.
void secondCheckOnLastDay(Database& db) {
    const QString board = scalar(db,
                                 u"SELECT MIN(ni.LinkScheda) FROM NoteIncassi ni JOIN NoteTeste nt "
                                 u"ON nt.id = ni.IdTesta WHERE nt.CodCausale = 'CH'"_s);
    if (board.isEmpty()) return;
    const QString reading = scalar(
        db,
        u"SELECT ni.id FROM NoteIncassi ni JOIN NoteTeste nt ON nt.id = ni.IdTesta WHERE "
        u"nt.CodCausale = 'CH' AND ni.LinkScheda = %1 ORDER BY ni.DataIncasso DESC, ni.id DESC "
        u"LIMIT 1"_s.arg(board));
    const auto columnsOf = [&](const char* table, const char* skipped) {
        return scalar(db,
                      u"SELECT group_concat(name, ', ') FROM pragma_table_info('%1') WHERE "
                      u"name NOT IN (%2)"_s.arg(QLatin1String(table), QLatin1String(skipped)));
    };
    const QString heads = columnsOf("NoteTeste", "'id'");
    exec(db,
         u"INSERT INTO NoteTeste (%1) SELECT %1 FROM NoteTeste WHERE id = (SELECT IdTesta "
         u"FROM NoteIncassi WHERE id = %2)"_s.arg(heads, reading));
    const QString readings = columnsOf("NoteIncassi", "'id', 'IdTesta', 'LivelloH1'");
    exec(db,
         u"INSERT INTO NoteIncassi (IdTesta, LivelloH1, %1) SELECT last_insert_rowid(), "
         u"LivelloH1 + 10, %1 FROM NoteIncassi WHERE id = %2"_s.arg(readings, reading));
}

}  // namespace

void writeMachineCases(Database& db, const QDate& firstDay, const QDate& lastDay) {
    // Counters that count half or tenth euros, on the board and its readings alike.
    exec(db,
         u"UPDATE MagSchede SET MoltiplicatoreIN = CASE id % 7 WHEN 3 THEN 0.5 ELSE 0.1 END, "
         u"MoltiplicatoreOut = CASE id % 7 WHEN 3 THEN 0.5 ELSE 0.1 END WHERE id % 7 IN (3, 5) "
         u"AND TipologiaIncasso = 6"_s);
    exec(db,
         u"UPDATE NoteIncassi SET MoltiplicatoreIN = (SELECT MoltiplicatoreIN FROM MagSchede "
         u"WHERE id = LinkScheda), MoltiplicatoreOUT = (SELECT MoltiplicatoreOut FROM "
         u"MagSchede WHERE id = LinkScheda) WHERE LinkScheda IN (SELECT id FROM MagSchede "
         u"WHERE MoltiplicatoreIN <> 1)"_s);
    // A few machines of a venue collected another way.
    exec(db,
         u"UPDATE MagSchede SET TipologiaIncasso = 5 WHERE id % 29 = 11 AND "
         u"TipologiaIncasso = 6 AND CodLocale IS NOT NULL"_s);
    // The boards in the store were last collected somewhere in the period.
    const qint64 days = firstDay.daysTo(lastDay) + 1;
    exec(db,
         u"UPDATE MagSchede SET UltimoIncasso = date('%1', '+' || ((id * 37) % %2) || ' "
         u"days') || ' 00:00:00' WHERE CodLocale IS NULL"_s.arg(firstDay.toString(u"yyyy-MM-dd"_s))
             .arg(days));
    secondCheckOnLastDay(db);
}

}  // namespace lorvane::demo
