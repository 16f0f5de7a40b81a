// Comparing a layer state with a drawing's layers, as texts for the user.
#include "host/db/kernel/entity_access.h"
#include "host/db/kernel/text_fold.h"
#include "host/db/states/layer_state_manager.h"
#include "host/db/tables/layer_values.h"
#include "sdk/hxdbsymtb.h"

#include <cstdlib>

namespace korvex {

namespace {

constexpr std::uint32_t kRgb = 0x00FFFFFF;  ///< of a colour word

constexpr HxLyState::Property kProperties[] = {HxLyState::kOn,
                                               HxLyState::kFrozen,
                                               HxLyState::kLocked,
                                               HxLyState::kPlot,
                                               HxLyState::kColor,
                                               HxLyState::kLinetype,
                                               HxLyState::kLineweight,
                                               HxLyState::kTransparency,
                                               HxLyState::kPlotStyle,
                                               HxLyState::kNewViewportFrozen,
                                               HxLyState::kCurrentViewportFrozen};

std::wstring rgbText(const HxCmColor& color) {
    return std::to_wstring(color.red()) + L"," + std::to_wstring(color.green()) + L"," +
           std::to_wstring(color.blue());
}

std::wstring colorText(const HxLyStateEntry& entry) {
    const HxCmColor color = colorOf(entry);
    const std::wstring name = color.colorNameForDisplay();
    return color.isFromBook() ? name + L" (" + color.bookName() + L")" : name;
}

std::wstring textOf(const HxLyStateEntry& entry, HxLyState::Property property) {
    const auto has = [&entry](std::int32_t flag) { return (entry.flags & flag) != 0; };
    switch (property) {
    case HxLyState::kOn: return has(HxLyState::kLayerOff) ? L"off" : L"on";
    case HxLyState::kFrozen: return has(HxLyState::kLayerFrozen) ? L"frozen" : L"thawed";
    case HxLyState::kLocked: return has(HxLyState::kLayerLocked) ? L"locked" : L"unlocked";
    case HxLyState::kPlot: return has(HxLyState::kLayerPlots) ? L"plotted" : L"not plotted";
    case HxLyState::kNewViewportFrozen:
        return has(HxLyState::kLayerNewViewportFrozen) ? L"frozen" : L"thawed";
    case HxLyState::kCurrentViewportFrozen:
        return has(HxLyState::kLayerCurrentViewportFrozen) ? L"frozen" : L"thawed";
    case HxLyState::kColor: return colorText(entry);
    case HxLyState::kLinetype: return entry.linetype;
    case HxLyState::kLineweight: return lineWeightInMillimetres(entry.lineweight);
    case HxLyState::kPlotStyle: return entry.plotStyle;
    case HxLyState::kTransparency:
        return std::to_wstring(HxCmTransparency(static_cast<std::uint8_t>(entry.transparency)).percent()) +
               L" %";
    default: return {};
    }
}

void addDifference(HxArray<HxLyStateDifference>& to, const HxLyStateEntry& state, const HxLyStateEntry& now,
                   HxLyState::Property property) {
    HxLyStateDifference item{now.layer, property, textOf(state, property), textOf(now, property)};
    if (item.inState == item.inDrawing && property == HxLyState::kTransparency) {
        return;  // less than a per cent
    }
    if (item.inState == item.inDrawing && property == HxLyState::kColor) {
        item.inState = rgbText(colorOf(state));  // one book colour that was given two values
        item.inDrawing = rgbText(colorOf(now));
    }
    to.append(item);
}

}  // namespace

void makeAttainable(HxLyStateEntry& entry) {
    if (equalNames(entry.layer, L"DEFPOINTS")) {
        entry.flags &= ~HxLyState::kLayerPlots;
    }
    entry.colorIndex = std::abs(entry.colorIndex);  // off layers have negative ones elsewhere
    if (entry.trueColor < 0 && !entry.colorBook.empty()) {
        const std::uint32_t rgb = hxedGetRGB(entry.colorIndex);
        const HxCmColor color =
            HxCmColor::byRgb(static_cast<std::uint8_t>(rgb >> 16U), static_cast<std::uint8_t>(rgb >> 8U),
                             static_cast<std::uint8_t>(rgb));
        entry.trueColor = color.color() & kRgb;
    }
}

std::int32_t comparableProperties(const HxDbDatabase& database, const HxLyStateHeader& header,
                                  bool hasViewport) {
    std::int32_t properties = HxLyState::kAllProperties;
    if (!hasViewport || header.space == HxLyState::kModel) {
        properties &= ~HxLyState::kCurrentViewportFrozen;
    }
    if (database.plotStyleMode()) {
        properties &= ~HxLyState::kPlotStyle;  // it follows the colour
    }
    return properties;
}

HxCmColor colorOf(const HxLyStateEntry& entry) {
    constexpr int kMethodShift = 24;
    HxCmColor color = HxCmColor::byIndex(static_cast<std::int16_t>(entry.colorIndex));
    if (entry.trueColor >= 0) {
        color.setColor((std::uint32_t{HxCmColor::kTrueColor} << kMethodShift) |
                       (static_cast<std::uint32_t>(entry.trueColor) & kRgb));
    }
    if (!entry.colorBook.empty()) {
        color.setNamesFromDictionaryKey(entry.colorBook.c_str());
    }
    return color;
}

}  // namespace korvex

using namespace korvex;

Hx::ErrorStatus HxDbLayerStateManager::compareLayerStateToDb(HxArray<HxLyStateDifference>& differences,
                                                             const wchar_t* name, HxDbObjectId viewport,
                                                             const std::int32_t* mask,
                                                             HxDbDatabase* source) const {
    differences.removeAll();
    const HxDbDatabase& stateOf = source ? *source : *m_database;
    HxDbStub* record = layerStateRecord(stateOf, name);
    if (!record) {
        return Hx::eKeyNotFound;
    }
    HxLyStateReader reader{HxDbObjectId(record)};
    const HxDbObjectId place(viewportOf(*m_database, viewport));
    std::int32_t compared = (mask ? *mask : reader.header().mask) &
                            comparableProperties(*m_database, reader.header(), !place.isNull());
    if (stateOf.plotStyleMode()) {
        compared &= ~HxLyState::kPlotStyle;
    }
    HxLyStateEntry entry;
    HxLyStateEntry now;
    while (reader.next(entry)) {
        HxDbStub* stub = findRecord(*m_database, TableKind::layer, entry.layer);
        const auto* layer = stub ? HxDbLayerTableRecord::cast(materialise(*stub)) : nullptr;
        if (!layer) {
            differences.append({entry.layer, HxLyState::kOn, textOf(entry, HxLyState::kOn), {}});
            continue;
        }
        makeAttainable(entry);
        hxlyEntryOfLayer(now, *layer, place);
        const std::int32_t differing = hxlyDifferences(entry, now, compared);
        for (const HxLyState::Property property : kProperties) {
            if (differing & property) {
                addDifference(differences, entry, now, property);
            }
        }
    }
    return Hx::eOk;
}
