// Steps along polylines; what lies outside of the picture only moves the pattern on.
#include "host/ui/render/dashes.h"

#include <algorithm>

namespace korvex {

namespace {

constexpr double kFinest = 3;  ///< pixels of one repetition, that of a dash and a gap

void narrow(Range& t, double start, double step, const Range& within) {
    if (step == 0) {
        t = within.contains(start) ? t : Range();
        return;
    }
    Range inside;
    inside.add((within.low - start) / step);
    inside.add((within.high - start) / step);
    t.low = std::max(t.low, inside.low);
    t.high = std::min(t.high, inside.high);
}

/// A line takes in the pixels of both of its ends, a dash those that it covers at least by half.
void trim(Point2& end, Point2 inner) {
    constexpr double kHalf = 0.499;
    const double length = std::hypot(inner.x - end.x, inner.y - end.y);
    const double part = length > 2 * kHalf ? kHalf / length : kHalf;
    end = {end.x + (inner.x - end.x) * part, end.y + (inner.y - end.y) * part};
}

}  // namespace

bool DashWalker::isTooFine(const DashPattern& pattern, double scale) {
    const double needed = std::max(kFinest, 0.5 * static_cast<double>(pattern.dashes.size()));
    return !(pattern.length * scale >= needed);
}

DashWalker::DashWalker(Canvas& canvas, const DashPattern& pattern, double scale)
    : m_canvas(canvas), m_pattern(pattern), m_scale(scale) {
    const QRect& clip = canvas.clip();
    const double margin = 8 + canvas.pen().width;
    m_window = {{clip.left() - margin, clip.left() + clip.width() + margin},
                {clip.top() - margin, clip.top() + clip.height() + margin}};
}

void DashWalker::polyline(const Point2* points, std::size_t count) {
    m_dash = 0;
    m_left = std::fabs(m_pattern.dashes[0]) * m_scale;
    for (std::size_t i = 1; i < count; ++i) {
        segment(points[i - 1], points[i]);
    }
    finish();
}

void DashWalker::segment(Point2 a, Point2 b) {
    const double length = std::hypot(b.x - a.x, b.y - a.y);
    if (!(length > 0) || !std::isfinite(length)) {
        return;
    }
    Range seen{0, 1};
    narrow(seen, a.x, b.x - a.x, m_window.x);
    narrow(seen, a.y, b.y - a.y, m_window.y);
    if (seen.isEmpty()) {
        skip(length);
        return;
    }
    if (seen.low > 0) {
        skip(seen.low * length);
    }
    walk(a, {(b.x - a.x) / length, (b.y - a.y) / length}, seen.low * length, seen.high * length);
    if (seen.high < 1) {
        skip((1 - seen.high) * length);
    }
}

void DashWalker::walk(Point2 a, Point2 step, double from, double to) {
    const auto at = [&](double distance) { return Point2{a.x + step.x * distance, a.y + step.y * distance}; };
    double place = from;
    while (place < to) {
        const double dash = m_pattern.dashes[m_dash];
        const double part = std::min(m_left, to - place);
        if (dash > 0) {
            if (m_run.empty()) {
                m_run.push_back(at(place));
            }
            m_run.push_back(at(place + part));
        } else if (dash == 0) {
            m_canvas.dot(at(place));
        }
        place += part;
        m_left -= part;
        if (!(m_left > 0)) {
            nextDash();
        }
    }
}

void DashWalker::nextDash() {
    finish();
    m_dash = (m_dash + 1) % m_pattern.dashes.size();
    m_left = std::fabs(m_pattern.dashes[m_dash]) * m_scale;
}

void DashWalker::skip(double distance) {
    finish();
    double left = std::fmod(distance, m_pattern.length * m_scale);
    for (std::size_t i = 0; i <= m_pattern.dashes.size() && left >= m_left; ++i) {
        left -= m_left;
        nextDash();
    }
    m_left -= std::min(left, m_left);
}

void DashWalker::finish() {
    if (m_run.size() > 1) {
        trim(m_run[0], m_run[1]);
        trim(m_run[m_run.size() - 1], m_run[m_run.size() - 2]);
        m_canvas.polyline(m_run);
    }
    m_run.clear();
}

}  // namespace korvex
