// Groups of a drawing as chains of result buffers, and back.
#pragma once

#include "host/db/groups/group_writer.h"
#include "sdk/hxads.h"

#include <string_view>

class HxDbDatabase;

namespace korvex {

/// The groups as a chain that the caller releases; null when there are none. Pointer groups (320-369,
/// 390-399, 480-481; 1005 stays text) become names of this database's objects; a handle that it lacks becomes
/// a name of no object, from which the same handle is written back.
resbuf* chainOfGroups(std::string_view groups, const GroupFormat& format, const HxDbDatabase& database);

/// Appends a chain's nodes as groups, until its end. False at the first node that no group can hold (its
/// restype in `badCode`, may be null); `out` keeps the groups of the nodes before it.
bool appendChain(GroupWriter& out, const resbuf* chain, const HxDbDatabase& database, int* badCode = nullptr);

}  // namespace korvex
