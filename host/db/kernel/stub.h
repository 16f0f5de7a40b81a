// What an object id points to: the object's place in the database, its groups, who has it open.
#pragma once

#include "host/db/groups/group_types.h"
#include "sdk/hxdbid.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

class HxDbObject;

namespace korvex {

struct RecordClass;

/// The groups of an object, in the drawing's form: immutable, cheap to copy. They lie in the file that was
/// read, which the database keeps, or in a string of their own.
class Blob {
public:
    Blob() = default;
    /// Groups that outlive the blob.
    explicit Blob(std::string_view kept) : m_groups(kept) {}
    Blob(std::string groups, std::uint32_t generation)
        : m_own(std::make_shared<const std::string>(std::move(groups))), m_groups(*m_own),
          m_generation(generation) {}

    /// The groups of `origin` with names of a later time.
    Blob(std::string groups, std::uint32_t generation, const Blob& origin)
        : Blob(std::move(groups), generation) {
        m_origin = std::make_shared<const Blob>(origin);
    }

    /// The same groups, whose names are found to be right at a later time. They still are followed from the
    /// time that they were written at: a name of no record may since have become one's.
    Blob keptUntil(std::uint32_t generation) const {
        Blob kept(*this);
        kept.m_generation = generation;
        kept.m_origin = std::make_shared<const Blob>(origin());
        return kept;
    }

    std::string_view groups() const { return m_groups; }
    /// What names are to be followed from: spelled as they were before any rename, so that a rename that is
    /// undone gives the same groups again.
    Blob origin() const { return m_origin ? *m_origin : *this; }
    /// How many renames had happened when the names in groups() were those of records.
    std::uint32_t namesGeneration() const {
        return m_origin && m_origin->m_groups.data() == m_groups.data() ? m_origin->m_generation
                                                                        : m_generation;
    }
    bool empty() const { return m_groups.empty(); }
    /// How many renames (NameLog) had happened when the groups were written: the names in them are of that
    /// time.
    std::uint32_t generation() const { return m_generation; }
    /// The names in the groups are the same as of a later time.
    void setGeneration(std::uint32_t generation) { m_generation = generation; }

private:
    std::shared_ptr<const std::string> m_own;
    std::string_view m_groups;
    std::uint32_t m_generation = 0;
    std::shared_ptr<const Blob> m_origin;  ///< null when the groups are as they were written
};

/// The members of a table or block, in drawing order; the erased ones stay in their places.
struct Contents {
    std::vector<HxDbStub*> members;
    /// Tables: records by folded name, built when a name is first asked for. A record stands under every name
    /// that it ever had; whoever looks up compares with the name of now.
    std::unordered_multimap<std::wstring, HxDbStub*> byName;
    bool indexed = false;
    HxDbStub* blockBegin = nullptr;  ///< blocks: the BLOCK and ENDBLK records, null when the drawing has none
    HxDbStub* blockEnd = nullptr;
    bool inEntities = false;  ///< blocks: in the file, ENTITIES holds their entities and not BLOCKS
};

}  // namespace korvex

class HxDbStub {
public:
    HxDbObject* object = nullptr;  ///< made when the object is first opened
    HxDbDatabase* database = nullptr;
    HxDbStub* owner = nullptr;  ///< table, block, main entity; for other objects as group 330 tells, null
                                ///< when not resolved yet
    const korvex::RecordClass* recordClass = nullptr;
    korvex::Blob blob;
    std::unique_ptr<korvex::Contents> contents;  ///< tables and block records only
    HxDbStub* layer = nullptr;                   ///< entities: their layer, null until asked for
    std::uint64_t handle = 0;
    std::uint32_t position = 0;    ///< among the owner's members
    std::uint32_t openSerial = 0;  ///< times that it went from closed to open for read or write
    std::uint32_t journaled = 0;   ///< journal segment that has the state before the segment's changes
    std::uint16_t readers = 0;
    std::uint16_t notifying = 0;    ///< notifications being sent
    std::uint16_t notifyOpens = 0;  ///< opens for notify
    bool writer = false;
    bool undoing = false;
    bool erased = false;
    bool unappended = false;     ///< its creation was taken back; erased too
    bool changed = false;        ///< its fields are ahead of its blob
    bool changedInOpen = false;  ///< since the present open for write
    bool closePending = false;   ///< openedForModify was told, objectClosed was not yet
    bool implicit = false;       ///< not in the file as long as it is not changed
    bool handleInFile = true;
    bool subEntity = false;  ///< vertex, attribute or sequence end of the entity that owns it
    bool inFile = false;     ///< has a place in the file that was read
    bool inUse = false;      ///< layers: objects were found on it
    bool resident = false;   ///< held open by a transaction
};
