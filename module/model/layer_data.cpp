// One listed layer, and the questions that are asked of a list of them.
#include "layer_data.h"

#include <algorithm>
#include <locale>
#include <memory_resource>
#include <string_view>

namespace {

/// Holds the marks of geometric constraints.
constexpr std::wstring_view kConstraintLayer = L"*ADSK_CONSTRAINTS";

std::pmr::memory_resource& entryPool() {
    static std::pmr::unsynchronized_pool_resource pool;
    return pool;
}

bool equalFolded(std::wstring_view a, std::wstring_view b) {
    const auto& types = std::use_facet<std::ctype<wchar_t>>(std::locale::classic());
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [&](wchar_t x, wchar_t y) { return types.tolower(x) == types.tolower(y); });
}

}  // namespace

void* KvLayerData::operator new(std::size_t size) { return entryPool().allocate(size); }

void KvLayerData::operator delete(void* entry, std::size_t size) { entryPool().deallocate(entry, size); }

bool KvLayerData::fillData(const HxDbLayerTableRecord* record, const HxDbDatabase* /*database*/) {
    const wchar_t* const name = record ? record->name() : nullptr;
    if (!name || (*name == kConstraintLayer.front() && equalFolded(name, kConstraintLayer))) return false;
    m_record = const_cast<HxDbLayerTableRecord*>(record);
    m_id = record->objectId();
    return true;
}

bool fillKvLayerData(KvLayerData* data, const HxDbLayerTableRecord* record, const HxDbDatabase* database) {
    return data && data->fillData(record, database);
}

bool kvLayerInLayerManager(const HxArray<KvLayerData*>& layers, const HxDbLayerTableRecord* record) {
    if (!record) return false;
    const HxDbObjectId id = record->objectId();
    return std::any_of(layers.begin(), layers.end(),
                       [id](const KvLayerData* data) { return data->layerId() == id; });
}

bool kvUpdateLayerForLayerManager(const HxArray<KvLayerData*>& /*layers*/, HxDbDatabase* /*database*/) {
    return true;
}

void kvRegenLayers(const HxArray<HxDbObjectId>& /*layers*/, bool /*flag*/) {}
