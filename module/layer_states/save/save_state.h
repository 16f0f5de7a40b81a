// Saving all layers under a name that the user chose.
#pragma once

#include "layer_states/capture/state_capture.h"

/// Why a state is not saved under a name.
enum class KvSaveRefusal {
    none,
    badName,    ///< no state can have it
    fixedState  ///< it is that of a reference's state, or of a hidden one
};

/// What is wrong with a name, for the user: which characters it must not have.
CStdStr<wchar_t> badStateNameText();

/// `name` is trimmed.
KvSaveRefusal saveRefusal(const KvLayerStateMap& states, const CStdStr<wchar_t>& name);
/// A new state, or the one of that name overwritten. Null when the name is refused, and without a drawing.
CKvLayerState* saveState(HxDbDatabase* database, KvLayerStateMap& states, const KvStateToSave& saved);
