// Which layers decide whether a picked object is seen.
#pragma once

#include "sdk/hxdbid.h"

#include <vector>

namespace korvex {

struct PickedLayers {
    /// The object's: on layer "0" in a block the reference's, in an external reference the one that stands
    /// for it. Of another drawing when the reference's drawing has a layer that the host drawing lacks; null
    /// in a drawing without layers.
    HxDbObjectId own;
    /// Those of the references that hold it, innermost first: while one is frozen nothing of it is seen.
    std::vector<HxDbObjectId> around;
};

/// `containers` are the references that hold the object, innermost first, as picks tell them.
PickedLayers layersOfPick(HxDbObjectId entity, const std::vector<HxDbObjectId>& containers);

}  // namespace korvex
