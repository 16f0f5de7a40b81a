// Curves made into points in space, for views from any side.
#pragma once

#include "host/db/geometry/path.h"

#include <vector>

namespace korvex {

/// Appends x, y, z of each point, with a NaN in x before each run but the first. Arcs and splines are met to
/// the tolerance (positive, drawing units), in no more than some thousand steps each. Rays are left out.
void flattenInSpace(const Path& path, double tolerance, std::vector<double>& out);

}  // namespace korvex
