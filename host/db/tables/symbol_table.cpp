// Symbol tables: look-up, stepping, adding.
#include "sdk/hxdbsymtb.h"

#include "host/db/kernel/database_imp.h"
#include "host/db/kernel/entity_access.h"
#include "host/db/kernel/member_steps.h"
#include "host/db/tables/record_names.h"
#include "host/db/tables/symbol_record_imp.h"
#include "host/db/tables/symbol_table_imp.h"
#include "sdk/hxdbentity.h"

HX_DEFINE_MEMBERS(HxDbSymbolTable, HxDbObject)
HX_DEFINE_MEMBERS(HxDbLinetypeTable, HxDbSymbolTable)
HX_DEFINE_MEMBERS(HxDbOtherTable, HxDbSymbolTable)

using namespace korvex;

HxDbLinetypeTable::HxDbLinetypeTable() : HxDbSymbolTable(new SymbolTableImp(TableKind::linetype)) {}

HxDbOtherTable::HxDbOtherTable(const wchar_t* name)
    : HxDbSymbolTable(new SymbolTableImp(tableKind(std::string(name, name + std::wcslen(name))))) {}

Hx::ErrorStatus HxDbSymbolTable::getAt(const wchar_t* name, HxDbObjectId& id, bool getErased) const {
    id = HxDbObjectId();
    if (!name || !imp()->stub) {
        return Hx::eInvalidInput;
    }
    HxDbStub* found = recordNamed(*imp()->stub, name, true);
    if (!found) {
        return Hx::eKeyNotFound;
    }
    if (found->erased && !getErased) {
        return Hx::eWasErased;
    }
    id = HxDbObjectId(found);
    return Hx::eOk;
}

Hx::ErrorStatus HxDbSymbolTable::getAt(const wchar_t* name, HxDbSymbolTableRecord*& record,
                                       HxDb::OpenMode mode, bool openErased) const {
    record = nullptr;
    HxDbObjectId id;
    const Hx::ErrorStatus status = getAt(name, id, openErased);
    return status == Hx::eOk ? hxdbOpenObject(record, id, mode, openErased) : status;
}

bool HxDbSymbolTable::has(const wchar_t* name) const {
    HxDbObjectId id;
    return getAt(name, id) == Hx::eOk;
}

bool HxDbSymbolTable::has(HxDbObjectId id) const {
    return !id.isNull() && imp()->stub && id.stub()->owner == imp()->stub && !id.isErased();
}

std::size_t HxDbSymbolTable::numRecords() const {
    if (!imp()->stub) {
        return 0;
    }
    const std::vector<HxDbStub*>& all = members(*imp()->stub);
    return static_cast<std::size_t>(
        std::count_if(all.begin(), all.end(), [](const HxDbStub* record) { return !record->erased; }));
}

Hx::ErrorStatus HxDbSymbolTable::newIterator(HxDbSymbolTableIterator*& iterator, bool atBeginning,
                                             bool skipErased) const {
    iterator = nullptr;
    if (!imp()->stub) {
        return Hx::eNotInDatabase;
    }
    iterator = new HxDbSymbolTableIterator(imp()->stub, atBeginning, skipErased);
    return Hx::eOk;
}

Hx::ErrorStatus HxDbSymbolTable::add(HxDbObjectId& id, HxDbSymbolTableRecord* record) {
    id = HxDbObjectId();
    HxDbStub* stub = imp()->stub;
    if (!stub) {
        return Hx::eNotInDatabase;
    }
    if (!stub->writer) {
        return Hx::eNotOpenForWrite;
    }
    if (!record || fields<SymbolRecordImp>(record).table() != fields<SymbolTableImp>(this).kind) {
        return Hx::eInvalidInput;
    }
    if (record->imp()->stub) {
        return Hx::eAlreadyInDb;
    }
    const auto& fresh = fields<SymbolRecordImp>(record);
    if (fresh.name.empty()) {
        return Hx::eInvalidInput;
    }
    if (recordNamed(*stub, fresh.name, false)) {
        return Hx::eDuplicateRecordName;
    }
    beginMembersChange(this);
    id = HxDbObjectId(&addToDatabase(*stub->database, record, stub));
    return Hx::eOk;
}

Hx::ErrorStatus HxDbSymbolTable::add(HxDbSymbolTableRecord* record) {
    HxDbObjectId id;
    return add(id, record);
}

HxDbSymbolTableIterator::HxDbSymbolTableIterator(HxDbStub* table, bool atBeginning, bool skipErased)
    : m_table(table) {
    start(atBeginning, skipErased);
}

void HxDbSymbolTableIterator::start(bool atBeginning, bool skipErased) {
    m_at = firstMember(*m_table, atBeginning, skipErased);
}

bool HxDbSymbolTableIterator::done() const { return isPast(*m_table, m_at); }

void HxDbSymbolTableIterator::step(bool forward, bool skipErased) {
    if (!done()) {
        m_at = nextMember(*m_table, m_at, forward, skipErased);
    }
}

HxDbObjectId HxDbSymbolTableIterator::getRecordId() const {
    return done() ? HxDbObjectId() : HxDbObjectId(members(*m_table)[static_cast<std::size_t>(m_at)]);
}

Hx::ErrorStatus HxDbSymbolTableIterator::getRecordId(HxDbObjectId& id) const {
    id = getRecordId();
    return id.isNull() ? Hx::eIteratorDone : Hx::eOk;
}

Hx::ErrorStatus HxDbSymbolTableIterator::getRecord(HxDbSymbolTableRecord*& record, HxDb::OpenMode mode,
                                                   bool openErased) const {
    record = nullptr;
    return done() ? Hx::eIteratorDone : hxdbOpenObject(record, getRecordId(), mode, openErased);
}
