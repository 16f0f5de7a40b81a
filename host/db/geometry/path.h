// Runs of lines, elliptic arcs and splines in space, kept as the curves that they are.
#pragma once

#include "host/db/geometry/spline_curve.h"

#include <cstdint>
#include <vector>

namespace korvex {

/// centre + u cos t + v sin t for t from `from` to `from + sweep` (radians, sweep within one turn either
/// way). Any affine transformation of a circle or an ellipse has this form.
struct EllipticArc {
    HxGePoint3d centre;
    HxGeVector3d u, v;
    double from = 0;
    double sweep = 0;

    HxGePoint3d pointAt(double t) const { return centre + u * std::cos(t) + v * std::sin(t); }
};

enum class PathVerb : std::uint8_t {
    move,    ///< begins a run at `end`
    line,    ///< straight from `start` to `end`
    arc,     ///< `arc`, from `start` to `end`
    spline,  ///< `spline`, from `start` to `end`
    ray,     ///< from `start` without end in `direction`; a run of its own
    xline,   ///< through `start` both ways in `direction`; a run of its own
};

/// One step of a path. `spline` points into the path.
struct PathSegment {
    PathVerb verb = PathVerb::move;
    HxGePoint3d start, end;
    HxGeVector3d direction;
    EllipticArc arc;
    const SplineCurve* spline = nullptr;
};

/// A list of runs in one array of steps and one of points, 25 bytes a polyline vertex. What is not usable
/// (not finite, or beyond kLargestCoordinate) is left out and the run breaks there, so that a path holds
/// usable values only.
class Path {
public:
    void moveTo(const HxGePoint3d& p);
    void lineTo(const HxGePoint3d& p);
    /// Starts a run at the arc's start unless the current point is there. The end is given, to meet exactly
    /// what follows.
    void arcTo(const EllipticArc& arc, const HxGePoint3d& end);
    void arc(const EllipticArc& arc) { arcTo(arc, arc.pointAt(arc.from + arc.sweep)); }
    /// From the current point to p by a bulge: the tangent of a quarter of the angle that the arc spans,
    /// positive for counter-clockwise about z. A straight line for a bulge of (nearly) 0.
    void bulgeTo(const HxGePoint3d& p, double bulge);
    void splineTo(SplineCurve spline);
    void ray(const HxGePoint3d& base, const HxGeVector3d& direction, bool bothWays);
    /// A line back to where the run began, if it is not there.
    void close();

    void transform(const HxGeMatrix3d& m);

    bool isEmpty() const { return m_verbs.empty(); }
    std::size_t steps() const { return m_verbs.size(); }

    /// visit(const PathSegment&) -> bool for each step in order; stops when it returns false.
    template <class Visit>
    void forEach(Visit&& visit) const {
        Reader reader(*this);
        while (reader.next()) {
            if (!visit(reader.segment())) {
                return;
            }
        }
    }

private:
    class Reader {
    public:
        explicit Reader(const Path& path) : m_path(path) {}
        bool next();
        const PathSegment& segment() const { return m_segment; }

    private:
        const HxGePoint3d& take() { return m_path.m_points[m_point++]; }
        const Path& m_path;
        PathSegment m_segment;
        std::size_t m_verb = 0, m_point = 0, m_spline = 0;
    };

    void begin(const HxGePoint3d& p);

    std::vector<PathVerb> m_verbs;
    std::vector<HxGePoint3d> m_points;
    std::vector<SplineCurve> m_splines;
    HxGePoint3d m_first, m_current;
    bool m_running = false;  ///< there is a current point
};

}  // namespace korvex
