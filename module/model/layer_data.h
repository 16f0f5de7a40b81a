// One listed layer, and the questions that are asked of a list of them.
#pragma once

#include "hxdbdatabase.h"
#include "hxdbsymtb.h"

#include <cstddef>

/// One layer of a list: its record, which the database owns, as the list's maker had it. An entry belongs to
/// its list.
class KvLayerData {
public:
    /// Takes a record. False, with the entry unchanged, for null, for a record without a name and for the
    /// layer of constraint marks, which is never shown. The database does not matter.
    bool fillData(const HxDbLayerTableRecord* record, const HxDbDatabase* database);

    /// Null until filled. Good as long as the database is, whether it is open or not.
    HxDbLayerTableRecord* layerRec() const { return m_record; }
    /// Null until filled.
    HxDbObjectId layerId() const { return m_id; }
    /// False while the record is being erased or its creation is undone: not to be read then.
    bool isValid() const { return m_isValid; }
    void setValid(bool valid) { m_isValid = valid; }

    /// From a pool: lists come and go with all their entries.
    static void* operator new(std::size_t size);
    static void operator delete(void* entry, std::size_t size);

private:
    HxDbLayerTableRecord* m_record = nullptr;
    HxDbObjectId m_id;
    bool m_isValid = true;
};

/// The same; false for a null entry.
bool fillKvLayerData(KvLayerData* data, const HxDbLayerTableRecord* record, const HxDbDatabase* database);

/// Whether the list has an entry of the record's id; false for null.
bool kvLayerInLayerManager(const HxArray<KvLayerData*>& layers, const HxDbLayerTableRecord* record);

/// Called when a list's changes are committed; nothing is left to do then: true.
bool kvUpdateLayerForLayerManager(const HxArray<KvLayerData*>& layers, HxDbDatabase* database);
/// Called when layers must be drawn anew; the host does that by itself.
void kvRegenLayers(const HxArray<HxDbObjectId>& layers, bool flag);
