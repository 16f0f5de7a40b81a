// From the layers of a drawing to a state's entries.
#pragma once

#include "layer_states/records/layer_state_map.h"

class HxDbDatabase;

/// What is saved beside the layers.
struct KvStateToSave {
    CStdStr<wchar_t> name;
    CStdStr<wchar_t> description;
    CStdStr<wchar_t> currentLayer;
    int space = HxLyState::kModel;  ///< HxLyState::kModel or kLayout
};

/// A new state of all layers as they are now; in a layout with what the current viewport overrides. It goes
/// into `states`. Null without a drawing.
CKvLayerState* createLayerState(HxDbDatabase* database, KvLayerStateMap& states, const KvStateToSave& saved);

/// Gives a state name, space and description, and, unless `headerOnly`, all layers anew: without what
/// viewports override; each with the plot style that the state had for it. The mask stays. False without a
/// drawing, and for a state that is not in `states`.
bool overwriteLayerState(HxDbDatabase* database, KvLayerStateMap& states, CKvLayerState* state,
                         const KvStateToSave& saved, bool headerOnly);

/// A copy of a state with a name of its own: "name (2)", or the first number that is free. One of a
/// reference's state belongs to the drawing. Null for a state that is not in `states`.
CKvLayerState* duplicateLayerState(KvLayerStateMap& states, const CKvLayerState* state);

/// Adds the drawing's layers that a state does not name, as they are now, behind the others. Returns how
/// many.
int addMissingLayers(HxDbDatabase* database, KvLayerStateMap& states, const CKvLayerState* state);
