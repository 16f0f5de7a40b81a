// Lines one pixel wide, on pixels.
#include "host/ui/view/marks.h"

#include <QPainter>

namespace korvex {

namespace {

constexpr double kArm = 40;
constexpr double kGripSide = 7;
constexpr double kHalo = 3;

/// Onto the middle of a pixel.
QPointF snapped(const QPointF& point) { return {std::floor(point.x()) + 0.5, std::floor(point.y()) + 0.5}; }

QColor faint(QColor color) {
    color.setAlpha(48);
    return color;
}

template <class Draw>
void drawWithHalo(QPainter& painter, const MarkColors& colors, Draw draw) {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(colors.halo, kHalo, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    draw();
    painter.setPen(QPen(colors.line, 1));
    draw();
}

}  // namespace

MarkColors MarkColors::on(const QColor& background) {
    const bool dark = background.lightness() < 128;
    MarkColors colors;
    colors.line = dark ? QColor(255, 255, 255) : QColor(0, 0, 0);
    colors.halo = dark ? QColor(0, 0, 0, 110) : QColor(255, 255, 255, 150);
    colors.window = dark ? QColor(96, 160, 255) : QColor(0, 70, 190);
    colors.crossing = dark ? QColor(90, 220, 110) : QColor(0, 115, 40);
    colors.grip = dark ? QColor(40, 130, 240) : QColor(0, 50, 140);
    colors.gripFrame = dark ? QColor(230, 240, 255) : QColor(255, 255, 255);
    return colors;
}

void drawCursor(QPainter& painter, const QPointF& at, const CursorLook& look, const MarkColors& colors) {
    const QPointF middle = snapped(at);
    const double inner = look.box;
    drawWithHalo(painter, colors, [&] {
        if (look.box > 0) {
            painter.drawRect(QRectF(middle.x() - inner, middle.y() - inner, 2 * inner, 2 * inner));
        }
        if (look.arms) {
            for (const QPointF& way : {QPointF(1, 0), QPointF(-1, 0), QPointF(0, 1), QPointF(0, -1)}) {
                painter.drawLine(middle + way * inner, middle + way * (inner + kArm));
            }
        }
    });
}

QRectF cursorArea(const QPointF& at, const CursorLook& look) {
    const double reach = look.box + (look.arms ? kArm : 0) + kHalo;
    return QRectF(at.x() - reach, at.y() - reach, 2 * reach, 2 * reach).adjusted(-1, -1, 1, 1);
}

void drawRubberBand(QPainter& painter, const QPointF& from, const QPointF& to, const MarkColors& colors) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    drawWithHalo(painter, colors, [&] { painter.drawLine(from, to); });
    painter.restore();
}

void drawSelectionWindow(QPainter& painter, const QRectF& window, bool crossing, const MarkColors& colors) {
    const QColor color = crossing ? colors.crossing : colors.window;
    const QRectF frame(snapped(window.topLeft()), snapped(window.bottomRight()));
    painter.fillRect(frame, faint(color));
    QPen pen(color, 1);
    if (crossing) {
        pen.setDashPattern({5, 4});
    }
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(frame);
}

void drawNote(QPainter& painter, const QRectF& window, const QString& text, const MarkColors& colors) {
    constexpr double kMargin = 8;
    constexpr int kFlags = Qt::AlignLeft | Qt::AlignBottom | Qt::TextWordWrap;
    const QRectF area = window.adjusted(kMargin, kMargin, -kMargin, -kMargin);
    const QRectF box = painter.boundingRect(area, kFlags, text);
    QColor paper = colors.halo;
    paper.setAlpha(200);
    painter.fillRect(box.adjusted(-kMargin / 2, -kMargin / 2, kMargin / 2, kMargin / 2), paper);
    painter.setPen(colors.line);
    painter.drawText(area, kFlags, text);
}

void drawGrips(QPainter& painter, const std::vector<QPointF>& grips, const MarkColors& colors) {
    painter.setPen(QPen(colors.gripFrame, 1));
    painter.setBrush(colors.grip);
    constexpr double kHalf = (kGripSide - 1) / 2;
    for (const QPointF& grip : grips) {
        const QPointF middle = snapped(grip);
        painter.drawRect(QRectF(middle.x() - kHalf, middle.y() - kHalf, 2 * kHalf, 2 * kHalf));
    }
}

}  // namespace korvex
