// Sheets of stick-on labels: where each label of a sheet stands, the common
// A4 sheets by name, and the reading of a layout's "labels" object.
#pragma once

#include <QJsonObject>
#include <QPointF>
#include <QSizeF>
#include <QString>
#include <functional>

namespace lorvane::engine {

// A sheet of labels in rows and columns, filled across then down. All lengths
// in millimetres, from the page's top-left corner.
struct LabelSheet {
    int columns = 0;  // 0: the layout prints on no sheet
    int rows = 0;
    QSizeF labelMm;   // one label
    QSizeF pitchMm;   // from a label's corner to the next one's, across and down
    QPointF firstMm;  // the corner of the first label
    int startAt = 1;  // the label of the first sheet the run starts at, from 1

    bool active() const { return columns > 0; }
    int labelsPerSheet() const { return columns * rows; }
    // The top-left corner of label `index` (from 0, across then down) of a sheet.
    QPointF cornerMm(int index) const;
};

// A common A4 sheet by its name ("A4-3x8": 24 labels of 70 x 37 mm; "A4-2x7":
// 14 of 99.1 x 38.1 mm; "A4-3x7": 21 of 63.5 x 38.1 mm); no sheet when the
// name is unknown.
LabelSheet namedLabelSheet(const QString& name);

// The sheet a layout's "labels" object describes: "sheet" names a common one,
// or "columns", "rows", "width", "height", "across", "down", "left", "top"
// give it (across and down default to the label's size: no gap); "startAt"
// chooses the first label. Without "sheet" or "rows" there is none. `fail`
// is called with the fault in Italian (unknown name, labels outside the page,
// a start beyond the sheet) and does not return.
LabelSheet readLabelSheet(const QJsonObject& labels, const QSizeF& pageMm,
                          const std::function<void(const QString&)>& fail);

}  // namespace lorvane::engine
