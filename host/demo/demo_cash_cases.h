// The cases the cash report and the receipts registers show beyond the weekly
// round: a loan note with two lines on the loan account, a collector whose
// code holds an apostrophe, notes without any takings, and comodato contracts
// with a share above 0, of 0 and of Null, two of them in one note.
#pragma once

#include <QDate>

#include "host/demo/demo_generator.h"

namespace lorvane::demo {

// Changes the notes written so far, inside the caller's transaction. Draws no
// random numbers and moves no total of the accounts.
void writeCashCases(Database& db);

}  // namespace lorvane::demo
