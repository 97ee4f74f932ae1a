// Draws the pages of a document with a QPainter: the one drawing routine of
// the viewer, the printer, the PDF writer and the page images.
#pragma once

#include <QPainter>

#include "engine/page_document.h"

namespace lorvane::engine {

// Draws `page` with the painter's coordinates in points from the page's
// top-left corner (the caller scales the painter to its device).
void paintPage(QPainter& painter, const Page& page);

// Where characters `from` to `from + length` of a text item stand on its
// page, in points, as paintPage draws them (within the item's rectangle).
QRectF textSpanRect(const TextItem& item, qsizetype from, qsizetype length);

// The page as an image at `dpi` dots per inch, on white.
QImage pageImage(const Page& page, double dpi);

// Writes every page as `folder`/pagina-001.png, pagina-002.png… at `dpi`
// dots per inch, each beside its name first and then moved there, so that a
// reader never finds half a page; makes the folder. Gives the paths written.
// Throws RuntimeError naming the folder or the file that cannot be written.
QStringList writePageImages(const PageDocument& document, const QString& folder, double dpi);

}  // namespace lorvane::engine
