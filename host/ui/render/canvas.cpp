// Draws lines of a few pixels by stepping along their longer side; a hundred thousand take a few
// milliseconds.
#include "host/ui/render/canvas.h"

#include <QPainterPath>

#include <algorithm>

namespace korvex {

namespace {

constexpr double kFraction = 4294967296.0;  ///< fixed point with 32 bits behind

/// Parts of 255 of each of the four bytes.
QRgb weighted(QRgb color, unsigned parts) {
    const auto scaled = [parts](std::uint32_t pair) {
        const std::uint32_t product = pair * parts;
        return ((product + ((product >> 8U) & 0xFF00FFU) + 0x800080U) >> 8U) & 0xFF00FFU;
    };
    return scaled(color & 0xFF00FFU) | scaled((color >> 8U) & 0xFF00FFU) << 8U;
}

bool isInside(Point2 p, double left, double top, double right, double bottom) {
    return p.x >= left && p.x < right && p.y >= top && p.y < bottom;
}

/// The part of a line, from 0 to 1, that lies between two values of one coordinate.
bool narrow(double start, double step, double low, double high, double& from, double& to) {
    if (step == 0) {
        return start >= low && start <= high;
    }
    double enter = (low - start) / step;
    double leave = (high - start) / step;
    if (enter > leave) {
        std::swap(enter, leave);
    }
    from = std::max(from, enter);
    to = std::min(to, leave);
    return from <= to;
}

}  // namespace

void Canvas::begin(const QSize& size, QRgb fill) {
    end();
    if (m_image.size() != size) {
        m_image = QImage(size, QImage::Format_ARGB32_Premultiplied);
    }
    m_image.fill(fill);
    start();
}

void Canvas::begin(const Canvas& from, const QRect& part) {
    end();
    if (m_image.size() != part.size()) {
        m_image = QImage(part.size(), QImage::Format_ARGB32_Premultiplied);
    }
    QPainter copy(&m_image);
    copy.setCompositionMode(QPainter::CompositionMode_Source);
    copy.drawImage(QPoint(), from.m_image, part);
    copy.end();
    start();
}

void Canvas::start() {
    m_pixels = reinterpret_cast<QRgb*>(m_image.bits());
    m_stride = m_image.bytesPerLine() / static_cast<std::ptrdiff_t>(sizeof(QRgb));
    m_painter.begin(&m_image);
    m_hasStroke = false;
    setClip(m_image.rect());
}

void Canvas::end() {
    if (m_painter.isActive()) {
        m_painter.end();
    }
}

void Canvas::setClip(const QRect& clip) {
    m_clip = clip.intersected(m_image.rect());
    m_left = m_clip.left();
    m_top = m_clip.top();
    m_right = m_clip.left() + m_clip.width();
    m_bottom = m_clip.top() + m_clip.height();
    m_painter.setClipRect(m_clip);
}

void Canvas::blend(QRgb* pixel) {
    if (pixel != m_last) {
        *pixel = weighted(m_pen.color, m_pen.alpha) + weighted(*pixel, 255U - m_pen.alpha);
        m_last = pixel;
    }
}

void Canvas::dot(Point2 p) {
    m_last = nullptr;
    const double size = std::max(1.0, std::floor(m_pen.width + 0.5));
    const double shift = std::floor((size - 1) / 2);
    const double left = std::max(std::floor(p.x) - shift, m_left);
    const double top = std::max(std::floor(p.y) - shift, m_top);
    const double right = std::min(std::floor(p.x) - shift + size, m_right);
    const double bottom = std::min(std::floor(p.y) - shift + size, m_bottom);
    if (!(left < right) || !(top < bottom)) {
        return;
    }
    for (auto y = static_cast<std::ptrdiff_t>(top); y < static_cast<std::ptrdiff_t>(bottom); ++y) {
        for (auto x = static_cast<std::ptrdiff_t>(left); x < static_cast<std::ptrdiff_t>(right); ++x) {
            QRgb* pixel = m_pixels + y * m_stride + x;
            m_pen.alpha == 255 ? void(*pixel = m_pen.color) : blend(pixel);
        }
    }
}

bool Canvas::cut(Point2& a, Point2& b, double margin) const {
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    if (!std::isfinite(dx) || !std::isfinite(dy)) {
        return false;
    }
    double from = 0;
    double to = 1;
    if (!narrow(a.x, dx, m_left - margin, m_right + margin, from, to) ||
        !narrow(a.y, dy, m_top - margin, m_bottom + margin, from, to)) {
        return false;
    }
    b = {a.x + dx * to, a.y + dy * to};
    a = {a.x + dx * from, a.y + dy * from};
    return true;
}

/// Calls plot(x, y, steepness) for the pixels along the line; those may lie a little outside of the clip.
template <class Plot>
void Canvas::thinLine(Point2 a, Point2 b, const Plot& plot) {
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const bool isSteep = std::fabs(dy) > std::fabs(dx);
    const double start = isSteep ? a.y : a.x;
    const double end = isSteep ? b.y : b.x;
    const int first = static_cast<int>(std::floor(start));
    const int last = static_cast<int>(std::floor(end));
    const int step = last < first ? -1 : 1;
    const double across = isSteep ? a.x : a.y;
    const double slope = isSteep ? (dy != 0 ? dx / dy : 0) : (dx != 0 ? dy / dx : 0);
    auto at = static_cast<std::int64_t>((first == last ? across : across + (first + 0.5 - start) * slope) *
                                        kFraction);
    const auto grow = static_cast<std::int64_t>(slope * step * kFraction);
    for (int i = first;; i += step, at += grow) {
        plot(i, static_cast<int>(at >> 32), isSteep);
        if (i == last) {
            return;
        }
    }
}

void Canvas::thinLine(Point2 a, Point2 b) {
    if (!isInside(a, m_left, m_top, m_right, m_bottom) || !isInside(b, m_left, m_top, m_right, m_bottom)) {
        if (!cut(a, b, m_pen.width)) {
            return;
        }
    }
    const auto left = static_cast<int>(m_left);
    const auto top = static_cast<int>(m_top);
    const auto width = static_cast<unsigned>(m_clip.width());
    const auto height = static_cast<unsigned>(m_clip.height());
    const auto put = [&](int x, int y) {
        if (static_cast<unsigned>(x - left) < width && static_cast<unsigned>(y - top) < height) {
            QRgb* pixel = m_pixels + y * m_stride + x;
            m_pen.alpha == 255 ? void(*pixel = m_pen.color) : blend(pixel);
        }
    };
    const int thickness = static_cast<int>(m_pen.width + 0.5);
    if (thickness <= 1) {
        thinLine(a, b, [&](int along, int across, bool isSteep) {
            isSteep ? put(across, along) : put(along, across);
        });
        return;
    }
    const int shift = (thickness - 1) / 2;
    thinLine(a, b, [&](int along, int across, bool isSteep) {
        for (int i = 0; i < thickness; ++i) {
            const int at = across - shift + i;
            isSteep ? put(at, along) : put(along, at);
        }
    });
}

void Canvas::useStroke() {
    const bool same = m_hasStroke && m_stroke.color == m_pen.color && m_stroke.alpha == m_pen.alpha &&
                      m_stroke.width == m_pen.width && m_stroke.isDashed == m_pen.isDashed;
    if (!same) {
        QColor color(m_pen.color);
        color.setAlpha(m_pen.alpha);
        m_painter.setPen(QPen(color, m_pen.width, Qt::SolidLine, m_pen.isDashed ? Qt::FlatCap : Qt::RoundCap,
                              Qt::RoundJoin));
        m_painter.setBrush(Qt::NoBrush);
        m_painter.setRenderHint(QPainter::Antialiasing, true);
        m_stroke = m_pen;
        m_hasStroke = true;
    }
}

void Canvas::strokeLine(Point2 a, Point2 b) {
    if (cut(a, b, 2 * m_pen.width)) {
        useStroke();
        m_painter.drawLine(QPointF(a.x, a.y), QPointF(b.x, b.y));
    }
}

void Canvas::polyline(const Point2* points, std::size_t count) {
    m_last = nullptr;
    if (count == 1) {
        dot(points[0]);
        return;
    }
    if (isThin()) {
        for (std::size_t i = 1; i < count; ++i) {
            thinLine(points[i - 1], points[i]);
        }
        return;
    }
    useStroke();
    QPolygonF run;
    const auto flush = [&] {
        if (run.size() > 1) {
            m_painter.drawPolyline(run);
        }
        run.clear();
    };
    for (std::size_t i = 1; i < count; ++i) {
        Point2 a = points[i - 1];
        Point2 b = points[i];
        if (!cut(a, b, 2 * m_pen.width)) {
            flush();
            continue;
        }
        const QPointF start(a.x, a.y);
        if (run.isEmpty() || run.back() != start) {
            flush();
            run << start;
        }
        run << QPointF(b.x, b.y);
    }
    flush();
}

void Canvas::fill(const std::vector<Polyline2>& loops, bool evenOdd) {
    constexpr double kMargin = 16;
    const Box box{{m_left - kMargin, m_right + kMargin}, {m_top - kMargin, m_bottom + kMargin}};
    QPainterPath path;
    path.setFillRule(evenOdd ? Qt::OddEvenFill : Qt::WindingFill);
    for (Polyline2 loop : loops) {
        cutToBox(loop, box);
        if (loop.size() < 3) {
            continue;
        }
        path.moveTo(loop.front().x, loop.front().y);
        for (std::size_t i = 1; i < loop.size(); ++i) {
            path.lineTo(loop[i].x, loop[i].y);
        }
        path.closeSubpath();
    }
    if (!path.isEmpty()) {
        QColor color(m_pen.color);
        color.setAlpha(m_pen.alpha);
        m_painter.setRenderHint(QPainter::Antialiasing, true);
        m_hasStroke = false;
        m_painter.fillPath(path, color);
    }
}

void Canvas::text(const QString& text, const QFont& font, const QTransform& toDevice) {
    QColor color(m_pen.color);
    color.setAlpha(m_pen.alpha);
    m_hasStroke = false;
    m_painter.setRenderHint(QPainter::Antialiasing, true);
    m_painter.setPen(color);
    m_painter.setFont(font);
    m_painter.setTransform(toDevice);
    m_painter.drawText(QPointF(), text);
    m_painter.resetTransform();
}

void Canvas::textOutlines(const QString& text, const QFont& font, const QTransform& toDevice) {
    QPainterPath outlines;
    outlines.addText(QPointF(), font, text);
    QColor color(m_pen.color);
    color.setAlpha(m_pen.alpha);
    m_hasStroke = false;
    m_painter.setRenderHint(QPainter::Antialiasing, true);
    m_painter.fillPath(toDevice.map(outlines), color);
}

void cutToBox(Polyline2& loop, const Box& box) {
    const auto cutAt = [&loop](auto inside, auto crossing) {
        Polyline2 out;
        out.reserve(loop.size() + 4);
        for (std::size_t i = 0; i < loop.size(); ++i) {
            const Point2 a = loop[i == 0 ? loop.size() - 1 : i - 1];
            const Point2 b = loop[i];
            if (inside(a) != inside(b)) {
                out.push_back(crossing(a, b));
            }
            if (inside(b)) {
                out.push_back(b);
            }
        }
        loop = std::move(out);
    };
    const auto atX = [](double x) {
        return [x](Point2 a, Point2 b) { return Point2{x, a.y + (b.y - a.y) * ((x - a.x) / (b.x - a.x))}; };
    };
    const auto atY = [](double y) {
        return [y](Point2 a, Point2 b) { return Point2{a.x + (b.x - a.x) * ((y - a.y) / (b.y - a.y)), y}; };
    };
    Box own;
    for (const Point2& p : loop) {
        if (!std::isfinite(p.x) || !std::isfinite(p.y)) {
            loop.clear();
            return;
        }
        own.add(p);
    }
    if (box.contains(own)) {
        return;
    }
    cutAt([&](Point2 p) { return p.x >= box.x.low; }, atX(box.x.low));
    cutAt([&](Point2 p) { return p.x <= box.x.high; }, atX(box.x.high));
    cutAt([&](Point2 p) { return p.y >= box.y.low; }, atY(box.y.low));
    cutAt([&](Point2 p) { return p.y <= box.y.high; }, atY(box.y.high));
}

}  // namespace korvex
