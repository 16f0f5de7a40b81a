// One change of many layers.
#include "layer_change.h"

#include "frame/util/format_message.h"
#include "frame/util/resource_text.h"
#include "manager_ui/grid/layer_list_ctrl.h"
#include "model/auto_layer_record.h"
#include "model/edit_guard.h"
#include "model/layer_prop_manager.h"

#include "hxdbdatabase.h"
#include "hxdialog.h"
#include "hxdoc.h"
#include "hxed.h"
#include "hxui.h"

#include <algorithm>

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

bool isFreeForCommand(QWidget* parent) {
    const HxApDocument* const document = curDoc();
    if (!document || document->isQuiescent()) return document != nullptr;
    hxuiMessageBox(parent, ResourceString(kStrBlockedMessage).c_str(),
                   ResourceString(kStrBlockedCaption).c_str(), MB_ICONEXCLAMATION | MB_OK);
    return false;
}

void sendToDocument(const wchar_t* command, bool echo) {
    if (HxApDocument* const document = curDoc()) {
        hxDocManager()->sendStringToExecute(document, command, true, false, echo);
    }
}

namespace {

/// Shows a box about the current layer if it is one of these; a box that is not answered with Yes takes it
/// out.
void warnOfCurrent(KvLayerListCtrl& grid, std::vector<HxDbObjectId>& layers, int text, unsigned buttons) {
    const HxDbObjectId current = grid.GetDatabase() ? grid.GetDatabase()->clayer() : HxDbObjectId();
    const auto found = std::find(layers.begin(), layers.end(), current);
    if (found == layers.end()) return;
    const ModuleResources resources;
    QString name;
    {
        const HxDbObjectPointer<HxDbLayerTableRecord> record(current, HxDb::kForRead);
        if (record) name = QString::fromWCharArray(record->name());
    }
    const QString message = formatMessage(resourceText(text), {name});
    const int answer =
        CWnd(&grid).MessageBox(message.toStdWString().c_str(), nullptr, buttons | MB_ICONWARNING);
    if (answer != IDYES) layers.erase(found);
}

}  // namespace

void askAboutCurrent(KvLayerListCtrl& grid, std::vector<HxDbObjectId>& layers) {
    warnOfCurrent(grid, layers, kStrTurnOffCurrent, MB_YESNO);
}

void leaveCurrentThawed(KvLayerListCtrl& grid, std::vector<HxDbObjectId>& layers) {
    warnOfCurrent(grid, layers, kStrFreezeCurrent, MB_OK);
}
