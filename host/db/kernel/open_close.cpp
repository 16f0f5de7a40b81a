// Who has an object open, and what opening and closing does.
#include "host/db/kernel/database_imp.h"
#include "host/db/kernel/reactor_list.h"

#include <limits>

namespace korvex {

namespace {

constexpr std::uint16_t kMaxReaders = std::numeric_limits<std::uint16_t>::max();

Hx::ErrorStatus enter(HxDbStub& stub, HxDb::OpenMode mode) {
    if (mode == HxDb::kForNotify) {
        if (stub.notifyOpens == kMaxReaders) {
            return Hx::eAtMaxReaders;
        }
        ++stub.notifyOpens;
        return Hx::eOk;
    }
    if (stub.undoing) {
        return Hx::eWasOpenForUndo;
    }
    if (stub.notifying > 0) {
        return Hx::eWasOpenForNotify;
    }
    if (stub.writer) {
        return Hx::eWasOpenForWrite;
    }
    if (mode == HxDb::kForRead) {
        if (stub.readers == kMaxReaders) {
            return Hx::eAtMaxReaders;
        }
        if (stub.readers++ == 0) {
            ++stub.openSerial;
        }
        return Hx::eOk;
    }
    if (stub.readers > 0) {
        return Hx::eWasOpenForRead;
    }
    ++stub.openSerial;
    stub.writer = true;
    return Hx::eOk;
}

/// Tells what an open for write did.
void tellChanges(HxDbStub& stub) {
    HxDbObject* object = stub.object;
    HxDbObjectImp& imp = *object->imp();
    HxDbDatabase& database = *stub.database;
    const std::vector<HxDbDatabaseReactor*>& all = database.imp()->reactors;
    const bool fields = imp.fieldsChangedInOpen || imp.membersChangedInOpen;
    const bool xdata = imp.xdataChangedInOpen;
    const bool erased = imp.erasedChangedInOpen;
    dropWriteOpen(stub);
    ++stub.notifying;
    const auto tell = [&](auto call) { notifyAll(imp.reactors, call); };
    if (erased) {
        tell([&](HxDbObjectReactor& r) { r.erased(object, stub.erased); });
    }
    if (fields || xdata) {
        tell([&](HxDbObjectReactor& r) { r.modified(object); });
    }
    if (xdata) {
        tell([&](HxDbObjectReactor& r) { r.modifiedXData(object); });
    }
    if (erased) {
        notifyAll(all, [&](HxDbDatabaseReactor& r) { r.objectErased(&database, object, stub.erased); });
    }
    if (fields || xdata) {
        notifyAll(all, [&](HxDbDatabaseReactor& r) { r.objectModified(&database, object); });
    }
    --stub.notifying;
}

/// Ends the open for write; `readersAfter` is 1 when it goes on as an open for read.
void closeWrite(HxDbStub& stub, std::uint16_t readersAfter) {
    stub.writer = false;
    stub.readers = readersAfter;
    if (stub.changedInOpen || stub.object->imp()->membersChangedInOpen) {
        tellChanges(stub);
    } else {
        dropWriteOpen(stub);
    }
    stub.readers = std::max(stub.readers, readersAfter);
    if (readersAfter == 0) {
        tellClosed(stub);
    }
}

/// The one hold on an object that a transaction has it by is the transaction's own.
bool isLastHoldOfTransaction(const HxDbStub& stub) {
    return stub.resident && (stub.writer || stub.readers == 1);
}

}  // namespace

void dropWriteOpen(HxDbStub& stub) {
    HxDbObjectImp& imp = *stub.object->imp();
    stub.writer = false;
    stub.changedInOpen = false;
    imp.fieldsChangedInOpen = imp.xdataChangedInOpen = false;
    imp.erasedChangedInOpen = imp.membersChangedInOpen = false;
    imp.before = {};
}

void tellClosed(HxDbStub& stub) {
    if (stub.closePending) {
        stub.closePending = false;
        notifyAll(stub.object->imp()->reactors,
                  [&](HxDbObjectReactor& r) { r.objectClosed(HxDbObjectId(&stub)); });
    }
}

void revertChange(HxDbStub& stub) {
    const HxDbObjectImp::Before before = stub.object->imp()->before;
    if (!before.taken) {
        return;
    }
    stub.erased = before.erased;
    stub.database->imp()->hasErased |= stub.erased;
    stub.implicit = before.implicit;
    stub.changed = false;
    stub.layer = nullptr;
    ++stub.database->imp()->changes;
    if (before.blob.empty()) {
        stub.unappended = true;  // it was added in this open: nothing was there before
        currentBlob(stub);
    } else {
        stub.blob = before.blob;
        readObject(stub);
    }
    stub.database->imp()->journal.forgetLast(stub, before.journalSize);
}

}  // namespace korvex

using namespace korvex;

Hx::ErrorStatus hxdbOpenObject(HxDbObject*& object, HxDbObjectId id, HxDb::OpenMode mode, bool openErased) {
    object = nullptr;
    HxDbStub* stub = id.stub();
    if (!stub) {
        return Hx::eNullObjectId;
    }
    if (stub->erased && !openErased) {
        return Hx::eWasErased;
    }
    HxDbObject* made = stub->object ? stub->object : materialise(*stub);
    if (!made) {
        return Hx::eNullObject;
    }
    const Hx::ErrorStatus status = enter(*stub, mode);
    if (status == Hx::eOk) {
        object = made;
    }
    return status;
}

Hx::ErrorStatus hxdbOpenObjectOfClass(HxDbObject*& object, HxDbObjectId id, HxDb::OpenMode mode,
                                      bool openErased, const HxRxClass* wanted) {
    object = nullptr;
    HxDbStub* stub = id.stub();
    if (stub && (openErased || !stub->erased)) {
        const HxDbObject* made = materialise(*stub);
        if (made && !made->isKindOf(wanted)) {
            return Hx::eWrongClass;
        }
    }
    return hxdbOpenObject(object, id, mode, openErased);
}

Hx::ErrorStatus hxdbOpenObjectEx(HxDbObject*& object, HxDbObjectId id, HxDb::OpenMode mode, bool openErased,
                                 const HxRxClass* wanted, int anyClass) {
    return anyClass != 0 ? hxdbOpenObject(object, id, mode, openErased)
                         : hxdbOpenObjectOfClass(object, id, mode, openErased, wanted);
}

HxDbObject* hxdbObjectPointer(HxDbObjectId id) { return id.stub() ? materialise(*id.stub()) : nullptr; }

Hx::ErrorStatus HxDbObject::upgradeOpen() {
    HxDbStub* stub = m_imp->stub;
    if (!stub || (stub->readers == 0 && !stub->writer)) {
        return stub && stub->notifying > 0 ? Hx::eWasOpenForNotify : Hx::eNotOpenForRead;
    }
    if (stub->undoing) {
        return Hx::eWasOpenForUndo;
    }
    if (stub->notifying > 0) {
        return Hx::eWasOpenForNotify;
    }
    if (stub->writer) {
        return Hx::eWasOpenForWrite;
    }
    if (stub->readers > 1) {
        return Hx::eWasOpenForRead;
    }
    stub->readers = 0;
    stub->writer = true;
    return Hx::eOk;
}

Hx::ErrorStatus HxDbObject::downgradeOpen() {
    if (!m_imp->stub || !m_imp->stub->writer) {
        return Hx::eNotOpenForWrite;
    }
    closeWrite(*m_imp->stub, 1);
    return Hx::eOk;
}

Hx::ErrorStatus HxDbObject::close() {
    HxDbStub* stub = m_imp->stub;
    if (!stub) {
        return Hx::eNotOpenForRead;
    }
    if (stub->notifyOpens > 0) {
        --stub->notifyOpens;
    } else if (isLastHoldOfTransaction(*stub)) {
        return Hx::eOk;
    } else if (stub->writer) {
        closeWrite(*stub, 0);
    } else if (stub->readers > 0) {
        if (--stub->readers == 0) {
            tellClosed(*stub);
        }
    } else {
        return Hx::eNotOpenForRead;
    }
    return Hx::eOk;
}

Hx::ErrorStatus HxDbObject::cancel() {
    HxDbStub* stub = m_imp->stub;
    if (!stub || !stub->writer || stub->notifyOpens > 0) {
        return close();
    }
    revertChange(*stub);
    if (isLastHoldOfTransaction(*stub)) {
        dropWriteOpen(*stub);
        stub->writer = true;
        return Hx::eOk;
    }
    dropWriteOpen(*stub);
    tellClosed(*stub);
    return Hx::eOk;
}
