// Finding the records of states.
#include "layer_states/storage/layer_state_storage.h"

#include "hxdbdatabase.h"
#include "hxdbdict.h"
#include "hxdbentity.h"
#include "model/visit_records.h"

namespace {

/// A state of a reference's drawing as the drawing that refers to it lists it.
void nameAfterReference(CKvLayerState& state, const CStdStr<wchar_t>& reference) {
    CStdStr<wchar_t> text;
    text.Format(L"%ls_%ls", reference.c_str(), state.GetLayerStateName().c_str());
    state.SetLayerStateName(text);
    text.Format(L"%ls|%ls", reference.c_str(), state.GetCurrentLayerName().c_str());
    state.SetCurrentLayerName(text);
    state.SetSpace(HxLyState::kExternalReference);
}

std::unique_ptr<CKvLayerState> readState(HxDbObjectId record, const CStdStr<wchar_t>& name) {
    const HxLyStateReader reader(record);
    if (reader.status() != Hx::eOk) return nullptr;
    auto state = std::make_unique<CKvLayerState>();
    state->SetLayerStateName(name);
    state->setHeader(reader.header());
    return state;
}

}  // namespace

HxDbObjectId layerStatesDictionary(HxDbDatabase* database, bool create) {
    HxDbLayerStateManager* const manager = database ? database->getLayerStateManager() : nullptr;
    return manager ? manager->layerStatesDictionaryId(create) : HxDbObjectId();
}

void loadLayerStates(HxDbDatabase* database, KvLayerStateMap& states, const CStdStr<wchar_t>& reference) {
    const OpenedOrHeld<HxDbDictionary> dictionary(layerStatesDictionary(database, false), HxDb::kForRead);
    if (!dictionary) return;
    const std::unique_ptr<HxDbDictionaryIterator> entry(dictionary->newIterator());
    for (; !entry->done(); entry->next()) {
        std::unique_ptr<CKvLayerState> state = readState(entry->objectId(), entry->name());
        if (!state) continue;
        if (!reference.empty()) nameAfterReference(*state, reference);
        states.addUnread(std::move(state), entry->objectId(), reference);
    }
}

void visitReferences(HxDbDatabase* database,
                     const std::function<void(HxDbDatabase*, const CStdStr<wchar_t>& name)>& visit) {
    if (!database) return;
    visitRecords(database->blockTableId(), [&](HxDbObjectId id) {
        const OpenedOrHeld<HxDbBlockTableRecord> block(id, HxDb::kForRead);
        if (!block || !block->isFromExternalReference()) return;
        if (HxDbDatabase* const drawing = block->xrefDatabase()) visit(drawing, block->name());
    });
}
