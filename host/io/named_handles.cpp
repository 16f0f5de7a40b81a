// Gathers the handles of a whole file.
#include "host/io/named_handles.h"

#include "host/db/groups/file_scanner.h"
#include "host/db/kernel/database_imp.h"

#include <algorithm>

namespace korvex {

std::vector<std::uint64_t> handlesFrom(std::string_view file, std::uint64_t first) {
    constexpr int kSeedCode = 5;
    std::vector<std::uint64_t> handles;
    FileScanner scanner(file);
    DrawingError error;
    FileRecord record;
    if (!scanner.detect(error)) {
        return handles;
    }
    while (scanner.next(record, error)) {
        const bool isSection = record.type == "SECTION";
        GroupCursor cursor(record.slice, scanner.format());
        while (cursor.next()) {
            if (groupType(cursor.code()) != GroupType::handle || (isSection && cursor.code() == kSeedCode)) {
                continue;
            }
            const std::uint64_t handle = cursor.asHandle();
            if (handle >= first && handle < HandleTable::kLargest) {
                handles.push_back(handle);
            }
        }
    }
    std::sort(handles.begin(), handles.end());
    handles.erase(std::unique(handles.begin(), handles.end()), handles.end());
    return handles;
}

}  // namespace korvex
