// What the layer states manager's buttons do.
#include "layer_states/manager/layer_state_man_window.h"
#include "layer_states/manager/state_dialogs.h"

#include "frame/util/format_message.h"
#include "frame/util/resource_text.h"
#include "hxstddlg.h"
#include "hxtext.h"
#include "layer_states/capture/state_capture.h"
#include "layer_states/file/layer_state_files.h"

#include <QCheckBox>

void KvLayerStateManWindow::warn(int text, const CStdStr<wchar_t>& name) {
    CStdStr<wchar_t> told;
    told.Format(moduleString(text).c_str(), name.c_str());
    MessageBox(told.c_str(), nullptr, MB_OK | MB_ICONEXCLAMATION);
}

bool KvLayerStateManWindow::isConfirmed(int text, const CStdStr<wchar_t>& name) {
    CStdStr<wchar_t> question;
    question.Format(moduleString(text).c_str(), name.c_str());
    return MessageBox(question.c_str(), nullptr, MB_OKCANCEL | MB_ICONQUESTION) == IDOK;
}

void KvLayerStateManWindow::showStates(const CKvLayerState* select) {
    m_list->rows().forgetSeen();
    m_list->showStates();
    if (select) m_list->SetLastSelectItem(select);
}

// ---- new, save, edit ----

void KvLayerStateManWindow::OnButtonNew() {
    const ModuleResources resources;
    if (const CKvLayerState* const state = m_engine.CmdNew(nullptr, nullptr, this)) showStates(state);
}

void KvLayerStateManWindow::OnButtonSave() {
    const ModuleResources resources;
    CKvLayerState* const state = m_list->selectedState();
    if (!state || state->isOfReference() || !isConfirmed(kStrSaveStateAgain, state->GetLayerStateName())) {
        return;
    }
    if (m_engine.SaveasLayerState(state)) showStates(state);
}

void KvLayerStateManWindow::OnButtonEdit() {
    const ModuleResources resources;
    CKvLayerState* const state = m_list->selectedState();
    if (!state || state->isOfReference()) return;
    if (editStateEntries(this, m_engine, *state)) m_list->rows().refresh(state);
}

// ---- names ----

void KvLayerStateManWindow::OnButtonRename() {
    const ModuleResources resources;
    const CKvLayerState* const state = m_list->selectedState();
    if (!state) return;
    if (state->isOfReference()) {
        warn(kStrStateNameFixed, state->GetLayerStateName());
        return;
    }
    m_list->setFocus();
    m_list->editName(state);
}

/// Hidden states, which are not listed, keep their names from others, too.
bool KvLayerStateManWindow::FindLayerStateIsExist(const CStdStr<wchar_t>& name,
                                                  const CKvLayerState* except) const {
    const CKvLayerState* const existing = m_engine.states().find(name);
    return existing && existing != except;
}

void KvLayerStateManWindow::OnLvnEndlabeledit(CKvLayerState* state, const QString& text) {
    const ModuleResources resources;
    CStdStr<wchar_t> name(text.toStdWString());
    name.Trim();
    if (name.empty()) {
        MessageBox(moduleString(kStrStateNameEmpty).c_str(), nullptr, MB_OK | MB_ICONEXCLAMATION);
        return;
    }
    name = hxGetUniStringFromMIFCIF(name.c_str());
    name.Trim();
    if (name == state->GetLayerStateName()) return;
    if (!hxlyIsStateName(name.c_str())) {
        MessageBox(badStateNameText().c_str(), nullptr, MB_OK | MB_ICONEXCLAMATION);
    } else if (FindLayerStateIsExist(name, state)) {
        warn(kStrStateNameTaken, name);
    } else {
        m_engine.renameLayerState(*state, name);
        showStates(state);
    }
}

// ---- delete ----

void KvLayerStateManWindow::OnButtonDel() {
    const ModuleResources resources;
    std::vector<CKvLayerState*> states = m_list->selectedStates();
    states.erase(std::remove_if(states.begin(), states.end(),
                                [](const CKvLayerState* state) { return state->isOfReference(); }),
                 states.end());
    if (states.size() == 1) {
        if (!isConfirmed(kStrDeleteState, states.front()->GetLayerStateName())) return;
    } else {
        states = statesToDelete(this, states);
    }
    deleteStates(states);
}

/// What stands behind the last one is selected then.
void KvLayerStateManWindow::deleteStates(const std::vector<CKvLayerState*>& states) {
    if (states.empty()) return;
    KvLayerStateListModel& rows = m_list->rows();
    const int last = rows.rowOf(states.back());
    CKvLayerState* next = rows.stateAt(last + 1);
    for (int row = last; !next && row >= 0; --row) {
        CKvLayerState* const before = rows.stateAt(row);
        if (std::find(states.begin(), states.end(), before) == states.end()) next = before;
    }
    m_list->SetLastSelectItem(nullptr);
    for (CKvLayerState* const state : states) {
        m_engine.removeLayerState(state);
    }
    showStates(next);
    m_list->setFocus();
}

// ---- duplicate, add layers ----

void KvLayerStateManWindow::duplicate() {
    if (const CKvLayerState* const copy = duplicateLayerState(m_engine.states(), m_list->selectedState())) {
        showStates(copy);
    }
}

void KvLayerStateManWindow::addMissing() {
    const ModuleResources resources;
    int layers = 0;
    int states = 0;
    for (const CKvLayerState* const state : m_list->selectedStates()) {
        if (state->isOfReference()) continue;
        layers += addMissingLayers(m_engine.database(), m_engine.states(), state);
        ++states;
        m_list->rows().refresh(state);
    }
    const QString text =
        formatMessage(resourceText(kStrLayersAdded), {QString::number(layers), QString::number(states)});
    MessageBox(text.toStdWString().c_str(), nullptr, MB_OK | MB_ICONINFORMATION);
}

// ---- import, export ----

namespace {

constexpr wchar_t kFileKey[] = L"KvLayerStateManDlg";

}  // namespace

void KvLayerStateManWindow::OnButtonImport() {
    const ModuleResources resources;
    HxUiFileDialog dialog(
        moduleString(kStrStatesImportTitle).c_str(), kFileKey,
        {resourceText(kStrStateFiles), resourceText(kStrStateDrawings), resourceText(kStrStateTemplates)});
    const QString path = dialog.getOpenFile(this);
    if (path.isEmpty()) return;
    const CStdStr<wchar_t> file = path.toStdWString();
    const bool isFile = stateSourceOf(file) != KvStateSource::drawing;
    const bool isImported =
        isFile ? m_engine.ImportLayerStateFile(file) != 0
               : m_engine.ImportDrawingFile(
                     file, [this](KvLayerStateMap& theirs, std::vector<CKvLayerState*>& chosen) {
                         return chooseStates(this, m_engine, theirs, chosen);
                     }) > 0;
    CKvLayerState* const state = isImported ? m_engine.imported() : nullptr;
    showStates(state);
    if (!state || !isFile || state->isHidden()) return;
    if (m_questions.mayRestore(state->GetLayerStateName())) restore(*state, state->GetLayerStateMake());
}

void KvLayerStateManWindow::OnButtonExport() {
    const ModuleResources resources;
    CKvLayerState* const state = m_list->selectedState();
    if (!state) return;
    HxUiFileDialog dialog(moduleString(kStrExportStateTitle).c_str(), kFileKey,
                          {resourceText(kStrExportStateFiles)});
    dialog.setFileName(QString::fromStdWString(state->GetLayerStateName()).replace('/', '_') + ".las");
    const QString path = dialog.getSaveFile(this);
    if (!path.isEmpty()) m_engine.ExportLayerStateFile(path.toStdWString(), state);
}

// ---- restore, close, what is listed ----

void KvLayerStateManWindow::OnButtonRestore() {
    const ModuleResources resources;
    CKvLayerState* const state = m_list->selectedState();
    if (state) restore(*state, (state->GetLayerStateMake() & ~HxLyState::kAllProperties) | tickedMask());
}

/// The state keeps the mask.
bool KvLayerStateManWindow::restore(CKvLayerState& state, std::int32_t mask) {
    UpdateData();
    if (!m_engine.restoreLayerState(state, mask, HxDbObjectId())) {
        warn(kStrStateEmpty, state.GetLayerStateName());
        return false;
    }
    state.SetLayerStateMake(mask);
    CKvLayerStateManDlg::storeOptions();
    EndDialog(CKvLayerStateManDlg::kRestored);
    return true;
}

void KvLayerStateManWindow::OnButtonClose() {
    UpdateData();
    CKvLayerStateManDlg::storeOptions();
    EndDialog(IDCANCEL);
}

/// Kept at once, so that selecting another state does not take it back.
void KvLayerStateManWindow::OnCheckTurnOff(bool isTicked) {
    CKvLayerStateManDlg::m_bCloseNoFindChecked = isTicked ? 1 : 0;
    CKvLayerStateManDlg::storeOptions();
}

void KvLayerStateManWindow::OnCheckNoXrefs(bool isTicked) {
    UpdateData();
    if (isTicked) {
        m_engine.removeXrefLayerStates();
    } else {
        m_engine.LoadXrefLayerState(m_engine.database());
    }
    showStates();
}
