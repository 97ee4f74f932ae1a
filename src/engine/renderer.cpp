#include "engine/renderer.h"

#include <QHash>

#include "db/connection.h"
#include "engine/expression.h"
#include "engine/value_format.h"
#include "platform/clock.h"
#include "platform/runtime_error.h"
#include "platform/windows_paths.h"

namespace lorvane::engine {

using namespace Qt::StringLiterals;
using db::Variant;

namespace {

// The running sums and count of one scope: the report (level 0), a group or a page.
struct Totals {
    QHash<QString, Variant> sums;  // by field name
    // The starting values of the running sums that have one, by field name:
    // read from the scope's first row.
    QHash<QString, Variant> starts;
    int count = 0;
    std::vector<ExpressionTotals> expressions;  // by the expression's slot
};

// A computed item placed before its scope was complete: filled in when it is.
struct PendingExpression {
    size_t page, band, item;
    const ItemSpec* spec;
    std::vector<Variant> row;
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
        printDate_ = info.printDate.isValid() ? info.printDate : platform::Today();
        pageSize_ = layout.pageMm * PointsPerMm;
        left_ = layout.marginLeftMm * PointsPerMm;
        top_ = layout.marginTopMm * PointsPerMm;
        contentWidth_ = pageSize_.width() - left_ - layout.marginRightMm * PointsPerMm;
        footerTop_ = pageSize_.height() - layout.marginBottomMm * PointsPerMm -
                     layout.pageFooter.heightMm * PointsPerMm;
        totals_.resize(layout.groups.size() + 1);
        pending_.resize(layout.groups.size() + 1);
        resolveFields();
    }

    PageDocument run() {
        // Headers placed before the first line show the first row's values.
        const bool empty = data_.RecordCount() == 0;
        if (!empty) {
            data_.MoveFirst();
            readRow(row_);
        }
        newPage(true);
        const int groups = int(layout_.groups.size());
        bool first = true;
        // One row read ahead, to know which groups end after the current one.
        std::vector<Variant> next;
        bool more = !empty;
        if (more) readRow(next);
        while (more) {
            std::swap(row_, next);
            data_.MoveNext();
            more = !data_.Eof();
            if (more) readRow(next);
            footersAfter_ = 0;
            for (int g = more ? firstBreak(row_, next) : 0; g < groups; ++g)
                footersAfter_ += layout_.groups[size_t(g)].footer.heightMm * PointsPerMm;
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
            accumulateExpressions(pageTotals_);  // on the page the line landed on
            lastRow_ = row_;
            first = false;
        }
        footersAfter_ = 0;
        if (!first) {
            row_ = lastRow_;
            for (int g = groups - 1; g >= 0; --g)
                closeGroup(g);
        }
        place(layout_.reportFooter, BandKind::ReportFooter, 0);
        closePage();
        fillPending(pending_[0], totals_[0]);
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
                if (item.kind == ItemSpec::Kind::Expr) {
                    resolveExpression(item);
                    continue;
                }
                if (!item.field.isEmpty() && !fieldIndex_.contains(item.field)) {
                    fieldIndex_.insert(item.field, index(item.field));
                }
                if (item.kind == ItemSpec::Kind::Sum)
                    summed_.insert(item.field, fieldIndex_.value(item.field));
                if (!item.start.isEmpty() && !startFields_.contains(item.start))
                    startFields_.insert(item.start, index(item.start));
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

    // Gives the item's expression a slot with the columns of its fields.
    void resolveExpression(const ItemSpec& item) {
        const Expression* expression = item.expression.get();
        if (!expression || slots_.contains(expression)) return;
        std::vector<int> columns;
        for (const QString& name : expression->fields()) {
            const db::Field* field = data_.FindField(name);
            if (!field) {
                throw RuntimeError(
                    u"Il campo '%1' dell'espressione \"%2\" del layout non è tra quelli letti "
                    u"da: %3"_s.arg(name, item.text, layout_.query));
            }
            for (int i = 0; i < data_.FieldCount(); ++i) {
                if (&data_.Fields(i) == field) columns.push_back(i);
            }
        }
        slots_.insert(expression, int(expressions_.size()));
        expressions_.push_back({expression, std::move(columns)});
    }

    void readRow(std::vector<Variant>& row) {
        row.resize(size_t(data_.FieldCount()));
        for (int i = 0; i < data_.FieldCount(); ++i)
            row[size_t(i)] = data_.Fields(i).Value();
    }

    // The outermost group whose key differs between two rows; the number of
    // groups when none does.
    int firstBreak(const std::vector<Variant>& a, const std::vector<Variant>& b) const {
        for (size_t g = 0; g < groupFields_.size(); ++g) {
            const size_t column = size_t(groupFields_[g]);
            if (!sameKey(a[column], b[column])) return int(g);
        }
        return int(groupFields_.size());
    }

    void accumulateExpressions(Totals& totals) const {
        totals.expressions.resize(expressions_.size());
        for (size_t slot = 0; slot < expressions_.size(); ++slot) {
            const auto& [expression, columns] = expressions_[slot];
            if (expression->usesTotals())
                expression->accumulate(row_, columns, totals.expressions[slot]);
        }
    }

    void accumulate() {
        for (Totals& totals : totals_) {
            if (totals.count == 0) {
                for (auto field = startFields_.constBegin(); field != startFields_.constEnd();
                     ++field)
                    totals.starts.insert(field.key(), row_[size_t(field.value())]);
            }
            ++totals.count;
            for (auto field = summed_.constBegin(); field != summed_.constEnd(); ++field) {
                const Variant& value = row_[size_t(field.value())];
                if (value.isNull()) continue;
                Variant& sum = totals.sums[field.key()];
                sum = sum.isEmpty() ? value : sum + value;
            }
            accumulateExpressions(totals);
        }
    }

    // A running sum started from the value of `start` in the scope's first
    // row; before that row is summed (a group header), the current row is
    // that first row. A Null start counts as 0.
    Variant startedFrom(const QString& start, const Totals& totals, const Variant& sum) const {
        const Variant first = totals.count > 0 ? totals.starts.value(start)
                              : row_.empty()   ? Variant()
                                               : row_[size_t(startFields_.value(start))];
        return first.isNull() || first.isEmpty() ? sum : first + sum;
    }

    void openGroup(int g) {
        const GroupSpec& group = layout_.groups[size_t(g)];
        groupKeys_.resize(layout_.groups.size());
        groupKeys_[size_t(g)] = row_[size_t(groupFields_[size_t(g)])];
        totals_[size_t(g) + 1] = Totals{};
        openGroups_ = g;
        // A group header is never the last thing on a page: it goes with the
        // headers below it and the first detail line (and the footers that
        // line closes).
        double needed = layout_.detail.heightMm;
        for (size_t inner = size_t(g); inner < layout_.groups.size(); ++inner) {
            needed += layout_.groups[inner].header.heightMm;
        }
        if (y_ + needed * PointsPerMm + footersAfter_ > footerTop_ && pageHasBody_) newPage();
        document_.outline.push_back(
            {g, groupKeys_[size_t(g)].text(), int(document_.pages.size()) - 1});
        place(group.header, BandKind::GroupHeader, g + 1);
        openGroups_ = g + 1;
    }

    void closeGroup(int g) {
        place(layout_.groups[size_t(g)].footer, BandKind::GroupFooter, g + 1);
        openGroups_ = g;
        fillPending(pending_[size_t(g) + 1], totals_[size_t(g) + 1]);
    }

    // Starts a page with its page header; the first page opens with the
    // report header above it.
    void newPage(bool first = false) {
        if (!document_.pages.empty()) closePage();
        document_.pages.push_back(Page{pageSize_, {}});
        y_ = top_;
        pageHasBody_ = false;
        labelColumn_ = 0;
        sheetLabel_ = first ? layout_.sheet.startAt - 1 : 0;
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
        // A page that continues a group opens with the headers asked to repeat.
        for (int g = 0; g < openGroups_; ++g) {
            const GroupSpec& group = layout_.groups[size_t(g)];
            if (!group.repeatHeader || group.header.isEmpty()) continue;
            document_.pages.back().bands.push_back(
                makeBand(group.header, BandKind::GroupHeader, g + 1, left_, y_));
            y_ += group.header.heightMm * PointsPerMm;
        }
    }

    void closePage() {
        if (!layout_.pageFooter.isEmpty()) {
            document_.pages.back().bands.push_back(
                makeBand(layout_.pageFooter, BandKind::PageFooter, 0, left_, footerTop_));
        }
        fillPending(pendingPage_, pageTotals_);
        pageTotals_ = Totals{};
    }

    // Places a band at the current position, on a new page when it does not fit.
    // `level` is the scope of its running totals (0 the report, g+1 group g).
    void place(const BandSpec& band, BandKind kind, int level) {
        if (band.isEmpty()) return;
        const double height = band.heightMm * PointsPerMm;
        double x = left_;
        if (kind == BandKind::Detail &&
            layout_.sheet.active()) {  // each label where the sheet has it
            if (sheetLabel_ == layout_.sheet.labelsPerSheet()) newPage();
            const QPointF corner = layout_.sheet.cornerMm(sheetLabel_++) * PointsPerMm;
            document_.pages.back().bands.push_back(
                makeBand(band, kind, level, corner.x(), corner.y()));
            pageHasBody_ = true;
            return;
        }
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
        // The last line of a group keeps its footers company on the next page.
        const double keep = kind == BandKind::Detail ? footersAfter_ : 0;
        if (y_ + height > footerTop_ || (y_ + height + keep > footerTop_ && pageHasBody_)) {
            newPage();
        }
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
            placed.items.push_back(primitive(item, rect, kind, level, placed.items.size()));
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

    Primitive primitive(const ItemSpec& item, const QRectF& rect, BandKind kind, int level,
                        size_t indexInBand) {
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
                if (!item.start.isEmpty()) value = startedFrom(item.start, totals, value);
                return text(item, rect, value, formatValue(value, item.format));
            }
            case ItemSpec::Kind::Special:
                return special(item, rect, level, indexInBand);
            case ItemSpec::Kind::Expr:
                return computed(item, rect, kind, level, indexInBand);
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
                return BarcodeItem{rect, value.text(), item.showText, item.checkDigit};
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

    // A computed item: its value now when its scope's rows are all known
    // (the footer of its group, the report footer, the page footer) or when
    // it uses no Sum() nor Count(); otherwise once the scope is closed.
    Primitive computed(const ItemSpec& item, const QRectF& rect, BandKind kind, int level,
                       size_t indexInBand) {
        const auto& [expression, columns] =
            expressions_[size_t(slots_.value(item.expression.get()))];
        Totals* totals = &pageTotals_;
        std::vector<PendingExpression>* pending = &pendingPage_;
        bool complete = kind == BandKind::PageFooter;
        if (item.scope != ItemSpec::Scope::Page) {
            const int scope = item.scope == ItemSpec::Scope::Report ? 0 : level;
            totals = &totals_[size_t(scope)];
            pending = &pending_[size_t(scope)];
            complete =
                kind == BandKind::ReportFooter || (kind == BandKind::GroupFooter && scope == level);
        }
        if (complete || !expression->usesTotals()) {
            const Variant value = evaluate(item, *totals);
            return text(item, rect, value, formatValue(value, item.format));
        }
        pending->push_back({document_.pages.size() - 1, document_.pages.back().bands.size(),
                            indexInBand, &item, row_});
        return text(item, rect, Variant::null(), QString());
    }

    Variant evaluate(const ItemSpec& item, Totals& totals) {
        const int slot = slots_.value(item.expression.get());
        const auto& [expression, columns] = expressions_[size_t(slot)];
        totals.expressions.resize(expressions_.size());
        const std::optional<double> value =
            expression->evaluate(row_, columns, totals.expressions[size_t(slot)]);
        return value ? Variant(*value) : Variant::null();
    }

    void fillPending(std::vector<PendingExpression>& pending, Totals& totals) {
        for (PendingExpression& entry : pending) {
            std::swap(row_, entry.row);
            const Variant value = evaluate(*entry.spec, totals);
            std::swap(row_, entry.row);
            auto& item =
                std::get<TextItem>(document_.pages[entry.page].bands[entry.band].items[entry.item]);
            item.value = value;
            item.text = formatValue(value, entry.spec->format);
        }
        pending.clear();
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
    int sheetLabel_ = 0;  // the next label of the sheet on the page
    std::vector<int> groupFields_;
    QHash<QString, int> fieldIndex_;
    QHash<QString, int> summed_;
    QHash<QString, int> startFields_;  // the columns running sums start from
    std::vector<Variant> row_, lastRow_, groupKeys_;
    std::vector<Totals> totals_;  // the report's, then each group's
    Totals pageTotals_;
    std::vector<std::vector<PendingExpression>> pending_;  // likewise
    std::vector<PendingExpression> pendingPage_;
    struct BoundExpression {
        const Expression* expression;
        std::vector<int> columns;  // of its fields in the rows
    };
    std::vector<BoundExpression> expressions_;
    QHash<const Expression*, int> slots_;  // into expressions_
    int openGroups_ = 0;                   // groups whose header is placed and footer not yet
    double footersAfter_ = 0;              // points: the footers that follow the current line
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
