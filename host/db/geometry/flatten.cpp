// Halves curves until they are straight enough, or out of the window.
#include "host/db/geometry/flatten.h"

#include "host/db/geometry/curve_piece.h"

#include <algorithm>

namespace korvex {

namespace {

class Flattener {
public:
    Flattener(const ViewPlane& view, double tolerance, const Box& window, std::vector<Polyline2>& out)
        : m_view(view), m_tolerance(tolerance), m_window(window), m_out(out) {}

    void add(const PathSegment& segment) {
        switch (segment.verb) {
        case PathVerb::move:
            m_out.emplace_back();
            addPoint(m_view(segment.end));
            break;
        case PathVerb::line: addPoint(m_view(segment.end)); break;
        case PathVerb::arc:
        case PathVerb::spline:
            forEachPiece(segment, m_view, Box::all(),
                         [this](const CurvePiece& piece) { addPiece(piece, 0); });
            break;
        case PathVerb::ray: addLine(segment, {0, Range::all().high}); break;
        case PathVerb::xline: addLine(segment, Range::all()); break;
        }
    }

private:
    void addPoint(Point2 p) {
        if (std::isfinite(p.x) && std::isfinite(p.y)) {
            m_out.back().push_back(p);
        }
    }

    void addPiece(const CurvePiece& piece, int depth) {
        const Box hull = piece.hull();
        if (depth == kMaxHalvings || !hull.intersects(m_window) || piece.isFlat(m_tolerance)) {
            addPoint(piece.end());
            return;
        }
        CurvePiece first;
        CurvePiece second;
        piece.halve(first, second);
        addPiece(first, depth + 1);
        addPiece(second, depth + 1);
    }

    /// Where the line enters and leaves the window along one axis.
    static void clip(Range& t, double start, double step, const Range& range) {
        if (step == 0) {
            t = range.contains(start) ? t : Range();
            return;
        }
        Range inside;
        inside.add((range.low - start) / step);
        inside.add((range.high - start) / step);
        t.low = std::max(t.low, inside.low);
        t.high = std::min(t.high, inside.high);
    }

    void addLine(const PathSegment& segment, Range t) {
        const Point2 p = m_view(segment.start);
        const Point2 d = m_view(segment.direction);
        clip(t, p.x, d.x, m_window.x);
        clip(t, p.y, d.y, m_window.y);
        if (!t.isEmpty() && t.isBounded()) {
            m_out.emplace_back();
            addPoint({p.x + t.low * d.x, p.y + t.low * d.y});
            addPoint({p.x + t.high * d.x, p.y + t.high * d.y});
        }
    }

    const ViewPlane& m_view;
    double m_tolerance;
    const Box& m_window;
    std::vector<Polyline2>& m_out;
};

}  // namespace

void flatten(const Path& path, const HxGeMatrix3d& toView, double tolerance, const Box& window,
             std::vector<Polyline2>& out) {
    const ViewPlane view(toView);
    const std::size_t before = out.size();
    Flattener flattener(view, tolerance, window, out);
    path.forEach([&](const PathSegment& segment) {
        flattener.add(segment);
        return true;
    });
    const auto first = out.begin() + static_cast<std::ptrdiff_t>(before);
    out.erase(std::remove_if(first, out.end(), [](const Polyline2& run) { return run.empty(); }), out.end());
}

}  // namespace korvex
