// Goes down to a picked object by the rules of picking and drawing.
#include "host/editor/pick/picked_layer.h"

#include "host/editor/pick/block_geometry.h"
#include "host/editor/pick/nesting.h"

namespace korvex {

namespace {

/// The block record of the external reference between a reference and what it holds; null for a block, and
/// for attributes, which are in the drawing of their reference.
HxDbStub* externalBetween(HxDbStub& reference, const HxDbStub& held) {
    if (held.database == reference.database) {
        return nullptr;
    }
    const Shape shape = shapeOf(reference);
    return shape.placement ? referencedBlock(*reference.database, *shape.placement).record : nullptr;
}

}  // namespace

PickedLayers layersOfPick(HxDbObjectId entity, const std::vector<HxDbObjectId>& containers) {
    PickedLayers layers;
    if (!entity.stub()) {
        return layers;
    }
    LayerRules rules;
    std::vector<Nesting> levels(containers.size() + 1);  // they point at each other and stay where they are
    for (std::size_t i = 0; i < containers.size(); ++i) {
        const std::size_t at = containers.size() - 1 - i;
        HxDbStub& reference = *containers[at].stub();
        const HxDbStub& held = at == 0 ? *entity.stub() : *containers[at - 1].stub();
        Nesting& inner = levels[i + 1];
        inner.outer = &levels[i];
        inner.reference = &reference;
        inner.layer = rules.layerOf(reference, levels[i]);
        inner.external = externalBetween(reference, held);
        layers.around.insert(layers.around.begin(), HxDbObjectId(inner.layer));
    }
    layers.own = HxDbObjectId(rules.layerOf(*entity.stub(), levels.back()));
    return layers;
}

}  // namespace korvex
