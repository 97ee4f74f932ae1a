// The Excel back end: a report grid written as an Excel 97-2003 workbook
// (.xls, BIFF8 records in the "Workbook" stream of an OLE2 compound file), one
// worksheet with the report's cells, number formats, bold text, column widths,
// row heights, page breaks and merged cells.
#pragma once

#include <QString>

#include "engine/grid.h"

namespace lorvane::engine {

struct XlsOptions {
    QString sheetName = QStringLiteral("Report");
    // An extra first row of bold headings: the texts of the page-header row
    // with the most cells, nothing over a column without one there.
    bool columnHeadings = false;
    // The sheet prints one page wide, in the orientation of the report's page.
    bool landscape = false;
    // The layout's display formats carried over as Excel number formats;
    // without, numbers are General and dates dd/mm/yyyy.
    bool keepFormats = true;
};

// Writes `grid` to `path`. Strings become shared strings, numbers (Integer,
// Long, Double, Currency, Decimal) and dates become numbers, Booleans become
// Excel's TRUE/FALSE cells, Null a blank cell. The file is written beside
// `path` under a temporary name and renamed over it at the end, so a failure
// leaves any earlier file at `path` as it was. Throws RuntimeError naming the
// file when it cannot be written or the grid exceeds 65,536 rows or 256 columns.
void writeXls(const Grid& grid, const QString& path, const XlsOptions& options = {});

}  // namespace lorvane::engine
