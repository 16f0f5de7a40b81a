// Wheel, middle button, pinches and keys move the view.
#pragma once

#include "host/ui/view/navigation.h"

#include <QElapsedTimer>
#include <QTimer>

#include <functional>
#include <optional>

class QKeyEvent;
class QPinchGesture;
class QWheelEvent;
class QWidget;

namespace korvex {

class ViewContents;

/// Turns events into movements of what is shown. Without a document nothing moves.
class ViewMovement {
public:
    /// `moved` is called after every movement.
    ViewMovement(QWidget& widget, ViewContents& contents, std::function<void()> moved);

    /// Each is a gesture of its own.
    void zoomIn(const QPointF& pixel);
    void zoomOut(const QPointF& pixel);
    void zoomExtents(const QPointF& pixel);

    void wheel(const QWheelEvent& event);
    void pinch(const QPinchGesture& pinch);
    /// A part of a pinch, as systems tell it that know such gestures themselves.
    void pinch(const QPointF& pixel, double factor);
    void beginPan(const QPointF& pixel);
    /// Nothing happens when no pan was begun.
    void panTo(const QPointF& pixel);
    void endPan();
    bool isPanning() const { return m_panFrom.has_value(); }

    /// Ctrl with plus, minus, 0 (everything) and arrows, by a tenth of the window or, with Shift, a half.
    /// `pixel` is where it zooms. False for any other key.
    bool key(const QKeyEvent& event, const QPointF& pixel);

    /// The document goes.
    void end();

private:
    void begin(const QPointF& pixel);
    /// In the gesture that was begun last.
    void zoom(const QPointF& pixel, double factor);
    void pan(const QPointF& from, const QPointF& to);
    void panBy(const QPointF& pixel, const QPointF& pixels);
    void moved();

    QWidget& m_widget;
    ViewContents& m_contents;
    std::function<void()> m_moved;
    Navigation m_navigation;
    std::optional<QPointF> m_panFrom;
    QElapsedTimer m_lastTurn;  ///< of the wheel
    QPointF m_turnedAt;
    QTimer m_calm;
};

}  // namespace korvex
