// Hatch boundaries: polylines, or loops of edges of four kinds.
#include "host/db/geometry/shape_readers.h"

#include <algorithm>

namespace korvex {

namespace {

constexpr double kDegree = kTurn / 360;

enum class Edge { none, line, arc, ellipse, spline };

/// Reads the boundary group by group. What a group means depends on the loop and edge that it stands in.
class BoundaryReader {
public:
    Shape read(std::string_view groups, const GroupFormat& format) {
        for (EntityCursor cursor(groups, format); cursor.next();) {
            if (!m_inLoops) {
                readHead(*cursor);
            } else if (cursor.code() == 75 || cursor.code() == 76) {
                break;
            } else {
                readLoop(*cursor);
            }
        }
        endLoop();
        m_shape.path.transform(HxGeMatrix3d::planeToWorld({m_extrusion.x, m_extrusion.y, m_extrusion.z}));
        m_shape.kind = m_shape.path.isEmpty() ? ShapeKind::none : ShapeKind::hatch;
        return std::move(m_shape);
    }

private:
    void readHead(const GroupCursor& group) {
        switch (group.code()) {
        case 30: m_elevation = group.asReal(); break;
        case 70: m_shape.filling = group.asInteger() == 1 ? Filling::evenOdd : Filling::none; break;
        case 91: m_inLoops = true; break;
        default: readCoordinate(group, 210, m_extrusion);
        }
    }

    void readLoop(const GroupCursor& group) {
        if (group.code() == 92) {
            endLoop();
            m_polyline = (group.asInteger() & 2) != 0;
        } else if (m_polyline) {
            readVertex(group);
        } else if (group.code() == 72) {
            endEdge();
            startEdge(group.asInteger());
        } else {
            readEdge(group);
        }
    }

    void readVertex(const GroupCursor& group) {
        switch (group.code()) {
        case 73: m_closed = group.asInteger() != 0; break;
        case 10:
            m_points.push_back({group.asReal(), 0, m_elevation});
            m_bulges.push_back(0);
            break;
        case 20:
            if (!m_points.empty()) {
                m_points.back().y = group.asReal();
            }
            break;
        case 42:
            if (!m_bulges.empty()) {
                m_bulges.back() = group.asReal();
            }
            break;
        default: break;
        }
    }

    void endPolyline() {
        if (!m_points.empty()) {
            m_shape.path.moveTo(m_points.front());
        }
        const std::size_t segments = m_points.empty() ? 0 : m_points.size() - (m_closed ? 0 : 1);
        for (std::size_t i = 0; i < segments; ++i) {
            m_shape.path.bulgeTo(m_points[(i + 1) % m_points.size()], m_bulges[i]);
        }
        m_points.clear();
        m_bulges.clear();
        m_closed = true;
    }

    void startEdge(long long kind) {
        m_edge = kind >= 1 && kind <= 4 ? static_cast<Edge>(kind) : Edge::none;
        m_first = m_second = {0, 0, m_elevation};
        m_ratio = m_from = m_to = 0;
        m_isLeft = true;
        m_spline = SplineData();
    }

    void readEdge(const GroupCursor& group) {
        if (m_edge == Edge::spline) {
            readSpline(group);
            return;
        }
        switch (group.code()) {
        case 10: m_first.x = group.asReal(); break;
        case 20: m_first.y = group.asReal(); break;
        case 11: m_second.x = group.asReal(); break;
        case 21: m_second.y = group.asReal(); break;
        case 40: m_ratio = group.asReal(); break;
        case 50: m_from = group.asReal() * kDegree; break;
        case 51: m_to = group.asReal() * kDegree; break;
        case 73: m_isLeft = group.asInteger() != 0; break;
        default: break;
        }
    }

    void readSpline(const GroupCursor& group) {
        const auto point = [&](std::vector<HxGePoint3d>& points, bool begins) {
            if (begins) {
                points.push_back({group.asReal(), 0, m_elevation});
            } else if (!points.empty()) {
                points.back().y = group.asReal();
            }
        };
        switch (group.code()) {
        case 94: m_spline.degree = static_cast<int>(std::min<long long>(group.asInteger(), 1000)); break;
        case 74: m_spline.ends.periodic = group.asInteger() != 0; break;
        case 40: m_spline.knots.push_back(group.asReal()); break;
        case 42: m_spline.weights.push_back(group.asReal()); break;
        case 10:
        case 20: point(m_spline.control, group.code() == 10); break;
        case 11:
        case 21: point(m_spline.fit, group.code() == 11); break;
        default: break;
        }
    }

    void endEdge() {
        switch (m_edge) {
        case Edge::none: break;
        case Edge::line:
            joinTo(m_first);
            m_shape.path.lineTo(m_second);
            break;
        case Edge::arc: addArc(circularArc(m_first, m_ratio, 0, 0), m_from, m_to); break;
        case Edge::ellipse: addEllipse(); break;
        case Edge::spline:
            m_shape.path.splineTo(m_spline.curve());
            m_started = true;
            break;
        }
        m_edge = Edge::none;
    }

    /// Small gaps between edges are drawn over, so that the loop is one.
    void joinTo(const HxGePoint3d& p) {
        if (m_started) {
            m_shape.path.lineTo(p);
        } else {
            m_shape.path.moveTo(p);
        }
        m_started = true;
    }

    /// Clockwise edges give their angles clockwise, too.
    void addArc(EllipticArc arc, double from, double to) {
        arc.from = m_isLeft ? from : -from;
        arc.sweep = m_isLeft ? sweepBetween(from, to) : -sweepBetween(from, to);
        if (m_started) {
            m_shape.path.lineTo(arc.pointAt(arc.from));
        }
        m_shape.path.arc(arc);
        m_started = true;
    }

    /// The angle on the ellipse that is seen under an angle from its centre.
    double parameter(double angle) const {
        const double turns = std::floor(angle / kTurn + 0.5);
        const double within = angle - turns * kTurn;
        return std::atan2(std::sin(within), std::cos(within) * m_ratio) + turns * kTurn;
    }

    void addEllipse() {
        EllipticArc arc;
        arc.centre = m_first;
        arc.u = {m_second.x, m_second.y};
        arc.v = HxGeVector3d(-m_second.y, m_second.x) * m_ratio;
        addArc(arc, parameter(m_from), parameter(m_to));
    }

    void endLoop() {
        if (m_polyline) {
            endPolyline();
        } else {
            endEdge();
            if (m_started) {
                m_shape.path.close();
            }
        }
        m_started = false;
    }

    Shape m_shape;
    HxGePoint3d m_extrusion{0, 0, 1};
    double m_elevation = 0;
    bool m_inLoops = false;
    bool m_polyline = false;
    bool m_closed = true;
    std::vector<HxGePoint3d> m_points;
    std::vector<double> m_bulges;
    Edge m_edge = Edge::none;
    bool m_started = false;  ///< the loop of edges has a current point
    HxGePoint3d m_first, m_second;
    double m_ratio = 0, m_from = 0, m_to = 0;
    bool m_isLeft = true;
    SplineData m_spline;
};

}  // namespace

Shape hatchShape(std::string_view groups, const GroupFormat& format) {
    return BoundaryReader().read(groups, format);
}

}  // namespace korvex
