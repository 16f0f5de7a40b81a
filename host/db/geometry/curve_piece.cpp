// Cuts arcs (at most a quarter turn each) and splines (one piece a knot span, by blossoming) into pieces.
#include "host/db/geometry/curve_piece.h"

#include <algorithm>

namespace korvex {

namespace {

using Control = CurvePiece::Control;

constexpr double kQuarterTurn = 1.570796326794896619231;

Control homogeneous(Point2 p, double weight) { return {p.x * weight, p.y * weight, weight}; }

Control mixed(const Control& a, const Control& b, double t) {
    return {a.x + t * (b.x - a.x), a.y + t * (b.y - a.y), a.w + t * (b.w - a.w)};
}

void arcPieces(const PathSegment& segment, const ViewPlane& view,
               const std::function<void(const CurvePiece&)>& take) {
    const EllipticArc& arc = segment.arc;
    const int count = std::max(1, static_cast<int>(std::ceil(std::fabs(arc.sweep) / kQuarterTurn - 1e-9)));
    const double step = arc.sweep / count;
    const double weight = std::cos(step / 2);
    const Point2 centre = view(arc.centre);
    const Point2 u = view(arc.u);
    const Point2 v = view(arc.v);
    Point2 start = view(segment.start);
    for (int i = 1; i <= count; ++i) {
        const double middle = arc.from + step * (i - 0.5);
        const double reach = 1 / weight;
        const double c = std::cos(middle) * reach;
        const double s = std::sin(middle) * reach;
        const Point2 corner{centre.x + u.x * c + v.x * s, centre.y + u.y * c + v.y * s};
        const double t = arc.from + step * i;
        const Point2 end = i == count ? view(segment.end)
                                      : Point2{centre.x + u.x * std::cos(t) + v.x * std::sin(t),
                                               centre.y + u.y * std::cos(t) + v.y * std::sin(t)};
        CurvePiece piece(2);
        piece[0] = homogeneous(start, 1);
        piece[1] = homogeneous(corner, weight);
        piece[2] = homogeneous(end, 1);
        take(piece);
        start = end;
    }
}

/// The blossom of one span of a spline: de Boor's rule with an argument of its own at each step.
class SpanBlossom {
public:
    SpanBlossom(const SplineCurve& spline, const ViewPlane& view, std::size_t span)
        : m_knots(spline.knots), m_first(span - static_cast<std::size_t>(spline.degree)),
          m_degree(static_cast<std::size_t>(spline.degree)) {
        for (std::size_t j = 0; j <= m_degree; ++j) {
            const Point2 p = view(spline.control[m_first + j]);
            m_hull.add(p);
            m_local[j] = homogeneous(p, spline.weight(m_first + j));
        }
    }

    const Box& hull() const { return m_hull; }

    /// The control point whose arguments are the span's end `atEnd` times and its start otherwise.
    Control at(std::size_t atEnd) const {
        std::array<Control, SplineCurve::kMaxDegree + 1> d = m_local;
        const std::size_t span = m_first + m_degree;
        for (std::size_t r = 1; r <= m_degree; ++r) {
            const double u = r <= atEnd ? m_knots[span + 1] : m_knots[span];
            for (std::size_t j = m_degree; j >= r; --j) {
                const double low = m_knots[m_first + j];
                d[j] = mixed(d[j - 1], d[j], (u - low) / (m_knots[span + 1 + j - r] - low));
            }
        }
        return d[m_degree];
    }

private:
    const std::vector<double>& m_knots;
    std::size_t m_first;
    std::size_t m_degree;
    std::array<Control, SplineCurve::kMaxDegree + 1> m_local;
    Box m_hull;
};

void splinePieces(const SplineCurve& spline, const ViewPlane& view, const Box& wanted,
                  const std::function<void(const CurvePiece&)>& take) {
    for (std::size_t span = static_cast<std::size_t>(spline.degree); span < spline.control.size(); ++span) {
        if (!(spline.knots[span] < spline.knots[span + 1])) {
            continue;
        }
        const SpanBlossom blossom(spline, view, span);
        if (!blossom.hull().intersects(wanted)) {
            continue;
        }
        CurvePiece piece(spline.degree);
        for (int k = 0; k <= spline.degree; ++k) {
            piece[k] = blossom.at(static_cast<std::size_t>(k));
        }
        take(piece);
    }
}

}  // namespace

Box CurvePiece::hull() const {
    Box box;
    for (int i = 0; i <= m_degree; ++i) {
        const Point2 p = point(i);
        if (!std::isfinite(p.x) || !std::isfinite(p.y)) {
            return {};
        }
        box.add(p);
    }
    return box;
}

bool CurvePiece::isFlat(double tolerance) const {
    for (int i = 1; i < m_degree; ++i) {
        if (!(distanceToSegment(point(i), start(), end()) <= tolerance)) {
            return false;
        }
    }
    return true;
}

void CurvePiece::halve(CurvePiece& first, CurvePiece& second) const {
    first.m_degree = second.m_degree = m_degree;
    std::copy_n(m_control.begin(), m_degree + 1, second.m_control.begin());
    for (int done = 0; done <= m_degree; ++done) {
        first[done] = second[0];
        for (int i = 0; i < m_degree - done; ++i) {
            second[i] = mixed(second[i], second[i + 1], 0.5);
        }
    }
}

void forEachPiece(const PathSegment& segment, const ViewPlane& view, const Box& wanted,
                  const std::function<void(const CurvePiece&)>& take) {
    if (segment.verb == PathVerb::arc) {
        arcPieces(segment, view, take);
    } else if (segment.verb == PathVerb::spline) {
        splinePieces(*segment.spline, view, wanted, take);
    }
}

double distanceToSegment(Point2 p, Point2 a, Point2 b) {
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const double length2 = dx * dx + dy * dy;
    double t = length2 > 0 ? ((p.x - a.x) * dx + (p.y - a.y) * dy) / length2 : 0;
    t = std::min(std::max(t, 0.0), 1.0);
    return std::hypot(p.x - a.x - t * dx, p.y - a.y - t * dy);
}

}  // namespace korvex
