// The readers behind entityShape, one for each kind of record that needs more than a few lines.
#pragma once

#include "host/db/geometry/entity_fields.h"
#include "host/db/geometry/entity_shape.h"

namespace korvex {

inline constexpr double kTurn = 6.283185307179586476925;

/// Counter-clockwise from `from` to `to` in radians: above 0, at most one turn.
double sweepBetween(double from, double to);

/// A circular arc in the plane.
EllipticArc circularArc(const HxGePoint3d& centre, double radius, double from, double sweep);

/// Groups of a spline, wherever they stand: SPLINE records and hatch edges.
struct SplineData {
    int degree = 3;
    std::vector<double> knots, weights;
    std::vector<HxGePoint3d> control, fit;
    FitEnds ends;

    /// By the control points when there are some, else through the fit points.
    SplineCurve curve();
};

/// LWPOLYLINE, and a POLYLINE with its vertices: lines, bulges, widths, meshes.
Shape lightPolylineShape(std::string_view groups, const GroupFormat& format);
Shape polylineShape(std::string_view groups, const std::vector<EntityRecord>& vertices,
                    const GroupFormat& format);

/// The boundary of a HATCH; filled when it is a solid one.
Shape hatchShape(std::string_view groups, const GroupFormat& format);

/// IMAGE and WIPEOUT: the frame, or what it is clipped to.
Shape imageShape(std::string_view groups, const GroupFormat& format);
Shape maskShape(std::string_view groups, const GroupFormat& format);

/// TEXT, ATTRIB, ATTDEF, MTEXT: boxes by the measure of an average font.
Shape lineTextShape(const EntityFields& fields, std::string_view type);
Shape paragraphShape(const EntityFields& fields);

/// A VIEWPORT and its frame; the view of old drawings is in extended data.
Shape viewportShape(std::string_view groups, const GroupFormat& format);

}  // namespace korvex
