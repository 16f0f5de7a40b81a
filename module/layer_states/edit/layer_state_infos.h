// Entries of layer states: copies, and their colours as the host's.
#pragma once

#include "layer_states/records/layer_state.h"

/// A copy of the array and of each entry, which the caller owns (deleteEntries); null for null.
KvLayerStateInfoArray* CloneLayerStateInfoArray(const KvLayerStateInfoArray* entries);

HxCmColor GetKvColorFromLayerState(const CKvLayerStateInfo& entry);
/// Index, true colour and book key; a colour without one of these takes the entry's away.
void UpdateKvColorToLayerState(CKvLayerStateInfo& entry, const HxCmColor& color);
