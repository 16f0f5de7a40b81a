#include "layer_states/manager/state_dialogs.h"

#include "frame/resource_text.h"

#include "hxdialog.h"

bool editStateEntries(QWidget* parent, CKvLayerStateManDlg&, CKvLayerState&) {
    CStdStr<wchar_t> text;
    text.Format(moduleString(kStrNotAvailable).c_str(), moduleString(kStrStatesEdit).c_str());
    hxuiMessageBox(parent, text.Trim().c_str());
    return false;
}

std::vector<CKvLayerState*> statesToDelete(QWidget* parent, const std::vector<CKvLayerState*>& states) {
    std::vector<CKvLayerState*> chosen;
    for (CKvLayerState* const state : states) {
        CStdStr<wchar_t> question;
        question.Format(moduleString(kStrDeleteState).c_str(), state->GetLayerStateName().c_str());
        const int answer =
            hxuiMessageBox(parent, question.c_str(), nullptr, MB_YESNOCANCEL | MB_ICONQUESTION);
        if (answer == IDCANCEL) break;
        if (answer == IDYES) chosen.push_back(state);
    }
    return chosen;
}

bool chooseStates(QWidget*, CKvLayerStateManDlg&, KvLayerStateMap& theirs,
                  std::vector<CKvLayerState*>& chosen) {
    for (std::size_t i = 0; i < theirs.size(); ++i) {
        chosen.push_back(theirs.at(i));
    }
    return true;
}
