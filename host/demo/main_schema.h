// The databases of a Lorvane installation as the host keeps them: the main
// database with every table the suite reads and writes, the report catalogue
// and the user preferences. Each function makes a new, empty SQLite file.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace lorvane::demo {

// Creates the main database at `path` with all its tables and indexes, empty.
// Declared types are those the data layer reads as the legacy field types
// (BOOLEAN, SMALLINT, INTEGER, DOUBLE, CURRENCY, DATETIME, TEXT(n), MEMO);
// every text column compares without regard to case (COLLATE NOCASE).
// Throws RuntimeError when the file already exists or cannot be written.
void createMainDatabase(const QString& path);

// The CREATE TABLE statements of the main database's tables named in `tables`,
// in that order and separated by ";", exactly as createMainDatabase declares
// them and without their indexes: what a report's work-database template needs
// to receive rows copied from the main database. Throws RuntimeError for a
// name that is not a table of the main database.
QByteArray mainTablesSql(const QStringList& tables);

// Creates a report catalogue at `path`: the table `stampe`, empty. Used for
// both the standard and the personalised catalogue. Throws as above.
void createCatalogueDatabase(const QString& path);

// Creates the user preferences database at `path`: the table `viste` of the
// saved grid views, empty. Throws as above.
void createPreferencesDatabase(const QString& path);

}  // namespace lorvane::demo
