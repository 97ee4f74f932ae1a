#include "engine/renderer.h"

#include <QHash>

#include "db/connection.h"
#include "engine/value_format.h"
#include "platform/runtime_error.h"
#include "platform/windows_paths.h"

namespace lorvane::engine {

using namespace Qt::StringLiterals;
using db::Variant;

namespace {

// The running sums and count of one scope: the report (level 0) or a group.
struct Totals {
    QHash<QString, Variant> sums;  // by field name
    int count = 0;
};

bool sameKey(const Variant& a, const Variant& b) {
    if (a.isNull() || b.isNull()) return a.isNull() && b.isNull();
    const auto order = db::compare(a, b);
    return order && *order == 0;
}

class Renderer {
  public:
    Renderer(const LayoutSpec& layout, db::Recordset& data, const RenderInfo& info)
        : layout_(layout), data_(data) {
        document_.title = info.title.isEmpty() ? layout.title : info.title;
        document_.author = info.author;
        printDate_ = info.printDate.isValid() ? info.printDate : QDate::currentDate();
        pageSize_ = layout.pageMm * PointsPerMm;
        left_ = layout.marginLeftMm * PointsPerMm;
        top_ = layout.marginTopMm * PointsPerMm;
        contentWidth_ = pageSize_.width() - left_ - layout.marginRightMm * PointsPerMm;
        footerTop_ = pageSize_.height() - layout.marginBottomMm * PointsPerMm -
                     layout.pageFooter.heightMm * PointsPerMm;
        totals_.resize(layout.groups.size() + 1);
        resolveFields();
    }

    PageDocument run() {
        // Headers placed before the first line show the first row's values.
        const bool empty = data_.RecordCount() == 0;
        if (!empty) {
            data_.MoveFirst();
            readRow();
        }
        newPage(true);
        const int groups = int(layout_.groups.size());
        bool first = true;
        if (!empty) data_.MoveFirst();
        for (; !data_.Eof(); data_.MoveNext()) {
            readRow();
            int changed = groups;
            for (int g = 0; g < groups; ++g) {
                if (first ||
                    !sameKey(row_[size_t(groupFields_[size_t(g)])], groupKeys_[size_t(g)])) {
                    changed = g;
                    break;
                }
            }
            if (!first) {
                std::swap(row_, lastRow_);  // footers show the last row of their group
                for (int g = groups - 1; g >= changed; --g)
                    closeGroup(g);
                std::swap(row_, lastRow_);
            }
            for (int g = changed; g < groups; ++g)
                openGroup(g);
            accumulate();
            place(layout_.detail, BandKind::Detail, groups);
            lastRow_ = row_;
            first = false;
        }
        if (!first) {
            row_ = lastRow_;
            for (int g = groups - 1; g >= 0; --g)
                closeGroup(g);
        }
        place(layout_.reportFooter, BandKind::ReportFooter, 0);
        closePage();
        fillPageCounts();
        return std::move(document_);
    }

  private:
    void resolveFields() {
        const auto index = [this](const QString& name) {
            const db::Field* field = data_.FindField(name);
            if (!field) {
                throw RuntimeError(u"Il campo '%1' del layout non è tra quelli letti da: %2"_s.arg(
                    name, layout_.query));
            }
            for (int i = 0; i < data_.FieldCount(); ++i) {
                if (&data_.Fields(i) == field) return i;
            }
            return -1;
        };
        for (const GroupSpec& group : layout_.groups)
            groupFields_.push_back(index(group.field));
        const auto scan = [&](const BandSpec& band) {
            for (const ItemSpec& item : band.items) {
                if (!item.field.isEmpty() && !fieldIndex_.contains(item.field)) {
                    fieldIndex_.insert(item.field, index(item.field));
                }
                if (item.kind == ItemSpec::Kind::Sum)
                    summed_.insert(item.field, fieldIndex_.value(item.field));
            }
        };
        for (const BandSpec* band : {&layout_.reportHeader, &layout_.pageHeader, &layout_.detail,
                                     &layout_.pageFooter, &layout_.reportFooter}) {
            scan(*band);
        }
        for (const GroupSpec& group : layout_.groups) {
            scan(group.header);
            scan(group.footer);
        }
    }

    void readRow() {
        row_.resize(size_t(data_.FieldCount()));
        for (int i = 0; i < data_.FieldCount(); ++i)
            row_[size_t(i)] = data_.Fields(i).Value();
    }

    void accumulate() {
        for (Totals& totals : totals_) {
            ++totals.count;
            for (auto field = summed_.constBegin(); field != summed_.constEnd(); ++field) {
                const Variant& value = row_[size_t(field.value())];
                if (value.isNull()) continue;
                Variant& sum = totals.sums[field.key()];
                sum = sum.isEmpty() ? value : sum + value;
            }
        }
    }

    void openGroup(int g) {
        const GroupSpec& group = layout_.groups[size_t(g)];
        groupKeys_.resize(layout_.groups.size());
        groupKeys_[size_t(g)] = row_[size_t(groupFields_[size_t(g)])];
        totals_[size_t(g) + 1] = Totals{};
        // A group header is never the last thing on a page: it goes with the
        // headers below it and the first detail line.
        double needed = layout_.detail.heightMm;
        for (size_t inner = size_t(g); inner < layout_.groups.size(); ++inner) {
            needed += layout_.groups[inner].header.heightMm;
        }
        if (y_ + needed * PointsPerMm > footerTop_ && pageHasBody_) newPage();
        document_.outline.push_back(
            {g, groupKeys_[size_t(g)].text(), int(document_.pages.size()) - 1});
        place(group.header, BandKind::GroupHeader, g + 1);
    }

    void closeGroup(int g) {
        place(layout_.groups[size_t(g)].footer, BandKind::GroupFooter, g + 1);
    }

    // Starts a page with its page header; the first page opens with the
    // report header above it.
    void newPage(bool first = false) {
        if (!document_.pages.empty()) closePage();
        document_.pages.push_back(Page{pageSize_, {}});
        y_ = top_;
        pageHasBody_ = false;
        labelColumn_ = 0;
        if (first && !layout_.reportHeader.isEmpty()) {
            document_.pages.back().bands.push_back(
                makeBand(layout_.reportHeader, BandKind::ReportHeader, 0, left_, y_));
            y_ += layout_.reportHeader.heightMm * PointsPerMm;
        }
        if (!layout_.pageHeader.isEmpty()) {
            document_.pages.back().bands.push_back(
                makeBand(layout_.pageHeader, BandKind::PageHeader, 0, left_, y_));
            y_ += layout_.pageHeader.heightMm * PointsPerMm;
        }
    }

    void closePage() {
        if (layout_.pageFooter.isEmpty()) return;
        document_.pages.back().bands.push_back(
            makeBand(layout_.pageFooter, BandKind::PageFooter, 0, left_, footerTop_));
    }

    // Places a band at the current position, on a new page when it does not fit.
    // `level` is the scope of its running totals (0 the report, g+1 group g).
    void place(const BandSpec& band, BandKind kind, int level) {
        if (band.isEmpty()) return;
        const double height = band.heightMm * PointsPerMm;
        double x = left_;
        if (kind == BandKind::Detail && layout_.labelColumns > 1) {
            if (labelColumn_ == 0 && y_ + height > footerTop_) newPage();
            const double gap = layout_.labelGapMm * PointsPerMm;
            const double width =
                (contentWidth_ - gap * (layout_.labelColumns - 1)) / layout_.labelColumns;
            x = left_ + labelColumn_ * (width + gap);
            document_.pages.back().bands.push_back(makeBand(band, kind, level, x, y_));
            pageHasBody_ = true;
            if (++labelColumn_ == layout_.labelColumns) {
                labelColumn_ = 0;
                y_ += height;
            }
            return;
        }
        if (labelColumn_ != 0) {  // a band after a part-filled line of labels starts below it
            labelColumn_ = 0;
            y_ += layout_.detail.heightMm * PointsPerMm;
        }
        if (y_ + height > footerTop_) newPage();
        document_.pages.back().bands.push_back(makeBand(band, kind, level, x, y_));
        pageHasBody_ = true;
        y_ += height;
    }

    PlacedBand makeBand(const BandSpec& band, BandKind kind, int level, double x, double y) {
        PlacedBand placed{kind, y, band.heightMm * PointsPerMm, {}};
        placed.items.reserve(band.items.size());
        for (const ItemSpec& item : band.items) {
            const QRectF rect(x + item.rectMm.x() * PointsPerMm, y + item.rectMm.y() * PointsPerMm,
                              item.rectMm.width() * PointsPerMm,
                              item.rectMm.height() * PointsPerMm);
            placed.items.push_back(primitive(item, rect, level, placed.items.size()));
        }
        return placed;
    }

    TextItem text(const ItemSpec& item, const QRectF& rect, const Variant& value,
                  const QString& shown) const {
        TextItem text;
        text.rect = rect;
        text.text = shown;
        text.value = value;
        text.format = item.format;
        text.font = item.font;
        text.align = item.align;
        return text;
    }

    Primitive primitive(const ItemSpec& item, const QRectF& rect, int level, size_t indexInBand) {
        switch (item.kind) {
            case ItemSpec::Kind::Text:
                return text(item, rect, Variant(), item.text);
            case ItemSpec::Kind::Field: {
                const Variant& value =
                    row_.empty() ? nullValue() : row_[size_t(fieldIndex_.value(item.field))];
                return text(item, rect, value, formatValue(value, item.format));
            }
            case ItemSpec::Kind::Sum:
            case ItemSpec::Kind::Count: {
                const Totals& totals =
                    totals_[size_t(item.scope == ItemSpec::Scope::Report ? 0 : level)];
                Variant value = item.kind == ItemSpec::Kind::Count
                                    ? Variant(qint32(totals.count))
                                    : totals.sums.value(item.field, Variant(0));
                if (value.isEmpty()) value = Variant(0);
                return text(item, rect, value, formatValue(value, item.format));
            }
            case ItemSpec::Kind::Special:
                return special(item, rect, level, indexInBand);
            case ItemSpec::Kind::Line: {
                const QPointF offset = rect.topLeft() - item.rectMm.topLeft() * PointsPerMm;
                return LineItem{offset + item.rectMm.topLeft() * PointsPerMm,
                                offset + item.rectMm.bottomRight() * PointsPerMm, item.lineWidthPt};
            }
            case ItemSpec::Kind::Box:
                return BoxItem{rect, item.lineWidthPt, item.fill};
            case ItemSpec::Kind::Image:
                return ImageItem{rect, image(item.imageFile)};
            case ItemSpec::Kind::Barcode: {
                const Variant& value =
                    row_.empty() ? nullValue() : row_[size_t(fieldIndex_.value(item.field))];
                return BarcodeItem{rect, value.text(), item.showText};
            }
        }
        return TextItem{};
    }

    Primitive special(const ItemSpec& item, const QRectF& rect, int level, size_t indexInBand) {
        const int page = int(document_.pages.size());
        if (item.text == u"title"_s)
            return text(item, rect, Variant(document_.title), document_.title);
        if (item.text == u"author"_s)
            return text(item, rect, Variant(document_.author), document_.author);
        if (item.text == u"page"_s)
            return text(item, rect, Variant(qint32(page)), QString::number(page));
        if (item.text == u"printDate"_s) {
            const Variant date(db::DateTime::fromParts(printDate_));
            return text(item, rect, date,
                        formatValue(date, item.format.isEmpty() ? u"dd/MM/yyyy"_s : item.format));
        }
        if (item.text == u"groupValue"_s && level > 0 && size_t(level) <= groupKeys_.size()) {
            const Variant& key = groupKeys_[size_t(level) - 1];
            return text(item, rect, key, formatValue(key, item.format));
        }
        if (item.text == u"pages"_s || item.text == u"pageOfPages"_s) {
            // Filled in once every page is known.
            pageCounts_.push_back({page - 1, document_.pages.back().bands.size(), indexInBand,
                                   item.text == u"pageOfPages"_s});
            return text(item, rect, Variant(), QString());
        }
        throw RuntimeError(
            u"Il layout usa un valore speciale sconosciuto: \"%1\""_s.arg(item.text));
    }

    void fillPageCounts() {
        const int pages = int(document_.pages.size());
        for (const PageCount& count : pageCounts_) {
            auto& item = std::get<TextItem>(
                document_.pages[size_t(count.page)].bands[count.band].items[count.item]);
            // "Pagina 1 di 3" is text: only the bare count is a number.
            item.value = count.pageOfPages ? Variant() : Variant(qint32(pages));
            item.text = count.pageOfPages ? u"Pagina %1 di %2"_s.arg(count.page + 1).arg(pages)
                                          : QString::number(pages);
        }
    }

    const QImage& image(const QString& file) {
        auto found = images_.find(file);
        if (found == images_.end())
            found = images_.insert(file, QImage(layout_.folder + u'/' + file));
        return *found;
    }

    static const Variant& nullValue() {
        static const Variant null = Variant::null();
        return null;
    }

    struct PageCount {
        int page;
        size_t band;
        size_t item;
        bool pageOfPages;
    };

    const LayoutSpec& layout_;
    db::Recordset& data_;
    PageDocument document_;
    QDate printDate_;
    QSizeF pageSize_;
    double left_ = 0, top_ = 0, contentWidth_ = 0, footerTop_ = 0;
    double y_ = 0;
    bool pageHasBody_ = false;
    int labelColumn_ = 0;
    std::vector<int> groupFields_;
    QHash<QString, int> fieldIndex_;
    QHash<QString, int> summed_;
    std::vector<Variant> row_, lastRow_, groupKeys_;
    std::vector<Totals> totals_;
    std::vector<PageCount> pageCounts_;
    QHash<QString, QImage> images_;
};

}  // namespace

QString workFilePath(const LayoutSpec& layout) {
    return platform::toLocalPath(u"c:\\temp1\\"_s + layout.workFile);
}

PageDocument renderRows(const LayoutSpec& layout, db::Recordset& data, const RenderInfo& info) {
    return Renderer(layout, data, info).run();
}

PageDocument render(const LayoutSpec& layout, const RenderInfo& info) {
    db::Connection connection;
    connection.Open(u"Driver={Microsoft Access Driver (*.mdb)};Dbq=c:\\temp1\\"_s +
                    layout.workFile + u';');
    db::RecordsetPtr data = connection.OpenRecordset(layout.query);
    connection.Close();
    return renderRows(layout, *data, info);
}

}  // namespace lorvane::engine
