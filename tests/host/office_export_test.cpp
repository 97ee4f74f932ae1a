// The exported workbook and document as their users open them: LibreOffice
// turns each demo layout's .xls into CSV (raw values) and .xlsx (cell types,
// page setup), and its .doc into text (the figures) and .docx (the table's
// columns); each must hold the columns and the figures of the PDF of the same
// run.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QSettings>
#include <QTemporaryDir>
#include <algorithm>
#include <map>

#include "host/demo/demo_data.h"
#include "support/process.h"

namespace lorvane {
namespace {

using namespace Qt::StringLiterals;
using testing::ProcessResult;
using testing::runProgram;

struct LayoutRow {
    const char* name;
    const char* code;
    QStringList choice;    // the actions that pick the layout
    QStringList headings;  // the page header's texts, one per column
    QStringList figures;   // the headings of the columns of amounts
    QStringList counts;    // the headings of other columns of numbers
    bool landscape;
};

const LayoutRow layouts[] = {
    {"TrialBalance",
     "StampaBilancio",
     {u"set"_s, u"chkContiPatrimoniali=1"_s, u"set"_s, u"chkContiEconomici=1"_s, u"pick"_s,
      u"List1=0"_s},
     {u"Conto"_s, u"Descrizione"_s, u"Dare"_s, u"Avere"_s, u"Saldo"_s},
     {u"Dare"_s, u"Avere"_s, u"Saldo"_s},
     {},
     false},
    {"TrialBalancePersonal",
     "StampaBilancio",
     {u"set"_s, u"chkContiPatrimoniali=1"_s, u"set"_s, u"chkContiEconomici=1"_s, u"pick"_s,
      u"Pers=1"_s, u"pick"_s, u"List2=0"_s},
     {u"Conto"_s, u"Descrizione"_s, u"Dare"_s, u"Avere"_s, u"Saldo"_s},
     {u"Dare"_s, u"Avere"_s, u"Saldo"_s},
     {},
     false},
    {"TakingsByVenue",
     "StampaIntrodotto",
     {u"pick"_s, u"List1=0"_s},
     {u"Data"_s, u"Esattore"_s, u"Introdotto"_s, u"Uscite"_s, u"PREU"_s, u"AAMS"_s, u"Rete"_s,
      u"Utile locale"_s, u"Utile noleggiatore"_s},
     {u"Introdotto"_s, u"Uscite"_s, u"PREU"_s, u"AAMS"_s, u"Rete"_s, u"Utile locale"_s,
      u"Utile noleggiatore"_s},
     {},
     true},
    {"TakingsByConcessionaire",
     "StampaIntrodotto",
     {u"pick"_s, u"List1=1"_s},
     {u"Locale"_s, u"Insegna"_s, u"Città"_s, u"Letture"_s, u"Introdotto"_s, u"Uscite"_s, u"PREU"_s,
      u"AAMS"_s, u"Rete"_s},
     {u"Introdotto"_s, u"Uscite"_s, u"PREU"_s, u"AAMS"_s, u"Rete"_s},
     {u"Letture"_s},
     true},
};

// Reads what LibreOffice made of one layout's files and prints it as JSON: the
// CSV's rows, the types of the .xlsx cells by "row,column" (0-based), its page
// setup, and the column count of every table of the .docx.
constexpr char readerScript[] = R"py(
import csv, json, re, sys, zipfile
from xml.etree import ElementTree
rows = list(csv.reader(open(sys.argv[1], encoding='utf-8')))
ns = {'m': 'http://schemas.openxmlformats.org/spreadsheetml/2006/main'}
book = zipfile.ZipFile(sys.argv[2])
sheet = ElementTree.fromstring(book.read('xl/worksheets/sheet1.xml'))
def position(ref):
    letters, digits = re.match(r'([A-Z]+)(\d+)', ref).groups()
    column = 0
    for letter in letters:
        column = column * 26 + ord(letter) - 64
    return '%d,%d' % (int(digits) - 1, column - 1)
types = {position(c.get('r')): c.get('t', 'n') for c in sheet.iter('{%s}c' % ns['m'])
         if c.find('m:v', ns) is not None}
fit = sheet.find('m:sheetPr/m:pageSetUpPr', ns)
setup = sheet.find('m:pageSetup', ns)
document = zipfile.ZipFile(sys.argv[3]).read('word/document.xml').decode('utf-8')
tables = [grid.count('<w:gridCol') for grid in re.findall(r'<w:tblGrid>(.*?)</w:tblGrid>', document)]
print(json.dumps({'rows': rows, 'types': types,
                  'fitToPage': fit.get('fitToPage') if fit is not None else None,
                  'setup': dict(setup.attrib) if setup is not None else {},
                  'tables': tables}))
)py";

// Every amount written the Italian way ("-1.234,56") in a text, as cents, sorted.
std::vector<qint64> amountsIn(const QString& text) {
    static const QRegularExpression amount(
        u"(?<![\\d,.])-?\\d{1,3}(?:\\.\\d{3})*,\\d\\d(?![\\d,])"_s);
    std::vector<qint64> cents;
    for (auto it = amount.globalMatch(text); it.hasNext();)
        cents.push_back(it.next().captured().remove(u'.').remove(u',').toLongLong());
    std::sort(cents.begin(), cents.end());
    return cents;
}

class OfficeExport : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        scratch = new QTemporaryDir;
        demo::DemoOptions options;
        options.venues = 12;
        options.months = 3;
        options.seed = 5;
        options.lastDay = QDate(2025, 3, 31);
        demo::writeDemoInstallation(installation(), options);
        QSettings(installation() + u"/Lorvane.ini"_s, QSettings::IniFormat)
            .setValue(u"Opzioni/Personalizzazione"_s, true);
    }
    static void TearDownTestSuite() { delete scratch; }
    static QString installation() { return scratch->filePath(u"demo"_s); }

    // Runs the layout's report for the first quarter of 2025 with `button`,
    // and gives the file written, copied under `name` into the scratch folder.
    static QString exportWith(const LayoutRow& layout, const QString& button, const QString& name) {
        QStringList args = {u"run"_s,        QLatin1String(layout.code),
                            u"--percorso"_s, installation(),
                            u"--today"_s,    u"31/03/2025"_s,
                            u"set"_s,        u"txtDallaData=01/01/2025"_s,
                            u"set"_s,        u"txtAllaData=31/03/2025"_s};
        args << layout.choice << u"click"_s << button;
        const ProcessResult run =
            runProgram(QString::fromUtf8(LORVANE_PROGRAM), args, {},
                       {u"LORVANE_TEMP1="_s + scratch->filePath(u"temp1"_s),
                        u"LORVANE_REGISTRY="_s + scratch->filePath(u"components.ini"_s)});
        EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
        EXPECT_FALSE(run.out.contains(u"MSG "_s)) << run.out.toStdString();
        const QString file =
            QRegularExpression(u"^FILE (.+)$"_s, QRegularExpression::MultilineOption)
                .match(run.out)
                .captured(1);
        const QString copy = scratch->filePath(name);
        EXPECT_TRUE(QFile::copy(file, copy)) << file.toStdString();
        return copy;
    }

    // LibreOffice converts `files` to `format` into the scratch folder, with
    // a profile of its own so that tests running beside it do not clash.
    static void convert(const QString& format, const QStringList& files) {
        QProcess office;
        office.setProcessEnvironment(QProcessEnvironment::systemEnvironment());
        office.start(
            u"soffice"_s,
            QStringList{u"-env:UserInstallation=file://"_s + scratch->filePath(u"profilo"_s),
                        u"--headless"_s, u"--convert-to"_s, format, u"--outdir"_s, scratch->path()}
                << files);
        ASSERT_TRUE(office.waitForFinished(480000))
            << "soffice --convert-to " << format.toStdString();
        ASSERT_EQ(office.exitCode(), 0) << office.readAllStandardError().toStdString();
    }

    static inline QTemporaryDir* scratch = nullptr;
};

TEST_F(OfficeExport, WorkbookAndDocumentHoldThePdfsColumnsAndFigures) {
    QStringList workbooks, documents;
    for (const LayoutRow& layout : layouts) {
        const QString name = QLatin1String(layout.name);
        exportWith(layout, u"CmdPdf"_s, name + u".pdf"_s);
        documents << exportWith(layout, u"CmdXls"_s, name + u".doc"_s);
        workbooks << exportWith(layout, u"CmdExportExcel"_s, name + u".xls"_s);
    }
    // Raw values, not as shown: a figure reads back as a plain number.
    convert(u"csv:Text - txt - csv (StarCalc):44,34,76,1,,0,false,true,false,false"_s, workbooks);
    convert(u"xlsx"_s, workbooks);
    convert(u"txt:Text (encoded):UTF8"_s, documents);
    convert(u"docx"_s, documents);

    for (const LayoutRow& layout : layouts) {
        SCOPED_TRACE(layout.name);
        const QString base = scratch->filePath(QLatin1String(layout.name));
        const QString pdf =
            runProgram(u"pdftotext"_s, {u"-layout"_s, base + u".pdf"_s, u"-"_s}).out;
        const ProcessResult read = runProgram(
            u"/usr/bin/python3"_s, {u"-c"_s, QString::fromLatin1(readerScript), base + u".csv"_s,
                                    base + u".xlsx"_s, base + u".docx"_s});
        ASSERT_EQ(read.exitCode, 0) << read.err.toStdString();
        const QJsonObject office = QJsonDocument::fromJson(read.out.toUtf8()).object();
        const QJsonArray rows = office["rows"_L1].toArray();
        ASSERT_GT(rows.size(), 5);

        // The heading row holds the page header's texts, one over each column,
        // and the sheet has those columns and no other.
        const auto cellsOf = [](const QJsonValue& row) {
            QStringList cells;
            for (const QJsonValue& cell : row.toArray())
                cells << cell.toString();
            while (!cells.isEmpty() && cells.last().isEmpty())
                cells.removeLast();
            return cells;
        };
        const QStringList headings = cellsOf(rows[0]);
        EXPECT_EQ(headings, layout.headings);
        qsizetype width = 0;
        std::vector<bool> used(size_t(layout.headings.size()), false);
        for (qsizetype r = 1; r < rows.size(); ++r) {
            const QStringList cells = cellsOf(rows[r]);
            width = std::max(width, cells.size());
            for (qsizetype c = 0; c < cells.size() && c < layout.headings.size(); ++c)
                used[size_t(c)] = used[size_t(c)] || !cells[c].isEmpty();
        }
        EXPECT_EQ(width, layout.headings.size()) << "one column for each of the report";
        for (size_t c = 0; c < used.size(); ++c)
            EXPECT_TRUE(used[c]) << "column " << layout.headings[qsizetype(c)].toStdString();

        // Under a heading of numbers stand numbers only, and they are the
        // amounts of the PDF; the page header's row below the title and the
        // page footer's "Pagina 1 di N" under the last column are text.
        static const QRegularExpression pageOfPages(u"^Pagina \\d+ di \\d+$"_s);
        std::vector<qint64> sheetAmounts;
        const QJsonObject types = office["types"_L1].toObject();
        for (qsizetype r = 1; r < rows.size(); ++r) {
            const QStringList cells = cellsOf(rows[r]);
            for (qsizetype c = 0; c < cells.size() && c < headings.size(); ++c) {
                const bool figure = layout.figures.contains(headings[c]);
                if (cells[c].isEmpty() || !(figure || layout.counts.contains(headings[c])) ||
                    cells[c] == headings[c] || pageOfPages.match(cells[c]).hasMatch())
                    continue;
                bool number = false;
                const double value = cells[c].toDouble(&number);
                EXPECT_TRUE(number) << "row " << r + 1 << " under " << headings[c].toStdString()
                                    << ": " << cells[c].toStdString();
                EXPECT_EQ(types[u"%1,%2"_s.arg(r).arg(c)].toString(), u"n"_s)
                    << "row " << r + 1 << " under " << headings[c].toStdString();
                if (figure && number) sheetAmounts.push_back(qRound64(value * 100));
            }
        }
        std::sort(sheetAmounts.begin(), sheetAmounts.end());
        const std::vector<qint64> pdfAmounts = amountsIn(pdf);
        EXPECT_GT(pdfAmounts.size(), 20u);
        EXPECT_EQ(sheetAmounts, pdfAmounts);

        // The sheet prints one page wide, in the report's orientation.
        EXPECT_TRUE(office["fitToPage"_L1].toString() == u"true"_s ||
                    office["fitToPage"_L1].toString() == u"1"_s);
        const QJsonObject setup = office["setup"_L1].toObject();
        EXPECT_EQ(setup["fitToWidth"_L1].toString(), u"1"_s);
        EXPECT_EQ(setup["fitToHeight"_L1].toString(), u"0"_s);
        EXPECT_EQ(setup["orientation"_L1].toString(),
                  layout.landscape ? u"landscape"_s : u"portrait"_s);

        // The document: a table of the report's columns, and the PDF's figures.
        for (const QJsonValue& columns : office["tables"_L1].toArray())
            EXPECT_EQ(columns.toInt(), layout.headings.size()) << "columns of a table";
        QFile text(base + u".txt"_s);
        ASSERT_TRUE(text.open(QIODevice::ReadOnly));
        EXPECT_EQ(amountsIn(QString::fromUtf8(text.readAll())), pdfAmounts);
    }
}

}  // namespace
}  // namespace lorvane
