// Tables and records that a drawing does without but the host does not: layer "0", the standard linetypes,
// what entities name without its being in a table, block records of old drawings. They are no part of the
// file until they are changed.
#pragma once

#include "host/db/kernel/database_imp.h"

#include <string_view>
#include <unordered_set>

namespace korvex {

/// Names as the drawing spells them; those that differ in the case of "A" to "Z" only are one.
class NameSet {
public:
    void add(std::string_view name) {
        if (name.data() != m_last.data() && name != m_last && !name.empty()) {
            m_names.insert(name);
            m_last = name;
        }
    }
    void remove(std::string_view name) { m_names.erase(name); }
    bool empty() const { return m_names.empty(); }
    auto begin() const { return m_names.begin(); }
    auto end() const { return m_names.end(); }

private:
    struct Hash {
        std::size_t operator()(std::string_view name) const;
    };
    struct Equal {
        bool operator()(std::string_view a, std::string_view b) const;
    };
    std::unordered_set<std::string_view, Hash, Equal> m_names;
    std::string_view m_last;
};

/// The names of a table's records, in their order.
using RecordNames = std::vector<std::string_view>;

/// Adds what is missing. The handles of the database must be settled.
class ImpliedRecords {
public:
    explicit ImpliedRecords(HxDbDatabase& database);

    /// Every table that the drawing lacks.
    void addTables();
    /// The named-object dictionary, where the version has dictionaries.
    void addNamedObjects();
    /// Records of the wanted names that none of the table's records has.
    void addRecords(TableKind kind, NameSet wanted, const RecordNames& present);
    /// A block record; its name need not be free.
    HxDbStub& addBlock(std::wstring_view name);

private:
    HxDbStub& add(std::string_view type, RecordPlace place, HxDbStub* owner);
    HxDbStub& addTo(TableKind kind, std::wstring_view name);

    HxDbDatabase::Imp& m_db;
};

}  // namespace korvex
