// Where references and viewports put what they show, and which cells of an array a box can touch.
#include "host/db/geometry/shape.h"

#include <algorithm>

namespace korvex {

namespace {

/// The whole numbers from 0 to count - 1 within the range, which may be off by rounding.
void narrow(int& first, int& last, const Range& range) {
    constexpr double kSlack = 1e-6;
    const double low = range.low - kSlack * (1 + std::fabs(range.low));
    const double high = range.high + kSlack * (1 + std::fabs(range.high));
    if (low > first) {
        first = low > last ? last + 1 : static_cast<int>(std::ceil(low));
    }
    if (high < last) {
        last = high < first ? first - 1 : static_cast<int>(std::floor(high));
    }
}

/// Steps i with i * step in `reach`.
void narrowAlong(int& first, int& last, double step, const Range& reach) {
    if (step != 0) {
        Range range;
        range.add(reach.low / step);
        range.add(reach.high / step);
        narrow(first, last, range);
    }
}

bool isNull(Point2 p) { return p.x == 0 && p.y == 0; }

/// Both steps count: solves i * a + j * b for the corners of the reach.
void narrowBoth(CellRange& cells, Point2 a, Point2 b, const Box& reach) {
    const double det = a.x * b.y - a.y * b.x;
    const double size = std::hypot(a.x, a.y) * std::hypot(b.x, b.y);
    if (!(std::fabs(det) > 1e-9 * size)) {
        return;
    }
    Range columns;
    Range rows;
    for (const double x : {reach.x.low, reach.x.high}) {
        for (const double y : {reach.y.low, reach.y.high}) {
            columns.add((x * b.y - y * b.x) / det);
            rows.add((a.x * y - a.y * x) / det);
        }
    }
    narrow(cells.firstColumn, cells.lastColumn, columns);
    narrow(cells.firstRow, cells.lastRow, rows);
}

}  // namespace

HxGeMatrix3d BlockPlacement::cell(const HxGePoint3d& base, int column, int row) const {
    if (asItIs) {
        return {};
    }
    return HxGeMatrix3d::planeToWorld(extrusion) *
           HxGeMatrix3d::translation({position.x, position.y, position.z}) *
           HxGeMatrix3d::rotationZ(rotation) *
           HxGeMatrix3d::translation({column * columnSpacing, row * rowSpacing}) *
           HxGeMatrix3d::scaling(scale.x, scale.y, scale.z) *
           HxGeMatrix3d::translation({-base.x, -base.y, -base.z});
}

CellRange cellsTouching(const BlockPlacement& placement, const HxGePoint3d& base, const Box3d& blockExtents,
                        const HxGeMatrix3d& toView, const Box& box) {
    CellRange cells{0, placement.columns - 1, 0, placement.rows - 1};
    const HxGeMatrix3d first = toView * placement.cell(base, 0, 0);
    const Box shown = blockExtents.inView(first);
    if (shown.isEmpty() || box.isEmpty()) {
        return {};
    }
    const auto step = [&](int column, int row) {
        const HxGeVector3d d =
            toView * (placement.cell(base, column, row) * HxGePoint3d()) - first * HxGePoint3d();
        return Point2{d.x, d.y};
    };
    const Point2 a = step(1, 0);
    const Point2 b = step(0, 1);
    if (isNull(a)) {
        cells.firstColumn = cells.lastColumn;
    }
    if (isNull(b)) {
        cells.firstRow = cells.lastRow;
    }
    const Box reach{{box.x.low - shown.x.high, box.x.high - shown.x.low},
                    {box.y.low - shown.y.high, box.y.high - shown.y.low}};
    const bool oneColumn = cells.firstColumn == cells.lastColumn;
    const bool oneRow = cells.firstRow == cells.lastRow;
    if (!reach.isBounded() || (oneColumn && oneRow)) {
        return box.intersects(shown) || !oneColumn || !oneRow ? cells : CellRange{};
    }
    if (!oneColumn && !oneRow) {
        narrowBoth(cells, a, b, reach);
    } else if (oneRow) {
        narrowAlong(cells.firstColumn, cells.lastColumn, a.x, reach.x);
        narrowAlong(cells.firstColumn, cells.lastColumn, a.y, reach.y);
    } else {
        narrowAlong(cells.firstRow, cells.lastRow, b.x, reach.x);
        narrowAlong(cells.firstRow, cells.lastRow, b.y, reach.y);
    }
    return cells;
}

HxGeMatrix3d ViewportWindow::modelToPaper() const {
    const double ratio = height / viewHeight;
    const double scale = std::isfinite(ratio) && ratio > 0 ? ratio : 1;
    return HxGeMatrix3d::translation({centre.x, centre.y, centre.z}) *
           HxGeMatrix3d::scaling(scale, scale, scale) *
           HxGeMatrix3d::translation({-viewCentre.x, -viewCentre.y}) * HxGeMatrix3d::rotationZ(twist) *
           HxGeMatrix3d::planeToWorld(direction).inverse() *
           HxGeMatrix3d::translation({-target.x, -target.y, -target.z});
}

}  // namespace korvex
