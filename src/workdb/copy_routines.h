// The shared tools of every preparation: opening a work table, copying rows
// from the main database into it column by column, and reading with Null in mind.
#pragma once

#include <QString>

#include "db/recordset.h"
#include "db/variant.h"

class QComboBox;
class QProgressBar;

namespace lorvane::workdb {

using db::NoNull;
using db::NoNullZero;

// A new recordset on ConnessioneTemporanea, on the statement `comando`.
db::RecordsetPtr ApriTabellaTemporanea(const QString& comando);

// Copies every row of `origine` into `destinazione`, the columns named in
// `colonne` (separated by ","), in that order. A Boolean destination column
// never receives Null (it gets 0). With `controllo` 1 (compared as text) a row
// whose `chiave` value is already in the destination is skipped, looked up with
// the destination's Filter, which stays on the last key. Each failed statement
// shows its text and the copy goes on with the next: a row is written without
// a column that failed, a key filter that fails leaves the last one in force
// (so the row is tested against it), and a failed move or end test does not
// end the copy; a source that fails to move on two passes in a row does.
// `barra` (may be null) counts the rows and is put back as it was. Pending
// window events run after each row.
void CopiaRecordset(QProgressBar* barra, const QString& colonne, db::Recordset& origine,
                    db::Recordset& destinazione, const db::Variant& controllo,
                    const db::Variant& chiave = db::Variant());

// CopiaRecordset without a bar.
void CopiaTabella(const QString& colonne, db::Recordset& origine, db::Recordset& destinazione,
                  const db::Variant& controllo, const db::Variant& chiave = db::Variant());

// Replaces the entries of `combo` with the field `campo` (a name, or a
// position) of every row, unless the recordset is empty. A Null fails.
void RiempiCombo(db::Recordset& origine, const db::Variant& campo, QComboBox* combo);

}  // namespace lorvane::workdb
