// The Word back end, read back with unrtf: a reader that shares nothing with
// the writer. Its HTML keeps accented letters as entities.
#include "engine/rtf_writer.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include "platform/runtime_error.h"
#include "support/failing_disk.h"

namespace lorvane::engine {
namespace {

using namespace Qt::StringLiterals;
using lorvane::testing::FileSizeLimit;
using lorvane::testing::SmallTmpfs;

const RtfPage a4{{595.28, 841.89}, 56.7, 42.5, 28.35, 70.9};

GridCell cell(int row, int column, const QString& text, int span = 1) {
    GridCell c;
    c.row = row;
    c.column = column;
    c.columnSpan = span;
    c.text = text;
    return c;
}

// Fails unless each of `texts` is found in `in` after the one before it.
void expectInOrder(const QString& in, const QStringList& texts) {
    qsizetype from = 0;
    for (const QString& text : texts) {
        const qsizetype at = in.indexOf(text, from);
        ASSERT_GE(at, 0) << text.toStdString() << " missing or out of order in\n"
                         << in.toStdString();
        from = at + text.size();
    }
}

class RtfWriterTest : public ::testing::Test {
  protected:
    QString pathOf(const QString& name) const { return folder.filePath(name); }

    // Writes `grid` to stampa.doc; rtf gets the file, the result is unrtf's HTML.
    QString writeAndRead(const Grid& grid, const RtfPage& page = a4) {
        const QString path = pathOf(u"stampa.doc"_s);
        writeRtf(grid, page, path);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        rtf = QString::fromLatin1(file.readAll());
        QProcess unrtf;
        unrtf.start(u"unrtf"_s, {u"--html"_s, path});
        EXPECT_TRUE(unrtf.waitForFinished(30000));
        EXPECT_EQ(unrtf.exitCode(), 0) << unrtf.readAllStandardError().toStdString();
        return QString::fromUtf8(unrtf.readAllStandardOutput());
    }

    QTemporaryDir folder;
    QString rtf;
};

Grid invoice() {
    Grid grid;
    grid.columnWidthsPt = {100, 50, 150};
    grid.rows = {{20}, {12}, {12}, {24}, {12}};
    grid.cells = {cell(0, 0, u"Fattura"_s, 3), cell(1, 0, u"Articolo"_s),
                  cell(1, 2, u"Importo"_s),    cell(2, 1, u"Caffè"_s, 2),
                  cell(4, 0, u"Totale"_s),     cell(4, 1, u"€ 1.234,50"_s, 2)};
    grid.cells[0].align = Align::Center;
    grid.cells[0].font.sizePt = 11;
    grid.cells[2].align = Align::Right;
    grid.cells[4].font.bold = true;
    grid.cells[5].font.italic = true;
    return grid;
}

TEST_F(RtfWriterTest, GridRowsBecomeTableRowsWithTheirTextsInOrder) {
    const QString html = writeAndRead(invoice());
    expectInOrder(html, {u"<table"_s, u"<tr><td>"_s, u"font-size:11pt\"><center>Fattura"_s,
                         u"<tr><td>"_s, u"9pt\">Articolo"_s, u"<div align=\"right\">\nImporto"_s,
                         u"<td>"_s, u"Caff&egrave;"_s, u"<b>Totale</b>"_s, u"<td>"_s,
                         u"<i>&euro; 1.234,50</i>"_s, u"</table>"_s});
    // Cells as wide as their span and empty cells for the columns between,
    // one \cellx list per table row; the empty row is a paragraph 24 points tall.
    static const QRegularExpression row(u"\\\\trowd[^\\n]*"_s);
    QStringList edges;
    for (const auto& m : row.globalMatch(rtf))
        edges << m.captured().section(u"\\cellx"_s, 1).split(u"\\cellx"_s).join(u' ');
    EXPECT_EQ(edges, (QStringList{u"6000"_s, u"2000 3000 6000"_s, u"2000 6000"_s, u"2000 6000"_s}));
    expectInOrder(rtf, {u"\\trrh400"_s, u"\\qc"_s, u"Fattura\\cell"_s, u"\\row"_s, u"\\qr"_s,
                        u"Importo"_s, u"\\sl-480"_s, u"\\trrh240"_s});
}

TEST_F(RtfWriterTest, PageBreakComesBeforeTheRowThatStartsAPage) {
    Grid grid;
    grid.columnWidthsPt = {200};
    grid.rows = {
        {12}, {12}, {12, BandKind::PageHeader, true}, {12}, {12, BandKind::PageHeader, true}};
    grid.cells = {cell(0, 0, u"Pagina 1"_s), cell(1, 0, u"riga 1"_s), cell(2, 0, u"Pagina 2"_s),
                  cell(3, 0, u"riga 2"_s)};
    const QString html = writeAndRead(grid);
    EXPECT_EQ(rtf.count(u"\\page"_s), 2);
    expectInOrder(rtf, {u"riga 1"_s, u"\\page"_s, u"Pagina 2"_s, u"riga 2"_s, u"\\page"_s});
    expectInOrder(html, {u"riga 1"_s, u"<hr>"_s, u"Pagina 2"_s, u"riga 2"_s, u"<hr>"_s});
}

TEST_F(RtfWriterTest, PaperAndMarginsInTwipsLandscapeWhenWide) {
    const struct {
        RtfPage page;
        QString setup;
        bool landscape;
    } cases[] = {
        {a4, u"\\paperw11906\\paperh16838\\margl1134\\margr567\\margt850\\margb1418"_s, false},
        {{{841.89, 595.28}, 28.35, 28.35, 28.35, 28.35},
         u"\\paperw16838\\paperh11906\\margl567\\margr567\\margt567\\margb567"_s,
         true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.setup.toStdString());
        writeAndRead(invoice(), c.page);
        EXPECT_TRUE(rtf.contains(c.setup));
        EXPECT_EQ(rtf.contains(u"\\landscape"_s), c.landscape);
        EXPECT_EQ(rtf.contains(u"\\lndscpsxn"_s), c.landscape);
    }
}

TEST_F(RtfWriterTest, FontsAsAWordProcessorKnowsThem) {
    const QString families[][3] = {
        {u"Liberation Sans"_s, u"\\fswiss\\fprq2\\fcharset0 Arial;"_s, u"Arial"_s},
        {u"Liberation Serif"_s, u"\\froman\\fprq2\\fcharset0 Times New Roman;"_s,
         u"Times New Roman"_s},
        {u"Liberation Mono"_s, u"\\fmodern\\fprq1\\fcharset0 Courier New;"_s, u"Courier New"_s},
        {u"DejaVu Sans"_s, u"\\fnil\\fcharset0 DejaVu Sans;"_s, u"DejaVu Sans"_s},
        {u"Arial"_s, u"\\fswiss\\fprq2\\fcharset0 Arial;"_s, u"Arial"_s},
    };
    Grid grid;
    grid.rows = {{12}};
    for (const auto& family : families) {
        grid.cells.push_back(cell(0, static_cast<int>(grid.columnWidthsPt.size()), u"x"_s));
        grid.cells.back().font.family = family[0];
        grid.columnWidthsPt.push_back(50);
    }
    const QString html = writeAndRead(grid);
    EXPECT_TRUE(rtf.startsWith(u"{\\rtf1\\ansi\\ansicpg1252\\deff0"_s));
    for (const auto& family : families) {
        EXPECT_EQ(rtf.count(family[1]), 1) << family[0].toStdString();
        EXPECT_TRUE(html.contains(u"face=\"%1\""_s.arg(family[2]))) << family[0].toStdString();
    }
}

TEST_F(RtfWriterTest, TextIsEscapedAndReadBackUnchanged) {
    const char* cases[][3] = {
        // text, in the file, in unrtf's HTML
        {"città così può più", "citt\\'e0 cos\\'ec pu\\'f2 pi\\'f9",
         "citt&agrave; cos&igrave; pu&ograve; pi&ugrave;"},
        {"perché È", "perch\\'e9 \\'c8", "perch&eacute; &Egrave;"},
        {"€ 5", "\\'80 5", "&euro; 5"},
        {"“Bar”", "\\'93Bar\\'94", "&ldquo;Bar&rdquo;"},
        {"a\\b {c}", "a\\\\b \\{c\\}", "a\\b {c}"},
        {"Ω", "{\\u937?}", "&Omega;"},
        {"한", "{\\u-10916?}", "&#54620;"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c[0]);
        Grid grid;
        grid.columnWidthsPt = {300};
        grid.rows = {{12}};
        grid.cells = {cell(0, 0, u'[' + QString::fromUtf8(c[0]) + u']')};
        static const QRegularExpression tag(u"<[^>]*>"_s);
        const QString html = writeAndRead(grid).remove(tag);
        EXPECT_TRUE(rtf.contains(QString::fromLatin1(c[1]))) << rtf.toStdString();
        EXPECT_TRUE(html.contains(u'[' + QString::fromUtf8(c[2]) + u']')) << html.toStdString();
    }
}

TEST_F(RtfWriterTest, ReplacesAnExistingFileLeavingNoTemporary) {
    QFile old(pathOf(u"stampa.doc"_s));
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write(QByteArray(100000, 'x'));
    old.close();
    writeAndRead(invoice());
    EXPECT_TRUE(rtf.startsWith(u"{\\rtf1"_s) && rtf.endsWith(u"\\par\n}\n"_s));
    EXPECT_FALSE(rtf.contains(u"xxx"_s));
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden),
              QStringList{u"stampa.doc"_s});
}

// A missing folder, and a name as long as the system allows, which leaves no
// room for a temporary name next to it: the document is made but cannot take
// the name of the file already there.
TEST_F(RtfWriterTest, FailureThrowsNamingTheFileAndLeavesTheOldOneAsItWas) {
    QFile old(pathOf(QString(251, u'a') + u".doc"_s));
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write("documento precedente");
    old.close();
    for (const QString& path : {pathOf(u"manca/stampa.doc"_s), old.fileName()}) {
        try {
            writeRtf(invoice(), a4, path);
            ADD_FAILURE() << "no error writing " << path.toStdString();
        } catch (const RuntimeError& error) {
            EXPECT_TRUE(error.message().contains(QDir::toNativeSeparators(path))) << error.what();
        }
    }
    ASSERT_TRUE(old.open(QIODevice::ReadOnly));
    EXPECT_EQ(old.readAll(), "documento precedente");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden),
              QStringList{old.fileName().section(u'/', -1)});
}

// A document of a few hundred kilobytes that cannot be written whole: the
// cause is told in the user's words, and no half file is left.
TEST_F(RtfWriterTest, AWriteThatFailsMidwayNamesItsCause) {
    Grid grid;
    grid.columnWidthsPt = {100, 300};
    for (int row = 0; row < 5000; ++row) {
        grid.rows.push_back({12});
        grid.cells.push_back(cell(row, 0, u"Riga %1"_s.arg(row)));
        grid.cells.push_back(cell(row, 1, u"Descrizione della riga numero %1"_s.arg(row)));
    }
    const auto expectFailure = [&](const QString& folderPath, const QString& cause) {
        const QString path = folderPath + u"/stampa.doc"_s;
        try {
            writeRtf(grid, a4, path);
            ADD_FAILURE() << "no error writing " << path.toStdString();
        } catch (const RuntimeError& error) {
            EXPECT_TRUE(error.message().contains(QDir::toNativeSeparators(path))) << error.what();
            EXPECT_TRUE(error.message().contains(cause)) << error.what();
        }
        EXPECT_TRUE(QDir(folderPath).isEmpty(QDir::Files | QDir::Hidden));
    };
    {
        const FileSizeLimit limit(64 * 1024);
        expectFailure(folder.path(), u"il file supera la dimensione ammessa"_s);
    }
    const SmallTmpfs disk(64 * 1024);
    if (!disk.mounted()) GTEST_SKIP() << "no tmpfs can be mounted here";
    expectFailure(disk.path(), u"spazio esaurito sul disco"_s);
}

}  // namespace
}  // namespace lorvane::engine
