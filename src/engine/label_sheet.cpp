#include "engine/label_sheet.h"

namespace lorvane::engine {

using namespace Qt::StringLiterals;

namespace {

struct NamedSheet {
    const char* name;
    LabelSheet sheet;
};

// Sizes and corners as the makers of the sheets give them.
const NamedSheet namedSheets[] = {
    {"A4-3x8", {3, 8, {70, 37}, {70, 37}, {0, 0.5}, 1}},
    {"A4-2x7", {2, 7, {99.1, 38.1}, {101.6, 38.1}, {4.65, 15.15}, 1}},
    {"A4-3x7", {3, 7, {63.5, 38.1}, {66, 38.1}, {7.25, 15.15}, 1}},
};

// Tolerance of the checks against the page's edges, in mm.
constexpr double Slack = 0.01;

}  // namespace

QPointF LabelSheet::cornerMm(int index) const {
    return {firstMm.x() + (index % columns) * pitchMm.width(),
            firstMm.y() + (index / columns) * pitchMm.height()};
}

LabelSheet namedLabelSheet(const QString& name) {
    for (const NamedSheet& named : namedSheets)
        if (name.compare(QLatin1String(named.name), Qt::CaseInsensitive) == 0) return named.sheet;
    return {};
}

LabelSheet readLabelSheet(const QJsonObject& labels, const QSizeF& pageMm,
                          const std::function<void(const QString&)>& fail) {
    LabelSheet sheet;
    const auto number = [&](const char* key, double fallback) {
        return labels.value(QLatin1String(key)).toDouble(fallback);
    };
    if (labels.contains(u"sheet"_s)) {
        const QString name = labels.value(u"sheet"_s).toString();
        sheet = namedLabelSheet(name);
        if (!sheet.active()) fail(u"foglio di etichette sconosciuto: \"%1\""_s.arg(name));
    } else if (labels.contains(u"rows"_s)) {
        sheet.columns = int(number("columns", 1));
        sheet.rows = int(number("rows", 0));
        sheet.labelMm = QSizeF(number("width", 0), number("height", 0));
        sheet.pitchMm =
            QSizeF(number("across", sheet.labelMm.width()), number("down", sheet.labelMm.height()));
        sheet.firstMm = QPointF(number("left", 0), number("top", 0));
        if (sheet.columns < 1 || sheet.rows < 1 || sheet.labelMm.isEmpty())
            fail(u"un foglio di etichette vuole righe, colonne, larghezza e altezza positive"_s);
        if (sheet.pitchMm.width() < sheet.labelMm.width() ||
            sheet.pitchMm.height() < sheet.labelMm.height())
            fail(u"\"across\" e \"down\" non possono essere minori dell'etichetta"_s);
    } else {
        return {};
    }
    const QPointF last = sheet.cornerMm(sheet.labelsPerSheet() - 1);
    if (sheet.firstMm.x() < 0 || sheet.firstMm.y() < 0 ||
        last.x() + sheet.labelMm.width() > pageMm.width() + Slack ||
        last.y() + sheet.labelMm.height() > pageMm.height() + Slack)
        fail(u"le etichette del foglio escono dalla pagina"_s);
    sheet.startAt = int(number("startAt", 1));
    if (sheet.startAt < 1 || sheet.startAt > sheet.labelsPerSheet())
        fail(u"\"startAt\" deve stare tra 1 e %1, le etichette del foglio"_s.arg(
            sheet.labelsPerSheet()));
    return sheet;
}

}  // namespace lorvane::engine
