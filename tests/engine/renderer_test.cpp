// Rendering a layout against its work file: bands on pages, groups, sums,
// page numbers, labels across.
#include "engine/renderer.h"

#include "engine/painter.h"

#include <gtest/gtest.h>

#include "engine_fixture.h"
#include "platform/clock.h"
#include "platform/runtime_error.h"

namespace lorvane::engine {
namespace {

using namespace Qt::StringLiterals;

QStringList textsOf(const Page& page, BandKind kind) {
    QStringList texts;
    for (const PlacedBand& band : page.bands) {
        if (band.kind != kind) continue;
        QStringList line;
        for (const Primitive& primitive : band.items) {
            if (const auto* text = std::get_if<TextItem>(&primitive)) line << text->text;
        }
        texts << line.join(u'|');
    }
    return texts;
}

class RendererTest : public testing::EngineFixture {};

TEST_F(RendererTest, GroupsSumsAndTotalsAreThoseOfTheRows) {
    const PageDocument document = renderTrialBalance(6);
    ASSERT_EQ(document.pages.size(), 1u);
    const Page& page = document.pages[0];
    EXPECT_EQ(textsOf(page, BandKind::ReportHeader), QStringList{u"Bilancio di verifica"_s});
    ASSERT_GE(page.bands.size(), 2u);
    EXPECT_EQ(page.bands[0].kind, BandKind::ReportHeader) << "the report header opens page one";
    EXPECT_EQ(page.bands[1].kind, BandKind::PageHeader);
    EXPECT_EQ(textsOf(page, BandKind::GroupHeader), (QStringList{u"Mastro|03"_s, u"Mastro|05"_s}));
    EXPECT_EQ(textsOf(page, BandKind::Detail).first(), u"03.001|Conto numero 1|100,25|1,00"_s);
    // 03: rows 1-3, dare 100.25+200.25+300.25; 05: rows 4-6
    EXPECT_EQ(textsOf(page, BandKind::GroupFooter),
              (QStringList{u"3|600,75|6,00"_s, u"3|1.500,75|15,00"_s}));
    EXPECT_EQ(textsOf(page, BandKind::ReportFooter),
              QStringList{u"Totale generale|2.101,50|21,00"_s});
    EXPECT_EQ(textsOf(page, BandKind::PageFooter), QStringList{u"Pagina 1 di 1"_s});
    EXPECT_EQ(document.title, u"Bilancio di verifica"_s);
    EXPECT_EQ(document.author, u"mario"_s);
    ASSERT_EQ(document.outline.size(), 2u);
    EXPECT_EQ(document.outline[1].text, u"05"_s);
}

TEST_F(RendererTest, LongReportsBreakPagesAndKeepGroupHeadersWithTheirLines) {
    const PageDocument document = renderTrialBalance(200);
    ASSERT_GT(document.pages.size(), 3u);
    int details = 0;
    for (size_t p = 0; p < document.pages.size(); ++p) {
        const Page& page = document.pages[p];
        EXPECT_EQ(textsOf(page, BandKind::PageHeader).size(), 1u) << "every page has its header";
        EXPECT_EQ(textsOf(page, BandKind::PageFooter),
                  QStringList{u"Pagina %1 di %2"_s.arg(p + 1).arg(document.pages.size())});
        details += int(textsOf(page, BandKind::Detail).size());
        for (size_t b = 0; b < page.bands.size(); ++b) {
            if (page.bands[b].kind != BandKind::GroupHeader) continue;
            ASSERT_LT(b + 1, page.bands.size());
            EXPECT_EQ(page.bands[b + 1].kind, BandKind::Detail)
                << "a group header is never last on page " << p;
        }
        double bottom = 0;
        for (const PlacedBand& band : page.bands) {
            if (band.kind != BandKind::PageFooter)
                bottom = std::max(bottom, band.top + band.height);
        }
        const double footerTop = page.size.height() - (12 + 6) * PointsPerMm;
        EXPECT_LE(bottom, footerTop + 0.01) << "nothing runs into the page footer on page " << p;
    }
    EXPECT_EQ(details, 200);
}

// Over report lengths that end a page at every place in a group: a page
// that goes on with a group opens with its header when the layout asks for
// it, and a group footer never stands without a line of its group above it.
TEST_F(RendererTest, ContinuationPagesRepeatTheHeadingAndFootersKeepTheirLastLine) {
    QByteArray layout(testing::trialBalanceLayout);
    layout.replace(R"("groups": [{"field": "Mastro",)",
                   R"("groups": [{"field": "Mastro", "repeatHeader": true,)");
    int footersAtTop = 0;
    for (int rows = 70; rows <= 110; ++rows) {
        prepare(rows, layout);
        const PageDocument document = render(loadLayout(layoutPath()), RenderInfo{});
        ASSERT_GT(document.pages.size(), 1u);
        for (size_t p = 1; p < document.pages.size(); ++p) {
            const auto& bands = document.pages[p].bands;
            ASSERT_GE(bands.size(), 3u);
            EXPECT_EQ(bands[1].kind, BandKind::GroupHeader)
                << rows << " rows, page " << p + 1 << " opens without its group's heading";
            size_t body = 1;
            while (body < bands.size() && bands[body].kind == BandKind::GroupHeader)
                ++body;
            footersAtTop += body < bands.size() && bands[body].kind == BandKind::GroupFooter;
        }
        const QString first = textsOf(document.pages[1], BandKind::Detail).value(0);
        EXPECT_EQ(textsOf(document.pages[1], BandKind::GroupHeader).value(0),
                  u"Mastro|"_s + first.left(2))
            << "the heading of the group the page goes on with";
        EXPECT_EQ(document.outline.size(), 2u) << "a repeated heading is not a new group";
    }
    EXPECT_EQ(footersAtTop, 0) << "group footers without a line of their group above them";
}

TEST_F(RendererTest, ThePrintDateIsTheClocksToday) {
    QByteArray layout(testing::trialBalanceLayout);
    layout.replace(R"({"type": "special", "value": "pageOfPages")",
                   R"({"type": "special", "value": "printDate", "x": 0, "y": 0, "w": 40, "h": 5},
                      {"type": "special", "value": "pageOfPages")");
    prepare(3, layout);
    platform::setToday([] { return QDate(2026, 9, 1); });
    const PageDocument document = render(loadLayout(layoutPath()), RenderInfo{});
    platform::setToday(nullptr);
    EXPECT_EQ(textsOf(document.pages.at(0), BandKind::PageFooter),
              QStringList{u"01/09/2026|Pagina 1 di 1"_s});
}

TEST_F(RendererTest, AnEmptyWorkTableGivesOnePageWithZeroTotals) {
    const PageDocument document = renderTrialBalance(0);
    ASSERT_EQ(document.pages.size(), 1u);
    EXPECT_TRUE(textsOf(document.pages[0], BandKind::Detail).isEmpty());
    EXPECT_EQ(textsOf(document.pages[0], BandKind::ReportFooter),
              QStringList{u"Totale generale|0,00|0,00"_s});
}

TEST_F(RendererTest, LabelsFlowAcrossThePage) {
    prepare(
        7,
        R"json({"lorvaneLayout": 1, "data": {"workFile": "Prova.mdb", "query": "SELECT * FROM Saldi ORDER BY id"},
      "page": {"size": "A4", "margins": [10, 10, 10, 10]}, "labels": {"columns": 3, "gap": 5},
      "detail": {"height": 30, "items": [
        {"type": "field", "field": "CodiceConto", "x": 2, "y": 2, "w": 50, "h": 6},
        {"type": "barcode", "field": "id", "x": 2, "y": 10, "w": 50, "h": 15}]}})json");
    const PageDocument document = render(loadLayout(layoutPath()), RenderInfo{});
    ASSERT_EQ(document.pages.size(), 1u);
    const auto& bands = document.pages[0].bands;
    ASSERT_EQ(bands.size(), 7u);
    const double width = (190.0 - 2 * 5) / 3 * PointsPerMm;
    for (size_t i = 0; i < bands.size(); ++i) {
        const auto& text = std::get<TextItem>(bands[i].items[0]);
        EXPECT_NEAR(text.rect.left(), (10 + 2) * PointsPerMm + (i % 3) * (width + 5 * PointsPerMm),
                    0.01)
            << i;
        EXPECT_NEAR(bands[i].top, (10 + (i / 3) * 30) * PointsPerMm, 0.01) << i;
        EXPECT_EQ(std::get<BarcodeItem>(bands[i].items[1]).data, QString::number(i + 1));
    }
}

TEST_F(RendererTest, AFieldTheQueryDoesNotReadIsNamed) {
    for (const char* item : {R"("type": "field", "field": "Nessuno")",
                             R"("type": "expr", "expr": "Sum(dare) / [Nessuno]")"}) {
        QByteArray layout(testing::trialBalanceLayout);
        layout.replace(R"("type": "field", "field": "Descrizione")", item);
        prepare(3, layout);
        try {
            render(loadLayout(layoutPath()), RenderInfo{});
            ADD_FAILURE() << item;
        } catch (const RuntimeError& error) {
            EXPECT_TRUE(error.message().contains(u"'Nessuno'"_s)) << error.what();
        }
    }
}

// Computed items: a detail line's own figures, the totals of the scope
// wherever the item stands (a group header shows its group's), the page's
// rows, and a division by zero shown empty.
TEST_F(RendererTest, ComputedItemsShowTheirScopesTotals) {
    QByteArray layout(testing::trialBalanceLayout);
    const auto expr = [](const char* text, const char* extra = "") {
        return QByteArray(R"({"type": "expr", "expr": ")") + text +
               R"(", "format": "#.##0,00", "x": 0, "y": 0, "w": 30, "h": 6)" + extra + "}";
    };
    layout.replace(
        R"({"type": "text", "text": "Mastro", "x": 0, "y": 0, "w": 20, "h": 6, "font": {"bold": true}})",
        expr("Sum(dare)"));
    layout.replace(R"({"type": "count", "x": 0, "y": 0, "w": 30, "h": 6, "format": "0"})",
                   expr("Sum(dare) / Count()") + ", " + expr("Sum(dare) - Sum([avere])"));
    layout.replace(R"({"type": "field", "field": "Descrizione", "x": 30, "y": 0, "w": 80, "h": 6})",
                   expr("-(dare - avere)"));
    layout.replace(
        R"({"type": "text", "text": "Totale generale", "x": 0, "y": 0, "w": 60, "h": 6, "font": {"bold": true}})",
        expr("Sum(dare) / Count()") + ", " + expr("avere / 0") + ", " +
            expr("Sum(dare) / Count()", R"(, "scope": "report")"));
    layout.replace(R"({"type": "special", "value": "pageOfPages")",
                   expr("Count()", R"(, "scope": "page")") +
                       R"(, {"type": "special", "value": "pageOfPages")");
    prepare(6, layout);
    const PageDocument document = render(loadLayout(layoutPath()), RenderInfo{});
    ASSERT_EQ(document.pages.size(), 1u);
    const Page& page = document.pages[0];
    EXPECT_EQ(textsOf(page, BandKind::GroupHeader),
              (QStringList{u"600,75|03"_s, u"1.500,75|05"_s}));
    EXPECT_EQ(textsOf(page, BandKind::Detail).first(), u"03.001|-99,25|100,25|1,00"_s);
    EXPECT_EQ(textsOf(page, BandKind::GroupFooter),
              (QStringList{u"200,25|594,75|600,75|6,00"_s, u"500,25|1.485,75|1.500,75|15,00"_s}));
    EXPECT_EQ(textsOf(page, BandKind::ReportFooter),
              QStringList{u"350,25||350,25|2.101,50|21,00"_s});
    EXPECT_EQ(textsOf(page, BandKind::PageFooter), QStringList{u"6,00|Pagina 1 di 1"_s});
    // Figures stay numbers for the exports.
    const auto& footer = page.bands.back();
    EXPECT_EQ(std::get<TextItem>(footer.items[0]).value.toDouble(), 6.0);
}

// A running balance: the sum of a column started from another column's value
// in the first row of its scope, line by line, in the group's header before
// any line, in its footer, and over the whole report.
TEST_F(RendererTest, ARunningSumStartsFromTheFirstRowOfItsScope) {
    QByteArray layout(testing::trialBalanceLayout);
    const QByteArray running =
        R"({"type": "sum", "field": "dare", "start": "id", "format": "#.##0,00", "x": 0, "y": 0, "w": 30, "h": 6)";
    layout.replace(
        R"({"type": "text", "text": "Mastro", "x": 0, "y": 0, "w": 20, "h": 6, "font": {"bold": true}})",
        running + "}");
    layout.replace(R"({"type": "count", "x": 0, "y": 0, "w": 30, "h": 6, "format": "0"})",
                   running + "}");
    layout.replace(R"({"type": "field", "field": "Descrizione", "x": 30, "y": 0, "w": 80, "h": 6})",
                   running + "}");
    layout.replace(
        R"({"type": "text", "text": "Totale generale", "x": 0, "y": 0, "w": 60, "h": 6, "font": {"bold": true}})",
        running + R"(, "scope": "report"})");
    prepare(6, layout);
    const PageDocument document = render(loadLayout(layoutPath()), RenderInfo{});
    ASSERT_EQ(document.pages.size(), 1u);
    const Page& page = document.pages[0];
    // 03 starts from id 1, 05 from id 4; dare is 100 * id + 0,25.
    EXPECT_EQ(textsOf(page, BandKind::GroupHeader), (QStringList{u"1,00|03"_s, u"4,00|05"_s}));
    QStringList balances;
    for (const QString& line : textsOf(page, BandKind::Detail))
        balances << line.section(u'|', 1, 1);
    EXPECT_EQ(balances, (QStringList{u"101,25"_s, u"301,50"_s, u"601,75"_s, u"404,25"_s,
                                     u"904,50"_s, u"1.504,75"_s}));
    EXPECT_EQ(textsOf(page, BandKind::GroupFooter),
              (QStringList{u"601,75|600,75|6,00"_s, u"1.504,75|1.500,75|15,00"_s}));
    EXPECT_EQ(textsOf(page, BandKind::ReportFooter), QStringList{u"2.102,50|2.101,50|21,00"_s});

    // Only a sum starts from a value.
    layout.replace(
        R"({"type": "field", "field": "CodiceConto", "x": 0, "y": 0, "w": 30, "h": 6})",
        R"({"type": "field", "field": "CodiceConto", "start": "id", "x": 0, "y": 0, "w": 30, "h": 6})");
    prepare(6, layout);
    try {
        loadLayout(layoutPath());
        ADD_FAILURE() << "a start on a field was taken";
    } catch (const RuntimeError& error) {
        EXPECT_TRUE(error.message().contains(u"\"start\""_s)) << error.message().toStdString();
    }
}

TEST_F(RendererTest, AMissingWorkFileIsNamed) {
    prepare(3);
    QFile::remove(work.filePath(u"Prova.mdb"_s));
    try {
        render(loadLayout(layoutPath()), RenderInfo{});
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_TRUE(error.message().contains(u"Prova.mdb"_s)) << error.what();
    }
}

}  // namespace
}  // namespace lorvane::engine

namespace lorvane::engine {
namespace {

using namespace Qt::StringLiterals;

class DrawnItems : public testing::EngineFixture {};

// Dark pixels and dark-light changes along the middle row of `area`.
std::pair<int, int> inkAlong(const QImage& image, const QRect& area) {
    int dark = 0, changes = 0;
    bool previous = false;
    for (int x = area.left(); x <= area.right(); ++x) {
        const bool isDark = qGray(image.pixel(x, area.center().y())) < 128;
        dark += isDark;
        changes += x > area.left() && isDark != previous;
        previous = isDark;
    }
    return {dark, changes};
}

TEST_F(DrawnItems, ImagesAndBarCodesReachThePage) {
    QImage logo(40, 20, QImage::Format_RGB32);
    logo.fill(Qt::black);
    ASSERT_TRUE(logo.save(layouts.filePath(u"logo.png"_s)));
    prepare(
        1,
        R"json({"lorvaneLayout": 1, "data": {"workFile": "Prova.mdb", "query": "SELECT * FROM Saldi"},
      "page": {"size": "A4", "margins": [10, 10, 10, 10]},
      "detail": {"height": 40, "items": [
        {"type": "image", "file": "logo.png", "x": 0, "y": 0, "w": 20, "h": 10},
        {"type": "barcode", "field": "CodiceConto", "x": 0, "y": 15, "w": 80, "h": 20, "showText": false}]}})json");
    const PageDocument document = render(loadLayout(layoutPath()), RenderInfo{});
    const auto& items = document.pages.at(0).bands.at(0).items;
    EXPECT_EQ(std::get<ImageItem>(items[0]).image.size(), QSize(40, 20));

    const double dpi = 144, k = dpi / 72 * PointsPerMm;
    const QImage page = pageImage(document.pages[0], dpi);
    const auto [logoInk, logoChanges] =
        inkAlong(page, QRect(int(11 * k), int(11 * k), int(18 * k), int(8 * k)));
    EXPECT_EQ(logoChanges, 0) << "the image is solid";
    EXPECT_GT(logoInk, 0);
    const auto [barInk, barChanges] =
        inkAlong(page, QRect(int(10 * k), int(25 * k), int(80 * k), int(20 * k)));
    EXPECT_GT(barChanges, 40) << "Code 39 bars and spaces for \"03.001\"";
    EXPECT_GT(barInk, 0);
}

}  // namespace
}  // namespace lorvane::engine
