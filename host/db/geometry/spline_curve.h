// Non-uniform rational B-splines: what a SPLINE record or a hatch edge describes.
#pragma once

#include "hxge.h"

#include <vector>

namespace korvex {

/// A curve of `degree` 1 to kMaxDegree with n > degree control points, n + degree + 1 knots that never
/// decrease, and n positive weights (or none: all 1). Only the functions below make one.
struct SplineCurve {
    static constexpr int kMaxDegree = 25;

    int degree = 0;
    std::vector<double> knots;
    std::vector<double> weights;
    std::vector<HxGePoint3d> control;

    bool isValid() const { return degree > 0; }
    double weight(std::size_t i) const { return weights.empty() ? 1.0 : weights[i]; }
    double firstParameter() const { return knots[static_cast<std::size_t>(degree)]; }
    double lastParameter() const { return knots[control.size()]; }
    /// The point at a parameter, held within the curve's domain.
    HxGePoint3d pointAt(double parameter) const;
};

/// Checks and completes what a file says: knots that do not fit become uniform ones clamped at the ends,
/// weights that do not fit or are not positive become 1, a degree that is too high for the control points
/// or beyond kMaxDegree becomes as high as they allow. Invalid when fewer than two control points are left or
/// one of them is not usable (not finite).
SplineCurve makeSpline(int degree, std::vector<double> knots, std::vector<double> weights,
                       std::vector<HxGePoint3d> control);

/// End conditions of a curve through points; null vectors stand for none.
struct FitEnds {
    HxGeVector3d startTangent, endTangent;
    bool periodic = false;  ///< the last point equals the first and the curve is smooth there
};

/// The cubic curve with continuous curvature through the points, chord lengths as parameters. Ends without
/// tangent have no curvature. Invalid for fewer than two different points.
SplineCurve splineThrough(const std::vector<HxGePoint3d>& points, const FitEnds& ends);

/// Lengths and coordinates beyond this are damage: their squares still are finite numbers.
inline constexpr double kLargestCoordinate = 1e100;

inline bool isUsable(double v) { return v >= -kLargestCoordinate && v <= kLargestCoordinate; }
inline bool isUsable(const HxGePoint3d& p) { return isUsable(p.x) && isUsable(p.y) && isUsable(p.z); }
inline bool isUsable(const HxGeVector3d& v) { return isUsable(v.x) && isUsable(v.y) && isUsable(v.z); }

}  // namespace korvex
