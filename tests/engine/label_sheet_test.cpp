// Label sheets: where each label lands on the common sheets and from a chosen
// start, the faults of a sheet refused with the layout, and bar codes that a
// reader nobody here wrote decodes from a rendered sheet.
#include <QTemporaryDir>

#include "engine/label_sheet.h"
#include "engine/painter.h"
#include "engine/renderer.h"
#include "engine_fixture.h"
#include "platform/runtime_error.h"
#include "support/process.h"

namespace lorvane::engine {
namespace {

using namespace Qt::StringLiterals;

// A label layout over the fixture's accounts: the code as text and as bar code.
QByteArray labelLayout(const char* labels, const char* barcode = "") {
    return QByteArray(R"json({"lorvaneLayout": 1,
      "data": {"workFile": "Prova.mdb", "query": "SELECT * FROM Saldi ORDER BY id"},
      "page": {"size": "A4", "margins": [0, 0, 0, 0]}, "labels": )json") +
           labels + R"json(,
      "detail": {"height": 37, "items": [
        {"type": "field", "field": "CodiceConto", "x": 3, "y": 2, "w": 60, "h": 6},
        {"type": "barcode", "field": "CodiceConto", "x": 2, "y": 12, "w": 66, "h": 20)json" +
           barcode + "}]}}";
}

struct SheetRow {
    const char* name;
    const char* labels;
    int rows;
    // The sheet as its maker gives it, in mm: first corner, pitch, columns, labels a sheet.
    double left, top, across, down;
    int columns, perSheet;
    int startAt;
};

class LabelSheets : public testing::EngineFixture,
                    public ::testing::WithParamInterface<SheetRow> {};

TEST_P(LabelSheets, PlaceEachLabelWhereTheSheetHasIt) {
    const SheetRow& row = GetParam();
    prepare(row.rows, labelLayout(row.labels));
    const PageDocument document = render(loadLayout(layoutPath()), RenderInfo{});
    const int places = row.startAt - 1 + row.rows;
    ASSERT_EQ(int(document.pages.size()), (places + row.perSheet - 1) / row.perSheet);
    int label = 0;
    for (size_t p = 0; p < document.pages.size(); ++p) {
        for (const PlacedBand& band : document.pages[p].bands) {
            ASSERT_EQ(band.kind, BandKind::Detail);
            const int slot = (label + row.startAt - 1) % row.perSheet;
            const auto& text = std::get<TextItem>(band.items[0]);
            EXPECT_EQ(int(p), (label + row.startAt - 1) / row.perSheet) << label;
            EXPECT_NEAR(text.rect.left(),
                        (row.left + (slot % row.columns) * row.across + 3) * PointsPerMm, 0.01)
                << label;
            EXPECT_NEAR(band.top, (row.top + (slot / row.columns) * row.down) * PointsPerMm, 0.01)
                << label;
            ++label;
        }
    }
    EXPECT_EQ(label, row.rows);
}

INSTANTIATE_TEST_SUITE_P(
    Engine, LabelSheets,
    ::testing::Values(
        SheetRow{"ThreeByEightTwoSheets", R"({"sheet": "A4-3x8"})", 30, 0, 0.5, 70, 37, 3, 24, 1},
        SheetRow{"ThreeByEightFromLabelTwenty", R"({"sheet": "A4-3x8", "startAt": 20})", 7, 0, 0.5,
                 70, 37, 3, 24, 20},
        SheetRow{"TwoBySevenWithGaps", R"({"sheet": "a4-2x7"})", 15, 4.65, 15.15, 101.6, 38.1, 2,
                 14, 1},
        SheetRow{"TwoBySevenLastLabel", R"({"sheet": "A4-2x7", "startAt": 14})", 2, 4.65, 15.15,
                 101.6, 38.1, 2, 14, 14},
        SheetRow{"GivenBySize",
                 R"({"columns": 4, "rows": 10, "width": 48.5, "height": 25.4, "across": 50.5,
                     "down": 26, "left": 5, "top": 10, "startAt": 3})",
                 40, 5, 10, 50.5, 26, 4, 40, 3}),
    [](const ::testing::TestParamInfo<SheetRow>& info) { return std::string(info.param.name); });

class BadSheets : public testing::EngineFixture {};

TEST_F(BadSheets, AreRefusedWithTheLayout) {
    const struct {
        const char* labels;
        const char* fault;
    } rows[] = {
        {R"({"sheet": "A4-9x9"})", "foglio di etichette sconosciuto: \"A4-9x9\""},
        {R"({"sheet": "A4-3x8", "startAt": 0})", "\"startAt\" deve stare tra 1 e 24"},
        {R"({"sheet": "A4-3x8", "startAt": 25})", "\"startAt\" deve stare tra 1 e 24"},
        {R"({"columns": 4, "rows": 8, "width": 70, "height": 37})", "escono dalla pagina"},
        {R"({"columns": 3, "rows": 9, "width": 70, "height": 37})", "escono dalla pagina"},
        {R"({"columns": 2, "rows": 2, "width": 70, "height": 37, "across": 60})",
         "non possono essere minori"},
        {R"({"columns": 2, "rows": 0, "width": 70, "height": 37})", "positive"},
    };
    for (const auto& row : rows) {
        prepare(1, labelLayout(row.labels));
        try {
            loadLayout(layoutPath());
            ADD_FAILURE() << row.labels;
        } catch (const RuntimeError& error) {
            EXPECT_TRUE(error.message().contains(QString::fromUtf8(row.fault)))
                << error.message().toStdString();
        }
    }
}

// The Code 39 check character of a text: the sum of the characters' values, modulo 43.
QChar code39Check(const QString& text) {
    static const QString alphabet = u"0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-. $/+%"_s;
    int sum = 0;
    for (QChar c : text)
        sum += int(alphabet.indexOf(c));
    return alphabet[sum % 43];
}

// Every label of a rendered sheet, at 300 dpi, read back by zbarimg.
QStringList decoded(const PageDocument& document) {
    QTemporaryDir folder;
    QStringList found;
    for (const QString& png : writePageImages(document, folder.path(), 300)) {
        found += lorvane::testing::runProgram(u"zbarimg"_s, {u"--quiet"_s, u"--raw"_s, png})
                     .out.split(u'\n', Qt::SkipEmptyParts);
    }
    found.sort();
    return found;
}

class LabelBarCodes : public testing::EngineFixture {};

TEST_F(LabelBarCodes, DecodeWithAndWithoutTheCheckCharacter) {
    for (const char* barcode : {"", R"(, "checkDigit": true)"}) {
        prepare(26, labelLayout(R"({"sheet": "A4-3x8", "startAt": 2})", barcode));
        const PageDocument document = render(loadLayout(layoutPath()), RenderInfo{});
        QStringList expected;
        for (const Page& page : document.pages)
            for (const PlacedBand& band : page.bands) {
                const QString code = std::get<TextItem>(band.items[0]).text;
                expected << (*barcode ? code + code39Check(code) : code);
            }
        expected.sort();
        ASSERT_EQ(expected.size(), 26);
        EXPECT_EQ(decoded(document), expected) << barcode;
    }
}

}  // namespace
}  // namespace lorvane::engine
