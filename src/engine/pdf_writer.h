// Writes a page document as a PDF file: fonts embedded, text selectable.
#pragma once

#include <QString>

#include "engine/page_document.h"

namespace lorvane::engine {

// Writes to a temporary name beside `path` and renames it into place, so a
// failure never leaves a half file under the final name. Throws RuntimeError
// naming the file when it cannot be written.
// With `properties`, the document's title goes into the file's properties.
void writePdf(const PageDocument& document, const QString& path, bool properties = true);

// Renames `partial` over `path`, or removes it and throws naming `path`.
void replaceFile(const QString& partial, const QString& path);

}  // namespace lorvane::engine
