#include "engine/painter.h"

#include <QVarLengthArray>

#include <zint.h>

#include <QDir>
#include <QFontMetricsF>
#include <QSaveFile>
#include <cmath>
#include <memory>

#include "platform/runtime_error.h"

namespace lorvane::engine {

namespace {

// The painter draws in points, scaled to its device: a font in points would
// be scaled twice, so its size is given in units of the device's resolution.
QFont fontOf(const FontSpec& spec, const QPainter& painter) {
    QFont font(spec.family);
    font.setPointSizeF(spec.sizePt * 72.0 / painter.device()->logicalDpiY());
    font.setBold(spec.bold);
    font.setItalic(spec.italic);
    return font;
}

Qt::Alignment alignmentOf(Align align) {
    switch (align) {
        case Align::Center:
            return Qt::AlignHCenter | Qt::AlignVCenter;
        case Align::Right:
            return Qt::AlignRight | Qt::AlignVCenter;
        default:
            return Qt::AlignLeft | Qt::AlignVCenter;
    }
}

void drawText(QPainter& painter, const TextItem& item) {
    if (item.text.isEmpty()) return;
    painter.setFont(fontOf(item.font, painter));
    painter.setPen(item.color);
    painter.drawText(item.rect, int(alignmentOf(item.align)) | Qt::TextSingleLine, item.text);
}

// The blank a scanner needs on each side of a Code 39 symbol, in modules
// (the narrow bar's width).
constexpr double QuietZoneModules = 10;

// Code 39 as zint lays it out, with the check character when asked for,
// scaled into the item's rectangle less a quiet zone on either side; the
// text (the data, without the check character) goes underneath in a small
// font when asked for.
void drawBarcode(QPainter& painter, const BarcodeItem& item) {
    if (item.data.isEmpty()) return;
    std::unique_ptr<zint_symbol, decltype(&ZBarcode_Delete)> symbol(ZBarcode_Create(),
                                                                    ZBarcode_Delete);
    symbol->symbology = BARCODE_CODE39;
    symbol->option_2 = item.checkDigit ? 1 : 0;
    symbol->show_hrt = 0;
    const QByteArray data = item.data.toLatin1();
    if (ZBarcode_Encode(symbol.get(), reinterpret_cast<const unsigned char*>(data.constData()),
                        int(data.size())) >= ZINT_ERROR ||
        ZBarcode_Buffer_Vector(symbol.get(), 0) >= ZINT_ERROR || !symbol->vector) {
        return;  // characters Code 39 cannot carry: nothing is drawn, as a printer would
    }
    const double textHeight = item.showText ? std::min(item.rect.height() * 0.3, 9.0) : 0;
    const double module = item.rect.width() / (symbol->vector->width + 2 * QuietZoneModules);
    const QRectF bars(item.rect.left() + QuietZoneModules * module, item.rect.top(),
                      symbol->vector->width * module, item.rect.height() - textHeight);
    const double sy = bars.height() / symbol->vector->height;
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::black);
    // One call for all the bars: the PDF writer's cost is per call, not per bar.
    QVarLengthArray<QRectF, 128> rects;
    for (const zint_vector_rect* rect = symbol->vector->rectangles; rect; rect = rect->next) {
        rects.append(QRectF(bars.left() + rect->x * module, bars.top() + rect->y * sy,
                            rect->width * module, rect->height * sy));
    }
    painter.drawRects(rects.constData(), int(rects.size()));
    if (item.showText) {
        painter.setFont(
            fontOf(FontSpec{QStringLiteral("Liberation Mono"), textHeight * 0.8}, painter));
        painter.setPen(Qt::black);
        painter.drawText(QRectF(item.rect.left(), bars.bottom(), item.rect.width(), textHeight),
                         Qt::AlignCenter, item.data);
    }
}

}  // namespace

QRectF textSpanRect(const TextItem& item, qsizetype from, qsizetype length) {
    // Measured on a device of 72 dots per inch, where a pixel is a point.
    static const QImage pointDevice = [] {
        QImage image(1, 1, QImage::Format_RGB32);
        image.setDotsPerMeterX(int(std::lround(72 / 0.0254)));
        image.setDotsPerMeterY(int(std::lround(72 / 0.0254)));
        return image;
    }();
    QFont font(item.font.family);
    font.setPointSizeF(item.font.sizePt);
    font.setBold(item.font.bold);
    font.setItalic(item.font.italic);
    const QFontMetricsF metrics(font, &pointDevice);
    const double whole = metrics.horizontalAdvance(item.text);
    double left = item.rect.left();
    if (item.align == Align::Right) {
        left = item.rect.right() - whole;
    } else if (item.align == Align::Center) {
        left = item.rect.center().x() - whole / 2;
    }
    left += metrics.horizontalAdvance(item.text.left(from));
    const QRectF span(left, item.rect.top(), metrics.horizontalAdvance(item.text.mid(from, length)),
                      item.rect.height());
    return span.intersected(item.rect);
}

void paintPage(QPainter& painter, const Page& page) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    for (const PlacedBand& band : page.bands) {
        for (const Primitive& primitive : band.items) {
            if (const auto* text = std::get_if<TextItem>(&primitive)) {
                drawText(painter, *text);
            } else if (const auto* line = std::get_if<LineItem>(&primitive)) {
                painter.setPen(QPen(Qt::black, line->widthPt));
                painter.drawLine(line->from, line->to);
            } else if (const auto* box = std::get_if<BoxItem>(&primitive)) {
                painter.setPen(box->borderPt > 0 ? QPen(Qt::black, box->borderPt)
                                                 : QPen(Qt::NoPen));
                painter.setBrush(box->fill);
                painter.drawRect(box->rect);
            } else if (const auto* image = std::get_if<ImageItem>(&primitive)) {
                if (!image->image.isNull()) painter.drawImage(image->rect, image->image);
            } else if (const auto* barcode = std::get_if<BarcodeItem>(&primitive)) {
                drawBarcode(painter, *barcode);
            }
            painter.setBrush(Qt::NoBrush);
        }
    }
    painter.restore();
}

QImage pageImage(const Page& page, double dpi) {
    const double scale = dpi / 72.0;
    QImage image(QSize(int(page.size.width() * scale + 0.5), int(page.size.height() * scale + 0.5)),
                 QImage::Format_RGB32);
    image.setDotsPerMeterX(int(dpi / 0.0254));
    image.setDotsPerMeterY(int(dpi / 0.0254));
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.scale(scale, scale);
    paintPage(painter, page);
    return image;
}

QStringList writePageImages(const PageDocument& document, const QString& folder, double dpi) {
    using namespace Qt::StringLiterals;
    if (!QDir().mkpath(folder))
        throw RuntimeError(u"Impossibile creare la cartella '%1'."_s.arg(folder));
    QStringList written;
    for (size_t i = 0; i < document.pages.size(); ++i) {
        const QString path =
            QDir(folder).filePath(u"pagina-%1.png"_s.arg(i + 1, 3, 10, QChar(u'0')));
        QSaveFile file(path);
        if (!file.open(QIODevice::WriteOnly) ||
            !pageImage(document.pages[i], dpi).save(&file, "PNG") || !file.commit())
            throw RuntimeError(u"Impossibile scrivere il file '%1'."_s.arg(path));
        written << path;
    }
    return written;
}

}  // namespace lorvane::engine
