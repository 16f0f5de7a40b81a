// Dictionary entries without opening the dictionary.
#pragma once

#include "host/db/kernel/write_access.h"

namespace korvex {

/// The entry of a name; null when there is none that is not erased, or the dictionary is null or none.
HxDbStub* dictionaryEntry(HxDbStub* dictionary, std::wstring_view name);

/// The name of an entry; false when the object is not in the dictionary.
bool entryName(HxDbStub& dictionary, const HxDbStub& object, std::wstring& name);

/// The entry of a name in an object's extension dictionary; null when there is none that is not erased.
HxDbStub* extensionEntry(HxDbStub& holder, std::wstring_view name);

/// A dictionary of a name in an object's extension dictionary; both are made when they are missing.
/// eNotApplicable in drawings without extension dictionaries, eWrongClass when the entry is something else;
/// or what keeps the objects from being opened.
Hx::ErrorStatus makeExtensionDictionaryEntry(HxDbStub& holder, const wchar_t* name,
                                             WriteAccess::Upgrade whose, HxDbStub*& dictionary);

}  // namespace korvex
