// The takings report's demo layouts end to end: their template filled the way
// the screen fills it (the collection notes of a period with their readings
// and lines, the venues, companies and boards), "lorvane render" on each, and
// readers nobody here wrote finding in the files the totals that a plain sum
// over the copied rows gives.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <algorithm>

#include "host/demo/demo_data.h"
#include "support/process.h"
#include "workdb/column_lists.h"

namespace lorvane::demo {
namespace {

using namespace Qt::StringLiterals;
using testing::ProcessResult;
using testing::runProgram;

// The screen's copy, with its column lists: February and March 2025, the
// readings of one concessionaire only, and a venue with notes listed twice.
QString fillScript(const QString& mainDatabase) {
    namespace c = workdb::columns;
    const auto copy = [](const char* table, const char* columns, const QString& where) {
        const QString list = QString::fromLatin1(columns);
        return u"INSERT INTO %1 (%2) SELECT %2 FROM m.%1 %3;\n"_s.arg(QString::fromLatin1(table),
                                                                      list, where);
    };
    return u"ATTACH '%1' AS m;\n"_s.arg(mainDatabase) +
           copy("NoteTeste", c::NoteTeste48,
                u"WHERE CodCausale = 'INC6' AND DataRegistrazione >= '2025-02-01' AND "
                u"DataRegistrazione < '2025-04-01'"_s) +
           copy("NoteIncassi", c::NoteIncassi62,
                u"WHERE IdTesta IN (SELECT id FROM main.NoteTeste) AND "
                u"CodConcessionario = 'ORIONE'"_s) +
           copy("NoteRighe", c::NoteRighe10,
                u"WHERE IdTesta IN (SELECT id FROM main.NoteTeste)"_s) +
           copy("AnagraficaLocali", c::AnagraficaLocali56, {}) +
           copy("AnagraficaLocali", c::AnagraficaLocali56,
                u"WHERE CodLocale = (SELECT Min(CodLocale) FROM main.NoteTeste)"_s) +
           copy("AnagraficaAziende", c::AnagraficaAziende34, {}) +
           copy("MagSchede", c::MagSchede55, {}) +
           u"INSERT INTO Parametri VALUES (' Dal 01/02/2025 al 31/03/2025', '01/02/2025', "
           u"'31/03/2025', 'ORIONE');\n"_s;
}

// "1.234.567,89" as cents.
qint64 cents(QString amount) { return amount.remove(u'.').remove(u',').toLongLong(); }

class TakingsReport : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        scratch = new QTemporaryDir;
        DemoOptions options;
        options.venues = 20;
        options.months = 4;
        options.seed = 7;
        options.lastDay = QDate(2025, 4, 30);
        writeDemoInstallation(installation(), options);
        QDir().mkpath(temp1());
        ASSERT_TRUE(QFile::copy(installation() + u"/Report/Introdotto.mdb"_s, workFile()));

        sqlite3* db = nullptr;
        ASSERT_EQ(sqlite3_open_v2(QFile::encodeName(workFile()).constData(), &db,
                                  SQLITE_OPEN_READWRITE, nullptr),
                  SQLITE_OK);
        char* error = nullptr;
        const int rc =
            sqlite3_exec(db, fillScript(installation() + u"/Lorvane.db"_s).toUtf8().constData(),
                         nullptr, nullptr, &error);
        EXPECT_EQ(rc, SQLITE_OK) << (error ? error : "");
        sqlite3_free(error);
        const auto sumInCents = [db](const char* sql) {
            sqlite3_stmt* statement = nullptr;
            sqlite3_prepare_v2(db, sql, -1, &statement, nullptr);
            const qint64 value =
                sqlite3_step(statement) == SQLITE_ROW ? sqlite3_column_int64(statement, 0) : -1;
            sqlite3_finalize(statement);
            return value;
        };
        takings = sumInCents("SELECT Round(Sum(TotIntrodotto) * 100) FROM NoteTeste");
        readingsIn = sumInCents("SELECT Round(Sum(ParzialeIn) * 100) FROM NoteIncassi");
        readings = sumInCents("SELECT Count(*) FROM NoteIncassi");
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(db, "SELECT DISTINCT Insegna FROM AnagraficaLocali", -1, &statement,
                           nullptr);
        while (sqlite3_step(statement) == SQLITE_ROW)
            venues << QString::fromUtf8(
                reinterpret_cast<const char*>(sqlite3_column_text(statement, 0)));
        sqlite3_finalize(statement);
        sqlite3_close(db);
    }
    static void TearDownTestSuite() { delete scratch; }

    static QString installation() { return scratch->filePath(u"demo"_s); }
    static QString temp1() { return scratch->filePath(u"temp1"_s); }
    static QString workFile() { return temp1() + u"/Introdotto.mdb"_s; }

    // Renders the installation's layout `name` to PDF and XLS; gives the PDF's text.
    static QString render(const QString& name) {
        const ProcessResult result = runProgram(
            QString::fromUtf8(LORVANE_PROGRAM),
            {u"render"_s, installation() + u"/Report/"_s + name + u".lrl"_s, u"--pdf"_s,
             scratch->filePath(name + u".pdf"_s), u"--xls"_s, scratch->filePath(name + u".xls"_s)},
            {}, {u"LORVANE_TEMP1="_s + temp1()});
        EXPECT_EQ(result.exitCode, 0) << result.err.toStdString();
        return runProgram(u"pdftotext"_s,
                          {u"-layout"_s, scratch->filePath(name + u".pdf"_s), u"-"_s})
            .out;
    }

    static inline QTemporaryDir* scratch = nullptr;
    static inline qint64 takings = 0, readingsIn = 0, readings = 0;
    static inline QStringList venues;  // their signs
};

TEST_F(TakingsReport, PerVenueTotalIsThatOfTheNotesInPdfAndWorkbook) {
    ASSERT_GT(takings, 0);
    const QString text = render(u"Introdotto"_s);
    EXPECT_TRUE(text.contains(u"Dal 01/02/2025 al 31/03/2025"_s));
    const QRegularExpressionMatch total =
        QRegularExpression(u"Totale generale\\s+([\\d.]+,\\d\\d)"_s).match(text);
    ASSERT_TRUE(total.hasMatch()) << text.right(600).toStdString();
    EXPECT_EQ(cents(total.captured(1)), takings);

    // Each venue's total names the venue; each page after the first opens
    // with the heading of the venue it goes on with.
    const auto namesAVenue = [](const QString& text) {
        return std::any_of(venues.begin(), venues.end(),
                           [&](const QString& venue) { return text.contains(venue); });
    };
    const QRegularExpression venueTotal(u"^\\s*Totale (?!generale)(.*)$"_s,
                                        QRegularExpression::MultilineOption);
    int totals = 0;
    for (auto it = venueTotal.globalMatch(text); it.hasNext(); ++totals) {
        const QString line = it.next().captured(0);
        EXPECT_TRUE(namesAVenue(line)) << line.toStdString();
    }
    EXPECT_GT(totals, 1);
    const QStringList pages = text.split(u'\f', Qt::SkipEmptyParts);
    ASSERT_GT(pages.size(), 2);
    for (qsizetype p = 1; p + 1 < pages.size(); ++p) {
        const QStringList lines = pages[p].split(u'\n', Qt::SkipEmptyParts);
        const auto heading = std::find_if(lines.begin(), lines.end(), [](const QString& line) {
            return line.contains(u"Esattore"_s);
        });
        ASSERT_LT(heading + 1, lines.end());
        EXPECT_TRUE(namesAVenue(*(heading + 1)))
            << "page " << p + 1 << ": " << (heading + 1)->toStdString();
    }

    // The first figure of the workbook's grand total row, a number.
    const char* grandTotal =
        "import sys, xlrd\n"
        "s = xlrd.open_workbook(sys.argv[1]).sheet_by_index(0)\n"
        "for r in range(s.nrows):\n"
        "    if s.cell_value(r, 0) == 'Totale generale':\n"
        "        print([round(c.value * 100) for c in s.row(r) if c.ctype == "
        "xlrd.XL_CELL_NUMBER][0])\n";
    const QString figure =
        runProgram(u"/usr/bin/python3"_s,
                   {u"-c"_s, QString::fromUtf8(grandTotal), scratch->filePath(u"Introdotto.xls"_s)})
            .out.trimmed();
    EXPECT_EQ(figure.toLongLong(), takings) << figure.toStdString();
}

TEST_F(TakingsReport, PerConcessionaireTotalIsThatOfTheReadings) {
    ASSERT_GT(readingsIn, 0);
    const QString text = render(u"IntrodottoConcessionario"_s);
    EXPECT_TRUE(text.contains(u"Concessionario: ORIONE"_s));
    const QRegularExpressionMatch total =
        QRegularExpression(u"Totale generale\\s+([\\d.]+)\\s+([\\d.]+,\\d\\d)"_s).match(text);
    ASSERT_TRUE(total.hasMatch()) << text.right(600).toStdString();
    EXPECT_EQ(cents(total.captured(1)), readings);
    EXPECT_EQ(cents(total.captured(2)), readingsIn);
}

}  // namespace
}  // namespace lorvane::demo
