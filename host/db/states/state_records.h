// Where a drawing keeps its layer states.
#pragma once

#include "host/db/kernel/stub.h"

namespace korvex {

/// In the layer table's extension dictionary.
inline constexpr wchar_t kStateDictionary[] = L"ACAD_LAYERSTATES";

/// An xrecord that the states' dictionary owns; also when the two are erased.
bool isLayerState(HxDbStub& record);

}  // namespace korvex
