// The cases the machine reports show beyond the weekly round: boards with
// multipliers other than 1, boards collected another way, the warehouse
// boards' last collections spread over the period, and a board checked twice
// on its last hopper day.
#pragma once

#include <QDate>

#include "host/demo/demo_generator.h"

namespace lorvane::demo {

// Changes the boards and notes written so far, inside the caller's transaction.
// Draws no random numbers, so the data written before keep their figures.
void writeMachineCases(Database& db, const QDate& firstDay, const QDate& lastDay);

}  // namespace lorvane::demo
