// hxdbEntMod: a list is checked as a whole first, then applied in one open for write.
#include "host/db/kernel/entity_access.h"
#include "host/db/kernel/text_fold.h"
#include "host/db/kernel/write_access.h"
#include "host/db/lists/chain.h"
#include "host/db/lists/list_change.h"
#include "host/db/lists/list_merge.h"
#include "host/db/lists/object_names.h"
#include "sdk/hxdbsymtb.h"

using namespace korvex;

namespace {

constexpr int kName = -1;
constexpr int kRecordName = 2;
constexpr int kLayerFlags = 70;
constexpr int kFrozen = 1;
constexpr int kOwner = 330;
constexpr int kApplication = 1001;

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

/// The handle of the owner in an object's groups; false when they do not tell it.
bool ownerInGroups(std::string_view groups, const GroupFormat& format, std::uint64_t& handle) {
    GroupCursor cursor(groups, format);
    bool inBrace = false;
    while (cursor.next() && cursor.code() != 100) {
        if (cursor.code() == 102) {
            inBrace = cursor.asText().rfind(L'{', 0) == 0;
        } else if (!inBrace && cursor.code() == kOwner) {
            handle = cursor.asHandle();
            return true;
        }
    }
    return false;
}

/// Steps to the first group of a code.
bool goTo(GroupCursor& cursor, int code) {
    while (cursor.next()) {
        if (cursor.code() == code) {
            return true;
        }
    }
    return false;
}

/// The object has this extended data already.
bool hasXData(const HxDbObject& object, const resbuf* data) {
    while (data && valueKind(data->restype) == ValueKind::text) {
        const Chain present(object.xData(std::wstring(textOf(*data)).c_str()));
        const resbuf* node = present.get();
        do {
            if (!node || !sameNode(*node, *data)) {
                return false;
            }
            node = node->rbnext;
            data = data->rbnext;
        } while (data && data->restype != kApplication);
        if (node) {
            return false;
        }
    }
    return !data;
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
        if (!keepsIdentity(before.groups()) || freezesCurrentLayer(before.groups()) ||
            renamesBlockEntity(before.groups()) || !merge(before.groups(), merged)) {
            return RTREJ;
        }
        HxDbObject* object = hxdbObjectPointer(HxDbObjectId(&m_stub));
        m_givesXData = m_list.xdata && object && !hasXData(*object, m_list.xdata);
        if (merged == before.groups() && !m_givesXData) {
            return RTNORM;
        }
        const WriteAccess open(m_stub);
        return open.object() && apply(*open.object()) ? RTNORM : RTREJ;
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
        if (!ownerInGroups(groups, m_database.imp()->format, owner)) {
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
        GroupCursor old(groups, m_database.imp()->format);
        return !goTo(old, kLayerFlags) || (old.asInteger() & kFrozen) == 0;
    }
    /// The name in a BLOCK follows the block record's.
    bool renamesBlockEntity(std::string_view groups) const {
        const resbuf* name = m_type == "BLOCK" ? m_list.find(kRecordName) : nullptr;
        GroupCursor old(groups, m_database.imp()->format);
        return name && !(goTo(old, kRecordName) && old.asText() == textOf(*name));
    }

    bool merge(std::string_view groups, std::string& merged) const {
        return mergeList(groups, m_list, m_database, m_stub.recordClass->handleCode, m_checks, merged);
    }

    /// Name and extended data go through the object's own operations, everything else as groups. What has
    /// been done is taken back when the rest does not go: whoever holds the object may have changed it
    /// before.
    bool apply(HxDbObject& object) {
        HxDbSymbolTableRecord* record = HxDbSymbolTableRecord::cast(&object);
        const std::wstring before = record ? record->name() : L"";
        if (record && !rename(*record)) {
            return false;
        }
        if ((m_givesXData && object.setXData(m_list.xdata) != Hx::eOk) || !replace()) {
            if (record && before != record->name()) {
                record->setName(before.c_str());
            }
            return false;
        }
        return true;
    }
    bool replace() {
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
    bool rename(HxDbSymbolTableRecord& record) const {
        const resbuf* name = m_list.find(kRecordName);
        const std::wstring wanted(name ? textOf(*name) : record.name());
        return wanted == record.name() || record.setName(wanted.c_str()) == Hx::eOk;
    }

    HxDbStub& m_stub;
    const HxDbDatabase& m_database;
    ListParts m_list;
    std::string m_type;
    ValueChecks m_checks;
    bool m_givesXData = false;  ///< other than the object has
};

}  // namespace

int korvex::applyList(HxDbStub& stub, const resbuf* list) { return ListChange(stub, list).run(); }

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
    return applyList(*stub, list);
}
