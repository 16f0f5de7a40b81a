// Hands the widget's events on.
#include "host/ui/view/drawing_view.h"

#include "host/editor/view.h"
#include "host/ui/view/view_input.h"

#include <QContextMenuEvent>
#include <QGestureEvent>
#include <QKeyEvent>
#include <QNativeGestureEvent>
#include <QPainter>
#include <QWheelEvent>

namespace korvex {

DrawingView::DrawingView(QWidget* parent) : QWidget(parent), m_input(std::make_unique<Input>(*this)) {
    setAccessibleName("Drawing");
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setMinimumSize(100, 80);
    grabGesture(Qt::PinchGesture);
}

DrawingView::~DrawingView() { setScreenSize(0, 0); }

void DrawingView::setDocument(Document* document) {
    if (document != m_input->document()) {
        m_input->setDocument(document);
    }
}

Document* DrawingView::document() const { return m_input->document(); }

void DrawingView::setDark(bool dark) { setSceneStyle(SceneStyle::ofTheme(dark)); }

void DrawingView::setSceneStyle(const SceneStyle& style) { m_input->contents().setStyle(style); }

void DrawingView::setAsking(Asking asking, std::optional<HxGePoint3d> rubberFrom, bool nested) {
    m_input->setAsking(asking, rubberFrom, nested);
}

DrawingView::Asking DrawingView::asking() const { return m_input->asking(); }

void DrawingView::setHighlighted(const std::vector<HxDbObjectId>& path) {
    m_input->contents().lit.given = path;
    m_input->contents().litChanged();
}

int DrawingView::paintCount() const { return m_input->contents().paints(); }

QSize DrawingView::sizeHint() const { return {800, 600}; }

void DrawingView::zoomIn() { m_input->movement().zoomIn(QRectF(rect()).center()); }
void DrawingView::zoomOut() { m_input->movement().zoomOut(QRectF(rect()).center()); }
void DrawingView::zoomExtents() { m_input->movement().zoomExtents(QRectF(rect()).center()); }

bool DrawingView::event(QEvent* event) {
    if (event->type() == QEvent::NativeGesture) {
        const auto* gesture = static_cast<QNativeGestureEvent*>(event);
        if (gesture->gestureType() == Qt::ZoomNativeGesture) {
            m_input->movement().pinch(gesture->localPos(), 1 + gesture->value());
        } else if (gesture->gestureType() == Qt::SmartZoomNativeGesture) {
            m_input->movement().zoomExtents(gesture->localPos());
        }
        return true;
    }
    if (event->type() == QEvent::Gesture && document()) {
        if (const auto* pinch =
                static_cast<QPinchGesture*>(static_cast<QGestureEvent*>(event)->gesture(Qt::PinchGesture))) {
            m_input->movement().pinch(*pinch);
            return true;
        }
    }
    return QWidget::event(event);
}

void DrawingView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    m_input->paint(painter);
}

void DrawingView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    setScreenSize(width(), height());
    m_input->contents().changed();
}

void DrawingView::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    setScreenSize(width(), height());
    m_input->contents().changed();
}

void DrawingView::wheelEvent(QWheelEvent* event) {
    if (document()) {
        m_input->movement().wheel(*event);
    }
    event->accept();
}

void DrawingView::mousePressEvent(QMouseEvent* event) {
    if (document()) {
        m_input->press(*event);
    }
}

void DrawingView::mouseMoveEvent(QMouseEvent* event) {
    if (document()) {
        m_input->move(*event);
    }
}

void DrawingView::mouseReleaseEvent(QMouseEvent* event) {
    if (document()) {
        m_input->release(*event);
    }
}

void DrawingView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (document()) {
        m_input->doubleClick(*event);
    }
}

void DrawingView::keyPressEvent(QKeyEvent* event) {
    event->accept();
    if (!m_input->key(*event)) {
        emit keyTyped(event);
    }
}

void DrawingView::leaveEvent(QEvent* event) {
    QWidget::leaveEvent(event);
    m_input->leave();
}

void DrawingView::contextMenuEvent(QContextMenuEvent* event) {
    event->accept();
    if (asking() == Asking::selection || event->reason() == QContextMenuEvent::Keyboard) {
        emit customContextMenuRequested(event->pos());
    } else {
        emit enterPressed();
    }
}

}  // namespace korvex
