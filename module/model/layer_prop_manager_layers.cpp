// The layers of a layer manager: listing, making and deleting them, what is current and in use.
#include "layer_prop_manager.h"

#include "auto_layer_record.h"

#include "frame/util/resource_text.h"
#include "frame/util/system_variable.h"
#include "frame/util/text_utilities.h"

#include "hxdoc.h"

#include <algorithm>

namespace {

constexpr wchar_t kShowUsage[] = L"SHOWLAYERUSAGE";
constexpr wchar_t kDefpoints[] = L"DEFPOINTS";
constexpr wchar_t kXrefMark = L'|';
constexpr wchar_t kNamePattern[] = L"Layer%d";

/// The object of an id for reading, also when someone has it open for write.
template <class T>
const T* readable(const HxDbObjectPointer<T>& opened, HxDbObjectId id) {
    return opened ? opened.object() : T::cast(hxdbObjectPointer(id));
}

}  // namespace

/// An object out of the dialog's transaction; null with a status when it does not come. One of another class
/// is not touched: the transaction would hold it to its end.
template <class T>
T* KvLayerPropManager::got(HxDbObjectId id, HxDb::OpenMode mode, Hx::ErrorStatus* status) const {
    HxDbObject* object = hxdbObjectPointer(id);
    Hx::ErrorStatus result = object && !T::cast(object) ? Hx::eWrongClass : Hx::eNoActiveTransactions;
    if (result != Hx::eWrongClass && ownsTopTransaction()) {
        result = m_transaction->getObject(object, id, mode);
    }
    if (status) *status = result;
    return result == Hx::eOk ? T::cast(object) : nullptr;
}

/// The layer table for a change: opened and closed here in palette mode; the transaction's in dialog mode,
/// which others can read again afterwards. Null when it cannot be written.
class KvLayerPropManager::TableForChange {
public:
    explicit TableForChange(KvLayerPropManager& manager)
        : m_opened(manager.m_isPalette ? manager.m_database->layerTableId() : HxDbObjectId(),
                   HxDb::kForWrite),
          m_table(m_opened.object()) {
        if (manager.m_isPalette) return;
        m_table = manager.got<HxDbLayerTable>(manager.m_database->layerTableId(), HxDb::kForWrite);
        if (m_table) manager.m_layerTable = m_table;
    }
    ~TableForChange() {
        if (m_table && !m_opened) m_table->downgradeOpen();
    }
    TableForChange(const TableForChange&) = delete;
    TableForChange& operator=(const TableForChange&) = delete;
    HxDbLayerTable* operator->() const { return m_table; }
    HxDbLayerTable& operator*() const { return *m_table; }
    explicit operator bool() const { return m_table && m_table->isWriteEnabled(); }

private:
    HxDbObjectPointer<HxDbLayerTable> m_opened;
    HxDbLayerTable* m_table;
};

void KvLayerPropManager::ReloadLayers() {
    ClearLayers();
    m_listed = GetDatabase();
    if (!m_listed) return;
    const HxDbObjectId tableId = m_database->layerTableId();
    const HxDbObjectPointer<HxDbLayerTable> opened(m_isPalette ? tableId : HxDbObjectId(), HxDb::kForRead);
    if (!m_isPalette) m_layerTable = got<HxDbLayerTable>(tableId, HxDb::kForRead);
    const HxDbLayerTable* const table = m_isPalette ? readable(opened, tableId) : m_layerTable;
    HxDbSymbolTableIterator* steps = nullptr;
    if (!table || table->newIterator(steps) != Hx::eOk) return;
    const std::unique_ptr<HxDbSymbolTableIterator> owner(steps);
    for (; !steps->done(); steps->step()) {
        const HxDbObjectId id = steps->getRecordId();
        if (m_isPalette) {
            const HxDbObjectPointer<HxDbLayerTableRecord> record(id, HxDb::kForRead);
            listRecord(readable(record, id));
        } else {
            listRecord(got<HxDbLayerTableRecord>(id, HxDb::kForRead));
        }
    }
}

/// Appends an entry, unless the layer is one that is never shown.
void KvLayerPropManager::listRecord(const HxDbLayerTableRecord* record) {
    auto data = std::make_unique<KvLayerData>();
    if (fillKvLayerData(data.get(), record, m_database)) AddLayerData(data.release());
}

KvLayerData* KvLayerPropManager::entryOf(const HxDbLayerTableRecord* record) const {
    return record ? FindLayer(record->objectId()) : nullptr;
}

/// Made when an entry is first asked for by id: a list that is only shown needs none.
void KvLayerPropManager::indexEntries() const {
    if (m_isIndexed) return;
    m_isIndexed = true;
    m_entries.reserve(static_cast<std::size_t>(m_layers.length()));
    for (KvLayerData* const data : m_layers) {
        m_entries[data->layerId()] = data;
    }
}

KvLayerData* KvLayerPropManager::FindLayer(HxDbObjectId layer) const {
    indexEntries();
    const auto found = m_entries.find(layer);
    return found == m_entries.end() ? nullptr : found->second;
}

int KvLayerPropManager::validLayerCount() const {
    return static_cast<int>(std::count_if(m_layers.begin(), m_layers.end(), [](const KvLayerData* data) {
        return data->isValid() && !data->layerId().isErased();
    }));
}

void KvLayerPropManager::AddLayerData(KvLayerData* data) {
    if (!data) return;
    m_layers.append(data);
    if (m_isIndexed) m_entries[data->layerId()] = data;
}

bool KvLayerPropManager::AddToLayers(const HxDbLayerTableRecord* record) {
    if (!GetDatabase() || !record || record->database() != m_database || entryOf(record)) return false;
    listRecord(record);
    return entryOf(record) != nullptr;
}

void KvLayerPropManager::RemoveLayerData(KvLayerData* data) {
    if (!data || !m_layers.remove(data)) return;
    m_entries.erase(data->layerId());
    delete data;
}

void KvLayerPropManager::RemoveFromLayers(const HxDbLayerTableRecord* record) {
    RemoveLayerData(entryOf(record));
}

void KvLayerPropManager::ClearLayers() {
    for (const KvLayerData* const data : m_layers) {
        delete data;
    }
    m_layers.removeAll();
    m_entries.clear();
    m_isIndexed = false;
}

void KvLayerPropManager::ClearData() {
    ClearLayers();
    m_root.reset();
    m_current = nullptr;
    m_previous = nullptr;
    m_listed = nullptr;
}

void KvLayerPropManager::setMgrLayerDataValid(const HxDbLayerTableRecord* record, bool valid) {
    KvLayerData* const data = entryOf(record);
    if (data && data->layerRec() == record) data->setValid(valid);
}

HxArray<KvLayerData*> KvLayerPropManager::GetFilteredLayers(const HxLyLayerFilter* filter, int invert) const {
    return GetFilteredLayers(m_layers, filter, invert);
}

HxArray<KvLayerData*> KvLayerPropManager::GetFilteredLayers(const HxArray<KvLayerData*>& layers,
                                                            const HxLyLayerFilter* filter, int invert) const {
    HxArray<KvLayerData*> accepted;
    if (!filter) return accepted;
    const bool wanted = invert == 0;
    const bool takesAll = filter->kind() == HxLyLayerFilter::kAll;
    for (KvLayerData* const data : layers) {
        if (takesAll) {  // no need to open them
            if (wanted && data->isValid() && !data->layerId().isErased()) accepted.append(data);
            continue;
        }
        const KvAutoLayerRecordPtr record(data, true, false, true);
        if (record.object() && filter->filter(record.object()) == wanted) accepted.append(data);
    }
    return accepted;
}

/// Of entries whose layers are erased: the table knows the others.
bool KvLayerPropManager::hasErasedEntryNamed(const wchar_t* name) const {
    return std::any_of(m_layers.begin(), m_layers.end(), [name](KvLayerData* data) {
        if (!data->layerId().isErased()) return false;
        const KvAutoLayerRecordPtr record(data, true);
        return record.object() && std::wcscmp(record->name(), name) == 0;
    });
}

/// The table is asked first: it finds a name without looking at every layer.
CStdStr<wchar_t> KvLayerPropManager::nextLayerName(const HxDbLayerTable& table) const {
    const ModuleResources resources;
    const CStdStr<wchar_t> pattern = ResourceString(kStrNewLayerName, kNamePattern);
    CStdStr<wchar_t> name;
    int number = 0;
    do {
        name.Format(pattern.c_str(), ++number);
    } while (table.has(name.c_str()) || hasErasedEntryNamed(name.c_str()));
    return name;
}

bool KvLayerPropManager::AddNewLayer(const wchar_t* name) {
    if (!GetDatabase()) return false;
    const TableForChange table(*this);
    if (!table) return false;
    auto made = std::make_unique<HxDbLayerTableRecord>();
    const CStdStr<wchar_t> wanted = name ? CStdStr<wchar_t>(name) : nextLayerName(*table);
    if (made->setName(wanted.c_str()) != Hx::eOk || table->add(made.get()) != Hx::eOk) return false;
    HxDbLayerTableRecord* const record = made.release();
    record->setIsInUse(shortVariable(kShowUsage, 0) != 1);
    if (!m_isPalette) m_database->transactionManager()->addNewlyCreatedDBRObject(record);
    listRecord(record);
    m_isUsageComputed = false;
    if (m_isPalette) record->close();
    return true;
}

Hx::ErrorStatus KvLayerPropManager::RemoveLayer(HxDbObjectId id) {
    if (!GetDatabase()) return Hx::eNoDatabase;
    const Hx::ErrorStatus status = eraseLayer(id);
    if (status == Hx::eOk) RemoveLayerData(FindLayer(id));
    return status;
}

/// Entries go at the end, in one pass.
int KvLayerPropManager::RemoveLayers(const std::vector<HxDbObjectId>& ids,
                                     const std::function<bool()>& goesOn) {
    if (!GetDatabase()) return 0;
    indexEntries();
    int erased = 0;
    for (const HxDbObjectId id : ids) {
        if (goesOn && !goesOn()) break;
        if (eraseLayer(id) != Hx::eOk) continue;
        ++erased;
        const auto entry = m_entries.find(id);
        if (entry == m_entries.end()) continue;
        entry->second->setValid(false);
        m_entries.erase(entry);
    }
    HxArray<KvLayerData*> kept;
    for (KvLayerData* const data : m_layers) {
        if (m_entries.find(data->layerId()) == m_entries.end()) {
            delete data;
        } else {
            kept.append(data);
        }
    }
    m_layers = kept;
    return erased;
}

Hx::ErrorStatus KvLayerPropManager::eraseLayer(HxDbObjectId id) {
    if (id == m_database->layerZero() || id == m_database->clayer()) return Hx::eRefused;
    if (!id.isNull() && id.database() != m_database) return Hx::eNotInDatabase;
    if (!m_isPalette) {
        Hx::ErrorStatus status = Hx::eOk;
        HxDbLayerTableRecord* const record = got<HxDbLayerTableRecord>(id, HxDb::kForWrite, &status);
        return record ? eraseRecord(*record) : status;
    }
    const HxDbObjectPointer<HxDbLayerTableRecord> record(id, HxDb::kForWrite);
    return record ? eraseRecord(*record.object()) : record.openStatus();
}

Hx::ErrorStatus KvLayerPropManager::eraseRecord(HxDbLayerTableRecord& record) {
    const CStdStr<wchar_t> name(record.name());
    if (record.isInUse() || name.Find(kXrefMark) >= 0 || db_compareNames(name.c_str(), kDefpoints) == 0) {
        return Hx::eRefused;
    }
    return record.isWriteEnabled() ? record.erase() : Hx::eOk;
}

Hx::ErrorStatus KvLayerPropManager::SetCurrentLayer(HxDbObjectId id) {
    return GetDatabase() ? m_database->setClayer(id) : Hx::eNoDatabase;
}

HxDbViewport* KvLayerPropManager::GetViewport() {
    if (!m_isPalette) {
        if (!m_viewport) m_viewport = got<HxDbViewport>(hxedGetCurViewportObjectId(), HxDb::kForRead);
        return m_viewport;
    }
    HxDbViewport* viewport = nullptr;
    hxdbOpenObject(viewport, hxedGetCurViewportObjectId(), HxDb::kForRead);
    return viewport;
}

void KvLayerPropManager::procLayerUsageData() {
    if ((!m_isPalette && m_isUsageComputed) || !GetDatabase()) return;
    const bool isShown = shortVariable(kShowUsage, 0) != 0;
    if (m_isPalette) {
        const TableForChange table(*this);
        if (!table) return;
        table->generateUsageData();
    } else if (!isShown && m_layerTable) {
        m_layerTable->generateUsageData();
    }
    m_isUsageComputed = true;
}
