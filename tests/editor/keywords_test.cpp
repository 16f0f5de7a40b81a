// Which keyword a typed word means.
#include "host/editor/keywords.h"

#include <gtest/gtest.h>

namespace korvex {
namespace {

struct Case {
    const wchar_t* list;
    const wchar_t* typed;
    const wchar_t* means;  ///< global form; "" none, "?" ambiguous
};

constexpr wchar_t kLayer[] = L"? Make ON OFF Color COlorbook Ltype LWeight LOck TRansparency Thaw";
constexpr wchar_t kGerman[] = L"Ja Nein AUfheben _ Yes No Undo";

constexpr Case kCases[] = {
    // Capitals are the least, longer beginnings go as well, anything else does not.
    {L"Settings Undo eXit", L"s", L"Settings"},
    {L"Settings Undo eXit", L"SETT", L"Settings"},
    {L"Settings Undo eXit", L"settings", L"Settings"},
    {L"Settings Undo eXit", L"settingsx", L""},
    {L"Settings Undo eXit", L"et", L""},
    {L"ALl", L"a", L""},
    {L"ALl", L"al", L"ALl"},
    {L"YES", L"ye", L""},
    {L"YES", L"yes", L"YES"},
    {L"2P 3P", L"3p", L"3P"},
    {L"lower", L"low", L""},
    {L"lower", L"LOWER", L"lower"},
    // Capitals inside the word: that run, or the whole word.
    {L"Settings Undo eXit", L"x", L"eXit"},
    {L"Settings Undo eXit", L"ex", L""},
    {L"Settings Undo eXit", L"xit", L""},
    {L"Settings Undo eXit", L"EXIT", L"eXit"},
    // An exact abbreviation goes before a longer beginning.
    {kLayer, L"c", L"Color"},
    {kLayer, L"co", L"COlorbook"},
    {kLayer, L"col", L"?"},
    {kLayer, L"color", L"Color"},
    {kLayer, L"colorb", L"COlorbook"},
    {kLayer, L"l", L"Ltype"},
    {kLayer, L"lo", L"LOck"},
    {kLayer, L"lt", L"Ltype"},
    {kLayer, L"o", L""},
    {kLayer, L"of", L""},
    {kLayer, L"off", L"OFF"},
    {kLayer, L"t", L"Thaw"},
    {kLayer, L"tr", L"TRansparency"},
    {kLayer, L"?", L"?"},
    {L"Set Select", L"s", L"?"},
    {L"Set Select", L"set", L"Set"},
    // Local words are typed, global ones come back; "_" reaches those.
    {kGerman, L"j", L"Yes"},
    {kGerman, L"y", L""},
    {kGerman, L"_y", L"Yes"},
    {kGerman, L"_Undo", L"Undo"},
    {kGerman, L"_ja", L""},
    {kGerman, L"au", L"Undo"},
    {L"Yes No", L"_n", L"No"},
    {L"Yes No", L"_", L""},
    {L"Yes No", L"", L""},
    {L"", L"x", L""},
    {L"\u00C4ndern L\u00F6schen", L"\u00E4", L"\u00C4ndern"},
};

TEST(Keywords, MatchAsTheTableSays) {
    for (const Case& c : kCases) {
        KeywordList list;
        ASSERT_TRUE(list.assign(c.list));
        const KeywordList::Result result = list.match(c.typed);
        const bool mark = std::wstring(c.means) == L"?" && std::wstring(c.typed) != L"?";
        EXPECT_EQ(result.match, mark                            ? KeywordList::Match::ambiguous
                                : std::wstring(c.means).empty() ? KeywordList::Match::none
                                                                : KeywordList::Match::one)
            << testing::PrintToString(std::wstring(c.typed));
        if (result.match == KeywordList::Match::one) {
            EXPECT_EQ(result.keyword, c.means);
        }
    }
}

TEST(Keywords, TellWhatAnAmbiguousWordMayMean) {
    KeywordList list;
    list.assign(kLayer);
    const std::vector<std::wstring> both{L"Color", L"COlorbook"};
    EXPECT_EQ(list.match(L"colo").candidates, both);
}

TEST(Keywords, GlobalAndLocalMustBeAsMany) {
    KeywordList list;
    EXPECT_FALSE(list.assign(L"Ja Nein _ Yes"));
    EXPECT_TRUE(list.empty());
    EXPECT_TRUE(list.assign(L"  Ja   Nein _ Yes No "));
    EXPECT_EQ(list.text(), L"Ja/Nein");
}

}  // namespace
}  // namespace korvex
