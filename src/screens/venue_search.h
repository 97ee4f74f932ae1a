// The venue search of the frame: the statement built from the criteria typed,
// and the tree node of each venue found.
#pragma once

#include <QString>

#include "db/recordset.h"
#include "screens/frame_criteria.h"

namespace lorvane::screens {

class KeyedTree;

// "SELECT * FROM AnagraficaLocali al " and the filter of the criteria set, each
// in its AND form when the filter has text and in its WHERE form otherwise,
// then the period: venues with a collection between the two dates. Texts go in
// as typed.
QString sqlRicercaLocali(const FrameCriteria& criteria);

// The text of a venue's node: Insegna and Citta, each cut or padded to 20
// characters, joined by " - ".
QString venueNodeText(const QString& insegna, const QString& citta);

// Adds the venue of the recordset's current row under the root, ticked, with
// key "A" + CodLocale. Throws when the venue is already in the tree.
void addVenueNode(KeyedTree& tree, db::Recordset& venue);

}  // namespace lorvane::screens
