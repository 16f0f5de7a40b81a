// The value type of each group code, as drawings use them.
#include "host/db/groups/group_types.h"

#include <gtest/gtest.h>

namespace {

using namespace korvex;

TEST(GroupTypes, RangesHaveTheirTypesUpToTheirEdges) {
    struct Row {
        int first, last;
        GroupType type;
    };
    const Row rows[] = {
        {5, 5, GroupType::handle},       {10, 59, GroupType::real},      {60, 79, GroupType::int16},
        {90, 99, GroupType::int32},      {105, 105, GroupType::handle},  {140, 149, GroupType::real},
        {160, 169, GroupType::int64},    {170, 179, GroupType::int16},   {210, 239, GroupType::real},
        {270, 289, GroupType::int16},    {290, 299, GroupType::boolean}, {310, 319, GroupType::binary},
        {320, 369, GroupType::handle},   {370, 389, GroupType::int16},   {390, 399, GroupType::handle},
        {400, 409, GroupType::int16},    {420, 429, GroupType::int32},   {440, 449, GroupType::int32},
        {460, 469, GroupType::real},     {480, 481, GroupType::handle},  {1004, 1004, GroupType::binary},
        {1005, 1005, GroupType::handle}, {1010, 1059, GroupType::real},  {1060, 1070, GroupType::int16},
        {1071, 1071, GroupType::int32},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(groupType(row.first), row.type) << row.first;
        EXPECT_EQ(groupType(row.last), row.type) << row.last;
    }
    for (int code : {0, 2, 9, 100, 102, 300, 309, 410, 430, 470, 999, 1000, 1003, 1009}) {
        EXPECT_EQ(groupType(code), GroupType::text) << code;
        EXPECT_TRUE(isKnownGroupCode(code)) << code;
    }
}

TEST(GroupTypes, CodesOutsideEveryRangeAreTextOfUnknownLength) {
    for (int code : {-100, -6, 80, 89, 150, 200, 240, 269, 482, 998, 1072, 5130}) {
        EXPECT_EQ(groupType(code), GroupType::text) << code;
        EXPECT_FALSE(isKnownGroupCode(code)) << code;
    }
}

}  // namespace
