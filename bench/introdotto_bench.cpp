// Measures the takings report ("StampaIntrodotto") on a demo installation of
// 500 venues and a year of weekly collections, against an anchor measured in
// the same run: the same notes, lines, readings, venues, companies and boards
// copied into a fresh copy of the report's template by INSERT ... SELECT on
// the raw SQLite API, the main database attached.
//
//   introdotto_bench [--venues N] [--repeat R] [--check]
//
// Targets: the preparation at most 2x the anchor and the whole PDF run at most
// 8x, over three months; the tree path (one host statement per ticked venue)
// at most 1.5x the "Tutti i locali" path; a year's run under 1 GB at its
// peak, refused as empty exactly when its notes pass a 16-bit count.
#include <sqlite3.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <chrono>
#include <cstdio>

#include "generated_table.h"
#include "host/cli_run.h"
#include "host/demo/demo_data.h"
#include "platform/clock.h"
#include "platform/windows_paths.h"
#include "screen_runner.h"
#include "workdb/column_lists.h"
#include "workdb/work_database.h"

namespace {

using namespace lorvane;
using namespace lorvane::bench;
using namespace Qt::StringLiterals;
using Clock = std::chrono::steady_clock;
using host::ScreenAction;

const QDate LastDay(2025, 12, 31);

struct Period {
    QDate from, to;
};

// ---- the raw SQLite side: the anchor and the counts ----------------------

QString isoDay(const QDate& day) { return day.toString(u"yyyy-MM-dd"_s); }

// The notes the report selects: collections of the period, with a reading, of
// a venue that is not suspended; `prefix` names the main database.
QString selectedNotes(const Period& period, const QString& prefix) {
    return u"%1NoteTeste nt WHERE nt.CodCausale = 'INC6' AND nt.DataRegistrazione >= '%2' AND "
           u"nt.DataRegistrazione <= '%3 00:00:00' AND nt.CodLocale IN (SELECT CodLocale FROM "
           u"%1AnagraficaLocali WHERE Sospeso = 0) AND nt.id IN (SELECT IdTesta FROM "
           u"%1NoteIncassi)"_s.arg(prefix, isoDay(period.from), isoDay(period.to));
}

// How the anchor picks the rows: with the report's own statements (its joins
// with the venues chosen and their DISTINCT), or by key, as a hand-written
// copy would.
enum class Selection { ReportStatements, ByKey };

// The report's statement for `columns` ("nt.*", "nr.*", "ni.*") with the
// joins it needs, in SQLite's words.
QString reportStatement(const char* columns, bool withLines, const Period& period) {
    return u"SELECT DISTINCT %1 FROM %2(m.NoteTeste nt INNER JOIN m.NoteIncassi ni ON "
           u"ni.idTesta=nt.id)%3 INNER JOIN m.AnagraficaLocali_Tmp al ON "
           u"al.CodLocale=nt.CodLocale WHERE nt.DataRegistrazione>='%4' AND "
           u"nt.DataRegistrazione<='%5 00:00:00' AND nt.CodCausale='INC6'"_s.arg(
               QLatin1String(columns), withLines ? u"("_s : QString(),
               withLines ? u" INNER JOIN m.NoteRighe nr ON nr.idTesta=nt.id)"_s : QString(),
               isoDay(period.from), isoDay(period.to));
}

// Seconds to copy the template and fill it with the rows the report takes.
double anchorCopy(const QString& installation, const Period& period, const QString& target,
                  Selection selection) {
    const auto start = Clock::now();
    QFile::remove(target);
    QFile::copy(installation + u"/Report/Introdotto.mdb"_s, target);
    sqlite3* work = openRaw(target);
    exec(work, u"PRAGMA temp_store=MEMORY"_s);
    exec(work, u"ATTACH DATABASE '%1' AS m"_s.arg(installation + u"/Lorvane.db"_s));
    const auto insert = [&](const char* table, const char* columns, const QString& from) {
        const QString list = QLatin1String(columns);
        exec(work,
             u"INSERT INTO %1 (%2) SELECT %2 FROM %3"_s.arg(QLatin1String(table), list, from));
    };
    const bool byKey = selection == Selection::ByKey;
    exec(work, u"BEGIN"_s);
    const char* venues = workdb::columns::AnagraficaLocali56;
    if (!byKey) {
        exec(work, u"DELETE FROM m.AnagraficaLocali_Tmp"_s);
        insert("m.AnagraficaLocali_Tmp", venues, u"m.AnagraficaLocali WHERE Sospeso = 0"_s);
    }
    insert("AnagraficaLocali", venues, u"m.AnagraficaLocali WHERE Sospeso = 0"_s);
    insert("NoteTeste", workdb::columns::NoteTeste48,
           byKey ? selectedNotes(period, u"m."_s)
                 : u"("_s + reportStatement("nt.*", false, period) + u')');
    insert("NoteRighe", workdb::columns::NoteRighe10,
           byKey ? u"m.NoteRighe WHERE IdTesta IN (SELECT id FROM main.NoteTeste)"_s
                 : u"("_s + reportStatement("nr.*", true, period) + u')');
    insert("NoteIncassi", workdb::columns::NoteIncassi62,
           byKey ? u"m.NoteIncassi WHERE IdTesta IN (SELECT id FROM main.NoteTeste)"_s
                 : u"("_s + reportStatement("ni.*", false, period) + u')');
    insert("AnagraficaAziende", workdb::columns::AnagraficaAziende34, u"m.AnagraficaAziende"_s);
    insert("MagSchede", workdb::columns::MagSchede55,
           u"m.MagSchede WHERE id IN (SELECT LinkScheda FROM main.NoteIncassi)"_s);
    exec(work,
         u"INSERT INTO Parametri (Parametri, Descr1, Descr2) VALUES (' Dal %1 al %2', "
         u"'%1', '%2')"_s.arg(period.from.toString(u"dd/MM/yyyy"_s),
                              period.to.toString(u"dd/MM/yyyy"_s)));
    exec(work, u"COMMIT"_s);
    sqlite3_close(work);
    return seconds(start);
}

// "notes/lines/readings/boards" of a filled work file, to compare runs.
QString workCounts(const QString& path) {
    return rowCounts(path, {"NoteTeste", "NoteRighe", "NoteIncassi", "MagSchede"});
}

// ---- the module side: the real screen on the installation's host ----------

// A fresh takings screen on `period`, "Tutti i locali" or the tree that the
// search with nothing typed fills; gives the venues ticked.
int openTakings(ScreenRunner& runs, const Period& period, bool tree) {
    runs.open(u"StampaIntrodotto"_s);
    runs.act(ScreenAction::Kind::Set, u"txtDallaData"_s, period.from.toString(u"dd/MM/yyyy"_s));
    runs.act(ScreenAction::Kind::Set, u"txtAllaData"_s, period.to.toString(u"dd/MM/yyyy"_s));
    if (!tree) return -1;
    runs.act(ScreenAction::Kind::Click, u"CmdRicerca"_s);
    return int(runs.tickedVenues().size());
}

QString workFile() { return platform::workFolder() + u"/Introdotto.mdb"_s; }

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const bench::ScreenBenchOptions command = bench::readOptions(app.arguments());
    const int venues = command.venues, repeat = command.repeat;
    const bool check = command.check;

    QTemporaryDir folder;
    const QString installation = folder.filePath(u"demo"_s);
    useBenchFolder(folder.path(), LastDay);
    demo::DemoOptions options;
    options.venues = venues;
    options.months = 12;
    options.lastDay = LastDay;
    const double generation = timed([&] { demo::writeDemoInstallation(installation, options); });
    std::printf("demo installation: %d venues, a year to %s, written in %.1f s\n", venues,
                qPrintable(LastDay.toString(u"dd/MM/yyyy"_s)), generation);

    const Period quarter{QDate(2025, 10, 1), LastDay};
    const Period year{QDate(2025, 1, 1), LastDay};
    const QString anchorFile = folder.filePath(u"anchor.mdb"_s);
    bool ok = true;

    // Three months, all venues.
    const double byKey = best(
        repeat, [&] { return anchorCopy(installation, quarter, anchorFile, Selection::ByKey); });
    const QString byKeyCounts = workCounts(anchorFile);
    ScreenRunner runs(installation);
    openTakings(runs, quarter, false);
    const auto [anchor, prepared] = bestInTurns(
        repeat,
        [&] { return anchorCopy(installation, quarter, anchorFile, Selection::ReportStatements); },
        [&] { return runs.prepare(); });
    const QString expected = workCounts(anchorFile);
    const QString preparedCounts = workCounts(workFile());
    const double whole = best(repeat, [&] { return runs.runPdf(); });
    const bool pdf = pdfWritten(runs);
    const int ticked = openTakings(runs, quarter, true);
    const double tree = best(repeat, [&] { return runs.prepare(); });
    const QString treeCounts = workCounts(workFile());

    std::printf("\nthree months, %s to %s (best of %d)\n",
                qPrintable(quarter.from.toString(u"dd/MM/yyyy"_s)),
                qPrintable(quarter.to.toString(u"dd/MM/yyyy"_s)), repeat);
    std::printf("rows (notes/lines/readings/boards): anchor %s, by key %s, report %s, tree %s\n",
                qPrintable(expected), qPrintable(byKeyCounts), qPrintable(preparedCounts),
                qPrintable(treeCounts));
    const bool sameRows =
        expected == byKeyCounts && expected == preparedCounts && expected == treeCounts;
    std::printf("  same rows                                  %s\n", verdict(sameRows));
    std::printf("anchor: INSERT ... SELECT, the report's statements  %7.3f s\n", anchor);
    std::printf(
        "  (the same rows picked by key instead             %7.3f s: the report's\n"
        "   DISTINCT joins cost %.1fx that on their own)\n",
        byKey, anchor / byKey);
    std::printf(
        "PreparaStampa, Tutti i locali                %7.3f s = %5.2f x anchor (<= 2)   %s\n",
        prepared, prepared / anchor, verdict(prepared / anchor <= 2));
    std::printf(
        "CmdPdf, preparation + render + PDF           %7.3f s = %5.2f x anchor (<= 8)   %s\n",
        whole, whole / anchor, verdict(pdf && whole / anchor <= 8));
    if (!pdf) std::printf("  no PDF written: %s\n", qPrintable(runs.messages.join(u"; "_s)));
    std::printf(
        "PreparaStampa, tree of %3d ticked venues     %7.3f s = %5.2f x Tutti (<= 1.5) %s\n",
        ticked, tree, tree / prepared, verdict(tree / prepared <= 1.5));
    ok = sameRows && prepared / anchor <= 2 && pdf && whole / anchor <= 8 && tree / prepared <= 1.5;

    // A year: the count rule decides, the peak memory stays low. The run is
    // measured in a child process, whose outcome comes back in a file.
    sqlite3* main = openRaw(installation + u"/Lorvane.db"_s);
    const qint64 yearNotes = scalar(main, u"SELECT COUNT(*) FROM "_s + selectedNotes(year, {}));
    sqlite3_close(main);
    const QString outcomeFile = folder.filePath(u"year.txt"_s);
    const long peakKb = childPeakKb([&] { openTakings(runs, year, false); },
                                    [&] {
                                        const double took = runs.runPdf();
                                        QFile outcome(outcomeFile);
                                        if (!outcome.open(QIODevice::WriteOnly)) return;
                                        outcome.write(QString::number(took, 'f', 3).toUtf8());
                                        outcome.write("\n");
                                        outcome.write(pdfWritten(runs) ? "PDF" : "");
                                        outcome.write("\n");
                                        outcome.write(runs.messages.join(u"; "_s).toUtf8());
                                        outcome.write("\n");
                                        outcome.write(QByteArray::number(statusKb("VmHWM")));
                                    });
    QFile outcome(outcomeFile);
    const QStringList lines = outcome.open(QIODevice::ReadOnly)
                                  ? QString::fromUtf8(outcome.readAll()).split(u'\n')
                                  : QStringList();
    const bool refused = yearNotes > 32767;
    const bool ruleKept =
        lines.size() == 4 &&
        (refused ? lines[1].isEmpty() && lines[2] == u"Overflow; Nessun dato da stampare"_s
                 : lines[1] == u"PDF"_s && lines[2].isEmpty());
    const long totalKb = lines.value(3).toLong();
    const bool lowPeak = peakKb > 0 && totalKb < 1024 * 1024;
    std::printf("\na year, %s to %s: %lld notes, %s by the 16-bit count\n",
                qPrintable(year.from.toString(u"dd/MM/yyyy"_s)),
                qPrintable(year.to.toString(u"dd/MM/yyyy"_s)), yearNotes,
                refused ? "refused" : "printed");
    std::printf(
        "CmdPdf                                       %7s s, %s   %s\n", qPrintable(lines.value(0)),
        qPrintable(lines.value(1).isEmpty() ? u"message: "_s + lines.value(2) : u"PDF written"_s),
        verdict(ruleKept));
    std::printf("peak memory of the process during the run    %7.0f MB (< 1024)   %s\n",
                totalKb / 1024.0, verdict(lowPeak));
    std::printf("  of which the run added                     %7.0f MB\n", peakKb / 1024.0);
    ok = ok && ruleKept && lowPeak;

    std::printf("\n%s\n", ok ? "targets met" : "TARGET MISSED");
    return check && !ok ? 1 : 0;
}
