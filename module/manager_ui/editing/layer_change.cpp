// One change of many layers.
#include "layer_change.h"

#include "manager_ui/grid/layer_list_ctrl.h"
#include "model/auto_layer_record.h"
#include "model/edit_guard.h"
#include "model/layer_prop_manager.h"

#include "hxed.h"
#include "hxui.h"

bool changeRecord(HxDbLayerTableRecord& record, const KvLayerChange& change) {
    const bool upgraded = !record.isWriteEnabled() && record.upgradeOpen() == Hx::eOk;
    if (!record.isWriteEnabled()) return false;
    change(record);
    if (upgraded) record.downgradeOpen();
    return true;
}

void changeLayers(KvLayerListCtrl& grid, const std::vector<HxDbObjectId>& layers, const QString& name,
                  const KvLayerChange& change) {
    KvLayerPropManager* const manager = grid.manager();
    if (!manager) return;
    const std::wstring label = name.toStdWString();
    const KvLayerUndoAndLockWorker guard(manager->isPaletteMode(), label.c_str());
    HxUiProgress progress(label.c_str(), static_cast<long long>(layers.size()));
    HxDbTransactionManager* const transactions = grid.transactions();
    std::vector<HxDbObjectId> changed;
    for (const HxDbObjectId layer : layers) {
        if (!progress.step(static_cast<long long>(changed.size()))) break;
        const KvAutoLayerRecordPtr record(transactions, manager->FindLayer(layer), true);
        if (record.object() && !record.isBorrowed()) changeRecord(*record.object(), change);
        changed.push_back(layer);
    }
    grid.refreshLayers(changed);
}

void dropPickFirst() { hxedPickFirstProcessor()->process(kHxPickFirstDrop); }
