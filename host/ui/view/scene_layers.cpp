// Which layer is out of date when.
#include "host/ui/view/scene_layers.h"

#include "host/db/kernel/header.h"
#include "sdk/hxdbentity.h"

#include <QPainter>

namespace korvex {

namespace {

// Milliseconds: what takes longer is not painted anew at every turn of the wheel.
constexpr qint64 kHasty = 40;

}  // namespace

SceneView sceneView(HxDbDatabase& database, const Frame& frame) {
    SceneView view;
    view.database = &database;
    view.space = database.tilemode() ? database.modelSpaceId() : database.paperSpaceId();
    view.viewport = database.cvport() > 1 ? hxdbGetCurVportId(&database) : HxDbObjectId();
    view.toView = frame.map.sheetToPixels();
    return view;
}

bool showsLineweights(const HxDbDatabase& database) { return headerInteger(database, L"$LWDISPLAY", 0) != 0; }

SceneLayers::SceneLayers()
    : m_style(SceneStyle::dark()), m_scene(QImage::Format_RGB32),
      m_selection(QImage::Format_ARGB32_Premultiplied), m_lit(QImage::Format_ARGB32_Premultiplied) {}

void SceneLayers::setStyle(const SceneStyle& style) {
    const bool lineweights = m_style.lineweights;
    m_style = style;
    m_style.lineweights = lineweights;
    invalidate();
}

void SceneLayers::setLineweights(bool shown) {
    if (shown != m_style.lineweights) {
        m_style.lineweights = shown;
        invalidate();
    }
}

void SceneLayers::invalidate() {
    m_scene.invalidate();
    m_selection.invalidate();
    m_lit.invalidate();
}

void SceneLayers::setSelection(std::vector<HxDbObjectId> objects) {
    m_selected.clear();
    m_selected.reserve(objects.size());
    for (const HxDbObjectId& id : objects) {
        m_selected.push_back({id});
    }
    m_selection.invalidate();
}

void SceneLayers::setLit(std::vector<ObjectPath> paths) {
    if (paths != m_litPaths) {
        m_litPaths = std::move(paths);
        m_lit.invalidate();
    }
}

void SceneLayers::clear() {
    m_selected.clear();
    m_litPaths.clear();
    m_scene.clear();
    m_selection.clear();
    m_lit.clear();
}

bool SceneLayers::draw(QPainter& painter, HxDbDatabase& database, const Frame& frame, bool hastily) {
    const SceneView view = sceneView(database, frame);
    const bool late = hastily && !m_scene.isEmpty() && m_scene.cost() > kHasty && !m_scene.isCurrent(frame);
    if (!late) {
        m_scene.update(frame, [&](QPainter& on, const QRectF& part) {
            ++m_paints;
            m_painter.paint(on, part, view, m_style);
        });
    } else {
        painter.fillRect(QRect({0, 0}, frame.size), database.tilemode() ? m_style.background : m_style.desk);
    }
    m_scene.draw(painter, frame);
    drawOver(m_selection, painter, view, frame, late, m_selected);
    drawOver(m_lit, painter, view, frame, late, m_litPaths);
    return !late;
}

void SceneLayers::drawOver(BackBuffer& buffer, QPainter& painter, const SceneView& view, const Frame& frame,
                           bool hastily, const std::vector<ObjectPath>& paths) {
    if (paths.empty()) {
        buffer.clear();
        return;
    }
    if (!hastily) {
        buffer.update(frame, [&](QPainter& on, const QRectF& part) {
            m_painter.paintHighlighted(on, part, view, m_style, paths);
        });
    }
    buffer.draw(painter, frame);
}

}  // namespace korvex
