// The Access functions and comparison rules that every connection carries:
// Nz, Year, Format, InStr... as SQLite functions, the operators the dialect
// translator calls (jet_add, jet_concat...), a NOCASE collation that folds
// case for all Unicode letters, and a LIKE that does the same.
#pragma once

#include <QStringView>

struct sqlite3;

namespace lorvane::db {

// Registers everything on `db`. Throws RuntimeError if SQLite refuses.
void registerAccessFunctions(sqlite3* db);

// The collation: compares two UTF-8 texts by their case-folded code points.
int compareFoldedUtf8(const char* a, int aLength, const char* b, int bLength);

// LIKE with "%" (any run) and "_" (one character), without regard to case.
// `escape` is 0 when the pattern has no escape character.
bool likeMatches(QStringView pattern, QStringView text, char32_t escape = 0);

}  // namespace lorvane::db
