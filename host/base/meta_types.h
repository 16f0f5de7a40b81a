// Whose code Qt's meta types lead to, so that they can be taken back before the code goes.
#pragma once

struct link_map;

namespace korvex {

/// Unregisters the meta types whose functions lie in the library. False when one is in use elsewhere as well
/// (another library registered it after this one): the code must then stay in memory.
bool unregisterMetaTypes(const link_map* library);

}  // namespace korvex
