// Values and colours in group-code lists that are in hand.
#include "frame/util/entity_colour.h"
#include "frame/util/result_buffers.h"

#include "hxed.h"

#include <gtest/gtest.h>

namespace {

struct ReleaseList {
    void operator()(resbuf* list) const { hxutRelRb(list); }
};
using List = std::unique_ptr<resbuf, ReleaseList>;

/// The list as "code=value" words, for comparing as a whole.
std::wstring shown(const resbuf* list) {
    std::wstring text;
    for (; list; list = list->rbnext) {
        text += (text.empty() ? L"" : L" ") + std::to_wstring(list->restype) + L"=";
        switch (list->restype) {
        case 62:
        case 70: text += std::to_wstring(list->resval.rint); break;
        case 420: text += std::to_wstring(list->resval.rlong); break;
        default: text += list->resval.rstring ? list->resval.rstring : L""; break;
        }
    }
    return text;
}

HxCmColor trueColour(unsigned packed, short index, const wchar_t* book = nullptr) {
    HxCmColor colour = HxCmColor::byIndex(index);
    colour.setColor(0xC2000000U | packed);
    if (book) colour.setNamesFromDictionaryKey(book);
    return colour;
}

TEST(EntityColour, UpdatesAddsAndRemovesGroups) {
    struct Row {
        const char* what;
        List list;
        HxCmColor colour;
        const wchar_t* result;
    };
    HxCmColor indexWithBook = HxCmColor::byIndex(4);
    indexWithBook.setNames(L"C", L"B");
    Row rows[] = {
        {"index", List(hxutBuildList(2, L"L", 62, 1, 70, 0, 0)), HxCmColor::byIndex(5), L"2=L 62=5 70=0"},
        {"off stays off", List(hxutBuildList(2, L"L", 62, -1, 0)), HxCmColor::byIndex(5), L"2=L 62=-5"},
        {"true colour goes in after the index", List(hxutBuildList(2, L"L", 62, -1, 70, 0, 0)),
         trueColour(0x30201, 9), L"2=L 62=-9 420=197121 70=0"},
        {"true colour is replaced", List(hxutBuildList(62, 1, 70, 0, 420, 5L, 0)), trueColour(0x30201, 9),
         L"62=9 70=0 420=197121"},
        {"book goes in after the true colour", List(hxutBuildList(62, 1, 70, 0, 0)), trueColour(7, 9, L"B$C"),
         L"62=9 420=7 430=B$C 70=0"},
        {"book is replaced", List(hxutBuildList(62, 1, 420, 5L, 430, L"old$old", 70, 0, 0)),
         trueColour(7, 9, L"B$C"), L"62=9 420=7 430=B$C 70=0"},
        {"book goes, true colour stays", List(hxutBuildList(62, 1, 420, 5L, 430, L"old$old", 70, 0, 0)),
         trueColour(7, 9), L"62=9 420=7 70=0"},
        {"both go", List(hxutBuildList(62, 1, 420, 5L, 430, L"old$old", 70, 0, 0)), HxCmColor::byIndex(2),
         L"62=2 70=0"},
        {"both go from the end", List(hxutBuildList(62, -1, 420, 5L, 430, L"old$old", 0)),
         HxCmColor::byIndex(2), L"62=-2"},
        {"book without true colour", List(hxutBuildList(62, 1, 420, 5L, 70, 0, 0)), indexWithBook,
         L"62=4 430=B$C 70=0"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(SDS_UpdateKvColorToResbufList(row.list.get(), &row.colour), RTNORM) << row.what;
        EXPECT_EQ(shown(row.list.get()), row.result) << row.what;
    }
    const List without(hxutBuildList(2, L"L", 420, 5L, 0));
    EXPECT_EQ(SDS_UpdateKvColorToResbufList(without.get(), &indexWithBook), RTERROR);
    EXPECT_EQ(shown(without.get()), L"2=L 420=5");
}

TEST(EntityColour, BookKeysAreCutTo301Characters) {
    const std::wstring key = L"B$" + std::wstring(400, L'c');
    const List list(hxutBuildList(62, 1, 0));
    const HxCmColor colour = trueColour(1, 1, key.c_str());
    ASSERT_EQ(SDS_UpdateKvColorToResbufList(list.get(), &colour), RTNORM);
    EXPECT_EQ(std::wstring(get_rb_tail(list.get())->resval.rstring), key.substr(0, 301));
}

TEST(EntityColour, ReadsBackWhatItWrote) {
    const HxCmColor colours[] = {HxCmColor::byIndex(5), trueColour(0x30201, 9), trueColour(7, 9, L"B$C")};
    for (const HxCmColor& colour : colours) {
        const List list(hxutBuildList(62, -1, 0));
        ASSERT_EQ(SDS_UpdateKvColorToResbufList(list.get(), &colour), RTNORM);
        HxCmColor read = HxCmColor::byRgb(9, 9, 9);
        EXPECT_EQ(SDS_getKvColorFromResbufList(list.get(), &read), RTNORM);
        EXPECT_EQ(read, colour);
        EXPECT_EQ(read.colorIndex(), colour.colorIndex());
        EXPECT_EQ(read.getDictionaryKey(), colour.getDictionaryKey());
    }
    const List without(hxutBuildList(420, 5L, 0));
    HxCmColor untouched = HxCmColor::byIndex(3);
    EXPECT_EQ(SDS_getKvColorFromResbufList(without.get(), &untouched), RTERROR);
    EXPECT_EQ(untouched, HxCmColor::byIndex(3));
    // A book colour without a true colour is not looked at.
    const List bookOnly(hxutBuildList(62, 4, 430, L"B$C", 0));
    EXPECT_EQ(SDS_getKvColorFromResbufList(bookOnly.get(), &untouched), RTNORM);
    EXPECT_EQ(untouched, HxCmColor::byIndex(4));
}

TEST(EntityColour, OneNumberForAnyColour) {
    const HxCmColor rgb = trueColour(0x30201, 9);
    EXPECT_EQ(SDS_GetRgbFromKvcolor(&rgb), 0x02030201u);
    const HxCmColor red = HxCmColor::byIndex(1);
    EXPECT_EQ(SDS_GetRgbFromKvcolor(&red), hxedGetRGB(1));
}

TEST(ResultBuffers, FindGroups) {
    const List list(hxutBuildList(2, L"Walls", 70, 4, 420, 99L, 70, 8, 0));
    resbuf* found = nullptr;
    EXPECT_EQ(kv_Associate(list.get(), 70, &found), 0);
    EXPECT_EQ(found->resval.rint, 4);
    EXPECT_EQ(kv_Associate(list.get(), 71, &found), -1);
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(kv_Associate(nullptr, 70, nullptr), -1);
    EXPECT_EQ(get_rb_tail(list.get())->resval.rint, 8);
    EXPECT_EQ(get_rb_tail(nullptr), nullptr);
}

TEST(ResultBuffers, ReadValuesAndLeaveWhatIsMissing) {
    const List list(hxutBuildList(2, L"Walls", 70, 4, 420, 99L, 0));
    int value = -1;
    EXPECT_EQ(GetBufInt(list.get(), 70, value), RTNORM);
    EXPECT_EQ(value, 4);
    EXPECT_EQ(GetBufInt(list.get(), 420, value), RTNORM);
    EXPECT_EQ(value, 99);
    for (const int missing : {71, 2}) {
        EXPECT_EQ(GetBufInt(list.get(), missing, value), RTNORM);
        EXPECT_EQ(value, 99);
    }
    EXPECT_EQ(GetBufInt(nullptr, 70, value), RTERROR);

    wchar_t text[4] = L"#";
    EXPECT_EQ(GetBufString(list.get(), 70, text, 4), RTNORM);
    EXPECT_STREQ(text, L"#");
    EXPECT_EQ(GetBufString(list.get(), 2, text, 4), RTNORM);
    EXPECT_STREQ(text, L"Wal");
    EXPECT_EQ(GetBufString(nullptr, 2, text, 4), RTERROR);
}

TEST(ResultBuffers, FirstAndOutermostContainer) {
    const zds_name inner = {11, 12};
    const zds_name middle = {21, 22};
    const zds_name outer = {31, 32};
    const List chain(hxutBuildList(RTENAME, inner, RTENAME, middle, RTENAME, outer, 0));
    zds_name found = {0, 0};
    EXPECT_EQ(GetFirstNameInBuf(chain.get(), found), RTNORM);
    EXPECT_EQ(found[0], 11);
    EXPECT_EQ(GetTopBlkNameInBuf(chain.get(), found), RTNORM);
    EXPECT_EQ(found[1], 32);
    EXPECT_EQ(GetFirstNameInBuf(nullptr, found), RTERROR);
    EXPECT_EQ(GetTopBlkNameInBuf(nullptr, found), RTERROR);
    EXPECT_EQ(found[1], 32);
}

}  // namespace
