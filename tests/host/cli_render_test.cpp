// "lorvane render": a layout rendered against its work file into every format,
// checked with readers nobody here wrote.
#include <gtest/gtest.h>

#include <QDir>

#include "engine/engine_fixture.h"
#include "support/process.h"

namespace lorvane {
namespace {

using namespace Qt::StringLiterals;

class LorvaneRender : public engine::testing::EngineFixture {
  protected:
    testing::ProcessResult render(const QStringList& args) {
        return testing::runProgram(QString::fromUtf8(LORVANE_PROGRAM),
                                   QStringList{u"render"_s} + args);
    }
    QString output(const QString& name) const { return layouts.filePath(name); }
};

TEST_F(LorvaneRender, WritesEveryFormatWithoutAWindow) {
    prepare(150);
    const testing::ProcessResult result =
        render({layoutPath(), u"--pdf"_s, output(u"b.pdf"_s), u"--doc"_s, output(u"b.doc"_s),
                u"--xls"_s, output(u"b.xls"_s), u"--png"_s, output(u"pagine"_s)});
    ASSERT_EQ(result.exitCode, 0) << result.err.toStdString();
    const int pages = result.out.section(u' ', 0, 0).toInt();
    EXPECT_GT(pages, 2);
    EXPECT_EQ(QDir(output(u"pagine"_s)).entryList({u"*.png"_s}).size(), pages);

    const QString pdf = testing::runProgram(u"pdftotext"_s, {output(u"b.pdf"_s), u"-"_s}).out;
    EXPECT_TRUE(pdf.contains(u"Bilancio di prova"_s));
    EXPECT_TRUE(pdf.contains(u"Pagina %1 di %1"_s.arg(pages)));
    const QString doc = testing::runProgram(u"unrtf"_s, {u"--text"_s, output(u"b.doc"_s)}).out;
    EXPECT_TRUE(doc.contains(u"Totale generale"_s));
    EXPECT_TRUE(doc.contains(u"1.132.537,50"_s)) << "the grand total of dare, 150 rows";
    // The detail amounts of the Dare column are numbers in the workbook.
    const char* sumOfDare =
        "import re, sys, xlrd\n"
        "s = xlrd.open_workbook(sys.argv[1]).sheet_by_index(0)\n"
        "cells = [(r, c) for r in range(s.nrows) for c in range(s.ncols) if s.cell_value(r, c) == "
        "'Dare']\n"
        "r0, c = cells[0]\n"
        "print(sum(s.cell_value(r, c) for r in range(r0 + 1, s.nrows)\n"
        "          if s.cell_type(r, c) == xlrd.XL_CELL_NUMBER and re.match(r'0\\d[.]', "
        "str(s.cell_value(r, 0)))))\n";
    const QString xls =
        testing::runProgram(u"/usr/bin/python3"_s,
                            {u"-c"_s, QString::fromUtf8(sumOfDare), output(u"b.xls"_s)})
            .out.trimmed();
    EXPECT_DOUBLE_EQ(xls.toDouble(), 1132537.5) << xls.toStdString();
}

TEST_F(LorvaneRender, AMissingLayoutOrWorkFileIsReported) {
    prepare(2);
    QFile::remove(work.filePath(u"Prova.mdb"_s));
    const testing::ProcessResult noWork = render({layoutPath(), u"--pdf"_s, output(u"x.pdf"_s)});
    EXPECT_EQ(noWork.exitCode, 2);
    EXPECT_TRUE(noWork.err.contains(u"Prova.mdb"_s)) << noWork.err.toStdString();
    EXPECT_FALSE(QFile::exists(output(u"x.pdf"_s)));
    const testing::ProcessResult noLayout = render({output(u"manca.lrl"_s)});
    EXPECT_EQ(noLayout.exitCode, 2);
    EXPECT_TRUE(noLayout.err.contains(u"manca.lrl"_s));
    EXPECT_EQ(render({layoutPath(), u"--odt"_s, u"x"_s}).exitCode, 2);
}

}  // namespace
}  // namespace lorvane
