// Bounding boxes of shapes.
#include "host/db/geometry/shape.h"

#include "host/db/geometry/curve_piece.h"

namespace korvex {

namespace {

constexpr double kTurn = 6.283185307179586476925;

/// The angle's place after `from`, within one turn.
double turnsAfter(double angle, double from) {
    const double t = std::fmod(angle - from, kTurn);
    return t < 0 ? t + kTurn : t;
}

bool sweeps(const EllipticArc& arc, double angle) {
    const double from = arc.sweep < 0 ? arc.from + arc.sweep : arc.from;
    return turnsAfter(angle, from) <= std::fabs(arc.sweep);
}

/// Adds the places where c + u cos t + v sin t is greatest and least.
void addExtremes(Range& range, const EllipticArc& arc, double c, double u, double v) {
    const double reach = std::hypot(u, v);
    const double angle = std::atan2(v, u);
    if (sweeps(arc, angle)) {
        range.add(c + reach);
    }
    if (sweeps(arc, angle + kTurn / 2)) {
        range.add(c - reach);
    }
}

class ExtentsFinder {
public:
    explicit ExtentsFinder(const ViewPlane& view) : m_view(view) {}

    Box of(const Path& path) {
        path.forEach([&](const PathSegment& segment) {
            add(segment);
            return true;
        });
        return m_box;
    }

private:
    void add(const PathSegment& segment) {
        m_box.add(m_view(segment.end));
        switch (segment.verb) {
        case PathVerb::move:
        case PathVerb::line: break;
        case PathVerb::arc: addArc(segment.arc); break;
        case PathVerb::spline:
            forEachPiece(segment, m_view, Box::all(),
                         [this](const CurvePiece& piece) { addPiece(piece, 0); });
            break;
        case PathVerb::ray: addDirection(m_view(segment.direction), 1); break;
        case PathVerb::xline:
            addDirection(m_view(segment.direction), 1);
            addDirection(m_view(segment.direction), -1);
            break;
        }
    }

    void addArc(const EllipticArc& arc) {
        const Point2 c = m_view(arc.centre);
        const Point2 u = m_view(arc.u);
        const Point2 v = m_view(arc.v);
        addExtremes(m_box.x, arc, c.x, u.x, v.x);
        addExtremes(m_box.y, arc, c.y, u.y, v.y);
    }

    void addDirection(Point2 d, double sign) {
        addEnd(m_box.x, d.x * sign);
        addEnd(m_box.y, d.y * sign);
    }

    static void addEnd(Range& range, double d) {
        if (d != 0) {
            range.add(d > 0 ? Range::all().high : Range::all().low);
        }
    }

    void addPiece(const CurvePiece& piece, int depth) {
        m_box.add(piece.start());
        m_box.add(piece.end());
        const Box hull = piece.hull();
        const double slack = 1e-6 * (hull.x.size() + hull.y.size());
        const double size = 1e-6 * (m_box.x.size() + m_box.y.size());
        const double margin = slack > size ? slack : size;
        const Box near{{m_box.x.low - margin, m_box.x.high + margin},
                       {m_box.y.low - margin, m_box.y.high + margin}};
        if (hull.isEmpty() || near.contains(hull) || depth == kMaxHalvings) {
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
};

}  // namespace

Box extentsInView(const Shape& shape, const HxGeMatrix3d& toView) {
    const ViewPlane view(toView);
    return ExtentsFinder(view).of(shape.path);
}

Box3d extents(const Shape& shape) { return extents(shape, HxGeMatrix3d()); }

Box3d extents(const Shape& shape, const HxGeMatrix3d& transform) {
    const ViewPlane side(transform.entry[2], transform.entry[2]);
    const Box xy = extentsInView(shape, transform);
    return {xy.x, xy.y, ExtentsFinder(side).of(shape.path).x};
}

}  // namespace korvex
