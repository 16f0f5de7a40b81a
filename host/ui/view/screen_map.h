// Pixels of the window and the points that they show.
#pragma once

#include "host/db/geometry/box.h"
#include "host/db/geometry/shape.h"
#include "host/editor/view.h"

#include <QPointF>
#include <QSizeF>

namespace korvex {

/// Between device-independent pixels and the sheet: model space or the paper of a layout, seen from above.
class ScreenMap {
public:
    ScreenMap() = default;
    ScreenMap(const View& view, const QSizeF& window);

    Point2 toSheet(const QPointF& pixel) const;
    QPointF toPixel(Point2 sheet) const;
    HxGeMatrix3d sheetToPixels() const;
    /// Drawing units in a pixel.
    double unitsPerPixel() const { return m_unitsPerPixel; }

    /// The view in which `sheet` lies under `pixel`, `factor` times as large as now.
    View zoomedAbout(const QPointF& pixel, double factor) const;
    /// The view after what is seen was moved by so many pixels.
    View movedBy(const QPointF& pixels) const;

private:
    View m_view;
    QPointF m_middle;
    double m_unitsPerPixel = 1;
};

/// Between pixels and the space that is worked in: through a floating viewport to model space.
class SpaceMap {
public:
    SpaceMap() = default;
    /// A null window: the space is what the sheet shows.
    SpaceMap(const ScreenMap& screen, std::shared_ptr<const ViewportWindow> window);

    /// Through a viewport the point on the plane z = 0 when that can be seen, else on the plane of its view.
    HxGePoint3d point(const QPointF& pixel) const;
    QPointF pixel(const HxGePoint3d& point) const;
    const ScreenMap& screen() const { return m_screen; }

private:
    ScreenMap m_screen;
    std::shared_ptr<const ViewportWindow> m_window;
    HxGeMatrix3d m_toSheet, m_toSpace;
};

}  // namespace korvex
