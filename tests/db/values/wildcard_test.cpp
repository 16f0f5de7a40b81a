// Name patterns.
#include "host/db/values/wildcard.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

namespace korvex {
namespace {

struct Case {
    const wchar_t* pattern;
    const wchar_t* name;
    bool matches;
};

constexpr Case kCases[] = {
    {L"A-WALL", L"a-wall", true},
    {L"A-WALL", L"A-WALLS", false},
    {L"*", L"", true},
    {L"*", L"anything at all", true},
    {L"A*", L"B", false},
    {L"*WALL*", L"A-WALL-EXT", true},
    {L"*A*B*C", L"xAxxBxBxC", true},
    {L"*A*B*C", L"xAxxBxBxCx", false},
    {L"**X", L"abcX", true},
    {L"?", L"", false},
    {L"L??", L"L12", true},
    {L"L##", L"L12", true},
    {L"L##", L"L1A", false},
    {L"@#", L"A1", true},
    {L"@#", L"\u00E41", true},
    {L"@#", L"11", false},
    {L"A.B", L"A-B", true},
    {L"A.B", L"AxB", false},
    {L"[A-C]1", L"b1", true},
    {L"[A-C]1", L"d1", false},
    {L"[~A-C]1", L"d1", true},
    {L"[~A-C]1", L"a1", false},
    {L"[abc-]X", L"-X", true},
    {L"[`]]X", L"]X", true},
    {L"[ABC", L"[ABC", true},
    {L"~A*", L"B1", true},
    {L"~A*", L"A1", false},
    {L"A,B", L"B", true},
    {L"A,~B*", L"A", true},
    {L"A,~B*", L"B1", false},
    {L"A`*", L"A*", true},
    {L"A`*", L"AB", false},
    {L"A`", L"A`", true},
    {L"", L"", true},
    {L"", L"A", false},
    {L"\u00C4*", L"\u00E4rger", true},
};

TEST(Wildcards, MatchAsTheTableSays) {
    for (const Case& c : kCases) {
        EXPECT_EQ(matchesPattern(c.name, c.pattern), c.matches)
            << testing::PrintToString(std::wstring(c.pattern)) << " on "
            << testing::PrintToString(std::wstring(c.name));
    }
}

TEST(Wildcards, ManyRunsTakeNoExponentialTime) {
    const std::wstring name(5000, L'a');
    std::wstring pattern;
    for (int i = 0; i < 100; ++i) {
        pattern += L"*a";
    }
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(matchesPattern(name, pattern + L"b"));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
}

}  // namespace
}  // namespace korvex
