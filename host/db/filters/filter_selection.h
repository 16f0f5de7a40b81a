// Which filter is selected, by name: in the extended data of the layer table and of the filters' dictionary.
#pragma once

#include "host/db/kernel/stub.h"
#include "sdk/hxdbid.h"
#include "sdk/hxtypes.h"

namespace korvex {

/// False when the object has no such data.
bool readSelection(HxDbStub& holder, std::wstring& name);
/// Nothing is written when it says so already; other data of the same application stay.
Hx::ErrorStatus writeSelection(HxDbStub& holder, const std::wstring& name);

}  // namespace korvex
