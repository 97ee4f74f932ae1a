// Translates one statement of the Access (Jet) SQL dialect into SQLite SQL.
// Every statement of the module, on every connection, passes through here.
#pragma once

#include <QString>

namespace lorvane::db {

enum class StatementKind { Select, Insert, Update, Delete, Schema };

struct TranslatedSql {
    QString sql;  // the SQLite text
    StatementKind kind = StatementKind::Select;

    // A SELECT that reads one table, with no join, grouping, DISTINCT or UNION,
    // can be written back: the table, and the same statement with the table's
    // row id as its first column, named RowIdColumn.
    QString updatableTable;
    QString sqlWithRowId;

    // "INSERT INTO t SELECT ..." without a column list: the target and the
    // translated SELECT, so the caller can match the columns by name as Jet does.
    QString insertTable;
    QString insertSelect;
};

inline constexpr char RowIdColumn[] = "__rowid__";

// How deep a statement may nest: an expression (so each bracket and each
// function argument), NOT, a sign, a subquery and a bracketed join each open
// one level. Deeper statements are refused with an error, never a crash.
inline constexpr int MaxSqlNesting = 256;

// Translates `accessSql`. A statement may end with one ";"; anything after it
// is a second statement and is refused before anything runs. Throws
// RuntimeError quoting the statement and the place of the fault.
TranslatedSql translateAccessSql(const QString& accessSql);

// Parses a date literal as written between "#": "mm/dd/yyyy" (read as
// dd/mm/yyyy when the first number cannot be a month), "yyyy-mm-dd",
// "mm-dd-yyyy", each with an optional time "hh:mm[:ss] [AM|PM]"; a time alone
// is on day 0. Gives the storage form "yyyy-MM-dd HH:mm:ss", or "" if invalid.
QString accessDateLiteralToIso(const QString& text);

}  // namespace lorvane::db
