// Reads and changes the view where drawings keep it: the active viewport entry, or a layout's viewport.
#include "host/editor/view.h"

#include "host/db/kernel/entity_access.h"
#include "host/editor/pick/floating_windows.h"
#include "host/editor/picker.h"
#include "host/editor/system_variables.h"
#include "sdk/hxads.h"
#include "sdk/hxdbentity.h"

#include <algorithm>
#include <map>
#include <memory>

namespace korvex {

namespace {

constexpr int kHeadlessWidth = 800;
constexpr int kHeadlessHeight = 600;
constexpr double kMargin = 1.05;

struct ScreenSize {
    int width = kHeadlessWidth;
    int height = kHeadlessHeight;
};

ScreenSize& screenSize() {
    static ScreenSize size;
    return size;
}

/// Which groups of an object make up its view.
struct ViewGroups {
    int center = 12;
    int height = 40;
};
constexpr ViewGroups kViewportEntry{12, 40};
constexpr ViewGroups kViewportEntity{12, 45};

/// An object's entity list for as long as it is needed.
class List {
public:
    explicit List(HxDbObjectId object) {
        zds_name name = {0, 0};
        m_first = hxdbGetZdsName(name, object) == Hx::eOk ? hxdbEntGet(name) : nullptr;
    }
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
    resbuf* m_first = nullptr;
};

/// The object that keeps a view, if the drawing has one.
struct Holder {
    HxDbObjectId object;
    ViewGroups groups;
};

/// The viewport that stands for the sheet itself.
HxDbObjectId sheetViewport(const HxDbDatabase& database) {
    const HxDbStub* paper = paperSpace(database);
    HxDbObjectId first;
    static const std::vector<HxDbStub*> kNone;
    for (HxDbStub* entity : paper ? members(*paper) : kNone) {
        if (!isAlive(*entity) || entityGroups(*entity).type != "VIEWPORT") {
            continue;
        }
        const HxDbObjectPointer<HxDbViewport> viewport(HxDbObjectId(entity), HxDb::kForRead);
        if (viewport && viewport->number() == 1) {
            return viewport->objectId();
        }
        if (viewport && first.isNull()) {
            first = viewport->objectId();
        }
    }
    return first;
}

Holder sheetHolder(const HxDbDatabase& database) {
    if (!database.tilemode()) {
        return {sheetViewport(database), kViewportEntity};
    }
    return {HxDbObjectId(findRecord(database, TableKind::viewport, L"*Active")), kViewportEntry};
}

/// The part of a view that drawings keep.
struct KeptView {
    double x = 0, y = 0, height = 0;

    bool isUsable() const { return height > 0 && std::isfinite(height) && std::isfinite(x + y); }
    bool operator==(const KeptView& o) const { return x == o.x && y == o.y && height == o.height; }
};

KeptView keptView(const List& list, const ViewGroups& groups) {
    const resbuf* center = list.find(groups.center);
    if (!center) {
        return {};
    }
    return {center->resval.rpoint[0], center->resval.rpoint[1], list.real(groups.height, 0)};
}

KeptView keptView(const Holder& holder) { return keptView(List(holder.object), holder.groups); }

/// Of each space that was looked at, what the window shows of it: good for as long as the drawing keeps the
/// view that it kept when that was set, and again when an undo brings that one back.
class ScreenViews {
public:
    static ScreenViews& of(const HxDbDatabase& database) {
        std::unique_ptr<ScreenViews>& views = all()[&database];
        if (!views) {
            views = std::make_unique<ScreenViews>(database);
        }
        return *views;
    }
    explicit ScreenViews(const HxDbDatabase& database) : m_end(database) {}

    const KeptView* find(const HxDbDatabase& database, const KeptView& kept) const {
        const auto found = m_views.find(space(database));
        return found != m_views.end() && found->second.kept == kept ? &found->second.shown : nullptr;
    }
    void set(const HxDbDatabase& database, const KeptView& kept, const KeptView& shown) {
        m_views[space(database)] = {kept, shown};
    }
    void drop(const HxDbDatabase& database) { m_views.erase(space(database)); }

private:
    struct Shown {
        KeptView kept, shown;
    };
    /// Forgets the views of a drawing that goes.
    class End final : public HxDbDatabaseReactor {
    public:
        explicit End(const HxDbDatabase& database) : m_database(database) { m_database.addReactor(this); }
        ~End() override { m_database.removeReactor(this); }
        End(const End&) = delete;
        End& operator=(const End&) = delete;
        void goodbye(const HxDbDatabase* database) override { all().erase(database); }

    private:
        const HxDbDatabase& m_database;
    };

    static std::map<const HxDbDatabase*, std::unique_ptr<ScreenViews>>& all() {
        static std::map<const HxDbDatabase*, std::unique_ptr<ScreenViews>> views;
        return views;
    }
    static const HxDbStub* space(const HxDbDatabase& database) {
        return database.tilemode() ? modelSpace(database) : paperSpace(database);
    }

    End m_end;
    std::map<const HxDbStub*, Shown> m_views;
};

/// From model space to the plane in which a viewport keeps the middle of its view.
HxGeMatrix3d modelToViewPlane(const FloatingWindow& floating) {
    const HxGePoint3d& target = floating.window->target;
    return turnOf(floating.viewport) * HxGeMatrix3d::translation({-target.x, -target.y, -target.z});
}

/// What a floating viewport shows is drawn at its size on the sheet.
View viewOfFloating(HxDbDatabase& database, const FloatingWindow& floating, const KeptView& kept) {
    View view = screenView(database);
    view.center = modelToViewPlane(floating).inverse() * HxGePoint3d(kept.x, kept.y);
    view.height = kept.height;
    if (floating.window->height > 0 && floating.window->width > 0) {
        view.aspect = floating.window->width / floating.window->height;
        view.unitsPerPixel *= kept.height / floating.window->height;
    }
    return view;
}

/// The box in the plane of the viewport's view, its middle as a point of model space.
View viewOfBoxIn(const FloatingWindow& floating, const View& like, const HxGePoint3d& low,
                 const HxGePoint3d& high) {
    const HxGeMatrix3d toPlane = modelToViewPlane(floating);
    Box3d box;
    box.add(low);
    box.add(high);
    const Box seen = box.inView(toPlane);
    View view = viewOfBox(like, {seen.x.low, seen.y.low}, {seen.x.high, seen.y.high});
    view.center = toPlane.inverse() * view.center;
    return view;
}

}  // namespace

void setScreenSize(int width, int height) {
    screenSize() = width > 0 && height > 0 ? ScreenSize{width, height} : ScreenSize();
}

HxDbObjectId currentSpace(const HxDbDatabase& database) {
    return database.tilemode() || database.cvport() > 1 ? database.modelSpaceId() : database.paperSpaceId();
}

View screenView(HxDbDatabase& database) {
    const ScreenSize size = screenSize();
    const KeptView kept = keptView(sheetHolder(database));
    const KeptView* shown = ScreenViews::of(database).find(database, kept);
    View view;
    view.aspect = static_cast<double>(size.width) / size.height;
    if (shown || kept.isUsable()) {
        const KeptView& from = shown ? *shown : kept;
        view.center = {from.x, from.y, 0};
        view.height = from.height;
    } else if (!screenExtents(database, view)) {
        view.height = 297;
        view.center = {view.height * view.aspect / 2, view.height / 2};
    }
    view.unitsPerPixel = view.height / size.height;
    return view;
}

void setScreenView(HxDbDatabase& database, const View& view) {
    const KeptView shown{view.center.x, view.center.y, view.height};
    if (shown.isUsable()) {
        ScreenViews::of(database).set(database, keptView(sheetHolder(database)), shown);
    }
}

bool screenExtents(HxDbDatabase& database, View& view) {
    HxGePoint3d low;
    HxGePoint3d high;
    const HxDbObjectId space = database.tilemode() ? database.modelSpaceId() : database.paperSpaceId();
    if (!spaceExtents(database, space, low, high)) {
        return false;
    }
    view = viewOfBox(view, low, high);
    return true;
}

View currentView(HxDbDatabase& database) {
    const FloatingWindow floating = currentFloatingWindow(database);
    const KeptView kept =
        floating ? keptView({HxDbObjectId(floating.viewport), kViewportEntity}) : KeptView();
    return kept.isUsable() ? viewOfFloating(database, floating, kept) : screenView(database);
}

Hx::ErrorStatus setCurrentView(HxDbDatabase& database, const View& view) {
    const FloatingWindow floating = currentFloatingWindow(database);
    const HxGePoint3d middle = floating ? modelToViewPlane(floating) * view.center : view.center;
    const KeptView wanted{middle.x, middle.y, view.height};
    if (!wanted.isUsable()) {
        return Hx::eInvalidInput;
    }
    const Holder holder =
        floating ? Holder{HxDbObjectId(floating.viewport), kViewportEntity} : sheetHolder(database);
    const List list(holder.object);
    resbuf* center = list.find(holder.groups.center);
    resbuf* height = list.find(holder.groups.height);
    if (!center || !height) {
        if (floating) {
            return Hx::eNotApplicable;
        }
        setScreenView(database, view);
        return Hx::eOk;
    }
    if (!floating && keptView(list, holder.groups) == wanted) {
        ScreenViews::of(database).drop(database);
    }
    center->resval.rpoint[0] = wanted.x;
    center->resval.rpoint[1] = wanted.y;
    height->resval.rreal = wanted.height;
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
    const FloatingWindow floating = currentFloatingWindow(database);
    view = floating ? viewOfBoxIn(floating, view, low, high) : viewOfBox(view, low, high);
    return true;
}

double pickBoxHalfSize(HxDbDatabase& database) {
    return std::max(integerVariable(L"PICKBOX"), 1) * currentView(database).unitsPerPixel;
}

}  // namespace korvex
