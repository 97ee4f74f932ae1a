// Measures the machine reports on demo installations of 500 venues.
//
//   macchine_bench [--venues N] [--repeat R] [--check]
//
// Targets: the partial payout percentages ("PercPagamentoP") over a year, all
// venues and then 50 ticked, prepared in at most 3x an anchor measured in the
// same run: the report's statements as INSERT ... SELECT on the raw SQLite
// API into a fresh copy of its template, the main database attached. The
// hopper and change-machine situations ("SaldiHopper", "SaldiCambiamonete")
// over all venues: twice the months of readings at most twice the time.
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
const QDate FirstDay(2025, 1, 1);

// The venue filter of the partial report's statements, in SQLite's words.
QString chosen(bool ticked, const char* column) {
    return ticked ? u" AND %1 IN (SELECT CodLocale FROM m.AnagraficaLocali_Tmp)"_s.arg(
                        QLatin1String(column))
                  : QString();
}

// Seconds to copy the template and fill it with the partial report's
// statements; `venues` (none: all) go into AnagraficaLocali_Tmp first.
double anchorPartial(const QString& installation, const QString& target,
                     const QStringList& venues) {
    const auto start = Clock::now();
    QFile::remove(target);
    QFile::copy(installation + u"/Report/PercParziali.mdb"_s, target);
    sqlite3* work = openRaw(target);
    exec(work, u"ATTACH DATABASE '%1' AS m"_s.arg(installation + u"/Lorvane.db"_s));
    exec(work, u"BEGIN"_s);
    const bool ticked = !venues.isEmpty();
    if (ticked) {
        exec(work, u"DELETE FROM m.AnagraficaLocali_Tmp"_s);
        const QString list = QLatin1String(workdb::columns::AnagraficaLocali56);
        exec(work,
             u"INSERT INTO m.AnagraficaLocali_Tmp (%1) SELECT %1 FROM m.AnagraficaLocali "
             u"WHERE CodLocale IN ('%2')"_s.arg(list, venues.join(u"','"_s)));
    }
    const QString period = u"DataIncasso >= '%1' AND DataIncasso <= '%2 00:00:00'"_s.arg(
        FirstDay.toString(u"yyyy-MM-dd"_s), LastDay.toString(u"yyyy-MM-dd"_s));
    const QString readings = QLatin1String(workdb::columns::NoteIncassi76);
    exec(work,
         u"INSERT INTO NoteIncassi (%1) SELECT ni.%2 FROM m.NoteIncassi ni INNER JOIN "
         u"m.NoteTeste nt ON ni.IdTesta = nt.id WHERE ni.%3%4 AND nt.CodCausale = 'INC6'"_s.arg(
             readings, readings.split(u',').join(u", ni."_s), period,
             chosen(ticked, "ni.CodLocale")));
    const QString boards = QLatin1String(workdb::columns::MagSchede59);
    exec(work,
         u"INSERT INTO MagSchede (%1) SELECT %1 FROM m.MagSchede WHERE Obsoleto = 0 AND "
         u"Venduto = 0 AND Dismesso = 0 AND TipologiaIncasso = 6 AND id IN (SELECT "
         u"LinkScheda FROM m.NoteIncassi WHERE %2%3)"_s.arg(boards, period,
                                                            chosen(ticked, "CodLocale")));
    exec(work, u"INSERT INTO Parametri (Parametri) VALUES ('Parametri di ricerca: ')"_s);
    exec(work, u"COMMIT"_s);
    sqlite3_close(work);
    return seconds(start);
}

// "readings/boards" of a filled partial work file.
QString partialCounts(const QString& path) { return rowCounts(path, {"NoteIncassi", "MagSchede"}); }

// A screen of `code` on an installation, ready to prepare over all venues.
struct Situation {
    Situation(const QString& installation, const QString& code) : runs(installation) {
        runs.open(code);
    }
    double prepare() { return runs.prepare(); }
    // The rows the last preparation counted, -1 when it failed.
    qint16 rows() const { return runs.failure.isEmpty() ? runs.rows : qint16(-1); }
    ScreenRunner runs;
};

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const bench::ScreenBenchOptions command = bench::readOptions(app.arguments());
    const int venues = command.venues, repeat = command.repeat;
    const bool check = command.check;
    QTemporaryDir folder;
    useBenchFolder(folder.path(), LastDay);
    const QString year = writeInstallation(folder.filePath(u"anno"_s), venues, 12, LastDay);
    const QString half = writeInstallation(folder.filePath(u"semestre"_s), venues, 6, LastDay);
    const QString anchorFile = folder.filePath(u"anchor.mdb"_s);
    const QString workFile = platform::workFolder() + u"/PercParziali.mdb"_s;
    bool ok = true;

    // The partial percentages over the year: all venues, then 50 ticked.
    ScreenRunner runs(year);
    runs.open(u"PercPagamentoP"_s);
    runs.act(ScreenAction::Kind::Set, u"txtDallaData"_s, FirstDay.toString(u"dd/MM/yyyy"_s));
    runs.act(ScreenAction::Kind::Set, u"txtAllaData"_s, LastDay.toString(u"dd/MM/yyyy"_s));
    const auto [allAnchor, all] = bestInTurns(
        repeat, [&] { return anchorPartial(year, anchorFile, {}); },
        [&] { return runs.prepare(); });
    const QString allExpected = partialCounts(anchorFile);
    const QString allCounts = partialCounts(workFile);
    const QString allFailure = runs.failure;

    // The search lists the venues collected in the year; the first 50 stay ticked.
    runs.act(ScreenAction::Kind::Click, u"CmdRicerca"_s);
    const QStringList ticked = runs.tickedVenues().mid(0, 50);
    runs.act(ScreenAction::Kind::Untick, u"Tree"_s, u"A"_s);
    for (const QString& venue : ticked)
        runs.act(ScreenAction::Kind::Tick, u"Tree"_s, u"A"_s + venue);
    const auto [someAnchor, some] = bestInTurns(
        repeat, [&] { return anchorPartial(year, anchorFile, ticked); },
        [&] { return runs.prepare(); });
    const QString someExpected = partialCounts(anchorFile);
    const QString someCounts = partialCounts(workFile);

    std::printf("\nPercPagamentoP over %s to %s (best of %d)\n",
                qPrintable(FirstDay.toString(u"dd/MM/yyyy"_s)),
                qPrintable(LastDay.toString(u"dd/MM/yyyy"_s)), repeat);
    // Over a year the readings pass the 16-bit count: the run stops at
    // "Overflow" once the readings are copied, before the boards, as the
    // report does; the anchor copies both, so the ratio is an upper bound.
    const bool allRows = allFailure.isEmpty()
                             ? allCounts == allExpected
                             : allCounts.section(u'/', 0, 0) == allExpected.section(u'/', 0, 0);
    std::printf("all venues: rows (readings/boards) anchor %s, report %s%s   %s\n",
                qPrintable(allExpected), qPrintable(allCounts),
                allFailure.isEmpty() ? "" : qPrintable(u", stopped by "_s + allFailure),
                verdict(allRows));
    std::printf("  anchor %7.3f s, PreparaStampa %7.3f s = %5.2f x anchor (<= 3)   %s\n", allAnchor,
                all, all / allAnchor, verdict(all / allAnchor <= 3));
    const bool someRows = someCounts == someExpected && runs.failure.isEmpty();
    std::printf("%d ticked venues: rows anchor %s, report %s   %s\n", int(ticked.size()),
                qPrintable(someExpected), qPrintable(someCounts), verdict(someRows));
    std::printf("  anchor %7.3f s, PreparaStampa %7.3f s = %5.2f x anchor (<= 3)   %s\n",
                someAnchor, some, some / someAnchor, verdict(some / someAnchor <= 3));
    ok = allRows && someRows && all / allAnchor <= 3 && some / someAnchor <= 3 &&
         ticked.size() == 50;

    // The last notes: six months against twelve, all venues.
    std::printf("\nlast notes, all venues: 6 months against 12 (best of %d)\n", repeat);
    for (const QString& code : {u"SaldiHopper"_s, u"SaldiCambiamonete"_s}) {
        Situation onHalf(half, code), onYear(year, code);
        const auto [shorter, longer] = bestInTurns(
            repeat, [&] { return onHalf.prepare(); }, [&] { return onYear.prepare(); });
        const qint16 halfRows = onHalf.rows(), yearRows = onYear.rows();
        const double factor = longer / shorter;
        const bool met = factor <= 2 && halfRows > 0 && yearRows > 0;
        std::printf(
            "%-18s 6 months %7.3f s (%d rows), 12 months %7.3f s (%d rows): %4.2f x "
            "(<= 2)   %s\n",
            qPrintable(code), shorter, int(halfRows), longer, int(yearRows), factor, verdict(met));
        ok = ok && met;
    }

    std::printf("\n%s\n", ok ? "targets met" : "TARGET MISSED");
    return check && !ok ? 1 : 0;
}
