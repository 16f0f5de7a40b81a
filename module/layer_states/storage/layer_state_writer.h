// Bringing the states that were worked on back into the drawing.
#pragma once

#include "layer_states/records/layer_state_map.h"

class HxDbDatabase;

/// What a write did.
struct KvLayerStatesWritten {
    bool isOk = true;                  ///< false: the dictionary could not be reached; nothing was written
    int changed = 0;                   ///< records made, changed, renamed and deleted
    HxArray<CStdStr<wchar_t>> failed;  ///< states whose record could not be written
};

/// Writes what differs from the drawing: states that are new, were changed, got another name or were removed.
/// All others, and what is no state, stay as they stand. States of references are never written. Makes the
/// dictionary when there is something to put in. Entries of states that were written are let go.
KvLayerStatesWritten writeLayerStates(HxDbDatabase* database, KvLayerStateMap& states);

/// Whether a write would change something.
bool haveLayerStatesChanged(const KvLayerStateMap& states);
