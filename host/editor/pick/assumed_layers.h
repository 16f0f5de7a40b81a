// Layers that are taken to be otherwise than they are in the drawing.
#pragma once

#include "sdk/hxpreview.h"

#include <unordered_map>

namespace korvex {

class AssumedLayers {
public:
    /// Nothing is assumed.
    AssumedLayers() = default;
    /// Values that a layer of the drawing cannot have are left out.
    AssumedLayers(const HxDbDatabase& database, const std::vector<HxUiLayerAs>& layers);
    static const AssumedLayers& none();

    /// A layer's own value: what is assumed, else the one of now.
    template <class T>
    T own(HxDbStub* layer, HxLyState::Property property, T HxUiLayerAs::*value, const T& now) const {
        const HxUiLayerAs* found = find(layer, nullptr, property);
        return found ? found->*value : now;
    }
    /// The value in a viewport (null: none). `isOverride`: the one of now is the viewport's, not the layer's.
    template <class T>
    T in(HxDbStub* viewport, HxDbStub* layer, HxLyState::Property property, T HxUiLayerAs::*value,
         const T& now, bool isOverride) const {
        const HxUiLayerAs* found = viewport ? find(layer, viewport, property) : nullptr;
        return found ? found->*value : isOverride ? now : own(layer, property, value, now);
    }

private:
    const HxUiLayerAs* find(HxDbStub* layer, HxDbStub* viewport, HxLyState::Property property) const;

    std::unordered_map<const HxDbStub*, std::vector<HxUiLayerAs>> m_layers;
};

}  // namespace korvex
