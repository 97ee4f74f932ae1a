// The value type the legacy code computes with: a tagged union of Empty, Null,
// Boolean, Integer (16-bit), Long, Double, Currency, Decimal, Date and String,
// with the conversions and comparisons of the Italian-locale Basic runtime.
#pragma once

#include <QDate>
#include <QString>
#include <QTime>
#include <compare>
#include <cstdint>
#include <optional>
#include <variant>

namespace lorvane::db {

__extension__ typedef __int128 Int128;

// The Basic VarType codes.
enum class VarType : int {
    Empty = 0,
    Null = 1,
    Integer = 2,
    Long = 3,
    Double = 5,
    Currency = 6,
    Date = 7,
    String = 8,
    Boolean = 11,
    Decimal = 14,
};

// Exact money: the value times 10,000 in 64 bits (four decimals).
struct Currency {
    static constexpr qint64 Scale = 10000;
    qint64 scaled = 0;

    // Rounds half away from zero to four decimals; throws "Overflow" when out of range.
    static Currency fromDouble(double value);
    double toDouble() const { return double(scaled) / double(Scale); }
    auto operator<=>(const Currency&) const = default;
};

// Exact decimal: a 96-bit magnitude with a scale of 0 to 28 digits, as the
// Basic Decimal subtype. Kept normalised only on request.
class Decimal {
  public:
    static constexpr int MaxScale = 28;

    Decimal() = default;
    // Throws "Overflow" when the magnitude exceeds 96 bits.
    Decimal(Int128 mantissa, int scale);

    static Decimal fromInt(qint64 value) { return Decimal(value, 0); }
    // Up to 15 significant digits of the double, as the runtime converts it.
    static Decimal fromDouble(double value);
    static Decimal fromCurrency(Currency value) { return Decimal(value.scaled, 4); }
    // Parses digits with an optional sign and `point` as the decimal separator;
    // nullopt when the text is not such a number.
    static std::optional<Decimal> parse(QStringView text, QChar point = u',');

    Int128 mantissa() const { return mantissa_; }
    int scale() const { return scale_; }
    double toDouble() const;
    // Shortest exact text, trailing zeros of the fraction removed.
    QString toString(QChar point = u',') const;

    Decimal operator-() const { return Decimal(-mantissa_, scale_); }
    friend Decimal operator+(const Decimal& a, const Decimal& b);
    friend Decimal operator-(const Decimal& a, const Decimal& b);
    friend Decimal operator*(const Decimal& a, const Decimal& b);
    friend std::strong_ordering operator<=>(const Decimal& a, const Decimal& b);
    friend bool operator==(const Decimal& a, const Decimal& b) { return (a <=> b) == 0; }

  private:
    Int128 mantissa_ = 0;
    int scale_ = 0;
};

// A date and time to the second, counted from 30/12/1899 00:00:00 as the
// runtime's Date (day 0). Stored in databases as "yyyy-MM-dd HH:mm:ss".
class DateTime {
  public:
    DateTime() = default;
    static DateTime fromSeconds(qint64 seconds) { return DateTime(seconds); }
    static DateTime fromParts(QDate date, QTime time = QTime(0, 0));
    // The runtime's serial number: whole days since day 0, the time as a fraction.
    static DateTime fromSerial(double serial);
    // "yyyy-MM-dd", "yyyy-MM-dd HH:mm:ss" or "yyyy-MM-ddTHH:mm:ss"; nullopt otherwise.
    static std::optional<DateTime> fromIso(QStringView text);

    qint64 seconds() const { return seconds_; }
    QDate date() const;
    QTime time() const;
    double toSerial() const;
    // "yyyy-MM-dd HH:mm:ss", midnight included: the storage form.
    QString toIso() const;
    // The same 19 characters written to `out`, for callers that must not allocate.
    void writeIso(char out[19]) const;
    // "dd/MM/yyyy", with " HH:mm:ss" when the time is not midnight, and the
    // time alone on day 0: the runtime's short text of a date.
    QString toText() const;

    auto operator<=>(const DateTime&) const = default;

  private:
    explicit DateTime(qint64 seconds) : seconds_(seconds) {}
    qint64 seconds_ = 0;
};

class Variant {
  public:
    Variant() = default;  // Empty
    Variant(bool value) : value_(value) {}
    Variant(qint16 value) : value_(value) {}
    Variant(qint32 value) : value_(value) {}
    Variant(double value) : value_(value) {}
    Variant(Currency value) : value_(value) {}
    Variant(Decimal value) : value_(value) {}
    Variant(DateTime value) : value_(value) {}
    Variant(QString value) : value_(std::move(value)) {}
    Variant(const char* utf8) : value_(QString::fromUtf8(utf8)) {}

    static Variant null() { return Variant(NullTag{}); }
    // Long when the value fits in 32 bits, Double otherwise.
    static Variant fromInt64(qint64 value);

    VarType type() const;
    bool isNull() const { return std::holds_alternative<NullTag>(value_); }
    bool isEmpty() const { return std::holds_alternative<std::monostate>(value_); }
    // Integer, Long, Double, Currency or Decimal.
    bool isNumber() const;
    // True for a number, and for a String, Boolean or Date that converts to one
    // (the runtime's IsNumeric; Empty counts as numeric).
    bool isNumeric() const;

    // The runtime's conversion functions. Each throws RuntimeError with the
    // runtime's text: "Utilizzo non valido di Null" for Null, "Tipo non
    // corrispondente" for a value that does not convert, "Overflow" out of range.
    bool toBool() const;       // CBool: a number is True when not 0; "Vero"/"Falso"/"True"/"False"
    qint16 toInteger() const;  // CInt: rounds half to even, Overflow outside -32768..32767
    qint32 toLong() const;     // CLng
    double toDouble() const;   // CDbl
    Currency toCurrency() const;  // CCur
    Decimal toDecimal() const;    // CDec
    DateTime toDate() const;      // CDate: "dd/MM/yyyy[ HH:mm[:ss]]", ISO, or a serial number
    QString toString() const;     // CStr: Italian forms (decimal comma, "Vero"/"Falso", dd/MM/yyyy)

    // The text a control shows: "" for Empty and Null, toString() otherwise.
    QString text() const;

    // Direct access to the stored alternative; the caller knows the type.
    template <typename T>
    const T* get() const {
        return std::get_if<T>(&value_);
    }

    // Arithmetic as the runtime does it on Variants: Null propagates; a String
    // that reads as a number counts as that number (String + String concatenates);
    // the result takes the wider type (Integer < Long < Currency < Decimal,
    // Double for a Double operand; a Date with a number gives a Date); Integer
    // and Long overflow widen to Long and Double; Currency/Decimal overflow throws.
    friend Variant operator+(const Variant& a, const Variant& b);
    friend Variant operator-(const Variant& a, const Variant& b);
    friend Variant operator*(const Variant& a, const Variant& b);
    // Always a Double (Decimal for Decimal operands); "Divisione per zero" on 0.
    friend Variant operator/(const Variant& a, const Variant& b);
    Variant operator-() const;

    // Same type and same value (a test helper, not the runtime's "=").
    friend bool operator==(const Variant& a, const Variant& b);

  private:
    struct NullTag {
        bool operator==(const NullTag&) const = default;
    };
    explicit Variant(NullTag tag) : value_(tag) {}

    std::variant<std::monostate, NullTag, bool, qint16, qint32, double, Currency, Decimal, DateTime,
                 QString>
        value_;
};

// The runtime's "a = b", "a < b"... on two values: numbers by value; Strings
// without regard to case; a number against a String that reads as a number by
// value, otherwise the number is the lesser; Dates by value; Empty as 0 or "".
// nullopt when either side is Null (the comparison is Null, never True).
std::optional<std::strong_ordering> compare(const Variant& a, const Variant& b);

// Compares the text forms of two values without regard to case: "1" equals 1.
// Null has the text "" here. This is how the copy routine checks its mode.
bool sameText(const Variant& a, const Variant& b);

// "" when the value is Null, the value itself otherwise.
Variant NoNull(const Variant& value);
// The Integer 0 when the value is Null, the value itself otherwise ("" stays "").
Variant NoNullZero(const Variant& value);

// Parses a number as the Italian-locale runtime reads text: optional sign, "."
// as a thousands separator anywhere in the integer part, "," as the decimal
// point, an optional exponent. nullopt when the text is not such a number.
std::optional<double> parseItalianNumber(QStringView text);

// Reads a date as CDate reads text: "d/M/yy[yy]" or with "-", an optional
// " H:mm[:ss]", ISO "yyyy-MM-dd[ HH:mm[:ss]]", or a time alone on day 0. Day and
// month are swapped when only the swapped order is a valid date. nullopt otherwise.
std::optional<DateTime> parseItalianDate(QStringView text);

// Rounds half to even, as the runtime's CInt, CLng and Round.
double roundHalfEven(double value, int decimals = 0);

}  // namespace lorvane::db
