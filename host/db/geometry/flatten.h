// Curves made into polylines for drawing.
#pragma once

#include "host/db/geometry/shape.h"

#include <vector>

namespace korvex {

using Polyline2 = std::vector<Point2>;

/// Appends the path after the transformation, seen along z, as one polyline for each run (a single point for
/// a run without steps). Curves within the window are met to the tolerance (positive, in view units); parts
/// of curves outside may be cut short, but never through the window, so that fills stay right. Rays and
/// construction lines are cut to the window, and left out when they miss it. Runs that are not finite after
/// the transformation are left out.
void flatten(const Path& path, const HxGeMatrix3d& toView, double tolerance, const Box& window,
             std::vector<Polyline2>& out);

}  // namespace korvex
