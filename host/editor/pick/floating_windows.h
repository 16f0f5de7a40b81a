// The floating viewports of a sheet, where they lie and what they show.
#pragma once

#include "host/db/geometry/shape.h"
#include "host/db/kernel/entity_access.h"

#include <memory>
#include <vector>

namespace korvex {

/// A floating viewport that is on. False when it is none.
struct FloatingWindow {
    HxDbStub* viewport = nullptr;
    std::shared_ptr<const ViewportWindow> window;

    explicit operator bool() const { return viewport != nullptr; }
};

/// Those whose frames touch a box of the paper, the bottom one first.
std::vector<FloatingWindow> floatingWindowsIn(HxDbStub& paper, const Box& box);
/// Those whose window, as far as its clip shows, is at a point of the paper: the bottom one first.
std::vector<FloatingWindow> floatingWindowsAt(const HxDbDatabase& database, HxDbStub& paper, Point2 point);
/// The one that is worked in; none in model space and on the paper.
FloatingWindow currentFloatingWindow(const HxDbDatabase& database);
/// The window shows what is at a point of the paper.
bool showsAt(const HxDbDatabase& database, const ViewportWindow& window, Point2 point);

/// What bounds a window instead of its frame; of kind `none` when nothing does.
Shape clipOf(const HxDbDatabase& database, const ViewportWindow& window);

/// How model space is turned towards the eye in a viewport; not at all for null and for what is no floating
/// viewport.
HxGeMatrix3d turnOf(HxDbStub* viewport);

}  // namespace korvex
