// What becomes part of the file because something in it refers to it: records that the drawing only implies,
// and handles of records that stand in the file without them.
#pragma once

#include "host/db/kernel/database_imp.h"

#include <unordered_set>

namespace korvex {

/// Follows the handles in the groups that are to be written. Only groups that were written since the drawing
/// was read can name such a handle: no other handle of the file is the same.
class ReferencedRecords {
public:
    explicit ReferencedRecords(const HxDbDatabase& database) : m_db(*database.imp()) {}

    /// Takes in what the groups of a record name, and what that names in turn.
    void follow(std::string_view groups);

    /// An implied record that has become a real one.
    bool isAdded(const HxDbStub& stub) const { return m_added.count(&stub) != 0; }
    /// A record of the file that must be written with the handle that it has in memory.
    bool needsHandle(const HxDbStub& stub) const { return m_withHandle.count(&stub) != 0; }
    /// The largest handle of both; 0 when there are none.
    std::uint64_t highestHandle() const { return m_highest; }

private:
    void take(std::uint64_t handle);

    const HxDbDatabase::Imp& m_db;
    std::unordered_set<const HxDbStub*> m_added;
    std::unordered_set<const HxDbStub*> m_withHandle;
    std::vector<HxDbStub*> m_toFollow;
    std::uint64_t m_highest = 0;
};

}  // namespace korvex
