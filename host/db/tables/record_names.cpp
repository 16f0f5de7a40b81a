// Looking up table records by name.
#include "host/db/tables/record_names.h"

#include "host/db/groups/group_cursor.h"
#include "host/db/kernel/entity_access.h"
#include "host/db/kernel/text_fold.h"
#include "host/db/tables/symbol_record_imp.h"

namespace korvex {

namespace {

constexpr std::size_t kLongestName = 255;
constexpr std::wstring_view kForbidden = L"<>/\\\":;?*|,=`";

std::wstring nameInGroups(std::string_view groups, const GroupFormat& format) {
    GroupCursor cursor(groups, format);
    while (cursor.next()) {
        if (cursor.code() == SymbolRecordImp::kNameCode) {
            return cursor.asText();
        }
    }
    return {};
}

void buildIndex(Contents& contents) {
    contents.indexed = true;
    contents.byName.reserve(contents.members.size());
    for (HxDbStub* record : contents.members) {
        contents.byName.emplace(foldName(recordName(*record)), record);
    }
}

}  // namespace

std::wstring recordName(HxDbStub& record) {
    if (!record.object && &record == record.database->imp()->misnamedModel) {
        return kModelSpaceName;
    }
    return record.object ? fields<SymbolRecordImp>(record.object).name
                         : nameInGroups(record.blob.groups(), record.database->imp()->format);
}

HxDbStub* recordNamed(HxDbStub& table, std::wstring_view name, bool orErased) {
    Contents& contents = *table.contents;
    if (!contents.indexed) {
        buildIndex(contents);
    }
    HxDbStub* erased = nullptr;
    HxDbStub* living = nullptr;
    const auto range = contents.byName.equal_range(foldName(name));
    for (auto at = range.first; at != range.second; ++at) {
        HxDbStub* record = at->second;
        if ((record->erased && !orErased) || !equalNames(recordName(*record), name)) {
            continue;
        }
        HxDbStub*& best = record->erased ? erased : living;
        if (!best || record->position < best->position) {
            best = record;  // of several with the name, which damaged drawings have, the first counts
        }
    }
    return living ? living : erased;
}

bool hasErasedNamesake(const HxDbStub& record, std::wstring_view name) {
    Contents* contents = record.owner ? record.owner->contents.get() : nullptr;
    if (!contents || !record.database->imp()->hasErased) {
        return false;
    }
    if (!contents->indexed) {
        buildIndex(*contents);
    }
    const auto range = contents->byName.equal_range(foldName(name));
    return std::any_of(range.first, range.second, [&](const auto& entry) {
        return entry.second != &record && entry.second->erased && equalNames(recordName(*entry.second), name);
    });
}

void indexName(HxDbStub& record) {
    if (record.owner && record.owner->contents && record.owner->contents->indexed) {
        record.owner->contents->byName.emplace(foldName(recordName(record)), &record);
    }
}

bool isValidSymbolName(std::wstring_view name) {
    if (name.empty() || name.size() > kLongestName || name.front() == L' ' || name.back() == L' ') {
        return false;
    }
    return std::none_of(name.begin(), name.end(),
                        [](wchar_t c) { return c < L' ' || kForbidden.find(c) != std::wstring_view::npos; });
}

}  // namespace korvex
