// A report layout: where its data come from, the page, and the bands with
// their items. Layout files are JSON documents of our own format (README.md in
// this folder); all lengths in them are millimetres.
#pragma once

#include <QSizeF>
#include <QString>
#include <memory>
#include <vector>

#include "engine/label_sheet.h"
#include "engine/page_document.h"

namespace lorvane::engine {

class Expression;

struct ItemSpec {
    enum class Kind { Text, Field, Sum, Count, Special, Line, Box, Image, Barcode, Expr };
    // Where a sum or count is taken: the innermost group around the item's
    // band, the whole report, or (Expr only) the rows of the page.
    enum class Scope { Group, Report, Page };

    Kind kind = Kind::Text;
    QRectF rectMm;   // x, y, width, height from the band's top-left corner
    QString text;    // Text: the text; Special: which one (title, author, page, pages, pageOfPages,
                     // printDate, groupValue)
    QString field;   // Field, Sum, Barcode: the column of the query
    QString format;  // Field, Sum, Count, Expr: "dd/MM/yyyy", "#.##0,00", "" for the plain text
    // Sum: a column whose value in the first row of the scope the running sum
    // starts from (a balance brought forward); "" to start from 0.
    QString start;
    std::shared_ptr<const Expression> expression;  // Expr, parsed as the layout is read
    Scope scope = Scope::Group;
    FontSpec font;
    Align align = Align::Left;
    double lineWidthPt = 0.5;       // Line, Box
    QColor fill = Qt::transparent;  // Box
    QString imageFile;              // Image, relative to the layout file
    bool showText = true;           // Barcode
    bool checkDigit = false;        // Barcode: the modulo 43 check character added
};

struct BandSpec {
    double heightMm = 0;
    std::vector<ItemSpec> items;
    bool isEmpty() const { return heightMm <= 0; }
};

struct GroupSpec {
    QString field;
    BandSpec header;
    BandSpec footer;
    bool repeatHeader = false;  // the header again at the top of each page the group runs onto
};

struct LayoutSpec {
    QString title;     // the report's default title
    QString workFile;  // the file name of the work database, in the work folder
    QString query;     // what the report reads there, Access dialect
    QSizeF pageMm{210, 297};
    double marginLeftMm = 10, marginTopMm = 10, marginRightMm = 10, marginBottomMm = 10;
    int labelColumns = 1;  // detail bands flowing across the page (labels)
    double labelGapMm = 0;
    LabelSheet sheet;  // labels placed on a sheet, when active (columns and gap unused)
    BandSpec reportHeader, pageHeader, detail, pageFooter, reportFooter;
    std::vector<GroupSpec> groups;  // outermost first
    QString folder;                 // where the layout file stands (for images)
};

// How deeply a layout file's objects and arrays may nest; deeper files are
// refused before they are parsed.
inline constexpr int MaxLayoutNesting = 32;

// Reads a layout file. Throws RuntimeError naming the file and the fault for a
// file that is missing, not JSON, or not a layout of this format; a layout
// whose work file is not a plain file name is not of this format.
LayoutSpec loadLayout(const QString& path, const QString& folderForImages = QString());

inline constexpr double PointsPerMm = 72.0 / 25.4;

}  // namespace lorvane::engine
