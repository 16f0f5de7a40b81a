// What an entity looks like: its curves, whether it is filled, or the block or view that it places.
#pragma once

#include "host/db/geometry/box.h"
#include "host/db/geometry/path.h"

#include <memory>
#include <string>
#include <utility>

namespace korvex {

/// An INSERT, DIMENSION or table: a block drawn once or as an array of cells.
struct BlockPlacement {
    std::wstring block;    ///< name of the block
    HxGePoint3d position;  ///< in the plane of `extrusion`, for one that is not `asItIs`
    HxGeVector3d scale{1, 1, 1};
    double rotation = 0;
    HxGeVector3d extrusion{0, 0, 1};
    int columns = 1, rows = 1;  ///< 1 to 32,767 each; spacings are rotated but not scaled
    double columnSpacing = 0, rowSpacing = 0;
    bool asItIs = false;  ///< the block's contents lie where they are drawn (DIMENSION)

    /// From the coordinates of the block (with the block's base point) to those of the reference's owner.
    HxGeMatrix3d cell(const HxGePoint3d& base, int column, int row) const;
};

/// A rectangle of array cells, ends included; none when first > last.
struct CellRange {
    int firstColumn = 0, lastColumn = -1;
    int firstRow = 0, lastRow = -1;
    bool isEmpty() const { return firstColumn > lastColumn || firstRow > lastRow; }
};

/// The cells whose block, with the given extents in its own coordinates, may touch the box after `toView`.
/// Cells that coincide count once. May give more cells than touch, never fewer; the caller bounds its work.
CellRange cellsTouching(const BlockPlacement& placement, const HxGePoint3d& base, const Box3d& blockExtents,
                        const HxGeMatrix3d& toView, const Box& box);

/// A VIEWPORT: a window on paper, and how model space is seen through it.
struct ViewportWindow {
    HxGePoint3d centre;  ///< on paper
    double width = 0, height = 0;
    Point2 viewCentre;       ///< in the view's own plane, after the twist
    double viewHeight = 0;   ///< of model space, seen over the window's height
    double twist = 0;        ///< radians
    HxGePoint3d target;      ///< origin of the view's plane
    HxGeVector3d direction;  ///< from the target to the eye
    bool perspective = false;
    int status = 0;  ///< stacking order, 1 and up; 0 or less: not shown
    int id = 0;      ///< 1: the paper itself, no window
    bool off = false;
    std::uint64_t clip = 0;  ///< handle of the entity that bounds the window; 0: the rectangle

    bool isFloating() const { return id != 1 && status != 1; }
    bool isOn() const { return status > 0 && !off; }
    Box frame() const {
        return {{centre.x - width / 2, centre.x + width / 2}, {centre.y - height / 2, centre.y + height / 2}};
    }
    /// From model space to paper. A perspective view counts as a parallel one; a window without height or
    /// view height shows model space at its own scale.
    HxGeMatrix3d modelToPaper() const;
};

enum class ShapeKind : std::uint8_t {
    none,       ///< nothing that can be seen or touched
    point,      ///< single points (moves of the path)
    curves,     ///< lines, arcs, splines
    area,       ///< SOLID, TRACE
    text,       ///< a box around text, as near as can be told without its font
    hatch,      ///< boundary loops; filled or not
    reference,  ///< a block: `placement`; the path is empty
    viewport,   ///< `window`; the path is its frame
};

enum class Filling : std::uint8_t {
    none,     ///< the curves only
    evenOdd,  ///< inside an odd number of the path's loops
    any,      ///< inside any loop
};

/// The geometry of one entity in world coordinates (those of its owner block). Compact and lazy: curves stay
/// arcs and splines, so that a view can flatten them to its own tolerance under any transformation (see
/// flatten.h) and picks are exact. A value; copies of a reference share its placement.
struct Shape {
    ShapeKind kind = ShapeKind::none;
    Filling filling = Filling::none;
    /// An attribute definition: drawn where it stands, left out where its block is inserted.
    bool isTemplate = false;
    /// A WIPEOUT: covers what was drawn before it; the path is its frame.
    bool isMask = false;
    Path path;
    std::shared_ptr<const BlockPlacement> placement;
    std::shared_ptr<const ViewportWindow> window;
};

/// The box around the shape's curves: tight for lines and arcs, within a millionth of its size for splines,
/// unbounded for rays and construction lines; empty for references and shapes without curves.
Box3d extents(const Shape& shape);
/// The same after a transformation.
Box3d extents(const Shape& shape, const HxGeMatrix3d& transform);
/// The same, seen along z.
Box extentsInView(const Shape& shape, const HxGeMatrix3d& toView);

}  // namespace korvex
