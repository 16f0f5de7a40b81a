// Clips lines to the pick box, halves curves down to it, and counts crossings for what lies inside a loop.
#include "host/db/geometry/hit_test.h"

#include "host/db/geometry/curve_piece.h"

#include <algorithm>

namespace korvex {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

bool isFinite(Point2 p) { return std::isfinite(p.x) && std::isfinite(p.y); }

/// Distance of the farthest corner of a box from the origin.
double radius(const Box& b) {
    return std::hypot(std::max(std::fabs(b.x.low), std::fabs(b.x.high)),
                      std::max(std::fabs(b.y.low), std::fabs(b.y.high)));
}

double gap(const Range& r) { return std::max(0.0, std::max(r.low, -r.high)); }

/// The part of a straight line from t.low to t.high that lies in a range along one axis.
bool clip(Range& t, double start, double step, const Range& range) {
    if (step == 0) {
        return range.contains(start);
    }
    Range inside;
    inside.add((range.low - start) / step);
    inside.add((range.high - start) / step);
    t.low = std::max(t.low, inside.low);
    t.high = std::min(t.high, inside.high);
    return t.low <= t.high;
}

/// The view plane with the box's centre as its origin, so that nearness is not lost to large coordinates.
ViewPlane centredView(const HxGeMatrix3d& m, Point2 centre) {
    ViewPlane::Row x = m.entry[0];
    ViewPlane::Row y = m.entry[1];
    x[3] -= centre.x;
    y[3] -= centre.y;
    return {x, y};
}

Box centredBox(const Box& box, Point2 centre) {
    return {{box.x.low - centre.x, box.x.high - centre.x}, {box.y.low - centre.y, box.y.high - centre.y}};
}

/// Looks for curves that touch the box.
class CurveProbe {
public:
    /// With `nearest` it goes on after the first touch, to find the nearest.
    CurveProbe(const ViewPlane& view, const Box& box, bool nearest)
        : m_view(view), m_box(box), m_nearest(nearest), m_tolerance(1e-4 * std::min(box.x.high, box.y.high)) {
    }

    double distance() const { return m_distance; }
    bool isDone() const { return !m_nearest && m_distance < kInfinity; }

    void add(const Shape& shape) {
        const bool points = shape.kind == ShapeKind::point;
        shape.path.forEach([&](const PathSegment& segment) {
            add(segment, points);
            return !isDone();
        });
    }

private:
    void add(const PathSegment& segment, bool points) {
        switch (segment.verb) {
        case PathVerb::move:
            if (points) {
                addLine(m_view(segment.end), {}, {0, 0});
            }
            break;
        case PathVerb::line: addChord(m_view(segment.start), m_view(segment.end)); break;
        case PathVerb::arc:
        case PathVerb::spline:
            forEachPiece(segment, m_view, m_box, [this](const CurvePiece& piece) { addPiece(piece, 0); });
            break;
        case PathVerb::ray: addLine(m_view(segment.start), m_view(segment.direction), {0, kInfinity}); break;
        case PathVerb::xline: addLine(m_view(segment.start), m_view(segment.direction), Range::all()); break;
        }
    }

    void addChord(Point2 a, Point2 b) { addLine(a, {b.x - a.x, b.y - a.y}, {0, 1}); }

    void addLine(Point2 a, Point2 step, Range t) {
        if (!isFinite(a) || !isFinite(step)) {
            return;
        }
        const double nearest = -(a.x * step.x + a.y * step.y) / (step.x * step.x + step.y * step.y);
        if (!clip(t, a.x, step.x, m_box.x) || !clip(t, a.y, step.y, m_box.y)) {
            return;
        }
        double at = std::min(std::max(nearest, t.low), t.high);
        at = std::isfinite(at) ? at : 0;
        m_distance = std::min(m_distance, std::hypot(a.x + at * step.x, a.y + at * step.y));
    }

    void addPiece(const CurvePiece& piece, int depth) {
        const Box hull = piece.hull();
        if (isDone() || !hull.intersects(m_box) || std::hypot(gap(hull.x), gap(hull.y)) >= m_distance) {
            return;
        }
        if (depth == kMaxHalvings || piece.isFlat(m_tolerance + 1e-15 * radius(hull))) {
            addChord(piece.start(), piece.end());
            return;
        }
        CurvePiece first;
        CurvePiece second;
        piece.halve(first, second);
        addPiece(first, depth + 1);
        addPiece(second, depth + 1);
    }

    const ViewPlane& m_view;
    Box m_box;
    bool m_nearest;
    double m_tolerance;
    double m_distance = kInfinity;
};

/// Counts how often a path crosses the way from the origin to the right. Every run is taken back to its
/// start, so that ends that meet but for rounding leave no gap to slip through.
class InsideProbe {
public:
    InsideProbe(const ViewPlane& view, double tolerance) : m_view(view), m_tolerance(tolerance) {}

    bool isInside(const Shape& shape) {
        const bool each = shape.filling == Filling::any;
        bool inside = false;
        shape.path.forEach([&](const PathSegment& segment) {
            if (segment.verb == PathVerb::move) {
                goTo(m_first);
                inside = inside || (each && m_odd);
                m_odd = m_odd && !each;
                m_first = m_last = m_view(segment.end);
            } else if (segment.verb == PathVerb::line) {
                goTo(m_view(segment.end));
            } else {
                forEachPiece(segment, m_view, Box::all(),
                             [this](const CurvePiece& piece) { addPiece(piece, 0); });
            }
            return true;
        });
        goTo(m_first);
        return inside || m_odd;
    }

private:
    void goTo(Point2 p) {
        if ((m_last.y >= 0) != (p.y >= 0)) {
            const double x = m_last.x - m_last.y * ((p.x - m_last.x) / (p.y - m_last.y));
            m_odd = m_odd != (x > 0);
        }
        m_last = p;
    }

    void addPiece(const CurvePiece& piece, int depth) {
        const Box hull = piece.hull();
        if (hull.isEmpty()) {
            return;
        }
        const bool straight = hull.x.low > 0 || hull.x.high < 0 || hull.y.high < 0 || hull.y.low > 0;
        if (straight || depth == kMaxHalvings || piece.isFlat(m_tolerance)) {
            goTo(piece.end());
            return;
        }
        CurvePiece first;
        CurvePiece second;
        piece.halve(first, second);
        addPiece(first, depth + 1);
        addPiece(second, depth + 1);
    }

    const ViewPlane& m_view;
    double m_tolerance;
    Point2 m_first, m_last;
    bool m_odd = false;
};

double distanceOf(const Shape& shape, const HxGeMatrix3d& toView, const Box& pickBox, bool nearest) {
    if (shape.path.isEmpty() || pickBox.isEmpty() || !pickBox.isBounded()) {
        return kInfinity;
    }
    const Point2 centre = pickBox.centre();
    const ViewPlane view = centredView(toView, centre);
    const Box box = centredBox(pickBox, centre);
    CurveProbe probe(view, box, nearest);
    probe.add(shape);
    if (probe.distance() < kInfinity || shape.filling == Filling::none) {
        return probe.distance();
    }
    const double reach = std::min(box.x.high, box.y.high);
    if (InsideProbe(view, 0.5 * reach).isInside(shape)) {
        return reach;
    }
    return kInfinity;
}

}  // namespace

bool hits(const Shape& shape, const HxGeMatrix3d& toView, const Box& pickBox) {
    return distanceOf(shape, toView, pickBox, false) < kInfinity;
}

double hitDistance(const Shape& shape, const HxGeMatrix3d& toView, const Box& pickBox) {
    return distanceOf(shape, toView, pickBox, true);
}

}  // namespace korvex
