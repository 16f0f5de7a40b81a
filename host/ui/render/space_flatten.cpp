// Arcs in equal steps, splines by halving.
#include "host/ui/render/space_flatten.h"

#include <algorithm>
#include <limits>

namespace korvex {

namespace {

constexpr int kMostArcSteps = 4096;
constexpr int kMostHalvings = 10;

class SpaceFlattener {
public:
    SpaceFlattener(double tolerance, std::vector<double>& out) : m_tolerance(tolerance), m_out(out) {}

    void add(const PathSegment& segment) {
        switch (segment.verb) {
        case PathVerb::move:
            if (m_started) {
                const double none = std::numeric_limits<double>::quiet_NaN();
                m_out.insert(m_out.end(), {none, 0, 0});
            }
            m_started = true;
            addPoint(segment.end);
            break;
        case PathVerb::line: addPoint(segment.end); break;
        case PathVerb::arc: addArc(segment); break;
        case PathVerb::spline: addSpline(segment); break;
        case PathVerb::ray:
        case PathVerb::xline: break;
        }
    }

private:
    void addPoint(const HxGePoint3d& p) { m_out.insert(m_out.end(), {p.x, p.y, p.z}); }

    void addArc(const PathSegment& segment) {
        const EllipticArc& arc = segment.arc;
        const double radius = std::max(arc.u.length(), arc.v.length());
        const double within = std::min(std::max(m_tolerance / radius, 1e-9), 0.1);
        const double step = 2 * std::acos(1 - within);
        const int count =
            static_cast<int>(std::min(std::ceil(std::fabs(arc.sweep) / step), double{kMostArcSteps}));
        for (int i = 1; i < count; ++i) {
            addPoint(arc.pointAt(arc.from + arc.sweep * i / count));
        }
        addPoint(segment.end);
    }

    void addSpline(const PathSegment& segment) {
        const SplineCurve& spline = *segment.spline;
        HxGePoint3d from = segment.start;
        for (std::size_t span = static_cast<std::size_t>(spline.degree); span < spline.control.size();
             ++span) {
            const double low = spline.knots[span];
            const double high = spline.knots[span + 1];
            if (low < high) {
                const HxGePoint3d to = spline.pointAt(high);
                addPart(spline, low, high, from, to, spline.degree == 1 ? kMostHalvings : 0);
                from = to;
            }
        }
    }

    void addPart(const SplineCurve& spline, double low, double high, const HxGePoint3d& from,
                 const HxGePoint3d& to, int depth) {
        const double middle = (low + high) / 2;
        const HxGePoint3d between = spline.pointAt(middle);
        const bool isFlat = isNear(between, from, to) &&
                            isNear(spline.pointAt(low + (high - low) * 0.3), from, to) &&
                            isNear(spline.pointAt(low + (high - low) * 0.8), from, to);
        if (depth >= kMostHalvings || isFlat) {
            addPoint(to);
            return;
        }
        addPart(spline, low, middle, from, between, depth + 1);
        addPart(spline, middle, high, between, to, depth + 1);
    }

    bool isNear(const HxGePoint3d& p, const HxGePoint3d& a, const HxGePoint3d& b) const {
        const HxGeVector3d chord = b - a;
        const double length2 = chord.dot(chord);
        const double t = length2 > 0 ? std::min(std::max((p - a).dot(chord) / length2, 0.0), 1.0) : 0;
        return p.distanceTo(a + chord * t) <= m_tolerance;
    }

    double m_tolerance;
    std::vector<double>& m_out;
    bool m_started = false;
};

}  // namespace

void flattenInSpace(const Path& path, double tolerance, std::vector<double>& out) {
    SpaceFlattener flattener(tolerance, out);
    path.forEach([&](const PathSegment& segment) {
        flattener.add(segment);
        return true;
    });
}

}  // namespace korvex
