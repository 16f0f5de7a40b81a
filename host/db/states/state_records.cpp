// Tells the records of layer states from other xrecords.
#include "host/db/states/state_records.h"

#include "host/db/kernel/database_imp.h"
#include "host/db/kernel/text_fold.h"
#include "host/db/objects/dictionary_imp.h"
#include "host/db/objects/xrecord_cursor.h"
#include "sdk/hxdbdict.h"

#include <algorithm>

namespace korvex {

namespace {

/// The entries of the layer table's extension dictionary.
const std::vector<DictionaryImp::Entry>& layerTableEntries(const HxDbDatabase& database) {
    static const std::vector<DictionaryImp::Entry> none;
    HxDbStub* table = database.imp()->table(TableKind::layer);
    const HxDbObject* object = table ? materialise(*table) : nullptr;
    HxDbStub* dictionary = object ? object->imp()->extensionDictionary : nullptr;
    const auto* entries = dictionary ? HxDbDictionary::cast(materialise(*dictionary)) : nullptr;
    return entries ? fields<DictionaryImp>(entries).entries : none;
}

}  // namespace

bool isLayerState(HxDbStub& record) {
    const HxDbStub* owner = isXrecord(record) ? ownerOf(record) : nullptr;
    if (!owner) {
        return false;
    }
    const auto& entries = layerTableEntries(*record.database);
    return std::any_of(entries.begin(), entries.end(), [&](const DictionaryImp::Entry& entry) {
        return entry.object == owner && equalNames(entry.name, kStateDictionary);
    });
}

}  // namespace korvex
