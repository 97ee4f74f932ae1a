// The takings report of the demo installation ("StampaIntrodotto"): its
// work-database template and its two layouts. The screen copies into the work
// file the collection notes of a period, their lines and machine readings, the
// venues, the companies and the boards, and one row of Parametri.
#pragma once

#include <QByteArray>

namespace lorvane::demo {

// The statements that make the template Report/Introdotto.mdb: the copied
// tables as the main database declares them, Parametri, and the one index the
// layouts' queries use (they look up each row's venue by its code).
QByteArray takingsTemplateSql();

// Report/Introdotto.lrl: one line per note, grouped by venue.
QByteArray takingsByVenueLayout();

// Report/IntrodottoConcessionario.lrl: the readings summed per venue, grouped
// by the concessionaire of the reading.
QByteArray takingsByConcessionaireLayout();

}  // namespace lorvane::demo
