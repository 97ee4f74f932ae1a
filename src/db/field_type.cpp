#include "db/field_type.h"

#include <sqlite3.h>

#include <QByteArray>
#include <cmath>
#include <cstring>

#include "platform/runtime_error.h"

namespace lorvane::db {

using namespace Qt::StringLiterals;

namespace {

struct TypeName {
    const char* name;
    int code;
};

constexpr TypeName typeNames[] = {
    {"BOOLEAN", DataType::Boolean},
    {"YESNO", DataType::Boolean},
    {"BIT", DataType::Boolean},
    {"LOGICAL", DataType::Boolean},
    {"SMALLINT", DataType::SmallInt},
    {"SHORT", DataType::SmallInt},
    {"INTEGER", DataType::Integer},
    {"LONG", DataType::Integer},
    {"COUNTER", DataType::Integer},
    {"INT", DataType::Integer},
    {"AUTOINCREMENT", DataType::Integer},
    {"SINGLE", DataType::Single},
    {"REAL", DataType::Single},
    {"DOUBLE", DataType::Double},
    {"FLOAT", DataType::Double},
    {"CURRENCY", DataType::Currency},
    {"MONEY", DataType::Currency},
    {"DATETIME", DataType::Date},
    {"DATE", DataType::Date},
    {"TIMESTAMP", DataType::Date},
    {"BYTE", DataType::UnsignedTinyInt},
    {"DECIMAL", DataType::Numeric},
    {"NUMERIC", DataType::Numeric},
    {"TEXT", DataType::VarWChar},
    {"VARCHAR", DataType::VarWChar},
    {"CHAR", DataType::VarWChar},
    {"STRING", DataType::VarWChar},
    {"NVARCHAR", DataType::VarWChar},
    {"NCHAR", DataType::VarWChar},
    {"MEMO", DataType::LongVarWChar},
    {"LONGTEXT", DataType::LongVarWChar},
    {"NTEXT", DataType::LongVarWChar},
};

// Days from 1970-01-01 to a civil date (proleptic Gregorian).
constexpr qint64 daysFromCivil(qint64 y, unsigned m, unsigned d) {
    y -= m <= 2;
    const qint64 era = (y >= 0 ? y : y - 399) / 400;
    const unsigned yoe = unsigned(y - era * 400);
    const unsigned doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
    const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + qint64(doe) - 719468;
}

constexpr qint64 dayZeroFromUnix = -daysFromCivil(1899, 12, 30);

bool readDigits(const char* text, int count, int* out) {
    int value = 0;
    for (int i = 0; i < count; ++i) {
        if (text[i] < '0' || text[i] > '9') return false;
        value = value * 10 + (text[i] - '0');
    }
    *out = value;
    return true;
}

QString textOf(sqlite3_value* value) {
    const auto* data = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return QString::fromUtf8(data, sqlite3_value_bytes(value));
}

// The value as SQLite holds it: numbers as Long or Double, a stored date as a
// Date, other text as a String.
Variant rawVariant(sqlite3_value* value) {
    switch (sqlite3_value_type(value)) {
        case SQLITE_INTEGER:
            return Variant::fromInt64(sqlite3_value_int64(value));
        case SQLITE_FLOAT:
            return Variant(sqlite3_value_double(value));
        case SQLITE_NULL:
            return Variant::null();
        default: {
            const auto* data = reinterpret_cast<const char*>(sqlite3_value_text(value));
            const int length = sqlite3_value_bytes(value);
            if (length == 19) {
                if (const auto seconds = parseIsoSeconds(data, length)) {
                    return Variant(DateTime::fromSeconds(*seconds));
                }
            }
            return Variant(QString::fromUtf8(data, length));
        }
    }
}

template <typename Convert>
Variant convertOrRaw(sqlite3_value* value, Convert convert) {
    const Variant raw = rawVariant(value);
    try {
        return convert(raw);
    } catch (const RuntimeError&) {
        return raw;
    }
}

}  // namespace

FieldType fieldTypeFromDeclaration(const char* declared) {
    FieldType type;
    if (!declared) return type;
    const QByteArray text = QByteArray(declared).trimmed().toUpper();
    const qsizetype paren = text.indexOf('(');
    const QByteArray name = (paren < 0 ? text : text.left(paren)).trimmed();
    for (const TypeName& entry : typeNames) {
        if (name == entry.name) {
            type.code = entry.code;
            break;
        }
    }
    if (type.code == DataType::VarWChar && paren >= 0) {
        type.definedSize = text.mid(paren + 1, text.indexOf(')') - paren - 1).trimmed().toInt();
    }
    return type;
}

FieldType fieldTypeFromValue(sqlite3_value* value) {
    FieldType type;
    switch (sqlite3_value_type(value)) {
        case SQLITE_INTEGER:
            type.code = DataType::Integer;
            break;
        case SQLITE_FLOAT:
            type.code = DataType::Double;
            break;
        case SQLITE_NULL:
            break;
        default: {
            const auto* data = reinterpret_cast<const char*>(sqlite3_value_text(value));
            const int length = sqlite3_value_bytes(value);
            type.code =
                length == 19 && parseIsoSeconds(data, length) ? DataType::Date : DataType::VarWChar;
        }
    }
    return type;
}

std::optional<qint64> parseIsoSeconds(const char* text, int length) {
    if (length != 10 && length != 19) return std::nullopt;
    int y = 0, m = 0, d = 0, hh = 0, mm = 0, ss = 0;
    if (!readDigits(text, 4, &y) || text[4] != '-' || !readDigits(text + 5, 2, &m) ||
        text[7] != '-' || !readDigits(text + 8, 2, &d)) {
        return std::nullopt;
    }
    if (length == 19) {
        if ((text[10] != ' ' && text[10] != 'T') || !readDigits(text + 11, 2, &hh) ||
            text[13] != ':' || !readDigits(text + 14, 2, &mm) || text[16] != ':' ||
            !readDigits(text + 17, 2, &ss)) {
            return std::nullopt;
        }
    }
    static constexpr int monthDays[] = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = (y % 4 == 0 && y % 100 != 0) || y % 400 == 0;
    if (m < 1 || m > 12 || d < 1 || d > monthDays[m - 1] || (m == 2 && d == 29 && !leap) ||
        hh > 23 || mm > 59 || ss > 59) {
        return std::nullopt;
    }
    const qint64 days = daysFromCivil(y, unsigned(m), unsigned(d)) + dayZeroFromUnix;
    return days * 86400 + hh * 3600 + mm * 60 + ss;
}

Variant variantFromSqlite(sqlite3_value* value, int code) {
    const int storage = sqlite3_value_type(value);
    if (storage == SQLITE_NULL) return Variant::null();
    switch (code) {
        case DataType::Boolean:
            if (storage == SQLITE_INTEGER) return Variant(sqlite3_value_int64(value) != 0);
            return convertOrRaw(value, [](const Variant& v) { return Variant(v.toBool()); });
        case DataType::SmallInt:
        case DataType::Integer:
        case DataType::UnsignedTinyInt:
            if (storage == SQLITE_INTEGER) {
                const qint64 number = sqlite3_value_int64(value);
                if (code == DataType::SmallInt && number >= -32768 && number <= 32767) {
                    return Variant(qint16(number));
                }
                return Variant::fromInt64(number);
            }
            return convertOrRaw(value, [](const Variant& v) { return Variant(v.toLong()); });
        case DataType::Single:
        case DataType::Double:
            if (storage != SQLITE_TEXT) return Variant(sqlite3_value_double(value));
            return convertOrRaw(value, [](const Variant& v) { return Variant(v.toDouble()); });
        case DataType::Currency:
            if (storage == SQLITE_INTEGER) {
                return convertOrRaw(value,
                                    [](const Variant& v) { return Variant(v.toCurrency()); });
            }
            if (storage == SQLITE_FLOAT) {
                return convertOrRaw(value, [value](const Variant&) {
                    return Variant(Currency::fromDouble(sqlite3_value_double(value)));
                });
            }
            return convertOrRaw(value, [](const Variant& v) { return Variant(v.toCurrency()); });
        case DataType::Date:
            if (storage == SQLITE_TEXT) {
                const auto* data = reinterpret_cast<const char*>(sqlite3_value_text(value));
                if (const auto seconds = parseIsoSeconds(data, sqlite3_value_bytes(value))) {
                    return Variant(DateTime::fromSeconds(*seconds));
                }
            }
            if (storage == SQLITE_INTEGER || storage == SQLITE_FLOAT) {
                return Variant(DateTime::fromSerial(sqlite3_value_double(value)));
            }
            return convertOrRaw(value, [](const Variant& v) { return Variant(v.toDate()); });
        case DataType::Numeric:
            if (storage == SQLITE_INTEGER)
                return Variant(Decimal::fromInt(sqlite3_value_int64(value)));
            if (storage == SQLITE_FLOAT) {
                return convertOrRaw(value, [value](const Variant&) {
                    return Variant(Decimal::fromDouble(sqlite3_value_double(value)));
                });
            }
            if (const auto exact = Decimal::parse(textOf(value), u'.')) return Variant(*exact);
            return convertOrRaw(value, [](const Variant& v) { return Variant(v.toDecimal()); });
        case DataType::VarWChar:
        case DataType::LongVarWChar:
            if (storage == SQLITE_TEXT) return Variant(textOf(value));
            return convertOrRaw(value, [](const Variant& v) { return Variant(v.toString()); });
        default:
            return rawVariant(value);
    }
}

Variant convertForField(const Variant& value, const FieldType& type, const QString& fieldName) {
    if (value.isNull() || value.isEmpty()) return Variant::null();
    // A value already of the field's own kind, as a copy between like columns
    // gives, is kept as it is (only text still has its length checked).
    const VarType kind = value.type();
    const bool alreadyFits = (kind == VarType::Boolean && type.code == DataType::Boolean) ||
                             (kind == VarType::Integer && type.code == DataType::SmallInt) ||
                             (kind == VarType::Long && type.code == DataType::Integer) ||
                             (kind == VarType::Double &&
                              (type.code == DataType::Double || type.code == DataType::Single)) ||
                             (kind == VarType::Currency && type.code == DataType::Currency) ||
                             (kind == VarType::Date && type.code == DataType::Date);
    if (alreadyFits) return value;
    try {
        switch (type.code) {
            case DataType::Boolean:
                return Variant(value.toBool());
            case DataType::SmallInt:
                return Variant(value.toInteger());
            case DataType::Integer:
                return Variant(value.toLong());
            case DataType::UnsignedTinyInt: {
                const qint32 number = value.toLong();
                if (number < 0 || number > 255) throw RuntimeError(u"Overflow"_s);
                return Variant(number);
            }
            case DataType::Single:
            case DataType::Double:
                return Variant(value.toDouble());
            case DataType::Currency:
                return Variant(value.toCurrency());
            case DataType::Date:
                return Variant(value.toDate());
            case DataType::Numeric:
                return Variant(value.toDecimal());
            case DataType::VarWChar:
            case DataType::LongVarWChar: {
                QString text = value.toString();
                if (type.definedSize > 0 && text.size() > type.definedSize) {
                    throw RuntimeError(
                        u"Il valore \"%1\" è troppo lungo per il campo '%2' (al massimo %3 caratteri)"_s
                            .arg(text, fieldName)
                            .arg(type.definedSize));
                }
                return Variant(std::move(text));
            }
            default:
                return value;
        }
    } catch (const RuntimeError& error) {
        if (error.message().contains(fieldName)) throw;
        throw RuntimeError(u"%1: valore \"%2\" non valido per il campo '%3'"_s.arg(
            error.message(), value.text(), fieldName));
    }
}

void bindVariant(sqlite3_stmt* statement, int index, const Variant& value) {
    switch (value.type()) {
        case VarType::Empty:
        case VarType::Null:
            sqlite3_bind_null(statement, index);
            break;
        case VarType::Boolean:
            sqlite3_bind_int(statement, index, *value.get<bool>() ? -1 : 0);
            break;
        case VarType::Integer:
            sqlite3_bind_int(statement, index, *value.get<qint16>());
            break;
        case VarType::Long:
            sqlite3_bind_int(statement, index, *value.get<qint32>());
            break;
        case VarType::Double:
            sqlite3_bind_double(statement, index, *value.get<double>());
            break;
        case VarType::Currency:
            sqlite3_bind_double(statement, index, value.get<Currency>()->toDouble());
            break;
        case VarType::Decimal:
            sqlite3_bind_double(statement, index, value.get<Decimal>()->toDouble());
            break;
        case VarType::Date: {
            char iso[19];
            value.get<DateTime>()->writeIso(iso);
            sqlite3_bind_text(statement, index, iso, 19, SQLITE_TRANSIENT);
            break;
        }
        case VarType::String: {
            const QString* text = value.get<QString>();
            sqlite3_bind_text16(statement, index, text->utf16(), int(text->size() * 2),
                                SQLITE_TRANSIENT);
            break;
        }
    }
}

void resultVariant(sqlite3_context* context, const Variant& value) {
    switch (value.type()) {
        case VarType::Empty:
        case VarType::Null:
            sqlite3_result_null(context);
            break;
        case VarType::Boolean:
            sqlite3_result_int(context, *value.get<bool>() ? -1 : 0);
            break;
        case VarType::Integer:
            sqlite3_result_int(context, *value.get<qint16>());
            break;
        case VarType::Long:
            sqlite3_result_int(context, *value.get<qint32>());
            break;
        case VarType::Double:
            sqlite3_result_double(context, *value.get<double>());
            break;
        case VarType::Currency:
            sqlite3_result_double(context, value.get<Currency>()->toDouble());
            break;
        case VarType::Decimal:
            sqlite3_result_double(context, value.get<Decimal>()->toDouble());
            break;
        case VarType::Date: {
            char iso[19];
            value.get<DateTime>()->writeIso(iso);
            sqlite3_result_text(context, iso, 19, SQLITE_TRANSIENT);
            break;
        }
        case VarType::String: {
            const QString* text = value.get<QString>();
            sqlite3_result_text16(context, text->utf16(), int(text->size() * 2), SQLITE_TRANSIENT);
            break;
        }
    }
}

}  // namespace lorvane::db
