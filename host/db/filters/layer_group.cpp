// Groups: filters that hold ids.
#include "host/db/filters/filter_imp.h"

#include <algorithm>

HX_DEFINE_MEMBERS(HxLyLayerGroup, HxLyLayerFilter)

void HxLyLayerFilter::Imp::setLayers(std::vector<HxDbStub*> ids) {
    layers = std::move(ids);
    layerSet = {layers.begin(), layers.end()};
}

HxLyLayerGroup::HxLyLayerGroup() : HxLyLayerFilter(new Imp(kGroup)) {}

Hx::ErrorStatus HxLyLayerGroup::addLayerId(HxDbObjectId layer) {
    if (layer.isNull()) {
        return Hx::eNullObjectId;
    }
    if (!HxDbLayerTableRecord::cast(hxdbObjectPointer(layer))) {
        return Hx::eWrongClass;
    }
    const HxDbDatabase* tree = imp()->treeDatabase();
    const HxDbDatabase* own =
        tree || imp()->layers.empty() ? tree : HxDbObjectId(imp()->layers.front()).database();
    if (own && layer.database() != own) {
        return Hx::eInvalidInput;
    }
    if (layer.isErased()) {
        return Hx::eWasErased;
    }
    if (!imp()->layerSet.insert(layer.stub()).second) {
        return Hx::eDuplicateKey;
    }
    imp()->layers.push_back(layer.stub());
    return Hx::eOk;
}

Hx::ErrorStatus HxLyLayerGroup::removeLayerId(HxDbObjectId layer) {
    if (imp()->layerSet.erase(layer.stub()) == 0) {
        return Hx::eKeyNotFound;
    }
    std::vector<HxDbStub*>& layers = imp()->layers;
    layers.erase(std::remove(layers.begin(), layers.end(), layer.stub()), layers.end());
    return Hx::eOk;
}

void HxLyLayerGroup::removeLayerIds(const HxArray<HxDbObjectId>& layers) {
    for (const HxDbObjectId& layer : layers) {
        imp()->layerSet.erase(layer.stub());
    }
    std::vector<HxDbStub*>& all = imp()->layers;
    all.erase(std::remove_if(all.begin(), all.end(),
                             [this](HxDbStub* stub) { return imp()->layerSet.count(stub) == 0; }),
              all.end());
}

bool HxLyLayerGroup::containsLayerId(HxDbObjectId layer) const {
    return !layer.isErased() && imp()->layerSet.count(layer.stub()) > 0;
}

void HxLyLayerGroup::layerIds(HxArray<HxDbObjectId>& ids) const {
    ids.removeAll();
    for (HxDbStub* stub : imp()->layers) {
        if (const HxDbObjectId id(stub); !id.isErased()) {
            ids.append(id);
        }
    }
}
