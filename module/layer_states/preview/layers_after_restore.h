// The layers of a drawing as they would be after a restore.
#pragma once

#include "hxpreview.h"
#include "layer_states/records/layer_state_map.h"
#include "layer_states/restore/restore_rules.h"

/// What a restore of the state would change in the layers that the drawing has; the drawing is only read.
/// False, and no layers, when it would do nothing: of a state that is not in `states`, or names no layers.
bool layersAfterRestore(HxDbDatabase& database, const KvLayerStateMap& states, const CKvLayerState* state,
                        const KvRestoreOptions& options, std::vector<HxUiLayerAs>& layers);
