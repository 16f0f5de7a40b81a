// The value type of each group code, as another program writes them: make_group_codes.py beside this file.
#include "host/db/groups/group_cursor.h"
#include "tests/db/groups/group_test_support.h"

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <set>

namespace korvex::test {
namespace {

const std::map<std::string, GroupType> kTypes = {
    {"TEXT", GroupType::text},     {"HANDLE", GroupType::handle},   {"REAL", GroupType::real},
    {"INT16", GroupType::int16},   {"INT32", GroupType::int32},     {"INT64", GroupType::int64},
    {"BINARY", GroupType::binary}, {"BOOLEAN", GroupType::boolean},
};

std::string groupOfEveryCode() {
    std::ifstream file(KORVEX_SOURCE_DIR "/tests/db/groups/group_codes.bin", std::ios::binary);
    EXPECT_TRUE(file);
    return binarySentinel() + std::string(std::istreambuf_iterator<char>(file), {});
}

/// Whether a group has the value that the writer made from its code.
bool hasItsValue(const GroupCursor& group) {
    const int code = group.code();
    switch (groupType(code)) {
    case GroupType::text: return group.asText() == L"text " + std::to_wstring(code);
    case GroupType::handle: return group.asHandle() == static_cast<std::uint64_t>(code);
    case GroupType::real: return group.asReal() == code + 0.25;
    case GroupType::int16: return group.asInteger() == -code;
    case GroupType::int32: return group.asInteger() == -100'000LL * code;
    case GroupType::int64: return group.asInteger() == -1'000'000'000'000LL * code;
    case GroupType::boolean: return group.asInteger() == code % 2;
    case GroupType::binary:
        return group.asChunk() == std::string{'\0', static_cast<char>(code >> 8), static_cast<char>(code)};
    }
    return false;
}

TEST(GroupTypes, EveryCodeHasTheTypeThatAnotherProgramWrites) {
    const std::string bytes = groupOfEveryCode();
    const Scan scan(bytes);
    EXPECT_EQ(scan.error.text(), DrawingError().text());
    EXPECT_TRUE(scan.scanner.atEnd());
    std::set<int> written;
    for (const FileRecord& record : scan.records) {
        const auto type = kTypes.find(std::string(record.type));
        if (type == kTypes.end()) continue;
        GroupCursor group(record.slice, scan.scanner.format());
        group.next();  // the record's name
        while (group.next()) {
            EXPECT_EQ(groupType(group.code()), type->second) << group.code();
            EXPECT_TRUE(hasItsValue(group)) << group.code();
            EXPECT_TRUE(isKnownGroupCode(group.code())) << group.code();
            written.insert(group.code());
        }
        EXPECT_FALSE(group.malformed()) << record.type;
    }
    for (int code = 1; code <= kLastGroupCode; ++code) {
        const bool isComment = code == 999;
        EXPECT_EQ(isKnownGroupCode(code), isComment || written.count(code) > 0) << code;
        EXPECT_TRUE(isKnownGroupCode(code) || groupType(code) == GroupType::text) << code;
    }
}

TEST(GroupTypes, CodesBeyondAllAreTextOfUnknownLength) {
    for (int code : {-100, -6, 1072, 5130}) {
        EXPECT_EQ(groupType(code), GroupType::text) << code;
        EXPECT_FALSE(isKnownGroupCode(code)) << code;
    }
}

}  // namespace
}  // namespace korvex::test
