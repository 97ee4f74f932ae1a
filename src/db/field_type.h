// The legacy type code of a field, taken from the column's declared type, and
// the conversions of values between SQLite storage and that type.
#pragma once

#include <QString>
#include <optional>

#include "db/variant.h"

struct sqlite3_stmt;
struct sqlite3_value;
struct sqlite3_context;

namespace lorvane::db {

// The record-set API's DataTypeEnum codes that the tables use.
namespace DataType {
inline constexpr int Empty = 0;
inline constexpr int SmallInt = 2;
inline constexpr int Integer = 3;
inline constexpr int Single = 4;
inline constexpr int Double = 5;
inline constexpr int Currency = 6;
inline constexpr int Date = 7;
inline constexpr int Boolean = 11;
inline constexpr int UnsignedTinyInt = 17;
inline constexpr int Numeric = 131;
inline constexpr int VarWChar = 202;
inline constexpr int LongVarWChar = 203;
}  // namespace DataType

struct FieldType {
    int code = DataType::Empty;  // Empty: not known yet (an expression with only Nulls so far)
    int definedSize = 0;         // characters of a text column, 0 when unbounded
};

// BOOLEAN/YESNO/BIT -> 11, SMALLINT/SHORT -> 2, INTEGER/LONG/COUNTER -> 3,
// SINGLE/REAL -> 4, DOUBLE/FLOAT -> 5, CURRENCY/MONEY -> 6, DATETIME/DATE -> 7,
// BYTE -> 17, DECIMAL/NUMERIC -> 131, TEXT/VARCHAR/CHAR -> 202, MEMO -> 203;
// "TEXT(50)" gives the size. Empty code for no or an unknown declaration.
FieldType fieldTypeFromDeclaration(const char* declared);

// The type of an expression, from its first value that is not Null: whole
// numbers Long, other numbers Double, a text "yyyy-MM-dd HH:mm:ss" a Date,
// other text a text. Empty code for Null.
FieldType fieldTypeFromValue(sqlite3_value* value);

// Seconds since day 0 of a "yyyy-MM-dd HH:mm:ss" or "yyyy-MM-dd" text, read
// without allocating; nullopt for any other text.
std::optional<qint64> parseIsoSeconds(const char* text, int length);

// A stored value as the field's type gives it. A value that does not convert
// is given as SQLite holds it, never refused.
Variant variantFromSqlite(sqlite3_value* value, int code);

// A value assigned to a field of `type`, converted to that type. Throws
// RuntimeError naming the field when it does not convert or a text is longer
// than the field's size.
Variant convertForField(const Variant& value, const FieldType& type, const QString& fieldName);

// Binds a value in its storage form: Boolean as -1/0, dates as
// "yyyy-MM-dd HH:mm:ss", money and decimals as floating point, Empty as Null.
void bindVariant(sqlite3_stmt* statement, int index, const Variant& value);

// Gives a value as an SQLite function result, in the same storage form.
void resultVariant(sqlite3_context* context, const Variant& value);

}  // namespace lorvane::db
