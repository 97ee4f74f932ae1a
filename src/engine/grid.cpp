#include "engine/grid.h"

#include <algorithm>
#include <set>

namespace lorvane::engine {

namespace {

// Edges closer than this are one edge: layouts place columns by hand.
constexpr double ColumnTolerancePt = 3;
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

// The starts of the columns: every left edge, those within the tolerance of
// the previous one merged into it.
std::vector<double> columnStarts(const std::vector<Placed>& placed) {
    std::set<double> lefts;  // few distinct edges, however long the report
    for (const Placed& entry : placed)
        lefts.insert(entry.item->rect.left());
    std::vector<double> starts;
    for (const double left : lefts) {
        if (starts.empty() || left - starts.back() > ColumnTolerancePt) starts.push_back(left);
    }
    return starts;
}

int columnOf(const std::vector<double>& starts, double left) {
    const auto after = std::upper_bound(starts.begin(), starts.end(), left + ColumnTolerancePt);
    return int(std::max<std::ptrdiff_t>(0, after - starts.begin() - 1));
}

}  // namespace

Grid buildGrid(const PageDocument& document, bool everyPage) {
    Grid grid;
    const std::vector<Placed> placed = collect(document, everyPage);
    if (placed.empty()) return grid;
    const std::vector<double> starts = columnStarts(placed);

    double right = starts.back();
    for (const Placed& entry : placed)
        right = std::max(right, entry.item->rect.right());
    for (size_t i = 0; i < starts.size(); ++i) {
        const double end = i + 1 < starts.size() ? starts[i + 1] : right;
        grid.columnWidthsPt.push_back(std::max(MinimumColumnPt, end - starts[i]));
    }

    int lastPage = -1;
    double rowTop = 0;
    for (const Placed& entry : placed) {
        const QRectF& rect = entry.item->rect;
        const bool newRow =
            grid.rows.empty() || entry.page != lastPage || rect.top() - rowTop > RowTolerancePt;
        if (newRow) {
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
        const int row = int(grid.rows.size()) - 1;
        const int column = columnOf(starts, rect.left());
        if (!grid.cells.empty() && grid.cells.back().row == row &&
            grid.cells.back().column >= column) {
            // Two items in one cell: their texts side by side.
            grid.cells.back().text += u' ' + entry.item->text;
            grid.cells.back().value = db::Variant();
            continue;
        }
        if (!grid.cells.empty() &&
            grid.cells.back().row == row) {  // a span never covers the next cell
            GridCell& previous = grid.cells.back();
            previous.columnSpan = std::min(previous.columnSpan, column - previous.column);
        }
        GridCell cell;
        cell.row = row;
        cell.column = column;
        cell.columnSpan = 1;
        for (size_t next = size_t(column) + 1;
             next < starts.size() && starts[next] < rect.right() - ColumnTolerancePt; ++next) {
            ++cell.columnSpan;
        }
        cell.text = entry.item->text;
        cell.value = entry.item->value;
        cell.format = entry.item->format;
        cell.font = entry.item->font;
        cell.align = entry.item->align;
        grid.cells.push_back(std::move(cell));
    }
    return grid;
}

}  // namespace lorvane::engine
