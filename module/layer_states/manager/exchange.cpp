// States into files, out of files and out of other drawings.
#include "layer_states/file/layer_state_boxes.h"
#include "layer_states/file/layer_state_files.h"
#include "layer_states/file/other_drawing.h"
#include "layer_states/manager/layer_state_man_dlg.h"

LayerStateQuestions& CKvLayerStateManDlg::questions() {
    static KvLayerStateBoxes boxes;
    return m_questions ? *m_questions : boxes;
}

bool CKvLayerStateManDlg::ExportLayerStateFile(const CStdStr<wchar_t>& path, CKvLayerState* state) {
    return KvLayerStateFiles(m_states, questions()).exportState(path, state);
}

int CKvLayerStateManDlg::ImportLayerStateFile(const CStdStr<wchar_t>& path) {
    m_imported = KvLayerStateFiles(m_states, questions()).importState(path, m_database);
    IsSameAsDWG(m_imported);
    return m_imported ? 1 : 0;
}

int CKvLayerStateManDlg::ImportDrawingFile(const CStdStr<wchar_t>& path, const Chooser& choose) {
    KvOtherDrawing drawing;
    std::vector<CKvLayerState*> chosen;
    if (!drawing.read(path, questions()) || !choose(drawing.states(), chosen)) return 0;
    return ImportToLayerState(chosen, drawing.states());
}

int CKvLayerStateManDlg::ImportToLayerState(const std::vector<CKvLayerState*>& chosen,
                                            const KvLayerStateMap& theirs) {
    const std::vector<CKvLayerState*> taken =
        KvLayerStateFiles(m_states, questions()).importStates(chosen, theirs, m_database);
    m_imported = taken.empty() ? nullptr : taken.back();
    return static_cast<int>(taken.size());
}
