// Restoring a state, and which states are the same as the drawing.
#include "frame/util/resource_text.h"
#include "layer_states/manager/layer_state_man_dlg.h"
#include "model/edit_guard.h"
#include "model/record_of_name.h"

#include "hxdbentity.h"

namespace {

constexpr wchar_t kReferenceMark = L'|';

}  // namespace

bool CKvLayerStateManDlg::CmdRestore(const wchar_t* name, HxDbObjectId viewport) {
    CKvLayerState* const state = m_states.find(name);
    return state && restoreLayerState(*state, state->GetLayerStateMake(), viewport);
}

bool CKvLayerStateManDlg::restoreLayerState(CKvLayerState& state, std::int32_t mask, HxDbObjectId viewport) {
    if (!m_database || state.IsLayerStateRestore() == 0) return false;
    KvRestoreOptions options;
    options.mask = mask;
    options.viewport = viewport;
    options.asViewportOverrides = m_bViewportReplaceChecked != 0;
    options.turnOffOthers = m_bCloseNoFindChecked != 0;
    CStdStr<wchar_t> undoName;
    undoName.Format(moduleString(kStrUndoRestoreState).c_str(), state.GetLayerStateName().c_str());
    const KvLayerUndoAndLockWorker step(true, undoName.c_str());
    KvLayerRestore restore(*m_database, options);
    m_states.visitEntries(&state, [&](const HxLyStateEntry& entry) {
        restore.RestoreLayerFromLayerState(entry);
        return true;
    });
    if (restore.result().layers == 0) return false;
    restore.ProcessVpLayerFreezeLayer();
    restore.TurnoffLayerOfNotFoundInLayerState();
    makeCurrent(state.GetCurrentLayerName());
    m_restored = restore.result();
    m_bIsRestore = 1;
    m_restoredName = state.GetLayerStateName();
    layersChanged();
    return true;
}

void CKvLayerStateManDlg::makeCurrent(const CStdStr<wchar_t>& layer) {
    if (layer.empty() || layer.find(kReferenceMark) != CStdStr<wchar_t>::npos) return;
    const HxDbObjectId id = layerOfName(*m_database, layer);
    if (id.isNull() || id == m_database->clayer()) return;
    if (m_database->setClayer(id) == Hx::eOk) m_currentLayerName = layer;
}

/// Needs a drawing.
KvDrawingLayers& CKvLayerStateManDlg::layersNow() {
    if (!m_layersNow) {
        m_layersNow = std::make_unique<KvDrawingLayers>(
            m_database, m_database->tilemode() ? HxDbObjectId() : hxdbGetCurVportId(m_database));
    }
    return *m_layersNow;
}

int CKvLayerStateManDlg::IsSameAsDWG(CKvLayerState* state, int* layers) {
    if (!m_database || !state || !m_states.contains(state)) return 0;
    const bool isSame =
        isSameAsDrawing(m_states, *state, layersNow(), KvRestorePlace::of(*m_database), layers);
    state->SetSameAsDWG(isSame ? 1 : 0);
    return state->GetSameAsDWG();
}

KvStateDifferences CKvLayerStateManDlg::differencesOf(const CKvLayerState& state, std::int32_t mask) {
    if (!m_database) return {};
    return {m_states, state, mask, layersNow(), KvRestorePlace::of(*m_database)};
}

int CKvLayerStateManDlg::FindLayerStateSameAsDwg(const CStdStr<wchar_t>& name) {
    return IsSameAsDWG(m_states.find(name));
}

void CKvLayerStateManDlg::layersChanged() {
    m_layersNow.reset();
    m_layerLists.setAllStale();
}
