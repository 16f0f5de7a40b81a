// Which events belong to one gesture, and how far they move.
#include "host/ui/view/view_movement.h"

#include "host/ui/view/view_contents.h"

#include <QKeyEvent>
#include <QPinchGesture>
#include <QWheelEvent>
#include <QWidget>

#include <cmath>

namespace korvex {

namespace {

constexpr double kNotch = 120;  // of a wheel, as events tell it
constexpr double kZoomOfNotch = 1.25;
constexpr double kZoomOfFineNotch = 1.05;
constexpr double kPixelsOfNotch = 60;
constexpr double kStill = 4;           // pixels that the cursor may stray in one gesture
constexpr qint64 kGesturePause = 700;  // milliseconds that end a gesture of the wheel
constexpr int kCalmPause = 120;        // milliseconds without movement, until all is painted anew

}  // namespace

ViewMovement::ViewMovement(QWidget& widget, ViewContents& contents, std::function<void()> moved)
    : m_widget(widget), m_contents(contents), m_moved(std::move(moved)) {
    m_calm.setSingleShot(true);
    QObject::connect(&m_calm, &QTimer::timeout, &widget, [this] {
        m_contents.setHasty(false);
        m_widget.update();
    });
}

void ViewMovement::begin(const QPointF& pixel) {
    m_lastTurn.invalidate();
    m_navigation.begin(*m_contents.document(), m_contents.frame().map, pixel);
}

void ViewMovement::end() {
    m_navigation.end();
    m_panFrom.reset();
}

void ViewMovement::moved() {
    m_contents.setHasty(true);
    m_calm.start(kCalmPause);
    m_moved();
}

void ViewMovement::zoom(const QPointF& pixel, double factor) {
    m_navigation.zoom(m_contents.frame().map, pixel, factor);
    moved();
}

void ViewMovement::pan(const QPointF& from, const QPointF& to) {
    m_navigation.pan(m_contents.frame().map, from, to);
    moved();
}

void ViewMovement::zoomIn(const QPointF& pixel) { pinch(pixel, kZoomOfNotch); }

void ViewMovement::zoomOut(const QPointF& pixel) { pinch(pixel, 1 / kZoomOfNotch); }

void ViewMovement::pinch(const QPointF& pixel, double factor) {
    if (m_contents.document() && factor > 0) {
        begin(pixel);
        zoom(pixel, factor);
    }
}

void ViewMovement::zoomExtents(const QPointF& pixel) {
    if (m_contents.document()) {
        begin(pixel);
        m_navigation.zoomExtents();
        moved();
    }
}

void ViewMovement::wheel(const QWheelEvent& event) {
    const QPointF at = event.position();
    const bool goesOn = m_lastTurn.isValid() && m_lastTurn.elapsed() < kGesturePause &&
                        (at - m_turnedAt).manhattanLength() < kStill &&
                        m_navigation.goesOn(*m_contents.document(), m_contents.frame().map, at);
    if (!goesOn) {
        begin(at);
        m_turnedAt = at;
    }
    m_lastTurn.start();
    QPointF notches = QPointF(event.angleDelta()) / kNotch;
    if (notches.isNull()) {
        notches = QPointF(event.pixelDelta()) / kPixelsOfNotch;
    }
    if (event.modifiers() & Qt::ShiftModifier) {  // some systems turn the wheel's direction themselves
        notches = {notches.x() + notches.y(), 0};
    }
    if (notches.x() != 0) {
        pan(at, at + QPointF(notches.x() * kPixelsOfNotch, 0));
    }
    if (notches.y() != 0) {
        const bool fine = (event.modifiers() & Qt::ControlModifier) != 0;
        zoom(at, std::pow(fine ? kZoomOfFineNotch : kZoomOfNotch, notches.y()));
    }
}

void ViewMovement::pinch(const QPinchGesture& pinch) {
    const QPointF at = m_widget.mapFromGlobal(pinch.centerPoint().toPoint());
    if (pinch.state() == Qt::GestureStarted || !m_navigation.isOn()) {
        begin(at);
    }
    if (pinch.changeFlags() & QPinchGesture::CenterPointChanged) {
        pan(m_widget.mapFromGlobal(pinch.lastCenterPoint().toPoint()), at);
    }
    if ((pinch.changeFlags() & QPinchGesture::ScaleFactorChanged) && pinch.scaleFactor() > 0) {
        zoom(at, pinch.scaleFactor());
    }
}

void ViewMovement::beginPan(const QPointF& pixel) {
    begin(pixel);
    m_panFrom = pixel;
}

void ViewMovement::panTo(const QPointF& pixel) {
    if (m_panFrom && m_navigation.isOn()) {
        pan(*m_panFrom, pixel);
        m_panFrom = pixel;
    }
}

void ViewMovement::endPan() { end(); }

void ViewMovement::panBy(const QPointF& pixel, const QPointF& pixels) {
    begin(pixel);
    pan(pixel, pixel + pixels);
}

bool ViewMovement::key(const QKeyEvent& event, const QPointF& pixel) {
    if (!m_contents.document() || !(event.modifiers() & Qt::ControlModifier)) {
        return false;
    }
    const double part = event.modifiers() & Qt::ShiftModifier ? 0.5 : 0.1;
    const double x = std::round(m_widget.width() * part);
    const double y = std::round(m_widget.height() * part);
    switch (event.key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal: zoomIn(pixel); return true;
    case Qt::Key_Minus: zoomOut(pixel); return true;
    case Qt::Key_0: zoomExtents(pixel); return true;
    case Qt::Key_Left: panBy(pixel, {x, 0}); return true;
    case Qt::Key_Right: panBy(pixel, {-x, 0}); return true;
    case Qt::Key_Up: panBy(pixel, {0, y}); return true;
    case Qt::Key_Down: panBy(pixel, {0, -y}); return true;
    default: return false;
    }
}

}  // namespace korvex
