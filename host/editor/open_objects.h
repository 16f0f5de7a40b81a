// Finding objects that somebody left open.
#pragma once

#include "sdk/hxdbdatabase.h"

#include <string>
#include <vector>

namespace korvex {

/// The objects that are open now and are not in `known`, as "LAYER 1F (for write)", at most five of them;
/// empty when there are none. `known` becomes what is open now.
std::wstring newlyOpenObjects(const HxDbDatabase& database, std::vector<HxDbStub*>& known);

}  // namespace korvex
