// One pass over a drawing file's records, section by section.
#include "host/io/file_loader.h"

#include "host/base/progress.h"
#include "host/db/groups/group_cursor.h"
#include "host/db/groups/group_lexer.h"

#include <algorithm>

namespace korvex {

namespace {

constexpr std::size_t kNoPlace = static_cast<std::size_t>(-1);
constexpr const wchar_t* kRestore = L" Restore the file from a backup or have it written again.";

constexpr std::string_view kSectionNames[] = {"",       "HEADER",   "CLASSES", "TABLES",
                                              "BLOCKS", "ENTITIES", "OBJECTS"};

/// Types that can stand in one kind of place only; types of which nothing is known may stand among entities
/// or objects as they please.
constexpr std::string_view kStructureTypes[] = {"BLOCK", "CLASS", "ENDBLK", "ENDTAB", "TABLE"};
constexpr std::string_view kTableTypes[] = {"APPID", "BLOCK_RECORD", "DIMSTYLE", "LAYER",
                                            "LTYPE", "STYLE",        "UCS",      "VPORT"};
constexpr std::string_view kObjectTypes[] = {"ACDBDICTIONARYWDFLT", "ACDBPLACEHOLDER", "DICTIONARY", "LAYOUT",
                                             "XRECORD"};
constexpr std::string_view kEntityTypes[] = {
    "3DFACE", "ARC",    "ATTDEF", "ATTRIB",     "CIRCLE", "DIMENSION", "ELLIPSE",
    "HATCH",  "INSERT", "LINE",   "LWPOLYLINE", "MTEXT",  "POINT",     "POLYLINE",
    "SEQEND", "SOLID",  "SPLINE", "TEXT",       "TRACE",  "VERTEX",    "VIEWPORT",
};
constexpr std::string_view kStyledTypes[] = {"ATTDEF", "ATTRIB", "MTEXT", "TEXT"};

template <std::size_t size>
bool isOneOf(const std::string_view (&types)[size], std::string_view type) {
    return std::find(std::begin(types), std::end(types), type) != std::end(types);
}

bool isMisplaced(std::string_view type, RecordPlace place) {
    const bool other =
        place == RecordPlace::entity ? isOneOf(kObjectTypes, type) : isOneOf(kEntityTypes, type);
    return other || isOneOf(kStructureTypes, type) || isOneOf(kTableTypes, type);
}

/// Where the first section of a name takes new records; raw where none go.
constexpr FileItem::Kind kEnds[] = {FileItem::raw,          FileItem::raw,         FileItem::raw,
                                    FileItem::endOfTables,  FileItem::endOfBlocks, FileItem::endOfEntities,
                                    FileItem::endOfObjects, FileItem::raw};

std::size_t index(TableKind kind) { return static_cast<std::size_t>(kind); }

}  // namespace

FileLoader::FileLoader(HxDbDatabase& database) : m_db(*database.imp()) { m_sectionStart.fill(kNoPlace); }

bool FileLoader::load(DrawingError& error) {
    FileScanner scanner(m_db.file);
    if (!scanner.detect(error)) {
        return false;
    }
    m_db.format = scanner.format();
    m_db.version = scanner.version().empty() ? "AC1009" : scanner.version();
    m_db.wideVersion.assign(m_db.version.begin(), m_db.version.end());
    constexpr std::size_t kUsualRecord = 160;  // bytes
    m_db.layout.reserve(m_db.file.size() / kUsualRecord);
    addRaw(scanner.preamble());
    ProgressScope progress(L"Reading the drawing", static_cast<long long>(scanner.size()));
    FileRecord record;
    while (progress.step(static_cast<long long>(scanner.position())) && scanner.next(record, error)) {
        if (!this->record(record)) {
            error = m_error;
            return false;
        }
    }
    if (!scanner.atEnd()) {
        return false;
    }
    m_unplaced.highestHandle = scanner.highestHandle();
    m_warning = scanner.warning();
    const std::size_t end = m_db.layout.size();
    m_db.layout.push_back({FileItem::raw, scanner.trailer(), nullptr});
    completeSections(end);
    return true;
}

bool FileLoader::fail(const FileRecord& record, std::wstring message) {
    m_error.message = std::move(message) + kRestore;
    m_error.line = record.line;
    m_error.binary = m_db.format.binary;
    m_error.code = 0;
    return false;
}

/// The place of the TABLE or BLOCK that is open.
std::wstring FileLoader::openPlace() const {
    return (m_db.format.binary ? L"byte offset " : L"line ") + std::to_wstring(m_openLine);
}

bool FileLoader::record(const FileRecord& record) {
    if (record.type == "SECTION") {
        return beginSection(record);
    }
    if (record.type == "ENDSEC") {
        return endSection(record);
    }
    switch (m_section) {
    case Section::tables: return tablesRecord(record);
    case Section::blocks: return blocksRecord(record);
    case Section::entities: return entitiesRecord(record);
    case Section::objects: return objectsRecord(record);
    case Section::header: return fail(record, L"the section HEADER holds a record.");
    case Section::classes:
        if (record.type != "CLASS") {
            return fail(record, L"the section CLASSES holds a record that is no CLASS.");
        }
        break;
    default: break;
    }
    addRaw(record.slice);
    return true;
}

// ---- sections ----

bool FileLoader::beginSection(const FileRecord& record) {
    const std::string_view name = rawName(record.slice, m_db.format);
    const auto known = std::find(std::begin(kSectionNames) + 1, std::end(kSectionNames), name);
    const bool isKnown = known != std::end(kSectionNames);
    m_section = isKnown ? static_cast<Section>(known - std::begin(kSectionNames)) : Section::other;
    m_mainEntity = nullptr;
    std::size_t& start = m_sectionStart[static_cast<std::size_t>(m_section)];
    m_isFirstOfName = start == kNoPlace;
    if (!m_isFirstOfName) {
        addRaw(record.slice);
        return true;
    }
    start = m_db.layout.size();
    m_db.layout.push_back({FileItem::raw, record.slice, nullptr});
    return m_section != Section::header || readHeader(record);
}

/// Parts the section's record into its own groups and the values.
bool FileLoader::readHeader(const FileRecord& record) {
    constexpr int kNameCode = 9;
    GroupCursor cursor(record.slice, m_db.format);
    std::size_t values = record.slice.size();
    while (cursor.next()) {
        if (cursor.code() != kNameCode) {
            continue;
        }
        values = std::min(values, cursor.offset());
        if (groups::trimmed(cursor.raw()).empty()) {
            fail(record, L"a header variable has no name.");
            const std::string_view before = record.slice.substr(0, cursor.offset());
            const auto lines = std::count(before.begin(), before.end(), '\n');
            m_error.line += m_db.format.binary ? before.size() : static_cast<std::size_t>(lines);
            m_error.code = kNameCode;
            return false;
        }
    }
    m_db.layout.back().bytes = record.slice.substr(0, values);
    addPlace(FileItem::header);
    m_db.header.read(record.slice.substr(values), m_db.format);
    return true;
}

bool FileLoader::endSection(const FileRecord& record) {
    if (m_inTable) {
        return fail(record,
                    L"the section ends inside the TABLE of " + openPlace() + L", whose ENDTAB is missing.");
    }
    if (m_inBlock) {
        return fail(record,
                    L"the section ends inside the BLOCK of " + openPlace() + L", whose ENDBLK is missing.");
    }
    const FileItem::Kind place = kEnds[static_cast<std::size_t>(m_section)];
    if (place != FileItem::raw && m_isFirstOfName) {
        addPlace(place);
    }
    m_section = Section::none;
    addRaw(record.slice);
    return true;
}

/// Gives new records a place in sections that the file lacks, in the usual order.
void FileLoader::completeSections(std::size_t end) {
    struct Place {
        Section section;
        FileItem::Kind kind;
    };
    constexpr Place kPlaces[] = {
        {Section::objects, FileItem::endOfObjects}, {Section::entities, FileItem::endOfEntities},
        {Section::blocks, FileItem::endOfBlocks},   {Section::tables, FileItem::endOfTables},
        {Section::header, FileItem::header},
    };
    std::size_t next = end;
    for (const Place& place : kPlaces) {
        const std::size_t section = static_cast<std::size_t>(place.section);
        if (m_sectionStart[section] != kNoPlace) {
            next = std::min(next, m_sectionStart[section]);
        } else if (place.section != Section::objects || m_db.traits().hasSubclassMarkers) {
            const FileItem item{place.kind, kSectionNames[section], nullptr};
            m_db.layout.insert(m_db.layout.begin() + static_cast<std::ptrdiff_t>(next), item);
            for (BlockRun& block : m_unplaced.blocks) {
                block.endPlace += block.endPlace >= next ? 1 : 0;
            }
        }
    }
}

// ---- records ----

bool FileLoader::tablesRecord(const FileRecord& record) {
    if (record.type == "TABLE") {
        return beginTable(record);
    }
    if (!m_inTable) {
        return fail(record, L"the section TABLES holds a record that is in no TABLE.");
    }
    if (record.type != "ENDTAB") {
        return tableRecord(record);
    }
    if (m_table) {
        addPlace(FileItem::endOfTable, m_table);
    }
    m_inTable = false;
    m_table = nullptr;
    addRaw(record.slice);
    return true;
}

bool FileLoader::beginTable(const FileRecord& record) {
    if (m_inTable) {
        return fail(record,
                    L"a TABLE begins inside the TABLE of " + openPlace() + L", whose ENDTAB is missing.");
    }
    const std::string_view name = rawName(record.slice, m_db.format);
    if (name.empty()) {
        return fail(record, L"the TABLE has no name (group 2).");
    }
    m_inTable = true;
    m_openLine = record.line;
    const TableKind kind = tableKind(name);
    if (kind == TableKind::count) {
        addRaw(record.slice);
        return true;
    }
    m_tableKind = kind;
    m_table = m_db.tables[index(kind)];
    if (m_table) {  // the table's second part
        addRaw(record.slice);
        return true;
    }
    const RecordHead head = recordHead(record.slice, m_db.format, 5, HeadPart::identity);
    m_table = &addStub(record, recordClass(tableName(kind), RecordPlace::table), head.handle);
    m_table->contents = std::make_unique<Contents>();
    m_db.tables[index(kind)] = m_table;
    return true;
}

bool FileLoader::tableRecord(const FileRecord& record) {
    if (!m_table) {
        addRaw(record.slice);
        return true;
    }
    const RecordKind& kind = kindOf(record.type, RecordPlace::tableRecord);
    if (record.type != m_table->recordClass->type) {
        return fail(record, L"a record of another type stands in the TABLE of " + openPlace() + L".");
    }
    const RecordHead head =
        recordHead(record.slice, m_db.format, kind.recordClass->handleCode, HeadPart::name);
    HxDbStub& stub = addStub(record, *kind.recordClass, head.handle);
    std::vector<HxDbStub*>& members = m_table->contents->members;
    stub.owner = m_table;
    stub.position = static_cast<std::uint32_t>(members.size());
    members.push_back(&stub);
    m_unplaced.names[index(m_tableKind)].push_back(head.name);
    if (m_table == m_db.table(TableKind::block)) {
        stub.contents = std::make_unique<Contents>();
    }
    return true;
}

bool FileLoader::blocksRecord(const FileRecord& record) {
    if (record.type == "BLOCK") {
        if (m_inBlock) {
            return fail(record,
                        L"a BLOCK begins inside the BLOCK of " + openPlace() + L", whose ENDBLK is missing.");
        }
        m_inBlock = true;
        m_openLine = record.line;
        m_unplaced.blocks.emplace_back();
        m_unplaced.blocks.back().begin = &addEntity(record, nullptr);
        return true;
    }
    if (!m_inBlock) {
        return fail(record, L"the section BLOCKS holds a record that is in no BLOCK.");
    }
    BlockRun& block = m_unplaced.blocks.back();
    if (record.type == "ENDBLK") {
        m_inBlock = false;
        block.endPlace = m_db.layout.size();
        addPlace(FileItem::endOfBlock);
        block.end = &addEntity(record, nullptr);
        return true;
    }
    if (kindOf(record.type, RecordPlace::entity).isMisplaced) {
        return fail(record, L"a record that is no entity stands in a BLOCK.");
    }
    addEntity(record, &block.entities);
    return true;
}

bool FileLoader::entitiesRecord(const FileRecord& record) {
    if (kindOf(record.type, RecordPlace::entity).isMisplaced) {
        return fail(record, L"a record that is no entity stands in the section ENTITIES.");
    }
    addEntity(record, nullptr);
    return true;
}

/// An entity, a BLOCK or an ENDBLK.
HxDbStub& FileLoader::addEntity(const FileRecord& record, std::vector<HxDbStub*>* block) {
    const RecordKind& kind = kindOf(record.type, RecordPlace::entity);
    const RecordHead head = entityHead(record.slice, m_db.format, kind.recordClass->handleCode);
    HxDbStub& stub = addStub(record, *kind.recordClass, head.handle);
    useNames(head, kind);
    const bool fits = record.type == "SEQEND" || (record.type == "VERTEX") == (m_mainType == "POLYLINE");
    if (kind.isSubEntity && m_mainEntity && fits) {
        stub.subEntity = true;
        stub.owner = m_mainEntity;
    } else {
        const bool hasSubEntities = record.type == "POLYLINE" || record.type == "INSERT";
        m_mainEntity = hasSubEntities ? &stub : nullptr;
        m_mainType = record.type;
    }
    if (stub.subEntity && record.type == "SEQEND") {
        m_mainEntity = nullptr;
    }
    if (block) {
        block->push_back(&stub);
    } else if (m_section == Section::entities) {
        m_unplaced.entities.push_back({&stub, head.owner, head.onPaper});
    }
    return stub;
}

void FileLoader::useNames(const RecordHead& head, const RecordKind& kind) {
    m_unplaced.layers.add(head.layer);
    m_unplaced.linetypes.add(head.linetype);
    if (kind.hasStyle) {
        m_unplaced.styles.add(head.style);
    }
}

bool FileLoader::objectsRecord(const FileRecord& record) {
    const RecordKind& kind = kindOf(record.type, RecordPlace::object);
    if (kind.isMisplaced) {
        return fail(record, L"a record that is no object stands in the section OBJECTS.");
    }
    const RecordHead head =
        recordHead(record.slice, m_db.format, kind.recordClass->handleCode, HeadPart::identity);
    HxDbStub& stub = addStub(record, *kind.recordClass, head.handle);
    if (!m_db.namedObjects && record.type == "DICTIONARY" && m_db.traits().hasSubclassMarkers) {
        m_db.namedObjects = &stub;
    }
    return true;
}

// ---- stubs and layout ----

const FileLoader::RecordKind& FileLoader::kindOf(std::string_view type, RecordPlace place) {
    if (!m_kind.recordClass || type != m_kind.type || place != m_kind.place) {
        m_kind.type = type;
        m_kind.place = place;
        m_kind.recordClass = &recordClass(type, place);
        m_kind.isMisplaced = isMisplaced(type, place);
        m_kind.isSubEntity = type == "VERTEX" || type == "ATTRIB" || type == "SEQEND";
        m_kind.hasStyle = isOneOf(kStyledTypes, type);
    }
    return m_kind;
}

HxDbStub& FileLoader::addStub(const FileRecord& record, const RecordClass& recordClass,
                              std::uint64_t handle) {
    HxDbStub& stub = m_db.newStub();
    stub.recordClass = &recordClass;
    stub.blob = Blob(record.slice);
    stub.inFile = true;
    m_db.handles.add(handle, &stub);
    m_unplaced.anyHandle = m_unplaced.anyHandle || handle != 0;
    m_db.layout.push_back({FileItem::object, {}, &stub});
    return stub;
}

void FileLoader::addRaw(std::string_view bytes) {
    FileItem* last = m_db.layout.empty() ? nullptr : &m_db.layout.back();
    if (last && last->kind == FileItem::raw && last->bytes.data() + last->bytes.size() == bytes.data()) {
        last->bytes = {last->bytes.data(), last->bytes.size() + bytes.size()};
    } else {
        m_db.layout.push_back({FileItem::raw, bytes, nullptr});
    }
}

void FileLoader::addPlace(FileItem::Kind kind, HxDbStub* stub) { m_db.layout.push_back({kind, {}, stub}); }

}  // namespace korvex
