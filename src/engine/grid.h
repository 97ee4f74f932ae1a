// The page document seen as a table, for the writers that lay out rows and
// columns (Word, Excel): element edges snapped to shared rows and columns, so
// that misaligned elements never make spacer columns.
#pragma once

#include <QString>
#include <vector>

#include "engine/page_document.h"

namespace lorvane::engine {

struct GridCell {
    int row = 0;
    int column = 0;
    int columnSpan = 1;
    QString text;       // as shown on the page
    db::Variant value;  // typed value (number, Currency, Date...), Empty for plain text
    QString format;     // the layout's display format of `value`, "" for none
    FontSpec font;
    Align align = Align::Left;
};

struct GridRow {
    double heightPt = 12;
    BandKind kind = BandKind::Detail;
    bool pageBreakBefore = false;  // the first row of a page after the first
};

struct Grid {
    std::vector<double> columnWidthsPt;
    std::vector<GridRow> rows;
    std::vector<GridCell> cells;  // ordered by row, then column; at most one per row and column
};

// Builds the grid of a document; every text item lands in one cell. With
// `everyPage` the page bands of every page are kept and each page after the
// first starts with a page break (a document to print); without, the page
// headers and footers are kept once, on the first page (a worksheet).
Grid buildGrid(const PageDocument& document, bool everyPage);

}  // namespace lorvane::engine
