// Renders a layout into a page document: bands placed page by page with their
// running sums and counts, group breaks, labels across, page numbers.
#pragma once

#include <QDate>
#include <QString>

#include "db/recordset.h"
#include "engine/layout.h"
#include "engine/page_document.h"

namespace lorvane::engine {

struct RenderInfo {
    QString title;
    QString author;
    QDate printDate;  // invalid: today
};

// Reads the layout's own data source (its query on its work file in the work
// folder) and renders it. Throws RuntimeError when the work file cannot be
// read or the query fails.
PageDocument render(const LayoutSpec& layout, const RenderInfo& info);

// Renders the rows of `data` from its first row; the recordset is left at its end.
PageDocument renderRows(const LayoutSpec& layout, db::Recordset& data, const RenderInfo& info);

// The path of a layout's work file on this machine.
QString workFilePath(const LayoutSpec& layout);

}  // namespace lorvane::engine
