// Recording how all layers are before the host isolates some, and bringing them back.
#include "frame/entry/exported_functions.h"

#include "dialogs/classic_layer_dialog.h"
#include "frame/util/resource_text.h"
#include "frame/util/system_variable.h"
#include "isolation_place.h"
#include "model/edit_guard.h"
#include "model/isolation_state.h"
#include "model/layer_data.h"
#include "model/opened_or_held.h"

#include "hxdbdict.h"
#include "hxdbtransaction.h"
#include "hxdoc.h"

namespace {

/// What ending the isolation brings back; all else may have been changed meanwhile.
constexpr std::int32_t kBroughtBack = HxLyState::kOn | HxLyState::kFrozen | HxLyState::kLocked |
                                      HxLyState::kNewViewportFrozen | HxLyState::kCurrentViewportFrozen;

/// Takes everything back that is changed while it lives, unless it is kept.
class Transaction {
public:
    explicit Transaction(HxDbTransactionManager& manager)
        : m_manager(manager), m_top(manager.startTransaction()) {}
    ~Transaction() {
        if (m_top) m_manager.abortTransaction();
    }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    bool opensForWrite(HxDbObjectId id) {
        HxDbObject* object = nullptr;
        return m_top && m_top->getObject(object, id, HxDb::kForWrite) == Hx::eOk;
    }
    void keep() {
        m_manager.endTransaction();
        m_top = nullptr;
    }

private:
    HxDbTransactionManager& m_manager;
    HxTransaction* m_top;
};

/// All layers into a state that is made anew, whatever stood under its name.
bool recordLayers() {
    CVrexLayerP dialog;
    CKvLayerStateManDlg& states = dialog.layerStates();
    states.SetIsModelSpace(shortVariable(L"TILEMODE", 1) == 1 ? 1 : 0);
    dialog.InitLayerStateInfo();
    states.SetCurrentLayerName(textVariable(L"CLAYER", L"0"));
    states.LoadHxLayerState(states.database());
    states.removeLayerState(states.states().find(kIsolationState));
    return states.CmdNew(kIsolationState, L"") && states.BuildLayerStateExtensionDictionary() == 1;
}

/// Recorded layers that are locked, off or frozen now. False when one cannot be read.
bool findHidden(const HxDbDatabase& database, const HxArray<CStdStr<wchar_t>>& names,
                HxArray<HxDbObjectId>& hidden) {
    const OpenedOrHeld<HxDbLayerTable> table(database.layerTableId(), HxDb::kForRead);
    if (!table) return false;
    for (const CStdStr<wchar_t>& name : names) {
        HxDbObjectId id;
        if (table->getAt(name.c_str(), id) != Hx::eOk) continue;
        const HxDbObjectPointer<HxDbLayerTableRecord> layer(id, HxDb::kForRead);
        if (!layer) return false;
        if (layer->isLocked() || layer->isOff() || layer->isFrozen()) hidden.append(id);
    }
    return true;
}

/// Nothing for a layout that is gone, and for the current one, whose viewport the user does not leave.
void returnTo(const HxDbDatabase& database, HxDbObjectId layout) {
    if (!layout.isNull() && layout != activeLayout(database)) hxdbLayoutManager()->setCurrentLayoutId(layout);
}

/// False, with everything as it was, when there is no record or something cannot be opened.
bool bringBack(HxDbDatabase& database, HxArray<HxDbObjectId>& hidden) {
    HxDbLayerStateManager* const states = database.getLayerStateManager();
    if (!states || !database.transactionManager() || !isIsolated(database)) return false;
    Transaction transaction(*database.transactionManager());
    const HxDbObjectId dictionary = states->layerStatesDictionaryId(false);
    if (!transaction.opensForWrite(dictionary)) return false;
    const std::optional<KvIsolationPlace> place = readIsolationPlace(database, dictionary);
    if (!place || !removeIsolationPlace(dictionary)) return false;
    returnTo(database, place->layout);
    HxArray<CStdStr<wchar_t>> names;
    states->getLayerStateLayers(names, kIsolationState);
    if (!findHidden(database, names, hidden)) return false;
    states->restoreLayerState(kIsolationState, place->viewport, 0, &kBroughtBack);
    states->deleteLayerState(kIsolationState);
    transaction.keep();
    return true;
}

}  // namespace

void LayIso() {
    const ModuleResources resources;
    HxDbDatabase* const database = curDocDatabase();
    if (!database) return;
    const KvLayerUndoAndLockWorker step(true, ResourceString(kStrUndoIsolate).c_str());
    if (!recordLayers()) return;
    const HxDbObjectId dictionary = database->getLayerStateManager()->layerStatesDictionaryId(true);
    writeIsolationPlace(*database, dictionary);
}

int LayUnisoNew() {
    const ModuleResources resources;
    HxDbDatabase* const database = curDocDatabase();
    if (!database) return 0;
    const KvLayerUndoAndLockWorker step(true, ResourceString(kStrUndoEndIsolation).c_str());
    HxArray<HxDbObjectId> hidden;
    if (!bringBack(*database, hidden)) return 0;
    if (!hidden.isEmpty()) kvRegenLayers(hidden, true);
    return 1;
}
