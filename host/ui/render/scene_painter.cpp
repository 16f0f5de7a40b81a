// Puts a picture together: ground, sheet of paper, what viewports show, the space itself.
#include "host/ui/render/scene_painter.h"

#include "host/db/kernel/header.h"
#include "host/editor/pick/block_geometry.h"
#include "host/editor/pick/floating_windows.h"
#include "host/ui/render/scene_walk.h"
#include "host/ui/render/sheet.h"

#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace korvex {

namespace {

double headerReal(const HxDbDatabase& database, const wchar_t* name, double fallback) {
    std::vector<HeaderGroup> groups;
    const bool known = headerValue(database, name, groups) && !groups.empty();
    return known && std::isfinite(groups[0].real) && groups[0].real > 0 ? groups[0].real : fallback;
}

/// The part of the painter's device that a window covers, and the way there.
struct DeviceWindow {
    DeviceWindow(const QPainter& painter, const QRectF& window) : toDevice(painter.deviceTransform()) {
        constexpr int kMost = 16384;
        const QRect covered = toDevice.mapRect(window).toAlignedRect();
        rect = QRect(covered.topLeft(), covered.size().boundedTo(QSize(kMost, kMost)));
        scale = std::max(std::hypot(toDevice.m11(), toDevice.m12()), 1e-6);
    }

    /// From the space to pixels of the covered part.
    HxGeMatrix3d matrix(const SceneView& view) const {
        HxGeMatrix3d m;
        m.entry[0] = {toDevice.m11(), toDevice.m21(), 0, toDevice.dx() - rect.left()};
        m.entry[1] = {toDevice.m12(), toDevice.m22(), 0, toDevice.dy() - rect.top()};
        return m * view.toView;
    }
    void show(QPainter& painter, const QImage& image) const {
        const QRectF where = toDevice.inverted().mapRect(QRectF(rect));
        painter.drawImage(where, image, QRectF(image.rect()));
    }

    void narrow(const QRect& part) { rect = rect.intersected(part.translated(rect.topLeft())); }

    QTransform toDevice;
    QRect rect;
    double scale = 1;
};

Box seen(const Box& box, const HxGeMatrix3d& m) { return box.transformed(m); }

QRect pixels(const Box& box) {
    const double kFar = 1e6;
    const auto near = [kFar](double v) { return static_cast<int>(std::min(std::max(v, -kFar), kFar)); };
    const int left = near(std::floor(box.x.low));
    const int top = near(std::floor(box.y.low));
    return {left, top, near(std::ceil(box.x.high)) - left, near(std::ceil(box.y.high)) - top};
}

}  // namespace

class ScenePainter::Imp {
public:
    DisplayCache cache;
    Canvas canvas;
    Canvas clipped;    ///< for viewports that are no rectangles
    Canvas highlight;  ///< a picture of its own, so that the others keep their size
    bool isComplete = true;
};

namespace {

/// One paint of one space.
class ScenePicture {
public:
    ScenePicture(Canvas& canvas, Canvas& clipped, DisplayCache& cache, const SceneView& view,
                 const SceneStyle& style, const HxGeMatrix3d& toDevice, double scale,
                 const SceneEffort& effort = SceneEffort())
        : m_canvas(canvas), m_clipped(clipped), m_cache(cache), m_view(view), m_style(style),
          m_assumed(view.assumed ? *view.assumed : AssumedLayers::none()), m_database(*view.database),
          m_space(*view.space.stub()), m_toDevice(toDevice), m_isPaper(isPaper(m_database, m_space)) {
        m_budget.until = effort.until;
        m_settings.isCoarse = effort.isCoarse;
        m_settings.hairline = std::max(1.0, std::floor(scale + 0.25));
        m_settings.linetypeScale = headerReal(m_database, L"$LTSCALE", 1);
        const bool weighs = style.lineweights && !effort.isCoarse;
        m_settings.pixelsPerMillimetre = weighs ? style.pixelsPerMillimetre * scale : 0;
        m_settings.ground = (m_isPaper ? style.paper : style.background).rgb();
        readPointStyle(scale);
        if (m_isPaper) {
            m_sheet = sheetOf(m_database, m_space);
            const double stretch = std::hypot(toDevice.entry[0][0], toDevice.entry[1][0]);
            m_settings.pixelsPerMillimetre = weighs ? stretch / m_sheet.millimetres : 0;
        }
    }

    bool isComplete() { return !m_budget.isSpent(); }

    void draw() {
        if (!m_isPaper) {
            LookRules rules(m_style, false, m_view.viewport, m_assumed);
            SceneWalk(m_canvas, m_cache, rules, m_settings, m_budget).drawSpace(m_space, m_toDevice);
            return;
        }
        drawSheet();
        forEachWindow([this](Canvas& canvas, const FloatingWindow& at, const HxGeMatrix3d& toDevice) {
            LookRules rules(m_style, true, HxDbObjectId(at.viewport), m_assumed);
            SceneWalk(canvas, m_cache, rules, settingsIn(*at.window), m_budget)
                .drawSpace(*modelSpace(m_database), toDevice);
        });
        LookRules rules(m_style, true, HxDbObjectId(), m_assumed);
        WalkSettings settings = m_settings;
        settings.drawsFrames = true;
        SceneWalk(m_canvas, m_cache, rules, settings, m_budget).drawSpace(m_space, m_toDevice);
        drawActiveFrame();
    }

    void drawHighlighted(const std::vector<HxDbStub*>& path) {
        ResolvedLook look;
        look.color = m_style.highlight.rgb();
        m_settings.forced = &look;
        m_settings.extraWidth = m_settings.hairline;
        m_settings.drawsFrames = true;
        HxDbStub* model = modelSpace(m_database);
        const HxDbStub* outermost = path.back();
        if (outermost->owner != &m_space && m_isPaper && model && outermost->owner == model) {
            forEachWindow([&](Canvas& canvas, const FloatingWindow& at, const HxGeMatrix3d& toDevice) {
                LookRules rules(m_style, true, HxDbObjectId(at.viewport), m_assumed);
                SceneWalk(canvas, m_cache, rules, settingsIn(*at.window), m_budget)
                    .drawPath(*model, path, toDevice);
            });
            return;
        }
        LookRules rules(m_style, m_isPaper, m_isPaper ? HxDbObjectId() : m_view.viewport, m_assumed);
        SceneWalk(m_canvas, m_cache, rules, m_settings, m_budget).drawPath(m_space, path, m_toDevice);
    }

private:
    /// Sizes that are relative to the screen are taken to be of a fixed one: the window may be a part of it.
    void readPointStyle(double scale) {
        constexpr double kUsual = 10;
        constexpr double kScreen = 800;
        m_settings.pointMode = static_cast<int>(headerInteger(m_database, L"$PDMODE", 0));
        std::vector<HeaderGroup> groups;
        const bool known = headerValue(m_database, L"$PDSIZE", groups) && !groups.empty();
        const double size = known && std::isfinite(groups[0].real) ? groups[0].real : 0;
        m_settings.pointUnits = std::max(size, 0.0);
        m_settings.pointSize = scale * (size < 0 ? std::min(-size / 100 * kScreen, kScreen) : kUsual);
    }

    void drawSheet() {
        if (m_sheet.paper.isEmpty()) {
            m_canvas.painter().fillRect(m_canvas.image().rect(), m_style.paper);
            return;
        }
        const QRect sheet = pixels(seen(m_sheet.paper, m_toDevice));
        const int shadow = static_cast<int>(4 * m_settings.hairline);
        m_canvas.painter().fillRect(sheet.translated(shadow, shadow), m_style.desk.darker(140));
        m_canvas.painter().fillRect(sheet, m_style.paper);
    }

    /// With paper-space scaling of linetypes patterns are as long on paper in every viewport.
    WalkSettings settingsIn(const ViewportWindow& window) const {
        WalkSettings settings = m_settings;
        const double scale = window.viewHeight > 0 ? window.height / window.viewHeight : 1;
        if (headerInteger(m_database, L"$PSLTSCALE", 1) != 0 && scale > 0 && std::isfinite(scale)) {
            settings.linetypeScale /= scale;
        }
        settings.drawsFrames = false;
        return settings;
    }

    template <class Draw>
    void forEachWindow(const Draw& draw) {
        if (!modelSpace(m_database)) {
            return;
        }
        const QRect whole = m_canvas.image().rect();
        const Box shown{{0, double(whole.width())}, {0, double(whole.height())}};
        const Box onPaper = shown.transformed(m_toDevice.inverse());
        for (const FloatingWindow& at : floatingWindowsIn(m_space, onPaper)) {
            const QRect frame = pixels(seen(at.window->frame(), m_toDevice)).intersected(whole);
            if (frame.isEmpty()) {
                continue;
            }
            const HxGeMatrix3d toDevice = m_toDevice * at.window->modelToPaper();
            const Shape clip = clipOf(m_database, *at.window);
            if (clip.path.isEmpty()) {
                m_canvas.setClip(frame);
                draw(m_canvas, at, toDevice);
                m_canvas.setClip(whole);
            } else {
                drawClipped(frame, clip, [&] {
                    const HxGeMatrix3d shift =
                        HxGeMatrix3d::translation({-double(frame.left()), -double(frame.top())});
                    draw(m_clipped, at, shift * toDevice);
                });
            }
        }
    }

    /// Draws on a copy of what is there, and takes over what lies within the clip.
    template <class Draw>
    void drawClipped(const QRect& frame, const Shape& clip, const Draw& draw) {
        constexpr double kTolerance = 0.25;
        std::vector<Polyline2> loops;
        const Box box{{double(frame.left()), double(frame.right())},
                      {double(frame.top()), double(frame.bottom())}};
        flatten(clip.path, m_toDevice, kTolerance, box, loops);
        QPainterPath path;
        for (const Polyline2& loop : loops) {
            QPolygonF polygon;
            for (const Point2& p : loop) {
                polygon << QPointF(p.x, p.y);
            }
            path.addPolygon(polygon);
            path.closeSubpath();
        }
        m_clipped.begin(m_canvas, frame);
        draw();
        m_clipped.end();
        QPainter& painter = m_canvas.painter();
        painter.save();
        painter.setClipPath(path);
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.drawImage(frame.topLeft(), m_clipped.image());
        painter.restore();
    }

    void drawActiveFrame() {
        HxDbStub* active = m_view.viewport.stub();
        if (!active || active->owner != &m_space || !isAlive(*active)) {
            return;
        }
        const Shape shape = shapeOf(*active);
        if (!shape.window || !shape.window->isFloating()) {
            return;
        }
        const Shape clip = clipOf(m_database, *shape.window);
        std::vector<Polyline2> runs;
        const Box all{{-1e6, 1e6}, {-1e6, 1e6}};
        flatten(clip.path.isEmpty() ? shape.path : clip.path, m_toDevice, 0.25, all, runs);
        m_canvas.setPen({m_style.activeFrame.rgb(), 255, 3 * m_settings.hairline, false});
        for (const Polyline2& run : runs) {
            m_canvas.polyline(run);
        }
    }

    Canvas& m_canvas;
    Canvas& m_clipped;
    DisplayCache& m_cache;
    const SceneView& m_view;
    const SceneStyle& m_style;
    const AssumedLayers& m_assumed;
    const HxDbDatabase& m_database;
    HxDbStub& m_space;
    HxGeMatrix3d m_toDevice;
    bool m_isPaper;
    Sheet m_sheet;
    WalkSettings m_settings;
    WorkBudget m_budget;
};

using StubPath = std::vector<HxDbStub*>;

/// Those whose objects are all there.
std::vector<StubPath> soundPaths(const std::vector<std::vector<HxDbObjectId>>& paths) {
    std::vector<StubPath> all;
    for (const std::vector<HxDbObjectId>& path : paths) {
        StubPath stubs;
        for (const HxDbObjectId& id : path) {
            if (id.stub() && isAlive(*id.stub())) {
                stubs.push_back(id.stub());
            }
        }
        if (!stubs.empty() && stubs.size() == path.size()) {
            all.push_back(std::move(stubs));
        }
    }
    return all;
}

/// The pixels that the outermost objects cover; everything when they are not all of the space itself.
QRect boundsOf(const std::vector<StubPath>& paths, HxDbStub& space, const HxGeMatrix3d& toDevice,
               double scale) {
    constexpr double kMost = 1e6;
    const QRect everything = pixels(Box{{-kMost, kMost}, {-kMost, kMost}});
    const std::vector<Box3d>& boxes = geometryCache().of(space).boxes;
    Box covered;
    for (const StubPath& path : paths) {
        const HxDbStub& outermost = *path.back();
        if (outermost.owner != &space || outermost.position >= boxes.size()) {
            return everything;
        }
        const Box3d& box = boxes[outermost.position];
        if (!box.isBounded()) {
            return everything;
        }
        covered.add(box.inView(toDevice));
    }
    const int margin = static_cast<int>(std::ceil(32 * scale));
    return covered.isEmpty() ? QRect() : pixels(covered).adjusted(-margin, -margin, margin, margin);
}

bool isDrawable(const SceneView& view) {
    const HxDbStub* space = view.space.stub();
    return view.database && space && space->database == view.database && space->contents && !space->erased;
}

}  // namespace

ScenePainter::ScenePainter() : m_imp(std::make_unique<Imp>()) {}
ScenePainter::~ScenePainter() = default;

void ScenePainter::paint(QPainter& painter, const QRectF& window, const SceneView& view,
                         const SceneStyle& style, const SceneEffort& effort) {
    const DeviceWindow device(painter, window);
    if (device.rect.isEmpty()) {
        return;
    }
    const bool drawable = isDrawable(view);
    const bool onDesk = drawable && isPaper(*view.database, *view.space.stub());
    m_imp->canvas.begin(device.rect.size(), (onDesk ? style.desk : style.background).rgb());
    if (drawable) {
        geometryCache().refresh();
        m_imp->cache.refresh();
        ScenePicture picture(m_imp->canvas, m_imp->clipped, m_imp->cache, view, style, device.matrix(view),
                             device.scale, effort);
        picture.draw();
        m_imp->isComplete = picture.isComplete();
        m_imp->cache.tidy();
    }
    m_imp->canvas.end();
    device.show(painter, m_imp->canvas.image());
}

void ScenePainter::paintHighlighted(QPainter& painter, const QRectF& window, const SceneView& view,
                                    const SceneStyle& style, const std::vector<HxDbObjectId>& path) {
    paintHighlighted(painter, window, view, style, std::vector<std::vector<HxDbObjectId>>{path});
}

void ScenePainter::paintHighlighted(QPainter& painter, const QRectF& window, const SceneView& view,
                                    const SceneStyle& style,
                                    const std::vector<std::vector<HxDbObjectId>>& paths) {
    DeviceWindow device(painter, window);
    const std::vector<StubPath> all = soundPaths(paths);
    if (all.empty() || device.rect.isEmpty() || !isDrawable(view)) {
        return;
    }
    geometryCache().refresh();
    m_imp->cache.refresh();
    device.narrow(boundsOf(all, *view.space.stub(), device.matrix(view), device.scale));
    if (device.rect.isEmpty()) {
        return;
    }
    m_imp->highlight.begin(device.rect.size(), 0);
    ScenePicture picture(m_imp->highlight, m_imp->clipped, m_imp->cache, view, style, device.matrix(view),
                         device.scale);
    for (const StubPath& path : all) {
        picture.drawHighlighted(path);
    }
    m_imp->highlight.end();
    device.show(painter, m_imp->highlight.image());
}

bool ScenePainter::isComplete() const { return m_imp->isComplete; }
std::size_t ScenePainter::bytes() const { return m_imp->cache.bytes(); }

}  // namespace korvex
