// "lorvane sql DB STATEMENT": runs one Access-dialect statement on an SQLite
// file, so that a report's SQL can be tried against a database.
#pragma once

#include <QStringList>
#include <QTextStream>

namespace lorvane::host {

// `args` are the words after "sql". A read prints a header of "name:type"
// (the legacy type code) and the rows as CSV, Null as an empty field; a write
// prints the number of rows changed. Gives 0, or 2 with the error on `err`.
int runSqlCommand(const QStringList& args, QTextStream& out, QTextStream& err);

}  // namespace lorvane::host
