// A document as the window shows it: drawing, selection, marks.
#pragma once

#include "host/editor/pick/floating_windows.h"
#include "host/ui/view/change_watch.h"
#include "host/ui/view/lit_objects.h"
#include "host/ui/view/marks.h"
#include "host/ui/view/scene_layers.h"
#include "host/ui/view/selection_grips.h"

#include <optional>

class QWidget;

namespace korvex {

/// What is drawn over the drawing besides the selection.
struct MovingMarks {
    std::optional<QPointF> cursor;
    CursorLook look;
    std::optional<HxGePoint3d> rubberFrom;
    QRectF window;  ///< of a selection; null for none
    bool crossing = false;
};

/// Follows the document of a widget and paints it. After changes the widget is repainted at the next turn of
/// the event loop, once.
class ViewContents {
public:
    /// `settled`: something has changed since, and the program is at rest.
    ViewContents(QWidget& widget, std::function<void()> settled);

    void setDocument(Document* document);
    Document* document() const { return m_document; }
    void setStyle(const SceneStyle& style);

    /// Of an open document.
    Frame frame() const;
    SpaceMap map() const;
    /// The floating viewport that is worked in, if any.
    FloatingWindow floating() const;
    /// The cursor there is in the space that is worked in: not beside the floating viewport.
    bool isInSpace(const QPointF& pixel) const;

    /// The objects that are lit have changed.
    LitObjects lit;
    void litChanged();
    /// While the view moves, what takes long to paint is shown as it was.
    void setHasty(bool hasty) { m_hasty = hasty; }
    void changed();

    void paint(QPainter& painter, const MovingMarks& marks);
    int paints() const { return m_layers.paints(); }

private:
    MarkColors colors() const;
    void highlight(HxDbObjectId object, bool on);
    void drawSelectionGrips(QPainter& painter, const SpaceMap& map);
    void schedule();

    QWidget& m_widget;
    std::function<void()> m_settled;
    Document* m_document = nullptr;
    SceneLayers m_layers;
    SelectionGrips m_grips;
    bool m_hasty = false;
    bool m_scheduled = false;
    bool m_selectionChanged = false;
    ChangeWatch m_watch;
};

}  // namespace korvex
