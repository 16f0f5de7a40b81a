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
    int aspect = 0;  ///< 0: there is none
};
constexpr ViewGroups kViewportEntry{12, 40, 41};
constexpr ViewGroups kViewportEntity{12, 45, 0};

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
    double aspect = 0;  ///< width by height of the window that it was made in; 0: not known

    bool isUsable() const { return height > 0 && std::isfinite(height) && std::isfinite(x + y); }
    bool operator==(const KeptView& o) const { return x == o.x && y == o.y && height == o.height; }
};

KeptView keptView(const List& list, const ViewGroups& groups) {
    const resbuf* center = list.find(groups.center);
    if (!center) {
        return {};
    }
    const double aspect = groups.aspect != 0 ? list.real(groups.aspect, 0) : 0;
    return {center->resval.rpoint[0], center->resval.rpoint[1], list.real(groups.height, 0), aspect};
}

KeptView keptView(const Holder& holder) { return keptView(List(holder.object), holder.groups); }

/// What the window shows: around a middle, at least so high and so wide, whatever shape the window has.
struct ShownView {
    double x = 0, y = 0, height = 0;
    double width = 0;

    double heightIn(double aspect) const { return std::max(height, width / std::max(aspect, 1e-6)); }
};

/// Of each space that was looked at, what the window shows of it, for the views that the drawing has kept
/// since: an undo that brings one back brings back what was shown then.
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

    const ShownView* find(const HxDbDatabase& database, const KeptView& kept) const {
        const auto views = m_views.find(space(database));
        if (views == m_views.end()) {
            return nullptr;
        }
        const auto found = std::find_if(views->second.begin(), views->second.end(),
                                        [&](const Shown& shown) { return shown.kept == kept; });
        return found != views->second.end() ? &found->shown : nullptr;
    }
    const ShownView& set(const HxDbDatabase& database, const KeptView& kept, const ShownView& shown) {
        std::vector<Shown>& views = m_views[space(database)];
        views.erase(
            std::remove_if(views.begin(), views.end(), [&](const Shown& old) { return old.kept == kept; }),
            views.end());
        if (views.size() == kMostViews) {
            views.erase(views.begin());
        }
        views.push_back({kept, shown});
        return views.back().shown;
    }

private:
    static constexpr std::size_t kMostViews = 100;
    struct Shown {
        KeptView kept;
        ShownView shown;
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
    std::map<const HxDbStub*, std::vector<Shown>> m_views;  ///< the last one was set last
};

HxDbObjectId sheetSpace(const HxDbDatabase& database) {
    return database.tilemode() ? database.modelSpaceId() : database.paperSpaceId();
}

ShownView everything(const Box& content, const KeptView& kept) {
    ShownView view{content.centre().x, content.centre().y, content.y.size() * kMargin,
                   content.x.size() * kMargin};
    if (!(view.height > 0 || view.width > 0)) {
        view.height = kept.isUsable() ? kept.height : 1;
    }
    return view;
}

Box boxAround(const KeptView& view, double aspect) {
    return {{view.x - view.height * aspect / 2, view.x + view.height * aspect / 2},
            {view.y - view.height / 2, view.y + view.height / 2}};
}

/// True when some of the content, which takes up `content`, can be told in the view.
bool showsContent(HxDbDatabase& database, const Box& view, const Box& content) {
    constexpr double kSpeck = 0.2;       // of the view's sides
    constexpr double kSmallPart = 0.25;  // of the content's area
    const double width = std::min(view.x.high, content.x.high) - std::max(view.x.low, content.x.low);
    const double height = std::min(view.y.high, content.y.high) - std::max(view.y.low, content.y.low);
    if (width < 0 || height < 0 || std::max(width / view.x.size(), height / view.y.size()) < kSpeck) {
        return false;
    }
    // A look at a detail may be a look between the objects.
    return view.x.size() * view.y.size() >= kSmallPart * content.x.size() * content.y.size() ||
           !pickInArea({&database,
                        sheetSpace(database),
                        {},
                        {view.x.low, view.y.low},
                        {view.x.high, view.y.high},
                        true})
                .empty();
}

/// What is shown of a space at first: the view that the drawing keeps, as wide as it was where the content
/// is, or everything when there is none or it shows nothing. False in an empty space without a view.
bool firstView(HxDbDatabase& database, const KeptView& kept, double aspect, ShownView& shown) {
    HxGePoint3d low;
    HxGePoint3d high;
    const bool hasContent = spaceExtents(database, sheetSpace(database), low, high);
    const Box content{{low.x, high.x}, {low.y, high.y}};
    shown = {kept.x, kept.y, kept.height, 0};
    if (!hasContent) {
        return kept.isUsable();
    }
    const double madeIn = kept.aspect > 0 && kept.aspect < 100 ? kept.aspect : aspect;
    const Box view = boxAround(kept, madeIn);
    if (!kept.isUsable() || !showsContent(database, view, content)) {
        shown = everything(content, kept);
        return true;
    }
    const double left = kept.x - std::max(view.x.low, content.x.low);
    const double right = std::min(view.x.high, content.x.high) - kept.x;
    shown.width = 2 * std::max(left, right);
    return true;
}

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
    ScreenViews& views = ScreenViews::of(database);
    const ShownView* shown = views.find(database, kept);
    View view;
    view.aspect = static_cast<double>(size.width) / size.height;
    ShownView first;
    if (!shown && firstView(database, kept, view.aspect, first)) {
        shown = &views.set(database, kept, first);
    }
    if (shown) {
        view.center = {shown->x, shown->y, 0};
        view.height = shown->heightIn(view.aspect);
    } else {
        view.height = 297;
        view.center = {view.height * view.aspect / 2, view.height / 2};
    }
    view.unitsPerPixel = view.height / size.height;
    return view;
}

void setScreenView(HxDbDatabase& database, const View& view) {
    if (KeptView{view.center.x, view.center.y, view.height}.isUsable()) {
        ScreenViews::of(database).set(database, keptView(sheetHolder(database)),
                                      {view.center.x, view.center.y, view.height, 0});
    }
}

bool screenExtents(HxDbDatabase& database, View& view) {
    HxGePoint3d low;
    HxGePoint3d high;
    if (!spaceExtents(database, sheetSpace(database), low, high)) {
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
    center->resval.rpoint[0] = wanted.x;
    center->resval.rpoint[1] = wanted.y;
    height->resval.rreal = wanted.height;
    if (hxdbEntMod(list.first()) != RTNORM) {
        return Hx::eRefused;
    }
    if (!floating) {
        setScreenView(database, view);  // whatever is there to be seen
    }
    return Hx::eOk;
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
