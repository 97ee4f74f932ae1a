// Draws the pages of a document with a QPainter: the one drawing routine of
// the viewer, the printer, the PDF writer and the page images.
#pragma once

#include <QPainter>

#include "engine/page_document.h"

namespace lorvane::engine {

// Draws `page` with the painter's coordinates in points from the page's
// top-left corner (the caller scales the painter to its device).
void paintPage(QPainter& painter, const Page& page);

// The page as an image at `dpi` dots per inch, on white.
QImage pageImage(const Page& page, double dpi);

}  // namespace lorvane::engine
