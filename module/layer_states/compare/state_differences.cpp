#include "layer_states/compare/state_differences.h"

KvStateDifferences::KvStateDifferences(const KvLayerStateMap& states, const CKvLayerState& state,
                                       std::int32_t mask, KvDrawingLayers& layers,
                                       const KvRestorePlace& place) {
    states.visitEntries(&state, [&](const HxLyStateEntry& entry) {
        const KvDrawingLayers::Layer* const layer = layers.find(entry.layer);
        const std::int32_t changes = layer ? wantedChanges(entry, *layer, mask, place) : 0;
        if (changes == 0 && layer) return true;
        Layer& differing = m_layers.emplace_back();
        differing.inState = CKvLayerStateInfo(entry, -1, false);
        if (layer) differing.inDrawing = CKvLayerStateInfo(layer->own, -1, false);
        differing.properties = changes;
        return true;
    });
}
