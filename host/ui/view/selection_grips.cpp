// Takes the grips from the shapes of the selected objects.
#include "host/ui/view/selection_grips.h"

#include "host/editor/pick/block_geometry.h"
#include "host/ui/view/grips.h"

namespace korvex {

void SelectionGrips::collect(const std::vector<HxDbObjectId>& selection) {
    m_points.clear();
    m_valid = true;
    if (selection.size() > kMostObjects) {
        return;
    }
    for (const HxDbObjectId& object : selection) {
        const std::vector<HxGePoint3d> points =
            gripPoints(shapeOf(*object.stub()), kMostGrips - m_points.size());
        m_points.insert(m_points.end(), points.begin(), points.end());
    }
}

std::vector<QPointF> SelectionGrips::pixels(const std::vector<HxDbObjectId>& selection, const SpaceMap& map,
                                            const QRectF& area) {
    if (!m_valid) {
        collect(selection);
    }
    std::vector<QPointF> pixels;
    for (const HxGePoint3d& point : m_points) {
        const QPointF pixel = map.pixel(point);
        if (area.contains(pixel)) {
            pixels.push_back(pixel);
        }
    }
    return pixels;
}

}  // namespace korvex
