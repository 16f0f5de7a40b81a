// Names of objects in entity lists: the stub's address and, as the proof of it, the handle.
#pragma once

#include "sdk/hxads.h"

class HxDbDatabase;

namespace korvex {

/// The name of the object that has a handle. A handle that the database lacks gives the name of no object,
/// from which the handle can still be told; 0 gives the cleared name.
void nameOfHandle(const HxDbDatabase& database, std::uint64_t handle, zds_name name);

/// The way back. False for a name that is neither of an object of this database nor of none.
bool handleOfName(const HxDbDatabase& database, const zds_name name, std::uint64_t& handle);

/// The object of a name in this database; null for anything but the name of one.
HxDbStub* stubOfName(const HxDbDatabase& database, const zds_name name);

/// The same in the working database and the external references that it has loaded, to any depth.
HxDbStub* stubOfName(const zds_name name);

bool isClearedName(const zds_name name);

}  // namespace korvex
