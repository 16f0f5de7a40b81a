// hxdbEntMod: a list is checked as a whole first, then applied in one open for write.
#include "host/db/kernel/entity_access.h"
#include "host/db/kernel/text_fold.h"
#include "host/db/lists/chain.h"
#include "host/db/lists/list_merge.h"
#include "host/db/lists/object_names.h"
#include "sdk/hxdbsymtb.h"

using namespace korvex;

namespace {

constexpr int kName = -1;
constexpr int kRecordName = 2;
constexpr int kLayerFlags = 70;
constexpr int kFrozen = 1;

std::string narrow(const std::wstring& text) { return std::string(text.begin(), text.end()); }

/// The object that the list is about; null when it names none.
HxDbStub* namedObject(const HxDbDatabase& database, const resbuf* list) {
    for (const resbuf* node = list; node; node = node->rbnext) {
        if (node->restype == kName) {
            return stubOfName(node->resval.rlname);
        }
    }
    const ListParts parts = partsOfList(list);
    const std::uint64_t handle = parts.handle ? HxDbHandle(parts.handle->resval.rstring).value() : 0;
    return handle != 0 ? database.imp()->handles.find(handle) : nullptr;
}

/// The first group of a code outside of "102 {...}" runs; false when there is none before the first marker.
bool findInHead(std::string_view groups, const GroupFormat& format, int code, std::uint64_t& handle) {
    GroupCursor cursor(groups, format);
    bool inBrace = false;
    while (cursor.next() && cursor.code() != 100) {
        if (cursor.code() == 102) {
            inBrace = cursor.asText().rfind(L'{', 0) == 0;
        } else if (!inBrace && cursor.code() == code) {
            handle = cursor.asHandle();
            return true;
        }
    }
    return false;
}

/// One object and what a list wants of it.
class ListChange {
public:
    ListChange(HxDbStub& stub, const resbuf* list)
        : m_stub(stub), m_database(*stub.database), m_list(partsOfList(list, stub.recordClass->handleCode)),
          m_type(typeOf(stub)), m_checks(m_database, m_type, stub.recordClass->isEntity) {}

    int run() {
        std::string merged;
        const Blob before = currentBlob(m_stub);
        if (!keepsIdentity(before.groups()) || freezesCurrentLayer(before.groups()) || renamesBlockEntity() ||
            !merge(before.groups(), merged)) {
            return RTREJ;
        }
        if (merged == before.groups() && !m_list.xdata) {
            return RTNORM;
        }
        HxDbObject* object = nullptr;
        if (hxdbOpenObject(object, HxDbObjectId(&m_stub), HxDb::kForWrite) != Hx::eOk) {
            return RTREJ;
        }
        if (!apply(*object)) {
            object->cancel();
            return RTREJ;
        }
        object->close();
        return RTNORM;
    }

private:
    static std::string typeOf(HxDbStub& stub) {
        GroupCursor first(currentBlob(stub).groups(), stub.database->imp()->format);
        return first.next() ? narrow(first.asText()) : std::string();
    }

    /// Type, handle and owner are the object's for good.
    bool keepsIdentity(std::string_view groups) const {
        const bool sameType =
            !m_list.type || equalNames(textOf(*m_list.type), std::wstring(m_type.begin(), m_type.end()));
        const bool sameHandle =
            !m_list.handle || HxDbHandle(m_list.handle->resval.rstring).value() == m_stub.handle;
        return sameType && sameHandle && (!m_list.owner || isOwner(groups, m_list.owner->resval.rlname));
    }
    bool isOwner(std::string_view groups, const zds_name name) const {
        std::uint64_t given = 0;
        std::uint64_t owner = 0;
        if (!findInHead(groups, m_database.imp()->format, 330, owner)) {
            const HxDbStub* stub = ownerOf(m_stub);
            owner = stub ? stub->handle : 0;
        }
        return handleOfName(m_database, name, given) && given == owner;
    }
    bool freezesCurrentLayer(std::string_view groups) const {
        const resbuf* flags = m_list.find(kLayerFlags);
        if (m_type != "LAYER" || !flags || (flags->resval.rint & kFrozen) == 0 ||
            m_database.clayer().stub() != &m_stub) {
            return false;
        }
        GroupCursor cursor(groups, m_database.imp()->format);
        while (cursor.next()) {
            if (cursor.code() == kLayerFlags) {
                return (cursor.asInteger() & kFrozen) == 0;
            }
        }
        return true;
    }
    /// The names in BLOCK and ENDBLK follow the block record's.
    bool renamesBlockEntity() const {
        const resbuf* name = m_type == "BLOCK" ? m_list.find(kRecordName) : nullptr;
        HxDbStub* record = name ? ownerOf(m_stub) : nullptr;
        return record && !equalNames(textOf(*name), recordName(*record));
    }

    bool merge(std::string_view groups, std::string& merged) const {
        return mergeList(groups, m_list, m_database, m_stub.recordClass->handleCode, m_checks, merged);
    }

    /// Name and extended data go through the object's own operations, everything else as groups.
    bool apply(HxDbObject& object) {
        if (!rename(object) || (m_list.xdata && object.setXData(m_list.xdata) != Hx::eOk)) {
            return false;
        }
        std::string merged;
        const Blob now = currentBlob(m_stub);
        if (!merge(now.groups(), merged)) {
            return false;
        }
        if (merged != now.groups()) {
            replaceGroups(m_stub, std::move(merged));
        }
        return true;
    }
    bool rename(HxDbObject& object) const {
        HxDbSymbolTableRecord* record = HxDbSymbolTableRecord::cast(&object);
        const resbuf* name = record ? m_list.find(kRecordName) : nullptr;
        if (!name) {
            return true;
        }
        const std::wstring wanted(textOf(*name));
        return wanted == record->name() || record->setName(wanted.c_str()) == Hx::eOk;
    }

    HxDbStub& m_stub;
    const HxDbDatabase& m_database;
    ListParts m_list;
    std::string m_type;
    ValueChecks m_checks;
};

}  // namespace

int hxdbEntMod(const resbuf* list) {
    const HxDbDatabase* database = hxdbWorkingDatabase();
    HxDbStub* stub = database ? namedObject(*database, list) : nullptr;
    if (!stub) {
        return RTERROR;
    }
    // An external reference's drawing is changed by its own editor only.
    if (!isAlive(*stub) || stub->database != database || currentBlob(*stub).empty()) {
        return RTREJ;
    }
    return ListChange(*stub, list).run();
}
