// The records of a table by name.
#pragma once

#include "host/db/kernel/stub.h"

#include <string_view>

namespace korvex {

/// The record of that name. With `orErased` an erased one when no other has the name. Null when there is
/// none.
HxDbStub* recordNamed(HxDbStub& table, std::wstring_view name, bool orErased);

/// An erased record of the same table has the name.
bool hasErasedNamesake(const HxDbStub& record, std::wstring_view name);

/// Makes a record findable under its present name.
void indexName(HxDbStub& record);

/// A name that a new or renamed record may have: not empty, at most 255 characters, none of < > / \ " : ; ? *
/// | , = ` and no control characters, no blank at either end.
bool isValidSymbolName(std::wstring_view name);

}  // namespace korvex
