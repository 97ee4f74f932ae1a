// Steps that many preparations share: a statement of the main database copied
// into a work table with its count, and the one-line heading row.
#pragma once

#include <QString>

#include "db/recordset.h"

class QProgressBar;

namespace lorvane::screens {

// Opens `sql` through the host and copies its rows into the work table
// `table` with the columns `colonne`: through CopiaRecordset moving `barra`,
// or CopiaTabella when it is null. Gives the number of rows of the source as
// the 16-bit count of a run (RuntimeError "Overflow" beyond 32767).
qint16 copiaDalPrincipale(const QString& sql, const QString& table, const char* colonne,
                          QProgressBar* barra = nullptr);

// The same copy for a preparation that goes on after a failure: opening the
// source, opening the work table and the copy each show their own failure and
// the next step runs (a recordset left unopened fails where it is used).
// Gives the work table's recordset, null when it could not be opened.
db::RecordsetPtr copiaProseguendo(const QString& sql, const QString& table, const char* colonne,
                                  QProgressBar* barra = nullptr);

// Adds the heading row of Parametri with its field Parametri set to `testo`.
void scriviParametri(const QString& testo);

}  // namespace lorvane::screens
