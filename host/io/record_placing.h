// Finds the block records of blocks, and the spaces of entities, once all of a drawing's records are known.
#pragma once

#include "host/io/file_loader.h"

#include <unordered_map>
#include <unordered_set>

namespace korvex {

/// Gives the unplaced records of a file their places in the database. The database's handles are settled and
/// its tables complete.
class RecordPlacing {
public:
    RecordPlacing(HxDbDatabase& database, UnplacedRecords& records, ImpliedRecords& implied);
    void run();

private:
    void gatherNames();
    void placeBlock(BlockRun& block);
    HxDbStub& recordOf(const BlockRun& block);
    HxDbStub* blockRecord(std::uint64_t handle) const;
    HxDbStub* space(std::wstring_view name) const;
    HxDbStub* misnamedModel() const;
    void findSpaces();
    HxDbStub& containerOf(const LooseEntity& entity) const;
    HxDbStub& addBlock(std::wstring_view name);

    HxDbDatabase::Imp& m_db;
    UnplacedRecords& m_records;
    ImpliedRecords& m_implied;
    std::unordered_multimap<std::wstring, HxDbStub*> m_byName;  ///< block records by folded name
    std::unordered_set<HxDbStub*> m_spaces;                     ///< model space and the sheets
    HxDbStub* m_model = nullptr;
    HxDbStub* m_paper = nullptr;
};

}  // namespace korvex
