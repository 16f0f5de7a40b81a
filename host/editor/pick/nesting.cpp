// Looks every layer up once for each search.
#include "host/editor/pick/nesting.h"

#include <algorithm>

namespace korvex {

LayerRules::LayerRules(HxDbStub* viewport, const AssumedLayers& assumed)
    : m_viewport(viewport), m_assumed(assumed) {
    if (viewport) {
        m_frozen = layersFrozenIn(*viewport);
    }
}

HxDbStub* LayerRules::layerOf(HxDbStub& entity, const Nesting& within) {
    return layerFor(korvex::layerOf(entity), within);
}

HxDbStub* LayerRules::layerFor(HxDbStub* named, const Nesting& within) {
    HxDbStub* layer = named;
    if (!layer) {
        return nullptr;
    }
    if (within.reference && look(layer).isZero) {
        return within.layer;
    }
    for (const Nesting* level = &within; level; level = level->outer) {
        HxDbStub* host = level->external ? hostLayer(*level->external, *layer) : layer;
        if (!host) {
            return layer;
        }
        layer = host;
    }
    return layer;
}

bool LayerRules::isFrozenInViewport(HxDbStub* layer) const {
    const bool now = std::binary_search(m_frozen.begin(), m_frozen.end(), layer);
    constexpr HxLyState::Property kProperty = HxLyState::kCurrentViewportFrozen;
    return m_assumed.in(m_viewport, layer, kProperty, &HxUiLayerAs::isFrozen, now, true);
}

const LayerRules::Look& LayerRules::look(HxDbStub* layer) {
    const auto [found, isNew] = m_looks.try_emplace(layer);
    if (isNew && layer) {
        const LayerVisibility visibility = layerVisibility(*layer);
        Look& look = found->second;
        look.isZero = recordName(*layer) == L"0";
        look.frozen = m_assumed.own(layer, HxLyState::kFrozen, &HxUiLayerAs::isFrozen, visibility.frozen) ||
                      isFrozenInViewport(layer);
        look.hidden =
            m_assumed.own(layer, HxLyState::kOn, &HxUiLayerAs::isOff, visibility.off) || look.frozen;
    }
    return found->second;
}

}  // namespace korvex
