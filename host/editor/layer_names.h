// Lists of layer names as commands take them: "WALLS,A-*,~*DIM*".
#pragma once

#include "sdk/hxdbdatabase.h"

#include <string>
#include <vector>

namespace korvex {

/// What a list of names means in a drawing.
struct LayerSelection {
    std::vector<HxDbObjectId> layers;     ///< each once, in the order of the list
    std::vector<std::wstring> unmatched;  ///< elements that no layer fits
};

/// An element that is a layer's name means that layer, even if it looks like a pattern; any other is a
/// pattern.
LayerSelection selectLayers(HxDbDatabase& database, const std::wstring& list);

/// The elements of a list, without blanks at their ends; empty ones are left out. A comma after "`" parts
/// none.
std::vector<std::wstring> splitNames(const std::wstring& list);

/// The layer's name; empty when it can not be read.
std::wstring layerName(HxDbObjectId layer);

}  // namespace korvex
