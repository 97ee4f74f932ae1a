// The cases the ledger cards show beyond the notes of the period: every
// customer's balance brought forward from the day before the first, a venue
// with a balance and no line in the period, one whose balance is zero, one
// with nothing at all, and lines on accounts of level 1 and 3.
#pragma once

#include <QDate>

#include "host/demo/demo_generator.h"

namespace lorvane::demo {

// Adds notes, venues and accounts inside the caller's transaction; changes no
// row written before and draws no random numbers.
void writeLedgerCases(Database& db, const QDate& firstDay);

}  // namespace lorvane::demo
