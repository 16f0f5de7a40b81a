// What the reading of a drawing needs to know of a record before it is an object: found without copying, and
// without walking farther than needed.
#pragma once

#include "host/db/groups/group_types.h"

namespace korvex {

/// How far to look.
enum class HeadPart : std::uint8_t {
    identity,  ///< handle and owner
    name,      ///< and the name: tables, table records, blocks
};

/// Values as the drawing spells them, blanks around them taken off; null views and 0 where there are none.
struct RecordHead {
    std::uint64_t handle = 0;
    std::uint64_t owner = 0;
    std::string_view name;
    std::string_view layer;
    std::string_view linetype;
    std::string_view style;
    bool onPaper = false;
};

/// Of tables, table records, blocks and objects.
RecordHead recordHead(std::string_view record, const GroupFormat& format, int handleCode, HeadPart part);
/// Handle, owner, space, layer and linetype of an entity, and the style of a text.
RecordHead entityHead(std::string_view record, const GroupFormat& format, int handleCode);

/// The name of a table, a table record or a block; null when it has none.
std::string_view rawName(std::string_view record, const GroupFormat& format);

}  // namespace korvex
