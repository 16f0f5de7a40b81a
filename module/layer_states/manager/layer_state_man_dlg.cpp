// The states: reading, writing, making, removing.
#include "layer_states/manager/layer_state_man_dlg.h"

#include "frame/util/resource_text.h"
#include "hxconfig.h"
#include "hxdbentity.h"
#include "hxtext.h"
#include "layer_states/manager/layer_state_man_window.h"
#include "layer_states/save/save_layer_state_dlg.h"
#include "layer_states/storage/layer_state_storage.h"
#include "model/edit_guard.h"
#include "model/record_of_name.h"

namespace {

/// "Turn off layers that the state does not name", 0 or 1.
constexpr wchar_t kOptions[] = L"LAYSTATEOPTIONS";

}  // namespace

int CKvLayerStateManDlg::DoModal(QWidget* parent) {
    InitCreateLayerState();
    return KvLayerStateManWindow(*this, parent).DoModal();
}

void CKvLayerStateManDlg::InitCreateLayerState() {
    LoadHxLayerState(m_database);
    LoadXrefLayerState(m_database);
}

void CKvLayerStateManDlg::readOptions() {
    VrexVariant value;
    std::int16_t isTicked = 0;
    KorvexConfig* const config = vrexConfig();
    if (config && config->getValue(kHxConfigUser, kOptions, value) == 0 && value.getInt16(isTicked)) {
        m_bCloseNoFindChecked = isTicked != 0 ? 1 : 0;
    }
}

void CKvLayerStateManDlg::storeOptions() {
    const auto isTicked = static_cast<std::int16_t>(m_bCloseNoFindChecked);
    if (KorvexConfig* const config = vrexConfig()) {
        config->setValue(kHxConfigUser, kOptions, VrexVariant(isTicked));
    }
}

bool CKvLayerStateManDlg::IsCurrentLayerName(const CStdStr<wchar_t>& name) const {
    return hxutEqualNames(name.c_str(), m_currentLayerName.c_str());
}

HxDbObjectId CKvLayerStateManDlg::HxLayerStateIsExist(HxDbDatabase* database) {
    return layerStatesDictionary(database, true);
}

void CKvLayerStateManDlg::LoadHxLayerState(HxDbDatabase* database) {
    loadLayerStates(database, m_states);
    ConvertLMANLayerstate(ReadLayerFromXData(database));
}

void CKvLayerStateManDlg::LoadXrefLayerState(HxDbDatabase* database) {
    if (m_bNoDisplayXrefChecked != 0) return;
    visitReferences(database, [this](HxDbDatabase* drawing, const CStdStr<wchar_t>& name) {
        ReadXrefLayerState(drawing, name);
    });
}

void CKvLayerStateManDlg::removeXrefLayerStates() {
    for (std::size_t i = m_states.size(); i-- > 0;) {
        if (m_states.at(i)->isOfReference()) m_states.remove(m_states.at(i));
    }
}

void CKvLayerStateManDlg::ReadXrefLayerState(HxDbDatabase* reference, const CStdStr<wchar_t>& xrefName) {
    loadLayerStates(reference, m_states, xrefName);
}

void CKvLayerStateManDlg::ConvertLMANLayerstate(std::vector<KvOlderState> older) {
    for (KvOlderState& one : older) {
        auto* const entries = new KvLayerStateInfoArray;
        for (const HxLyStateEntry& entry : one.entries) {
            entries->Add(new CKvLayerStateInfo(entry, entries->GetSize(), false));
        }
        one.state->SetLayerStateName(FindLMANLayerstateName(one.oldName, m_states));
        m_olderNames[one.state.get()] = one.oldName;
        AddLayerState(one.state.release(), entries);
    }
}

int CKvLayerStateManDlg::BuildLayerStateExtensionDictionary() {
    m_written = KvLayerStatesWritten();
    if (!m_database) return 0;
    if (m_olderNames.empty() && m_olderToDelete.empty() && !haveLayerStatesChanged(m_states)) return 1;
    const KvLayerUndoAndLockWorker step(true, moduleString(kStrUndoLayerStates).c_str());
    m_written = writeLayerStates(m_database, m_states);
    if (!m_written.isOk) return 0;
    for (const auto& [state, oldName] : m_olderNames) {
        m_olderToDelete.insert(oldName);
    }
    m_olderNames.clear();
    std::set<CStdStr<wchar_t>> left;
    for (const CStdStr<wchar_t>& oldName : m_olderToDelete) {
        if (!DeleteLayerFromXData(*m_database, oldName)) left.insert(oldName);
    }
    m_olderToDelete = std::move(left);
    return m_written.failed.isEmpty() && m_olderToDelete.empty() ? 1 : 0;
}

bool CKvLayerStateManDlg::AddLayerState(CKvLayerState* state, KvLayerStateInfoArray* entries) {
    return m_states.add(state, entries);
}

bool CKvLayerStateManDlg::OverwriteLayerState(CKvLayerState* old, CKvLayerState* replacement,
                                              KvLayerStateInfoArray* entries) {
    const std::unique_ptr<CKvLayerState> taken(replacement);
    if (!taken || !m_states.replaceEntries(old, entries)) return false;
    old->setHeader(taken->header());
    old->SetLayerStateName(taken->GetLayerStateName());
    old->SetLasFileType(taken->IsLasFileType());
    return true;
}

CKvLayerState* CKvLayerStateManDlg::CmdNew(const wchar_t* name, const wchar_t* description, QWidget* parent) {
    if (!m_database) return nullptr;
    if (name) {
        CStdStr<wchar_t> trimmed(name);
        trimmed.Trim();
        return saveState(m_database, m_states, {trimmed, description, m_currentLayerName, space()});
    }
    CKvSaveLayerStateDlg dialog(parent, m_states, m_database, m_currentLayerName);
    dialog.SetSpace(space());
    return dialog.DoModal() == IDOK ? m_states.find(dialog.GetLayerStateName()) : nullptr;
}

void CKvLayerStateManDlg::renameLayerState(CKvLayerState& state, const CStdStr<wchar_t>& name) {
    if (m_restoredName == state.GetLayerStateName()) m_restoredName = name;
    state.SetLayerStateName(name);
}

bool CKvLayerStateManDlg::SaveasLayerState(CKvLayerState* state) {
    if (!state || state->isOfReference()) return false;
    const KvStateToSave saved{state->GetLayerStateName(), state->GetDescription(), m_currentLayerName,
                              space()};
    return overwriteLayerState(m_database, m_states, state, saved, false);
}

bool CKvLayerStateManDlg::removeLayerState(CKvLayerState* state) {
    if (!state || state->isOfReference()) return false;
    const auto older = m_olderNames.find(state);
    if (older != m_olderNames.end()) {
        m_olderToDelete.insert(older->second);
        m_olderNames.erase(older);
    }
    return m_states.remove(state);
}

void CKvLayerStateManDlg::ClearAllLayerStateMap() {
    m_states.clear();
    m_olderNames.clear();
    m_layerLists.clear();
    m_vpLayers.clear();
    layersChanged();
}

const CKvVpLayerInfo* CKvLayerStateManDlg::FindVpLayerInfo(const CStdStr<wchar_t>& name) {
    if (m_vpLayers.count(name) == 0 && !GetViewPortId().isNull()) {
        const OpenedOrHeld<HxDbLayerTableRecord> layer(layerOfName(*m_database, name), HxDb::kForRead);
        AddVpLayerInfo(layer.object());
    }
    const auto found = m_vpLayers.find(name);
    return found == m_vpLayers.end() ? nullptr : &found->second;
}

void CKvLayerStateManDlg::AddVpLayerInfo(HxDbLayerTableRecord* layer) {
    if (layer) m_vpLayers[layer->name()].initVpLayerInfo(layer);
}

HxDbObjectId CKvLayerStateManDlg::GetViewPortId() const {
    return m_database ? hxdbGetCurVportId(m_database) : HxDbObjectId();
}

int CKvLayerStateManDlg::IsLayerNameVpLayerFrozen(HxDbDatabase* database, const CStdStr<wchar_t>& layerName) {
    if (!database || database->tilemode()) return 0;
    const HxDbObjectId layer = layerOfName(*database, layerName);
    if (layer.isNull()) return 0;
    const OpenedOrHeld<HxDbViewport> viewport(hxdbGetCurVportId(database), HxDb::kForRead);
    return viewport && viewport->isLayerFrozenInViewport(layer) ? 1 : 0;
}
