// By layer; for each of them there are few entries.
#include "host/editor/pick/assumed_layers.h"

#include "host/db/tables/layer_values.h"

namespace korvex {

namespace {

/// Those of an entry's properties that it can give to its layer.
std::int32_t usableProperties(const HxDbDatabase& database, const HxUiLayerAs& as) {
    constexpr std::int32_t kEverywhere =
        HxLyState::kColor | HxLyState::kLinetype | HxLyState::kLineweight | HxLyState::kTransparency;
    const bool inViewport = !as.viewport.isNull();
    std::int32_t usable =
        kEverywhere | (inViewport ? HxLyState::kCurrentViewportFrozen
                                  : HxLyState::kOn | HxLyState::kFrozen | HxLyState::kLocked);
    const auto leaveOut = [&](HxLyState::Property property, bool isUsable) {
        usable &= isUsable ? HxLyState::kAllProperties : ~static_cast<std::int32_t>(property);
    };
    leaveOut(HxLyState::kColor, colorStatus(inViewport ? nullptr : &database, as.color) == Hx::eOk);
    leaveOut(HxLyState::kLinetype, isLinetype(as.linetype, &database));
    leaveOut(HxLyState::kLineweight,
             lineWeightStatus(inViewport ? nullptr : &database, as.lineweight) == Hx::eOk);
    leaveOut(HxLyState::kTransparency, as.transparency.method() == HxCmTransparency::kByAlpha);
    return as.properties & usable;
}

}  // namespace

AssumedLayers::AssumedLayers(const HxDbDatabase& database, const std::vector<HxUiLayerAs>& layers) {
    for (const HxUiLayerAs& layer : layers) {
        if (layer.layer.isNull()) {
            continue;
        }
        std::vector<HxUiLayerAs>& all = m_layers[layer.layer.stub()];
        all.push_back(layer);
        all.back().properties = usableProperties(database, layer);
    }
}

const AssumedLayers& AssumedLayers::none() {
    static const AssumedLayers nothing;
    return nothing;
}

const HxUiLayerAs* AssumedLayers::find(HxDbStub* layer, HxDbStub* viewport,
                                       HxLyState::Property property) const {
    const auto found = m_layers.find(layer);
    if (found == m_layers.end()) {
        return nullptr;
    }
    for (auto as = found->second.rbegin(); as != found->second.rend(); ++as) {
        if (as->viewport.stub() == viewport) {
            return (as->properties & property) != 0 ? &*as : nullptr;
        }
    }
    return nullptr;
}

}  // namespace korvex
