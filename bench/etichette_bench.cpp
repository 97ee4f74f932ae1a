// Measures the board labels on a demo installation topped up to 5,000 boards.
//
//   etichette_bench [--venues N] [--repeat R] [--check]
//
// Targets: "Tutte le schede" prepared in at most 3x an anchor measured in the
// same run (the same two statements as INSERT ... SELECT on the raw SQLite
// API into a fresh copy of the template, the main database attached), and
// the labels of the 70 x 37 sheet rendered and written to PDF at 200 pages a
// second or more.
#include <sqlite3.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <cstdio>

#include "engine/pdf_writer.h"
#include "engine/renderer.h"
#include "generated_table.h"
#include "host/demo/demo_data.h"
#include "platform/clock.h"
#include "platform/windows_paths.h"
#include "screen_runner.h"
#include "workdb/column_lists.h"

namespace {

using namespace lorvane;
using namespace lorvane::bench;
using namespace Qt::StringLiterals;
using host::ScreenAction;

const QDate LastDay(2025, 12, 31);
constexpr int Boards = 5000;

constexpr char inUse[] =
    "(ms.Obsoleto = 0 OR ms.Obsoleto IS NULL) AND (ms.Venduto = 0 OR ms.Venduto IS NULL) AND "
    "(ms.Dismesso = 0 OR ms.Dismesso IS NULL)";

// Copies boards in use of the demo until `Boards` are in use, each with a
// code of its own, as a warehouse of that size has them.
void topUp(const QString& installation) {
    sqlite3* db = openRaw(installation + u"/Lorvane.db"_s);
    const QString list =
        QString::fromLatin1(workdb::columns::MagSchede66).split(u',').mid(1).join(u',');
    exec(db, u"BEGIN"_s);
    for (qint64 inUseNow =
             scalar(db, u"SELECT COUNT(*) FROM MagSchede ms WHERE "_s + QLatin1String(inUse));
         inUseNow < Boards;) {
        exec(db, u"INSERT INTO MagSchede (%1) SELECT %1 FROM MagSchede ms WHERE %2 LIMIT %3"_s.arg(
                     list, QLatin1String(inUse), QString::number(Boards - inUseNow)));
        inUseNow = scalar(db, u"SELECT COUNT(*) FROM MagSchede ms WHERE "_s + QLatin1String(inUse));
    }
    exec(db,
         u"UPDATE MagSchede SET CodiceABarre = '80' || substr('0000000000' || id, -11) "
         u"WHERE CodiceABarre IS NOT NULL AND CodiceABarre <> ''"_s);
    exec(db, u"COMMIT"_s);
    sqlite3_close(db);
}

// Seconds to copy the template and fill it with the statements of "Tutte le schede".
double anchor(const QString& installation, const QString& target) {
    const auto start = std::chrono::steady_clock::now();
    QFile::remove(target);
    QFile::copy(installation + u"/Report/Etichette.mdb"_s, target);
    sqlite3* work = openRaw(target);
    exec(work, u"ATTACH DATABASE '%1' AS m"_s.arg(installation + u"/Lorvane.db"_s));
    exec(work, u"BEGIN"_s);
    const QString boards = QLatin1String(workdb::columns::MagSchede66);
    exec(work,
         u"INSERT INTO MagSchede (%1) SELECT %1 FROM m.MagSchede ms WHERE %2 AND "
         u"(CodiceABarre <> '' OR NOT CodiceABarre IS NULL)"_s.arg(boards, QLatin1String(inUse)));
    exec(work,
         u"INSERT INTO SchedaCateg (idScheda, Categoria) SELECT ms.id, maa.CatApparecchio "
         u"FROM m.MagSchede ms INNER JOIN m.MagAnagArticoli maa ON maa.CodArticolo = "
         u"ms.CodArticolo WHERE %1 AND maa.tipoArticolo = 1"_s.arg(QLatin1String(inUse)));
    exec(work, u"COMMIT"_s);
    sqlite3_close(work);
    return seconds(start);
}

// "boards/categories" of a filled work file.
QString counts(const QString& path) {
    sqlite3* work = openRaw(path);
    const QString text = u"%1/%2"_s.arg(scalar(work, u"SELECT COUNT(*) FROM MagSchede"_s))
                             .arg(scalar(work, u"SELECT COUNT(*) FROM SchedaCateg"_s));
    sqlite3_close(work);
    return text;
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    ScreenBenchOptions command = readOptions(app.arguments());
    QTemporaryDir folder;
    useBenchFolder(folder.path(), LastDay);
    qputenv("XDG_DATA_HOME", folder.filePath(u"data"_s).toUtf8());
    const QString installation = folder.filePath(u"demo"_s);
    demo::DemoOptions options;
    options.venues = std::min(command.venues, 200);
    options.months = 1;
    options.lastDay = LastDay;
    demo::writeDemoInstallation(installation, options);
    topUp(installation);

    const QString anchorFile = folder.filePath(u"anchor.mdb"_s);
    const QString workFile = platform::workFolder() + u"/Etichette.mdb"_s;
    ScreenRunner runs(installation);
    runs.open(u"StampaEtichette"_s);
    const auto [anchorTook, prepared] = bestInTurns(
        command.repeat, [&] { return anchor(installation, anchorFile); },
        [&] { return runs.prepare(); });
    const QString expected = counts(anchorFile);
    const QString got = counts(workFile);
    const bool rows = got == expected && runs.failure.isEmpty() && runs.messages.isEmpty();
    std::printf("StampaEtichette, \"Tutte le schede\", %d boards in use (best of %d)\n", Boards,
                command.repeat);
    std::printf("rows (boards/categories): anchor %s, report %s   %s\n", qPrintable(expected),
                qPrintable(got), verdict(rows));
    const double ratio = prepared / anchorTook;
    std::printf("  anchor %7.3f s, PreparaStampa %7.3f s = %5.2f x anchor (<= 3)   %s\n",
                anchorTook, prepared, ratio, verdict(ratio <= 3));

    // The labels of the filled work file, 24 to a page, to PDF.
    const engine::LayoutSpec layout =
        engine::loadLayout(installation + u"/Report/EtichetteSchede3x8.lrl"_s);
    size_t pages = 0;
    double pageDocument = 0;
    const double rendered = best(command.repeat, [&] {
        engine::PageDocument document;
        const double built = timed([&] {
            document = engine::render(layout, engine::RenderInfo{u"Etichette"_s, u"bench"_s, {}});
        });
        const double written =
            timed([&] { engine::writePdf(document, folder.filePath(u"etichette.pdf"_s)); });
        pages = document.pages.size();
        pageDocument = built;
        return built + written;
    });
    std::printf("  page document %.3f s, PDF %.3f s\n", pageDocument, rendered - pageDocument);
    const double perSecond = double(pages) / rendered;
    std::printf("labels to PDF: %zu pages in %7.3f s = %6.0f pages/s (>= 200)   %s\n", pages,
                rendered, perSecond, verdict(perSecond >= 200));

    const bool ok = rows && ratio <= 3 && perSecond >= 200 && pages > 0;
    std::printf("\n%s\n", ok ? "targets met" : "TARGET MISSED");
    return command.check && !ok ? 1 : 0;
}
