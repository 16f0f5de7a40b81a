// What was painted is kept until something else is to be seen.
#pragma once

#include "host/ui/view/screen_map.h"

#include <QImage>
#include <QSize>

#include <functional>

class QPainter;

namespace korvex {

/// What a window shows at one time.
struct Frame {
    ScreenMap map;
    QSize size;       ///< device-independent pixels
    qreal ratio = 1;  ///< device pixels in one of those
};

/// A picture of the window, in device pixels. When the view moves by whole pixels, only what comes in at the
/// sides is painted.
class BackBuffer {
public:
    /// Paints the window or a part of it, in device-independent pixels.
    using Paint = std::function<void(QPainter&, const QRectF& part)>;

    explicit BackBuffer(QImage::Format format) : m_format(format) {}

    /// What it shows is out of date.
    void invalidate() { m_valid = false; }
    bool isCurrent(const Frame& frame) const;
    /// There is a picture, of whatever view.
    bool isEmpty() const { return m_image.isNull(); }
    void clear();
    /// Paints what is missing.
    void update(const Frame& frame, const Paint& paint);
    /// Draws the picture; one of another view is moved and scaled to where its contents are now.
    void draw(QPainter& painter, const Frame& frame) const;
    /// Milliseconds that the last update from scratch took.
    qint64 cost() const { return m_cost; }

private:
    bool isSameScale(const Frame& frame) const;
    bool scroll(const Frame& frame, const Paint& paint);
    void paintPart(const QRect& part, const Paint& paint);

    QImage::Format m_format;
    QImage m_image;
    Frame m_frame;
    QPointF m_rest;  ///< device pixels by which scrolling has left the picture beside its place
    bool m_valid = false;
    qint64 m_cost = 0;
};

}  // namespace korvex
