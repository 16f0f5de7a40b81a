// The two ways of each mapping.
#include "host/ui/view/screen_map.h"

#include <algorithm>

namespace korvex {

namespace {

// Beyond these a view holds nothing that doubles could tell apart.
constexpr double kLeastHeight = 1e-9;
constexpr double kGreatestHeight = 1e15;

}  // namespace

ScreenMap::ScreenMap(const View& view, const QSizeF& window)
    : m_view(view), m_middle(window.width() / 2, window.height() / 2),
      m_unitsPerPixel(view.height / std::max(window.height(), 1.0)) {}

Point2 ScreenMap::toSheet(const QPointF& pixel) const {
    return {m_view.center.x + (pixel.x() - m_middle.x()) * m_unitsPerPixel,
            m_view.center.y - (pixel.y() - m_middle.y()) * m_unitsPerPixel};
}

QPointF ScreenMap::toPixel(Point2 sheet) const {
    return {m_middle.x() + (sheet.x - m_view.center.x) / m_unitsPerPixel,
            m_middle.y() - (sheet.y - m_view.center.y) / m_unitsPerPixel};
}

HxGeMatrix3d ScreenMap::sheetToPixels() const {
    const double scale = 1 / m_unitsPerPixel;
    return HxGeMatrix3d::translation({m_middle.x(), m_middle.y()}) *
           HxGeMatrix3d::scaling(scale, -scale, scale) *
           HxGeMatrix3d::translation({-m_view.center.x, -m_view.center.y});
}

View ScreenMap::zoomedAbout(const QPointF& pixel, double factor) const {
    const Point2 fixed = toSheet(pixel);
    View view = m_view;
    view.height = std::clamp(m_view.height / factor, kLeastHeight, kGreatestHeight);
    const double ratio = view.height / m_view.height;
    view.center.x = fixed.x + (m_view.center.x - fixed.x) * ratio;
    view.center.y = fixed.y + (m_view.center.y - fixed.y) * ratio;
    view.unitsPerPixel = m_view.unitsPerPixel * ratio;
    return view;
}

View ScreenMap::movedBy(const QPointF& pixels) const {
    View view = m_view;
    view.center.x -= pixels.x() * m_unitsPerPixel;
    view.center.y += pixels.y() * m_unitsPerPixel;
    return view;
}

SpaceMap::SpaceMap(const ScreenMap& screen, std::shared_ptr<const ViewportWindow> window)
    : m_screen(screen), m_window(std::move(window)) {
    if (m_window) {
        m_toSheet = m_window->modelToPaper();
        m_toSpace = m_toSheet.inverse();
    }
}

HxGePoint3d SpaceMap::point(const QPointF& pixel) const {
    const Point2 sheet = m_screen.toSheet(pixel);
    if (!m_window) {
        return {sheet.x, sheet.y};
    }
    const HxGePoint3d onPlane = m_toSpace * HxGePoint3d(sheet.x, sheet.y, m_window->centre.z);
    const HxGeVector3d sight =
        (m_toSpace * HxGePoint3d(sheet.x, sheet.y, m_window->centre.z + 1) - onPlane).normal();
    constexpr double kEdgeOn = 1e-6;
    return std::fabs(sight.z) > kEdgeOn ? onPlane - sight * (onPlane.z / sight.z) : onPlane;
}

QPointF SpaceMap::pixel(const HxGePoint3d& point) const {
    const HxGePoint3d sheet = m_toSheet * point;
    return m_screen.toPixel({sheet.x, sheet.y});
}

}  // namespace korvex
