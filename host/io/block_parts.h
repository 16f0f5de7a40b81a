// BLOCK and ENDBLK: what a block record has around its entities in the file.
#pragma once

#include "host/db/kernel/database_imp.h"

namespace korvex {

/// Values of a BLOCK that are not its record's.
struct BlockHeader {
    int flags = 0;      ///< group 70: 1 anonymous, 4 external reference, 8 overlay
    std::wstring path;  ///< of an external reference
};

/// Gives a block record the part that it lacks. It comes and goes with its record, so that no undo need know
/// of it.
HxDbStub& addBlockBegin(HxDbStub& record, const BlockHeader& header);
HxDbStub& addBlockEnd(HxDbStub& record);

}  // namespace korvex
