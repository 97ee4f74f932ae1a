// The machine reports of the demo installation: the payout percentages
// ("PercPagamentoG", "PercPagamentoP") and the hopper and change-machine
// situations ("SaldiHopper", "SaldiCambiamonete"), their work-database
// templates and their layouts.
#pragma once

#include <QByteArray>

namespace lorvane::demo {

// Report/Percentuali.mdb: the boards, the readings and Parametri.
QByteArray percentagesTemplateSql();
// Report/SaldiMacchine.mdb: the venues, the boards, their last notes and Parametri.
QByteArray machineStateTemplateSql();

// Report/PercGlobali.lrl: each board's payout over its counters, by venue,
// with the multipliers; the warehouse as a venue of its own.
QByteArray globalPercentagesLayout();
// Report/PercParziali.lrl: each board's payout over the readings copied, by venue.
QByteArray partialPercentagesLayout();
// Report/SaldiHopper.lrl and Report/SaldiCambiamonete.lrl: the levels of the
// last note of each board, by venue.
QByteArray hopperLayout();
QByteArray changeMachineLayout();

}  // namespace lorvane::demo
