// The Word back end: the grid of a report written as an RTF document, the
// format every word processor opens as a Word document (saved as ".doc").
#pragma once

#include <QSizeF>
#include <QString>

#include "engine/grid.h"

namespace lorvane::engine {

// The paper of the document, in points.
struct RtfPage {
    QSizeF sizePt;
    double marginLeftPt = 0;
    double marginTopPt = 0;
    double marginRightPt = 0;
    double marginBottomPt = 0;
};

// Writes `grid` to `path`: one table row per grid row, a page break before
// every row that starts a page. The file appears under its name only once it
// is complete; an existing file is replaced then, and left as it was when
// writing fails (RuntimeError naming the file).
void writeRtf(const Grid& grid, const RtfPage& page, const QString& path);

}  // namespace lorvane::engine
