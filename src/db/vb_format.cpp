// Format$ with Italian regional settings: named formats, date/time patterns and
// the sectioned number patterns, with "," as decimal and "." as thousands mark.
#include "db/vb_format.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lorvane::db {
namespace {

__extension__ typedef unsigned __int128 UInt128;

const std::array<QString, 12> MonthNames = {
    QStringLiteral("gennaio"), QStringLiteral("febbraio"), QStringLiteral("marzo"),
    QStringLiteral("aprile"),  QStringLiteral("maggio"),   QStringLiteral("giugno"),
    QStringLiteral("luglio"),  QStringLiteral("agosto"),   QStringLiteral("settembre"),
    QStringLiteral("ottobre"), QStringLiteral("novembre"), QStringLiteral("dicembre"),
};

// Indexed by QDate::dayOfWeek() - 1, Monday first.
const std::array<QString, 7> DayNames = {
    QStringLiteral("lunedì"),   QStringLiteral("martedì"), QStringLiteral("mercoledì"),
    QStringLiteral("giovedì"),  QStringLiteral("venerdì"), QStringLiteral("sabato"),
    QStringLiteral("domenica"),
};

// The absolute value of a number as decimal digits, integer part without
// leading zeros (empty for zero).
struct Digits {
    std::string integer;
    std::string fraction;

    bool isZero() const {
        return integer.find_first_not_of('0') == std::string::npos &&
               fraction.find_first_not_of('0') == std::string::npos;
    }

    // Multiplies by 10^places (divides for negative places), exactly.
    void shift(int places) {
        if (places > 0) {
            if (fraction.size() < size_t(places)) {
                fraction.append(size_t(places) - fraction.size(), '0');
            }
            integer += fraction.substr(0, size_t(places));
            fraction.erase(0, size_t(places));
        } else if (places < 0) {
            const size_t count = size_t(-places);
            if (integer.size() < count) {
                integer.insert(0, count - integer.size(), '0');
            }
            fraction.insert(0, integer.substr(integer.size() - count));
            integer.erase(integer.size() - count);
        }
        trimInteger();
    }

    // Rounds half away from zero to exactly `decimals` fraction digits.
    void roundTo(int decimals) {
        const size_t keep = size_t(decimals);
        if (fraction.size() <= keep) {
            fraction.append(keep - fraction.size(), '0');
            return;
        }
        const bool up = fraction[keep] >= '5';
        fraction.resize(keep);
        if (up) {
            std::string all = integer + fraction;
            if (!incremented(all)) {
                all.insert(all.begin(), '1');
            }
            integer = all.substr(0, all.size() - keep);
            fraction = all.substr(all.size() - keep);
        }
        trimInteger();
    }

    // Adds one to the last digit; false when it carried out of the first.
    static bool incremented(std::string& digits) {
        for (auto it = digits.rbegin(); it != digits.rend(); ++it) {
            if (*it != '9') {
                ++*it;
                return true;
            }
            *it = '0';
        }
        return false;
    }

    void trimInteger() { integer.erase(0, integer.find_first_not_of('0')); }
};

std::string decimalDigits(UInt128 value) {
    std::string digits;
    while (value != 0) {
        digits.push_back(char('0' + int(value % 10)));
        value /= 10;
    }
    std::reverse(digits.begin(), digits.end());
    return digits;
}

Digits splitAt(std::string digits, int scale) {
    Digits result;
    if (int(digits.size()) < scale) {
        digits.insert(0, size_t(scale) - digits.size(), '0');
    }
    result.integer = digits.substr(0, digits.size() - size_t(scale));
    result.fraction = digits.substr(digits.size() - size_t(scale));
    result.trimInteger();
    return result;
}

// A Double keeps the 15 significant digits the runtime shows, so that 2.675
// rounds as the decimal it was written as.
Digits doubleDigits(double value) {
    if (value == 0 || !std::isfinite(value)) {
        return {};
    }
    char buffer[48];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, std::abs(value),
                                      std::chars_format::scientific, 14);
    const std::string_view text(buffer, size_t(result.ptr - buffer));
    const size_t e = text.find('e');
    std::string digits(1, text[0]);
    digits.append(text.substr(2, e - 2));
    int exponent = 0;
    std::from_chars(text.data() + e + 2, text.data() + text.size(), exponent);
    if (text[e + 1] == '-') {
        exponent = -exponent;
    }
    const int scale = 14 - exponent;
    if (scale < 0) {
        digits.append(size_t(-scale), '0');
        return splitAt(digits, 0);
    }
    return splitAt(digits, scale);
}

UInt128 magnitudeOf(Int128 value) {
    return value < 0 ? UInt128(0) - UInt128(value) : UInt128(value);
}

// The digits of a value that is a number, Boolean, Empty or Date (as its serial).
Digits digitsOf(const Variant& value) {
    switch (value.type()) {
        case VarType::Currency:
            return splitAt(decimalDigits(magnitudeOf(value.get<Currency>()->scaled)), 4);
        case VarType::Decimal: {
            const Decimal& d = *value.get<Decimal>();
            return splitAt(decimalDigits(magnitudeOf(d.mantissa())), d.scale());
        }
        case VarType::Double:
        case VarType::Date:
            return doubleDigits(value.toDouble());
        default:
            return splitAt(decimalDigits(magnitudeOf(value.toLong())), 0);
    }
}

bool isNegative(const Variant& value) {
    switch (value.type()) {
        case VarType::Currency:
            return value.get<Currency>()->scaled < 0;
        case VarType::Decimal:
            return value.get<Decimal>()->mantissa() < 0;
        default:
            return value.toDouble() < 0;
    }
}

// Splits on ";" outside quotes and escapes.
std::vector<QStringView> sections(QStringView format) {
    std::vector<QStringView> result;
    qsizetype start = 0;
    bool quoted = false;
    for (qsizetype i = 0; i < format.size(); ++i) {
        const QChar c = format[i];
        if (c == u'"') {
            quoted = !quoted;
        } else if (c == u'\\' && !quoted) {
            ++i;
        } else if (c == u';' && !quoted) {
            result.push_back(format.mid(start, i - start));
            start = i + 1;
        }
    }
    result.push_back(format.mid(start));
    return result;
}

// The text of a format section with quotes and escapes resolved.
QString literalText(QStringView section) {
    QString text;
    for (qsizetype i = 0; i < section.size(); ++i) {
        if (section[i] == u'"') {
            continue;
        }
        if (section[i] == u'\\' && i + 1 < section.size()) {
            ++i;
        }
        text += section[i];
    }
    return text;
}

enum class TokenKind { Zero, Hash, Comma, Literal };

struct Token {
    TokenKind kind;
    QString text;

    bool isDigit() const { return kind == TokenKind::Zero || kind == TokenKind::Hash; }
};

// One section of a number format, split at the decimal point and the exponent.
struct NumberPattern {
    std::vector<Token> integer;
    std::vector<Token> fraction;
    std::vector<Token> exponent;
    bool point = false;
    bool grouping = false;
    int thousandsScale = 0;
    int percent = 0;
    bool scientific = false;
    QChar exponentLetter;
    bool exponentPlus = false;
};

NumberPattern parseNumberPattern(QStringView section) {
    NumberPattern pattern;
    std::vector<Token>* part = &pattern.integer;
    for (qsizetype i = 0; i < section.size(); ++i) {
        const QChar c = section[i];
        if (c == u'"') {
            const qsizetype end = section.indexOf(u'"', i + 1);
            const qsizetype stop = end < 0 ? section.size() : end;
            part->push_back({TokenKind::Literal, section.mid(i + 1, stop - i - 1).toString()});
            i = stop;
        } else if (c == u'\\') {
            if (i + 1 < section.size()) {
                part->push_back({TokenKind::Literal, QString(section[++i])});
            }
        } else if (c == u'0') {
            part->push_back({TokenKind::Zero, {}});
        } else if (c == u'#') {
            part->push_back({TokenKind::Hash, {}});
        } else if (c == u'.' && part == &pattern.integer) {
            pattern.point = true;
            part = &pattern.fraction;
        } else if (c == u',') {
            if (part == &pattern.integer) {
                part->push_back({TokenKind::Comma, {}});
            }
        } else if ((c == u'E' || c == u'e') && !pattern.scientific && i + 1 < section.size() &&
                   (section[i + 1] == u'+' || section[i + 1] == u'-')) {
            pattern.scientific = true;
            pattern.exponentLetter = c;
            pattern.exponentPlus = section[++i] == u'+';
            part = &pattern.exponent;
        } else {
            if (c == u'%') {
                ++pattern.percent;
            }
            part->push_back({TokenKind::Literal, QString(c)});
        }
    }
    // A comma between digit placeholders asks for grouping; one with no digit
    // placeholder after it divides by a thousand.
    std::vector<Token>& integer = pattern.integer;
    for (size_t k = 0; k < integer.size(); ++k) {
        if (integer[k].kind != TokenKind::Comma) {
            continue;
        }
        const auto isDigit = [](const Token& t) { return t.isDigit(); };
        const bool before = std::any_of(integer.begin(), integer.begin() + qsizetype(k), isDigit);
        const bool after = std::any_of(integer.begin() + qsizetype(k) + 1, integer.end(), isDigit);
        if (before && after) {
            pattern.grouping = true;
        } else if (before) {
            ++pattern.thousandsScale;
        }
    }
    std::erase_if(integer, [](const Token& t) { return t.kind == TokenKind::Comma; });
    return pattern;
}

int digitCount(const std::vector<Token>& tokens) {
    return int(
        std::count_if(tokens.begin(), tokens.end(), [](const Token& t) { return t.isDigit(); }));
}

// Places digits right to left on the placeholders; the leftmost placeholder
// takes whatever digits remain. "0" placeholders pad with zeros from the first
// of them to the point.
QString renderInteger(const std::vector<Token>& tokens, std::string digits, bool grouping) {
    int placeholders = digitCount(tokens);
    const auto firstZero = std::find_if(tokens.begin(), tokens.end(),
                                        [](const Token& t) { return t.kind == TokenKind::Zero; });
    const int minimum =
        int(std::count_if(firstZero, tokens.end(), [](const Token& t) { return t.isDigit(); }));
    if (int(digits.size()) < minimum) {
        digits.insert(0, size_t(minimum) - digits.size(), '0');
    }
    std::vector<QString> pieces;
    size_t next = digits.size();
    int emitted = 0;
    auto place = [&] {
        if (grouping && emitted > 0 && emitted % 3 == 0) {
            pieces.push_back(QStringLiteral("."));
        }
        pieces.push_back(QString(QLatin1Char(digits[--next])));
        ++emitted;
    };
    if (placeholders == 0) {
        while (next > 0) {
            place();
        }
    }
    for (auto it = tokens.rbegin(); it != tokens.rend(); ++it) {
        if (!it->isDigit()) {
            pieces.push_back(it->text);
        } else if (--placeholders == 0) {
            while (next > 0) {
                place();
            }
        } else if (next > 0) {
            place();
        }
    }
    QString text;
    for (auto it = pieces.rbegin(); it != pieces.rend(); ++it) {
        text += *it;
    }
    return text;
}

// `digits` has one digit per placeholder; trailing zeros on "#" are left out.
QString renderFraction(const std::vector<Token>& tokens, const std::string& digits) {
    std::vector<TokenKind> kinds;
    for (const Token& t : tokens) {
        if (t.isDigit()) {
            kinds.push_back(t.kind);
        }
    }
    size_t shown = kinds.size();
    while (shown > 0 && kinds[shown - 1] == TokenKind::Hash && digits[shown - 1] == '0') {
        --shown;
    }
    QString text;
    size_t index = 0;
    for (const Token& t : tokens) {
        if (!t.isDigit()) {
            text += t.text;
            continue;
        }
        if (index < shown) {
            text += QLatin1Char(digits[index]);
        }
        ++index;
    }
    return text;
}

QString renderScientific(const NumberPattern& pattern, const Digits& value) {
    const int integerPlaces = digitCount(pattern.integer);
    const int fractionPlaces = digitCount(pattern.fraction);
    const int places = integerPlaces + fractionPlaces;
    std::string significant = value.integer + value.fraction;
    const size_t first = significant.find_first_not_of('0');
    int exponent = 0;
    std::string mantissa(size_t(places), '0');
    if (first != std::string::npos) {
        // The power of ten of the first significant digit.
        const int leading = int(value.integer.size()) - 1 - int(first);
        significant.erase(0, first);
        exponent = leading - (integerPlaces - 1);
        if (significant.size() > size_t(places)) {
            const bool up = significant[size_t(places)] >= '5';
            significant.resize(size_t(places));
            if (up && !Digits::incremented(significant) && places > 0) {
                significant = "1" + std::string(size_t(places - 1), '0');
                ++exponent;
            }
        }
        significant.append(size_t(places) - significant.size(), '0');
        mantissa = significant;
    }
    QString text =
        renderInteger(pattern.integer, mantissa.substr(0, size_t(integerPlaces)), pattern.grouping);
    if (pattern.point) {
        text += u',';
    }
    text += renderFraction(pattern.fraction, mantissa.substr(size_t(integerPlaces)));
    text += pattern.exponentLetter;
    if (exponent < 0) {
        text += u'-';
    } else if (pattern.exponentPlus) {
        text += u'+';
    }
    return text + renderInteger(pattern.exponent, std::to_string(std::abs(exponent)), false);
}

QString renderNumber(QStringView section, Digits value) {
    const NumberPattern pattern = parseNumberPattern(section);
    value.shift(2 * pattern.percent - 3 * pattern.thousandsScale);
    if (pattern.scientific) {
        return renderScientific(pattern, value);
    }
    value.roundTo(digitCount(pattern.fraction));
    QString text = renderInteger(pattern.integer, value.integer, pattern.grouping);
    if (pattern.point) {
        text += u',';
    }
    return text + renderFraction(pattern.fraction, value.fraction);
}

// Sections: positive (and all values when alone); negative, shown without a
// sign; zero; Null. An empty section falls back to the first.
QString formatNumber(const Variant& value, QStringView format) {
    const std::vector<QStringView> parts = sections(format);
    const Digits digits = digitsOf(value);
    const bool negative = isNegative(value);
    if (digits.isZero() && parts.size() >= 3 && !parts[2].isEmpty()) {
        return renderNumber(parts[2], digits);
    }
    if (negative && parts.size() >= 2 && !parts[1].isEmpty()) {
        return renderNumber(parts[1], digits);
    }
    const QString text = renderNumber(parts[0], digits);
    return negative ? u'-' + text : text;
}

enum class DatePart {
    Literal,
    Day,
    Day2,
    DayAbbrev,
    DayName,
    ShortDate,
    LongDate,
    Month,
    Month2,
    MonthAbbrev,
    MonthName,
    Minute,
    Minute2,
    DayOfYear,
    Year2,
    Year4,
    Hour,
    Hour2,
    Second,
    Second2,
    Weekday,
    Week,
    Quarter,
    LongTime,
    GeneralDate,
    AmPm,
};

struct DateToken {
    DatePart part;
    QString text;  // the literal, or the AM/PM designators as written
};

int runLength(QStringView format, qsizetype from) {
    const QChar letter = format[from].toLower();
    qsizetype end = from;
    while (end < format.size() && format[end].toLower() == letter) {
        ++end;
    }
    return int(end - from);
}

// Tokens are case-insensitive. "m" and "mm" right after an hour (literals aside)
// are minutes, as in "hh:mm".
std::vector<DateToken> parseDatePattern(QStringView format) {
    std::vector<DateToken> tokens;
    auto literal = [&](QString text) { tokens.push_back({DatePart::Literal, std::move(text)}); };
    for (qsizetype i = 0; i < format.size();) {
        const QChar c = format[i];
        const QChar lower = c.toLower();
        const int run = runLength(format, i);
        auto take = [&](int count, DatePart part) {
            tokens.push_back({part, {}});
            i += count;
        };
        if (c == u'"') {
            const qsizetype end = format.indexOf(u'"', i + 1);
            const qsizetype stop = end < 0 ? format.size() : end;
            literal(format.mid(i + 1, stop - i - 1).toString());
            i = stop + 1;
        } else if (c == u'\\') {
            if (i + 1 < format.size()) {
                literal(QString(format[i + 1]));
            }
            i += 2;
        } else if (lower == u'd') {
            static constexpr DatePart Parts[] = {DatePart::Day,       DatePart::Day2,
                                                 DatePart::DayAbbrev, DatePart::DayName,
                                                 DatePart::ShortDate, DatePart::LongDate};
            const int count = std::min(run, 6);
            take(count, Parts[count - 1]);
        } else if (lower == u'm') {
            static constexpr DatePart Parts[] = {DatePart::Month, DatePart::Month2,
                                                 DatePart::MonthAbbrev, DatePart::MonthName};
            const int count = std::min(run, 4);
            take(count, Parts[count - 1]);
        } else if (lower == u'y') {
            const int count = run >= 4 ? 4 : run >= 2 ? 2 : 1;
            take(count, count == 4   ? DatePart::Year4
                        : count == 2 ? DatePart::Year2
                                     : DatePart::DayOfYear);
        } else if (lower == u'h') {
            take(std::min(run, 2), run >= 2 ? DatePart::Hour2 : DatePart::Hour);
        } else if (lower == u'n') {
            take(std::min(run, 2), run >= 2 ? DatePart::Minute2 : DatePart::Minute);
        } else if (lower == u's') {
            take(std::min(run, 2), run >= 2 ? DatePart::Second2 : DatePart::Second);
        } else if (lower == u'w') {
            take(std::min(run, 2), run >= 2 ? DatePart::Week : DatePart::Weekday);
        } else if (lower == u'q') {
            take(1, DatePart::Quarter);
        } else if (lower == u'c') {
            take(1, DatePart::GeneralDate);
        } else if (lower == u't' && run >= 5) {
            take(5, DatePart::LongTime);
        } else if (lower == u'a' && format.mid(i, 5).compare(u"am/pm", Qt::CaseInsensitive) == 0) {
            tokens.push_back({DatePart::AmPm, format.mid(i, 5).toString()});
            i += 5;
        } else if (lower == u'a' && format.mid(i, 3).compare(u"a/p", Qt::CaseInsensitive) == 0) {
            tokens.push_back({DatePart::AmPm, format.mid(i, 3).toString()});
            i += 3;
        } else if (lower == u'a' && format.mid(i, 4).compare(u"ampm", Qt::CaseInsensitive) == 0) {
            tokens.push_back({DatePart::AmPm, QStringLiteral("AM/PM")});
            i += 4;
        } else {
            literal(QString(c));
            ++i;
        }
    }
    bool afterHour = false;
    for (DateToken& token : tokens) {
        if (token.part == DatePart::Literal) {
            continue;
        }
        if (afterHour && token.part == DatePart::Month) {
            token.part = DatePart::Minute;
        } else if (afterHour && token.part == DatePart::Month2) {
            token.part = DatePart::Minute2;
        }
        afterHour = token.part == DatePart::Hour || token.part == DatePart::Hour2;
    }
    return tokens;
}

bool isDatePattern(QStringView format) {
    const std::vector<DateToken> tokens = parseDatePattern(format);
    return std::any_of(tokens.begin(), tokens.end(),
                       [](const DateToken& t) { return t.part != DatePart::Literal; });
}

QString pad2(int value) { return QString::number(value).rightJustified(2, u'0'); }

QString formatDate(const DateTime& value, QStringView format) {
    const std::vector<DateToken> tokens = parseDatePattern(format);
    const bool twelveHour = std::any_of(
        tokens.begin(), tokens.end(), [](const DateToken& t) { return t.part == DatePart::AmPm; });
    const QDate date = value.date();
    const QTime time = value.time();
    int hour = time.hour();
    if (twelveHour) {
        hour = hour % 12 == 0 ? 12 : hour % 12;
    }
    QString text;
    for (const DateToken& token : tokens) {
        switch (token.part) {
            case DatePart::Literal:
                text += token.text;
                break;
            case DatePart::Day:
                text += QString::number(date.day());
                break;
            case DatePart::Day2:
                text += pad2(date.day());
                break;
            case DatePart::DayAbbrev:
                text += DayNames[size_t(date.dayOfWeek() - 1)].left(3);
                break;
            case DatePart::DayName:
                text += DayNames[size_t(date.dayOfWeek() - 1)];
                break;
            case DatePart::ShortDate:
                text += formatDate(value, u"dd/mm/yyyy");
                break;
            case DatePart::LongDate:
                text += formatDate(value, u"dddd d mmmm yyyy");
                break;
            case DatePart::Month:
                text += QString::number(date.month());
                break;
            case DatePart::Month2:
                text += pad2(date.month());
                break;
            case DatePart::MonthAbbrev:
                text += MonthNames[size_t(date.month() - 1)].left(3);
                break;
            case DatePart::MonthName:
                text += MonthNames[size_t(date.month() - 1)];
                break;
            case DatePart::Minute:
                text += QString::number(time.minute());
                break;
            case DatePart::Minute2:
                text += pad2(time.minute());
                break;
            case DatePart::DayOfYear:
                text += QString::number(date.dayOfYear());
                break;
            case DatePart::Year2:
                text += pad2(date.year() % 100);
                break;
            case DatePart::Year4:
                text += QString::number(date.year());
                break;
            case DatePart::Hour:
                text += QString::number(hour);
                break;
            case DatePart::Hour2:
                text += pad2(hour);
                break;
            case DatePart::Second:
                text += QString::number(time.second());
                break;
            case DatePart::Second2:
                text += pad2(time.second());
                break;
            case DatePart::Weekday:
                text += QString::number(date.dayOfWeek() % 7 + 1);
                break;
            case DatePart::Week: {
                // Weeks start on Sunday and week 1 holds 1 January.
                const int offset = QDate(date.year(), 1, 1).dayOfWeek() % 7;
                text += QString::number((date.dayOfYear() - 1 + offset) / 7 + 1);
                break;
            }
            case DatePart::Quarter:
                text += QString::number((date.month() - 1) / 3 + 1);
                break;
            case DatePart::LongTime:
                text += formatDate(value, u"hh:nn:ss");
                break;
            case DatePart::GeneralDate:
                text += value.toText();
                break;
            case DatePart::AmPm: {
                const bool pm = time.hour() >= 12;
                const QString& model = token.text;
                text += model.size() == 3 ? QString(model[pm ? 2 : 0]) : model.mid(pm ? 3 : 0, 2);
                break;
            }
        }
    }
    return text;
}

struct NamedFormat {
    const char16_t* name;
    enum { Date, Number, GeneralNumber, GeneralDate, Boolean } kind;
    const char16_t* pattern;  // for Boolean: "true text;false text"
};

constexpr NamedFormat NamedFormats[] = {
    {u"General Date", NamedFormat::GeneralDate, u""},
    {u"Long Date", NamedFormat::Date, u"dddd d mmmm yyyy"},
    {u"Medium Date", NamedFormat::Date, u"dd-mmm-yy"},
    {u"Short Date", NamedFormat::Date, u"dd/mm/yyyy"},
    {u"Long Time", NamedFormat::Date, u"hh:nn:ss"},
    {u"Medium Time", NamedFormat::Date, u"hh:nn AM/PM"},
    {u"Short Time", NamedFormat::Date, u"hh:nn"},
    {u"General Number", NamedFormat::GeneralNumber, u""},
    {u"Fixed", NamedFormat::Number, u"0.00"},
    {u"Standard", NamedFormat::Number, u"#,##0.00"},
    {u"Percent", NamedFormat::Number, u"0.00%"},
    {u"Scientific", NamedFormat::Number, u"0.00E+00"},
    {u"Currency", NamedFormat::Number, u"€ #,##0.00"},
    {u"Yes/No", NamedFormat::Boolean, u"Sì;No"},
    {u"True/False", NamedFormat::Boolean, u"Vero;Falso"},
    {u"On/Off", NamedFormat::Boolean, u"Attivo;Disattivo"},
};

const NamedFormat* namedFormat(QStringView format) {
    for (const NamedFormat& named : NamedFormats) {
        if (format.compare(QStringView(named.name), Qt::CaseInsensitive) == 0) {
            return &named;
        }
    }
    return nullptr;
}

QString formatNamed(const Variant& value, const NamedFormat& named) {
    switch (named.kind) {
        case NamedFormat::GeneralDate:
            return value.toDate().toText();
        case NamedFormat::Date:
            return formatDate(value.toDate(), named.pattern);
        case NamedFormat::GeneralNumber:
            if (value.isNumber()) {
                return value.toString();
            }
            return Variant(value.toDouble()).toString();
        case NamedFormat::Boolean: {
            const QStringView texts(named.pattern);
            const qsizetype split = texts.indexOf(u';');
            return (value.toBool() ? texts.left(split) : texts.mid(split + 1)).toString();
        }
        case NamedFormat::Number:
            break;
    }
    return formatNumber(value, named.pattern);
}

// "@", "&", "<", ">" and "!" alone make a text format: the value's text, in
// lower or upper case, padded with blanks to the number of "@" (on the right
// with "!").
std::optional<QString> formatText(const QString& text, QStringView format) {
    int width = 0;
    bool padRight = false;
    QString result = text;
    for (const QChar c : format) {
        if (c == u'@') {
            ++width;
        } else if (c == u'!') {
            padRight = true;
        } else if (c == u'<') {
            result = result.toLower();
        } else if (c == u'>') {
            result = result.toUpper();
        } else if (c != u'&') {
            return std::nullopt;
        }
    }
    return padRight ? result.leftJustified(width) : result.rightJustified(width);
}

}  // namespace

QString FormatVariant(const Variant& value, QStringView format) {
    if (format.isEmpty()) {
        return value.text();
    }
    const NamedFormat* named = namedFormat(format);
    if (value.isNull()) {
        const std::vector<QStringView> parts = sections(format);
        return named == nullptr && parts.size() >= 4 ? literalText(parts[3]) : QString();
    }
    if (const auto text = formatText(value.text(), format)) {
        return *text;
    }
    Variant subject = value;
    if (const QString* text = value.get<QString>()) {
        // The databases keep dates as ISO text: such text formats as a date.
        if (const auto number = parseItalianNumber(*text)) {
            subject = Variant(*number);
        } else if (const auto date = parseItalianDate(*text)) {
            subject = Variant(*date);
        } else {
            return *text;
        }
    }
    if (named != nullptr) {
        return formatNamed(subject, *named);
    }
    if (isDatePattern(format)) {
        return formatDate(subject.toDate(), format);
    }
    return formatNumber(subject, format);
}

}  // namespace lorvane::db
