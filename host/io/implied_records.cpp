// Writes the groups of tables and records that the drawing lacks.
#include "host/io/implied_records.h"

#include "host/db/groups/group_writer.h"
#include "host/db/kernel/text_fold.h"

#include <algorithm>

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

constexpr char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

/// ASCII without escapes.
bool isPlain(std::string_view name) {
    return std::all_of(name.begin(), name.end(), [](char c) { return c > 0 && c != '\\'; });
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

std::size_t NameSet::Hash::operator()(std::string_view name) const {
    std::uint64_t hash = 14695981039346656037ULL;  // FNV-1a
    for (char c : name) {
        hash = (hash ^ static_cast<unsigned char>(lower(c))) * 1099511628211ULL;
    }
    return static_cast<std::size_t>(hash);
}

bool NameSet::Equal::operator()(std::string_view a, std::string_view b) const {
    return a.size() == b.size() &&
           std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) { return lower(x) == lower(y); });
}

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

void ImpliedRecords::addRecords(TableKind kind, NameSet wanted, const RecordNames& present) {
    for (std::string_view name : present) {
        wanted.remove(name);
    }
    // What is left is missing, but for names that are the same in a way that bytes do not show.
    std::unordered_set<std::wstring> folded;
    for (std::string_view name : wanted) {
        const std::wstring text = m_db.format.codec->decode(name);
        if (!isPlain(name) && folded.empty()) {
            for (std::string_view other : present) {
                folded.insert(foldName(m_db.format.codec->decode(other)));
            }
        }
        if (isPlain(name) || folded.insert(foldName(text)).second) {
            addTo(kind, text);
        }
    }
}

HxDbStub& ImpliedRecords::addBlock(std::wstring_view name) { return addTo(TableKind::block, name); }

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
    return stub;
}

}  // namespace korvex
