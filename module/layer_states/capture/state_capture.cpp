#include "layer_states/capture/state_capture.h"

#include "hxdbdatabase.h"
#include "hxdbentity.h"
#include "hxtext.h"
#include "layer_states/capture/drawing_layers.h"

#include <unordered_set>

namespace {

/// One entry for each layer; the values are moved out of `layers`.
KvLayerStateInfoArray* captureLayers(KvDrawingLayers layers, const CStdStr<wchar_t>& currentLayer,
                                     bool withOverrides) {
    auto* const entries = new KvLayerStateInfoArray;
    for (std::size_t i = 0; i < layers.size(); ++i) {
        KvDrawingLayers::Layer& layer = layers.at(i);
        const bool isCurrent = hxutEqualNames(layer.own.layer.c_str(), currentLayer.c_str());
        HxLyStateEntry& values = withOverrides && layer.inViewport ? *layer.inViewport : layer.own;
        entries->Add(new CKvLayerStateInfo(std::move(values), static_cast<int>(i), isCurrent));
    }
    return entries;
}

void keepPlotStyles(KvLayerStateInfoArray& entries, const KvLayerStateInfoArray& old) {
    std::unordered_map<std::wstring, const CKvLayerStateInfo*> byName;
    for (const CKvLayerStateInfo* const entry : old) {
        byName.emplace(hxutFoldName(entry->GetLayerName().c_str()), entry);
    }
    for (CKvLayerStateInfo* const entry : entries) {
        const auto found = byName.find(hxutFoldName(entry->GetLayerName().c_str()));
        if (found != byName.end()) entry->SetPlotStyle(found->second->GetPlotStyle());
    }
}

void setHeader(CKvLayerState& state, const KvStateToSave& saved) {
    state.SetLayerStateName(saved.name);
    state.SetDescription(saved.description);
    state.SetSpace(saved.space);
    state.SetSameAsDWG(1);
}

HxDbObjectId viewportOf(const HxDbDatabase& database, int space) {
    return space == HxLyState::kModel ? HxDbObjectId() : hxdbGetCurVportId(&database);
}

}  // namespace

CKvLayerState* createLayerState(HxDbDatabase* database, KvLayerStateMap& states, const KvStateToSave& saved) {
    if (!database) return nullptr;
    auto* const state = new CKvLayerState;
    setHeader(*state, saved);
    state->SetCurrentLayerName(saved.currentLayer);
    states.add(state, captureLayers(KvDrawingLayers(database, viewportOf(*database, saved.space)),
                                    saved.currentLayer, true));
    return state;
}

bool overwriteLayerState(HxDbDatabase* database, KvLayerStateMap& states, CKvLayerState* state,
                         const KvStateToSave& saved, bool headerOnly) {
    if (!database || !state || !states.contains(state)) return false;
    setHeader(*state, saved);
    if (headerOnly) return true;
    state->SetCurrentLayerName(saved.currentLayer);
    KvLayerStateInfoArray* const entries = captureLayers(
        KvDrawingLayers(database, viewportOf(*database, saved.space)), saved.currentLayer, false);
    keepPlotStyles(*entries, *states.entries(state));
    states.replaceEntries(state, entries);
    return true;
}

CKvLayerState* duplicateLayerState(KvLayerStateMap& states, const CKvLayerState* state) {
    if (!states.contains(state)) return nullptr;
    auto* const copy = new CKvLayerState(*state);
    CStdStr<wchar_t> name;
    int number = 2;
    do {
        name.Format(L"%ls (%d)", state->GetLayerStateName().c_str(), number++);
    } while (states.find(name));
    copy->SetLayerStateName(name);
    if (copy->isOfReference()) copy->SetSpace(HxLyState::kLayout);
    auto* const entries = new KvLayerStateInfoArray;
    for (const CKvLayerStateInfo* const entry : *states.entries(state)) {
        entries->Add(new CKvLayerStateInfo(*entry));
    }
    states.add(copy, entries);
    return copy;
}

int addMissingLayers(HxDbDatabase* database, KvLayerStateMap& states, const CKvLayerState* state) {
    KvLayerStateInfoArray* const entries = database ? states.entries(state) : nullptr;
    if (!entries) return 0;
    std::unordered_set<std::wstring> named;
    for (const CKvLayerStateInfo* const entry : *entries) {
        named.insert(hxutFoldName(entry->GetLayerName().c_str()));
    }
    const int before = entries->GetSize();
    KvDrawingLayers layers(database);
    for (std::size_t i = 0; i < layers.size(); ++i) {
        HxLyStateEntry& layer = layers.at(i).own;
        if (named.count(hxutFoldName(layer.layer.c_str())) != 0) continue;
        const bool isCurrent = hxutEqualNames(layer.layer.c_str(), state->GetCurrentLayerName().c_str());
        entries->Add(new CKvLayerStateInfo(std::move(layer), entries->GetSize(), isCurrent));
    }
    return entries->GetSize() - before;
}
