#include "layer_states/manager/state_dialogs.h"

#include "layer_states/choose/select_layer_state_dlg.h"
#include "layer_states/edit/delete_layer_state_dlg.h"
#include "layer_states/edit/edit_layer_state_dlg.h"

namespace {

bool hasCurrentLayer(const KvLayerStateInfoArray& entries) {
    return std::any_of(entries.begin(), entries.end(),
                       [](const CKvLayerStateInfo* entry) { return entry->GetCurrentLayer() != 0; });
}

}  // namespace

bool editStateEntries(QWidget* parent, CKvLayerStateManDlg& engine, CKvLayerState& state) {
    const KvLayerStateInfoArray* const entries = engine.states().entries(&state);
    if (!entries) return false;
    CKvEditLayerStateDlg dialog(parent, entries, engine.database(), state.GetLayerStateName());
    if (dialog.DoModal() != IDOK) return false;
    const CStdStr<wchar_t> current = dialog.currentLayerName();
    if (!current.empty() || hasCurrentLayer(*entries)) state.SetCurrentLayerName(current);
    return engine.states().replaceEntries(&state, dialog.GetCloneLayerStateInfoArray());
}

std::vector<CKvLayerState*> statesToDelete(QWidget* parent, const std::vector<CKvLayerState*>& states) {
    std::vector<CKvLayerState*> chosen;
    bool isAll = false;
    for (CKvLayerState* const state : states) {
        int answer = kDeleteState;
        if (!isAll) {
            CKvDeleteLayerStateDlg dialog(parent);
            dialog.SetDelString(state->GetLayerStateName());
            answer = dialog.DoModal();
        }
        if (answer == kDeleteAllStates) isAll = true;
        if (answer == kDeleteState || isAll) chosen.push_back(state);
        if (!isAll && answer != kDeleteState && answer != kKeepState) break;
    }
    return chosen;
}

bool chooseStates(QWidget* parent, CKvLayerStateManDlg& engine, KvLayerStateMap& theirs,
                  std::vector<CKvLayerState*>& chosen) {
    CKvSelectLayerStateDlg dialog(parent, engine.states(), theirs, engine.database());
    if (dialog.DoModal() != IDOK) return false;
    chosen = dialog.chosen();
    return true;
}
