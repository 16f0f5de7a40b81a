// Looks up the value type of a group code.
#include "host/db/groups/group_types.h"

#include "host/db/groups/group_table.h"

namespace korvex {

GroupType groupType(int code) {
    return groups::isPossibleCode(code) ? groups::codeEntry(code).type : GroupType::text;
}

bool isKnownGroupCode(int code) { return groups::isPossibleCode(code) && groups::codeEntry(code).known; }

}  // namespace korvex
