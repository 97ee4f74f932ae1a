#include "engine/value_format.h"

#include <QLocale>
#include <cmath>

#include "platform/runtime_error.h"

namespace lorvane::engine {

using namespace Qt::StringLiterals;

namespace {

bool isPatternChar(QChar c) { return c == u'#' || c == u'0' || c == u'.' || c == u','; }

// "#.##0,00" and the like, with literal text before and after.
QString formatNumber(double number, const QString& format) {
    const qsizetype first =
        std::find_if(format.begin(), format.end(), isPatternChar) - format.begin();
    qsizetype last = first;
    while (last < format.size() && isPatternChar(format[last]))
        ++last;
    const QString prefix = format.left(first);
    QString suffix = format.mid(last);
    const QString pattern = format.mid(first, last - first);

    if (suffix.contains(u'%') || prefix.contains(u'%')) number *= 100;
    const qsizetype comma = pattern.indexOf(u',');
    const QString whole = comma < 0 ? pattern : pattern.left(comma);
    const QString fraction = comma < 0 ? QString() : pattern.mid(comma + 1);
    const int decimals = int(fraction.count(u'0') + fraction.count(u'#'));
    const int optionalDecimals = int(fraction.count(u'#'));
    const int minimumDigits = int(whole.count(u'0'));
    const bool grouping = whole.contains(u'.');

    // Half away from zero, on the decimal text rather than the binary value.
    const double scale = std::pow(10.0, decimals);
    const double rounded = std::round(std::abs(number) * scale * (1 + 1e-15)) / scale;
    QString digits = QString::number(rounded, 'f', decimals);
    QString integerPart = digits.section(u'.', 0, 0);
    QString decimalPart = decimals > 0 ? digits.section(u'.', 1, 1) : QString();
    while (integerPart.size() < minimumDigits)
        integerPart.prepend(u'0');
    if (minimumDigits == 0 && integerPart == u"0"_s && (decimals > 0)) integerPart.clear();
    for (int i = 0; i < optionalDecimals && decimalPart.endsWith(u'0'); ++i)
        decimalPart.chop(1);
    if (grouping) {
        for (qsizetype at = integerPart.size() - 3; at > 0; at -= 3)
            integerPart.insert(at, u'.');
    }
    QString text = integerPart;
    if (!decimalPart.isEmpty()) text += u',' + decimalPart;
    if (text.isEmpty()) text = u"0"_s;
    const bool negative = number < 0 && rounded > 0;
    return (negative ? u"-"_s : QString()) + prefix + text + suffix;
}

bool isDateFormat(const QString& format) {
    return !isNumberFormat(format) && std::any_of(format.begin(), format.end(), [](QChar c) {
        return c == u'd' || c == u'M' || c == u'y' || c == u'H' || c == u'm' || c == u's';
    });
}

}  // namespace

bool isNumberFormat(const QString& format) {
    return format.contains(u'#') || format.contains(u'0');
}

QString formatValue(const db::Variant& value, const QString& format) {
    if (value.isNull() || value.isEmpty()) return {};
    if (format.isEmpty()) return value.text();
    try {
        if (isNumberFormat(format) && (value.isNumber() || value.isNumeric())) {
            if (value.type() == db::VarType::Date) return value.text();
            return formatNumber(value.toDouble(), format);
        }
        if (isDateFormat(format)) {
            const db::DateTime date = value.toDate();
            static const QLocale italian(QLocale::Italian, QLocale::Italy);
            return italian.toString(QDateTime(date.date(), date.time()), format);
        }
    } catch (const RuntimeError&) {
        // shown as it is, like any value that does not fit its format
    }
    return value.text();
}

}  // namespace lorvane::engine
