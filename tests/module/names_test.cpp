// The rule for symbol names, trimming, comparing and copying of texts.
#include "frame/util/symbol_name.h"
#include "frame/util/text_utilities.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cwchar>

namespace {

TEST(SymbolName, TellsValidFromInvalid) {
    struct Row {
        std::wstring name;
        bool valid;
    };
    const Row rows[] = {
        {L"Layer 1", true},
        {L" Layer", false},
        {L"Layer ", true},
        {L"", false},
        {L"A!#$%&'()+-.@[]^_{}~\x7F", true},
        {L"A\tB\x01", true},
        {L"\u00C4\u4E2D\u20AC\U0001F600", true},
        {L"\\U+00C4bc", true},
        {L"x\\u+00c4", true},
        {L"\\U+00C", false},
        {L"\\U+00CG", false},
        {L"\\M+1ABCD", true},
        {L"\\m+5abcd", true},
        {L"\\M+AABCD", false},
        {L"\\M+1ABC", false},
        {L"\\U", false},
        {L"\\", false},
        {L"A\\B", false},
        {std::wstring(255, L'a'), true},
        {std::wstring(256, L'a'), false},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(kv_isvalidname(row.name.c_str()), row.valid) << row.name;
    }
    EXPECT_FALSE(kv_isvalidname(nullptr));
    for (const wchar_t bad : std::wstring(L"\"*,/:;<=>?\\`|")) {
        EXPECT_FALSE(kv_isvalidname((std::wstring(L"A") + bad).c_str())) << bad;
    }
}

TEST(SymbolName, LeavesTheCLocaleWithTheUsersCharacterTypes) {
    ASSERT_TRUE(std::setlocale(LC_ALL, "C"));
    ::setenv("LC_ALL", "C.UTF-8", 1);
    EXPECT_TRUE(kv_isvalidname(L"A"));
    EXPECT_STREQ(std::setlocale(LC_CTYPE, nullptr), "C.UTF-8");
    EXPECT_STREQ(std::setlocale(LC_NUMERIC, nullptr), "C");
    ::unsetenv("LC_ALL");
    std::setlocale(LC_ALL, "C");
}

TEST(TextUtilities, TrimAppliesItsOperationsInOrder) {
    struct Row {
        const wchar_t* text;
        const wchar_t* operations;
        const wchar_t* result;
    };
    const Row rows[] = {
        {L"  a  b  ", L"bem", L"ab"},
        {L"  a  b  ", L"m", L"  ab  "},
        {L"  a  b  ", L"B", L"a  b  "},
        {L"  a  b  ", L"e", L"  a  b"},
        {L"  a  b  ", L"x?", L"  a  b  "},
        {L"    ", L"", L""},
        {L"", L"be", L""},
        {L" \ta\t ", L"be", L"\ta\t"},
        {L"a", L"BEM", L"a"},
    };
    for (const Row& row : rows) {
        std::wstring text = row.text;
        kv_trim(text.data(), row.operations);
        EXPECT_STREQ(text.c_str(), row.result) << row.text << " " << row.operations;
    }
    kv_trim(nullptr, L"be");
}

TEST(TextUtilities, ComparesWithAsciiLettersFoldedOnly) {
    EXPECT_EQ(db_compareNames(L"Walls", L"wALLS"), 0);
    EXPECT_EQ(db_compareNames(L"a", L"C"), L'a' - L'c');
    EXPECT_EQ(db_compareNames(L"ab", L"A"), static_cast<int>(L'b'));
    EXPECT_EQ(db_compareNames(L"_", L"A"), L'_' - L'a');
    EXPECT_NE(db_compareNames(L"\u00C4", L"\u00E4"), 0);
    EXPECT_EQ(strings_i_compare(L"X", L"x"), 0);
    EXPECT_EQ(strings_i_compare(nullptr, L"x"), -1);
    EXPECT_EQ(strings_i_compare(L"x", nullptr), -1);
    EXPECT_EQ(strings_i_compare(nullptr, nullptr), -1);
}

TEST(TextUtilities, CopiesReplaceTheOldText) {
    wchar_t* text = nullptr;
    db_astrncpy(&text, L"abcdef", -1);
    EXPECT_STREQ(text, L"abcdef");
    db_astrncpy(&text, text + 2, 3);
    EXPECT_STREQ(text, L"cde");
    db_astrncpy(&text, L"xy", 9);
    EXPECT_STREQ(text, L"xy");
    db_astrncpy(&text, L"xy", 0);
    EXPECT_STREQ(text, L"");
    db_astrncpy(&text, nullptr, -1);
    EXPECT_EQ(text, nullptr);
}

TEST(TextUtilities, GrowsABufferOnlyWhenItMust) {
    wchar_t* text = kv_realloc_char(nullptr, 4);
    EXPECT_STREQ(text, L"");
    std::wcscpy(text, L"abc");
    EXPECT_EQ(kv_realloc_char(text, 4), text);
    wchar_t* const grown = kv_realloc_char(text, 100);
    EXPECT_STREQ(grown, L"abc");
    std::wmemset(grown + 3, L'z', 96);
    grown[99] = 0;
    EXPECT_EQ(kv_realloc_char(grown, 50), grown);
    delete[] grown;
}

TEST(TextUtilities, TurnsSlashesAndRemovesPipes) {
    wchar_t text[] = L"a/b|c\\d/";
    ChangeSlashToBackslashAndRemovePipe(text);
    EXPECT_STREQ(text, L"a\\b c\\d\\");
}

}  // namespace
