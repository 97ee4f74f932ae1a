#include "engine/grid.h"

#include <algorithm>
#include <map>
#include <optional>

#include "engine/layout.h"

namespace lorvane::engine {

namespace {

// Edges closer than this are one edge: layouts place their items by hand, a
// few millimetres apart from band to band. A character of the layouts' 8 to
// 10 point text is about 2 mm wide, so columns made of edges further apart are
// never narrower than a character.
constexpr double ColumnToleranceMm = 3;
constexpr double ColumnTolerancePt = ColumnToleranceMm * PointsPerMm;
constexpr double RowTolerancePt = 2;
constexpr double MinimumColumnPt = 12;

struct Placed {
    int page;
    BandKind kind;
    const TextItem* item;
};

std::vector<Placed> collect(const PageDocument& document, bool everyPage) {
    std::vector<Placed> placed;
    for (size_t p = 0; p < document.pages.size(); ++p) {
        for (const PlacedBand& band : document.pages[p].bands) {
            const bool pageBand =
                band.kind == BandKind::PageHeader || band.kind == BandKind::PageFooter;
            if (!everyPage && p > 0 && pageBand) continue;
            for (const Primitive& primitive : band.items) {
                const auto* text = std::get_if<TextItem>(&primitive);
                if (text && !text->text.isEmpty()) placed.push_back({int(p), band.kind, text});
            }
        }
    }
    // Pages come in order: sorting page by page keeps the step linear in the
    // length of the report.
    const auto byPosition = [](const Placed& a, const Placed& b) {
        if (std::abs(a.item->rect.top() - b.item->rect.top()) > RowTolerancePt) {
            return a.item->rect.top() < b.item->rect.top();
        }
        return a.item->rect.left() < b.item->rect.left();
    };
    for (auto first = placed.begin(); first != placed.end();) {
        const auto last = std::find_if(
            first, placed.end(), [&](const Placed& entry) { return entry.page != first->page; });
        std::stable_sort(first, last, byPosition);
        first = last;
    }
    return placed;
}

// One column of the table: where it starts, and the edges its own items hold
// to (left for text read from the left, right for figures set to the right).
struct Column {
    double start = 0;
    bool leftAnchored = false;
    std::optional<double> rightEdge;
};

// The columns are those of the detail rows, the report's table: the other
// bands (titles, group headings, totals, page furniture) place their items by
// hand around it and would each open a column of their own. A document with
// no detail rows takes its columns from every item. Left edges within the
// tolerance of the previous one are one column.
std::vector<Column> columnsOf(const std::vector<Placed>& placed) {
    const bool anyDetail = std::any_of(placed.begin(), placed.end(), [](const Placed& entry) {
        return entry.kind == BandKind::Detail;
    });
    // Few distinct edges however long the report: each kept once, with what
    // its items hold to.
    std::map<double, std::pair<bool, double>> edges;  // left -> (left-anchored, right edge or -1)
    for (const Placed& entry : placed) {
        if (anyDetail && entry.kind != BandKind::Detail) continue;
        auto& [leftAnchored, rightEdge] =
            edges.try_emplace(entry.item->rect.left(), false, -1.0).first->second;
        if (entry.item->align == Align::Right) {
            rightEdge = std::max(rightEdge, entry.item->rect.right());
        } else {
            leftAnchored = true;
        }
    }
    std::vector<Column> columns;
    for (const auto& [left, anchors] : edges) {
        if (columns.empty() || left - columns.back().start > ColumnTolerancePt)
            columns.push_back({left, false, std::nullopt});
        Column& column = columns.back();
        column.leftAnchored = column.leftAnchored || anchors.first;
        if (anchors.second >= 0)
            column.rightEdge = std::max(column.rightEdge.value_or(anchors.second), anchors.second);
    }
    return columns;
}

// The column that holds an item: a figure set to the right goes under the
// column whose figures end where it ends, other text under the column whose
// text starts where it starts; an item that matches no column goes with the
// text column it stands in, so that a town beside a name never lands under a
// column of figures.
int columnOf(const std::vector<Column>& columns, const TextItem& item) {
    const auto containing = [&](double x) {
        int found = 0;
        for (size_t i = 0; i < columns.size() && columns[i].start <= x; ++i)
            found = int(i);
        return found;
    };
    if (item.align == Align::Right) {
        for (size_t i = 0; i < columns.size(); ++i) {
            if (columns[i].rightEdge &&
                std::abs(*columns[i].rightEdge - item.rect.right()) <= ColumnTolerancePt)
                return int(i);
        }
        return containing(item.rect.right() - ColumnTolerancePt);
    }
    const double left = item.rect.left();
    int textColumn = -1;
    for (size_t i = 0; i < columns.size() && columns[i].start <= left + ColumnTolerancePt; ++i) {
        if (!columns[i].leftAnchored) continue;
        if (std::abs(columns[i].start - left) <= ColumnTolerancePt) return int(i);
        textColumn = int(i);
    }
    return textColumn >= 0 ? textColumn : containing(left + ColumnTolerancePt);
}

struct RowItem {
    int column;
    const TextItem* item;
};

// The cells of one row: items of one column joined side by side (their
// typed value dropped), each cell spanning the columns its item covers up to
// the next cell.
void addCells(Grid& grid, int row, std::vector<RowItem>& items,
              const std::vector<Column>& columns) {
    std::stable_sort(items.begin(), items.end(),
                     [](const RowItem& a, const RowItem& b) { return a.column < b.column; });
    const size_t firstCell = grid.cells.size();
    for (const RowItem& entry : items) {
        const TextItem& item = *entry.item;
        if (grid.cells.size() > firstCell && grid.cells.back().column == entry.column) {
            grid.cells.back().text += u' ' + item.text;
            grid.cells.back().value = db::Variant();
            continue;
        }
        GridCell cell;
        cell.row = row;
        cell.column = entry.column;
        cell.columnSpan = 1;
        for (size_t next = size_t(entry.column) + 1;
             next < columns.size() && columns[next].start < item.rect.right() - ColumnTolerancePt;
             ++next) {
            ++cell.columnSpan;
        }
        cell.text = item.text;
        cell.value = item.value;
        cell.format = item.format;
        cell.font = item.font;
        cell.align = item.align;
        grid.cells.push_back(std::move(cell));
    }
    // A span never covers the next cell.
    for (size_t i = firstCell; i + 1 < grid.cells.size(); ++i) {
        GridCell& cell = grid.cells[i];
        cell.columnSpan = std::min(cell.columnSpan, grid.cells[i + 1].column - cell.column);
    }
    items.clear();
}

}  // namespace

Grid buildGrid(const PageDocument& document, bool everyPage) {
    Grid grid;
    const std::vector<Placed> placed = collect(document, everyPage);
    if (placed.empty()) return grid;
    const std::vector<Column> columns = columnsOf(placed);

    double right = columns.back().start;
    for (const Placed& entry : placed)
        right = std::max(right, entry.item->rect.right());
    for (size_t i = 0; i < columns.size(); ++i) {
        const double end = i + 1 < columns.size() ? columns[i + 1].start : right;
        grid.columnWidthsPt.push_back(std::max(MinimumColumnPt, end - columns[i].start));
    }

    int lastPage = -1;
    double rowTop = 0;
    std::vector<RowItem> rowItems;
    for (const Placed& entry : placed) {
        const QRectF& rect = entry.item->rect;
        const bool newRow =
            grid.rows.empty() || entry.page != lastPage || rect.top() - rowTop > RowTolerancePt;
        if (newRow) {
            if (!grid.rows.empty()) addCells(grid, int(grid.rows.size()) - 1, rowItems, columns);
            GridRow row;
            row.heightPt = rect.height();
            row.kind = entry.kind;
            row.pageBreakBefore = everyPage && lastPage >= 0 && entry.page != lastPage;
            grid.rows.push_back(row);
            rowTop = rect.top();
            lastPage = entry.page;
        } else {
            grid.rows.back().heightPt = std::max(grid.rows.back().heightPt, rect.height());
        }
        rowItems.push_back({columnOf(columns, *entry.item), entry.item});
    }
    addCells(grid, int(grid.rows.size()) - 1, rowItems, columns);
    return grid;
}

}  // namespace lorvane::engine
