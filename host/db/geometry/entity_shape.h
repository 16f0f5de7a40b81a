// Makes shapes from the records of entities.
#pragma once

#include "host/db/geometry/shape.h"
#include "host/db/groups/group_types.h"

#include <string_view>
#include <vector>

namespace korvex {

/// An entity's record: its type and its groups in the drawing's form.
struct EntityRecord {
    std::string_view type;
    std::string_view groups;
};

/// The shape of an entity; of kind `none` for what is hidden (group 60, invisible attributes), what is not
/// modelled, and what its groups leave without extent. Values that are no numbers or out of any range leave
/// out the piece that they belong to.
/// `vertices` are the records that follow a POLYLINE up to its end. Attributes have shapes of their own:
/// they lie in the coordinates of their INSERT's owner.
Shape entityShape(const EntityRecord& entity, const std::vector<EntityRecord>& vertices,
                  const GroupFormat& format);

}  // namespace korvex
