// The table of group codes and their value types, laid out for one look-up per group.
#pragma once

#include "host/db/groups/group_types.h"

#include <array>
#include <cstddef>

namespace korvex::groups {

struct CodeRange {
    int first;
    int last;
    GroupType type;
};

inline constexpr CodeRange kCodeRanges[] = {
    {-5, -1, GroupType::text},      {0, 4, GroupType::text},         {5, 5, GroupType::handle},
    {6, 9, GroupType::text},        {10, 59, GroupType::real},       {60, 79, GroupType::int16},
    {90, 99, GroupType::int32},     {100, 104, GroupType::text},     {105, 105, GroupType::handle},
    {106, 109, GroupType::text},    {110, 149, GroupType::real},     {160, 169, GroupType::int64},
    {170, 179, GroupType::int16},   {210, 239, GroupType::real},     {270, 289, GroupType::int16},
    {290, 299, GroupType::boolean}, {300, 309, GroupType::text},     {310, 319, GroupType::binary},
    {320, 369, GroupType::handle},  {370, 389, GroupType::int16},    {390, 399, GroupType::handle},
    {400, 409, GroupType::int16},   {410, 419, GroupType::text},     {420, 429, GroupType::int32},
    {430, 439, GroupType::text},    {440, 459, GroupType::int32},    {460, 469, GroupType::real},
    {470, 479, GroupType::text},    {480, 481, GroupType::handle},   {999, 999, GroupType::text},
    {1000, 1003, GroupType::text},  {1004, 1004, GroupType::binary}, {1005, 1005, GroupType::handle},
    {1006, 1009, GroupType::text},  {1010, 1059, GroupType::real},   {1060, 1070, GroupType::int16},
    {1071, 1071, GroupType::int32},
};

struct CodeEntry {
    GroupType type = GroupType::text;
    bool known = false;
};

using CodeTable = std::array<CodeEntry, kLastGroupCode - kFirstGroupCode + 1>;

constexpr CodeTable makeCodeTable() {
    CodeTable table{};
    for (const CodeRange& range : kCodeRanges) {
        for (int code = range.first; code <= range.last; ++code) {
            CodeEntry& entry = table[static_cast<std::size_t>(code - kFirstGroupCode)];
            entry.type = range.type;
            entry.known = true;
        }
    }
    return table;
}

inline constexpr CodeTable kCodeTable = makeCodeTable();

inline bool isPossibleCode(int code) { return code >= kFirstGroupCode && code <= kLastGroupCode; }

/// The entry of a possible code.
inline const CodeEntry& codeEntry(int code) {
    return kCodeTable[static_cast<std::size_t>(code - kFirstGroupCode)];
}

}  // namespace korvex::groups
