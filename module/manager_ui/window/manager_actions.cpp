// What the manager does with layers: new, delete, set current; layer states.
#include "frame/util/format_message.h"
#include "layer_prop_manager_dlg.h"
#include "new_layer.h"

#include "frame/util/resource_text.h"
#include "layer_states/commands/layer_state_commands.h"
#include "manager_ui/editing/layer_change.h"
#include "manager_ui/grid/layer_list_ctrl.h"
#include "manager_ui/grid/layer_list_model.h"
#include "model/auto_layer_record.h"
#include "model/blocking_commands.h"
#include "model/edit_guard.h"
#include "model/layer_data.h"
#include "model/layer_prop_manager.h"

#include "hxdbdatabase.h"
#include "hxdoc.h"
#include "hxlyfilter.h"
#include "hxui.h"

// ---- new ----

void KvLayerPropManagerDlg::OnButtonNew() {
    const ModuleResources resources;
    if (!m_list->canEdit()) return;
    HxDbLayerTableRecord* made = nullptr;
    {
        const KvLayerUndoAndLockWorker guard(m_isPalette, ResourceString(kStrUndoNewLayer).c_str());
        made = makeLayerLikeSelected(*m_list);
        if (made) addToCurrentGroups(*made);
    }
    if (!made) {
        MessageBox(ResourceString(kStrNewLayerFailed).c_str(), nullptr, MB_OK | MB_ICONWARNING);
        return;
    }
    m_made.insert(made->objectId());
    m_list->placeRow(m_manager->FindLayer(made->objectId()));
    updateInfo();
    m_list->EditLayerName(made);
}

/// So that it is seen where the user made it.
void KvLayerPropManagerDlg::addToCurrentGroups(const HxDbLayerTableRecord& layer) {
    if (HxLyLayerGroup* const group = HxLyLayerGroup::cast(m_manager->GetCurrentFilter())) {
        joinGroups(*group, {layer.objectId()});
        saveLayerFilters();
    }
}

// ---- delete ----

void KvLayerPropManagerDlg::OnButtonDelete() {
    const ModuleResources resources;
    const std::vector<HxDbObjectId> selected = m_list->selectedIds();
    if (!m_list->canEdit() || selected.empty()) return;
    int erased = 0;
    const KvLayerGridView view = m_list->view();
    const std::vector<HxDbObjectId> order = m_list->order();
    {
        const CStdStr<wchar_t> name = ResourceString(kStrUndoDelete);
        const KvLayerUndoAndLockWorker guard(m_isPalette, name.c_str());
        HxUiProgress progress(name.c_str(), static_cast<long long>(selected.size()));
        m_manager->procLayerUsageData();
        m_list->ShowLayers({}, false);  // rows point to entries
        long long done = 0;
        erased = m_manager->RemoveLayers(selected, [&] { return progress.step(done++); });
    }
    showInOrder(order);
    m_list->restoreView(view);
    const int kept = static_cast<int>(selected.size()) - erased;
    if (kept > 0) tellCounts(kStrDeleteSummary, static_cast<int>(selected.size()), kept);
}

/// Those that there still are.
void KvLayerPropManagerDlg::showInOrder(const std::vector<HxDbObjectId>& layers) {
    std::vector<KvLayerData*> rows;
    rows.reserve(layers.size());
    for (const HxDbObjectId layer : layers) {
        if (KvLayerData* const data = m_manager->FindLayer(layer)) rows.push_back(data);
    }
    m_list->rows().setLayers(std::move(rows));
    updateInfo();
}

/// A warning with two numbers.
void KvLayerPropManagerDlg::tellCounts(int text, int selected, int failed) {
    const QString told =
        formatMessage(resourceText(text), {QString::number(selected), QString::number(failed)});
    MessageBox(told.toStdWString().c_str(), nullptr, MB_OK | MB_ICONWARNING);
}

// ---- set current ----

void KvLayerPropManagerDlg::OnButtonSetCurrent() {
    const ModuleResources resources;
    KvLayerData* const layer = m_list->rows().layerAt(m_list->currentIndex().row());
    if (!layer || !m_list->canEdit()) return;
    QString refusal;
    {
        const KvAutoLayerRecordPtr record(m_list->transactions(), layer, true);
        if (!record.object()) return;
        if (record->isFrozen() || record->isDependent()) {
            refusal =
                formatMessage(resourceText(kStrSetCurrentRefused), {QString::fromWCharArray(record->name())});
        }
    }
    if (refusal.isEmpty()) {
        m_list->makeLayerCurrent(layer->layerId());
    } else {
        MessageBox(refusal.toStdWString().c_str(), nullptr, MB_OK | MB_ICONWARNING);
    }
}

// ---- layer states ----

/// The palette sends the command, which is an undo step of its own; the dialog works in its transaction, so
/// that its Cancel takes back what was restored and saved, too.
void KvLayerPropManagerDlg::workWithLayerStates(const wchar_t* command, void (*run)(QWidget*)) {
    const ModuleResources resources;
    if (!m_list->canEdit()) return;
    if (!m_isPalette) {
        if (isNeedBlockCmdRuning(this)) return;
        run(this);
        refreshDlgLayers(GetDatabase(), false);
        return;
    }
    if (isFreeForCommand(window())) sendToDocument(command, true);
}

void KvLayerPropManagerDlg::OnButtonLayerStatesManager() {
    workWithLayerStates(L"_LAYERSTATE\n", runLayerStatesManager);
}

void KvLayerPropManagerDlg::OnLayerStateSave() {
    workWithLayerStates(L"_LAYERSTATESAVE\n", runLayerStateSave);
}
