// The box around a transformed box: the sum of what each axis contributes, infinite ends included.
#include "host/db/geometry/box.h"

namespace korvex {

namespace {

using Row = std::array<double, 4>;

/// A factor of 0 takes nothing from an infinite range.
void addScaled(Range& sum, double factor, const Range& range) {
    if (factor == 0) {
        return;
    }
    const double a = factor * range.low;
    const double b = factor * range.high;
    sum.low += a < b ? a : b;
    sum.high += a < b ? b : a;
}

Range along(const Row& row, const Box3d& box) {
    Range sum{row[3], row[3]};
    addScaled(sum, row[0], box.x);
    addScaled(sum, row[1], box.y);
    addScaled(sum, row[2], box.z);
    return sum;
}

}  // namespace

Box3d Box3d::transformed(const HxGeMatrix3d& m) const {
    if (isEmpty()) {
        return {};
    }
    return {along(m.entry[0], *this), along(m.entry[1], *this), along(m.entry[2], *this)};
}

Box Box3d::inView(const HxGeMatrix3d& toView) const {
    if (isEmpty()) {
        return {};
    }
    return {along(toView.entry[0], *this), along(toView.entry[1], *this)};
}

Box Box::transformed(const HxGeMatrix3d& m) const { return Box3d{x, y, {0, 0}}.inView(m); }

}  // namespace korvex
