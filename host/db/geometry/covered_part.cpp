// Takes a box of the view back to the coordinates before the transformation: a column through space, cut off
// where there is nothing more.
#include "host/db/geometry/spatial_index.h"

#include <algorithm>

namespace korvex {

namespace {

void narrow(Range& range, const Range& by) {
    range.low = std::max(range.low, by.low);
    range.high = std::min(range.high, by.high);
}

/// How far along the view's z axis the column can be within the bounds: what each axis of space allows.
Range depths(const Box3d& bounds, const Box3d& foot, const HxGeVector3d& direction) {
    Range depth = Range::all();
    const auto allow = [&](const Range& within, const Range& start, double step) {
        if (std::fabs(step) > 1e-12) {
            Range reach;
            reach.add((within.low - start.high) / step);
            reach.add((within.high - start.low) / step);
            narrow(depth, reach);
        }
    };
    allow(bounds.x, foot.x, direction.x);
    allow(bounds.y, foot.y, direction.y);
    allow(bounds.z, foot.z, direction.z);
    return depth;
}

bool hasInverse(const HxGeMatrix3d& m, const HxGeMatrix3d& inverse) {
    const HxGeMatrix3d unit = m * inverse;
    double error = 0;
    for (std::size_t i = 0; i < 3; ++i) {
        for (std::size_t j = 0; j < 3; ++j) {
            error = std::max(error, std::fabs(unit.entry[i][j] - (i == j ? 1 : 0)));
        }
    }
    return error < 1e-6;
}

}  // namespace

Box3d coveredPart(const Box3d& bounds, const HxGeMatrix3d& toView, const Box& viewBox) {
    const HxGeMatrix3d inverse = toView.inverse();
    if (bounds.isEmpty() || viewBox.isEmpty() || !hasInverse(toView, inverse)) {
        return viewBox.isEmpty() ? Box3d{} : bounds;
    }
    const HxGeVector3d column{inverse.entry[0][2], inverse.entry[1][2], inverse.entry[2][2]};
    const HxGeVector3d direction = column.normal();
    const Box3d foot = Box3d{viewBox.x, viewBox.y, {0, 0}}.transformed(inverse);
    const Range depth = depths(bounds, foot, direction);
    if (depth.isEmpty()) {
        return {};
    }
    Box3d covered = foot;
    const auto stretch = [&](Range& range, double step, const Range& within) {
        if (step != 0) {
            Range reach;
            reach.add(depth.low * step);
            reach.add(depth.high * step);
            range.low += reach.low;
            range.high += reach.high;
        }
        const double slack = 1e-9 * (std::fabs(range.low) + std::fabs(range.high));
        range = {range.low - slack, range.high + slack};
        narrow(range, within);
    };
    stretch(covered.x, direction.x, bounds.x);
    stretch(covered.y, direction.y, bounds.y);
    stretch(covered.z, direction.z, bounds.z);
    return covered;
}

}  // namespace korvex
