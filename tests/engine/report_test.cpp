// The engine's Application and Report: opening layouts, rendering on demand,
// exporting without asking.
#include "engine/report.h"

#include <gtest/gtest.h>

#include "engine_fixture.h"
#include "platform/runtime_error.h"
#include "support/process.h"

namespace lorvane::engine {
namespace {

using namespace Qt::StringLiterals;

using lorvane::testing::readerOutput;

class ReportTest : public testing::EngineFixture {
  protected:
    ReportPtr open(int rows) {
        prepare(rows);
        return Application().OpenReport(layoutPath(), Application::OpenThroughCopy);
    }
    void exportTo(Report& report, int format, const QString& file) {
        report.GetExportOptions().DestinationType = ExportDestination::Disk;
        report.GetExportOptions().DiskFileName = file;
        report.GetExportOptions().FormatType = format;
        report.Export(false);
    }
};

TEST_F(ReportTest, MissingOrMalformedLayoutsAreNamedByTheirOwnPath) {
    prepare(1, "{ non è un layout");
    for (const QString& path : {layoutPath(), layouts.filePath(u"manca.lrl"_s)}) {
        try {
            Application().OpenReport(path, Application::OpenThroughCopy);
            ADD_FAILURE() << path.toStdString();
        } catch (const RuntimeError& error) {
            EXPECT_TRUE(error.message().contains(path)) << error.what();
        }
    }
}

TEST_F(ReportTest, ReadsTheWorkFileWhenItRendersAndKeepsPagesOnlyWhenAsked) {
    ReportPtr report = open(3);
    report->SetTitle(u"Bilancio di verifica"_s);
    report->SetAuthor(u"mario"_s);
    QFile::remove(layoutPath());  // opened through a copy: the layout file may go
    const size_t bands = report->Pages().pages[0].bands.size();
    EXPECT_EQ(report->Pages().title, u"Bilancio di verifica"_s);
    EXPECT_EQ(report->Pages().author, u"mario"_s);

    prepare(60);  // the work file changes under the open report
    EXPECT_EQ(report->Pages().pages[0].bands.size(), bands) << "kept pages are used again";
    report->SetKeepRenderedPages(false);
    EXPECT_GT(report->Pages().pages.size(), 1u) << "pages not kept read the work file again";
}

TEST_F(ReportTest, ExportsEachFormatWithTitleAndProperties) {
    ReportPtr report = open(30);
    report->SetTitle(u"Bilancio di verifica"_s);
    report->SetWriteDocumentProperties(true);
    report->GetExportOptions().ExcelColumnHeadings = true;
    report->GetExportOptions().KeepDisplayFormats = true;
    exportTo(*report, ExportFormat::Pdf, layouts.filePath(u"b.pdf"_s));
    exportTo(*report, ExportFormat::Word, layouts.filePath(u"b.doc"_s));
    exportTo(*report, ExportFormat::Excel, layouts.filePath(u"b.xls"_s));
    EXPECT_TRUE(readerOutput(u"pdfinfo"_s, {layouts.filePath(u"b.pdf"_s)})
                    .contains(u"Bilancio di verifica"_s));
    EXPECT_TRUE(readerOutput(u"pdftotext"_s, {layouts.filePath(u"b.pdf"_s), u"-"_s})
                    .contains(u"Totale generale"_s));
    EXPECT_TRUE(readerOutput(u"unrtf"_s, {u"--text"_s, layouts.filePath(u"b.doc"_s)})
                    .contains(u"Conto numero 30"_s));
    const QString sheet =
        readerOutput(u"/usr/bin/python3"_s,
                     {u"-c"_s,
                      u"import sys, xlrd\ns = xlrd.open_workbook(sys.argv[1]).sheet_by_index(0)\n"
                      "print(s.name); print(s.cell_value(0, 0))"_s,
                      layouts.filePath(u"b.xls"_s)});
    EXPECT_EQ(sheet, u"Bilancio di verifica\nConto\n"_s) << "named after the title, headings first";
}

TEST_F(ReportTest, IncompleteExportOptionsAreRefused) {
    ReportPtr report = open(2);
    EXPECT_THROW(report->Export(true), RuntimeError);
    EXPECT_THROW(report->Export(false), RuntimeError) << "no destination";
    report->GetExportOptions().DestinationType = ExportDestination::Disk;
    EXPECT_THROW(report->Export(false), RuntimeError) << "no file name";
    report->GetExportOptions().DiskFileName = layouts.filePath(u"x.out"_s);
    report->GetExportOptions().FormatType = 99;
    EXPECT_THROW(report->Export(false), RuntimeError) << "unknown format";
    EXPECT_FALSE(QFile::exists(layouts.filePath(u"x.out"_s)));
}

}  // namespace
}  // namespace lorvane::engine
