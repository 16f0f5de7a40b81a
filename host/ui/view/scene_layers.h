// What the window shows of a drawing, in three layers: the drawing itself, the selection, what is lit.
#pragma once

#include "host/ui/render/scene_painter.h"
#include "host/ui/view/back_buffer.h"

#include <vector>

namespace korvex {

/// An object with the references that hold it, innermost first.
using ObjectPath = std::vector<HxDbObjectId>;

/// What a window shows in a frame: the current space, and the floating viewport that is worked in.
SceneView sceneView(HxDbDatabase& database, const Frame& frame);
/// The user wants to see lineweights in the drawing.
bool showsLineweights(const HxDbDatabase& database);

/// Paints one drawing and keeps what was painted.
class SceneLayers {
public:
    SceneLayers();

    void setStyle(const SceneStyle& style);
    const SceneStyle& style() const { return m_style; }
    void setLineweights(bool shown);

    /// The drawing was changed.
    void invalidate();
    void setSelection(std::vector<HxDbObjectId> objects);
    /// Lit until something else is: picked or hovered objects. Nothing happens when they are the same.
    void setLit(std::vector<ObjectPath> paths);
    /// Forgets all that belongs to a drawing.
    void clear();

    /// What is out of date is painted first or, if `hastily` and that would take long, shown as it was:
    /// moved and scaled. False then.
    bool draw(QPainter& painter, HxDbDatabase& database, const Frame& frame, bool hastily);
    /// False when the drawing holds too much to be shown as a whole.
    bool isComplete() const { return m_painter.isComplete(); }
    /// How often the drawing was painted as a whole.
    int paints() const { return m_paints; }

private:
    void drawOver(BackBuffer& buffer, QPainter& painter, const SceneView& view, const Frame& frame,
                  bool hastily, const std::vector<ObjectPath>& paths);

    ScenePainter m_painter;
    SceneStyle m_style;
    BackBuffer m_scene;
    BackBuffer m_selection;
    BackBuffer m_lit;
    std::vector<ObjectPath> m_selected;
    std::vector<ObjectPath> m_litPaths;
    int m_paints = 0;
};

}  // namespace korvex
