// Painting as a whole, scrolling, and scaling for the moment.
#include "host/ui/view/back_buffer.h"

#include <QElapsedTimer>
#include <QPainter>
#include <QRegion>

#include <cmath>
#include <cstdlib>

namespace korvex {

namespace {

// Of a pixel: less cannot be seen.
constexpr double kNoShift = 1e-3;
constexpr double kGreatestRest = 0.02;

/// Device pixels by which what is seen has moved.
QPointF shiftBetween(const Frame& from, const Frame& to) {
    return to.map.toPixel(from.map.toSheet({0, 0})) * to.ratio;
}

}  // namespace

bool BackBuffer::isSameScale(const Frame& frame) const {
    return m_valid && frame.size == m_frame.size && frame.ratio == m_frame.ratio &&
           frame.map.unitsPerPixel() == m_frame.map.unitsPerPixel();
}

bool BackBuffer::isCurrent(const Frame& frame) const {
    if (!isSameScale(frame)) {
        return false;
    }
    const QPointF shift = shiftBetween(m_frame, frame);
    return std::fabs(shift.x()) < kNoShift && std::fabs(shift.y()) < kNoShift;
}

void BackBuffer::clear() {
    m_image = QImage();
    m_valid = false;
}

void BackBuffer::update(const Frame& frame, const Paint& paint) {
    if (isCurrent(frame) || scroll(frame, paint)) {
        return;
    }
    QElapsedTimer timer;
    timer.start();
    const QSize pixels = (QSizeF(frame.size) * frame.ratio).toSize().expandedTo({1, 1});
    if (m_image.size() != pixels) {
        m_image = QImage(pixels, m_format);
    }
    m_image.setDevicePixelRatio(frame.ratio);
    m_frame = frame;
    m_rest = {};
    m_valid = true;
    paintPart(m_image.rect(), paint);
    m_cost = timer.elapsed();
}

/// False when the picture cannot be used any more.
bool BackBuffer::scroll(const Frame& frame, const Paint& paint) {
    if (!isSameScale(frame)) {
        return false;
    }
    const QPointF wanted = shiftBetween(m_frame, frame) + m_rest;
    const QPoint step = wanted.toPoint();
    const QPointF rest = wanted - step;
    if (std::fabs(rest.x()) > kGreatestRest || std::fabs(rest.y()) > kGreatestRest ||
        std::abs(step.x()) >= m_image.width() || std::abs(step.y()) >= m_image.height()) {
        return false;
    }
    QImage moved(m_image.size(), m_format);
    moved.setDevicePixelRatio(frame.ratio);
    QPainter painter(&moved);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(QPointF(step) / frame.ratio, m_image);
    painter.end();
    const QRect kept = m_image.rect().translated(step);
    m_image = moved;
    m_frame = frame;
    m_rest = rest;
    for (const QRect& part : QRegion(m_image.rect()).subtracted(kept)) {
        paintPart(part, paint);
    }
    return true;
}

/// `part` in device pixels.
void BackBuffer::paintPart(const QRect& part, const Paint& paint) {
    const qreal ratio = m_frame.ratio;
    const QRectF window(QPointF(part.topLeft()) / ratio, QSizeF(part.size()) / ratio);
    QPainter painter(&m_image);
    painter.setClipRect(window);
    if (m_image.hasAlphaChannel()) {
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.fillRect(window, Qt::transparent);
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    }
    paint(painter, window);
}

void BackBuffer::draw(QPainter& painter, const Frame& frame) const {
    if (isCurrent(frame)) {
        painter.drawImage(QPointF(0, 0), m_image);
    } else if (!isEmpty()) {
        const QPointF from = frame.map.toPixel(m_frame.map.toSheet({0, 0}));
        const QPointF to =
            frame.map.toPixel(m_frame.map.toSheet(QPointF(m_frame.size.width(), m_frame.size.height())));
        painter.drawImage(QRectF(from, to), m_image);
    }
}

}  // namespace korvex
