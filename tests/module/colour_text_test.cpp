// Colours as text: reading, writing, and the quirks that callers rely on.
#include "frame/util/colour_text.h"

#include <gtest/gtest.h>

namespace {

constexpr short kUntouchedIndex = -99;
constexpr unsigned kUntouchedRgb = 0xABCDEF;

TEST(ColourText, ReadsIndexTrueColourAndBook) {
    struct Row {
        const wchar_t* text;
        int result;
        short index;
        unsigned rgb;
        const wchar_t* book;
    };
    const Row rows[] = {
        {L"bylayer", 0, 256, kUntouchedRgb, L""},
        {L"ByBlock", 0, 0, kUntouchedRgb, L""},
        {L"256", 0, 256, kUntouchedRgb, L""},
        {L"257", -1, kUntouchedIndex, kUntouchedRgb, L""},
        {L"99999999999999999999", -1, kUntouchedIndex, kUntouchedRgb, L""},
        {L"7", 0, 7, kUntouchedRgb, L""},
        {L"12abc", 0, 12, kUntouchedRgb, L""},
        {L"-1", -1, kUntouchedIndex, kUntouchedRgb, L""},
        {L"white", 0, 7, kUntouchedRgb, L""},
        {L"Magenta", 0, 6, kUntouchedRgb, L""},
        {L"pink", -1, kUntouchedIndex, kUntouchedRgb, L""},
        {L"", -1, kUntouchedIndex, kUntouchedRgb, L""},
        {L"   ", -1, kUntouchedIndex, kUntouchedRgb, L""},
        {L"  red  ;rgb: 1,2,3 ", 1, 1, 0x030201, L""},
        {L"1;RGB:255,0,0", 1, 1, 0x0000FF, L""},
        {L"1; RGB:255,0,0", 0, 1, kUntouchedRgb, L""},
        {L"1;RGB:256,0,0", 0, 1, 0, L""},
        {L"1;RGB:1,,2", 0, 1, 0, L""},
        {L"1;RGB:1,2;BOOK:B$C", 0, 1, 0, L""},
        {L"1;RGB:1,2,3;BOOK:B$C", 2, 1, 0x030201, L"B$C"},
        {L"1;RGB:1,2,3;book: My Book$No 5 ", 2, 1, 0x030201, L"My Book$No 5"},
        {L"1;RGB:1,2,3;BOOK:$C", 1, 1, 0x030201, L""},
        {L"1;RGB:1,2,3;BOOK:B$", 1, 1, 0x030201, L""},
        {L"1;RGB:1,2,3;BOOK:BC", 1, 1, 0x030201, L""},
        {L"1;RGB:1,2,3;", 1, 1, 0x030201, L""},
        {L"1;;BOOK:B$C", 1, 1, kUntouchedRgb, L"B$C"},
        {L"1;BOOK:B$C", 0, 1, kUntouchedRgb, L""},
        {L"a;b;c;d", -1, kUntouchedIndex, kUntouchedRgb, L""},
        {L"1;RGB:1,2,3;BOOK:B$C;", -1, kUntouchedIndex, kUntouchedRgb, L""},
    };
    for (const Row& row : rows) {
        short index = kUntouchedIndex;
        unsigned rgb = kUntouchedRgb;
        wchar_t book[kColourBookSize] = {};
        EXPECT_EQ(GetCeColorFromStr(row.text, &index, &rgb, book), row.result) << row.text;
        EXPECT_EQ(index, row.index) << row.text;
        EXPECT_EQ(rgb, row.rgb) << row.text;
        EXPECT_STREQ(book, row.book) << row.text;
    }
    short index = kUntouchedIndex;
    EXPECT_EQ(GetCeColorFromStr(nullptr, &index, nullptr, nullptr), -1);
}

TEST(ColourText, LooksOnlyAtTheWantedParts) {
    unsigned rgb = kUntouchedRgb;
    EXPECT_EQ(GetCeColorFromStr(L"nonsense;RGB:1,2,3;BOOK:B$C", nullptr, &rgb, nullptr), 1);
    EXPECT_EQ(rgb, 0x030201u);
    EXPECT_EQ(GetCeColorFromStr(L"", nullptr, &rgb, nullptr), -1);
    wchar_t book[kColourBookSize] = {};
    EXPECT_EQ(GetCeColorFromStr(L"1;RGB:x;BOOK:B$C", nullptr, nullptr, book), 1);
    EXPECT_STREQ(book, L"B$C");
}

TEST(ColourText, StopsAt256Characters) {
    std::wstring text = L"1;RGB:1,2,3;BOOK:B$" + std::wstring(400, L'c');
    short index = 0;
    unsigned rgb = 0;
    wchar_t book[kColourBookSize] = {};
    EXPECT_EQ(GetCeColorFromStr(text.c_str(), &index, &rgb, book), 2);
    EXPECT_EQ(std::wcslen(book), 256u - std::wcslen(L"1;RGB:1,2,3;BOOK:"));
}

TEST(ColourText, RgbIsThreeNumbersInElevenCharacters) {
    struct Row {
        const wchar_t* text;
        bool good;
        unsigned long packed;
    };
    const Row rows[] = {
        {L"255,255,255", true, 0xFFFFFF},
        {L"1,2,3", true, 0x030201},
        {L"001,2,03", true, 0x030201},
        {L"0255,255,255", false, 0},
        {L"256,0,0", false, 0},
        {L"1,2", false, 0},
        {L"1,2,", false, 0},
        {L"1,,2", false, 0},
        {L",1,2", false, 0},
        {L"1,2,3,4", false, 0},
        {L"1,2,x", false, 0},
        {L"1,2, 3", false, 0},
        {L"-1,2,3", false, 0},
        {L"", false, 0},
        {nullptr, false, 0},
    };
    for (const Row& row : rows) {
        const wchar_t* const shown = row.text ? row.text : L"null";
        unsigned long packed = kUntouchedRgb;
        EXPECT_EQ(ParseRGBString(row.text, &packed), row.good) << shown;
        EXPECT_EQ(packed, row.good ? row.packed : kUntouchedRgb) << shown;
    }
}

std::wstring format(const HxCmColor& colour, std::size_t size = 256) {
    std::vector<wchar_t> buffer(size, L'#');
    const int written = FormatNormalCeStr(buffer.data(), size, &colour);
    EXPECT_EQ(buffer[static_cast<std::size_t>(written)], written > 0 ? L'\0' : L'#');
    return std::wstring(buffer.data(), static_cast<std::size_t>(written));
}

TEST(ColourText, WritesWhatItReads) {
    const wchar_t* const texts[] = {
        L"256", L"0", L"7", L"255", L"5;RGB:10,20,30", L"1;RGB:1,2,3;BOOK:My Book$No 5"};
    for (const wchar_t* const text : texts) {
        HxCmColor colour = HxCmColor::byRgb(9, 9, 9);
        colour.setNames(L"old", L"old book");
        GetHxCmColor(text, colour);
        EXPECT_EQ(format(colour), text);
    }
    EXPECT_EQ(
        format(HxCmColor::byRgb(10, 20, 30)).substr(1 + format(HxCmColor::byRgb(10, 20, 30)).find(L';')),
        L"RGB:10,20,30");
    EXPECT_EQ(format(HxCmColor::byRgb(10, 20, 30), 6).size(), 5u);
}

TEST(ColourText, WritesNothingForABookNameWithoutABookColour) {
    HxCmColor colour = HxCmColor::byIndex(5);
    colour.setNames(L"No 5", L"My Book");
    ASSERT_TRUE(colour.hasBookName());
    EXPECT_EQ(format(colour), L"");
}

TEST(ColourText, BadTextsGiveWhiteAndALoneBookPartGivesWhiteTrueColour) {
    HxCmColor colour = HxCmColor::byIndex(3);
    GetHxCmColor(L"no colour", colour);
    EXPECT_EQ(colour, HxCmColor::byIndex(7));
    GetHxCmColor(L"4;RGB:300,0,0", colour);
    EXPECT_EQ(colour, HxCmColor::byIndex(4));
    GetHxCmColor(L"4;;BOOK:B$C", colour);
    EXPECT_EQ(colour.color(), 0xC2FFFFFFu);
    EXPECT_FALSE(colour.hasBookName());
}

TEST(ColourText, SavedStatesUseALooserForm) {
    struct Row {
        const wchar_t* text;
        bool good;
        const wchar_t* result;  ///< in the strict form
    };
    const Row rows[] = {
        {L"", false, L"3"},          {L"10,20,30", true, L"RGB:10,20,30"},
        {L"10,20,256", false, L"3"}, {L"10,x,30", false, L"3"},
        {L"1,2,3,4", false, L"3"},   {L"255", true, L"255"},
        {L"256", false, L"3"},       {L"yellow", true, L"2"},
        {L"ByLayer", true, L"256"},  {L"mauve", true, L"7"},
        {L"1,2", true, L"7"},
    };
    for (const Row& row : rows) {
        HxCmColor colour = HxCmColor::byIndex(3);
        EXPECT_EQ(stringToColor(row.text, colour), row.good) << row.text;
        EXPECT_NE(format(colour).find(row.result), std::wstring::npos) << row.text << " " << format(colour);
    }
    HxCmColor colour;
    EXPECT_TRUE(stringToColor(L"My Book$No 5", colour));
    EXPECT_EQ(colour.getDictionaryKey(), L"My Book$No 5");
}

}  // namespace
