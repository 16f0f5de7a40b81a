// Names that objects refer to each other by (layer, linetype, block ... names in groups) and what became of
// them.
#pragma once

#include "host/db/kernel/stub.h"

#include <array>
#include <utility>

namespace korvex {

/// The tables that names in groups refer to.
enum class TableKind : std::uint8_t {
    layer,
    linetype,
    style,
    block,
    dimStyle,
    appId,
    viewport,
    view,
    ucs,
    count
};

/// Record type of a table's records: "LAYER", "LTYPE" ...
const char* tableName(TableKind kind);
/// TableKind::count for a name that is no table's.
TableKind tableKind(std::string_view name);

/// Stands for the type of an xrecord that is a layer state: unlike others it names layers and linetypes.
inline constexpr char kLayerStateType[] = "LAYERSTATE";

/// The table that a text group of a record refers to; TableKind::count when it is no reference.
TableKind referencedTable(std::string_view recordType, bool isEntity, int code);

/// Every rename since the drawing was read, in order. Groups that were written when the log had n entries
/// hold names of that time; resolve() takes such a name to the one of now. Undo may pass through states in
/// which two records have the same name, therefore it follows the record that the name was of.
class NameLog {
public:
    std::uint32_t size() const { return static_cast<std::uint32_t>(m_entries.size()); }
    void add(TableKind table, const HxDbStub& record, std::wstring from, std::wstring to);
    std::wstring resolve(TableKind table, std::wstring name, std::uint32_t generation) const;
    /// A record was given the name of an erased one. Groups must stay as old as they are from now on, since
    /// only their age tells which of the two they name.
    void setAmbiguous() { m_ambiguous = true; }
    bool isAmbiguous() const { return m_ambiguous; }
    /// The groups with the names of now; false when none is different (`out` is left alone).
    bool refresh(std::string_view recordType, bool isEntity, const Blob& blob, const GroupFormat& format,
                 std::string& out) const;

    // While many objects are put back one after the other, records may have each other's names for a while:
    // references are not looked at then, and renames wait until all are in place.
    void hold() { m_held = true; }
    bool isHeld() const { return m_held; }
    void wait(HxDbStub& record) { m_waiting.push_back(&record); }
    /// The records that wait.
    std::vector<HxDbStub*> release() {
        m_held = false;
        return std::exchange(m_waiting, {});
    }

private:
    struct Entry {
        TableKind table;
        const HxDbStub* record;
        std::wstring from;
        std::wstring to;
    };
    /// Names of one generation that were followed to those of now.
    struct Followed {
        std::uint32_t generation = 0;
        std::unordered_map<std::wstring, std::wstring> names;
    };

    std::wstring follow(TableKind table, std::wstring name, std::uint32_t generation) const;

    std::vector<Entry> m_entries;
    mutable std::array<Followed, static_cast<std::size_t>(TableKind::count)> m_followed;
    std::vector<HxDbStub*> m_waiting;
    bool m_held = false;
    bool m_ambiguous = false;
};

}  // namespace korvex
