// The cases the label screens show beyond the boards of the round: boards in
// the store mounted in a finished product with no venue, with an empty and a
// missing bar code, a board whose article is no board article, and names with
// apostrophes, for boards and cabinets.
#pragma once

#include "host/demo/demo_generator.h"

namespace lorvane::demo {

// Adds the rows inside the caller's transaction. Draws no random numbers, and
// the rows stand in the store with no collection, so no other report's figures move.
void writeLabelCases(Database& db);

}  // namespace lorvane::demo
