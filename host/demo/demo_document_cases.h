// The cases the venue's documents show beyond the generated round: two venues
// of their own whose notes have no venue's share or a rounding, one summing to
// a negative amount; a quittance head without lines; a deed whose head names
// no company and an invoice in the same period, whose lines the deeds' work
// file takes too.
#pragma once

#include <QDate>

#include "host/demo/demo_generator.h"

namespace lorvane::demo {

// The venues' codes.
inline constexpr char DocumentCaseVenue[] = "LDOC01";      // a negative sum
inline constexpr char DocumentCaseNullVenue[] = "LDOC02";  // shares all Null

// Adds the cases inside the caller's transaction, on the first day of the
// month of `lastDay`. Draws no random numbers and changes no row written
// before, so the other reports keep their figures for the venues they had.
void writeDocumentCases(Database& db, const QDate& lastDay);

}  // namespace lorvane::demo
