// Curves seen in the view plane, cut into rational Bezier pieces: exact for arcs and splines under any affine
// transformation, bounded by their control points, and halved at will.
#pragma once

#include "host/db/geometry/box.h"
#include "host/db/geometry/path.h"

#include <array>
#include <functional>

namespace korvex {

/// The first two rows of a transformation: what is seen along z.
class ViewPlane {
public:
    using Row = std::array<double, 4>;
    ViewPlane(const Row& x, const Row& y) : m_x(x), m_y(y) {}
    explicit ViewPlane(const HxGeMatrix3d& m) : m_x(m.entry[0]), m_y(m.entry[1]) {}

    Point2 operator()(const HxGePoint3d& p) const { return {along(m_x, p) + m_x[3], along(m_y, p) + m_y[3]}; }
    Point2 operator()(const HxGeVector3d& v) const { return {along(m_x, v), along(m_y, v)}; }

private:
    template <class T>
    static double along(const Row& r, const T& p) {
        return r[0] * p.x + r[1] * p.y + r[2] * p.z;
    }
    Row m_x, m_y;
};

/// A rational Bezier curve in the view plane with positive weights.
class CurvePiece {
public:
    struct Control {
        double x = 0, y = 0, w = 1;  ///< homogeneous: the point is (x / w, y / w)
    };

    CurvePiece() = default;
    explicit CurvePiece(int degree) : m_degree(degree) {}
    int degree() const { return m_degree; }
    Control& operator[](int i) { return m_control[static_cast<std::size_t>(i)]; }
    Point2 point(int i) const {
        const Control& c = m_control[static_cast<std::size_t>(i)];
        return {c.x / c.w, c.y / c.w};
    }
    Point2 start() const { return point(0); }
    Point2 end() const { return point(m_degree); }
    /// The box of the control points, which holds the curve; empty when one of them is not finite.
    Box hull() const;
    /// All control points lie within the tolerance of the straight line from start to end.
    bool isFlat(double tolerance) const;
    void halve(CurvePiece& first, CurvePiece& second) const;

private:
    int m_degree = 0;
    std::array<Control, SplineCurve::kMaxDegree + 1> m_control;
};

/// Halving stops here even if a piece is not flat yet: it is shorter than a double can tell by then.
inline constexpr int kMaxHalvings = 48;

/// Calls take(piece) for each piece of an arc or spline in order; pieces outside `wanted` may be left out.
void forEachPiece(const PathSegment& segment, const ViewPlane& view, const Box& wanted,
                  const std::function<void(const CurvePiece&)>& take);

/// Distance of p from the straight line a to b, both ends included.
double distanceToSegment(Point2 p, Point2 a, Point2 b);

}  // namespace korvex
