// The handles that groups name.
#pragma once

#include "host/db/groups/group_cursor.h"

#include <vector>

namespace korvex {

/// Calls `use` with code and value of each handle that a record's groups refer to; the record's own is none.
template <class Use>
void forEachReference(std::string_view groups, const GroupFormat& format, Use use) {
    constexpr int kOwnHandle = 5;
    constexpr int kOwnHandleOfDimStyle = 105;
    GroupCursor cursor(groups, format);
    while (cursor.next()) {
        const bool isOwn = cursor.code() == kOwnHandle || cursor.code() == kOwnHandleOfDimStyle;
        if (!isOwn && groupType(cursor.code()) == GroupType::handle) {
            use(cursor.code(), cursor.asHandle());
        }
    }
}

/// All handles in a drawing file that are not below `first`: those of records and those that are referred to.
/// Sorted, each once; $HANDSEED and what is larger than any handle may be are left out.
std::vector<std::uint64_t> handlesFrom(std::string_view file, std::uint64_t first);

}  // namespace korvex
