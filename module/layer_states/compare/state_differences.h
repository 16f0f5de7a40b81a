// What the drawing has otherwise than a state.
#pragma once

#include "layer_states/capture/same_as_drawing.h"

#include <cstddef>
#include <vector>

/// What a restore of a state would change, layer by layer in the order of the state.
class KvStateDifferences {
public:
    struct Layer {
        CKvLayerStateInfo inState;
        CKvLayerStateInfo inDrawing;  ///< as it was before; without a name: the drawing lacks the layer
        std::int32_t properties = 0;  ///< HxLyState::Property in which they differ; none for a missing layer
    };

    KvStateDifferences() = default;
    /// In the properties of `mask`; a layer that the drawing lacks differs whatever the mask.
    KvStateDifferences(const KvLayerStateMap& states, const CKvLayerState& state, std::int32_t mask,
                       KvDrawingLayers& layers, const KvRestorePlace& place);

    const std::vector<Layer>& layers() const { return m_layers; }

private:
    std::vector<Layer> m_layers;
};
