// Recording states and going back to them.
#include "host/db/kernel/database_imp.h"
#include "host/db/kernel/reactor_list.h"
#include "host/db/tables/symbol_record_imp.h"

namespace korvex {

namespace {

/// The objects of entries, some of them more than once.
template <class Entries>
std::vector<HxDbStub*> stubsOf(const Entries& entries, std::size_t first) {
    std::vector<HxDbStub*> stubs;
    for (std::size_t i = first; i < entries.size(); ++i) {
        if (entries[i].stub) {
            stubs.push_back(entries[i].stub);
        }
    }
    return stubs;
}

}  // namespace

Journal& journal(const HxDbDatabase& database) { return database.imp()->journal; }

Journal::Mark Journal::putMark() {
    ++m_segment;
    return m_entries.size();
}

void Journal::rollbackTo(Mark mark) {
    rollback(mark);
    dropEmptyGroups();
    updateModified();
}

void Journal::beginGroup(const std::wstring& name) {
    if (m_nesting++ == 0) {
        closeLooseGroup();
        m_groups.push_back({name, m_entries.size()});
        ++m_segment;
    }
}

void Journal::endGroup() {
    if (m_nesting == 0 || --m_nesting > 0) {
        return;
    }
    ++m_segment;
    dropEmptyGroups();
}

void Journal::closeLooseGroup() {
    if (m_loose) {
        m_loose = false;
        ++m_segment;
    }
}

/// Groups that nothing is left of; one that is still open stays.
void Journal::dropEmptyGroups() {
    const bool isOpen = m_nesting > 0;
    while (!m_groups.empty() && m_groups.back().first >= m_entries.size() && !isOpen) {
        m_groups.pop_back();
        m_loose = false;
    }
    if (isOpen && !m_groups.empty()) {
        m_groups.back().first = std::min(m_groups.back().first, m_entries.size());
    }
}

Hx::ErrorStatus Journal::undo() {
    if (m_nesting > 0 || m_database.transactionManager()->numActiveTransactions() > 0) {
        return Hx::eInvalidContext;
    }
    if (m_groups.empty()) {
        return Hx::eNoUndo;
    }
    closeLooseGroup();
    const Group group = m_groups.back();
    Redo redo{group.name, rollback(group.first)};
    m_groups.pop_back();
    m_redo.push_back(std::move(redo));
    updateModified();
    return Hx::eOk;
}

Hx::ErrorStatus Journal::redo() {
    if (m_nesting > 0 || m_database.transactionManager()->numActiveTransactions() > 0) {
        return Hx::eInvalidContext;
    }
    if (m_redo.empty()) {
        return Hx::eNoUndo;
    }
    const Redo redo = std::move(m_redo.back());
    m_redo.pop_back();
    m_groups.push_back({redo.name, m_entries.size()});
    const std::vector<HxDbStub*> stubs = stubsOf(redo.entries, 0);
    beginRestoring(stubs);
    for (auto entry = redo.entries.rbegin(); entry != redo.entries.rend(); ++entry) {
        m_entries.push_back(stateOf(*entry));
        restore(*entry);
    }
    endRestoring(stubs);
    updateModified();
    return Hx::eOk;
}

std::size_t Journal::undoCount() const { return m_groups.size() - (m_nesting > 0 ? 1 : 0); }

std::wstring Journal::undoName() const { return m_groups.empty() ? L"" : m_groups.back().name; }
std::wstring Journal::redoName() const { return m_redo.empty() ? L"" : m_redo.back().name; }

void Journal::clear() {
    m_entries.clear();
    m_groups.clear();
    m_redo.clear();
    m_loose = false;
    m_saved = 0;
    ++m_segment;
}

void Journal::markSaved() {
    closeLooseGroup();
    ++m_segment;
    m_saved = m_entries.size();
}

void Journal::recordChange(HxDbStub& stub) {
    if (recording && stub.journaled != m_segment) {
        push(stateOf(Kind::changed, stub));
        stub.journaled = m_segment;
    }
}

void Journal::recordAppend(HxDbStub& stub) {
    if (!recording) {
        return;
    }
    Entry entry;
    entry.kind = Kind::appended;
    entry.stub = &stub;
    entry.erased = entry.unappended = true;
    push(std::move(entry));
    stub.journaled = m_segment;
}

void Journal::recordHeader(const std::string& name) {
    if (!recording) {
        return;
    }
    Entry entry;
    entry.kind = Kind::header;
    entry.headerName = name;
    push(stateOf(entry));
}

void Journal::forgetLast(HxDbStub& stub, std::size_t size) {
    if (m_entries.size() == size + 1 && m_entries.back().stub == &stub) {
        m_entries.pop_back();
        stub.journaled = 0;
        dropEmptyGroups();
        updateModified();
    }
}

void Journal::push(Entry entry) {
    if (m_nesting == 0 && !m_loose) {
        m_groups.push_back({L"CHANGE", m_entries.size()});
        m_loose = true;
    }
    if (m_saved != kNeverSaved && m_entries.size() < m_saved) {
        m_saved = undoneIsLooking() ? m_entries.size() : kNeverSaved;
    }
    clearRedo();
    entry.looking = isLooking();
    m_entries.push_back(std::move(entry));
}

Journal::Looking::Looking(const HxDbDatabase& database) : m_journal(database.imp()->journal) {
    ++m_journal.m_looking;
}

/// What is changed afterwards is recorded anew.
Journal::Looking::~Looking() {
    --m_journal.m_looking;
    ++m_journal.m_segment;
}

void Journal::updateModified() { m_database.imp()->modified = differsFromSaved(); }

bool Journal::differsFromSaved() const {
    if (m_saved == kNeverSaved) {
        return true;
    }
    if (m_entries.size() < m_saved) {
        return !undoneIsLooking();
    }
    return std::any_of(m_entries.begin() + static_cast<std::ptrdiff_t>(m_saved), m_entries.end(),
                       [](const Entry& entry) { return !entry.looking; });
}

/// Nothing but looking was undone since the drawing was saved.
bool Journal::undoneIsLooking() const {
    std::size_t left = m_saved - m_entries.size();
    for (auto redo = m_redo.rbegin(); redo != m_redo.rend() && left > 0; ++redo) {
        for (auto entry = redo->entries.rbegin(); entry != redo->entries.rend() && left > 0;
             ++entry, --left) {
            if (!entry->looking) {
                return false;
            }
        }
    }
    return left == 0;
}

Journal::Entry Journal::stateOf(Kind kind, HxDbStub& stub) {
    Entry entry;
    entry.kind = kind;
    entry.stub = &stub;
    entry.blob = currentBlob(stub);
    entry.erased = stub.erased;
    entry.unappended = stub.unappended;
    entry.implicit = stub.implicit;
    return entry;
}

Journal::Entry Journal::stateOf(const Entry& like) const {
    if (like.stub) {
        Entry entry = stateOf(like.kind, *like.stub);
        entry.looking = like.looking;
        return entry;
    }
    Entry entry = like;
    const Header::Value* value = m_database.imp()->header.find(like.headerName);
    entry.blob = value ? value->groups : Blob();
    return entry;
}

std::vector<Journal::Entry> Journal::rollback(std::size_t first) {
    std::vector<Entry> states;
    const std::vector<HxDbStub*> stubs = stubsOf(m_entries, first);
    beginRestoring(stubs);
    while (m_entries.size() > first) {
        const Entry entry = std::move(m_entries.back());
        m_entries.pop_back();
        states.push_back(stateOf(entry));
        restore(entry);
    }
    endRestoring(stubs);
    return states;
}

/// Puts fields that were changed into groups while the names in them still are those of now.
void Journal::beginRestoring(const std::vector<HxDbStub*>& stubs) {
    recording = false;
    for (HxDbStub* stub : stubs) {
        currentBlob(*stub);
    }
    m_database.imp()->names.hold();
}

/// With every record in place, reads again what refers to renamed ones.
void Journal::endRestoring(const std::vector<HxDbStub*>& stubs) {
    NameLog& names = m_database.imp()->names;
    for (HxDbStub* record : names.release()) {
        fields<SymbolRecordImp>(record->object).noteName(m_database);
    }
    for (HxDbStub* stub : stubs) {
        if (stub->object && !stub->blob.empty() && stub->blob.generation() < names.size()) {
            stub->layer = nullptr;
            readObject(*stub);
        }
    }
    recording = true;
    ++m_segment;
}

void Journal::restore(const Entry& entry) {
    if (entry.stub) {
        restoreObject(entry);
    } else {
        restoreHeader(entry);
    }
}

namespace {

/// Tells what became of an object that was put back into an earlier state.
void tellRestored(HxDbStub& stub, bool wasErased, bool wasUnappended) {
    HxDbObject* object = stub.object;
    HxDbDatabase& database = *stub.database;
    const std::vector<HxDbObjectReactor*>& own = object->imp()->reactors;
    const std::vector<HxDbDatabaseReactor*>& all = database.imp()->reactors;
    if (stub.unappended != wasUnappended) {
        notifyAll(own, [&](HxDbObjectReactor& r) {
            stub.unappended ? r.unappended(object) : r.reappended(object);
        });
        notifyAll(all, [&](HxDbDatabaseReactor& r) {
            stub.unappended ? r.objectUnAppended(&database, object) : r.objectReAppended(&database, object);
        });
    } else if (stub.erased != wasErased) {
        notifyAll(own, [&](HxDbObjectReactor& r) { r.erased(object, stub.erased); });
        notifyAll(own, [&](HxDbObjectReactor& r) { r.modifyUndone(object); });
        notifyAll(all, [&](HxDbDatabaseReactor& r) { r.objectErased(&database, object, stub.erased); });
    } else {
        notifyAll(own, [&](HxDbObjectReactor& r) { r.modified(object); });
        notifyAll(own, [&](HxDbObjectReactor& r) { r.modifyUndone(object); });
        notifyAll(all, [&](HxDbDatabaseReactor& r) { r.objectModified(&database, object); });
    }
    stub.closePending = true;
    tellClosed(stub);
}

}  // namespace

void Journal::restoreObject(const Entry& entry) {
    HxDbStub& stub = *entry.stub;
    HxDbObject* object = materialise(stub);
    stub.undoing = true;
    notifyAll(object->imp()->reactors, [&](HxDbObjectReactor& r) { r.openedForModify(object); });
    notifyAll(m_database.imp()->reactors,
              [&](HxDbDatabaseReactor& r) { r.objectOpenedForModify(&m_database, object); });
    const bool wasErased = stub.erased;
    const bool wasUnappended = stub.unappended;
    stub.erased = entry.erased;
    m_database.imp()->hasErased |= stub.erased;
    stub.unappended = entry.unappended;
    stub.implicit = entry.implicit;
    stub.journaled = 0;
    if (entry.kind == Kind::changed || !entry.unappended) {
        stub.blob = entry.blob;
        stub.changed = false;
        stub.layer = nullptr;
        readObject(stub);
    }
    ++m_database.imp()->changes;
    tellRestored(stub, wasErased, wasUnappended);
    stub.undoing = false;
}

void Journal::restoreHeader(const Entry& entry) {
    HxDbDatabase::Imp& db = *m_database.imp();
    const std::wstring name(entry.headerName.begin() + 1, entry.headerName.end());
    notifyAll(db.reactors,
              [&](HxDbDatabaseReactor& r) { r.headerSysVarWillChange(&m_database, name.c_str()); });
    Header::Value* value = db.header.find(entry.headerName);
    if (entry.blob.empty()) {
        db.header.values.erase(db.header.values.begin() + (value - db.header.values.data()));
    } else if (value) {
        value->groups = entry.blob;
    } else {
        db.header.values.push_back({entry.headerName, entry.blob});
    }
    db.currentLayer = nullptr;
    ++db.changes;
    notifyAll(db.reactors,
              [&](HxDbDatabaseReactor& r) { r.headerSysVarChanged(&m_database, name.c_str(), true); });
}

}  // namespace korvex
