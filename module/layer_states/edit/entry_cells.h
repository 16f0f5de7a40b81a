// What cells show of a layer's entry in a state.
#pragma once

#include "layer_states/records/layer_state.h"

#include <QString>

/// The flag (HxLyState::LayerFlag) that holds a property; 0 for properties that are no flags.
int flagOfProperty(std::int32_t property);
/// The icon (KvLayerIcon) of a property that is a flag; -1 for others.
int entryIcon(const CKvLayerStateInfo& entry, std::int32_t property);
/// The value as a text, of flags what their icon says. Lineweights in inches, else in millimetres.
QString entryText(const CKvLayerStateInfo& entry, std::int32_t property, bool inInches);
/// The percentage that a transparency shows.
int percentOf(const CKvLayerStateInfo& entry);
