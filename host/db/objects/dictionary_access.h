// Dictionary entries without opening the dictionary.
#pragma once

#include "host/db/kernel/stub.h"

namespace korvex {

/// The entry of a name; null when there is none that is not erased, or the dictionary is null or none.
HxDbStub* dictionaryEntry(HxDbStub* dictionary, std::wstring_view name);

/// The name of an entry; false when the object is not in the dictionary.
bool entryName(HxDbStub& dictionary, const HxDbStub& object, std::wstring& name);

}  // namespace korvex
