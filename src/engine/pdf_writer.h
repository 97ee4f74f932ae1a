// Writes a page document as a PDF file: fonts embedded, text selectable.
#pragma once

#include <QString>

#include "engine/page_document.h"

namespace lorvane::engine {

// Writes to a temporary name beside `path`, every write checked, and renames
// it into place, so a failure (a full disk too) never leaves a half file under
// the final name. Throws RuntimeError naming the file and the cause when it
// cannot be written.
// With `properties`, the document's title goes into the file's properties.
void writePdf(const PageDocument& document, const QString& path, bool properties = true);

}  // namespace lorvane::engine
