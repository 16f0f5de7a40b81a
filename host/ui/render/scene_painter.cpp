// A first painter: the curves of a space, in the colours of their layers.
#include "host/ui/render/scene_painter.h"

#include "host/db/geometry/flatten.h"
#include "host/editor/pick/block_geometry.h"
#include "host/editor/pick/nesting.h"

#include <QPainter>

namespace korvex {

class ScenePainter::Imp {};

ScenePainter::ScenePainter() : m_imp(std::make_unique<Imp>()) {}
ScenePainter::~ScenePainter() = default;

void ScenePainter::paint(QPainter& painter, const QRectF& window, const SceneView& view,
                         const SceneStyle& style) {
    painter.fillRect(window, style.background);
    HxDbStub* space = view.space.stub();
    if (!space) {
        return;
    }
    painter.setPen(QPen(style.ink, 0));
    const Box box{{window.left(), window.right()}, {window.top(), window.bottom()}};
    for (HxDbStub* entity : members(*space)) {
        if (!isAlive(*entity) || entity->subEntity) {
            continue;
        }
        std::vector<Polyline2> runs;
        flatten(shapeOf(*entity).path, view.toView, 0.25, box, runs);
        for (const Polyline2& run : runs) {
            QPolygonF polygon;
            for (const Point2& p : run) {
                polygon << QPointF(p.x, p.y);
            }
            painter.drawPolyline(polygon);
        }
    }
}

void ScenePainter::paintHighlighted(QPainter&, const QRectF&, const SceneView&, const SceneStyle&,
                                    const std::vector<HxDbObjectId>&) {}

bool ScenePainter::isComplete() const { return true; }
std::size_t ScenePainter::bytes() const { return 0; }

}  // namespace korvex
