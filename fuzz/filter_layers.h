// Layers for fuzz targets of filters, and which of them a filter accepts.
#pragma once

#include "sdk/hxdbdatabase.h"
#include "sdk/hxdbsymtb.h"
#include "sdk/hxlyfilter.h"

#include <cstdint>
#include <cstdlib>
#include <vector>

namespace korvex::fuzz {

inline void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

/// A drawing with layers that differ in what expressions ask for.
struct Drawing {
    Drawing() {
        const HxDbObjectPointer<HxDbLayerTable> table(database.layerTableId(), HxDb::kForWrite);
        for (const wchar_t* name : {L"A-WALL", L"A-DOOR-1", L"x[a]", L"\u4e2d\u6587"}) {
            auto* layer = new HxDbLayerTableRecord;
            layer->setName(name);
            layer->setIsOff(layers.size() % 2 == 0);
            layer->setColor(HxCmColor::byIndex(static_cast<std::int16_t>(1 + layers.size())));
            table->add(layer);
            layers.push_back(layer);
        }
    }
    ~Drawing() {
        for (HxDbLayerTableRecord* layer : layers) {
            layer->close();
        }
    }
    HxDbDatabase database;
    std::vector<HxDbLayerTableRecord*> layers;
};

inline std::vector<bool> accepted(const HxLyLayerFilter& filter, const Drawing& drawing) {
    std::vector<bool> all;
    for (const HxDbLayerTableRecord* layer : drawing.layers) {
        all.push_back(filter.filter(layer));
    }
    return all;
}

}  // namespace korvex::fuzz
