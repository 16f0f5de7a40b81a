// Selecting with the mouse while no command runs: by clicks on objects, by windows.
#pragma once

#include "host/editor/picker.h"
#include "host/ui/view/screen_map.h"

#include <optional>

namespace korvex {

class Document;

/// What lies under the pick box in the space that is worked in. `throughViewports`: on paper also what
/// floating viewports show.
bool pickUnder(Document& document, const SpaceMap& map, const QPointF& pixel, bool throughViewports,
               PickHit& hit);

/// Clicks add to the selection, with Shift they remove from it. A click into nothing begins a window, which
/// the next click or the end of a drag ends: drawn to the right it takes what lies in it, drawn to the left
/// also what it crosses.
class SelectionTool {
public:
    void press(Document& document, const SpaceMap& map, const QPointF& pixel, bool removes);
    void move(const QPointF& pixel) { m_at = pixel; }
    void release(Document& document, const SpaceMap& map, const QPointF& pixel, bool removes);
    /// Drops a window that was begun. False when there is none.
    bool cancel();

    bool hasWindow() const { return m_corner.has_value(); }
    /// In pixels; where the view moves meanwhile, its first corner stays where it is in the drawing.
    QRectF window(const SpaceMap& map) const;
    bool isCrossing(const SpaceMap& map) const;

private:
    void finish(Document& document, const SpaceMap& map, bool removes);

    std::optional<HxGePoint3d> m_corner;  ///< in the current space
    QPointF m_pressed, m_at;
    bool m_isDown = false;
};

}  // namespace korvex
