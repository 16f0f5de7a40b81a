// Draws single entities: lines in their pattern and weight, arcs, fillings, texts.
#include "host/ui/render/scene_walk.h"

#include "host/editor/pick/block_geometry.h"

#include <algorithm>
#include <limits>

namespace korvex {

namespace {

constexpr double kTolerance = 0.3;  ///< pixels
constexpr double kReadable = 3.5;   ///< pixels of capitals; smaller text is a mark
constexpr int kMostArcSteps = 512;
constexpr long long kPointsOfWork = 16, kTextWork = 60, kFillWork = 20;

/// Seen along z.
struct ToPlane {
    explicit ToPlane(const HxGeMatrix3d& m) : x(m.entry[0]), y(m.entry[1]) {}
    Point2 operator()(double px, double py, double pz) const {
        return {x[0] * px + x[1] * py + x[2] * pz + x[3], y[0] * px + y[1] * py + y[2] * pz + y[3]};
    }
    const std::array<double, 4>& x;
    const std::array<double, 4>& y;
};

bool isSamePixel(Point2 a, Point2 b) {
    return std::floor(a.x) == std::floor(b.x) && std::floor(a.y) == std::floor(b.y);
}

/// Calls run(points) for each run of an item. Points that fall into the pixel of the one before are left out.
template <class Run>
void forEachRun(const double* numbers, const DisplayItem& item, const ToPlane& toPlane, Polyline2& points,
                const Run& run) {
    points.clear();
    const std::size_t step = item.isSpatial ? 3 : 2;
    const double z = item.isSpatial ? 0 : numbers[0];
    Point2 held;
    bool isHeld = false;
    const auto end = [&] {
        if (isHeld) {
            points.push_back(held);
        }
        isHeld = false;
        if (!points.empty()) {
            run(points);
        }
        points.clear();
    };
    for (std::size_t i = item.isSpatial ? 0 : 1; i + step <= item.count; i += step) {
        if (std::isnan(numbers[i])) {
            end();
            continue;
        }
        const Point2 p = toPlane(numbers[i], numbers[i + 1], item.isSpatial ? numbers[i + 2] : z);
        isHeld = !points.empty() && isSamePixel(p, points.back());
        if (isHeld) {
            held = p;
        } else {
            points.push_back(p);
        }
    }
    end();
}

double area(const Polyline2& loop) {
    double sum = 0;
    for (std::size_t i = 0; i < loop.size(); ++i) {
        const Point2& a = loop[i];
        const Point2& b = loop[(i + 1) % loop.size()];
        sum += a.x * b.y - a.y * b.x;
    }
    return sum / 2;
}

}  // namespace

void SceneWalk::usePen(const ResolvedLook& given) {
    const ResolvedLook& look = m_settings.forced ? *m_settings.forced : given;
    CanvasPen pen;
    pen.color = look.color;
    pen.alpha = look.alpha;
    pen.width = std::max(m_settings.hairline, look.lineweight / 100.0 * m_settings.pixelsPerMillimetre) +
                m_settings.extraWidth;
    m_canvas.setPen(pen);
}

double SceneWalk::patternScale(const Place& place, const ResolvedLook& look) const {
    const auto& e = place.toDevice.entry;
    const double scale = std::sqrt(std::fabs(e[0][0] * e[1][1] - e[0][1] * e[1][0]));
    return scale * m_settings.linetypeScale * static_cast<double>(look.linetypeScale);
}

void SceneWalk::stroke(const Place& place, const Polyline2& points, const ResolvedLook& look) {
    m_budget.left -= static_cast<long long>(points.size()) / kPointsOfWork;
    if (look.pattern && points.size() > 1 && !m_settings.forced && !m_settings.isCoarse) {
        const double scale = patternScale(place, look);
        if (!DashWalker::isTooFine(*look.pattern, scale)) {
            CanvasPen pen = m_canvas.pen();
            pen.isDashed = true;
            m_canvas.setPen(pen);
            DashWalker(m_canvas, *look.pattern, scale).polyline(points.data(), points.size());
            return;
        }
    }
    m_canvas.polyline(points);
}

void SceneWalk::drawRuns(const Place& place, const DisplayItem& item, const ResolvedLook& look) {
    const ToPlane toPlane(place.toDevice);
    const double* numbers = place.display.numbers(item);
    if (item.kind == DisplayKind::lines || item.kind == DisplayKind::frame) {
        forEachRun(numbers, item, toPlane, m_points, [&](const Polyline2& run) { stroke(place, run, look); });
        return;
    }
    m_runs.clear();
    forEachRun(numbers, item, toPlane, m_points, [&](const Polyline2& run) { m_runs.push_back(run); });
    fillRuns(m_runs, item);
}

/// Thin areas would fall between the pixels: their outlines are drawn as well, unless they shine through.
void SceneWalk::fillRuns(const std::vector<Polyline2>& given, const DisplayItem& item) {
    std::vector<Polyline2> runs = given;
    m_budget.left -= kFillWork;
    double covered = 0;
    for (Polyline2& run : runs) {
        const double own = area(run);
        covered += std::fabs(own);
        if (item.kind == DisplayKind::band && own < 0) {
            std::reverse(run.begin(), run.end());
        }
    }
    constexpr double kTiny = 2;
    CanvasPen pen = m_canvas.pen();
    const bool isFilled = covered > kTiny && !m_settings.isCoarse;
    if (isFilled) {
        if (item.kind == DisplayKind::mask) {
            m_canvas.setPen({m_settings.ground, 255, 1, false});
        }
        m_canvas.fill(runs, item.kind != DisplayKind::band);
    }
    if (pen.alpha == 255 || !isFilled || item.kind == DisplayKind::mask) {
        pen.width = m_settings.hairline;
        m_canvas.setPen(pen);
        for (Polyline2& run : runs) {
            run.push_back(run.front());
            m_canvas.polyline(run);
        }
    }
}

void SceneWalk::drawArc(const Place& place, HxDbStub& entity, const DisplayItem& item,
                        const ResolvedLook& look) {
    const double* n = place.display.numbers(item);
    const ToPlane toPlane(place.toDevice);
    const Point2 centre = toPlane(n[1], n[2], n[0]);
    const auto& e = place.toDevice.entry;
    const Point2 u{e[0][0] * n[3] + e[0][1] * n[4], e[1][0] * n[3] + e[1][1] * n[4]};
    const Point2 v{e[0][0] * n[5] + e[0][1] * n[6], e[1][0] * n[5] + e[1][1] * n[6]};
    const double from = n[7];
    const double sweep = n[8];
    const double radius = std::max(std::hypot(u.x, u.y), std::hypot(v.x, v.y));
    const double step = 2 * std::acos(1 - std::min(kTolerance / std::max(radius, 1e-3), 0.5));
    const double steps = std::max(std::ceil(std::fabs(sweep) / step), 1.0);
    if (!(steps <= kMostArcSteps)) {
        drawShape(place, entity, item, look);
        return;
    }
    const int count = static_cast<int>(steps);
    const double turn = sweep / count;
    const double c = std::cos(turn);
    const double s = std::sin(turn);
    double x = std::cos(from);
    double y = std::sin(from);
    m_points.clear();
    for (int i = 0; i <= count; ++i) {
        m_points.push_back({centre.x + u.x * x + v.x * y, centre.y + u.y * x + v.y * y});
        const double next = x * c - y * s;
        y = x * s + y * c;
        x = next;
    }
    stroke(place, m_points, look);
}

/// Curves in their full detail where they are seen: for what is far larger than the picture.
void SceneWalk::drawShape(const Place& place, HxDbStub& entity, const DisplayItem& item,
                          const ResolvedLook& look) {
    constexpr long long kShapeWork = 50;
    m_budget.left -= kShapeWork;
    m_runs.clear();
    flatten(shapeOf(entity).path, place.toDevice, kTolerance, m_window, m_runs);
    if (item.kind == DisplayKind::area || item.kind == DisplayKind::band || item.kind == DisplayKind::mask) {
        fillRuns(m_runs, item);
        return;
    }
    for (const Polyline2& run : m_runs) {
        stroke(place, run, look);
    }
}

void SceneWalk::drawDots(const Place& place, const DisplayItem& item, const ResolvedLook& look) {
    const double size =
        m_settings.pointUnits > 0 ? m_settings.pointUnits * place.stretch : m_settings.pointSize;
    forEachRun(place.display.numbers(item), item, ToPlane(place.toDevice), m_points,
               [&](const Polyline2& run) {
                   look.isDefpoints ? m_canvas.dot(run.front()) : drawPoint(run.front(), std::min(size, 1e5));
               });
}

/// As $PDMODE tells: 0 a dot, 1 nothing, 2 a plus, 3 a cross, 4 a tick; 32 a circle and 64 a square around
/// it.
void SceneWalk::drawPoint(Point2 at, double size) {
    const int figure = m_settings.pointMode & 15;
    const double half = size / 2;
    const auto arm = [&](double x0, double y0, double x1, double y1) {
        m_canvas.line({at.x + x0, at.y + y0}, {at.x + x1, at.y + y1});
    };
    switch (figure) {
    case 1: break;
    case 2:
        arm(-size, 0, size, 0);
        arm(0, -size, 0, size);
        break;
    case 3:
        arm(-size, -size, size, size);
        arm(-size, size, size, -size);
        break;
    case 4: arm(0, 0, 0, -half); break;
    default: m_canvas.dot(at); break;
    }
    if (m_settings.pointMode & 32) {
        constexpr int kSides = 16;
        constexpr double kStep = 6.283185307179586 / kSides;
        Polyline2 circle;
        for (int i = 0; i <= kSides; ++i) {
            circle.push_back({at.x + half * std::cos(kStep * i), at.y + half * std::sin(kStep * i)});
        }
        m_canvas.polyline(circle);
    }
    if (m_settings.pointMode & 64) {
        m_canvas.polyline({{at.x - half, at.y - half},
                           {at.x + half, at.y - half},
                           {at.x + half, at.y + half},
                           {at.x - half, at.y + half},
                           {at.x - half, at.y - half}});
    }
}

void SceneWalk::drawText(const Place& place, const TextRun& run) {
    const auto& e = place.toDevice.entry;
    const auto direction = [&](const HxGeVector3d& v) {
        return QPointF(e[0][0] * v.x + e[0][1] * v.y + e[0][2] * v.z,
                       e[1][0] * v.x + e[1][1] * v.y + e[1][2] * v.z);
    };
    const Point2 origin = ToPlane(place.toDevice)(run.origin.x, run.origin.y, run.origin.z);
    const QPointF across = direction(run.across);
    const QPointF up = direction(run.up);
    const QTransform plane(across.x(), across.y(), up.x(), up.y(), origin.x, origin.y);
    const double length = std::hypot(across.x(), across.y());
    const double height = length > 0 ? std::fabs(plane.determinant()) / length : 0;
    if (!(height > 0) || !std::isfinite(length + origin.x + origin.y)) {
        return;
    }
    for (const TextRun::Line& line : run.lines) {
        const double right = static_cast<double>(line.left) + static_cast<double>(line.width);
        const QRectF box = plane.mapRect(QRectF(QPointF(line.left, static_cast<double>(line.base) - 0.5),
                                                QPointF(right, static_cast<double>(line.base) + 1.5)));
        const Box shown{{box.left(), box.right()}, {box.top(), box.bottom()}};
        if (shown.intersects(m_window)) {
            drawTextLine(line, plane, height);
        }
    }
}

void SceneWalk::drawTextLine(const TextRun::Line& line, const QTransform& plane, double height) {
    constexpr double kNarrowest = 0.5, kLargestPicture = 128, kLargest = 30000;
    constexpr int kOutlinePixels = 64;
    const double across = std::hypot(plane.m11(), plane.m12());
    const double reach = std::max(across, std::hypot(plane.m21(), plane.m22()));
    if (reach > kLargest) {
        return;
    }
    if (height < kReadable || across < kNarrowest) {
        drawMark(line, plane);
        return;
    }
    m_budget.left -= kTextWork;
    const bool byOutlines = reach > kLargestPicture;
    const double wanted = byOutlines ? kOutlinePixels : std::max(std::round(height / capitalHeight()), 4.0);
    const int pixels = static_cast<int>(wanted);
    const double unit = 1 / (pixels * capitalHeight());
    const QTransform toPlane(unit, 0, 0, -unit, static_cast<double>(line.left),
                             static_cast<double>(line.base));
    if (m_font.pixelSize() != pixels) {
        m_font = textFont(pixels);
    }
    byOutlines ? m_canvas.textOutlines(line.text, m_font, toPlane * plane)
               : m_canvas.text(line.text, m_font, toPlane * plane);
}

/// A faint line half way up, as long as the text.
void SceneWalk::drawMark(const TextRun::Line& line, const QTransform& plane) {
    constexpr double kHalfWay = 0.5;
    const double middle = static_cast<double>(line.base) + kHalfWay;
    const QPointF a = plane.map(QPointF(static_cast<double>(line.left), middle));
    const QPointF b =
        plane.map(QPointF(static_cast<double>(line.left) + static_cast<double>(line.width), middle));
    const CanvasPen pen = m_canvas.pen();
    CanvasPen faint = pen;
    faint.width = m_settings.hairline;
    faint.alpha = static_cast<std::uint8_t>(faint.alpha * 3 / 5);
    m_canvas.setPen(faint);
    m_canvas.line({a.x(), a.y()}, {b.x(), b.y()});
    m_canvas.setPen(pen);
}

}  // namespace korvex
