// The rendered report: pages of light positioned primitives, made once per run
// and drawn or written by every back end (viewer, printer, PDF, RTF, BIFF8).
// All lengths are in points (1/72 inch), from the top-left corner of the page.
#pragma once

#include <QColor>
#include <QImage>
#include <QRectF>
#include <QString>
#include <variant>
#include <vector>

#include "db/variant.h"

namespace lorvane::engine {

struct FontSpec {
    QString family = QStringLiteral("Liberation Sans");
    double sizePt = 9;
    bool bold = false;
    bool italic = false;
    bool operator==(const FontSpec&) const = default;
};

enum class Align { Left, Center, Right };

// What produced a primitive: the band kind, for writers that lay out rows.
enum class BandKind {
    ReportHeader,
    PageHeader,
    GroupHeader,
    Detail,
    GroupFooter,
    PageFooter,
    ReportFooter
};

struct TextItem {
    QRectF rect;
    QString text;       // as shown
    db::Variant value;  // the typed value behind a field, sum or count; Empty for plain text
    QString format;     // the display format of `value` ("dd/MM/yyyy", "#.##0,00"), "" for none
    FontSpec font;
    Align align = Align::Left;
    QColor color = Qt::black;
};

struct LineItem {
    QPointF from;
    QPointF to;
    double widthPt = 0.5;
};

struct BoxItem {
    QRectF rect;
    double borderPt = 0.5;
    QColor fill = Qt::transparent;
};

struct ImageItem {
    QRectF rect;
    QImage image;
};

struct BarcodeItem {
    QRectF rect;
    QString data;  // Code 39
    bool showText = true;
    bool checkDigit = false;  // the modulo 43 check character after the data
};

using Primitive = std::variant<TextItem, LineItem, BoxItem, ImageItem, BarcodeItem>;

// One band as placed on a page: its kind, its vertical extent and its items.
struct PlacedBand {
    BandKind kind = BandKind::Detail;
    double top = 0;
    double height = 0;
    std::vector<Primitive> items;
};

struct Page {
    QSizeF size;  // points
    std::vector<PlacedBand> bands;
};

// An entry of the group tree: a group value and the page it starts on.
struct OutlineEntry {
    int level = 0;
    QString text;
    int page = 0;  // 0-based
};

struct PageDocument {
    QString title;
    QString author;
    std::vector<Page> pages;
    std::vector<OutlineEntry> outline;
};

}  // namespace lorvane::engine
