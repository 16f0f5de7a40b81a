// Texts and names as modules compare and encode them.
#include "sdk/hxtext.h"

#include <QByteArray>

#include <gtest/gtest.h>

TEST(SdkTexts, NamesAreEqualWithoutTheirCase) {
    EXPECT_TRUE(hxutEqualNames(L"A-Wall", L"a-WALL"));
    EXPECT_TRUE(hxutEqualNames(L"\u00dcBER \u0416", L"\u00fcber \u0436"));
    EXPECT_FALSE(hxutEqualNames(L"A", L"AB"));
    EXPECT_FALSE(hxutEqualNames(L"AB", L"A"));
    EXPECT_TRUE(hxutEqualNames(nullptr, L""));
    EXPECT_FALSE(hxutEqualNames(L"A", nullptr));
    EXPECT_EQ(hxutFoldName(L"A-\u00dcBER"), hxutFoldName(L"a-\u00fcber"));
    EXPECT_EQ(hxutFoldName(nullptr), L"");
    // What is no character has no case.
    const wchar_t none[] = {static_cast<wchar_t>(0x110000), 0};
    EXPECT_EQ(hxutFoldName(none), none);
}

TEST(SdkTexts, EscapesBecomeTheirCharacters) {
    EXPECT_EQ(hxGetUniStringFromMIFCIF(L"SITE\\U+00D6|\\M+5D6D0\\u+0041"), L"SITE\u00d6|\u4e2dA");
    for (const wchar_t* text : {L"\\U+12", L"\\M+9D6D0", L"a\\b", L"\u00d6\u4e2d", L""}) {
        EXPECT_EQ(hxGetUniStringFromMIFCIF(text), text);
    }
    EXPECT_EQ(hxGetUniStringFromMIFCIF(nullptr), L"");
}

TEST(SdkTexts, ReservedNamesInTheUsersLanguage) {
    const QByteArray before = qgetenv("LC_ALL");
    for (const auto& [locale, normal] : {std::pair("it_IT", L"Normale"), std::pair("de_DE", L"Normal"),
                                         std::pair("C", L"Normal"), std::pair("zh_CN", L"\u666e\u901a")}) {
        qputenv("LC_ALL", locale);
        EXPECT_EQ(hxdbGetReservedString(kHxReservedNormal, true), normal) << locale;
        EXPECT_EQ(hxdbGetReservedString(kHxReservedNormal, false), L"Normal");
    }
    EXPECT_EQ(hxdbGetReservedString(4711, true), L"");
    before.isNull() ? qunsetenv("LC_ALL") : qputenv("LC_ALL", before);
}

TEST(SdkTexts, AreEncodedByPageWithQuestionMarks) {
    const CStdStr<wchar_t> text = L"A\u00d6\u0416\u4e2d\u20ac\\U+0041";
    EXPECT_EQ(hxutEncode(text, 1252), "A\xD6??\x80\\U+0041");
    EXPECT_EQ(hxutEncode(text, 1251), "A?\xC6?\x88\\U+0041");
    EXPECT_EQ(hxutEncode(text, 936), "A?\xA7\xA8\xD6\xD0\x80\\U+0041");
    EXPECT_EQ(hxutEncode(text, 65001), "A\xC3\x96\xD0\x96\xE4\xB8\xAD\xE2\x82\xAC\\U+0041");
    for (const int none : {0, -1, 4711, 12520}) {
        EXPECT_EQ(hxutEncode(text, none), "A????\\U+0041");
    }
    const CStdStr<wchar_t> odd(std::wstring{static_cast<wchar_t>(0xD800), static_cast<wchar_t>(0x110000)});
    EXPECT_EQ(hxutEncode(odd, 1252), "??");
    EXPECT_EQ(hxutEncode(odd, 65001), "??");
}
