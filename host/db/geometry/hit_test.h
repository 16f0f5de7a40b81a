// Whether and how near a shape passes by the pick box.
#pragma once

#include "host/db/geometry/shape.h"

namespace korvex {

/// True when the shape touches the box after the transformation, seen along z: its curves, its points, for
/// text and filled shapes their inside too. The transformation may be any affine one. Exact up to rounding
/// for lines, within a ten-thousandth of the box for arcs and splines. A box that is empty, unbounded or not
/// a number is touched by nothing; nor does anything that is not finite after the transformation touch it.
/// References are never touched: their block's contents are.
bool hits(const Shape& shape, const HxGeMatrix3d& toView, const Box& pickBox);

/// The distance of the shape's nearest curve or point from the centre of the box, in view units; infinite
/// when the shape does not touch the box. A shape of which only the inside is touched is as far as the box's
/// nearer edge, so that what is drawn on it wins.
double hitDistance(const Shape& shape, const HxGeMatrix3d& toView, const Box& pickBox);

}  // namespace korvex
