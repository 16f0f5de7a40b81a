// Whether the drawing is as a state has it.
#pragma once

#include "layer_states/capture/drawing_layers.h"
#include "layer_states/records/layer_state_map.h"

/// Where a restore happens.
struct KvRestorePlace {
    bool isModelSpace = true;
    bool hasNamedPlotStyles = false;

    /// Of a drawing as it is now.
    static KvRestorePlace of(const HxDbDatabase& database);
};

/// The properties of `mask` that a restore of the entry would change in the layer; `layer` has the values of
/// now. In a layout layers are neither turned off nor frozen, and locks and freezing in new viewports are
/// set but not taken away; in model space nothing is frozen in a viewport. Plot styles count where they have
/// names.
std::int32_t wantedChanges(const HxLyStateEntry& entry, const HxLyStateEntry& layer, std::int32_t mask,
                           const KvRestorePlace& place);

/// The same for a layer with values in effect in a viewport: what these and its own both have otherwise.
std::int32_t wantedChanges(const HxLyStateEntry& entry, const KvDrawingLayers::Layer& layer,
                           std::int32_t mask, const KvRestorePlace& place);

/// Whether every layer that the state names is in the drawing as the state has it, in the properties of the
/// state's mask; as its own value or as the one in effect in the current viewport. Stops at the first that is
/// not, unless `count` is given: it becomes how many layers the state names.
bool isSameAsDrawing(const KvLayerStateMap& states, const CKvLayerState& state, KvDrawingLayers& layers,
                     const KvRestorePlace& place, int* count = nullptr);
