// Builds paths and steps through them.
#include "host/db/geometry/path.h"

#include <algorithm>

namespace korvex {

namespace {

constexpr double kTurn = 6.283185307179586476925;

HxGePoint3d asPoint(const HxGeVector3d& v) { return {v.x, v.y, v.z}; }
HxGeVector3d asVector(const HxGePoint3d& p) { return {p.x, p.y, p.z}; }

HxGeVector3d transformed(const HxGeMatrix3d& m, const HxGePoint3d& vector) {
    return m * vector - m * HxGePoint3d();
}

bool isSame(const HxGePoint3d& a, const HxGePoint3d& b) { return a.x == b.x && a.y == b.y && a.z == b.z; }

/// Equal up to rounding at the size of the arc.
bool meets(const HxGePoint3d& a, const HxGePoint3d& b, const EllipticArc& arc) {
    const double size = std::fabs(a.x) + std::fabs(a.y) + std::fabs(a.z) + arc.u.length() + arc.v.length();
    return a.distanceTo(b) <= 1e-9 * size;
}

bool isUsable(const EllipticArc& arc) {
    return korvex::isUsable(arc.centre) && korvex::isUsable(arc.u) && korvex::isUsable(arc.v) &&
           korvex::isUsable(arc.from) && std::fabs(arc.sweep) <= kTurn * (1 + 1e-9);
}

}  // namespace

void Path::begin(const HxGePoint3d& p) {
    m_verbs.push_back(PathVerb::move);
    m_points.push_back(p);
    m_first = m_current = p;
    m_running = true;
}

void Path::moveTo(const HxGePoint3d& p) {
    m_running = false;
    if (korvex::isUsable(p)) {
        begin(p);
    }
}

void Path::lineTo(const HxGePoint3d& p) {
    if (!m_running || !korvex::isUsable(p)) {
        moveTo(p);
        return;
    }
    m_verbs.push_back(PathVerb::line);
    m_points.push_back(p);
    m_current = p;
}

void Path::arcTo(const EllipticArc& arc, const HxGePoint3d& end) {
    if (!isUsable(arc) || !korvex::isUsable(end)) {
        m_running = false;
        return;
    }
    const HxGePoint3d start = arc.pointAt(arc.from);
    if (!m_running || !meets(start, m_current, arc)) {
        begin(start);
    }
    m_verbs.push_back(PathVerb::arc);
    m_points.insert(m_points.end(),
                    {arc.centre, asPoint(arc.u), asPoint(arc.v), {arc.from, arc.sweep, 0}, end});
    m_current = end;
}

void Path::bulgeTo(const HxGePoint3d& p, double bulge) {
    constexpr double kStraight = 1e-9;
    const HxGeVector3d chord = p - m_current;
    if (!m_running || !korvex::isUsable(p) || !(std::fabs(bulge) > kStraight) || std::fabs(bulge) > 1e9 ||
        isSame(p, m_current)) {
        lineTo(p);
        return;
    }
    const double offset = (1 - bulge * bulge) / (4 * bulge);
    EllipticArc arc;
    arc.centre = m_current + chord * 0.5 + HxGeVector3d(-chord.y, chord.x) * offset;
    arc.u = m_current - arc.centre;
    arc.v = {-arc.u.y, arc.u.x};
    arc.sweep = 4 * std::atan(bulge);
    arcTo(arc, p);
}

void Path::splineTo(SplineCurve spline) {
    if (!spline.isValid()) {
        m_running = false;
        return;
    }
    const HxGePoint3d start = spline.pointAt(spline.firstParameter());
    const double size = std::fabs(start.x) + std::fabs(start.y) + std::fabs(start.z) + 1;
    if (!m_running || start.distanceTo(m_current) > 1e-9 * size) {
        begin(start);
    }
    m_current = spline.pointAt(spline.lastParameter());
    m_verbs.push_back(PathVerb::spline);
    m_points.push_back(m_current);
    m_splines.push_back(std::move(spline));
}

void Path::ray(const HxGePoint3d& base, const HxGeVector3d& direction, bool bothWays) {
    m_running = false;
    if (korvex::isUsable(base) && korvex::isUsable(direction) && direction.length() > 0) {
        m_verbs.push_back(bothWays ? PathVerb::xline : PathVerb::ray);
        m_points.insert(m_points.end(), {base, asPoint(direction.normal())});
    }
}

void Path::close() {
    if (m_running && !isSame(m_first, m_current)) {
        lineTo(m_first);
    }
}

void Path::transform(const HxGeMatrix3d& m) {
    std::size_t at = 0;
    const auto point = [&] {
        m_points[at] = m * m_points[at];
        ++at;
    };
    const auto vector = [&] {
        m_points[at] = asPoint(transformed(m, m_points[at]));
        ++at;
    };
    for (const PathVerb verb : m_verbs) {
        point();
        if (verb == PathVerb::arc) {
            vector();
            vector();
            ++at;
            point();
        } else if (verb == PathVerb::ray || verb == PathVerb::xline) {
            vector();
        }
    }
    for (SplineCurve& spline : m_splines) {
        for (HxGePoint3d& p : spline.control) {
            p = m * p;
        }
    }
    m_first = m * m_first;
    m_current = m * m_current;
}

bool Path::Reader::next() {
    if (m_verb == m_path.m_verbs.size()) {
        return false;
    }
    m_segment.verb = m_path.m_verbs[m_verb++];
    m_segment.start = m_segment.end;
    switch (m_segment.verb) {
    case PathVerb::move:
        m_segment.end = take();
        m_segment.start = m_segment.end;
        break;
    case PathVerb::line: m_segment.end = take(); break;
    case PathVerb::arc: {
        EllipticArc& arc = m_segment.arc;
        arc.centre = take();
        arc.u = asVector(take());
        arc.v = asVector(take());
        const HxGePoint3d& angles = take();
        arc.from = angles.x;
        arc.sweep = angles.y;
        m_segment.end = take();
        break;
    }
    case PathVerb::spline:
        m_segment.spline = &m_path.m_splines[m_spline++];
        m_segment.end = take();
        break;
    case PathVerb::ray:
    case PathVerb::xline:
        m_segment.start = m_segment.end = take();
        m_segment.direction = asVector(take());
        break;
    }
    return true;
}

}  // namespace korvex
