// What a drawing consists of in memory: stubs, tables, header, the order of its records in the file, its
// journal.
#pragma once

#include "host/db/kernel/header.h"
#include "host/db/kernel/journal.h"
#include "host/db/kernel/name_log.h"
#include "host/db/kernel/object_imp.h"
#include "sdk/hxdbtransaction.h"
#include "sdk/hxlyfilter.h"
#include "sdk/hxlystate.h"

#include <array>
#include <deque>
#include <map>

namespace korvex {

/// One piece of the file, in its order. Places are where new records go.
struct FileItem {
    enum Kind : std::uint8_t {
        raw,          ///< bytes that are kept as they are
        header,       ///< the HEADER section's record with all values
        object,       ///< a record that is an object
        endOfTables,  ///< places: new tables, records of a table, blocks, ...
        endOfTable,
        endOfBlocks,
        endOfBlock,
        endOfEntities,
        endOfObjects,
    };
    Kind kind = raw;
    std::string_view bytes;    ///< of header and places: name of the section when the file lacks it
    HxDbStub* stub = nullptr;  ///< the object; of places the table or block record
};

/// Objects by handle.
class HandleTable {
public:
    /// No handle of a drawing is larger.
    static constexpr std::uint64_t kLargest = 1ULL << 60U;

    void add(std::uint64_t handle, HxDbStub* stub);
    /// Raises the seed: handles that are given out are not below it. One that leaves none does not count.
    void raiseSeed(std::uint64_t seed) { m_next = std::max(m_next, seed < kLargest ? seed : 1); }
    /// Handles, sorted, that must not be given out: something in the drawing names them, whether or not there
    /// is such an object.
    void reserve(std::vector<std::uint64_t> named);
    /// Sorts what was read and gives objects whose handle is taken, or that have none, one of their own.
    void settle();
    HxDbStub* find(std::uint64_t handle) const;
    std::uint64_t next();
    /// The handle that would be given out next.
    std::uint64_t seed() const { return m_next; }

private:
    void passReserved();

    std::vector<std::pair<std::uint64_t, HxDbStub*>> m_sorted;
    std::vector<HxDbStub*> m_without;
    std::uint64_t m_next = 1;
    std::vector<std::uint64_t> m_reserved;
    std::size_t m_passed = 0;  ///< reserved handles that are below the next one
};

/// How the drawing's entries are spelled out; by its version.
struct VersionTraits {
    bool hasSubclassMarkers = true;  ///< R13 and later
    bool hasLineWeights = true;      ///< R2000 and later
    bool hasTrueColors = true;       ///< R2004 and later
};

}  // namespace korvex

class HxDbDatabase::Imp {
public:
    explicit Imp(HxDbDatabase& database);
    ~Imp();

    HxDbStub& newStub();
    HxDbStub* table(korvex::TableKind kind) const { return tables[static_cast<std::size_t>(kind)]; }
    korvex::VersionTraits traits() const;

    HxDbDatabase& self;
    std::string file;  ///< the bytes that were read
    korvex::GroupFormat format;
    std::string version = "AC1027";
    std::wstring wideVersion = L"AC1027";
    std::wstring path;
    std::wstring error;
    bool writesHandles = true;
    bool modified = false;
    std::uint64_t changes = 0;  ///< moves with every change of an object or header value, for caches
    bool hasErased = false;     ///< something was erased since the drawing was read
    std::int16_t cvport = 1;

    std::deque<HxDbStub> stubs;
    std::array<HxDbStub*, static_cast<std::size_t>(korvex::TableKind::count)> tables{};
    HxDbStub* namedObjects = nullptr;
    HxDbStub* misnamedModel = nullptr;  ///< the block record of model space where the file calls it otherwise
    HxDbStub* currentLayer = nullptr;   ///< what $CLAYER names; null when not looked up yet
    korvex::HandleTable handles;
    korvex::NameLog names;
    korvex::Header header;
    std::vector<korvex::FileItem> layout;
    korvex::Journal journal;
    HxDbTransactionManager transactions;
    HxLyLayerFilterManager filters;
    HxDbLayerStateManager layerStates;
    std::vector<HxDbDatabaseReactor*> reactors;
    /// Loaded drawings by block record, those of nested references in them in turn. Records that name the
    /// same file share one.
    std::map<HxDbStub*, std::shared_ptr<HxDbDatabase>> xrefs;
    std::vector<std::shared_ptr<HxDbDatabase>> formerXrefs;  ///< whose places the last reload gave to others
};
