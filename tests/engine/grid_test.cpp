// The grid step: a rendered report seen as rows and columns.
#include "engine/grid.h"

#include <gtest/gtest.h>

#include "engine/layout.h"
#include "engine/renderer.h"
#include "engine_fixture.h"

namespace lorvane::engine {
namespace {

using namespace Qt::StringLiterals;

TextItem textAt(double x, double y, double width, const QString& text) {
    TextItem item;
    item.rect = QRectF(x, y, width, 10);
    item.text = text;
    return item;
}

PageDocument twoPages() {
    PageDocument document;
    for (int p = 0; p < 2; ++p) {
        Page page{QSizeF(595, 842), {}};
        page.bands.push_back({BandKind::PageHeader,
                              0,
                              12,
                              {textAt(20, 0, 50, u"Conto"_s), textAt(100, 0, 50, u"Dare"_s)}});
        // Edges a point or two apart are the same column.
        page.bands.push_back(
            {BandKind::Detail,
             12,
             12,
             {textAt(21.5, 12, 50, u"03.%1"_s.arg(p)), textAt(99, 12, 50, u"1,00"_s)}});
        page.bands.push_back(
            {BandKind::Detail, 24, 12, {textAt(20, 24, 130, u"una riga larga"_s)}});
        document.pages.push_back(page);
    }
    return document;
}

TEST(Grid, SnapsNearEdgesIntoSharedColumns) {
    const Grid grid = buildGrid(twoPages(), false);
    ASSERT_EQ(grid.columnWidthsPt.size(), 2u);
    EXPECT_NEAR(grid.columnWidthsPt[0], 79, 0.01)
        << "from the first edge of the column to the next column";
    EXPECT_EQ(grid.rows.size(), 5u) << "the second page's header is kept once";
    const GridCell& wide = grid.cells[4];
    EXPECT_EQ(wide.text, u"una riga larga"_s);
    EXPECT_EQ(wide.columnSpan, 2);
    for (const GridRow& row : grid.rows)
        EXPECT_FALSE(row.pageBreakBefore);
}

TEST(Grid, EveryPageKeepsPageBandsAndBreaks) {
    const Grid grid = buildGrid(twoPages(), true);
    ASSERT_EQ(grid.rows.size(), 6u);
    EXPECT_TRUE(grid.rows[3].pageBreakBefore);
    EXPECT_EQ(grid.rows[3].kind, BandKind::PageHeader);
    EXPECT_EQ(std::count_if(grid.rows.begin(), grid.rows.end(),
                            [](const GridRow& row) { return row.pageBreakBefore; }),
              1);
}

// A band of a report as the layouts place it by hand, lengths in mm: each
// item's left edge, width and alignment.
struct Placement {
    double xMm, wMm;
    const char* text;
    Align align = Align::Left;
};

PlacedBand bandOf(BandKind kind, double topPt, std::initializer_list<Placement> items) {
    PlacedBand band{kind, topPt, 12, {}};
    for (const Placement& placement : items) {
        TextItem item = textAt(placement.xMm * PointsPerMm, topPt, placement.wMm * PointsPerMm,
                               QString::fromUtf8(placement.text));
        item.align = placement.align;
        band.items.push_back(item);
    }
    return band;
}

// The columns are the detail's: a heading, a group's label and value, a town
// that starts inside a column of figures, a total's code a few mm off its
// column, page furniture centred or set to the right all land in them.
TEST(Grid, OtherBandsLandInTheDetailsColumns) {
    constexpr Align R = Align::Right;
    PageDocument document;
    document.pages.push_back(
        {QSizeF(842, 595),
         {bandOf(BandKind::PageHeader, 0,
                 {{0, 22, "Data"},
                  {22, 25, "Esattore"},
                  {49, 32, "Introdotto", R},
                  {81, 32, "PREU", R}}),
          bandOf(BandKind::GroupHeader, 12,
                 {{1, 20, "L0005"}, {22, 90, "Bar Jolly"}, {82, 80, "Busto Arsizio"}}),
          bandOf(BandKind::Detail, 24,
                 {{0, 22, "02/01/2025"},
                  {22, 25, "ES02"},
                  {49, 32, "3.442,00", R},
                  {81, 32, "447,46", R}}),
          bandOf(BandKind::GroupFooter, 36,
                 {{0, 25, "Totale locale"},
                  {25, 22, "L0005"},
                  {49, 32, "3.442,00", R},
                  {81, 32, "447,46", R}}),
          bandOf(BandKind::PageFooter, 48,
                 {{0, 40, "admin"},
                  {40, 40, "31/03/2025", Align::Center},
                  {70, 43, "Pagina 1 di 1", R}})}});
    const Grid grid = buildGrid(document, false);
    ASSERT_EQ(grid.columnWidthsPt.size(), 4u);
    QStringList rows(int(grid.rows.size()));
    for (const GridCell& cell : grid.cells)
        rows[cell.row] += u"%1:%2|"_s.arg(cell.column).arg(cell.text);
    EXPECT_EQ(rows, (QStringList{u"0:Data|1:Esattore|2:Introdotto|3:PREU|"_s,
                                 u"0:L0005|1:Bar Jolly Busto Arsizio|"_s,
                                 u"0:02/01/2025|1:ES02|2:3.442,00|3:447,46|"_s,
                                 u"0:Totale locale|1:L0005|2:3.442,00|3:447,46|"_s,
                                 u"0:admin|1:31/03/2025|3:Pagina 1 di 1|"_s}));
}

class GridOfAReport : public testing::EngineFixture {};

TEST_F(GridOfAReport, KeepsTypedValuesAndFormats) {
    prepare(4);
    const Grid grid = buildGrid(render(loadLayout(layoutPath()), RenderInfo{}), false);
    const auto amount = std::find_if(grid.cells.begin(), grid.cells.end(),
                                     [](const GridCell& cell) { return cell.text == u"100,25"_s; });
    ASSERT_NE(amount, grid.cells.end());
    EXPECT_EQ(amount->value.type(), db::VarType::Currency);
    EXPECT_EQ(amount->format, u"#.##0,00"_s);
    EXPECT_EQ(amount->align, Align::Right);
    for (size_t i = 1; i < grid.cells.size(); ++i) {
        const bool ordered = grid.cells[i - 1].row < grid.cells[i].row ||
                             (grid.cells[i - 1].row == grid.cells[i].row &&
                              grid.cells[i - 1].column < grid.cells[i].column);
        EXPECT_TRUE(ordered) << "one cell per row and column, in order";
    }
}

}  // namespace
}  // namespace lorvane::engine
