// Windows that list layers, as others see them.
#pragma once

#include "hxdbid.h"

class KvLayerShower {
public:
    virtual ~KvLayerShower() = default;
    /// Selects the layer's row alone and brings it into sight, also when filter or search leave it out.
    virtual void showLayer(HxDbObjectId layer) = 0;
};
