// Looking up table records and stepping through tables, as lists without handles, owners and markers.
#include "host/db/kernel/entity_access.h"
#include "host/db/kernel/field_writer.h"
#include "host/db/kernel/text_fold.h"
#include "host/db/lists/chain.h"
#include "host/db/lists/node_codec.h"
#include "host/db/lists/record_type.h"

#include <algorithm>
#include <array>

using namespace korvex;

namespace {

constexpr int kFirstEntity = -2;
constexpr int kName = 2;
constexpr int kFlags = 70;

/// Of a BLOCK record: path of an external reference, description, base point, flags.
constexpr int kBlockCodes[] = {1, 4, 10, kFlags};

TableKind kindOf(const wchar_t* table) {
    const std::string name = table ? recordTypeOf(table) : std::string();
    return name == "BLOCK"                       ? TableKind::block
           : name == tableName(TableKind::block) ? TableKind::count
                                                 : tableKind(name);
}

HxDbStub* recordOf(TableKind kind, const wchar_t* name) {
    const HxDbDatabase* database = hxdbWorkingDatabase();
    return database && kind != TableKind::count && name ? findRecord(*database, kind, name) : nullptr;
}

/// Where hxdbTblNext goes on, by table.
struct Step {
    const HxDbDatabase* database = nullptr;  ///< compared only: it may be gone
    std::size_t next = 0;
};
Step& stepOf(TableKind kind) {
    static std::array<Step, static_cast<std::size_t>(TableKind::count)> steps;
    return steps[static_cast<std::size_t>(kind)];
}

/// The groups of a record that belong in its list.
class RecordGroups {
public:
    RecordGroups(bool isBlock, int handleCode) : m_isBlock(isBlock), m_handleCode(handleCode) {}
    bool wants(const resbuf& node) {
        const int code = node.restype;
        if (code == 100) {
            m_inHead = false;
            return false;
        }
        if (m_isBlock) {
            const bool isEmptyText = valueKind(code) == ValueKind::text && textOf(node).empty();
            return !isEmptyText &&
                   std::find(std::begin(kBlockCodes), std::end(kBlockCodes), code) != std::end(kBlockCodes);
        }
        if (m_inHead && code == 102) {
            m_inBrace = textOf(node).rfind(L'{', 0) == 0;
            return false;
        }
        const bool head = code == m_handleCode || (m_inHead && code == 330);
        return !m_inBrace && !head && code != 0 && code != kName;
    }

private:
    bool m_isBlock;
    int m_handleCode;
    bool m_inHead = true;
    bool m_inBrace = false;
};

void addFirstEntity(ChainBuilder& list, const HxDbStub& block) {
    const std::vector<HxDbStub*>& all = members(block);
    const auto first =
        std::find_if(all.begin(), all.end(), [](const HxDbStub* stub) { return isAlive(*stub); });
    if (first != all.end()) {
        zds_name name = {0, 0};
        hxdbGetZdsName(name, HxDbObjectId(*first));
        list.add(nameNode(kFirstEntity, name));
    }
}

resbuf* listOf(HxDbStub& record, TableKind kind) {
    const HxDbDatabase& database = *record.database;
    const bool isBlock = kind == TableKind::block;
    HxDbStub* begin = isBlock ? blockBegin(record) : nullptr;
    HxDbStub& source = begin ? *begin : record;
    const Blob blob = currentBlob(source);
    const std::size_t tail = xdataOffset(blob.groups(), database.imp()->format);
    const std::string type = isBlock ? "BLOCK" : tableName(kind);
    ChainBuilder list;
    list.add(textNode(0, std::wstring(type.begin(), type.end())));
    list.add(textNode(kName, recordName(record)));
    NodeReader reader(blob.groups().substr(0, tail), database.imp()->format, database);
    RecordGroups groups(isBlock, source.recordClass->handleCode);
    bool hasFlags = false;
    while (Chain node = reader.next()) {
        if (groups.wants(*node) && (!isBlock || begin)) {
            hasFlags = hasFlags || node->restype == kFlags;
            list.add(std::move(node));
        }
    }
    if (!hasFlags) {
        list.add(newNode(kFlags));
    }
    if (isBlock) {
        addFirstEntity(list, record);
    }
    return list.release();
}

}  // namespace

resbuf* hxdbTblSearch(const wchar_t* table, const wchar_t* name, int setNext) {
    const TableKind kind = kindOf(table);
    HxDbStub* record = recordOf(kind, name);
    if (!record) {
        return nullptr;
    }
    if (setNext != 0) {
        stepOf(kind) = {record->database, record->position + std::size_t{1}};
    }
    return listOf(*record, kind);
}

resbuf* hxdbTblNext(const wchar_t* table, int rewind) {
    const TableKind kind = kindOf(table);
    const HxDbDatabase* database = hxdbWorkingDatabase();
    const HxDbStub* owner = database && kind != TableKind::count ? database->imp()->table(kind) : nullptr;
    if (!owner || !owner->contents) {
        return nullptr;
    }
    Step& step = stepOf(kind);
    if (rewind != 0 || step.database != database) {
        step = {database, 0};
    }
    const std::vector<HxDbStub*>& records = owner->contents->members;
    while (step.next < records.size()) {
        HxDbStub* record = records[step.next++];
        if (!record->erased) {
            return listOf(*record, kind);
        }
    }
    return nullptr;
}

int hxdbTblObjName(const wchar_t* table, const wchar_t* name, zds_name result) {
    HxDbStub* record = recordOf(kindOf(table), name);
    return hxdbGetZdsName(result, HxDbObjectId(record)) == Hx::eOk ? RTNORM : RTERROR;
}
