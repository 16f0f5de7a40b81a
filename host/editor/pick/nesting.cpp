// Looks every layer up once for each search.
#include "host/editor/pick/nesting.h"

#include <algorithm>

namespace korvex {

LayerRules::LayerRules(HxDbStub* viewport) {
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

const LayerRules::Look& LayerRules::look(HxDbStub* layer) {
    const auto [found, isNew] = m_looks.try_emplace(layer);
    if (isNew && layer) {
        const LayerVisibility visibility = layerVisibility(*layer);
        Look& look = found->second;
        look.isZero = recordName(*layer) == L"0";
        look.frozen = visibility.frozen || std::binary_search(m_frozen.begin(), m_frozen.end(), layer);
        look.hidden = visibility.off || look.frozen;
    }
    return found->second;
}

}  // namespace korvex
