// The Excel back end, read back with xlrd: a reader that shares nothing with
// the writer, run as a separate Python process that prints what it finds.
#include "engine/xls_writer.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include "platform/runtime_error.h"

namespace lorvane::engine {
namespace {

using namespace Qt::StringLiterals;
using db::Currency;
using db::DateTime;
using db::Decimal;
using db::Variant;

constexpr char readerScript[] = R"py(
import json, sys, xlrd
book = xlrd.open_workbook(sys.argv[1], formatting_info=True)
sheet = book.sheet_by_index(0)
types = {xlrd.XL_CELL_TEXT: "text", xlrd.XL_CELL_NUMBER: "number", xlrd.XL_CELL_DATE: "date",
         xlrd.XL_CELL_BOOLEAN: "boolean", xlrd.XL_CELL_BLANK: "blank", xlrd.XL_CELL_ERROR: "error"}
cells = []
for r in range(sheet.nrows):
    for c in range(sheet.ncols):
        cell = sheet.cell(r, c)
        if cell.ctype == xlrd.XL_CELL_EMPTY:
            continue
        xf = book.xf_list[cell.xf_index]
        item = {"row": r, "col": c, "type": types[cell.ctype], "value": cell.value, "xf": cell.xf_index,
                "format": book.format_map[xf.format_key].format_str,
                "weight": book.font_list[xf.font_index].weight,
                "bold": book.font_list[xf.font_index].bold}
        if cell.ctype == xlrd.XL_CELL_DATE:
            item["date"] = list(xlrd.xldate_as_tuple(cell.value, book.datemode))
        cells.append(item)
print(json.dumps({
    "sheets": book.sheet_names(), "cells": cells,
    "widths": {str(c): i.width for c, i in sheet.colinfo_map.items()},
    "heights": {str(r): i.height for r, i in sheet.rowinfo_map.items()},
    "merged": [list(m) for m in sheet.merged_cells],
    "breaks": [b[0] for b in sheet.horizontal_page_breaks]}))
)py";

// What xlrd read from a workbook.
struct Readback {
    QJsonObject root;

    QJsonObject cell(int row, int column) const {
        for (const QJsonValue& value : root["cells"_L1].toArray()) {
            const QJsonObject c = value.toObject();
            if (c["row"_L1].toInt() == row && c["col"_L1].toInt() == column) return c;
        }
        return {};
    }
    int width(int column) const { return root["widths"_L1][QString::number(column)].toInt(); }
    int height(int row) const { return root["heights"_L1][QString::number(row)].toInt(); }
};

Readback readXls(const QString& path) {
    QProcess python;
    python.start(u"/usr/bin/python3"_s, {u"-c"_s, QString::fromLatin1(readerScript), path});
    EXPECT_TRUE(python.waitForFinished(60000));
    const QByteArray output = python.readAllStandardOutput();
    EXPECT_EQ(python.exitCode(), 0) << python.readAllStandardError().toStdString();
    return {QJsonDocument::fromJson(output).object()};
}

GridCell cell(int row, int column, const QString& text, Variant value = {},
              const QString& format = {}) {
    GridCell c;
    c.row = row;
    c.column = column;
    c.text = text;
    c.value = std::move(value);
    c.format = format;
    return c;
}

// A grid of `rows` rows of 15 points and `columns` columns of 60 points.
Grid blankGrid(int rows, int columns) {
    Grid grid;
    grid.columnWidthsPt.assign(size_t(columns), 60);
    grid.rows.resize(size_t(rows));
    for (GridRow& row : grid.rows)
        row.heightPt = 15;
    return grid;
}

class XlsWriterTest : public ::testing::Test {
  protected:
    QString path(const QString& name = u"report.xls"_s) const { return dir_.filePath(name); }

    Readback writeAndRead(const Grid& grid, const XlsOptions& options = {}) {
        writeXls(grid, path(), options);
        return readXls(path());
    }

    QTemporaryDir dir_;
};

struct TypedCase {
    const char* name;
    Variant value;
    QString text;    // as the page shows it
    QString format;  // the layout's
    QString type;    // as xlrd reads the cell
    QJsonValue expected;
    QString excelFormat;
};

TEST_F(XlsWriterTest, EveryValueTypeReadsBackAsItsExcelCellType) {
    const std::vector<TypedCase> cases = {
        {"accented text",
         Variant(u"Città di Forlì: perché"_s),
         u"Città di Forlì: perché"_s,
         {},
         u"text"_s,
         u"Città di Forlì: perché"_s,
         u"General"_s},
        {"text beyond Latin-1", {}, u"Łódź – Ω"_s, {}, u"text"_s, u"Łódź – Ω"_s, u"General"_s},
        {"integer", Variant(qint16(42)), u"42"_s, u"0"_s, u"number"_s, 42, u"0"_s},
        {"long", Variant(qint32(100000)), u"100.000"_s, u"#.##0"_s, u"number"_s, 100000,
         u"#,##0"_s},
        {"double", Variant(3.25), u"3,25"_s, {}, u"number"_s, 3.25, u"General"_s},
        {"currency", Variant(Currency::fromDouble(1234.5)), u"1.234,50"_s, u"#.##0,00"_s,
         u"number"_s, 1234.5, u"#,##0.00"_s},
        {"decimal", Variant(Decimal(12345, 3)), u"12,345"_s, u"0,000"_s, u"number"_s, 12.345,
         u"0.000"_s},
        {"percent", Variant(0.25), u"25%"_s, u"0%"_s, u"number"_s, 0.25, u"0%"_s},
        {"boolean", Variant(true), u"Vero"_s, {}, u"boolean"_s, 1, u"General"_s},
        {"null", Variant::null(), {}, u"#.##0,00"_s, u"blank"_s, u""_s, u"General"_s},
        {"date", Variant(DateTime::fromParts(QDate(2024, 2, 29))), u"29/02/2024"_s, u"dd/MM/yyyy"_s,
         u"date"_s, 45351, u"dd/mm/yyyy"_s},
        {"date before March 1900", Variant(DateTime::fromParts(QDate(1900, 1, 15))),
         u"15/01/1900"_s, u"dd/MM/yyyy"_s, u"text"_s, u"15/01/1900"_s, u"General"_s},
    };
    Grid grid = blankGrid(int(cases.size()), 1);
    for (size_t i = 0; i < cases.size(); ++i) {
        grid.cells.push_back(cell(int(i), 0, cases[i].text, cases[i].value, cases[i].format));
    }
    const Readback book = writeAndRead(grid);

    EXPECT_EQ(book.root["sheets"_L1].toArray(), QJsonArray{u"Report"_s});
    for (size_t i = 0; i < cases.size(); ++i) {
        SCOPED_TRACE(cases[i].name);
        const QJsonObject c = book.cell(int(i), 0);
        EXPECT_EQ(c["type"_L1].toString(), cases[i].type);
        if (cases[i].expected.isDouble()) {
            EXPECT_DOUBLE_EQ(c["value"_L1].toDouble(), cases[i].expected.toDouble());
        } else {
            EXPECT_EQ(c["value"_L1].toString(), cases[i].expected.toString());
        }
        EXPECT_EQ(c["format"_L1].toString(), cases[i].excelFormat);
    }
    EXPECT_EQ(book.cell(10, 0)["date"_L1].toArray(), (QJsonArray{2024, 2, 29, 0, 0, 0}));
}

struct FormatCase {
    QString layout;
    Variant value;
    QString excel;  // with the layout's formats kept
    QString plain;  // without
};

TEST_F(XlsWriterTest, LayoutFormatsBecomeExcelFormatsOnlyWhenKept) {
    const DateTime leapDay = DateTime::fromParts(QDate(2024, 2, 29), QTime(8, 30));
    const std::vector<FormatCase> cases = {
        {u"#.##0,00"_s, Variant(1.5), u"#,##0.00"_s, u"General"_s},
        {u"0,00%"_s, Variant(0.125), u"0.00%"_s, u"General"_s},
        {u"€ #.##0,00"_s, Variant(2.0), u"\"€ \"#,##0.00"_s, u"General"_s},
        {u"#.##0 pz."_s, Variant(3.0), u"#,##0\" pz.\""_s, u"General"_s},
        {u"dd/MM/yyyy"_s, Variant(leapDay), u"dd/mm/yyyy"_s, u"dd/mm/yyyy hh:mm:ss"_s},
        {u"dd/MM/yyyy HH:mm"_s, Variant(leapDay), u"dd/mm/yyyy hh:mm"_s, u"dd/mm/yyyy hh:mm:ss"_s},
        {u"d MMMM yyyy 'ore' H"_s, Variant(leapDay), u"d mmmm yyyy \"ore\" h"_s,
         u"dd/mm/yyyy hh:mm:ss"_s},
        {u"HH:mm"_s, Variant(DateTime::fromParts(QDate(1899, 12, 30), QTime(12, 0))), u"hh:mm"_s,
         u"hh:mm:ss"_s},
        {u"#.##0,00"_s, Variant(DateTime::fromParts(QDate(2024, 1, 2))), u"dd/mm/yyyy"_s,
         u"dd/mm/yyyy"_s},
        {u"dd/MM/yyyy"_s, Variant(7.0), u"General"_s, u"General"_s},
    };
    Grid grid = blankGrid(int(cases.size()), 1);
    for (size_t i = 0; i < cases.size(); ++i) {
        grid.cells.push_back(cell(int(i), 0, u"x"_s, cases[i].value, cases[i].layout));
    }
    for (const bool keep : {true, false}) {
        const Readback book = writeAndRead(grid, {.keepFormats = keep});
        for (size_t i = 0; i < cases.size(); ++i) {
            SCOPED_TRACE((cases[i].layout + (keep ? u" kept"_s : u" dropped"_s)).toStdString());
            const QJsonObject c = book.cell(int(i), 0);
            EXPECT_EQ(c["format"_L1].toString(), keep ? cases[i].excel : cases[i].plain);
            const bool isDate = cases[i].value.type() == db::VarType::Date;
            EXPECT_EQ(c["type"_L1].toString(), isDate ? u"date"_s : u"number"_s);
        }
    }
    const QJsonArray time = readXls(path()).cell(7, 0)["date"_L1].toArray();
    EXPECT_EQ(time, (QJsonArray{0, 0, 0, 12, 0, 0}));
}

TEST_F(XlsWriterTest, CellsOfTheSameFormatAndWeightShareOneXf) {
    Grid grid = blankGrid(4, 2);
    for (int row = 0; row < 4; ++row) {
        grid.cells.push_back(cell(row, 0, u"a"_s, Variant(1.0), u"#.##0,00"_s));
        GridCell bold = cell(row, 1, u"b"_s, Variant(1.0), u"#.##0,00"_s);
        bold.font.bold = true;
        grid.cells.push_back(bold);
    }
    const Readback book = writeAndRead(grid);

    for (int row = 1; row < 4; ++row) {
        EXPECT_EQ(book.cell(row, 0)["xf"_L1], book.cell(0, 0)["xf"_L1]);
        EXPECT_EQ(book.cell(row, 1)["xf"_L1], book.cell(0, 1)["xf"_L1]);
    }
    EXPECT_NE(book.cell(0, 0)["xf"_L1], book.cell(0, 1)["xf"_L1]);
    EXPECT_EQ(book.cell(0, 0)["weight"_L1].toInt(), 400);
    EXPECT_EQ(book.cell(0, 1)["weight"_L1].toInt(), 700);
    EXPECT_EQ(book.cell(0, 1)["bold"_L1].toInt(), 1);
}

TEST_F(XlsWriterTest, SheetNamesAreMadeAcceptableToExcel) {
    const std::vector<std::pair<QString, QString>> cases = {
        {u"Saldi"_s, u"Saldi"_s},
        {u"Bilancio: 2024/25 [prova]?"_s, u"Bilancio_ 2024_25 _prova__"_s},
        {u"Partitario clienti e fornitori dell'esercizio"_s, u"Partitario clienti e fornitori"_s},
        {u"'Entrate'"_s, u"_Entrate_"_s},
        {u"  "_s, u"Report"_s},
        {u"Località"_s, u"Località"_s},
    };
    for (const auto& [wanted, written] : cases) {
        SCOPED_TRACE(wanted.toStdString());
        const Readback book = writeAndRead(blankGrid(1, 1), {.sheetName = wanted});
        EXPECT_EQ(book.root["sheets"_L1].toArray().size(), 1);
        EXPECT_EQ(book.root["sheets"_L1][0].toString(), written);
    }
}

TEST_F(XlsWriterTest, ColumnWidthsFollowThePageAndMakeRoomForTheLongestText) {
    Grid grid = blankGrid(2, 4);
    grid.columnWidthsPt = {50, 200, 20, 100};
    grid.cells.push_back(cell(0, 0, u"a"_s));
    grid.cells.push_back(cell(0, 1, u"b"_s));
    grid.cells.push_back(cell(0, 2, QString(30, u'x')));
    grid.cells.push_back(cell(1, 2, u"short"_s));
    grid.cells.push_back(cell(0, 3, QString(500, u'y')));
    GridCell spanning = cell(1, 0, QString(80, u'z'));
    spanning.columnSpan = 2;
    grid.cells.push_back(spanning);
    const Readback book = writeAndRead(grid);

    const double ratio = double(book.width(1)) / book.width(0);
    EXPECT_GT(ratio, 3.5);
    EXPECT_LT(ratio, 5.0);
    EXPECT_GE(book.width(2), 30 * 256);
    EXPECT_LT(book.width(2), 40 * 256);
    EXPECT_GE(book.width(3), 50 * 256);
    EXPECT_LE(book.width(3), 70 * 256);
    EXPECT_LT(book.width(1), 80 * 256) << "a merged text widens no single column";
}

TEST_F(XlsWriterTest, RowHeightsPageBreaksAndMergedCellsCarryOver) {
    Grid grid = blankGrid(6, 4);
    grid.rows[0].heightPt = 24.5;
    grid.rows[3].pageBreakBefore = true;
    grid.rows[5].pageBreakBefore = true;
    GridCell title = cell(0, 0, u"Bilancio di verifica"_s);
    title.columnSpan = 3;
    grid.cells.push_back(title);
    GridCell total = cell(5, 1, u"Totale"_s);
    total.columnSpan = 2;
    grid.cells.push_back(total);
    grid.cells.push_back(cell(5, 3, u"1.000,00"_s, Variant(1000.0), u"#.##0,00"_s));
    const Readback book = writeAndRead(grid);

    EXPECT_EQ(book.height(0), 490);
    EXPECT_EQ(book.height(2), 300) << "a row without cells keeps its height";
    EXPECT_EQ(book.root["breaks"_L1].toArray(), (QJsonArray{3, 5}));
    EXPECT_EQ(book.root["merged"_L1].toArray(),
              (QJsonArray{QJsonArray{0, 1, 0, 3}, QJsonArray{5, 6, 1, 3}}));
    EXPECT_EQ(book.cell(5, 3)["value"_L1].toDouble(), 1000.0);
}

TEST_F(XlsWriterTest, ColumnHeadingsComeFromThePageHeaderRowWithMostCells) {
    Grid grid = blankGrid(4, 3);
    grid.rows[0].kind = BandKind::PageHeader;
    grid.rows[1].kind = BandKind::PageHeader;
    grid.rows[3].pageBreakBefore = true;
    grid.cells.push_back(cell(0, 0, u"Elenco clienti"_s));
    grid.cells.push_back(cell(1, 0, u"Codice"_s));
    grid.cells.push_back(cell(1, 1, u"Ragione sociale"_s));
    grid.cells.push_back(cell(2, 2, u"7"_s, Variant(qint32(7))));
    const Readback book = writeAndRead(grid, {.columnHeadings = true});

    const QStringList expected = {u"Codice"_s, u"Ragione sociale"_s};
    for (int column = 0; column < 2; ++column) {
        SCOPED_TRACE(column);
        EXPECT_EQ(book.cell(0, column)["value"_L1].toString(), expected[column]);
        EXPECT_EQ(book.cell(0, column)["weight"_L1].toInt(), 700);
    }
    EXPECT_TRUE(book.cell(0, 2).isEmpty()) << "no heading is made up for a column without one";
    EXPECT_EQ(book.cell(1, 0)["value"_L1].toString(), u"Elenco clienti"_s);
    EXPECT_EQ(book.cell(3, 2)["value"_L1].toDouble(), 7.0);
    EXPECT_EQ(book.root["breaks"_L1].toArray(), QJsonArray{4});
}

TEST_F(XlsWriterTest, WithoutAPageHeaderTheHeadingRowStaysEmpty) {
    Grid grid = blankGrid(1, 2);
    grid.cells.push_back(cell(0, 1, u"dato"_s));
    const Readback book = writeAndRead(grid, {.columnHeadings = true});

    EXPECT_TRUE(book.cell(0, 0).isEmpty());
    EXPECT_TRUE(book.cell(0, 1).isEmpty());
    EXPECT_EQ(book.cell(1, 1)["value"_L1].toString(), u"dato"_s);
}

// Enough text to fill several records of the string table, with strings that
// cross from one record to the next in one-byte and in two-byte form.
TEST_F(XlsWriterTest, ManyAndLongStringsSurviveTheStringTableSplits) {
    const int rows = 3000;
    Grid grid = blankGrid(rows + 2, 2);
    for (int row = 0; row < rows; ++row) {
        grid.cells.push_back(cell(row, 0, u"Conto numero %1 perché"_s.arg(row)));
        grid.cells.push_back(cell(row, 1, u"Voce %1 – più"_s.arg(row % 1500)));
    }
    const QString latin = QString(9000, u'è');
    const QString wide = QString(9000, u'€');
    grid.cells.push_back(cell(rows, 0, latin));
    grid.cells.push_back(cell(rows + 1, 0, wide));
    const Readback book = writeAndRead(grid);

    for (int row : {0, 1, 777, 1499, 1500, 2999}) {
        SCOPED_TRACE(row);
        EXPECT_EQ(book.cell(row, 0)["value"_L1].toString(), u"Conto numero %1 perché"_s.arg(row));
        EXPECT_EQ(book.cell(row, 1)["value"_L1].toString(), u"Voce %1 – più"_s.arg(row % 1500));
    }
    EXPECT_EQ(book.cell(rows, 0)["value"_L1].toString(), latin);
    EXPECT_EQ(book.cell(rows + 1, 0)["value"_L1].toString(), wide);
    EXPECT_EQ(book.root["cells"_L1].toArray().size(), 2 * rows + 2);
}

TEST_F(XlsWriterTest, SuccessReplacesAnEarlierFileAndLeavesNoPartFile) {
    {
        QFile old(path());
        ASSERT_TRUE(old.open(QIODevice::WriteOnly));
        old.write("an older export");
    }
    Grid grid = blankGrid(1, 1);
    grid.cells.push_back(cell(0, 0, u"nuovo"_s));
    const Readback book = writeAndRead(grid);

    EXPECT_EQ(book.cell(0, 0)["value"_L1].toString(), u"nuovo"_s);
    EXPECT_FALSE(QFile::exists(path() + u".part"_s));
    EXPECT_EQ(QDir(dir_.path()).entryList(QDir::Files), QStringList{u"report.xls"_s});
}

TEST_F(XlsWriterTest, AFolderThatDoesNotExistIsReportedByName) {
    const QString target = dir_.filePath(u"manca/report.xls"_s);
    try {
        writeXls(blankGrid(1, 1), target);
        FAIL() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_TRUE(error.message().contains(QDir::toNativeSeparators(target))) << error.what();
        EXPECT_TRUE(error.message().contains(u"cartella"_s)) << error.what();
    }
    EXPECT_FALSE(QFileInfo::exists(dir_.filePath(u"manca"_s)));
}

// A directory standing where the temporary file goes makes the write itself
// fail, after the checks before it.
TEST_F(XlsWriterTest, AFailedWriteLeavesTheEarlierFileIntact) {
    {
        QFile old(path());
        ASSERT_TRUE(old.open(QIODevice::WriteOnly));
        old.write("an older export");
    }
    ASSERT_TRUE(QDir(dir_.path()).mkdir(u"report.xls.part"_s));

    EXPECT_THROW(writeXls(blankGrid(1, 1), path()), RuntimeError);
    QFile old(path());
    ASSERT_TRUE(old.open(QIODevice::ReadOnly));
    EXPECT_EQ(old.readAll(), "an older export");
}

TEST_F(XlsWriterTest, ARenameOntoAFolderFailsAndCleansUp) {
    ASSERT_TRUE(QDir(dir_.path()).mkpath(u"report.xls/inside"_s));

    EXPECT_THROW(writeXls(blankGrid(1, 1), path()), RuntimeError);
    EXPECT_FALSE(QFile::exists(path() + u".part"_s));
    EXPECT_TRUE(QFileInfo(path() + u"/inside"_s).isDir());
}

TEST_F(XlsWriterTest, AGridBeyondTheSheetLimitsIsRefusedBeforeWriting) {
    const std::vector<std::pair<int, int>> sizes = {{65537, 1}, {1, 257}, {65536, 1}};
    for (const auto& [rows, columns] : sizes) {
        SCOPED_TRACE(rows * 1000 + columns);
        Grid grid = blankGrid(rows, columns);
        const bool fits = rows <= 65536 && columns <= 256;
        if (fits) {
            EXPECT_NO_THROW(writeXls(grid, path()));
            EXPECT_THROW(writeXls(grid, path(), {.columnHeadings = true}), RuntimeError);
        } else {
            EXPECT_THROW(writeXls(grid, path(u"troppo.xls"_s)), RuntimeError);
            EXPECT_FALSE(QFile::exists(path(u"troppo.xls"_s)));
        }
    }
}

}  // namespace
}  // namespace lorvane::engine
