// Walks the layout of the file that was read, and puts in what is new.
#include "host/io/drawing_writer.h"

#include "host/base/progress.h"
#include "host/db/groups/group_cursor.h"
#include "host/db/groups/group_lexer.h"
#include "host/db/groups/group_writer.h"
#include "host/db/kernel/entity_access.h"
#include "host/io/atomic_save.h"
#include "host/io/block_parts.h"
#include "host/io/group_edits.h"
#include "host/io/named_handles.h"
#include "host/io/record_head.h"
#include "host/io/referenced_records.h"
#include "host/io/save_time.h"

#include <algorithm>
#include <functional>

namespace korvex {

namespace {

/// The order in which a drawing has its tables.
constexpr TableKind kTableOrder[] = {TableKind::viewport, TableKind::linetype, TableKind::layer,
                                     TableKind::style,    TableKind::view,     TableKind::ucs,
                                     TableKind::appId,    TableKind::dimStyle, TableKind::block};

constexpr int kMostOwners = 100;  // of one another; damaged drawings have circles
// Soft and hard owner; some programs write hard pointers as entries of dictionaries.
constexpr int kFirstOwnerCode = 340;
constexpr int kLastOwnerCode = 369;

class DrawingWriter {
public:
    explicit DrawingWriter(HxDbDatabase& database)
        : m_db(*database.imp()), m_model(modelSpace(database)), m_paper(paperSpace(database)),
          m_referenced(database), m_out(m_db.format) {}

    /// False when the user gives up.
    bool write(ProgressScope& progress) {
        survey();
        long long count = 0;
        for (const FileItem& item : m_db.layout) {
            this->item(item);
            if (!progress.step(++count)) {
                return false;
            }
        }
        return true;
    }
    std::string take() { return std::move(m_text); }

private:
    // ---- what there is to write ----

    void survey();
    void followReferences();
    bool isWritten(HxDbStub& stub) const;
    bool needsBlock(const HxDbStub& record) const;
    bool isToWrite(const HxDbStub& record, const HxDbStub& entity) const {
        return isAlive(entity) && (hasMoved(record) || !entity.inFile);
    }
    void completeBlock(HxDbStub& record);

    bool isTable(const HxDbStub& stub) const {
        return stub.contents && std::find(m_db.tables.begin(), m_db.tables.end(), &stub) != m_db.tables.end();
    }
    bool hasBlockTable() const { return m_db.traits().hasSubclassMarkers; }
    /// It is not in the file that was read, but in the one that is written.
    bool isNew(const HxDbStub& stub) const {
        return !stub.inFile && (!stub.implicit || m_referenced.isAdded(stub)) && isAlive(stub);
    }
    /// No field was changed since the drawing was read, or all changes were taken back.
    bool isAsRead(const HxDbStub& stub) const {
        const char* data = stub.blob.groups().data();
        const bool isOfFile = !std::less<>()(data, m_db.file.data()) &&
                              std::less<>()(data, m_db.file.data() + m_db.file.size());
        return !stub.changed && (stub.implicit || isOfFile);
    }
    bool isInEntities(const HxDbStub& record) const { return &record == m_model || &record == m_paper; }
    /// The block became the active paper space, or ceased to be it, since the drawing was read.
    bool hasMoved(const HxDbStub& record) const {
        return !isTable(record) && record.contents->inEntities != isInEntities(record);
    }

    /// The table or block that a record is a member of; null when it is in none.
    static HxDbStub* containerOf(const HxDbStub& stub) {
        HxDbStub* owner = stub.subEntity && stub.owner ? stub.owner->owner : stub.owner;
        const bool isMember = owner && owner->contents && stub.position < owner->contents->members.size() &&
                              owner->contents->members[stub.position] == &stub;
        return isMember ? owner : nullptr;
    }
    static bool isBlockPart(const HxDbStub& stub) {
        const Contents* contents = stub.owner ? stub.owner->contents.get() : nullptr;
        return contents && (contents->blockBegin == &stub || contents->blockEnd == &stub);
    }

    bool goesWithOwner(HxDbStub& stub) const;
    bool owns(HxDbStub& owner, const HxDbStub& owned) const;

    /// What is written of an object.
    Blob groupsOf(HxDbStub& stub) const {
        const bool isCurrent =
            !stub.changed && stub.blob.generation() >= m_db.names.size() && !m_db.hasErased;
        const Blob blob = isCurrent ? stub.blob : blobForSaving(stub);
        if (!m_referenced.needsHandle(stub)) {
            return blob;
        }
        return Blob(withOwnHandle(blob.groups(), m_db.format, stub.recordClass->handleCode, stub.handle),
                    blob.generation());
    }

    // ---- the layout ----

    void item(const FileItem& item);
    void writeObject(HxDbStub& stub);
    void writeTable(HxDbStub& table);
    void writeBlockPart(HxDbStub& part);
    void writeHeader();
    void writePlace(const FileItem& item);
    void writeNewRecords(const HxDbStub& table);
    void writeNewTables();
    void writeMembers(const HxDbStub& record);
    void writeNewBlocks();
    void writeNewObjects();

    /// A record that has no groups but its type.
    void writeMark(std::string_view type, std::string_view name = {}) {
        m_out.rawText(0, type);
        if (!name.empty()) {
            m_out.rawText(2, name);
        }
        m_text += m_out.take();
        m_out.clear();
    }

    HxDbDatabase::Imp& m_db;
    HxDbStub* m_model;
    HxDbStub* m_paper;
    ReferencedRecords m_referenced;
    std::vector<HxDbStub*> m_newObjects;
    std::uint64_t m_highestNew = 0;
    GroupWriter m_out;
    std::string m_text;
};

// ---- what there is to write ----

/// Finds what is new in the file, and the highest handle among it.
void DrawingWriter::survey() {
    constexpr std::size_t kUsualRecord = 1000;  // bytes, generously
    followReferences();
    m_highestNew = m_referenced.highestHandle();
    std::size_t size = m_db.file.size();
    for (HxDbStub& stub : m_db.stubs) {
        if (stub.inFile || !isWritten(stub)) {
            continue;
        }
        m_highestNew = std::max(m_highestNew, stub.handle);
        size += kUsualRecord;
        if (!containerOf(stub) && !isBlockPart(stub) && !isTable(stub)) {
            m_newObjects.push_back(&stub);
        }
    }
    m_text.reserve(size);
}

/// Finds what the new and changed records refer to. What stands as it was read refers to nothing but the
/// file.
void DrawingWriter::followReferences() {
    for (HxDbStub& stub : m_db.stubs) {
        if (!stub.implicit && !isAsRead(stub) && isWritten(stub)) {
            m_referenced.follow(groupsOf(stub).groups());
        }
    }
    for (HxDbStub* record : members(*m_db.table(TableKind::block))) {
        if (needsBlock(*record)) {
            completeBlock(*record);
            m_referenced.follow(groupsOf(*record->contents->blockBegin).groups());
            m_referenced.follow(groupsOf(*record->contents->blockEnd).groups());
        }
    }
}

/// BLOCK, ENDBLK and TABLE hold others together: they stay as long as those do, erased or not.
bool DrawingWriter::isWritten(HxDbStub& stub) const {
    if (isBlockPart(stub)) {
        return stub.inFile ? !stub.owner->erased : needsBlock(*stub.owner);
    }
    if (isTable(stub) && stub.inFile) {
        return true;
    }
    if (!isAlive(stub) || !(stub.inFile || isNew(stub))) {
        return false;
    }
    const HxDbStub* container = containerOf(stub);
    return container ? !container->erased : !goesWithOwner(stub);
}

/// An extension dictionary, an entry of a dictionary: they go with the object that owns them, or with what
/// owns that. Tables and the named objects are the drawing's own, whatever owner they name, and a record that
/// names an owner which does not have it stays.
bool DrawingWriter::goesWithOwner(HxDbStub& stub) const {
    HxDbStub* top = m_db.hasErased ? &stub : nullptr;
    for (int steps = kMostOwners; top && !top->erased; --steps) {
        const bool isOfDrawing = isTable(*top) || top == m_db.namedObjects;
        top = isOfDrawing || steps == 0 ? nullptr : ownerOf(*top);
    }
    HxDbStub* owned = &stub;
    while (top && owned != top) {
        if (!owns(*owned->owner, *owned)) {
            return false;
        }
        owned = owned->owner;
    }
    return top != nullptr;
}

bool DrawingWriter::owns(HxDbStub& owner, const HxDbStub& owned) const {
    if (owned.subEntity || isBlockPart(owned) || containerOf(owned) == &owner) {
        return true;
    }
    bool found = false;
    forEachReference(currentBlob(owner).groups(), m_db.format, [&](int code, std::uint64_t handle) {
        found = found || (handle == owned.handle && code >= kFirstOwnerCode && code <= kLastOwnerCode);
    });
    return found;
}

/// It has no BLOCK in the file, but must get one: it is new, or has entities that stand in blocks. The spaces
/// of old drawings have none.
bool DrawingWriter::needsBlock(const HxDbStub& record) const {
    const Contents& contents = *record.contents;
    if (record.erased || (contents.blockBegin && contents.blockBegin->inFile)) {
        return false;
    }
    if (isInEntities(record)) {
        return isNew(record) && hasBlockTable();
    }
    return isNew(record) || std::any_of(contents.members.begin(), contents.members.end(),
                                        [&](const HxDbStub* entity) { return isToWrite(record, *entity); });
}

/// Gives a new block record the BLOCK and ENDBLK that drawings have for it.
void DrawingWriter::completeBlock(HxDbStub& record) {
    if (!record.contents->blockBegin) {
        const bool isAnonymous = recordName(record).rfind(L'*', 0) == 0 && !isInEntities(record);
        addBlockBegin(record, {isAnonymous ? 1 : 0, {}});
    }
    if (!record.contents->blockEnd) {
        addBlockEnd(record);
    }
}

// ---- the layout ----

void DrawingWriter::item(const FileItem& item) {
    switch (item.kind) {
    case FileItem::raw: m_text += item.bytes; return;
    case FileItem::object: writeObject(*item.stub); return;
    default: break;
    }
    const std::size_t start = m_text.size();
    if (!item.bytes.empty()) {
        writeMark("SECTION", item.bytes);
    }
    const std::size_t content = m_text.size();
    writePlace(item);
    if (m_text.size() == content) {
        m_text.resize(start);
    } else if (!item.bytes.empty()) {
        writeMark("ENDSEC");
    }
}

void DrawingWriter::writePlace(const FileItem& item) {
    switch (item.kind) {
    case FileItem::header: writeHeader(); break;
    case FileItem::endOfTable: writeNewRecords(*item.stub); break;
    case FileItem::endOfTables: writeNewTables(); break;
    case FileItem::endOfBlock:
        if (!item.stub->erased && !isInEntities(*item.stub)) {
            writeMembers(*item.stub);
        }
        break;
    case FileItem::endOfBlocks: writeNewBlocks(); break;
    case FileItem::endOfEntities:
        for (const HxDbStub* space : {m_model, m_paper}) {
            if (space) {
                writeMembers(*space);
            }
        }
        break;
    case FileItem::endOfObjects: writeNewObjects(); break;
    default: break;
    }
}

/// A record where it stood.
void DrawingWriter::writeObject(HxDbStub& stub) {
    const HxDbStub* container = containerOf(stub);
    if (!isWritten(stub) || (container && hasMoved(*container))) {
        return;
    }
    if (isBlockPart(stub)) {
        writeBlockPart(stub);
    } else if (isTable(stub)) {
        writeTable(stub);
    } else {
        m_text += groupsOf(stub).groups();
    }
}

/// A table's own record: its count follows when records came or went.
void DrawingWriter::writeTable(HxDbStub& table) {
    std::size_t before = 0;
    std::size_t now = 0;
    for (const HxDbStub* record : table.contents->members) {
        before += record->inFile ? 1 : 0;
        now += !record->erased && (record->inFile || isNew(*record)) ? 1 : 0;
    }
    constexpr int kCountCode = 70;
    const Blob blob = groupsOf(table);
    const std::string_view groups = blob.groups();
    if (before == now && table.inFile) {
        m_text += groups;
    } else {
        m_text += withInteger(groups, m_db.format, kCountCode, static_cast<long long>(now));
    }
}

/// A BLOCK or ENDBLK: it follows its block record's name and place.
void DrawingWriter::writeBlockPart(HxDbStub& part) {
    HxDbStub& record = *part.owner;
    std::string groups(groupsOf(part).groups());
    if (hasMoved(record)) {
        groups = withPaperFlag(groups, m_db.format, &record == m_paper);
    }
    const bool isTouched = !isAsRead(record) || !isAsRead(part);
    if (isTouched && record.contents->blockBegin == &part) {
        const std::wstring name = recordName(record);
        const std::wstring written = m_db.format.codec->decode(rawName(groups, m_db.format));
        const bool isOldSpace = !hasBlockTable() && isInEntities(record);
        if (written != name && !isOldSpace) {
            groups = withBlockName(groups, m_db.format, name);
        }
    }
    m_text += groups;
}

void DrawingWriter::writeHeader() {
    constexpr int kHandleCode = 5;
    for (const Header::Value& value : m_db.header.values) {
        std::string fresh;
        const bool isRenamed = value.groups.generation() < m_db.names.size() &&
                               m_db.names.refresh(value.name, false, value.groups, m_db.format, fresh);
        const std::string_view groups = isRenamed ? fresh : value.groups.groups();
        if (value.name == "$HANDSEED" && m_highestNew != 0) {
            GroupCursor cursor(groups, m_db.format);
            const bool isLow = cursor.next() && cursor.next() && cursor.asHandle() <= m_highestNew;
            m_text += isLow ? withHandle(groups, m_db.format, kHandleCode, m_db.handles.seed())
                            : std::string(groups);
        } else {
            m_text += groups;
        }
    }
}

// ---- new records ----

void DrawingWriter::writeNewRecords(const HxDbStub& table) {
    for (HxDbStub* record : table.contents->members) {
        if (isNew(*record)) {
            m_text += groupsOf(*record).groups();
        }
    }
}

/// Tables that the file lacks, as far as there is something in them.
void DrawingWriter::writeNewTables() {
    for (TableKind kind : kTableOrder) {
        HxDbStub& table = *m_db.table(kind);
        const std::vector<HxDbStub*>& members = table.contents->members;
        const bool hasNew = isNew(table) || std::any_of(members.begin(), members.end(),
                                                        [this](const HxDbStub* r) { return isNew(*r); });
        if (table.inFile || !hasNew || (kind == TableKind::block && !hasBlockTable())) {
            continue;
        }
        writeTable(table);
        writeNewRecords(table);
        writeMark("ENDTAB");
    }
}

/// Entities that are new in their section.
void DrawingWriter::writeMembers(const HxDbStub& record) {
    for (HxDbStub* entity : record.contents->members) {
        if (isToWrite(record, *entity)) {
            m_text += withPaperFlag(groupsOf(*entity).groups(), m_db.format, &record == m_paper);
        }
    }
}

/// Blocks that the file lacks.
void DrawingWriter::writeNewBlocks() {
    for (HxDbStub* record : m_db.table(TableKind::block)->contents->members) {
        if (!needsBlock(*record)) {
            continue;
        }
        writeBlockPart(*record->contents->blockBegin);
        if (!isInEntities(*record)) {
            writeMembers(*record);
        }
        writeBlockPart(*record->contents->blockEnd);
    }
}

void DrawingWriter::writeNewObjects() {
    for (HxDbStub* object : m_newObjects) {
        m_text += groupsOf(*object).groups();
    }
}

long long layoutSize(const HxDbDatabase& database) {
    return static_cast<long long>(database.imp()->layout.size());
}

}  // namespace

std::string writeDrawing(HxDbDatabase& database) {
    ProgressScope progress(L"Writing the drawing", layoutSize(database), false);
    DrawingWriter writer(database);
    writer.write(progress);
    return writer.take();
}

Hx::ErrorStatus saveDrawingFile(HxDbDatabase& database, const std::wstring& path, std::wstring& error) {
    SaveTime time(database);
    const std::wstring name = path.substr(path.rfind(L'/') + 1);
    const long long items = layoutSize(database);
    ProgressScope progress(L"Saving \"" + name + L"\"", 2 * items);  // making the bytes, and writing them
    DrawingWriter writer(database);
    if (!writer.write(progress)) {
        error = L"cancelled: the file is as it was.";
        return Hx::eCancelled;
    }
    progress.nextPart(items);
    const Hx::ErrorStatus status = saveAtomically(path, writer.take(), error);
    if (status == Hx::eOk) {
        time.keep();
    }
    return status;
}

}  // namespace korvex
