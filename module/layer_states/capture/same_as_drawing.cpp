#include "layer_states/capture/same_as_drawing.h"

#include "hxdbdatabase.h"

namespace {

constexpr std::int32_t kVisibility = HxLyState::kOn | HxLyState::kFrozen;

}  // namespace

KvRestorePlace KvRestorePlace::of(const HxDbDatabase& database) {
    return {database.tilemode(), !database.plotStyleMode()};
}

std::int32_t wantedChanges(const HxLyStateEntry& entry, const HxLyStateEntry& layer, std::int32_t mask,
                           const KvRestorePlace& place) {
    std::int32_t without = place.isModelSpace ? HxLyState::kCurrentViewportFrozen : kVisibility;
    if (!place.hasNamedPlotStyles) without |= HxLyState::kPlotStyle;
    if (!place.isModelSpace) {
        if ((entry.flags & HxLyState::kLayerLocked) == 0) without |= HxLyState::kLocked;
        if ((entry.flags & HxLyState::kLayerNewViewportFrozen) == 0) without |= HxLyState::kNewViewportFrozen;
    }
    return hxlyDifferences(entry, layer, mask & HxLyState::kAllProperties & ~without);
}

std::int32_t wantedChanges(const HxLyStateEntry& entry, const KvDrawingLayers::Layer& layer,
                           std::int32_t mask, const KvRestorePlace& place) {
    const std::int32_t changes = wantedChanges(entry, layer.own, mask, place);
    if (changes == 0 || !layer.inViewport) return changes;
    return wantedChanges(entry, *layer.inViewport, changes, place);
}

bool isSameAsDrawing(const KvLayerStateMap& states, const CKvLayerState& state, KvDrawingLayers& layers,
                     const KvRestorePlace& place, int* count) {
    bool isSame = true;
    if (count) *count = 0;
    states.visitEntries(&state, [&](const HxLyStateEntry& entry) {
        if (count) ++*count;
        if (!isSame) return true;
        const KvDrawingLayers::Layer* const layer = layers.find(entry.layer);
        isSame = layer && wantedChanges(entry, *layer, state.GetLayerStateMake(), place) == 0;
        return isSame || count;
    });
    return isSame;
}
