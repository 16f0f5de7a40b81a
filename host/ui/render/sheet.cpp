// Reads plot settings: sizes and margins in millimetres, whatever the layout's units are.
#include "host/ui/render/sheet.h"

#include "host/db/geometry/entity_fields.h"
#include "host/db/kernel/entity_access.h"
#include "host/db/kernel/header.h"
#include "sdk/hxdbdict.h"
#include "sdk/hxdbentity.h"

#include <utility>

namespace korvex {

namespace {

struct PlotSettings {
    double left = 0, bottom = 0, right = 0, top = 0;  ///< margins
    double width = 0, height = 0;
    double paperUnits = 1, drawingUnits = 1;  ///< the scale
    long long units = 1;                      ///< 0 inches, 1 millimetres
    long long quarterTurns = 0;
    Point2 lowLimit, highLimit;  ///< of the layout

    Box limits() const {
        const bool sound = lowLimit.x < highLimit.x && lowLimit.y < highLimit.y;
        return sound ? Box{{lowLimit.x, highLimit.x}, {lowLimit.y, highLimit.y}} : Box();
    }
};

void readPlot(const GroupCursor& group, PlotSettings& settings) {
    switch (group.code()) {
    case 40: settings.left = group.asReal(); break;
    case 41: settings.bottom = group.asReal(); break;
    case 42: settings.right = group.asReal(); break;
    case 43: settings.top = group.asReal(); break;
    case 44: settings.width = group.asReal(); break;
    case 45: settings.height = group.asReal(); break;
    case 72: settings.units = group.asInteger(); break;
    case 73: settings.quarterTurns = group.asInteger(); break;
    case 142: settings.paperUnits = group.asReal(); break;
    case 143: settings.drawingUnits = group.asReal(); break;
    default: break;
    }
}

void readLimits(const GroupCursor& group, PlotSettings& settings) {
    switch (group.code()) {
    case 10: settings.lowLimit.x = group.asReal(); break;
    case 20: settings.lowLimit.y = group.asReal(); break;
    case 11: settings.highLimit.x = group.asReal(); break;
    case 21: settings.highLimit.y = group.asReal(); break;
    default: break;
    }
}

PlotSettings readSettings(HxDbStub& layout) {
    PlotSettings settings;
    bool isPlot = true;
    const EntityGroups groups = entityGroups(layout);
    for (EntityCursor cursor(groups.groups, groups.format); cursor.next();) {
        if (cursor.code() == 100) {
            isPlot = cursor->raw() != "AcDbLayout";
        }
        isPlot ? readPlot(*cursor, settings) : readLimits(*cursor, settings);
    }
    return settings;
}

/// The origin of a layout is where the printable part of its sheet begins. Turned sheets have their margins
/// turned with them.
Box sheetBox(PlotSettings s, double unitsPerMillimetre) {
    for (long long turn = 0; turn < (s.quarterTurns & 3); ++turn) {
        const double left = s.left;
        s.left = s.top;
        s.top = s.right;
        s.right = s.bottom;
        s.bottom = left;
        std::swap(s.width, s.height);
    }
    const Box box{{-s.left * unitsPerMillimetre, (s.width - s.left) * unitsPerMillimetre},
                  {-s.bottom * unitsPerMillimetre, (s.height - s.bottom) * unitsPerMillimetre}};
    return s.width > 0 && s.height > 0 && box.isBounded() ? box : Box();
}

bool isSameSize(const Box& a, const Box& b) {
    const auto near = [](double x, double y) { return std::fabs(x - y) <= 0.005 * std::fabs(y); };
    return near(a.x.size(), b.x.size()) && near(a.y.size(), b.y.size());
}

HxDbStub* layoutOf(HxDbStub& space) {
    const auto* record = HxDbBlockTableRecord::cast(hxdbObjectPointer(HxDbObjectId(&space)));
    return record ? record->getLayoutId().stub() : nullptr;
}

Box limitsOfPaper(const HxDbDatabase& database) {
    const auto corner = [&](const wchar_t* name, Point2& point) {
        std::vector<HeaderGroup> groups;
        if (!headerValue(database, name, groups) || groups.size() < 2) {
            return false;
        }
        point = {groups[0].real, groups[1].real};
        return true;
    };
    Point2 low, high;
    if (!corner(L"$PLIMMIN", low) || !corner(L"$PLIMMAX", high) || !(low.x < high.x) || !(low.y < high.y)) {
        return {};
    }
    return {{low.x, high.x}, {low.y, high.y}};
}

}  // namespace

bool isPaper(const HxDbDatabase& database, HxDbStub& space) {
    return &space != modelSpace(database) && (&space == paperSpace(database) || layoutOf(space));
}

Sheet sheetOf(const HxDbDatabase& database, HxDbStub& paper) {
    Sheet sheet;
    HxDbStub* layout = layoutOf(paper);
    if (layout && !layout->erased) {
        const PlotSettings settings = readSettings(*layout);
        const double scale = settings.drawingUnits / settings.paperUnits;
        const double perMillimetre =
            (settings.units == 0 ? 1 / 25.4 : 1) * (std::isfinite(scale) && scale > 0 ? scale : 1);
        sheet.millimetres = 1 / perMillimetre;
        sheet.paper = sheetBox(settings, perMillimetre);
        // The limits tell where the sheet lies; those that are not as large as it tell something else.
        const Box limits = settings.limits();
        if (sheet.paper.isEmpty() || isSameSize(limits, sheet.paper)) {
            sheet.paper = limits;
        }
    }
    if (sheet.paper.isEmpty()) {
        sheet.paper = limitsOfPaper(database);
    }
    return sheet;
}

}  // namespace korvex
