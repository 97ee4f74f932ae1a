// The cases the notes reports show beyond the weekly round: slips of another
// document type and rows dated outside their slip's period; advances with
// machine lines, without any line on the advances' cash account, and one whose
// lines sum to Null; refills without machine lines; collection lines worked
// out otherwise than on the profit, at venue percentages either side of 25.
#pragma once

#include <QDate>

#include "host/demo/demo_generator.h"

namespace lorvane::demo {

// Changes and adds to the data written so far, inside the caller's
// transaction. Draws no random numbers, so the data written before keep
// their figures.
void writeNoteCases(Database& db, const QDate& lastDay);

}  // namespace lorvane::demo
