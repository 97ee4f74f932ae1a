// The export routines and the rule that names exported files.
#include "output/export.h"

#include <gtest/gtest.h>

#include <QDir>

#include "engine/engine_fixture.h"
#include "entry/module_values.h"
#include "platform/shell.h"
#include "support/process.h"
#include "support/recording_host.h"

namespace lorvane::output {
namespace {

using namespace Qt::StringLiterals;

TEST(ExportFileName, IsFolderCodeRandomNumberAndExtension) {
    const std::tuple<const ExportKind*, double, const char*> cases[] = {
        {&PdfExport, 0.4829, "/lorvane/export\\pdf\\StampaCassa482.pdf"},
        {&WordExport, 0.0, "/lorvane/export\\Doc\\StampaCassa0.doc"},
        {&ExcelExport, 0.99999, "/lorvane/export\\Xls\\StampaCassa999.xls"},
    };
    for (const auto& [kind, random, name] : cases) {
        platform::setRandomSource([random = random] { return random; });
        EXPECT_EQ(NomeFileEsportazione(u"/lorvane/"_s, *kind, u"StampaCassa"_s),
                  QString::fromLatin1(name));
    }
    platform::setRandomSource(nullptr);
    platform::Randomize();
    for (int i = 0; i < 200; ++i) {
        const QString name = NomeFileEsportazione(u"/p/"_s, PdfExport, u"X"_s);
        const int number = name.mid(name.lastIndexOf(u'X') + 1).chopped(4).toInt();
        ASSERT_TRUE(number >= 0 && number <= 999) << name.toStdString();
    }
}

class ExportTest : public engine::testing::EngineFixture {
  protected:
    void SetUp() override {
        host = std::make_shared<testing::RecordingHost>();
        host->user = u"mario"_s;
        entry::moduleValues().host = host;
        percorso = layouts.path() + u'/';
    }
    void TearDown() override {
        entry::moduleValues().host.reset();
        EngineFixture::TearDown();
    }

    std::shared_ptr<testing::RecordingHost> host;
    QString percorso;
};

TEST_F(ExportTest, FoldersAreMadeOnDemandWithTheirSpellings) {
    CreaCartelleEsportazione(percorso, PdfExport);
    CreaCartelleEsportazione(percorso, PdfExport);  // again: nothing to do, nothing raised
    CreaCartelleEsportazione(percorso, WordExport);
    CreaCartelleEsportazione(percorso, ExcelExport);
    QStringList folders = QDir(percorso + u"export"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    folders.sort(Qt::CaseSensitive);
    EXPECT_EQ(folders, (QStringList{u"Doc"_s, u"Xls"_s, u"pdf"_s}));
    CreaCartelleEsportazione(u"/proc/non/si/puo/"_s, PdfExport);  // failures are ignored
}

TEST_F(ExportTest, EachRoutineWritesItsFormatWithTitleAndAuthor) {
    prepare(12);
    const std::tuple<void (*)(engine::Report&, const QString&, const QString&), const ExportKind*>
        routines[] = {
            {EsportaPdf, &PdfExport}, {EsportaWord, &WordExport}, {EsportaExcel, &ExcelExport}};
    for (const auto& [routine, kind] : routines) {
        engine::ReportPtr report = engine::Application().OpenReport(layoutPath(), 1);
        CreaCartelleEsportazione(percorso, *kind);
        const QString file = NomeFileEsportazione(percorso, *kind, u"StampaBilancio"_s);
        routine(*report, file, u"Bilancio di verifica"_s);
        EXPECT_EQ(report->Title(), u"Bilancio di verifica"_s);
        EXPECT_EQ(report->Author(), u"mario"_s);
        EXPECT_FALSE(report->KeepRenderedPages());
        EXPECT_EQ(report->GetExportOptions().FormatType, kind->format);
        EXPECT_EQ(report->GetExportOptions().ExcelColumnHeadings, kind == &ExcelExport);
        EXPECT_TRUE(report->GetExportOptions().KeepDisplayFormats);
        EXPECT_TRUE(QFile::exists(QString(file).replace(u'\\', u'/'))) << file.toStdString();
    }
    EXPECT_TRUE(host->calls.contains(u"User"_s));
    const QStringList pdfs = QDir(percorso + u"export/pdf"_s).entryList({u"*.pdf"_s});
    ASSERT_EQ(pdfs.size(), 1);
    EXPECT_TRUE(lorvane::testing::runProgram(u"pdftotext"_s,
                                             {percorso + u"export/pdf/"_s + pdfs[0], u"-"_s})
                    .out.contains(u"Bilancio di verifica"_s));
}

TEST_F(ExportTest, TheShellOpensTheFileThroughTheReplaceableOpener) {
    QStringList opened;
    platform::setShellOpener([&](const QString& path) {
        opened << path;
        return true;
    });
    platform::ShellOpen(u"/tmp/StampaCassa1.pdf"_s);
    platform::setShellOpener(nullptr);
    EXPECT_EQ(opened, QStringList{u"/tmp/StampaCassa1.pdf"_s});
}

}  // namespace
}  // namespace lorvane::output
