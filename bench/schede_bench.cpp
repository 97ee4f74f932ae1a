// Measures the customer card ("StampaSchedaLocale") with "Tutti i locali",
// which walks the venues at two statements of the main database each.
//
//   schede_bench [--venues N] [--repeat R] [--check]
//
// Targets, on demo installations of N (500) and N/10 venues with 12 months
// of notes, over the last quarter (a whole year's lines pass the card's
// 16-bit count on 500 venues) with the nine months before as the balance
// brought forward:
// - the preparation takes at most 3x an anchor measured in the same run:
//   the same statements, venue by venue, on the raw SQLite API, their rows
//   copied by name with a prepared INSERT into a fresh copy of the template,
//   the main database attached;
// - the preparation per venue on N venues takes at most 1.5x that on N/10,
//   so that the main database's indexes serve the per-venue statements.
#include <sqlite3.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "generated_table.h"
#include "platform/clock.h"
#include "platform/windows_paths.h"
#include "screen_runner.h"
#include "workdb/column_lists.h"

namespace {

using namespace lorvane;
using namespace lorvane::bench;
using namespace Qt::StringLiterals;
using Clock = std::chrono::steady_clock;
using host::ScreenAction;

const QDate LastDay(2025, 12, 31);
const QDate FirstDay(2025, 10, 1);

QString day(const QDate& date) { return date.toString(u"yyyy-MM-dd"_s); }

// Steps `select` on the raw API and copies the columns `names` of each row
// (the first column of each name, as the copy by name does) with `insert`,
// which takes them in that order.
void copyRows(sqlite3* db, const QString& select, sqlite3_stmt* insert, const QStringList& names) {
    sqlite3_stmt* rows = nullptr;
    if (sqlite3_prepare_v2(db, select.toUtf8().constData(), -1, &rows, nullptr) != SQLITE_OK) {
        std::fprintf(stderr, "%s: %s\n", sqlite3_errmsg(db), qPrintable(select));
        std::exit(2);
    }
    std::vector<int> columns;
    for (const QString& name : names) {
        int found = -1;
        for (int i = 0; i < sqlite3_column_count(rows) && found < 0; ++i)
            if (name.compare(QString::fromUtf8(sqlite3_column_name(rows, i)),
                             Qt::CaseInsensitive) == 0)
                found = i;
        columns.push_back(found);
    }
    while (sqlite3_step(rows) == SQLITE_ROW) {
        for (size_t i = 0; i < columns.size(); ++i) {
            if (columns[i] < 0) {
                sqlite3_bind_null(insert, int(i) + 1);
            } else {
                sqlite3_bind_value(insert, int(i) + 1, sqlite3_column_value(rows, columns[i]));
            }
        }
        sqlite3_step(insert);
        sqlite3_reset(insert);
    }
    sqlite3_finalize(rows);
}

sqlite3_stmt* insertInto(sqlite3* db, const QString& table, const QStringList& names) {
    const QStringList marks(names.size(), u"?"_s);
    sqlite3_stmt* insert = nullptr;
    sqlite3_prepare_v2(
        db,
        u"INSERT INTO %1 (%2) VALUES (%3)"_s.arg(table, names.join(u','), marks.join(u','))
            .toUtf8()
            .constData(),
        -1, &insert, nullptr);
    return insert;
}

// Seconds to copy the template and fill it as the card does, with its
// statements in SQLite's words on the raw API: the customer accounts, the
// venues in use, then each venue's lines of the quarter ("SELECT *" of the
// lines and their notes) and balances before it, each row copied by name,
// and the cleaning of the zero balances.
double anchorCard(const QString& installation, const QString& target) {
    const auto start = Clock::now();
    QFile::remove(target);
    QFile::copy(installation + u"/Report/SchedaLocale.mdb"_s, target);
    sqlite3* work = openRaw(target);
    exec(work, u"ATTACH DATABASE '%1' AS m"_s.arg(installation + u"/Lorvane.db"_s));
    exec(work, u"BEGIN"_s);
    const QString chart = QLatin1String(workdb::columns::AnagraficaPianoConti9);
    exec(work,
         u"INSERT INTO AnagraficaPianoConti (%1) SELECT %2, substr(CodiceConto, 1, 2) "
         u"FROM m.AnagraficaPianoConti WHERE LivelloConto = 2 AND CodiceConto LIKE "
         u"'03.%'"_s.arg(chart, chart.section(u',', 0, -2)));
    const QString venues = QLatin1String(workdb::columns::AnagraficaLocali56);
    exec(work,
         u"INSERT INTO AnagraficaLocali (%1) SELECT %1 FROM m.AnagraficaLocali WHERE "
         u"Sospeso = 0"_s.arg(venues));
    exec(work, u"DELETE FROM m.AnagraficaLocali_Tmp"_s);
    exec(work,
         u"INSERT INTO m.AnagraficaLocali_Tmp (%1) SELECT %1 FROM AnagraficaLocali"_s.arg(venues));
    const QStringList lineNames = QString::fromLatin1(workdb::columns::NoteRighe10).split(u',');
    const QStringList balanceNames = QString::fromLatin1(workdb::columns::Saldi10).split(u',');
    sqlite3_stmt* lines = insertInto(work, u"NoteRighe"_s, lineNames);
    sqlite3_stmt* balances = insertInto(work, u"Saldi"_s, balanceNames);
    sqlite3_stmt* codes = nullptr;
    sqlite3_prepare_v2(work, "SELECT CodLocale FROM AnagraficaLocali", -1, &codes, nullptr);
    while (sqlite3_step(codes) == SQLITE_ROW) {
        const QString venue =
            QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(codes, 0)));
        copyRows(work,
                 u"SELECT * FROM m.NoteRighe nr INNER JOIN m.NoteTeste nt ON nt.id=nr.idTesta "
                 u"WHERE nr.CodConto LIKE '03.%' AND nr.Data>='%1' AND nr.Data<='%2 00:00:00' "
                 u"AND nr.codLocale='%3'"_s.arg(day(FirstDay), day(LastDay), venue),
                 lines, lineNames);
        copyRows(work,
                 u"SELECT apc.id, tmp.CodConto AS CodiceConto, apc.Descrizione, tmp.TotDare AS "
                 u"dare, tmp.TotAvere AS avere, (tmp.TotDare - tmp.TotAvere) AS saldo, '03' AS "
                 u"Mastro, apc.TipoConto, '%1' AS CodiceLocale, apc.LivelloConto FROM "
                 u"m.AnagraficaPianoConti apc INNER JOIN (SELECT CodConto, CASE WHEN SUM(Dare) "
                 u"IS NULL THEN 0 ELSE SUM(Dare) END AS TotDare, CASE WHEN SUM(Avere) IS NULL "
                 u"THEN 0 ELSE SUM(Avere) END AS TotAvere FROM m.NoteRighe nr INNER JOIN "
                 u"m.NoteTeste nt ON nt.id=nr.idTesta WHERE nr.CodConto LIKE '03.%' AND "
                 u"nr.Data<'%2' AND nr.codLocale='%1' GROUP BY CodConto) tmp ON "
                 u"tmp.CodConto=apc.CodiceConto WHERE apc.LivelloConto=2 AND apc.CodiceConto "
                 u"LIKE '03.%'"_s.arg(venue, day(FirstDay)),
                 balances, balanceNames);
    }
    sqlite3_finalize(codes);
    sqlite3_finalize(lines);
    sqlite3_finalize(balances);
    exec(work,
         u"DELETE FROM Saldi WHERE CodiceLocale NOT IN (SELECT codLocale FROM NoteRighe) "
         u"AND saldo = 0"_s);
    exec(work, u"INSERT INTO Parametri (Parametri) VALUES ('Parametri di ricerca: ')"_s);
    exec(work, u"COMMIT"_s);
    sqlite3_close(work);
    return seconds(start);
}

// "lines/balances" of a filled work file.
QString cardCounts(const QString& path) { return rowCounts(path, {"NoteRighe", "Saldi"}); }

qint64 venuesInUse(const QString& installation) {
    sqlite3* main = openRaw(installation + u"/Lorvane.db"_s);
    const qint64 venues =
        scalar(main, u"SELECT COUNT(*) FROM AnagraficaLocali WHERE Sospeso = 0"_s);
    sqlite3_close(main);
    return venues;
}

struct CardRun {
    double prepared = 0;
    QString counts, failure;
};

// The best preparation of the card over all venues in use, with what it wrote.
CardRun prepareCard(const QString& installation, int repeat) {
    ScreenRunner runs(installation);
    runs.open(u"StampaSchedaLocale"_s);
    runs.act(ScreenAction::Kind::Set, u"txtDallaData"_s, FirstDay.toString(u"dd/MM/yyyy"_s));
    runs.act(ScreenAction::Kind::Set, u"txtAllaData"_s, LastDay.toString(u"dd/MM/yyyy"_s));
    CardRun result;
    result.prepared = best(repeat, [&] { return runs.prepare(); });
    result.counts = cardCounts(platform::workFolder() + u"/SchedaLocale.mdb"_s);
    result.failure = runs.failure;
    return result;
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const ScreenBenchOptions command = readOptions(app.arguments());
    const int repeat = command.repeat;
    QTemporaryDir folder;
    useBenchFolder(folder.path(), LastDay);
    const QString large =
        writeInstallation(folder.filePath(u"grande"_s), command.venues, 12, LastDay);
    const QString small =
        writeInstallation(folder.filePath(u"piccola"_s), command.venues / 10, 12, LastDay);
    const QString anchorFile = folder.filePath(u"anchor.mdb"_s);

    const double anchor = best(repeat, [&] { return anchorCard(large, anchorFile); });
    const QString expected = cardCounts(anchorFile);
    const CardRun card = prepareCard(large, repeat);
    const CardRun fewer = prepareCard(small, repeat);
    const qint64 manyVenues = venuesInUse(large), fewVenues = venuesInUse(small);

    std::printf("\nStampaSchedaLocale, Tutti i locali, %s to %s (best of %d)\n",
                qPrintable(FirstDay.toString(u"dd/MM/yyyy"_s)),
                qPrintable(LastDay.toString(u"dd/MM/yyyy"_s)), repeat);
    const bool rows = card.failure.isEmpty() && card.counts == expected;
    std::printf(
        "%lld venues, %lld host statements: rows (lines/balances) anchor %s, report "
        "%s%s   %s\n",
        manyVenues, 2 * manyVenues + 4, qPrintable(expected), qPrintable(card.counts),
        card.failure.isEmpty() ? "" : qPrintable(u", stopped by "_s + card.failure), verdict(rows));
    const double ratio = card.prepared / anchor;
    std::printf("  anchor %7.3f s, PreparaStampa %7.3f s = %5.2f x anchor (<= 3)   %s\n", anchor,
                card.prepared, ratio, verdict(ratio <= 3));
    const double perMany = card.prepared / double(manyVenues);
    const double perFew = fewer.prepared / double(fewVenues);
    const double growth = perMany / perFew;
    std::printf("per venue: %lld venues %6.3f ms, %lld venues %6.3f ms = %4.2f x (<= 1.5)   %s\n",
                fewVenues, 1000 * perFew, manyVenues, 1000 * perMany, growth,
                verdict(growth <= 1.5 && fewer.failure.isEmpty()));
    const bool ok = rows && ratio <= 3 && growth <= 1.5 && fewer.failure.isEmpty();
    std::printf("\n%s\n", ok ? "targets met" : "TARGET MISSED");
    return command.check && !ok ? 1 : 0;
}
