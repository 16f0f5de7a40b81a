// The picture that a scene is drawn on: thin lines go straight into its pixels, all else through a QPainter.
#pragma once

#include "host/db/geometry/flatten.h"

#include <QImage>
#include <QPainter>
#include <QRect>
#include <QTransform>

namespace korvex {

/// Colour, coverage and width of what is drawn next.
struct CanvasPen {
    QRgb color = 0;            ///< opaque
    std::uint8_t alpha = 255;  ///< 0 clear
    double width = 1;          ///< device pixels
    bool isDashed = false;     ///< ends are cut straight
};

/// Coordinates are device pixels, y down; a pixel covers [n, n + 1). Nothing outside of the clip is touched,
/// and coordinates may be anything, also no numbers.
class Canvas {
public:
    /// Starts a picture, all of it in one colour (premultiplied). The memory of the last one is used again.
    void begin(const QSize& size, QRgb fill);
    /// Starts a picture as a copy of a part of another one.
    void begin(const Canvas& from, const QRect& part);
    void end();
    const QImage& image() const { return m_image; }

    /// Cut to the picture.
    void setClip(const QRect& clip);
    QRect clip() const { return m_clip; }

    void setPen(const CanvasPen& pen) { m_pen = pen; }
    const CanvasPen& pen() const { return m_pen; }

    void dot(Point2 p);
    void line(Point2 a, Point2 b) {
        m_last = nullptr;
        isThin() ? thinLine(a, b) : strokeLine(a, b);
    }
    void polyline(const Point2* points, std::size_t count);
    void polyline(const Polyline2& points) { polyline(points.data(), points.size()); }
    /// The inside of loops; of overlapping ones either all of it or only what an odd number of them holds.
    void fill(const std::vector<Polyline2>& loops, bool evenOdd);
    /// `toDevice` takes the font's pixels, y down, with the base line's start at the origin.
    void text(const QString& text, const QFont& font, const QTransform& toDevice);
    /// The same by the outlines of its letters: for sizes at which their pictures would be too large.
    void textOutlines(const QString& text, const QFont& font, const QTransform& toDevice);

    QPainter& painter() { return m_painter; }

private:
    static constexpr double kThinnest = 3.5;

    bool isThin() const { return m_pen.width < kThinnest; }
    void thinLine(Point2 a, Point2 b);
    template <class Plot>
    void thinLine(Point2 a, Point2 b, const Plot& plot);
    void strokeLine(Point2 a, Point2 b);
    bool cut(Point2& a, Point2& b, double margin) const;
    void useStroke();
    void start();
    void blend(QRgb* pixel);

    QImage m_image;
    QPainter m_painter;
    QRgb* m_pixels = nullptr;
    std::ptrdiff_t m_stride = 0;
    QRect m_clip;
    double m_left = 0, m_top = 0, m_right = 0, m_bottom = 0;  ///< of the clip, right and bottom excluded
    CanvasPen m_pen;
    CanvasPen m_stroke;  ///< what the painter's pen is set to
    bool m_hasStroke = false;
    QRgb* m_last = nullptr;  ///< the pixel that was blended last, not to be blended twice
};

/// A polygon cut to a box: what is inside stays, closed along the box's edges.
void cutToBox(Polyline2& loop, const Box& box);

}  // namespace korvex
