// The Variant of the Italian-locale Basic runtime: conversions, arithmetic and
// comparison with the runtime's rounding rules and error texts.
#include "db/variant.h"

#include <algorithm>
#include <array>
#include <cfloat>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <string_view>
#include <type_traits>

#include "platform/runtime_error.h"

namespace lorvane::db {
namespace {

__extension__ typedef unsigned __int128 UInt128;

constexpr qint64 SecondsPerDay = 86400;
// The runtime's Date range: 01/01/0100 to 31/12/9999 23:59:59.
constexpr double MinSerial = -657434.0;
constexpr double MaxSerialExclusive = 2958466.0;

[[noreturn]] void fail(const char* text) { throw RuntimeError(QString::fromUtf8(text)); }
[[noreturn]] void throwNull() { fail("Utilizzo non valido di Null"); }
[[noreturn]] void throwMismatch() { fail("Tipo non corrispondente"); }
[[noreturn]] void throwOverflow() { fail("Overflow"); }
[[noreturn]] void throwDivisionByZero() { fail("Divisione per zero"); }

UInt128 magnitude(Int128 value) { return value < 0 ? UInt128(0) - UInt128(value) : UInt128(value); }

UInt128 pow10(int exponent) {
    UInt128 result = 1;
    for (int i = 0; i < exponent; ++i) {
        result *= 10;
    }
    return result;
}

qint64 floorDiv(qint64 a, qint64 b) {
    qint64 quotient = a / b;
    if (a % b != 0 && (a < 0) != (b < 0)) {
        --quotient;
    }
    return quotient;
}

const QDate& dayZero() {
    static const QDate date(1899, 12, 30);
    return date;
}

// An unsigned 256-bit integer: room for a 96-bit mantissa times 10^56, the
// widest intermediate of Decimal arithmetic.
struct Wide {
    std::array<quint64, 4> limb{};

    explicit Wide(UInt128 value = 0) : limb{quint64(value), quint64(value >> 64), 0, 0} {}

    bool isZero() const { return (limb[0] | limb[1] | limb[2] | limb[3]) == 0; }
    bool isOdd() const { return (limb[0] & 1) != 0; }
    bool fitsDecimal() const { return limb[3] == 0 && limb[2] == 0 && (limb[1] >> 32) == 0; }
    UInt128 low() const { return (UInt128(limb[1]) << 64) | limb[0]; }

    // False when the product does not fit in 256 bits.
    bool multiply(quint64 factor) {
        UInt128 carry = 0;
        for (quint64& part : limb) {
            const UInt128 t = UInt128(part) * factor + carry;
            part = quint64(t);
            carry = t >> 64;
        }
        return carry == 0;
    }

    // Divides in place and returns the remainder.
    quint32 divide(quint32 divisor) {
        UInt128 remainder = 0;
        for (int i = 3; i >= 0; --i) {
            const UInt128 current = (remainder << 64) | limb[i];
            limb[i] = quint64(current / divisor);
            remainder = current % divisor;
        }
        return quint32(remainder);
    }

    void increment() {
        for (quint64& part : limb) {
            if (++part != 0) {
                break;
            }
        }
    }

    friend std::strong_ordering operator<=>(const Wide& a, const Wide& b) {
        for (int i = 3; i >= 0; --i) {
            if (a.limb[i] != b.limb[i]) {
                return a.limb[i] <=> b.limb[i];
            }
        }
        return std::strong_ordering::equal;
    }

    friend Wide operator+(Wide a, const Wide& b) {
        quint64 carry = 0;
        for (int i = 0; i < 4; ++i) {
            const UInt128 t = UInt128(a.limb[i]) + b.limb[i] + carry;
            a.limb[i] = quint64(t);
            carry = quint64(t >> 64);
        }
        return a;
    }

    // a must not be less than b.
    friend Wide operator-(Wide a, const Wide& b) {
        quint64 borrow = 0;
        for (int i = 0; i < 4; ++i) {
            const UInt128 subtrahend = UInt128(b.limb[i]) + borrow;
            borrow = UInt128(a.limb[i]) < subtrahend ? 1 : 0;
            a.limb[i] = quint64((UInt128(a.limb[i]) + (UInt128(borrow) << 64)) - subtrahend);
        }
        return a;
    }
};

Wide product(UInt128 a, UInt128 b) {
    const quint64 x[2] = {quint64(a), quint64(a >> 64)};
    const quint64 y[2] = {quint64(b), quint64(b >> 64)};
    Wide result;
    for (int i = 0; i < 2; ++i) {
        UInt128 carry = 0;
        for (int j = 0; j < 2; ++j) {
            const UInt128 t = UInt128(x[i]) * y[j] + result.limb[i + j] + carry;
            result.limb[i + j] = quint64(t);
            carry = t >> 64;
        }
        result.limb[i + 2] = quint64(carry);
    }
    return result;
}

bool multiplyPow10(Wide& value, int exponent) {
    for (int i = 0; i < exponent; ++i) {
        if (!value.multiply(10)) {
            return false;
        }
    }
    return true;
}

// Divides by 10^count, rounding half to even on everything dropped at once, so
// that no digit is rounded twice.
void dropDigits(Wide& value, int count) {
    quint32 last = 0;
    bool sticky = false;
    for (int i = 0; i < count; ++i) {
        sticky = sticky || last != 0;
        last = value.divide(10);
    }
    if (last > 5 || (last == 5 && (sticky || value.isOdd()))) {
        value.increment();
    }
}

// The Decimal nearest to ±value × 10^-scale: the scale is reduced (half to
// even) until it is at most 28 and the magnitude fits 96 bits; "Overflow" when
// the integer part itself does not fit.
Decimal makeDecimal(bool negative, Wide value, int scale) {
    if (scale < 0) {
        if (!value.isZero() && (scale < -Decimal::MaxScale - 1 || !multiplyPow10(value, -scale))) {
            throwOverflow();
        }
        scale = 0;
    }
    int drop = std::max(0, scale - Decimal::MaxScale);
    Wide probe = value;
    for (int i = 0; i < drop; ++i) {
        probe.divide(10);
    }
    while (!probe.fitsDecimal() && drop < scale) {
        probe.divide(10);
        ++drop;
    }
    dropDigits(value, drop);
    scale -= drop;
    if (!value.fitsDecimal() && scale > 0) {
        // Rounding up carried into a 97th bit.
        dropDigits(value, 1);
        --scale;
    }
    if (!value.fitsDecimal()) {
        throwOverflow();
    }
    const Int128 mantissa = Int128(value.low());
    return Decimal(negative ? -mantissa : mantissa, scale);
}

// ±digits × 10^-scale for any number of ASCII digits and any scale.
Decimal decimalFromDigits(bool negative, std::string_view digits, int scale) {
    const size_t first = digits.find_first_not_of('0');
    if (first == std::string_view::npos) {
        return Decimal();
    }
    digits.remove_prefix(first);
    const int count = int(digits.size());
    // More than 29 integer digits can never fit 96 bits.
    if (count - scale > 29) {
        throwOverflow();
    }
    const int drop = std::max({0, scale - Decimal::MaxScale, count - 29});
    UInt128 kept = 0;
    for (int i = 0; i < count - drop; ++i) {
        kept = kept * 10 + UInt128(digits[i] - '0');
    }
    Wide value(kept);
    if (drop > 0 && drop <= count) {
        const char firstDropped = digits[count - drop];
        const bool sticky =
            digits.substr(count - drop + 1).find_first_not_of('0') != std::string_view::npos;
        if (firstDropped > '5' || (firstDropped == '5' && (sticky || value.isOdd()))) {
            value.increment();
        }
    }
    return makeDecimal(negative, value, scale - drop);
}

std::string digitsOf(UInt128 value) {
    std::string digits;
    do {
        digits.push_back(char('0' + int(value % 10)));
        value /= 10;
    } while (value != 0);
    std::reverse(digits.begin(), digits.end());
    return digits;
}

// A number as read from text: ±digits × 10^-scale.
struct NumberText {
    bool negative = false;
    std::string digits;
    int scale = 0;
};

std::optional<NumberText> scanNumber(QStringView text) {
    text = text.trimmed();
    const qsizetype size = text.size();
    qsizetype i = 0;
    auto isDigit = [&](qsizetype k) { return k < size && text[k] >= u'0' && text[k] <= u'9'; };
    NumberText number;
    if (i < size && (text[i] == u'+' || text[i] == u'-')) {
        number.negative = text[i] == u'-';
        ++i;
    }
    bool anyDigit = false;
    for (; i < size; ++i) {
        if (isDigit(i)) {
            number.digits.push_back(char(text[i].unicode()));
            anyDigit = true;
        } else if (text[i] != u'.') {
            break;
        }
    }
    if (i < size && text[i] == u',') {
        for (++i; isDigit(i); ++i) {
            number.digits.push_back(char(text[i].unicode()));
            ++number.scale;
            anyDigit = true;
        }
    }
    if (!anyDigit) {
        return std::nullopt;
    }
    if (i < size && (text[i] == u'e' || text[i] == u'E')) {
        ++i;
        bool negativeExponent = false;
        if (i < size && (text[i] == u'+' || text[i] == u'-')) {
            negativeExponent = text[i] == u'-';
            ++i;
        }
        if (!isDigit(i)) {
            return std::nullopt;
        }
        int exponent = 0;
        for (; isDigit(i); ++i) {
            // Far beyond any double; capped so that the scale cannot overflow.
            exponent = std::min(exponent * 10 + (text[i].unicode() - u'0'), 100000);
        }
        number.scale += negativeExponent ? exponent : -exponent;
    }
    if (i != size) {
        return std::nullopt;
    }
    return number;
}

// nullopt when the number is beyond the range of a Double.
std::optional<double> toDouble(const NumberText& number) {
    std::string text = number.digits;
    text += 'e';
    text += std::to_string(-number.scale);
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error == std::errc::result_out_of_range) {
        // from_chars reports both overflow and underflow; only overflow fails.
        const size_t first = number.digits.find_first_not_of('0');
        if (first != std::string::npos && int(number.digits.size() - first) > number.scale) {
            return std::nullopt;
        }
        value = 0;
    }
    return number.negative ? -value : value;
}

double textToDouble(const QString& text) {
    const auto number = scanNumber(text);
    if (!number) {
        throwMismatch();
    }
    const auto value = toDouble(*number);
    if (!value) {
        throwOverflow();
    }
    return *value;
}

Decimal textToDecimal(const QString& text) {
    const auto number = scanNumber(text);
    if (!number) {
        throwMismatch();
    }
    return decimalFromDigits(number->negative, number->digits, number->scale);
}

enum class Tie { ToEven, AwayFromZero };

// Rounds to a whole number. A value within a few ulps of a .5 tie is taken as
// the tie: it is a decimal tie such as 0.135 × 100 that binary floating point
// could not hold exactly, and the runtime's user wrote the decimal.
double roundScaled(double x, Tie tie) {
    if (!std::isfinite(x) || std::abs(x) >= 4503599627370496.0) {
        return x;
    }
    const double lower = std::floor(x);
    const double fraction = x - lower;
    if (std::abs(fraction - 0.5) <= std::abs(x) * 8 * DBL_EPSILON) {
        if (tie == Tie::AwayFromZero) {
            return x < 0 ? lower : lower + 1;
        }
        return std::fmod(lower, 2.0) == 0 ? lower : lower + 1;
    }
    return fraction < 0.5 ? lower : lower + 1;
}

Int128 divideRounded(Int128 numerator, Int128 denominator, Tie tie) {
    const UInt128 n = magnitude(numerator);
    const UInt128 d = magnitude(denominator);
    UInt128 quotient = n / d;
    const UInt128 twice = (n % d) * 2;
    if (twice > d || (twice == d && (tie == Tie::AwayFromZero || (quotient & 1) != 0))) {
        ++quotient;
    }
    return ((numerator < 0) != (denominator < 0)) ? -Int128(quotient) : Int128(quotient);
}

Currency currencyOf(Int128 scaled) {
    if (scaled > Int128(std::numeric_limits<qint64>::max()) ||
        scaled < Int128(std::numeric_limits<qint64>::min())) {
        throwOverflow();
    }
    return Currency{qint64(scaled)};
}

Currency decimalToCurrency(const Decimal& value) {
    if (value.scale() <= 4) {
        return currencyOf(value.mantissa() * Int128(pow10(4 - value.scale())));
    }
    return currencyOf(
        divideRounded(value.mantissa(), Int128(pow10(value.scale() - 4)), Tie::AwayFromZero));
}

qint64 checkedRange(Int128 value, qint64 low, qint64 high) {
    if (value < low || value > high) {
        throwOverflow();
    }
    return qint64(value);
}

qint64 roundedDouble(double value, qint64 low, qint64 high) {
    const double rounded = roundHalfEven(value);
    if (std::isnan(rounded) || rounded < double(low) || rounded > double(high)) {
        throwOverflow();
    }
    return qint64(rounded);
}

qint64 roundedDecimal(const Decimal& value, qint64 low, qint64 high) {
    return checkedRange(divideRounded(value.mantissa(), Int128(pow10(value.scale())), Tie::ToEven),
                        low, high);
}

// A nonzero finite Double to the 15 significant digits the runtime keeps:
// ±d.dddddddddddddd × 10^exponent.
struct Significant {
    bool negative = false;
    std::string digits;
    int exponent = 0;
};

Significant significant15(double value) {
    char buffer[48];
    const auto result =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::scientific, 14);
    std::string_view text(buffer, size_t(result.ptr - buffer));
    Significant s;
    s.negative = text.front() == '-';
    if (s.negative) {
        text.remove_prefix(1);
    }
    const size_t e = text.find('e');
    s.digits.assign(1, text[0]);
    s.digits.append(text.substr(2, e - 2));
    std::from_chars(text.data() + e + 2, text.data() + text.size(), s.exponent);
    if (text[e + 1] == '-') {
        s.exponent = -s.exponent;
    }
    return s;
}

// The text of a Double as the runtime prints it: 15 significant digits, decimal
// comma, trailing zeros dropped, exponent form below 1E-04 and from 1E+15.
QString doubleText(double value) {
    if (std::isnan(value)) {
        return QStringLiteral("-1,#IND");
    }
    if (std::isinf(value)) {
        return value > 0 ? QStringLiteral("1,#INF") : QStringLiteral("-1,#INF");
    }
    if (value == 0) {
        return QStringLiteral("0");
    }
    auto [negative, digits, exponent] = significant15(value);
    while (digits.size() > 1 && digits.back() == '0') {
        digits.pop_back();
    }
    std::string out = negative ? "-" : "";
    if (exponent < -4 || exponent >= 15) {
        out += digits[0];
        if (digits.size() > 1) {
            out += ',';
            out.append(digits, 1);
        }
        out += exponent < 0 ? "E-" : "E+";
        const std::string power = std::to_string(std::abs(exponent));
        out += (power.size() < 2 ? "0" : "") + power;
    } else if (exponent < 0) {
        out += "0,";
        out.append(size_t(-exponent - 1), '0');
        out += digits;
    } else {
        const size_t integerDigits = size_t(exponent) + 1;
        if (digits.size() <= integerDigits) {
            out += digits;
            out.append(integerDigits - digits.size(), '0');
        } else {
            out.append(digits, 0, integerDigits);
            out += ',';
            out.append(digits, integerDigits);
        }
    }
    return QString::fromLatin1(out.data(), qsizetype(out.size()));
}

QString twoDigits(int value) { return QString::number(value).rightJustified(2, u'0'); }

QString timeText(qint64 secondsOfDay) {
    return twoDigits(int(secondsOfDay / 3600)) + u':' + twoDigits(int(secondsOfDay / 60 % 60)) +
           u':' + twoDigits(int(secondsOfDay % 60));
}

// Reads text one piece at a time for the date forms.
class Cursor {
  public:
    explicit Cursor(QStringView text) : text_(text) {}

    bool atEnd() const { return pos_ == text_.size(); }
    QChar peek() const { return atEnd() ? QChar() : text_[pos_]; }

    bool take(QChar c) {
        if (atEnd() || peek() != c) {
            return false;
        }
        ++pos_;
        return true;
    }

    bool skipBlanks() {
        const qsizetype start = pos_;
        while (!atEnd() && text_[pos_].isSpace()) {
            ++pos_;
        }
        return pos_ > start;
    }

    // Reads up to maxDigits digits; returns how many were read.
    int number(int maxDigits, int& value) {
        int count = 0;
        value = 0;
        while (count < maxDigits && !atEnd() && text_[pos_] >= u'0' && text_[pos_] <= u'9') {
            value = value * 10 + (text_[pos_].unicode() - u'0');
            ++pos_;
            ++count;
        }
        return count;
    }

  private:
    QStringView text_;
    qsizetype pos_ = 0;
};

// "H:mm[:ss]"; with allowFraction, "ss.fff" as the databases store it.
std::optional<int> readTime(Cursor& cursor, bool allowFraction) {
    int hour = 0;
    int minute = 0;
    int second = 0;
    if (cursor.number(2, hour) == 0 || !cursor.take(u':') || cursor.number(2, minute) == 0) {
        return std::nullopt;
    }
    if (cursor.take(u':')) {
        if (cursor.number(2, second) == 0) {
            return std::nullopt;
        }
        if (allowFraction && cursor.take(u'.')) {
            int ignored = 0;
            if (cursor.number(9, ignored) == 0) {
                return std::nullopt;
            }
        }
    }
    if (hour > 23 || minute > 59 || second > 59) {
        return std::nullopt;
    }
    return hour * 3600 + minute * 60 + second;
}

std::optional<DateTime> dateAt(QDate date, int secondsOfDay) {
    if (!date.isValid() || date.year() < 100 || date.year() > 9999) {
        return std::nullopt;
    }
    return DateTime::fromSeconds(dayZero().daysTo(date) * SecondsPerDay + secondsOfDay);
}

std::optional<DateTime> parseIsoDate(QStringView text) {
    Cursor cursor(text);
    int year = 0;
    int month = 0;
    int day = 0;
    if (cursor.number(4, year) != 4 || !cursor.take(u'-') || cursor.number(2, month) == 0 ||
        !cursor.take(u'-') || cursor.number(2, day) == 0) {
        return std::nullopt;
    }
    int seconds = 0;
    if (!cursor.atEnd()) {
        if (!cursor.take(u'T') && !cursor.skipBlanks()) {
            return std::nullopt;
        }
        const auto time = readTime(cursor, true);
        if (!time || !cursor.atEnd()) {
            return std::nullopt;
        }
        seconds = *time;
    }
    return dateAt(QDate(year, month, day), seconds);
}

std::optional<DateTime> parseDayMonthYear(QStringView text) {
    Cursor cursor(text);
    int day = 0;
    int month = 0;
    int year = 0;
    if (cursor.number(2, day) == 0) {
        return std::nullopt;
    }
    const QChar separator = cursor.peek();
    if ((separator != u'/' && separator != u'-') || !cursor.take(separator) ||
        cursor.number(2, month) == 0 || !cursor.take(separator)) {
        return std::nullopt;
    }
    const int yearDigits = cursor.number(4, year);
    if (yearDigits == 0) {
        return std::nullopt;
    }
    if (yearDigits <= 2) {
        year += year < 30 ? 2000 : 1900;
    }
    int seconds = 0;
    if (!cursor.atEnd()) {
        if (!cursor.skipBlanks()) {
            return std::nullopt;
        }
        const auto time = readTime(cursor, false);
        if (!time || !cursor.atEnd()) {
            return std::nullopt;
        }
        seconds = *time;
    }
    if (!QDate(year, month, day).isValid() && QDate(year, day, month).isValid()) {
        std::swap(day, month);
    }
    return dateAt(QDate(year, month, day), seconds);
}

template <class... Ts>
struct Overloaded : Ts... {
    using Ts::operator()...;
};
template <class... Ts>
Overloaded(Ts...) -> Overloaded<Ts...>;

// The order in which the wider type wins when two numbers meet: a Double
// outranks Currency, and a Decimal outranks a Double.
enum class NumberKind { Integer, Long, Currency, Double, Decimal };

// For a value that is a number, a Boolean, Empty or a Date.
NumberKind kindOf(const Variant& value) {
    switch (value.type()) {
        case VarType::Empty:
        case VarType::Boolean:
        case VarType::Integer:
            return NumberKind::Integer;
        case VarType::Long:
            return NumberKind::Long;
        case VarType::Currency:
            return NumberKind::Currency;
        case VarType::Decimal:
            return NumberKind::Decimal;
        default:
            return NumberKind::Double;
    }
}

// For a value of kind Integer or Long.
qint64 exactInteger(const Variant& value) {
    if (const bool* b = value.get<bool>()) {
        return *b ? -1 : 0;
    }
    if (const qint16* i = value.get<qint16>()) {
        return *i;
    }
    if (const qint32* l = value.get<qint32>()) {
        return *l;
    }
    return 0;
}

std::strong_ordering doubleOrder(double a, double b) {
    if (a < b) {
        return std::strong_ordering::less;
    }
    return a > b ? std::strong_ordering::greater : std::strong_ordering::equal;
}

std::strong_ordering textOrder(const QString& a, const QString& b) {
    return QString::compare(a, b, Qt::CaseInsensitive) <=> 0;
}

std::strong_ordering reversed(std::strong_ordering order) { return 0 <=> order; }

// Both values are numbers, Booleans, Empty or Dates.
std::strong_ordering numericOrder(const Variant& a, const Variant& b) {
    const NumberKind ka = kindOf(a);
    const NumberKind kb = kindOf(b);
    switch (std::max(ka, kb)) {
        case NumberKind::Integer:
        case NumberKind::Long:
            return exactInteger(a) <=> exactInteger(b);
        case NumberKind::Currency:
            return a.toCurrency().scaled <=> b.toCurrency().scaled;
        case NumberKind::Decimal:
            if (ka != NumberKind::Double && kb != NumberKind::Double) {
                return a.toDecimal() <=> b.toDecimal();
            }
            break;
        case NumberKind::Double:
            break;
    }
    return doubleOrder(a.toDouble(), b.toDouble());
}

std::strong_ordering numberAgainstText(const Variant& number, const QString& text) {
    const auto parsed = parseItalianNumber(text);
    if (!parsed) {
        return std::strong_ordering::less;
    }
    return numericOrder(number, Variant(*parsed));
}

std::strong_ordering dateAgainstText(const DateTime& date, const QString& text) {
    if (const auto parsed = parseItalianDate(text)) {
        return date <=> *parsed;
    }
    return textOrder(date.toText(), text);
}

enum class Operation { Add, Subtract, Multiply };

// A String operand of arithmetic counts as the Double it reads as.
Variant numericOperand(const Variant& value) {
    if (const QString* text = value.get<QString>()) {
        return Variant(textToDouble(*text));
    }
    return value;
}

Variant checkedDouble(double value) {
    if (!std::isfinite(value)) {
        throwOverflow();
    }
    return Variant(value);
}

// Integer when allowed and it fits, else Long when it fits, else Double.
Variant widenedInteger(qint64 value, bool allowInteger) {
    if (allowInteger && value >= -32768 && value <= 32767) {
        return Variant(qint16(value));
    }
    if (value >= std::numeric_limits<qint32>::min() &&
        value <= std::numeric_limits<qint32>::max()) {
        return Variant(qint32(value));
    }
    return Variant(double(value));
}

Variant arithmetic(const Variant& a, const Variant& b, Operation op) {
    if (a.isNull() || b.isNull()) {
        return Variant::null();
    }
    if (op == Operation::Add) {
        const QString* ta = a.get<QString>();
        const QString* tb = b.get<QString>();
        if (ta && (tb || b.isEmpty())) {
            return Variant(tb ? *ta + *tb : *ta);
        }
        if (tb && a.isEmpty()) {
            return Variant(*tb);
        }
    }
    const Variant x = numericOperand(a);
    const Variant y = numericOperand(b);
    const bool dateX = x.type() == VarType::Date;
    const bool dateY = y.type() == VarType::Date;
    if ((dateX || dateY) && op != Operation::Multiply) {
        const double sx = x.toDouble();
        const double sy = y.toDouble();
        if (op == Operation::Subtract && dateX && dateY) {
            return Variant(sx - sy);
        }
        return Variant(DateTime::fromSerial(op == Operation::Add ? sx + sy : sx - sy));
    }
    const NumberKind kind = std::max(kindOf(x), kindOf(y));
    switch (kind) {
        case NumberKind::Integer:
        case NumberKind::Long: {
            const qint64 p = exactInteger(x);
            const qint64 q = exactInteger(y);
            const qint64 r = op == Operation::Add        ? p + q
                             : op == Operation::Subtract ? p - q
                                                         : p * q;
            return widenedInteger(r, kind == NumberKind::Integer);
        }
        case NumberKind::Currency: {
            const Int128 p = x.toCurrency().scaled;
            const Int128 q = y.toCurrency().scaled;
            if (op == Operation::Multiply) {
                return Variant(currencyOf(divideRounded(p * q, Currency::Scale, Tie::ToEven)));
            }
            return Variant(currencyOf(op == Operation::Add ? p + q : p - q));
        }
        case NumberKind::Double: {
            const double p = x.toDouble();
            const double q = y.toDouble();
            return checkedDouble(op == Operation::Add        ? p + q
                                 : op == Operation::Subtract ? p - q
                                                             : p * q);
        }
        case NumberKind::Decimal: {
            const Decimal p = x.toDecimal();
            const Decimal q = y.toDecimal();
            return Variant(op == Operation::Add        ? p + q
                           : op == Operation::Subtract ? p - q
                                                       : p * q);
        }
    }
    return Variant();
}

// The quotient to as many digits as fit 28 decimals and 96 bits, the last
// rounded half to even. The divisor is not zero.
Decimal divideDecimal(const Decimal& dividend, const Decimal& divisor) {
    const UInt128 limit = UInt128(1) << 96;
    const UInt128 a = magnitude(dividend.mantissa());
    const UInt128 b = magnitude(divisor.mantissa());
    const bool negative = (dividend.mantissa() < 0) != (divisor.mantissa() < 0);
    // a / b × 10^-(scaleShift + fractionDigits) is the quotient so far.
    const int scaleShift = dividend.scale() - divisor.scale();
    UInt128 quotient = a / b;
    UInt128 remainder = a % b;
    int fractionDigits = 0;
    if (quotient >= limit) {
        throwOverflow();
    }
    while (fractionDigits < -scaleShift ||
           (remainder != 0 && scaleShift + fractionDigits < Decimal::MaxScale &&
            quotient * 10 + 9 < limit)) {
        remainder *= 10;
        quotient = quotient * 10 + remainder / b;
        remainder %= b;
        ++fractionDigits;
        if (quotient >= limit) {
            throwOverflow();
        }
    }
    remainder *= 10;
    const UInt128 next = remainder / b;
    const bool sticky = remainder % b != 0;
    Wide result(quotient);
    if (next > 5 || (next == 5 && (sticky || (quotient & 1) != 0))) {
        result.increment();
    }
    return makeDecimal(negative, result, scaleShift + fractionDigits);
}

}  // namespace

Currency Currency::fromDouble(double value) {
    const double scaled = roundScaled(value * double(Scale), Tie::AwayFromZero);
    if (!std::isfinite(scaled) || scaled >= 9223372036854775808.0 ||
        scaled < -9223372036854775808.0) {
        throwOverflow();
    }
    return Currency{qint64(scaled)};
}

Decimal::Decimal(Int128 mantissa, int scale) {
    Wide value(magnitude(mantissa));
    if (scale < 0) {
        if (!value.isZero() && (scale < -MaxScale - 1 || !multiplyPow10(value, -scale))) {
            throwOverflow();
        }
        scale = 0;
    }
    if (scale > MaxScale) {
        dropDigits(value, scale - MaxScale);
        scale = MaxScale;
    }
    if (!value.fitsDecimal()) {
        throwOverflow();
    }
    mantissa_ = mantissa < 0 ? -Int128(value.low()) : Int128(value.low());
    scale_ = scale;
}

Decimal Decimal::fromDouble(double value) {
    if (!std::isfinite(value)) {
        throwOverflow();
    }
    if (value == 0) {
        return Decimal();
    }
    const Significant s = significant15(value);
    return decimalFromDigits(s.negative, s.digits, 14 - s.exponent);
}

std::optional<Decimal> Decimal::parse(QStringView text, QChar point) {
    qsizetype i = 0;
    bool negative = false;
    if (i < text.size() && (text[i] == u'+' || text[i] == u'-')) {
        negative = text[i] == u'-';
        ++i;
    }
    std::string digits;
    int scale = 0;
    bool inFraction = false;
    for (; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c >= u'0' && c <= u'9') {
            digits.push_back(char(c.unicode()));
            scale += inFraction ? 1 : 0;
        } else if (c == point && !inFraction) {
            inFraction = true;
        } else {
            return std::nullopt;
        }
    }
    if (digits.empty()) {
        return std::nullopt;
    }
    // Callers probe text with this; a number too big for a Decimal is not one.
    try {
        return decimalFromDigits(negative, digits, scale);
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
}

double Decimal::toDouble() const {
    const std::string text = toString(u'.').toStdString();
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

QString Decimal::toString(QChar point) const {
    std::string digits = digitsOf(magnitude(mantissa_));
    if (scale_ > 0) {
        if (int(digits.size()) <= scale_) {
            digits.insert(0, size_t(scale_ + 1) - digits.size(), '0');
        }
        const size_t integerDigits = digits.size() - size_t(scale_);
        while (digits.size() > integerDigits && digits.back() == '0') {
            digits.pop_back();
        }
        if (digits.size() > integerDigits) {
            digits.insert(integerDigits, 1, '.');
        }
    }
    QString text = QString::fromLatin1(digits.data(), qsizetype(digits.size()));
    text.replace(u'.', point);
    return mantissa_ < 0 ? u'-' + text : text;
}

Decimal operator+(const Decimal& a, const Decimal& b) {
    const int scale = std::max(a.scale_, b.scale_);
    Wide x(magnitude(a.mantissa_));
    Wide y(magnitude(b.mantissa_));
    multiplyPow10(x, scale - a.scale_);
    multiplyPow10(y, scale - b.scale_);
    const bool negativeA = a.mantissa_ < 0;
    const bool negativeB = b.mantissa_ < 0;
    if (negativeA == negativeB) {
        return makeDecimal(negativeA, x + y, scale);
    }
    if (x < y) {
        return makeDecimal(negativeB, y - x, scale);
    }
    return makeDecimal(negativeA, x - y, scale);
}

Decimal operator-(const Decimal& a, const Decimal& b) { return a + (-b); }

Decimal operator*(const Decimal& a, const Decimal& b) {
    return makeDecimal((a.mantissa_ < 0) != (b.mantissa_ < 0),
                       product(magnitude(a.mantissa_), magnitude(b.mantissa_)),
                       a.scale_ + b.scale_);
}

std::strong_ordering operator<=>(const Decimal& a, const Decimal& b) {
    const bool negativeA = a.mantissa_ < 0;
    const bool negativeB = b.mantissa_ < 0;
    if (negativeA != negativeB) {
        return negativeA ? std::strong_ordering::less : std::strong_ordering::greater;
    }
    const int scale = std::max(a.scale_, b.scale_);
    Wide x(magnitude(a.mantissa_));
    Wide y(magnitude(b.mantissa_));
    multiplyPow10(x, scale - a.scale_);
    multiplyPow10(y, scale - b.scale_);
    const std::strong_ordering order = x <=> y;
    return negativeA ? reversed(order) : order;
}

DateTime DateTime::fromParts(QDate date, QTime time) {
    if (!date.isValid()) {
        throwMismatch();
    }
    const qint64 seconds = time.isValid() ? time.msecsSinceStartOfDay() / 1000 : 0;
    return DateTime(dayZero().daysTo(date) * SecondsPerDay + seconds);
}

DateTime DateTime::fromSerial(double serial) {
    if (!(serial >= MinSerial && serial < MaxSerialExclusive)) {
        throwOverflow();
    }
    // The whole part is the day, and the fraction is the time of that day even
    // for negative serials: -1.25 is 29/12/1899 06:00.
    const double day = std::trunc(serial);
    const qint64 seconds = std::llround(std::abs(serial - day) * double(SecondsPerDay));
    return DateTime(qint64(day) * SecondsPerDay + seconds);
}

std::optional<DateTime> DateTime::fromIso(QStringView text) {
    if (text.size() != 10 && text.size() != 19) {
        return std::nullopt;
    }
    static constexpr char Pattern[] = "dddd-dd-dd dd:dd:dd";
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        const bool ok = Pattern[i] == 'd' ? (c >= u'0' && c <= u'9')
                        : i == 10         ? (c == u' ' || c == u'T')
                                          : c == QChar(QLatin1Char(Pattern[i]));
        if (!ok) {
            return std::nullopt;
        }
    }
    auto field = [&](qsizetype from, qsizetype length) { return text.mid(from, length).toInt(); };
    int seconds = 0;
    if (text.size() == 19) {
        const int hour = field(11, 2);
        const int minute = field(14, 2);
        const int second = field(17, 2);
        if (hour > 23 || minute > 59 || second > 59) {
            return std::nullopt;
        }
        seconds = hour * 3600 + minute * 60 + second;
    }
    return dateAt(QDate(field(0, 4), field(5, 2), field(8, 2)), seconds);
}

QDate DateTime::date() const { return dayZero().addDays(floorDiv(seconds_, SecondsPerDay)); }

QTime DateTime::time() const {
    const qint64 secondsOfDay = seconds_ - floorDiv(seconds_, SecondsPerDay) * SecondsPerDay;
    return QTime::fromMSecsSinceStartOfDay(int(secondsOfDay * 1000));
}

double DateTime::toSerial() const {
    const qint64 day = floorDiv(seconds_, SecondsPerDay);
    const double fraction = double(seconds_ - day * SecondsPerDay) / double(SecondsPerDay);
    return day >= 0 ? double(day) + fraction : double(day) - fraction;
}

void DateTime::writeIso(char out[19]) const {
    // Civil date from the day count (proleptic Gregorian), without QDate.
    const qint64 day = floorDiv(seconds_, SecondsPerDay);
    const qint64 secondsOfDay = seconds_ - day * SecondsPerDay;
    const qint64 z = day - 25569 + 719468;  // days from 0000-03-01; day 0 is 1899-12-30
    const qint64 era = (z >= 0 ? z : z - 146096) / 146097;
    const qint64 doe = z - era * 146097;
    const qint64 yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const qint64 doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const qint64 mp = (5 * doy + 2) / 153;
    const int d = int(doy - (153 * mp + 2) / 5 + 1);
    const int m = int(mp < 10 ? mp + 3 : mp - 9);
    const int y = int(yoe + era * 400 + (m <= 2 ? 1 : 0));
    const auto put = [&out](int at, int value, int digits) {
        for (int i = digits - 1; i >= 0; --i, value /= 10)
            out[at + i] = char('0' + value % 10);
    };
    put(0, y, 4);
    out[4] = '-';
    put(5, m, 2);
    out[7] = '-';
    put(8, d, 2);
    out[10] = ' ';
    put(11, int(secondsOfDay / 3600), 2);
    out[13] = ':';
    put(14, int(secondsOfDay / 60 % 60), 2);
    out[16] = ':';
    put(17, int(secondsOfDay % 60), 2);
}

QString DateTime::toIso() const {
    char text[19];
    writeIso(text);
    return QString::fromLatin1(text, 19);
}

QString DateTime::toText() const {
    const qint64 day = floorDiv(seconds_, SecondsPerDay);
    const qint64 secondsOfDay = seconds_ - day * SecondsPerDay;
    if (day == 0) {
        return timeText(secondsOfDay);
    }
    const QDate d = date();
    QString text = twoDigits(d.day()) + u'/' + twoDigits(d.month()) + u'/' +
                   QString::number(d.year()).rightJustified(4, u'0');
    if (secondsOfDay != 0) {
        text += u' ' + timeText(secondsOfDay);
    }
    return text;
}

Variant Variant::fromInt64(qint64 value) {
    if (value >= std::numeric_limits<qint32>::min() &&
        value <= std::numeric_limits<qint32>::max()) {
        return Variant(qint32(value));
    }
    return Variant(double(value));
}

VarType Variant::type() const {
    return std::visit(Overloaded{
                          [](std::monostate) { return VarType::Empty; },
                          [](NullTag) { return VarType::Null; },
                          [](bool) { return VarType::Boolean; },
                          [](qint16) { return VarType::Integer; },
                          [](qint32) { return VarType::Long; },
                          [](double) { return VarType::Double; },
                          [](const Currency&) { return VarType::Currency; },
                          [](const Decimal&) { return VarType::Decimal; },
                          [](const DateTime&) { return VarType::Date; },
                          [](const QString&) { return VarType::String; },
                      },
                      value_);
}

bool Variant::isNumber() const {
    switch (type()) {
        case VarType::Integer:
        case VarType::Long:
        case VarType::Double:
        case VarType::Currency:
        case VarType::Decimal:
            return true;
        default:
            return false;
    }
}

bool Variant::isNumeric() const {
    switch (type()) {
        case VarType::Null:
        case VarType::Date:
            return false;
        case VarType::String:
            return scanNumber(*get<QString>()).has_value();
        default:
            return true;
    }
}

bool Variant::toBool() const {
    return std::visit(
        Overloaded{
            [](std::monostate) { return false; },
            [](NullTag) -> bool { throwNull(); },
            [](bool v) { return v; },
            [](qint16 v) { return v != 0; },
            [](qint32 v) { return v != 0; },
            [](double v) { return v != 0; },
            [](const Currency& v) { return v.scaled != 0; },
            [](const Decimal& v) { return v.mantissa() != 0; },
            [](const DateTime& v) { return v.seconds() != 0; },
            [](const QString& v) {
                const QStringView text = QStringView(v).trimmed();
                for (const char* word : {"Vero", "True"}) {
                    if (text.compare(QLatin1StringView(word), Qt::CaseInsensitive) == 0) {
                        return true;
                    }
                }
                for (const char* word : {"Falso", "False"}) {
                    if (text.compare(QLatin1StringView(word), Qt::CaseInsensitive) == 0) {
                        return false;
                    }
                }
                return textToDouble(v) != 0;
            },
        },
        value_);
}

namespace {

// CInt and CLng: the value rounded half to even, "Overflow" outside low..high.
qint64 roundedInteger(const Variant& value, qint64 low, qint64 high) {
    switch (value.type()) {
        case VarType::Null:
            throwNull();
        case VarType::Empty:
        case VarType::Boolean:
        case VarType::Integer:
        case VarType::Long:
            return checkedRange(exactInteger(value), low, high);
        case VarType::Currency:
            return roundedDecimal(Decimal::fromCurrency(*value.get<Currency>()), low, high);
        case VarType::Decimal:
            return roundedDecimal(*value.get<Decimal>(), low, high);
        default:
            return roundedDouble(value.toDouble(), low, high);
    }
}

}  // namespace

qint16 Variant::toInteger() const { return qint16(roundedInteger(*this, -32768, 32767)); }

qint32 Variant::toLong() const {
    return qint32(roundedInteger(*this, std::numeric_limits<qint32>::min(),
                                 std::numeric_limits<qint32>::max()));
}

double Variant::toDouble() const {
    return std::visit(Overloaded{
                          [](std::monostate) { return 0.0; },
                          [](NullTag) -> double { throwNull(); },
                          [](bool v) { return v ? -1.0 : 0.0; },
                          [](qint16 v) { return double(v); },
                          [](qint32 v) { return double(v); },
                          [](double v) { return v; },
                          [](const Currency& v) { return v.toDouble(); },
                          [](const Decimal& v) { return v.toDouble(); },
                          [](const DateTime& v) { return v.toSerial(); },
                          [](const QString& v) { return textToDouble(v); },
                      },
                      value_);
}

Currency Variant::toCurrency() const {
    return std::visit(Overloaded{
                          [](std::monostate) { return Currency{}; },
                          [](NullTag) -> Currency { throwNull(); },
                          [](bool v) { return Currency{v ? -Currency::Scale : 0}; },
                          [](qint16 v) { return Currency{v * Currency::Scale}; },
                          [](qint32 v) { return Currency{v * Currency::Scale}; },
                          [](double v) { return Currency::fromDouble(v); },
                          [](const Currency& v) { return v; },
                          [](const Decimal& v) { return decimalToCurrency(v); },
                          [](const DateTime& v) { return Currency::fromDouble(v.toSerial()); },
                          [](const QString& v) { return decimalToCurrency(textToDecimal(v)); },
                      },
                      value_);
}

Decimal Variant::toDecimal() const {
    return std::visit(Overloaded{
                          [](std::monostate) { return Decimal(); },
                          [](NullTag) -> Decimal { throwNull(); },
                          [](bool v) { return Decimal::fromInt(v ? -1 : 0); },
                          [](qint16 v) { return Decimal::fromInt(v); },
                          [](qint32 v) { return Decimal::fromInt(v); },
                          [](double v) { return Decimal::fromDouble(v); },
                          [](const Currency& v) { return Decimal::fromCurrency(v); },
                          [](const Decimal& v) { return v; },
                          [](const DateTime& v) { return Decimal::fromDouble(v.toSerial()); },
                          [](const QString& v) { return textToDecimal(v); },
                      },
                      value_);
}

DateTime Variant::toDate() const {
    return std::visit(Overloaded{
                          [](std::monostate) { return DateTime(); },
                          [](NullTag) -> DateTime { throwNull(); },
                          [](const DateTime& v) { return v; },
                          [](const QString& v) {
                              const auto date = parseItalianDate(v);
                              if (!date) {
                                  throwMismatch();
                              }
                              return *date;
                          },
                          [this](const auto&) { return DateTime::fromSerial(toDouble()); },
                      },
                      value_);
}

QString Variant::toString() const {
    return std::visit(
        Overloaded{
            [](std::monostate) { return QString(); },
            [](NullTag) -> QString { throwNull(); },
            [](bool v) { return v ? QStringLiteral("Vero") : QStringLiteral("Falso"); },
            [](qint16 v) { return QString::number(v); },
            [](qint32 v) { return QString::number(v); },
            [](double v) { return doubleText(v); },
            [](const Currency& v) { return Decimal::fromCurrency(v).toString(); },
            [](const Decimal& v) { return v.toString(); },
            [](const DateTime& v) { return v.toText(); },
            [](const QString& v) { return v; },
        },
        value_);
}

QString Variant::text() const { return isNull() ? QString() : toString(); }

Variant operator+(const Variant& a, const Variant& b) { return arithmetic(a, b, Operation::Add); }

Variant operator-(const Variant& a, const Variant& b) {
    return arithmetic(a, b, Operation::Subtract);
}

Variant operator*(const Variant& a, const Variant& b) {
    return arithmetic(a, b, Operation::Multiply);
}

Variant operator/(const Variant& a, const Variant& b) {
    if (a.isNull() || b.isNull()) {
        return Variant::null();
    }
    const Variant x = numericOperand(a);
    const Variant y = numericOperand(b);
    if (x.type() == VarType::Decimal || y.type() == VarType::Decimal) {
        const Decimal divisor = y.toDecimal();
        if (divisor.mantissa() == 0) {
            throwDivisionByZero();
        }
        return Variant(divideDecimal(x.toDecimal(), divisor));
    }
    const double divisor = y.toDouble();
    if (divisor == 0) {
        throwDivisionByZero();
    }
    return checkedDouble(x.toDouble() / divisor);
}

Variant Variant::operator-() const {
    return std::visit(
        Overloaded{
            [](std::monostate) { return Variant(qint16(0)); },
            [](NullTag) { return Variant::null(); },
            [](bool v) { return Variant(qint16(v ? 1 : 0)); },
            [](qint16 v) { return widenedInteger(-qint64(v), true); },
            [](qint32 v) { return widenedInteger(-qint64(v), false); },
            [](double v) { return Variant(-v); },
            [](const Currency& v) {
                if (v.scaled == std::numeric_limits<qint64>::min()) {
                    throwOverflow();
                }
                return Variant(Currency{-v.scaled});
            },
            [](const Decimal& v) { return Variant(-v); },
            [](const DateTime& v) { return Variant(DateTime::fromSerial(-v.toSerial())); },
            [](const QString& v) { return Variant(-textToDouble(v)); },
        },
        value_);
}

bool operator==(const Variant& a, const Variant& b) { return a.value_ == b.value_; }

std::optional<std::strong_ordering> compare(const Variant& a, const Variant& b) {
    if (a.isNull() || b.isNull()) {
        return std::nullopt;
    }
    const QString* ta = a.get<QString>();
    const QString* tb = b.get<QString>();
    if (ta && tb) {
        return textOrder(*ta, *tb);
    }
    if (ta && b.isEmpty()) {
        return textOrder(*ta, QString());
    }
    if (tb && a.isEmpty()) {
        return textOrder(QString(), *tb);
    }
    const DateTime* da = a.get<DateTime>();
    const DateTime* db = b.get<DateTime>();
    if (da && db) {
        return *da <=> *db;
    }
    if (da && tb) {
        return dateAgainstText(*da, *tb);
    }
    if (db && ta) {
        return reversed(dateAgainstText(*db, *ta));
    }
    if (ta) {
        return reversed(numberAgainstText(b, *ta));
    }
    if (tb) {
        return numberAgainstText(a, *tb);
    }
    return numericOrder(a, b);
}

bool sameText(const Variant& a, const Variant& b) {
    return QString::compare(a.text(), b.text(), Qt::CaseInsensitive) == 0;
}

Variant NoNull(const Variant& value) { return value.isNull() ? Variant(QString()) : value; }

Variant NoNullZero(const Variant& value) { return value.isNull() ? Variant(qint16(0)) : value; }

std::optional<double> parseItalianNumber(QStringView text) {
    const auto number = scanNumber(text);
    if (!number) {
        return std::nullopt;
    }
    return toDouble(*number);
}

std::optional<DateTime> parseItalianDate(QStringView text) {
    text = text.trimmed();
    if (auto iso = parseIsoDate(text)) {
        return iso;
    }
    if (auto date = parseDayMonthYear(text)) {
        return date;
    }
    Cursor cursor(text);
    const auto time = readTime(cursor, false);
    if (!time || !cursor.atEnd()) {
        return std::nullopt;
    }
    return DateTime::fromSeconds(*time);
}

double roundHalfEven(double value, int decimals) {
    // Scaling by a power of ten leaves a decimal tie a few ulps off .5;
    // roundScaled takes it back as the tie.
    if (decimals == 0) {
        return roundScaled(value, Tie::ToEven);
    }
    const double factor = std::pow(10.0, std::abs(decimals));
    if (decimals < 0) {
        return roundScaled(value / factor, Tie::ToEven) * factor;
    }
    const double scaled = value * factor;
    if (!std::isfinite(scaled)) {
        return value;
    }
    return roundScaled(scaled, Tie::ToEven) / factor;
}

}  // namespace lorvane::db
