// Linetypes: lines broken into dashes, gaps and dots.
#pragma once

#include "host/ui/render/canvas.h"

#include <vector>

namespace korvex {

/// The dashes of a linetype in drawing units: above 0 a dash, below 0 a gap, 0 a dot.
struct DashPattern {
    std::vector<double> dashes;
    double length = 0;  ///< of one repetition; 0 for a solid line

    bool isSolid() const { return !(length > 0); }
};

/// Draws polylines in a pattern, which goes on around their corners.
class DashWalker {
public:
    /// `scale` makes pattern units into device pixels. `pattern` must outlive the walker.
    DashWalker(Canvas& canvas, const DashPattern& pattern, double scale);

    /// Too fine to tell from a solid line.
    static bool isTooFine(const DashPattern& pattern, double scale);

    void polyline(const Point2* points, std::size_t count);

private:
    void segment(Point2 a, Point2 b);
    void walk(Point2 a, Point2 step, double from, double to);
    void skip(double distance);
    void nextDash();
    void finish();

    Canvas& m_canvas;
    const DashPattern& m_pattern;
    double m_scale;
    Box m_window;
    std::size_t m_dash = 0;  ///< the place in the pattern, and how much of it is left
    double m_left = 0;
    Polyline2 m_run;
};

}  // namespace korvex
