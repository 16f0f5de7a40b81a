// Takes a drawing file apart: its records become stubs, everything else stays as the bytes that it is, and
// the layout of the file remembers the order.
#pragma once

#include "host/db/groups/file_scanner.h"
#include "host/io/implied_records.h"
#include "host/io/record_head.h"

namespace korvex {

/// A block as it stands in the BLOCKS section.
struct BlockRun {
    HxDbStub* begin = nullptr;
    HxDbStub* end = nullptr;
    std::size_t endPlace = 0;  ///< index in the layout of the place before its ENDBLK
    std::vector<HxDbStub*> entities;
};

/// An entity of the ENTITIES section.
struct LooseEntity {
    HxDbStub* stub = nullptr;
    std::uint64_t owner = 0;
    bool onPaper = false;
};

/// Records whose place in the database shows when all of the file is known.
struct UnplacedRecords {
    std::vector<BlockRun> blocks;
    std::vector<LooseEntity> entities;
    NameSet layers;  ///< that entities are on
    NameSet linetypes;
    NameSet styles;
    std::array<RecordNames, static_cast<std::size_t>(TableKind::count)> names;  ///< of the tables' records
    bool anyHandle = false;
    std::uint64_t highestHandle = 0;  ///< that anything in the file has or names
};

/// Reads the file that the database's `file` holds. One load per database.
class FileLoader {
public:
    explicit FileLoader(HxDbDatabase& database);

    /// False with an error on damage, without one when the user gives up.
    bool load(DrawingError& error);
    /// After it: what is odd in the file; without a message when nothing is.
    const DrawingError& warning() const { return m_warning; }
    UnplacedRecords& unplaced() { return m_unplaced; }

private:
    enum class Section : std::uint8_t {
        none,
        header,
        classes,
        tables,
        blocks,
        entities,
        objects,
        other,
        count
    };

    bool record(const FileRecord& record);
    bool beginSection(const FileRecord& record);
    bool endSection(const FileRecord& record);
    bool tablesRecord(const FileRecord& record);
    bool beginTable(const FileRecord& record);
    bool tableRecord(const FileRecord& record);
    bool blocksRecord(const FileRecord& record);
    bool entitiesRecord(const FileRecord& record);
    bool objectsRecord(const FileRecord& record);
    bool readHeader(const FileRecord& record);
    void completeSections(std::size_t end);

    /// What follows from a record's type and its section.
    struct RecordKind {
        std::string_view type;
        RecordPlace place = RecordPlace::object;
        const RecordClass* recordClass = nullptr;
        bool isMisplaced = false;
        bool isSubEntity = false;
        bool hasStyle = false;
    };
    const RecordKind& kindOf(std::string_view type, RecordPlace place);
    HxDbStub& addStub(const FileRecord& record, const RecordClass& recordClass, std::uint64_t handle);
    HxDbStub& addEntity(const FileRecord& record, std::vector<HxDbStub*>* block);
    void useNames(const RecordHead& head, const RecordKind& kind);
    void addRaw(std::string_view bytes);
    void addPlace(FileItem::Kind kind, HxDbStub* stub = nullptr);
    bool fail(const FileRecord& record, std::wstring message);
    std::wstring openPlace() const;

    HxDbDatabase::Imp& m_db;
    UnplacedRecords m_unplaced;
    DrawingError m_error;
    DrawingError m_warning;
    Section m_section = Section::none;
    bool m_isFirstOfName = false;                                                      ///< the section
    std::array<std::size_t, static_cast<std::size_t>(Section::count)> m_sectionStart;  ///< in the layout
    std::size_t m_openLine = 0;  ///< of the TABLE or BLOCK that is open
    bool m_inTable = false;
    bool m_inBlock = false;
    HxDbStub* m_table = nullptr;  ///< the open table; null in one that the host does not know
    TableKind m_tableKind = TableKind::count;
    HxDbStub* m_mainEntity = nullptr;
    std::string_view m_mainType;
    RecordKind m_kind;  ///< of the last record; most records are of their predecessor's
};

}  // namespace korvex
