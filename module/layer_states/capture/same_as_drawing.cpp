#include "layer_states/capture/same_as_drawing.h"

#include "hxdbdatabase.h"
#include "layer_states/capture/drawing_layers.h"

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

bool isSameAsDrawing(const KvLayerStateMap& states, const CKvLayerState& state, KvDrawingLayers& layers,
                     const KvRestorePlace& place) {
    bool isSame = true;
    states.visitEntries(&state, [&](const HxLyStateEntry& entry) {
        const KvDrawingLayers::Layer* const layer = layers.find(entry.layer);
        std::int32_t changes = layer ? wantedChanges(entry, layer->own, state.GetLayerStateMake(), place)
                                     : HxLyState::kAllProperties;
        if (changes != 0 && layer && layer->inViewport) {
            changes = wantedChanges(entry, *layer->inViewport, changes, place);
        }
        isSame = changes == 0;
        return isSame;
    });
    return isSame;
}
