// Tables and records that a drawing does without but the host does not: layer "0", the standard linetypes,
// what entities name without its being in a table, block records of old drawings. They are no part of the
// file until they are changed.
#pragma once

#include "host/db/kernel/database_imp.h"

#include <string_view>
#include <unordered_set>

namespace korvex {

/// Names that entities use, as the drawing spells them.
class UsedNames {
public:
    void add(std::string_view name) {
        if (name.data() != m_last.data() && name != m_last && !name.empty()) {
            m_names.insert(name);
            m_last = name;
        }
    }
    const std::unordered_set<std::string_view>& names() const { return m_names; }

private:
    std::unordered_set<std::string_view> m_names;
    std::string_view m_last;
};

/// Adds what is missing. The handles of the database must be settled.
class ImpliedRecords {
public:
    explicit ImpliedRecords(HxDbDatabase& database);

    /// Every table that the drawing lacks.
    void addTables();
    /// The named-object dictionary, where the version has dictionaries.
    void addNamedObjects();
    /// Records of the names that are in no record of the table yet.
    void addRecords(TableKind kind, const UsedNames& used);
    void addRecord(TableKind kind, std::wstring_view name);
    /// A block record; its name need not be free.
    HxDbStub& addBlock(std::wstring_view name);

private:
    HxDbStub& add(std::string_view type, RecordPlace place, HxDbStub* owner);
    HxDbStub& addTo(TableKind kind, std::wstring_view name);
    bool has(TableKind kind, std::wstring_view name);

    HxDbDatabase::Imp& m_db;
    /// Folded names of the tables' records, gathered when first asked for.
    std::array<std::unordered_set<std::wstring>, static_cast<std::size_t>(TableKind::count)> m_names;
};

}  // namespace korvex
