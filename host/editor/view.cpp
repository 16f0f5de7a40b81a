// Reads and changes the view where drawings keep it: the active viewport entry, or a layout's viewport.
#include "host/editor/view.h"

#include "host/editor/picker.h"
#include "host/editor/system_variables.h"
#include "sdk/hxads.h"
#include "sdk/hxdbentity.h"

#include <algorithm>
#include <memory>

namespace korvex {

namespace {

constexpr double kScreenPixels = 600;
constexpr double kMargin = 1.05;

/// Which groups of an object make up its view.
struct ViewGroups {
    int center = 12;
    int height = 40;
    int aspect = 41;  ///< 0: none, width and height are given
    int paperWidth = 0;
    int paperHeight = 0;
};
constexpr ViewGroups kViewportEntry{12, 40, 41, 0, 0};
constexpr ViewGroups kViewportEntity{12, 45, 0, 40, 41};

/// An object's entity list for as long as it is needed.
class List {
public:
    explicit List(const zds_name name) : m_first(hxdbEntGet(name)) {}
    ~List() { hxutRelRb(m_first); }
    List(const List&) = delete;
    List& operator=(const List&) = delete;

    resbuf* find(int code) const {
        for (resbuf* node = m_first; node && code != 0; node = node->rbnext) {
            if (node->restype == code) {
                return node;
            }
        }
        return nullptr;
    }
    double real(int code, double fallback) const {
        const resbuf* node = find(code);
        return node ? node->resval.rreal : fallback;
    }
    const resbuf* first() const { return m_first; }

private:
    resbuf* m_first;
};

/// The object that keeps the current view; false when the drawing has none.
bool viewHolder(const HxDbDatabase& database, zds_name name, ViewGroups& groups) {
    const HxDbObjectId viewport = hxdbGetCurVportId(&database);
    if (!database.tilemode() && !viewport.isNull()) {
        groups = kViewportEntity;
        return hxdbGetZdsName(name, viewport) == Hx::eOk;
    }
    groups = kViewportEntry;
    return hxdbTblObjName(L"VPORT", L"*Active", name) == RTNORM;
}

bool readView(const zds_name name, const ViewGroups& groups, View& view) {
    const List list(name);
    const resbuf* center = list.find(groups.center);
    view.height = list.real(groups.height, 0);
    const double paperHeight = list.real(groups.paperHeight, 0);
    view.aspect = groups.aspect     ? list.real(groups.aspect, view.aspect)
                  : paperHeight > 0 ? list.real(groups.paperWidth, 0) / paperHeight
                                    : view.aspect;
    if (center) {
        view.center = {center->resval.rpoint[0], center->resval.rpoint[1], 0};
    }
    return center && view.height > 0 && std::isfinite(view.height);
}

/// Drawing units in a pixel of the screen. What a floating viewport shows is drawn at its size on paper.
double pixelOf(const HxDbDatabase& database, const zds_name holder, const View& view) {
    if (database.tilemode() || database.cvport() <= 1) {
        return view.height / kScreenPixels;
    }
    const double paperHeight = List(holder).real(kViewportEntity.paperHeight, 0);
    const HxDbObjectPointer<HxDbBlockTableRecord> paper(database.paperSpaceId(), HxDb::kForRead);
    HxDbBlockTableRecordIterator* entities = nullptr;
    if (!paper || paperHeight <= 0 || paper->newIterator(entities) != Hx::eOk) {
        return view.height / kScreenPixels;
    }
    const std::unique_ptr<HxDbBlockTableRecordIterator> steps(entities);
    for (; !steps->done(); steps->step()) {
        HxDbObjectId id;
        steps->getEntityId(id);
        const HxDbObjectPointer<HxDbViewport> viewport(id, HxDb::kForRead);
        if (!viewport || viewport->number() != 1) {
            continue;
        }
        zds_name name = {0, 0};
        View sheet;
        hxdbGetZdsName(name, id);
        if (readView(name, kViewportEntity, sheet)) {
            return sheet.height / kScreenPixels * view.height / paperHeight;
        }
    }
    return view.height / kScreenPixels;
}

}  // namespace

HxDbObjectId currentSpace(const HxDbDatabase& database) {
    return database.tilemode() || database.cvport() > 1 ? database.modelSpaceId() : database.paperSpaceId();
}

View currentView(HxDbDatabase& database) {
    View view;
    ViewGroups groups;
    zds_name holder = {0, 0};
    const bool held = viewHolder(database, holder, groups);
    if (held && readView(holder, groups, view)) {
        view.unitsPerPixel = pixelOf(database, holder, view);
        return view;
    }
    if (!extentsView(database, view)) {
        view.height = 297;
        view.center = {view.height * view.aspect / 2, view.height / 2};
    }
    view.unitsPerPixel = view.height / kScreenPixels;
    return view;
}

Hx::ErrorStatus setCurrentView(HxDbDatabase& database, const View& view) {
    if (!(view.height > 0) || !std::isfinite(view.height) || !std::isfinite(view.center.x + view.center.y)) {
        return Hx::eInvalidInput;
    }
    ViewGroups groups;
    zds_name holder = {0, 0};
    if (!viewHolder(database, holder, groups)) {
        return Hx::eNotApplicable;
    }
    const List list(holder);
    resbuf* center = list.find(groups.center);
    resbuf* height = list.find(groups.height);
    if (!center || !height) {
        return Hx::eNotApplicable;
    }
    center->resval.rpoint[0] = view.center.x;
    center->resval.rpoint[1] = view.center.y;
    height->resval.rreal = view.height;
    return hxdbEntMod(list.first()) == RTNORM ? Hx::eOk : Hx::eRefused;
}

View viewOfBox(const View& like, const HxGePoint3d& low, const HxGePoint3d& high) {
    View view = like;
    const double width = std::fabs(high.x - low.x);
    const double height = std::fabs(high.y - low.y);
    view.center = {(low.x + high.x) / 2, (low.y + high.y) / 2, 0};
    view.height = std::max(height, width / std::max(like.aspect, 1e-6)) * kMargin;
    if (!(view.height > 0)) {
        view.height = like.height > 0 ? like.height : 1;
    }
    return view;
}

bool extentsView(HxDbDatabase& database, View& view) {
    HxGePoint3d low;
    HxGePoint3d high;
    if (!spaceExtents(database, currentSpace(database), low, high)) {
        return false;
    }
    view = viewOfBox(view, low, high);
    return true;
}

double pickBoxHalfSize(HxDbDatabase& database) {
    return std::max(integerVariable(L"PICKBOX"), 1) * currentView(database).unitsPerPixel;
}

}  // namespace korvex
