// Writes the groups of tables and records that the drawing lacks.
#include "host/io/implied_records.h"

#include "host/db/groups/group_writer.h"
#include "host/db/kernel/text_fold.h"
#include "host/io/record_head.h"

namespace korvex {

namespace {

struct Subclass {
    TableKind kind;
    const char* marker;
};
constexpr Subclass kSubclasses[] = {
    {TableKind::layer, "AcDbLayerTableRecord"},       {TableKind::linetype, "AcDbLinetypeTableRecord"},
    {TableKind::style, "AcDbTextStyleTableRecord"},   {TableKind::block, "AcDbBlockTableRecord"},
    {TableKind::dimStyle, "AcDbDimStyleTableRecord"}, {TableKind::appId, "AcDbRegAppTableRecord"},
    {TableKind::viewport, "AcDbViewportTableRecord"}, {TableKind::view, "AcDbViewTableRecord"},
    {TableKind::ucs, "AcDbUCSTableRecord"},
};

const char* subclassOf(TableKind kind) {
    for (const Subclass& subclass : kSubclasses) {
        if (subclass.kind == kind) {
            return subclass.marker;
        }
    }
    return "";
}

/// Groups in the drawing's form.
class GroupsOut {
public:
    explicit GroupsOut(const HxDbDatabase::Imp& db) : out(db.format), m_db(db), m_traits(db.traits()) {}

    GroupWriter out;

    void head(std::string_view type, const HxDbStub& stub, const HxDbStub* owner) {
        out.rawText(0, type);
        if (m_db.writesHandles) {
            out.handle(stub.recordClass->handleCode, stub.handle);
        }
        if (m_traits.hasSubclassMarkers) {
            out.handle(330, owner ? owner->handle : 0);
        }
    }
    void marker(std::string_view name) {
        if (m_traits.hasSubclassMarkers) {
            out.rawText(100, name);
        }
    }
    void recordFields(TableKind kind, std::wstring_view name) {
        out.text(2, name);
        switch (kind) {
        case TableKind::layer:
            out.integer(70, 0);
            out.integer(62, 7);
            out.text(6, L"CONTINUOUS");
            break;
        case TableKind::linetype:
            out.integer(70, 0);
            out.text(3, L"");
            out.integer(72, 65);
            out.integer(73, 0);
            out.real(40, 0);
            break;
        case TableKind::style:
            out.integer(70, 0);
            out.real(40, 0);
            out.real(41, 1);
            out.real(50, 0);
            out.integer(71, 0);
            out.real(42, 0.2);
            out.text(3, L"txt");
            out.text(4, L"");
            break;
        default: out.integer(70, 0); break;
        }
    }

private:
    const HxDbDatabase::Imp& m_db;
    const VersionTraits m_traits;
};

}  // namespace

ImpliedRecords::ImpliedRecords(HxDbDatabase& database) : m_db(*database.imp()) {}

HxDbStub& ImpliedRecords::add(std::string_view type, RecordPlace place, HxDbStub* owner) {
    HxDbStub& stub = m_db.newStub();
    stub.recordClass = &recordClass(type, place);
    stub.owner = owner;
    stub.implicit = true;
    stub.handleInFile = m_db.writesHandles;
    m_db.handles.add(m_db.handles.next(), &stub);
    return stub;
}

void ImpliedRecords::addTables() {
    for (std::size_t i = 0; i < m_db.tables.size(); ++i) {
        if (m_db.tables[i]) {
            continue;
        }
        const char* name = tableName(static_cast<TableKind>(i));
        HxDbStub& stub = add(name, RecordPlace::table, nullptr);
        stub.contents = std::make_unique<Contents>();
        GroupsOut groups(m_db);
        groups.out.rawText(0, "TABLE");
        groups.out.rawText(2, name);
        if (m_db.traits().hasSubclassMarkers) {
            groups.out.handle(5, stub.handle);
            groups.out.handle(330, 0);
        }
        groups.marker("AcDbSymbolTable");
        groups.out.integer(70, 0);
        if (static_cast<TableKind>(i) == TableKind::dimStyle && m_db.traits().hasSubclassMarkers) {
            groups.marker("AcDbDimStyleTable");
            groups.out.integer(71, 0);
        }
        stub.blob = Blob(groups.out.take(), 0);
        m_db.tables[i] = &stub;
    }
}

void ImpliedRecords::addNamedObjects() {
    if (m_db.namedObjects || !m_db.traits().hasSubclassMarkers) {
        return;
    }
    HxDbStub& stub = add("DICTIONARY", RecordPlace::object, nullptr);
    GroupsOut groups(m_db);
    groups.head("DICTIONARY", stub, nullptr);
    groups.marker("AcDbDictionary");
    groups.out.integer(281, 1);
    stub.blob = Blob(groups.out.take(), 0);
    m_db.namedObjects = &stub;
}

void ImpliedRecords::addRecords(TableKind kind, const UsedNames& used) {
    for (std::string_view name : used.names()) {
        addRecord(kind, m_db.format.codec->decode(name));
    }
}

void ImpliedRecords::addRecord(TableKind kind, std::wstring_view name) {
    if (!has(kind, name)) {
        addTo(kind, name);
    }
}

HxDbStub& ImpliedRecords::addBlock(std::wstring_view name) { return addTo(TableKind::block, name); }

bool ImpliedRecords::has(TableKind kind, std::wstring_view name) {
    std::unordered_set<std::wstring>& names = m_names[static_cast<std::size_t>(kind)];
    if (names.empty()) {
        for (const HxDbStub* record : m_db.table(kind)->contents->members) {
            names.insert(foldName(m_db.format.codec->decode(rawName(record->blob.groups(), m_db.format))));
        }
    }
    return names.count(foldName(name)) > 0;
}

HxDbStub& ImpliedRecords::addTo(TableKind kind, std::wstring_view name) {
    HxDbStub& table = *m_db.table(kind);
    HxDbStub& stub = add(tableName(kind), RecordPlace::tableRecord, &table);
    GroupsOut groups(m_db);
    groups.head(tableName(kind), stub, &table);
    groups.marker("AcDbSymbolTableRecord");
    groups.marker(subclassOf(kind));
    groups.recordFields(kind, name);
    stub.blob = Blob(groups.out.take(), 0);
    if (kind == TableKind::block) {
        stub.contents = std::make_unique<Contents>();
    }
    std::vector<HxDbStub*>& members = table.contents->members;
    stub.position = static_cast<std::uint32_t>(members.size());
    members.push_back(&stub);
    m_names[static_cast<std::size_t>(kind)].insert(foldName(name));
    return stub;
}

}  // namespace korvex
