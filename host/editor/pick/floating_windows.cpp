// Finds viewports through the index of the paper.
#include "host/editor/pick/floating_windows.h"

#include "host/db/geometry/hit_test.h"
#include "host/editor/pick/block_geometry.h"
#include "sdk/hxdbentity.h"

#include <algorithm>

namespace korvex {

namespace {

/// None for any other entity.
FloatingWindow floatingWindow(HxDbStub& entity) {
    if (!isAlive(entity) || entityGroups(entity).type != "VIEWPORT") {
        return {};
    }
    const Shape shape = shapeOf(entity);
    const bool isShown = shape.window && shape.window->isFloating() && shape.window->isOn();
    return isShown ? FloatingWindow{&entity, shape.window} : FloatingWindow();
}

bool isWithinClip(const HxDbDatabase& database, const ViewportWindow& window, Point2 point) {
    Shape clip = clipOf(database, window);
    if (clip.path.isEmpty()) {
        return true;
    }
    clip.filling = Filling::any;
    return hits(clip, HxGeMatrix3d(), Box::around(point, 1e-9 * (window.width + window.height)));
}

}  // namespace

bool showsAt(const HxDbDatabase& database, const ViewportWindow& window, Point2 point) {
    return window.frame().contains(point) && isWithinClip(database, window, point);
}

Shape clipOf(const HxDbDatabase& database, const ViewportWindow& window) {
    HxDbObjectId id;
    if (window.clip == 0 || database.getHxDbObjectId(id, false, HxDbHandle(window.clip)) != Hx::eOk ||
        !id.stub()->recordClass || !id.stub()->recordClass->isEntity) {
        return {};
    }
    return shapeOf(*id.stub());
}

std::vector<FloatingWindow> floatingWindowsIn(HxDbStub& paper, const Box& box) {
    std::vector<FloatingWindow> windows;
    const std::vector<HxDbStub*>& all = members(paper);
    geometryCache().refresh();
    geometryCache().of(paper).index.query(box, [&](SpatialIndex::Key key) {
        const FloatingWindow found = key < all.size() ? floatingWindow(*all[key]) : FloatingWindow();
        if (found) {
            windows.push_back(found);
        }
        return true;
    });
    std::sort(windows.begin(), windows.end(), [](const FloatingWindow& a, const FloatingWindow& b) {
        return a.window->status > b.window->status;
    });
    return windows;
}

std::vector<FloatingWindow> floatingWindowsAt(const HxDbDatabase& database, HxDbStub& paper, Point2 point) {
    std::vector<FloatingWindow> windows = floatingWindowsIn(paper, Box::around(point, 0));
    windows.erase(
        std::remove_if(windows.begin(), windows.end(),
                       [&](const FloatingWindow& at) { return !isWithinClip(database, *at.window, point); }),
        windows.end());
    return windows;
}

FloatingWindow currentFloatingWindow(const HxDbDatabase& database) {
    HxDbStub* viewport =
        database.tilemode() || database.cvport() <= 1 ? nullptr : hxdbGetCurVportId(&database).stub();
    return viewport ? floatingWindow(*viewport) : FloatingWindow();
}

HxGeMatrix3d turnOf(HxDbStub* viewport) {
    const Shape shape = viewport ? shapeOf(*viewport) : Shape();
    if (!shape.window || !shape.window->isFloating()) {
        return {};
    }
    return HxGeMatrix3d::rotationZ(shape.window->twist) *
           HxGeMatrix3d::planeToWorld(shape.window->direction).inverse();
}

}  // namespace korvex
