// Events become movements, picks, points, selections and keys.
#include "host/ui/view/drawing_view.h"

#include "host/editor/documents.h"
#include "host/editor/editor.h"
#include "host/editor/selection.h"
#include "host/editor/system_variables.h"
#include "host/editor/view.h"
#include "host/ui/view/navigation.h"
#include "host/ui/view/selection_tool.h"
#include "host/ui/view/view_contents.h"
#include "host/ui/view/viewport_clicks.h"

#include <QContextMenuEvent>
#include <QElapsedTimer>
#include <QGestureEvent>
#include <QKeyEvent>
#include <QNativeGestureEvent>
#include <QPainter>
#include <QPinchGesture>
#include <QTimer>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace korvex {

namespace {

constexpr double kNotch = 120;  // of a wheel, as events tell it
constexpr double kZoomOfNotch = 1.25;
constexpr double kZoomOfFineNotch = 1.05;
constexpr double kPixelsOfNotch = 60;
constexpr qint64 kGesturePause = 700;  // milliseconds that end a gesture of the wheel
constexpr int kHoverPause = 20;
constexpr int kCalmPause = 120;

}  // namespace

class DrawingView::Imp {
public:
    explicit Imp(DrawingView& view) : contents(view, [this] { settled(); }), m_view(view) {
        m_hover.setSingleShot(true);
        m_calm.setSingleShot(true);
        QObject::connect(&m_hover, &QTimer::timeout, &view, [this] { hover(); });
        QObject::connect(&m_calm, &QTimer::timeout, &view, [this] {
            contents.setHasty(false);
            m_view.update();
        });
    }

    Document* document() const { return contents.document(); }
    void setDocument(Document* document);
    void setAsking(Asking asking, std::optional<HxGePoint3d> rubberFrom, bool nested);
    MovingMarks marks() const;

    void zoom(const QPointF& pixel, double factor, bool ownGesture);
    void pan(const QPointF& from, const QPointF& to);
    void panBy(const QPointF& pixels);
    void zoomExtents(const QPointF& pixel);
    QPointF middle() const { return QRectF(m_view.rect()).center(); }
    /// Where the keyboard zooms: at the cursor if it is here.
    QPointF place() const { return m_inside ? m_cursor : middle(); }

    void wheel(const QWheelEvent& event);
    void pinch(const QPinchGesture& pinch);
    void press(const QMouseEvent& event);
    void move(const QMouseEvent& event);
    void release(const QMouseEvent& event);
    void doubleClick(const QMouseEvent& event);
    bool key(const QKeyEvent& event);
    void leave();

    ViewContents contents;
    Asking asking = Asking::selection;

private:
    void settled();
    void moved();
    void hover();
    void setHovered(ObjectPath path);
    void updateCursor();
    void updateMarks();
    void leftPress(const QMouseEvent& event);
    void tellCoordinates();
    void beginGesture(const QPointF& pixel);
    bool zoomKey(const QKeyEvent& event);
    bool panKey(const QKeyEvent& event);
    bool selectionKey(const QKeyEvent& event);

    DrawingView& m_view;
    Navigation m_navigation;
    SelectionTool m_selecting;
    std::optional<HxGePoint3d> m_rubberFrom;
    bool m_nested = true;
    bool m_inside = false;
    QPointF m_cursor;
    MovingMarks m_drawn;  ///< the marks that are on the screen
    std::optional<QPointF> m_panFrom;
    QElapsedTimer m_lastTurn;
    QPointF m_turnedAt;
    bool m_clickTaken = false;  ///< the last click has changed the viewport, and no more
    Frame m_shown;
    HxDbObjectId m_shownSpace;
    QTimer m_hover;
    QTimer m_calm;
};

// ---- what is shown ----

void DrawingView::Imp::setDocument(Document* document) {
    m_selecting.cancel();
    m_navigation.end();
    m_panFrom.reset();
    contents.setDocument(document);
    updateCursor();
}

void DrawingView::Imp::setAsking(Asking wanted, std::optional<HxGePoint3d> rubberFrom, bool nested) {
    if (wanted != Asking::selection) {
        m_selecting.cancel();
    }
    asking = wanted;
    m_rubberFrom = rubberFrom;
    m_nested = nested;
    setHovered({});
    m_hover.start(kHoverPause);
    updateCursor();
    m_view.update();
}

MovingMarks DrawingView::Imp::marks() const {
    MovingMarks marks;
    if (!document()) {
        return marks;
    }
    if (m_selecting.hasWindow()) {
        const SpaceMap map = contents.map();
        marks.window = m_selecting.window(map);
        marks.crossing = m_selecting.isCrossing(map);
    }
    if (!m_inside || m_panFrom || asking == Asking::nothing || !contents.isInSpace(m_cursor)) {
        return marks;
    }
    marks.cursor = m_cursor;
    marks.rubberFrom = asking == Asking::point ? m_rubberFrom : std::nullopt;
    marks.look.arms = asking != Asking::entity;
    const bool picks = asking == Asking::entity || (asking == Asking::selection && !m_selecting.hasWindow());
    marks.look.box = picks ? std::max(integerVariable(L"PICKBOX"), 1) : 0;
    return marks;
}

/// The program is at rest after changes.
void DrawingView::Imp::settled() {
    setHovered({});
    m_hover.start(kHoverPause);
    updateCursor();
    if (!document()) {
        m_view.update();
        return;
    }
    if (selectionOf(*document()->database()).isEmpty() && asking != Asking::selection) {
        m_selecting.cancel();
    }
    const HxDbObjectId space = currentSpace(*document()->database());
    const Frame now = contents.frame();
    const QPointF shift = now.map.toPixel(m_shown.map.toSheet({0, 0}));
    if (space != m_shownSpace || now.size != m_shown.size ||
        now.map.unitsPerPixel() != m_shown.map.unitsPerPixel() || shift.manhattanLength() > 1e-6) {
        if (space != m_shownSpace) {
            m_selecting.cancel();
        }
        m_shown = now;
        m_shownSpace = space;
        tellCoordinates();
        emit m_view.viewChanged();
    }
    m_view.update();
}

void DrawingView::Imp::tellCoordinates() {
    if (m_inside && document()) {
        emit m_view.coordinatesChanged(contents.map().point(m_cursor));
    }
}

void DrawingView::Imp::updateCursor() {
    const bool own = marks().cursor.has_value();
    m_view.setCursor(m_panFrom ? Qt::ClosedHandCursor : own ? Qt::BlankCursor : Qt::ArrowCursor);
}

/// Repaints where marks were and where they are now.
void DrawingView::Imp::updateMarks() {
    const MovingMarks now = marks();
    if (now.rubberFrom || m_drawn.rubberFrom || !now.window.isNull() || !m_drawn.window.isNull()) {
        m_view.update();
    } else {
        for (const MovingMarks* each : {static_cast<const MovingMarks*>(&m_drawn), &now}) {
            if (each->cursor) {
                m_view.update(cursorArea(*each->cursor, each->look).toAlignedRect());
            }
        }
    }
    m_drawn = now;
    updateCursor();
}

void DrawingView::Imp::hover() {
    const bool picks = asking == Asking::entity || (asking == Asking::selection && !m_selecting.hasWindow());
    PickHit hit;
    if (!document() || !m_inside || m_panFrom || !picks || !contents.isInSpace(m_cursor) ||
        !pickUnder(*document(), contents.map(), m_cursor, asking == Asking::entity, hit)) {
        setHovered({});
        return;
    }
    const bool nested = asking == Asking::entity && m_nested;
    ObjectPath path = nested || hit.containers.empty() ? ObjectPath{hit.entity} : ObjectPath();
    if (nested || path.empty()) {
        path.insert(path.end(), nested ? hit.containers.begin() : hit.containers.end() - 1,
                    hit.containers.end());
    }
    setHovered(std::move(path));
}

void DrawingView::Imp::setHovered(ObjectPath path) {
    if (contents.lit.hovered != path) {
        contents.lit.hovered = std::move(path);
        contents.litChanged();
    }
}

// ---- zooming and panning ----

void DrawingView::Imp::beginGesture(const QPointF& pixel) {
    m_navigation.begin(*document(), contents.frame().map, pixel);
}

/// Something else is seen now.
void DrawingView::Imp::moved() {
    contents.setHasty(true);
    m_calm.start(kCalmPause);
    settled();
}

void DrawingView::Imp::zoom(const QPointF& pixel, double factor, bool ownGesture) {
    if (!document() || !(factor > 0)) {
        return;
    }
    if (ownGesture) {
        beginGesture(pixel);
    }
    m_navigation.zoom(contents.frame().map, pixel, factor);
    moved();
}

void DrawingView::Imp::pan(const QPointF& from, const QPointF& to) {
    m_navigation.pan(contents.frame().map, from, to);
    moved();
}

void DrawingView::Imp::panBy(const QPointF& pixels) {
    if (document()) {
        beginGesture(place());
        pan(place(), place() + pixels);
    }
}

void DrawingView::Imp::zoomExtents(const QPointF& pixel) {
    if (document()) {
        beginGesture(pixel);
        m_navigation.zoomExtents();
        moved();
    }
}

void DrawingView::Imp::wheel(const QWheelEvent& event) {
    const QPointF at = event.position();
    const bool goesOn = m_lastTurn.isValid() && m_lastTurn.elapsed() < kGesturePause &&
                        (at - m_turnedAt).manhattanLength() < 4 &&
                        m_navigation.goesOn(*document(), contents.frame().map, at);
    if (!goesOn) {
        beginGesture(at);
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
        zoom(at, std::pow(fine ? kZoomOfFineNotch : kZoomOfNotch, notches.y()), false);
    }
}

void DrawingView::Imp::pinch(const QPinchGesture& pinch) {
    const QPointF at = m_view.mapFromGlobal(pinch.centerPoint().toPoint());
    if (pinch.state() == Qt::GestureStarted) {
        beginGesture(at);
    }
    if (!m_navigation.isOn()) {
        return;
    }
    if (pinch.changeFlags() & QPinchGesture::CenterPointChanged) {
        pan(m_view.mapFromGlobal(pinch.lastCenterPoint().toPoint()), at);
    }
    if (pinch.changeFlags() & QPinchGesture::ScaleFactorChanged) {
        zoom(at, pinch.scaleFactor(), false);
    }
}

// ---- the mouse ----

void DrawingView::Imp::press(const QMouseEvent& event) {
    m_inside = true;
    m_cursor = event.localPos();
    if (event.button() == Qt::MiddleButton) {
        beginGesture(m_cursor);
        m_lastTurn.invalidate();
        m_panFrom = m_cursor;
    } else if (event.button() == Qt::LeftButton) {
        leftPress(event);
    }
    updateMarks();
}

void DrawingView::Imp::leftPress(const QMouseEvent& event) {
    m_clickTaken = !contents.isInSpace(m_cursor);
    if (m_clickTaken) {
        workInViewportAt(*document(), contents.frame().map.toSheet(m_cursor));
        return;
    }
    switch (asking) {
    case Asking::selection:
        m_selecting.press(*document(), contents.map(), m_cursor, event.modifiers() & Qt::ShiftModifier);
        setHovered({});
        break;
    case Asking::point:
    case Asking::entity: emit m_view.pointGiven(contents.map().point(m_cursor)); break;
    case Asking::nothing: break;
    }
}

void DrawingView::Imp::move(const QMouseEvent& event) {
    m_inside = true;
    m_cursor = event.localPos();
    if (m_panFrom && m_navigation.isOn()) {
        pan(*m_panFrom, m_cursor);
        m_panFrom = m_cursor;
    }
    m_selecting.move(m_cursor);
    updateMarks();
    tellCoordinates();
    if (!m_hover.isActive()) {
        m_hover.start(kHoverPause);
    }
}

void DrawingView::Imp::release(const QMouseEvent& event) {
    m_cursor = event.localPos();
    if (event.button() == Qt::MiddleButton) {
        m_panFrom.reset();
        m_navigation.end();
    } else if (event.button() == Qt::LeftButton && asking == Asking::selection) {
        m_selecting.release(*document(), contents.map(), m_cursor, event.modifiers() & Qt::ShiftModifier);
    }
    updateMarks();
}

void DrawingView::Imp::doubleClick(const QMouseEvent& event) {
    m_cursor = event.localPos();
    if (event.button() == Qt::MiddleButton) {
        zoomExtents(m_cursor);
        return;
    }
    if (event.button() != Qt::LeftButton) {
        return;
    }
    if (asking == Asking::selection &&
        changeSpaceByDoubleClick(*document(), contents.frame().map.toSheet(m_cursor))) {
        m_selecting.cancel();
        updateMarks();
    } else if (!m_clickTaken) {
        press(event);
    }
}

void DrawingView::Imp::leave() {
    m_inside = false;
    setHovered({});
    updateMarks();
}

// ---- keys ----

/// False for one that is not the view's.
bool DrawingView::Imp::key(const QKeyEvent& event) {
    return document() && (zoomKey(event) || panKey(event) || selectionKey(event));
}

bool DrawingView::Imp::zoomKey(const QKeyEvent& event) {
    if (!(event.modifiers() & Qt::ControlModifier)) {
        return false;
    }
    switch (event.key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal: zoom(place(), kZoomOfNotch, true); return true;
    case Qt::Key_Minus: zoom(place(), 1 / kZoomOfNotch, true); return true;
    case Qt::Key_0: zoomExtents(place()); return true;
    default: return false;
    }
}

/// With Ctrl by a tenth of the window, with Shift too by a half.
bool DrawingView::Imp::panKey(const QKeyEvent& event) {
    if (!(event.modifiers() & Qt::ControlModifier)) {
        return false;
    }
    const double part = event.modifiers() & Qt::ShiftModifier ? 0.5 : 0.1;
    const double x = std::round(m_view.width() * part);
    const double y = std::round(m_view.height() * part);
    switch (event.key()) {
    case Qt::Key_Left: panBy({x, 0}); return true;
    case Qt::Key_Right: panBy({-x, 0}); return true;
    case Qt::Key_Up: panBy({0, y}); return true;
    case Qt::Key_Down: panBy({0, -y}); return true;
    default: return false;
    }
}

bool DrawingView::Imp::selectionKey(const QKeyEvent& event) {
    if (event.key() == Qt::Key_Escape) {
        if (!m_selecting.cancel() && asking == Asking::selection) {
            selectionOf(*document()->database()).clear();
        }
        updateMarks();
        emit m_view.cancelPressed();
        return true;
    }
    if (asking != Asking::selection) {
        return false;
    }
    if (event.matches(QKeySequence::SelectAll)) {
        m_selecting.cancel();
        selectionOf(*document()->database()).addAll();
        updateMarks();
        return true;
    }
    if (event.key() == Qt::Key_Delete && !selectionOf(*document()->database()).isEmpty()) {
        hxDocManager()->sendStringToExecute(document(), L"_ERASE");
        return true;
    }
    return false;
}

// ---- the widget ----

DrawingView::DrawingView(QWidget* parent) : QWidget(parent), m_imp(std::make_unique<Imp>(*this)) {
    setAccessibleName("Drawing");
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setMinimumSize(100, 80);
    grabGesture(Qt::PinchGesture);
}

DrawingView::~DrawingView() { setScreenSize(0, 0); }

void DrawingView::setDocument(Document* document) {
    if (document != m_imp->document()) {
        m_imp->setDocument(document);
    }
}

Document* DrawingView::document() const { return m_imp->document(); }

void DrawingView::setDark(bool dark) { setSceneStyle(dark ? SceneStyle::dark() : SceneStyle::light()); }

void DrawingView::setSceneStyle(const SceneStyle& style) { m_imp->contents.setStyle(style); }

void DrawingView::setAsking(Asking asking, std::optional<HxGePoint3d> rubberFrom, bool nested) {
    m_imp->setAsking(asking, rubberFrom, nested);
}

DrawingView::Asking DrawingView::asking() const { return m_imp->asking; }

void DrawingView::setHighlighted(const std::vector<HxDbObjectId>& path) {
    m_imp->contents.lit.given = path;
    m_imp->contents.litChanged();
}

int DrawingView::paintCount() const { return m_imp->contents.paints(); }

QSize DrawingView::sizeHint() const { return {800, 600}; }

void DrawingView::zoomIn() { m_imp->zoom(m_imp->middle(), kZoomOfNotch, true); }
void DrawingView::zoomOut() { m_imp->zoom(m_imp->middle(), 1 / kZoomOfNotch, true); }
void DrawingView::zoomExtents() { m_imp->zoomExtents(m_imp->middle()); }

bool DrawingView::event(QEvent* event) {
    if (event->type() == QEvent::NativeGesture) {
        const auto* gesture = static_cast<QNativeGestureEvent*>(event);
        if (gesture->gestureType() == Qt::ZoomNativeGesture) {
            m_imp->zoom(gesture->localPos(), 1 + gesture->value(), true);
        } else if (gesture->gestureType() == Qt::SmartZoomNativeGesture) {
            m_imp->zoomExtents(gesture->localPos());
        }
        return true;
    }
    if (event->type() == QEvent::Gesture && document()) {
        if (const auto* pinch =
                static_cast<QPinchGesture*>(static_cast<QGestureEvent*>(event)->gesture(Qt::PinchGesture))) {
            m_imp->pinch(*pinch);
            return true;
        }
    }
    return QWidget::event(event);
}

void DrawingView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    m_imp->contents.paint(painter, m_imp->marks());
}

void DrawingView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    setScreenSize(width(), height());
    m_imp->contents.changed();
}

void DrawingView::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    setScreenSize(width(), height());
    m_imp->contents.changed();
}

void DrawingView::wheelEvent(QWheelEvent* event) {
    if (document()) {
        m_imp->wheel(*event);
    }
    event->accept();
}

void DrawingView::mousePressEvent(QMouseEvent* event) {
    if (document()) {
        m_imp->press(*event);
    }
}

void DrawingView::mouseMoveEvent(QMouseEvent* event) {
    if (document()) {
        m_imp->move(*event);
    }
}

void DrawingView::mouseReleaseEvent(QMouseEvent* event) {
    if (document()) {
        m_imp->release(*event);
    }
}

void DrawingView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (document()) {
        m_imp->doubleClick(*event);
    }
}

void DrawingView::keyPressEvent(QKeyEvent* event) {
    event->accept();
    if (!m_imp->key(*event)) {
        emit keyTyped(event);
    }
}

void DrawingView::leaveEvent(QEvent* event) {
    QWidget::leaveEvent(event);
    m_imp->leave();
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
