// Per-viewport overrides of a layer: xrecords in its extension dictionary, one for each property, in them one
// "102 {...}" run for each viewport.
#pragma once

#include "sdk/hxdbsymtb.h"

namespace korvex {

enum class OverrideKind : std::uint8_t { color, linetype, lineWeight, transparency, plotStyle, count };

/// What a run holds: the number, or the object of pointer kinds.
struct OverrideValue {
    long long number = 0;
    HxDbStub* object = nullptr;
};

/// False when the layer has no such override in the viewport.
bool readOverride(const HxDbLayerTableRecord& layer, OverrideKind kind, HxDbObjectId viewport,
                  OverrideValue& value);

/// The layer must be open for write. eInvalidInput when the id is of no viewport of the drawing,
/// eNotApplicable in a drawing without extension dictionaries.
Hx::ErrorStatus writeOverride(HxDbLayerTableRecord& layer, OverrideKind kind, HxDbObjectId viewport,
                              const OverrideValue& value);

/// Of all viewports for a null id. eOk also when there is nothing to remove.
Hx::ErrorStatus removeOverride(HxDbLayerTableRecord& layer, OverrideKind kind, HxDbObjectId viewport);

/// In any viewport for a null id. Overrides of viewports that are gone do not count.
bool hasOverride(const HxDbLayerTableRecord& layer, OverrideKind kind, HxDbObjectId viewport);

}  // namespace korvex
