// The notes of the demo installation: weekly collections of every machine and
// the loans, advances, refills, hopper and change-machine readings, quittances
// and deeds that go with them.
#pragma once

#include <QDate>

#include "host/demo/demo_generator.h"
#include "host/demo/demo_registry.h"

namespace lorvane::demo {

struct CollectionCounts {
    qint64 notes = 0;
    qint64 readings = 0;
    qint64 lines = 0;
};

// Writes the notes from `firstDay` to `lastDay` into `db`, inside the caller's
// transaction, and moves each board's state in `registry` to its last reading.
CollectionCounts writeCollections(Database& db, Random& random, Registry& registry,
                                  const QDate& firstDay, const QDate& lastDay);

}  // namespace lorvane::demo
