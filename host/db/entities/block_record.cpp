// Blocks: their entities, base point, external reference.
#include "host/db/entities/block_record_imp.h"
#include "host/db/kernel/database_imp.h"
#include "host/db/kernel/entity_access.h"
#include "host/db/kernel/member_steps.h"
#include "host/db/kernel/text_fold.h"
#include "host/db/tables/symbol_table_imp.h"
#include "sdk/hxdbentity.h"

HX_DEFINE_MEMBERS(HxDbBlockTableRecord, HxDbSymbolTableRecord)
HX_DEFINE_MEMBERS(HxDbBlockTable, HxDbSymbolTable)

namespace korvex {

namespace {

constexpr int kLayoutCode = 340;
constexpr long long kXrefFlag = 4;
constexpr long long kOverlayFlag = 8;

/// Values of the BLOCK record.
struct BlockHead {
    long long flags = 0;
    std::wstring path;
    HxGePoint3d origin;
};

BlockHead headOf(const HxDbObject* record) {
    BlockHead head;
    const HxDbStub* stub = record->imp()->stub;
    HxDbStub* begin = stub ? blockBegin(*stub) : nullptr;
    if (!begin) {
        return head;
    }
    GroupCursor cursor(currentBlob(*begin).groups(), begin->database->imp()->format);
    while (cursor.next()) {
        switch (cursor.code()) {
        case 1: head.path = cursor.asText(); break;
        case 10: head.origin.x = cursor.asReal(); break;
        case 20: head.origin.y = cursor.asReal(); break;
        case 30: head.origin.z = cursor.asReal(); break;
        case 70: head.flags = cursor.asInteger(); break;
        default: break;
        }
    }
    return head;
}

}  // namespace

void BlockRecordImp::clearFields() {
    SymbolRecordImp::clearFields();
    layout = nullptr;
}

void BlockRecordImp::readField(const ReadContext& context, const GroupCursor& group) {
    if (group.code() == kLayoutCode) {
        layout = context.database.imp()->handles.find(group.asHandle());
    } else if (group.code() != kFlagsCode) {  // 70 is the insertion unit here
        SymbolRecordImp::readField(context, group);
    }
}

void BlockRecordImp::fieldsRead(HxDbDatabase& database) {
    SymbolRecordImp::fieldsRead(database);
    if (stub == database.imp()->misnamedModel) {
        name = kModelSpaceName;
    }
}

void BlockRecordImp::writeFields(FieldWriter& out) const {
    beginFields(out);
    if (stub->blob.empty()) {
        out.handle(kLayoutCode, layout ? layout->handle : 0);
    }
}

bool BlockRecordImp::isLayout() const {
    const std::wstring folded = foldName(name);
    return folded.rfind(L"*model_space", 0) == 0 || folded.rfind(L"*paper_space", 0) == 0;
}

Hx::ErrorStatus BlockRecordImp::mayErase() const {
    return isLayout() ? Hx::eCannotBeErasedByCaller : Hx::eOk;
}

Hx::ErrorStatus BlockRecordImp::mayRename() const {
    return isLayout() ? Hx::eRefused : SymbolRecordImp::mayRename();
}

}  // namespace korvex

using namespace korvex;

HxDbBlockTable::HxDbBlockTable() : HxDbSymbolTable(new SymbolTableImp(TableKind::block)) {}

Hx::ErrorStatus HxDbBlockTable::getAt(const wchar_t* name, HxDbBlockTableRecord*& record, HxDb::OpenMode mode,
                                      bool openErased) const {
    record = nullptr;
    HxDbObjectId id;
    const Hx::ErrorStatus status = getAt(name, id, openErased);
    return status == Hx::eOk ? hxdbOpenObject(record, id, mode, openErased) : status;
}

HxDbBlockTableRecord::HxDbBlockTableRecord() : HxDbSymbolTableRecord(new BlockRecordImp) {}

Hx::ErrorStatus HxDbBlockTableRecord::newIterator(HxDbBlockTableRecordIterator*& iterator, bool atBeginning,
                                                  bool skipErased) const {
    iterator = nullptr;
    if (!imp()->stub) {
        return Hx::eNotInDatabase;
    }
    iterator = new HxDbBlockTableRecordIterator(imp()->stub, atBeginning, skipErased);
    return Hx::eOk;
}

Hx::ErrorStatus HxDbBlockTableRecord::appendHxDbEntity(HxDbObjectId& id, HxDbEntity* entity) {
    id = HxDbObjectId();
    HxDbStub* stub = imp()->stub;
    if (!stub) {
        return Hx::eNotInDatabase;
    }
    if (!stub->writer) {
        return Hx::eNotOpenForWrite;
    }
    if (!entity) {
        return Hx::eInvalidInput;
    }
    if (entity->imp()->stub) {
        return Hx::eAlreadyInDb;
    }
    id = HxDbObjectId(&addToDatabase(*stub->database, entity, stub));
    return Hx::eOk;
}

bool HxDbBlockTableRecord::isLayout() const { return fields<BlockRecordImp>(this).isLayout(); }

HxDbObjectId HxDbBlockTableRecord::getLayoutId() const {
    return HxDbObjectId(fields<BlockRecordImp>(this).layout);
}

HxGePoint3d HxDbBlockTableRecord::origin() const { return headOf(this).origin; }

bool HxDbBlockTableRecord::isFromExternalReference() const {
    return (headOf(this).flags & (kXrefFlag | kOverlayFlag)) != 0;
}
bool HxDbBlockTableRecord::isFromOverlayReference() const { return (headOf(this).flags & kOverlayFlag) != 0; }

bool HxDbBlockTableRecord::isUnloaded() const { return isFromExternalReference() && !xrefDatabase(); }

CStdStr<wchar_t> HxDbBlockTableRecord::pathName() const {
    const BlockHead head = headOf(this);
    return (head.flags & (kXrefFlag | kOverlayFlag)) != 0 ? head.path : std::wstring();
}

HxDbDatabase* HxDbBlockTableRecord::xrefDatabase() const {
    return imp()->stub ? korvex::xrefDatabase(*imp()->stub) : nullptr;
}

HxDbBlockTableRecordIterator::HxDbBlockTableRecordIterator(HxDbStub* block, bool atBeginning, bool skipErased)
    : m_block(block) {
    start(atBeginning, skipErased);
}

void HxDbBlockTableRecordIterator::start(bool atBeginning, bool skipErased) {
    m_at = firstMember(*m_block, atBeginning, skipErased);
}

bool HxDbBlockTableRecordIterator::done() const { return isPast(*m_block, m_at); }

void HxDbBlockTableRecordIterator::step(bool forward, bool skipErased) {
    if (!done()) {
        m_at = nextMember(*m_block, m_at, forward, skipErased);
    }
}

Hx::ErrorStatus HxDbBlockTableRecordIterator::getEntityId(HxDbObjectId& id) const {
    id = done() ? HxDbObjectId() : HxDbObjectId(members(*m_block)[static_cast<std::size_t>(m_at)]);
    return id.isNull() ? Hx::eIteratorDone : Hx::eOk;
}

Hx::ErrorStatus HxDbBlockTableRecordIterator::getEntity(HxDbEntity*& entity, HxDb::OpenMode mode,
                                                        bool openErased) const {
    entity = nullptr;
    HxDbObjectId id;
    const Hx::ErrorStatus status = getEntityId(id);
    return status == Hx::eOk ? hxdbOpenObject(entity, id, mode, openErased) : status;
}
