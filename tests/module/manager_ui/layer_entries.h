// A drawing with layers and the entries of a list for them.
#pragma once

#include "model/layer_data.h"

#include "sdk/hxdbdatabase.h"
#include "sdk/hxdbsymtb.h"

#include <functional>
#include <memory>
#include <vector>

namespace korvex::test {

/// An empty drawing whose layers are listed: "0" first, then those that are added.
struct LayerEntries {
    LayerEntries() { list(database.layerZero()); }

    KvLayerData* add(const wchar_t* name, const std::function<void(HxDbLayerTableRecord&)>& change) {
        HxDbObjectId id;
        {
            const HxDbObjectPointer<HxDbLayerTable> table(database.layerTableId(), HxDb::kForWrite);
            auto* const record = new HxDbLayerTableRecord;
            record->setName(name);
            table->add(id, record);
            if (change) change(*record);
            record->close();
        }
        return list(id);
    }
    std::vector<KvLayerData*> all() const {
        std::vector<KvLayerData*> layers;
        for (const auto& entry : entries) {
            layers.push_back(entry.get());
        }
        return layers;
    }

    HxDbDatabase database;
    std::vector<std::unique_ptr<KvLayerData>> entries;

private:
    KvLayerData* list(HxDbObjectId id) {
        const HxDbObjectPointer<HxDbLayerTableRecord> record(id, HxDb::kForRead);
        entries.push_back(std::make_unique<KvLayerData>());
        entries.back()->fillData(record.object(), &database);
        return entries.back().get();
    }
};

}  // namespace korvex::test
