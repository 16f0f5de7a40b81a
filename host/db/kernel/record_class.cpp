// Which class the records of a type are made into.
#include "host/db/kernel/name_log.h"
#include "host/db/kernel/object_imp.h"
#include "sdk/hxdbdict.h"
#include "sdk/hxdbentity.h"

namespace korvex {

namespace {

std::wstring widened(std::string_view type) { return {type.begin(), type.end()}; }

template <class T>
HxDbObject* makeOf(std::string_view) {
    return new T;
}
template <class T>
HxDbObject* makeNamed(std::string_view type) {
    return new T(widened(type).c_str());
}
template <TableKind kind>
HxDbObject* makeTable(std::string_view) {
    return new HxDbOtherTable(widened(tableName(kind)).c_str());
}
HxDbObject* makeUnknownTable(std::string_view) { return new HxDbOtherTable(L""); }

constexpr int kDimStyleHandleCode = 105;

constexpr RecordClass kTables[] = {
    {"LAYER", makeOf<HxDbLayerTable>},
    {"LTYPE", makeOf<HxDbLinetypeTable>},
    {"BLOCK_RECORD", makeOf<HxDbBlockTable>},
    {"STYLE", makeTable<TableKind::style>},
    {"DIMSTYLE", makeTable<TableKind::dimStyle>},
    {"APPID", makeTable<TableKind::appId>},
    {"VPORT", makeTable<TableKind::viewport>},
    {"VIEW", makeTable<TableKind::view>},
    {"UCS", makeTable<TableKind::ucs>},
    {"", makeUnknownTable},
};
constexpr RecordClass kRecords[] = {
    {"LAYER", makeOf<HxDbLayerTableRecord>},
    {"LTYPE", makeOf<HxDbLinetypeTableRecord>},
    {"BLOCK_RECORD", makeOf<HxDbBlockTableRecord>},
    {"DIMSTYLE", makeNamed<HxDbOtherTableRecord>, false, kDimStyleHandleCode},
    {"", makeNamed<HxDbOtherTableRecord>},
};
constexpr RecordClass kEntities[] = {
    {"INSERT", makeOf<HxDbBlockReference>, true},
    {"VIEWPORT", makeOf<HxDbViewport>, true},
    {"", makeNamed<HxDbEntity>, true},
};
constexpr RecordClass kObjects[] = {
    {"DICTIONARY", makeOf<HxDbDictionary>}, {"ACDBDICTIONARYWDFLT", makeOf<HxDbDictionaryWithDefault>},
    {"XRECORD", makeOf<HxDbXrecord>},       {"ACDBPLACEHOLDER", makeOf<HxDbPlaceHolder>},
    {"LAYOUT", makeOf<HxDbLayout>},         {"", makeNamed<HxDbOtherObject>},
};

/// The last one stands for all other types.
template <std::size_t size>
const RecordClass& find(const RecordClass (&classes)[size], std::string_view type) {
    for (const RecordClass& candidate : classes) {
        if (type == candidate.type) {
            return candidate;
        }
    }
    return classes[size - 1];
}

}  // namespace

const RecordClass& recordClass(std::string_view type, RecordPlace place) {
    switch (place) {
    case RecordPlace::table: return find(kTables, type);
    case RecordPlace::tableRecord: return find(kRecords, type);
    case RecordPlace::entity: return find(kEntities, type);
    case RecordPlace::object: break;
    }
    return find(kObjects, type);
}

}  // namespace korvex
