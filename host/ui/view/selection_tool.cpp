// Picks and windows become changes of the document's selection.
#include "host/ui/view/selection_tool.h"

#include "host/editor/documents.h"
#include "host/editor/selection.h"
#include "host/editor/view.h"
#include "sdk/hxdbentity.h"

#include <QGuiApplication>
#include <QStyleHints>

namespace korvex {

namespace {

bool isDrag(const QPointF& from, const QPointF& to) {
    return (to - from).manhattanLength() >= QGuiApplication::styleHints()->startDragDistance();
}

void change(Document& document, const std::vector<HxDbObjectId>& objects, bool removes) {
    Selection& selection = selectionOf(*document.database());
    if (removes) {
        selection.remove(objects);
    } else {
        selection.add(objects);
    }
}

}  // namespace

bool pickUnder(Document& document, const SpaceMap& map, const QPointF& pixel, bool throughViewports,
               PickHit& hit) {
    HxDbDatabase& database = *document.database();
    PickRequest request;
    request.database = &database;
    request.space = currentSpace(database);
    request.viewport = hxdbGetCurVportId(&database);
    request.point = map.point(pixel);
    request.halfSize = pickBoxHalfSize(database);
    request.throughViewports = throughViewports;
    return pickAt(request, hit);
}

void SelectionTool::press(Document& document, const SpaceMap& map, const QPointF& pixel, bool removes) {
    m_at = pixel;
    if (m_corner) {
        finish(document, map, removes);
        return;
    }
    PickHit hit;
    if (pickUnder(document, map, pixel, false, hit)) {
        change(document, {hit.containers.empty() ? hit.entity : hit.containers.back()}, removes);
        return;
    }
    m_corner = map.point(pixel);
    m_pressed = pixel;
    m_isDown = true;
}

void SelectionTool::release(Document& document, const SpaceMap& map, const QPointF& pixel, bool removes) {
    m_at = pixel;
    if (m_corner && m_isDown && isDrag(m_pressed, pixel)) {
        finish(document, map, removes);
    }
    m_isDown = false;
}

bool SelectionTool::cancel() {
    const bool had = hasWindow();
    m_corner.reset();
    m_isDown = false;
    return had;
}

QRectF SelectionTool::window(const SpaceMap& map) const {
    return m_corner ? QRectF(map.pixel(*m_corner), m_at).normalized() : QRectF();
}

bool SelectionTool::isCrossing(const SpaceMap& map) const {
    return m_corner && m_at.x() < map.pixel(*m_corner).x();
}

void SelectionTool::finish(Document& document, const SpaceMap& map, bool removes) {
    HxDbDatabase& database = *document.database();
    AreaRequest request;
    request.database = &database;
    request.space = currentSpace(database);
    request.viewport = hxdbGetCurVportId(&database);
    request.first = *m_corner;
    request.second = map.point(m_at);
    request.crossing = isCrossing(map);
    cancel();
    change(document, pickInArea(request), removes);
}

}  // namespace korvex
