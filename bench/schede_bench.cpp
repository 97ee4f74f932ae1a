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
//   the same statements, venue by venue, as INSERT ... SELECT on the raw
//   SQLite API into a fresh copy of the template, the main database attached;
// - the preparation per venue on N venues takes at most 1.5x that on N/10,
//   so that the main database's indexes serve the per-venue statements.
#include <sqlite3.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <chrono>
#include <cstdio>

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

const char* verdict(bool ok) { return ok ? "ok" : "MISSED"; }

QString day(const QDate& date) { return date.toString(u"yyyy-MM-dd"_s); }

// Seconds to copy the template and fill it as the card does: the customer
// accounts, the venues in use, then each venue's lines of the quarter and
// balances before it, and the cleaning of the zero balances.
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
    const QString lines = QLatin1String(workdb::columns::NoteRighe10);
    sqlite3_stmt* codes = nullptr;
    sqlite3_prepare_v2(work, "SELECT CodLocale FROM AnagraficaLocali", -1, &codes, nullptr);
    while (sqlite3_step(codes) == SQLITE_ROW) {
        const QString venue =
            QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(codes, 0)));
        exec(work,
             u"INSERT INTO NoteRighe (%1) SELECT nr.%2 FROM m.NoteRighe nr INNER JOIN "
             u"m.NoteTeste nt ON nt.id = nr.IdTesta WHERE nr.CodConto LIKE '03.%' AND "
             u"nr.Data >= '%3' AND nr.Data <= '%4 00:00:00' AND nr.codLocale = '%5'"_s.arg(
                 lines, lines.split(u',').join(u", nr."_s), day(FirstDay), day(LastDay), venue));
        exec(work,
             u"INSERT INTO Saldi (id, CodiceConto, Descrizione, dare, avere, saldo, Mastro, "
             u"TipoConto, CodiceLocale, LivelloConto) SELECT apc.id, tmp.CodConto, "
             u"apc.Descrizione, tmp.TotDare, tmp.TotAvere, tmp.TotDare - tmp.TotAvere, '03', "
             u"apc.TipoConto, '%1', apc.LivelloConto FROM m.AnagraficaPianoConti apc INNER JOIN "
             u"(SELECT CodConto, total(Dare) AS TotDare, total(Avere) AS TotAvere FROM "
             u"m.NoteRighe nr INNER JOIN m.NoteTeste nt ON nt.id = nr.IdTesta WHERE nr.CodConto "
             u"LIKE '03.%' AND nr.Data < '%2' AND nr.codLocale = '%1' GROUP BY CodConto) tmp ON "
             u"tmp.CodConto = apc.CodiceConto WHERE apc.LivelloConto = 2 AND apc.CodiceConto "
             u"LIKE '03.%'"_s.arg(venue, day(FirstDay)));
    }
    sqlite3_finalize(codes);
    exec(work,
         u"DELETE FROM Saldi WHERE CodiceLocale NOT IN (SELECT codLocale FROM NoteRighe) "
         u"AND saldo = 0"_s);
    exec(work, u"INSERT INTO Parametri (Parametri) VALUES ('Parametri di ricerca: ')"_s);
    exec(work, u"COMMIT"_s);
    sqlite3_close(work);
    return seconds(start);
}

// "lines/balances" of a filled work file.
QString cardCounts(const QString& path) {
    sqlite3* work = openRaw(path);
    const QString counts = u"%1/%2"_s.arg(scalar(work, u"SELECT COUNT(*) FROM NoteRighe"_s))
                               .arg(scalar(work, u"SELECT COUNT(*) FROM Saldi"_s));
    sqlite3_close(work);
    return counts;
}

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
    qputenv("LORVANE_TEMP1", folder.filePath(u"temp1"_s).toUtf8());
    QDir().mkpath(platform::workFolder());
    platform::setToday([] { return LastDay; });
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
