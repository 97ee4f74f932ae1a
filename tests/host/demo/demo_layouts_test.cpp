// Every layout the demo installation's catalogues name: it loads, reads the
// work file its catalogue row names, and its query, run on that file as the
// template makes it, gives every field the layout shows. The templates'
// copies of the suite's tables are those of the main database.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QSet>
#include <QTemporaryDir>

#include "engine/layout.h"
#include "engine/renderer.h"
#include "host/demo/demo_data.h"
#include "platform/runtime_error.h"

namespace lorvane::demo {
namespace {

using namespace Qt::StringLiterals;

// Every row of `sql` on the SQLite file `path`, cells joined by "|", one row a line.
QStringList rows(const QString& path, const QString& sql) {
    sqlite3* db = nullptr;
    sqlite3_open_v2(QFile::encodeName(path).constData(), &db, SQLITE_OPEN_READONLY, nullptr);
    sqlite3_stmt* statement = nullptr;
    QStringList result;
    if (sqlite3_prepare_v2(db, sql.toUtf8().constData(), -1, &statement, nullptr) != SQLITE_OK)
        ADD_FAILURE() << path.toStdString() << ": " << sqlite3_errmsg(db);
    while (statement && sqlite3_step(statement) == SQLITE_ROW) {
        QStringList cells;
        for (int i = 0; i < sqlite3_column_count(statement); ++i)
            cells << QString::fromUtf8(
                reinterpret_cast<const char*>(sqlite3_column_text(statement, i)));
        result << cells.join(u'|');
    }
    sqlite3_finalize(statement);
    sqlite3_close(db);
    return result;
}

class DemoLayouts : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        scratch = new QTemporaryDir;
        DemoOptions options;
        options.venues = 3;
        options.months = 1;
        options.lastDay = QDate(2025, 1, 31);
        writeDemoInstallation(installation(), options);
    }
    static void TearDownTestSuite() { delete scratch; }
    void TearDown() override { qunsetenv("LORVANE_TEMP1"); }

    static QString installation() { return scratch->filePath(u"demo"_s); }
    // "Report\Introdotto.lrl" as a path in the installation.
    static QString local(const QString& suitePath) {
        return installation() + u'/' + QString(suitePath).replace(u'\\', u'/');
    }
    // Each catalogue's rows: code|layout|work file.
    static QStringList catalogueRows() {
        QStringList all;
        for (const QString& catalogue : {u"/Stampe.db"_s, u"/pers/StampePers.db"_s})
            all += rows(installation() + catalogue,
                        u"SELECT codiceStampa, NomeReport, nomeTemporaneo FROM stampe"_s);
        return all;
    }

    static inline QTemporaryDir* scratch = nullptr;
};

TEST_F(DemoLayouts, EveryLayoutRendersOnItsEmptyTemplate) {
    const QStringList catalogue = catalogueRows();
    ASSERT_GE(catalogue.size(), 5);
    for (const QString& row : catalogue) {
        const QStringList cell = row.split(u'|');
        SCOPED_TRACE(row.toStdString());
        QTemporaryDir temp1;
        qputenv("LORVANE_TEMP1", temp1.path().toUtf8());
        try {
            const engine::LayoutSpec layout = engine::loadLayout(local(cell[1]));
            EXPECT_EQ(layout.workFile, QFileInfo(local(cell[2])).fileName())
                << "the layout reads the work file its catalogue row prepares";
            ASSERT_TRUE(QFile::copy(local(cell[2]), temp1.filePath(layout.workFile)));
            const engine::PageDocument document = engine::render(layout, {});
            EXPECT_EQ(document.pages.size(), 1u);
        } catch (const RuntimeError& error) {
            ADD_FAILURE() << error.what();
        }
    }
}

TEST_F(DemoLayouts, EveryBuiltInReportFileIsNamedByACatalogueRow) {
    QSet<QString> named;
    // A work file that several codes share is written from the first one's folder.
    QHash<QString, QString> templateOwner;
    for (const QString& row : catalogueRows()) {
        const QStringList cell = row.split(u'|');
        const QString owner = templateOwner.contains(cell[2]) ? templateOwner[cell[2]] : cell[0];
        templateOwner.insert(cell[2], owner);
        named << cell[0] + u'/' + QFileInfo(local(cell[1])).fileName()
              << owner + u'/' + QFileInfo(local(cell[2])).completeBaseName() + u".sql"_s;
    }
    QSet<QString> files, included;
    for (QDirIterator it(u":/reports"_s, QDir::Files, QDirIterator::Subdirectories);
         it.hasNext();) {
        QFile file(it.next());
        files << file.fileName().mid(QStringLiteral(":/reports/").size());
        if (!file.open(QIODevice::ReadOnly)) continue;
        for (const QByteArray& line : file.readAll().split('\n'))
            if (line.startsWith("-- include ")) included << QString::fromUtf8(line.mid(11));
    }
    const QSet<QString> missing = (included + named) - files;
    EXPECT_TRUE(missing.isEmpty()) << QStringList(missing.values()).join(u' ').toStdString();
    for (const QString& file : files)
        EXPECT_TRUE(named.contains(file) || included.contains(file))
            << file.toStdString() << " is never installed";
}

TEST_F(DemoLayouts, TemplatesDeclareTheSuitesTablesAsTheMainDatabaseDoes) {
    const QString columns =
        u"SELECT p.name, p.type FROM pragma_table_info('%1') p ORDER BY p.cid"_s;
    QSet<QString> templates;
    for (const QString& row : catalogueRows())
        templates << local(row.split(u'|')[2]);
    int shared = 0;
    for (const QString& work : templates) {
        for (const QString& table : rows(work,
                                         u"SELECT name FROM sqlite_master WHERE type = "
                                         u"'table' AND name <> 'sqlite_sequence'"_s)) {
            const QString inMain =
                rows(installation() + u"/Lorvane.db"_s, columns.arg(table)).join(u' ');
            if (inMain.isEmpty()) continue;  // a table of the report's own
            // A report may add columns of its own after the suite's (the account
            // card's lines carry their note's collector).
            const QString inWork = rows(work, columns.arg(table)).join(u' ');
            EXPECT_EQ(inWork.left(inMain.size()).toStdString(), inMain.toStdString())
                << table.toStdString() << " in " << work.toStdString();
            EXPECT_TRUE(inWork.size() == inMain.size() || inWork.at(inMain.size()) == u' ')
                << table.toStdString() << " in " << work.toStdString();
            ++shared;
        }
    }
    EXPECT_GT(shared, 0);
}

}  // namespace
}  // namespace lorvane::demo
