// How an object is changed, added, erased.
#include "host/db/kernel/database_imp.h"
#include "host/db/kernel/reactor_list.h"
#include "sdk/hxdbentity.h"

namespace korvex {

namespace {

/// Tells the reactors before the first change of an open for write.
void tellFirstChange(HxDbStub& stub) {
    HxDbObject* object = stub.object;
    const HxDbObjectImp& imp = *object->imp();
    HxDbDatabase& database = *stub.database;
    if (stub.changedInOpen || imp.membersChangedInOpen) {
        return;
    }
    ++stub.notifying;
    notifyAll(imp.reactors, [&](HxDbObjectReactor& r) { r.openedForModify(object); });
    notifyAll(database.imp()->reactors,
              [&](HxDbDatabaseReactor& r) { r.objectOpenedForModify(&database, object); });
    --stub.notifying;
    stub.closePending = true;
}

/// Records the state before the change; tells the reactors at the first change of an open for write.
Hx::ErrorStatus prepareChange(HxDbStub& stub) {
    HxDbObjectImp& imp = *stub.object->imp();
    HxDbDatabase::Imp& db = *stub.database->imp();
    if (stub.undoing) {
        return Hx::eWasOpenForUndo;
    }
    if (!stub.writer) {
        return stub.notifying > 0 ? Hx::eWasOpenForNotify : Hx::eNotOpenForWrite;
    }
    if (!stub.changedInOpen) {
        imp.before = {currentBlob(stub), stub.erased, stub.implicit, true, db.journal.size()};
        tellFirstChange(stub);
        stub.changedInOpen = true;
    }
    db.journal.recordChange(stub);
    stub.implicit = false;
    db.modified = db.modified || !db.journal.isLooking();
    ++db.changes;
    return Hx::eOk;
}

RecordPlace placeOf(const HxDbObject* object) {
    if (object->isKindOf(HxDbEntity::desc())) {
        return RecordPlace::entity;
    }
    if (object->isKindOf(HxDbSymbolTableRecord::desc())) {
        return RecordPlace::tableRecord;
    }
    return object->isKindOf(HxDbSymbolTable::desc()) ? RecordPlace::table : RecordPlace::object;
}

}  // namespace

Hx::ErrorStatus beginChange(const HxDbObject* object) {
    HxDbObjectImp& imp = *object->imp();
    if (!imp.stub) {
        return Hx::eOk;
    }
    const Hx::ErrorStatus status = prepareChange(*imp.stub);
    if (status == Hx::eOk) {
        imp.stub->changed = true;
        imp.fieldsChangedInOpen = true;
    }
    return status;
}

void beginMembersChange(const HxDbObject* table) {
    tellFirstChange(*table->imp()->stub);
    table->imp()->membersChangedInOpen = true;
}

void appendMember(HxDbStub& container, HxDbStub& stub) {
    std::vector<HxDbStub*>& members = container.contents->members;
    if (stub.position < members.size() && members[stub.position] == &stub) {
        return;
    }
    stub.position = static_cast<std::uint32_t>(members.size());
    members.push_back(&stub);
}

HxDbStub& addToDatabase(HxDbDatabase& database, HxDbObject* object, HxDbStub* owner) {
    HxDbDatabase::Imp& db = *database.imp();
    HxDbObjectImp& imp = *object->imp();
    HxDbStub& stub = db.newStub();
    stub.object = object;
    stub.recordClass = &recordClass(imp.type, placeOf(object));
    stub.owner = owner;
    stub.handleInFile = db.writesHandles;
    db.handles.add(db.handles.next(), &stub);
    stub.writer = stub.changed = stub.changedInOpen = stub.closePending = true;
    ++stub.openSerial;
    imp.stub = &stub;
    imp.before = {{}, true, false, true, db.journal.size()};
    const bool isRecord = object->isKindOf(HxDbSymbolTableRecord::desc());
    if (object->isKindOf(HxDbBlockTableRecord::desc()) || object->isKindOf(HxDbSymbolTable::desc())) {
        stub.contents = std::make_unique<Contents>();
    }
    if (owner && owner->contents && (isRecord || object->isKindOf(HxDbEntity::desc()))) {
        appendMember(*owner, stub);
    }
    imp.appendedAt = db.journal.size() + 1;
    db.journal.recordAppend(stub);
    db.modified = true;
    ++db.changes;
    imp.added(database);
    ++stub.notifying;
    notifyAll(db.reactors, [&](HxDbDatabaseReactor& r) { r.objectAppended(&database, object); });
    --stub.notifying;
    return stub;
}

void replaceGroups(HxDbStub& stub, std::string groups) {
    if (beginChange(stub.object) != Hx::eOk) {
        return;
    }
    stub.blob = Blob(std::move(groups), stub.database->imp()->names.size());
    stub.changed = false;
    stub.layer = nullptr;
    readObject(stub);
}

namespace {

/// Records the change of the erased flag alone.
Hx::ErrorStatus beginErase(HxDbStub& stub) {
    const Hx::ErrorStatus status = prepareChange(stub);
    if (status == Hx::eOk) {
        stub.object->imp()->erasedChangedInOpen = true;
    }
    return status;
}

}  // namespace

}  // namespace korvex

using namespace korvex;

Hx::ErrorStatus HxDbObject::erase(bool erasing) {
    HxDbStub* stub = m_imp->stub;
    if (!stub) {
        return Hx::eNotInDatabase;
    }
    if (!stub->writer) {
        return Hx::eNotOpenForWrite;
    }
    if (stub->erased == erasing) {
        return erasing ? Hx::eWasErased : Hx::eOk;
    }
    const Hx::ErrorStatus allowed = erasing ? m_imp->mayErase() : m_imp->mayUnerase();
    if (allowed != Hx::eOk) {
        return allowed;
    }
    const Hx::ErrorStatus status = beginErase(*stub);
    if (status == Hx::eOk) {
        if (HxDbStub* owner = ownerOf(*stub)) {
            materialise(*owner);  // saving asks it whether it refers to this object
        }
        stub->erased = erasing;
        stub->database->imp()->hasErased = true;
        stub->unappended = false;
    }
    return status;
}
