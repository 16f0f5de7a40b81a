// The grips of what is selected, kept while neither the drawing nor the selection changes.
#pragma once

#include "host/ui/view/screen_map.h"
#include "sdk/hxdbid.h"

#include <QRectF>

#include <vector>

namespace korvex {

/// Shown for small selections only: of many objects grips would hide the drawing.
class SelectionGrips {
public:
    static constexpr std::size_t kMostObjects = 100;
    static constexpr std::size_t kMostGrips = 2000;

    void invalidate() { m_valid = false; }
    /// Pixels of the grips that lie in the area.
    std::vector<QPointF> pixels(const std::vector<HxDbObjectId>& selection, const SpaceMap& map,
                                const QRectF& area);

private:
    void collect(const std::vector<HxDbObjectId>& selection);

    std::vector<HxGePoint3d> m_points;
    bool m_valid = false;
};

}  // namespace korvex
