// Where an entity is marked when it is selected.
#pragma once

#include "host/db/geometry/shape.h"

#include <vector>

namespace korvex {

/// Ends, middles, centres, quarters, insertion points: in the coordinates of the entity's space, each place
/// once for neighbouring steps. Not more than `most` of them; of fills and texts only what shows where they
/// are.
std::vector<HxGePoint3d> gripPoints(const Shape& shape, std::size_t most);

}  // namespace korvex
