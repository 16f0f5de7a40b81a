// One function an event.
#include "host/ui/view/view_input.h"

#include "host/editor/documents.h"
#include "host/editor/editor.h"
#include "host/editor/selection.h"
#include "host/editor/system_variables.h"
#include "host/editor/view.h"
#include "host/ui/view/viewport_clicks.h"

#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>

namespace korvex {

namespace {

constexpr int kHoverPause = 20;  // milliseconds between looks for what is under the cursor

}  // namespace

DrawingView::Input::Input(DrawingView& view)
    : m_view(view), m_contents(view, [this] { settled(); }),
      m_movement(view, m_contents, [this] { settled(); }) {
    m_hover.setSingleShot(true);
    QObject::connect(&m_hover, &QTimer::timeout, &view, [this] { hover(); });
}

HxDbDatabase& DrawingView::Input::database() const { return *document()->database(); }

void DrawingView::Input::setDocument(Document* document) {
    m_selecting.cancel();
    m_movement.end();
    m_contents.setDocument(document);
    updateCursor();
}

void DrawingView::Input::setAsking(Asking asking, std::optional<HxGePoint3d> rubberFrom, bool nested) {
    if (asking != Asking::selection) {
        m_selecting.cancel();
    }
    m_asking = asking;
    m_rubberFrom = rubberFrom;
    m_nested = nested;
    setHovered({});
    m_hover.start(kHoverPause);
    updateCursor();
    m_view.update();
}

// ---- what is shown ----

bool DrawingView::Input::takesPicks() const {
    return m_asking == Asking::entity || (m_asking == Asking::selection && !m_selecting.hasWindow());
}

MovingMarks DrawingView::Input::marks() const {
    MovingMarks marks;
    if (!document()) {
        return marks;
    }
    if (m_selecting.hasWindow()) {
        const SpaceMap map = m_contents.map();
        marks.window = m_selecting.window(map);
        marks.crossing = m_selecting.isCrossing(map);
    }
    if (!m_inside || m_movement.isPanning() || m_asking == Asking::nothing ||
        !m_contents.isInSpace(m_cursor)) {
        return marks;
    }
    marks.cursor = m_cursor;
    marks.rubberFrom = m_asking == Asking::point ? m_rubberFrom : std::nullopt;
    marks.look.arms = m_asking != Asking::entity;
    marks.look.box = takesPicks() ? std::max(integerVariable(L"PICKBOX"), 1) : 0;
    return marks;
}

/// Something has changed or moved, and the program is at rest.
void DrawingView::Input::settled() {
    setHovered({});
    m_hover.start(kHoverPause);
    m_view.update();
    if (!document()) {
        m_selecting.cancel();
        m_movement.end();
    } else if (isSeenOtherwise()) {
        const HxDbObjectId space = currentSpace(database());
        if (space != m_shownSpace) {
            m_selecting.cancel();
        }
        m_shown = m_contents.frame();
        m_shownSpace = space;
        tellCoordinates();
        emit m_view.viewChanged();
    }
    updateCursor();
}

bool DrawingView::Input::isSeenOtherwise() const {
    const Frame now = m_contents.frame();
    const QPointF shift = now.map.toPixel(m_shown.map.toSheet({0, 0}));
    return currentSpace(database()) != m_shownSpace || now.size != m_shown.size ||
           now.map.unitsPerPixel() != m_shown.map.unitsPerPixel() || shift.manhattanLength() > 1e-6;
}

void DrawingView::Input::tellCoordinates() {
    if (m_inside && document()) {
        emit m_view.coordinatesChanged(m_contents.map().point(m_cursor));
    }
}

void DrawingView::Input::updateCursor() {
    const bool own = marks().cursor.has_value();
    m_view.setCursor(m_movement.isPanning() ? Qt::ClosedHandCursor : own ? Qt::BlankCursor : Qt::ArrowCursor);
}

/// Repaints where marks were and where they are now.
void DrawingView::Input::updateMarks() {
    const MovingMarks now = marks();
    if (now.rubberFrom || m_drawn.rubberFrom || !now.window.isNull() || !m_drawn.window.isNull()) {
        m_view.update();
    } else {
        for (const MovingMarks& each : {m_drawn, now}) {
            if (each.cursor) {
                m_view.update(cursorArea(*each.cursor, each.look).toAlignedRect());
            }
        }
    }
    m_drawn = now;
    updateCursor();
}

void DrawingView::Input::hover() { setHovered(pathUnderCursor()); }

/// What a click would pick; empty when nothing is picked.
ObjectPath DrawingView::Input::pathUnderCursor() const {
    PickHit hit;
    if (!document() || !m_inside || m_movement.isPanning() || !takesPicks() ||
        !m_contents.isInSpace(m_cursor) ||
        !pickUnder(*document(), m_contents.map(), m_cursor, m_asking == Asking::entity, hit)) {
        return {};
    }
    if (m_asking == Asking::selection || !m_nested) {
        return {hit.containers.empty() ? hit.entity : hit.containers.back()};
    }
    ObjectPath path{hit.entity};
    path.insert(path.end(), hit.containers.begin(), hit.containers.end());
    return path;
}

void DrawingView::Input::setHovered(ObjectPath path) {
    if (m_contents.lit.hovered != path) {
        m_contents.lit.hovered = std::move(path);
        m_contents.litChanged();
    }
}

// ---- the mouse ----

void DrawingView::Input::press(const QMouseEvent& event) {
    m_inside = true;
    m_cursor = event.localPos();
    if (event.button() == Qt::MiddleButton) {
        m_movement.beginPan(m_cursor);
    } else if (event.button() == Qt::LeftButton) {
        leftPress(event);
    }
    updateMarks();
}

void DrawingView::Input::leftPress(const QMouseEvent& event) {
    m_clickTaken = !m_contents.isInSpace(m_cursor);
    if (m_clickTaken) {
        workInViewportAt(*document(), m_contents.frame().map.toSheet(m_cursor));
        return;
    }
    switch (m_asking) {
    case Asking::selection:
        m_selecting.press(*document(), m_contents.map(), m_cursor, event.modifiers() & Qt::ShiftModifier);
        setHovered({});
        break;
    case Asking::point:
    case Asking::entity: emit m_view.pointGiven(m_contents.map().point(m_cursor)); break;
    case Asking::nothing: break;
    }
}

void DrawingView::Input::move(const QMouseEvent& event) {
    m_inside = true;
    m_cursor = event.localPos();
    m_movement.panTo(m_cursor);
    m_selecting.move(m_cursor);
    updateMarks();
    tellCoordinates();
    if (!m_hover.isActive()) {
        m_hover.start(kHoverPause);
    }
}

void DrawingView::Input::release(const QMouseEvent& event) {
    m_cursor = event.localPos();
    if (event.button() == Qt::MiddleButton) {
        m_movement.endPan();
    } else if (event.button() == Qt::LeftButton && m_asking == Asking::selection) {
        m_selecting.release(*document(), m_contents.map(), m_cursor, event.modifiers() & Qt::ShiftModifier);
    }
    updateMarks();
}

void DrawingView::Input::doubleClick(const QMouseEvent& event) {
    m_cursor = event.localPos();
    if (event.button() == Qt::MiddleButton) {
        m_movement.zoomExtents(m_cursor);
        return;
    }
    if (event.button() != Qt::LeftButton) {
        return;
    }
    if (m_asking == Asking::selection &&
        changeSpaceByDoubleClick(*document(), m_contents.frame().map.toSheet(m_cursor))) {
        m_selecting.cancel();
        updateMarks();
    } else if (!m_clickTaken) {
        press(event);
    }
}

void DrawingView::Input::leave() {
    m_inside = false;
    setHovered({});
    updateMarks();
}

// ---- keys ----

bool DrawingView::Input::key(const QKeyEvent& event) {
    const QPointF place = m_inside ? m_cursor : QRectF(m_view.rect()).center();
    return document() && (m_movement.key(event, place) || selectionKey(event));
}

bool DrawingView::Input::selectionKey(const QKeyEvent& event) {
    if (event.key() == Qt::Key_Escape) {
        if (!m_selecting.cancel() && m_asking == Asking::selection) {
            selectionOf(database()).clear();
        }
        updateMarks();
        emit m_view.cancelPressed();
        return true;
    }
    if (m_asking != Asking::selection) {
        return false;
    }
    if (event.matches(QKeySequence::SelectAll)) {
        m_selecting.cancel();
        selectionOf(database()).addAll();
        updateMarks();
        return true;
    }
    if (event.key() == Qt::Key_Delete && !selectionOf(database()).isEmpty()) {
        hxDocManager()->sendStringToExecute(document(), L"_ERASE");
        return true;
    }
    return false;
}

}  // namespace korvex
