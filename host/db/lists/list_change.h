// An entity list applied to an object.
#pragma once

#include "sdk/hxads.h"

struct HxDbStub;

namespace korvex {

/// Gives the object what the list says, all or nothing; the list need not name it. RTNORM; RTREJ when it is
/// not acceptable or the object cannot be changed.
int applyList(HxDbStub& stub, const resbuf* list);

}  // namespace korvex
