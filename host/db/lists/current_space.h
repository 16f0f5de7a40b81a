// The block record that new entities go into.
#pragma once

#include "host/db/kernel/entity_access.h"

namespace korvex {

/// Model space, or the active paper space with the paper itself current; null when the drawing lacks it.
inline HxDbStub* currentSpaceRecord(const HxDbDatabase& database) {
    return database.tilemode() || database.cvport() > 1 ? modelSpace(database) : paperSpace(database);
}

}  // namespace korvex
