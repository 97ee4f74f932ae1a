// Measures CopiaTabella moving a 100,000-row, 60-column table from the main
// database into a work table, against the raw-API anchor of the same run, with
// and without letting window events through after each row.
//
//   copy_tabella_bench [--rows N] [--repeat R] [--check]
#include <QApplication>
#include <QTemporaryDir>
#include <chrono>
#include <cstdio>

#include "db/connection.h"
#include "generated_table.h"
#include "platform/windows.h"
#include "workdb/copy_routines.h"
#include "workdb/work_database.h"

namespace {

using namespace lorvane;
using namespace lorvane::bench;
using namespace Qt::StringLiterals;
using Clock = std::chrono::steady_clock;

// Opens the source through the main database's connection and copies it into
// the work table, as a report's preparation does.
double copyTabella(const QString& source, const QString& target) {
    makeEmpty(target);
    db::Connection main;
    main.Open(connectionText(source));
    workdb::ConnessioneTemporanea().Open(connectionText(target));
    const auto start = Clock::now();
    db::RecordsetPtr origine = main.OpenRecordset(u"SELECT * FROM T"_s);
    db::RecordsetPtr destinazione = workdb::ApriTabellaTemporanea(u"SELECT * FROM T"_s);
    workdb::CopiaTabella(columnList(), *origine, *destinazione, db::Variant(0));
    destinazione->Close();
    workdb::ConnessioneTemporanea().Close();
    return seconds(start);
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    int rows = 100000, repeat = 3;
    bool check = false;
    const QStringList args = app.arguments();
    for (int i = 1; i < args.size(); ++i) {
        if (args[i] == u"--rows"_s && i + 1 < args.size()) rows = args[++i].toInt();
        if (args[i] == u"--repeat"_s && i + 1 < args.size()) repeat = args[++i].toInt();
        if (args[i] == u"--check"_s) check = true;
    }
    QTemporaryDir folder;
    qputenv("LORVANE_TEMP1", folder.path().toUtf8());
    const QString source = folder.filePath(u"main.db"_s);
    const QString target = folder.filePath(u"work.mdb"_s);
    makeSource(source, rows);

    const double anchor = best(repeat, [&] { return rawCopy(source, target); });
    const double withEvents = best(repeat, [&] { return copyTabella(source, target); });
    platform::setEventPump([] {});
    const double withoutEvents = best(repeat, [&] { return copyTabella(source, target); });
    platform::setEventPump(nullptr);

    const double ratio = withEvents / anchor;
    std::printf("rows %d x %d columns (best of %d)\n", rows, Columns, repeat);
    std::printf("anchor: raw prepared INSERT                 %8.3f s\n", anchor);
    std::printf(
        "CopiaTabella, events let through each row   %8.3f s = %.2f x anchor (target <= 2.5)\n",
        withEvents, ratio);
    std::printf(
        "CopiaTabella, no events                     %8.3f s = %.2f x anchor; events cost %.0f%%\n",
        withoutEvents, withoutEvents / anchor, 100.0 * (withEvents - withoutEvents) / withEvents);
    const bool ok = ratio <= 2.5;
    std::printf("%s\n", ok ? "target met" : "TARGET MISSED");
    return check && !ok ? 1 : 0;
}
