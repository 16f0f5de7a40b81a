#include "layer_states/capture/layer_lists.h"

#include "hxdbdatabase.h"
#include "hxdbsymtb.h"
#include "model/visit_records.h"

void KvLayerLists::fill() {
    clear();
    m_isToBeNamed = true;
}

void KvLayerLists::nameLayers() {
    if (!m_isToBeNamed) return;
    m_isToBeNamed = false;
    const HxDbDatabase* const database = hxdbWorkingDatabase();
    if (!database) return;
    visitRecords(database->layerTableId(), [this](HxDbObjectId id) {
        const OpenedOrHeld<HxDbLayerTableRecord> record(id, HxDb::kForRead);
        if (record) m_lists[record->name()].layer = id;
    });
}

void KvLayerLists::add(const CStdStr<wchar_t>& name, resbuf* list) {
    nameLayers();
    List& entry = m_lists[name];
    hxutRelRb(entry.list);
    entry.list = list;
}

resbuf* KvLayerLists::find(const CStdStr<wchar_t>& name) {
    nameLayers();
    const auto found = m_lists.find(name);
    if (found == m_lists.end()) return nullptr;
    List& entry = found->second;
    zds_name layer = {0, 0};
    if (!entry.list && hxdbGetZdsName(layer, entry.layer) == Hx::eOk) entry.list = hxdbEntGet(layer);
    return entry.list;
}

void KvLayerLists::setAllStale() {
    for (auto& [name, entry] : m_lists) {
        if (entry.layer.isNull()) continue;
        hxutRelRb(entry.list);
        entry.list = nullptr;
    }
}

void KvLayerLists::clear() {
    for (auto& [name, entry] : m_lists) {
        hxutRelRb(entry.list);
    }
    m_lists.clear();
    m_isToBeNamed = false;
}
