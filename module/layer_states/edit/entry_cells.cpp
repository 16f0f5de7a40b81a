#include "layer_states/edit/entry_cells.h"

#include "layer_states/edit/layer_state_infos.h"
#include "manager_ui/grid/layer_cells.h"
#include "manager_ui/grid/layer_icons.h"
#include "manager_ui/grid/lineweight_text.h"

#include <algorithm>
#include <iterator>

namespace {

struct FlagLook {
    HxLyState::Property property;
    int flag;
    int iconWith, iconWithout;
};

constexpr FlagLook kFlagLooks[] = {
    {HxLyState::kOn, HxLyState::kLayerOff, kIconOff, kIconOn},
    {HxLyState::kFrozen, HxLyState::kLayerFrozen, kIconFrozen, kIconThawed},
    {HxLyState::kLocked, HxLyState::kLayerLocked, kIconLocked, kIconUnlocked},
    {HxLyState::kPlot, HxLyState::kLayerPlots, kIconPlot, kIconNoPlot},
    {HxLyState::kNewViewportFrozen, HxLyState::kLayerNewViewportFrozen, kIconNewVpFrozen, kIconNewVpThawed},
    {HxLyState::kCurrentViewportFrozen, HxLyState::kLayerCurrentViewportFrozen, kIconVpFrozen, kIconVpThawed},
};

/// Null for properties that are no flags.
const FlagLook* flagLook(std::int32_t property) {
    const auto* const found = std::find_if(std::begin(kFlagLooks), std::end(kFlagLooks),
                                           [&](const FlagLook& look) { return look.property == property; });
    return found == std::end(kFlagLooks) ? nullptr : found;
}

}  // namespace

int flagOfProperty(std::int32_t property) {
    const FlagLook* const look = flagLook(property);
    return look ? look->flag : 0;
}

int entryIcon(const CKvLayerStateInfo& entry, std::int32_t property) {
    const FlagLook* const look = flagLook(property);
    if (!look) return -1;
    return (entry.GetLayerFlag() & look->flag) != 0 ? look->iconWith : look->iconWithout;
}

QString entryText(const CKvLayerStateInfo& entry, std::int32_t property, bool inInches) {
    switch (property) {
    case HxLyState::kColor:
        return QString::fromStdWString(GetKvColorFromLayerState(entry).colorNameForDisplay());
    case HxLyState::kLinetype: return QString::fromStdWString(entry.GetLineType());
    case HxLyState::kLineweight:
        return QString::fromStdWString(PrintDisplayLWeightString(entry.GetLineWeight(), inInches));
    case HxLyState::kTransparency: return QString::number(percentOf(entry));
    case HxLyState::kPlotStyle: return QString::fromStdWString(entry.GetPlotStyle());
    default: break;
    }
    const int icon = entryIcon(entry, property);
    return icon < 0 ? QString() : iconText(icon);
}

int percentOf(const CKvLayerStateInfo& entry) {
    return static_cast<int>(
        transparencyPercent(HxCmTransparency(static_cast<std::uint8_t>(entry.GetTransparency()))));
}
