// The PDF of a report, read back with poppler's tools.
#include "engine/pdf_writer.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>

#include "engine/renderer.h"
#include "engine_fixture.h"
#include "platform/runtime_error.h"
#include "support/failing_disk.h"
#include "support/process.h"

namespace lorvane::engine {
namespace {

using namespace Qt::StringLiterals;

using lorvane::testing::FileSizeLimit;
using lorvane::testing::readerOutput;
using lorvane::testing::SmallTmpfs;

class PdfWriterTest : public testing::EngineFixture {};

TEST_F(PdfWriterTest, ReadersFindTheTitleThePagesAndEveryAmount) {
    const PageDocument document = renderTrialBalance(120);
    const QString pdf = layouts.filePath(u"bilancio.pdf"_s);
    writePdf(document, pdf);
    EXPECT_FALSE(QFile::exists(pdf + u".part"_s));
    const QString text = readerOutput(u"pdftotext"_s, {u"-layout"_s, pdf, u"-"_s});
    EXPECT_TRUE(text.contains(u"Bilancio di verifica"_s)) << text.left(800).toStdString();
    EXPECT_TRUE(text.contains(u"Pagina 1 di %1"_s.arg(document.pages.size())));
    for (int i = 1; i <= 120; ++i) {
        const QString dare =
            u"%1,25"_s.arg(i * 100).replace(QRegularExpression(u"(\\d)(\\d{3}),"_s), u"\\1.\\2,"_s);
        ASSERT_TRUE(text.contains(dare)) << dare.toStdString();
    }
    EXPECT_TRUE(text.contains(u"Totale generale"_s));
    EXPECT_TRUE(text.contains(u"726.030,00"_s)) << "the grand total of dare";
    const QString info = readerOutput(u"pdfinfo"_s, {pdf});
    EXPECT_TRUE(info.contains(QRegularExpression(u"Pages:\\s+%1\\b"_s.arg(document.pages.size()))))
        << info.toStdString();
    EXPECT_TRUE(info.contains(u"Bilancio di verifica"_s)) << "the title is the document's title";
    const QString fonts = readerOutput(u"pdffonts"_s, {pdf});
    EXPECT_TRUE(fonts.contains(u"Liberation"_s)) << fonts.toStdString();
    for (const QString& line :
         fonts.split(u'\n').mid(2)) {  // name, type, encoding, emb, sub, uni, object, id
        const QStringList columns = line.split(u' ', Qt::SkipEmptyParts);
        if (columns.size() >= 5) {
            EXPECT_EQ(columns[columns.size() - 5], u"yes"_s) << "embedded: " << line.toStdString();
        }
    }
}

// Writes `document` over a file holding "vecchio" in `folder` and expects the
// failure named with the file and `cause`, the old file whole and no part left.
void expectFailedWriteLeavesTheOldFile(const PageDocument& document, const QString& folder,
                                       const QString& cause) {
    const QString pdf = folder + u"/esistente.pdf"_s;
    QFile old(pdf);
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write("vecchio");
    old.close();
    try {
        writePdf(document, pdf);
        ADD_FAILURE() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_TRUE(error.message().contains(pdf)) << error.what();
        EXPECT_TRUE(error.message().contains(cause)) << error.what();
    }
    ASSERT_TRUE(old.open(QIODevice::ReadOnly));
    EXPECT_EQ(old.readAll(), QByteArray("vecchio"));
    EXPECT_EQ(QDir(folder).entryList(QDir::Files | QDir::Hidden), QStringList{u"esistente.pdf"_s});
}

TEST_F(PdfWriterTest, AMissingFolderIsNamed) {
    const QString pdf = layouts.filePath(u"manca/bilancio.pdf"_s);
    try {
        writePdf(renderTrialBalance(3), pdf);
        ADD_FAILURE() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_TRUE(error.message().contains(
            u"la cartella '%1' non esiste"_s.arg(layouts.filePath(u"manca"_s))))
            << error.what();
    }
    EXPECT_FALSE(QFile::exists(layouts.filePath(u"manca"_s)));
}

// QPdfWriter goes on after its device fails: the file must not be taken as
// written because it is not empty.
TEST_F(PdfWriterTest, AFullDiskLeavesTheOldFileAndNoHalfFile) {
    const SmallTmpfs disk(64 * 1024);
    if (!disk.mounted()) GTEST_SKIP() << "no tmpfs can be mounted here";
    expectFailedWriteLeavesTheOldFile(renderTrialBalance(1500), disk.path(),
                                      u"spazio esaurito sul disco"_s);
}

TEST_F(PdfWriterTest, AReadOnlyFolderIsToldApartFromAMissingOne) {
    const SmallTmpfs readOnly(64 * 1024, true);
    if (!readOnly.mounted()) GTEST_SKIP() << "no tmpfs can be mounted here";
    const PageDocument document = renderTrialBalance(3);
    const std::pair<QString, QString> cases[] = {
        {readOnly.filePath(u"bilancio.pdf"_s),
         u"la cartella '%1' è di sola lettura"_s.arg(readOnly.path())},
        {readOnly.filePath(u"pdf/bilancio.pdf"_s),
         u"la cartella '%1' non esiste e non si può creare: '%2' è di sola lettura"_s.arg(
             readOnly.filePath(u"pdf"_s), readOnly.path())},
    };
    for (const auto& [pdf, cause] : cases) {
        try {
            writePdf(document, pdf);
            ADD_FAILURE() << "no error writing " << pdf.toStdString();
        } catch (const RuntimeError& error) {
            EXPECT_TRUE(error.message().contains(cause)) << error.what();
        }
    }
}

TEST_F(PdfWriterTest, AWriteFailingMidwayLeavesTheOldFileAndNoHalfFile) {
    const PageDocument document = renderTrialBalance(1500);
    const QTemporaryDir target;
    const FileSizeLimit limit(64 * 1024);
    expectFailedWriteLeavesTheOldFile(document, target.path(),
                                      u"il file supera la dimensione ammessa"_s);
}

// A run killed mid-write leaves its part; the next write removes the parts of
// processes that have ended, and nothing else.
TEST_F(PdfWriterTest, PartsLeftByEndedRunsAreRemovedOnTheNextWrite) {
    QFile pidMax(u"/proc/sys/kernel/pid_max"_s);
    ASSERT_TRUE(pidMax.open(QIODevice::ReadOnly));
    const QString ended = QString::fromLatin1(pidMax.readAll().trimmed());  // no pid reaches it
    const QStringList files = {u"StampaIntrodotto59.pdf.%1.part"_s.arg(ended),
                               u"altra.pdf.1.part"_s,  // of a running process
                               u"altrui.pdf.part"_s, u"note.txt"_s};
    for (const QString& name : files) {
        QFile file(layouts.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    writePdf(renderTrialBalance(3), layouts.filePath(u"bilancio.pdf"_s));
    QStringList left = QDir(layouts.path()).entryList(QDir::Files);
    left.removeOne(u"prova.lrl"_s);
    EXPECT_EQ(left, (QStringList{u"altra.pdf.1.part"_s, u"altrui.pdf.part"_s, u"bilancio.pdf"_s,
                                 u"note.txt"_s}));
}

}  // namespace
}  // namespace lorvane::engine
