// Which groups hold names of table records, and how such names follow a rename.
#include "host/db/kernel/name_log.h"

#include "host/db/entities/entity_cursor.h"
#include "host/db/groups/group_writer.h"
#include "host/db/kernel/text_fold.h"
#include "host/db/states/state_codes.h"

namespace korvex {

namespace {

constexpr const char* kTableNames[] = {"LAYER", "LTYPE", "STYLE", "BLOCK_RECORD", "DIMSTYLE",
                                       "APPID", "VPORT", "VIEW",  "UCS"};
constexpr int kXDataLayerName = 1003;
constexpr int kStateCurrentLayer = state_group::kCurrentLayer;

struct Reference {
    const char* recordType;  ///< null: every entity
    int code;
    TableKind table;
};
constexpr Reference kReferences[] = {
    {nullptr, shared_group::kLayer, TableKind::layer},
    {nullptr, shared_group::kLinetype, TableKind::linetype},
    {"BLOCK", 2, TableKind::block},
    {"BLOCK", 3, TableKind::block},
    {"LAYER", 6, TableKind::linetype},
    {"TEXT", 7, TableKind::style},
    {"MTEXT", 7, TableKind::style},
    {"ATTRIB", 7, TableKind::style},
    {"ATTDEF", 7, TableKind::style},
    {"INSERT", 2, TableKind::block},
    {"ACAD_TABLE", 2, TableKind::block},
    {"ARC_DIMENSION", 2, TableKind::block},
    {"ARC_DIMENSION", 3, TableKind::dimStyle},
    {"LARGE_RADIAL_DIMENSION", 2, TableKind::block},
    {"LARGE_RADIAL_DIMENSION", 3, TableKind::dimStyle},
    {"DIMENSION", 2, TableKind::block},
    {"DIMENSION", 3, TableKind::dimStyle},
    {"LEADER", 3, TableKind::dimStyle},
    {"TOLERANCE", 3, TableKind::dimStyle},
    {kLayerStateType, state_group::kLayer, TableKind::layer},
    {kLayerStateType, state_group::kLinetype, TableKind::linetype},
    {kLayerStateType, kStateCurrentLayer, TableKind::layer},
    {"$CLAYER", 8, TableKind::layer},
    {"$CELTYPE", 6, TableKind::linetype},
    {"$TEXTSTYLE", 7, TableKind::style},
    {"$DIMSTYLE", 2, TableKind::dimStyle},
};

}  // namespace

const char* tableName(TableKind kind) { return kTableNames[static_cast<std::size_t>(kind)]; }

TableKind tableKind(std::string_view name) {
    for (std::size_t i = 0; i < std::size(kTableNames); ++i) {
        if (name == kTableNames[i]) {
            return static_cast<TableKind>(i);
        }
    }
    return TableKind::count;
}

TableKind referencedTable(std::string_view recordType, bool isEntity, int code) {
    if (code == kXDataLayerName) {
        return TableKind::layer;
    }
    if ((code < 2 || code > 8) && code != kStateCurrentLayer) {
        return TableKind::count;
    }
    for (const Reference& reference : kReferences) {
        if (reference.code == code &&
            (reference.recordType ? recordType == reference.recordType : isEntity)) {
            return reference.table;
        }
    }
    return TableKind::count;
}

void NameLog::add(TableKind table, const HxDbStub& record, std::wstring from, std::wstring to) {
    m_followed[static_cast<std::size_t>(table)].names.clear();
    m_entries.push_back({table, &record, std::move(from), std::move(to)});
}

/// Many groups name few records: after many renames each name is followed once.
std::wstring NameLog::resolve(TableKind table, std::wstring name, std::uint32_t generation) const {
    constexpr std::size_t kFew = 8;
    if (generation + kFew >= m_entries.size()) {
        return follow(table, std::move(name), generation);
    }
    Followed& followed = m_followed[static_cast<std::size_t>(table)];
    if (followed.generation != generation) {
        followed.names.clear();
        followed.generation = generation;
    }
    const auto known = followed.names.find(name);
    if (known != followed.names.end()) {
        return known->second;
    }
    return followed.names[name] = follow(table, name, generation);
}

std::wstring NameLog::follow(TableKind table, std::wstring name, std::uint32_t generation) const {
    const HxDbStub* record = nullptr;
    std::vector<const HxDbStub*> others;  // got the name later
    for (std::size_t i = generation; i < m_entries.size(); ++i) {
        const Entry& entry = m_entries[i];
        if (entry.table != table || (record && entry.record != record)) {
            continue;
        }
        const bool isOther = std::find(others.begin(), others.end(), entry.record) != others.end();
        if (record || (!isOther && equalNames(entry.from, name))) {
            record = entry.record;
            name = entry.to;
        } else if (equalNames(entry.to, name)) {
            others.push_back(entry.record);
        }
    }
    return name;
}

bool NameLog::refresh(std::string_view recordType, bool isEntity, const Blob& blob, const GroupFormat& format,
                      std::string& out) const {
    GroupWriter writer(format);
    std::size_t written = 0;  // of the blob
    std::wstring name;
    GroupCursor cursor(blob.groups(), format);
    EntityCursor shared(blob.groups(), format);
    bool isSharedAhead = isEntity && shared.nextShared();
    while (cursor.next()) {
        const TableKind table = referencedTable(recordType, isEntity, cursor.code());
        const bool isHere = isSharedAhead && shared->offset() == cursor.offset();
        isSharedAhead = isHere ? shared.nextShared() : isSharedAhead;
        if (table == TableKind::count || (isEntity && !isHere && isSharedCode(cursor.code()))) {
            continue;
        }
        cursor.asText(name);
        const std::wstring now = resolve(table, name, blob.generation());
        if (!equalNames(name, now)) {
            writer.append(blob.groups().substr(written, cursor.offset() - written));
            writer.text(cursor.code(), now);
            written = cursor.endOffset();
        }
    }
    if (written == 0) {
        return false;
    }
    writer.append(blob.groups().substr(written));
    out = writer.take();
    return true;
}

}  // namespace korvex
