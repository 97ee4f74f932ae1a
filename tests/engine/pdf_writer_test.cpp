// The PDF of a report, read back with poppler's tools.
#include "engine/pdf_writer.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QRegularExpression>

#include "engine/renderer.h"
#include "engine_fixture.h"
#include "platform/runtime_error.h"
#include "support/process.h"

namespace lorvane::engine {
namespace {

using namespace Qt::StringLiterals;

using lorvane::testing::readerOutput;

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

TEST_F(PdfWriterTest, AFailedWriteLeavesTheOldFileAndNoHalfFile) {
    const PageDocument document = renderTrialBalance(3);
    EXPECT_THROW(writePdf(document, layouts.filePath(u"manca/bilancio.pdf"_s)), RuntimeError);
    EXPECT_FALSE(QFile::exists(layouts.filePath(u"manca"_s)));

    const QString pdf = layouts.filePath(u"esistente.pdf"_s);
    QFile old(pdf);
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write("vecchio");
    old.close();
    // A folder where the temporary file would go: the write cannot start.
    ASSERT_TRUE(QDir(layouts.path()).mkdir(u"esistente.pdf.part"_s));
    EXPECT_THROW(writePdf(document, pdf), RuntimeError);
    ASSERT_TRUE(old.open(QIODevice::ReadOnly));
    EXPECT_EQ(old.readAll(), QByteArray("vecchio"));
}

}  // namespace
}  // namespace lorvane::engine
