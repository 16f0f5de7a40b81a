// Numbers and points as they are typed.
#include "host/editor/number_text.h"

#include <gtest/gtest.h>

#include <string>

namespace korvex {
namespace {

TEST(NumberText, ReadsPoints) {
    const HxGePoint3d last(10, 20, 5);
    struct Case {
        const wchar_t* text;
        double x, y, z;
    };
    constexpr Case kCases[] = {
        {L"1,2", 1, 2, 0},  {L"-1.5,2e1,3", -1.5, 20, 3}, {L"@1,2", 11, 22, 5},
        {L"@", 10, 20, 5},  {L"@5<90", 10, 25, 5},        {L"2<180", -2, 0, 0},
        {L"*1,2", 1, 2, 0}, {L"+1,.5", 1, 0.5, 0},        {L"@1,2,3", 11, 22, 8},
    };
    for (const Case& c : kCases) {
        HxGePoint3d point;
        ASSERT_TRUE(readPoint(c.text, last, point)) << testing::PrintToString(std::wstring(c.text));
        EXPECT_NEAR(point.distanceTo({c.x, c.y, c.z}), 0, 1e-9)
            << testing::PrintToString(std::wstring(c.text));
    }
    for (const wchar_t* bad : {L"", L"1", L"1,", L",1", L"1,2,", L"1,2,3,4", L"1,b", L"1 ,2", L"<", L"5<",
                               L"nan,1", L"1e999,0", L"*", L"@@1,2", L"+-1,2"}) {
        HxGePoint3d point(7, 7, 7);
        EXPECT_FALSE(readPoint(bad, last, point)) << testing::PrintToString(std::wstring(bad));
        EXPECT_EQ(point.x, 7);
    }
}

TEST(NumberText, ReadsWholeNumbersOnlyWhole) {
    int value = -1;
    EXPECT_TRUE(readInteger(L"+42", value));
    EXPECT_EQ(value, 42);
    for (const wchar_t* bad : {L"4.0", L"99999999999", L"", L"4x", L"\u0664"}) {
        EXPECT_FALSE(readInteger(bad, value));
    }
    EXPECT_EQ(value, 42);
}

TEST(NumberText, WritesNoMoreDigitsThanNeeded) {
    EXPECT_EQ(realText(12), L"12");
    EXPECT_EQ(realText(0.30000000000000004), L"0.3");
    EXPECT_EQ(realText(-0.00001), L"0");
    EXPECT_EQ(realText(1e20, 2), L"100000000000000000000");
    EXPECT_EQ(pointText({1, 2.5, 0}), L"1,2.5,0");
}

}  // namespace
}  // namespace korvex
