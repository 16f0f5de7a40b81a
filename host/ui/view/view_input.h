// What mouse and keys mean: answers, selections, other viewports; and how the cursor looks.
#pragma once

#include "host/ui/view/drawing_view.h"
#include "host/ui/view/selection_tool.h"
#include "host/ui/view/view_contents.h"
#include "host/ui/view/view_movement.h"

namespace korvex {

/// The inside of a DrawingView: takes its events and emits its signals.
class DrawingView::Input {
public:
    explicit Input(DrawingView& view);

    Document* document() const { return m_contents.document(); }
    void setDocument(Document* document);
    void setAsking(Asking asking, std::optional<HxGePoint3d> rubberFrom, bool nested);
    Asking asking() const { return m_asking; }
    ViewContents& contents() { return m_contents; }
    ViewMovement& movement() { return m_movement; }

    void paint(QPainter& painter) { m_contents.paint(painter, marks()); }

    // Events; those of the mouse only with a document.
    void press(const QMouseEvent& event);
    void move(const QMouseEvent& event);
    void release(const QMouseEvent& event);
    void doubleClick(const QMouseEvent& event);
    void leave();
    /// False for a key that is not the view's own.
    bool key(const QKeyEvent& event);

private:
    HxDbDatabase& database() const;
    MovingMarks marks() const;
    bool takesPicks() const;
    void settled();
    bool isSeenOtherwise() const;
    void tellCoordinates();
    void hover();
    ObjectPath pathUnderCursor() const;
    void setHovered(ObjectPath path);
    void updateCursor();
    void updateMarks();
    void leftPress(const QMouseEvent& event);
    bool selectionKey(const QKeyEvent& event);

    DrawingView& m_view;
    ViewContents m_contents;
    ViewMovement m_movement;
    SelectionTool m_selecting;
    Asking m_asking = Asking::selection;
    std::optional<HxGePoint3d> m_rubberFrom;
    bool m_nested = true;
    bool m_inside = false;  ///< the cursor is in the window
    QPointF m_cursor;
    MovingMarks m_drawn;        ///< the marks that are on the screen
    bool m_clickTaken = false;  ///< the last click has changed the viewport, and no more
    Frame m_shown;              ///< as the last viewChanged told
    HxDbObjectId m_shownSpace;
    QTimer m_hover;
};

}  // namespace korvex
