// Which names are refused, and what is overwritten.
#include "layer_states/save/save_state.h"

#include "frame/util/resource_text.h"

CStdStr<wchar_t> badStateNameText() {
    CStdStr<wchar_t> text;
    text.Format(moduleString(kStrStateNameInvalid).c_str(), moduleString(kStrStateNameCharacters).c_str(),
                moduleString(kStrStateNameRemedy).c_str());
    return text;
}

KvSaveRefusal saveRefusal(const KvLayerStateMap& states, const CStdStr<wchar_t>& name) {
    if (!hxlyIsStateName(name.c_str())) return KvSaveRefusal::badName;
    const CKvLayerState* const existing = states.find(name);
    const bool isFixed = existing && (existing->isOfReference() || existing->isHidden());
    return isFixed ? KvSaveRefusal::fixedState : KvSaveRefusal::none;
}

CKvLayerState* saveState(HxDbDatabase* database, KvLayerStateMap& states, const KvStateToSave& saved) {
    if (!database || saveRefusal(states, saved.name) != KvSaveRefusal::none) return nullptr;
    CKvLayerState* const existing = states.find(saved.name);
    if (!existing) return createLayerState(database, states, saved);
    return overwriteLayerState(database, states, existing, saved, false) ? existing : nullptr;
}
