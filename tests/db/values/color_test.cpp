// Colours, their indexes and names; transparencies.
#include "sdk/hxcm.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

HxCmColor trueColor(std::uint32_t packed) {
    HxCmColor color;
    color.setColor(0xC2000000U | packed);
    return color;
}

TEST(ColorTable, HoldsTheKnownColors) {
    struct Row {
        int index;
        std::uint32_t rgb;
    };
    constexpr Row kRows[] = {
        {-1, 0xFFFFFF},  {0, 0xFFFFFF},   {1, 0xFF0000},   {4, 0x00FFFF},   {7, 0xFFFFFF},   {8, 0x808080},
        {9, 0xC0C0C0},   {10, 0xFF0000},  {11, 0xFF7F7F},  {12, 0xA50000},  {13, 0xA55252},  {19, 0x261313},
        {20, 0xFF3F00},  {21, 0xFF9F7F},  {23, 0xA56752},  {28, 0x260900},  {50, 0xFFFF00},  {90, 0x00FF00},
        {130, 0x00FFFF}, {140, 0x00BFFF}, {170, 0x0000FF}, {210, 0xFF00FF}, {240, 0xFF003F}, {249, 0x261317},
        {250, 0x333333}, {254, 0xD6D6D6}, {255, 0xFFFFFF}, {256, 0xFFFFFF},
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(hxedGetRGB(row.index), row.rgb) << "index " << row.index;
    }
}

TEST(ColorTable, EveryColorIsNearestToItself) {
    for (int index = 1; index <= 255; ++index) {
        const std::uint32_t rgb = hxedGetRGB(index);
        const HxCmColor color =
            HxCmColor::byRgb(static_cast<std::uint8_t>(rgb >> 16U), static_cast<std::uint8_t>(rgb >> 8U),
                             static_cast<std::uint8_t>(rgb));
        EXPECT_EQ(hxedGetRGB(color.colorIndex()), rgb) << "index " << index;
        EXPECT_LE(color.colorIndex(), index);
    }
    EXPECT_EQ(HxCmColor::byRgb(160, 160, 164).colorIndex(), 253);
    EXPECT_EQ(HxCmColor::byRgb(250, 5, 3).colorIndex(), 1);
}

TEST(Color, IndexMethodsAndTheirLimits) {
    HxCmColor color;
    EXPECT_EQ(color.color(), 0xC3000007U);
    EXPECT_EQ(color.setColorIndex(256), Hx::eOk);
    EXPECT_TRUE(color.isByLayer());
    EXPECT_EQ(color.setColorIndex(0), Hx::eOk);
    EXPECT_TRUE(color.isByBlock());
    for (const auto wrong : {std::int16_t{-1}, std::int16_t{257}}) {
        EXPECT_EQ(color.setColorIndex(wrong), Hx::eInvalidInput);
    }
    EXPECT_TRUE(color.isByBlock());
    EXPECT_EQ(color.setColor(0x02000000), Hx::eInvalidInput);
    EXPECT_EQ(color.setColorMethod(static_cast<HxCmColor::Method>(0xC4)), Hx::eInvalidInput);
    EXPECT_TRUE(color.isByBlock());
    EXPECT_EQ(HxCmColor::byIndex(0).colorIndex(), 0);
    EXPECT_EQ(HxCmColor::byIndex(255), HxCmColor::byIndex(255));
    EXPECT_NE(HxCmColor::byIndex(255), HxCmColor::byIndex(254));
}

TEST(Color, TheIndexThatStandsInForATrueColor) {
    HxCmColor given = HxCmColor::byIndex(9);
    given.setColor(0xC20000FFU);
    EXPECT_EQ(given.colorIndex(), 9);
    EXPECT_EQ(given.red(), 255);
    EXPECT_EQ(given.blue(), 0);
    EXPECT_EQ(trueColor(0x0000FF).colorIndex(), 1);
    EXPECT_EQ(given, trueColor(0x0000FF));

    given.setRGB(0, 0, 255);
    EXPECT_EQ(given.color(), 0xC2FF0000U);
    EXPECT_EQ(given.colorIndex(), 5);

    // The method alone: the bits are no index then.
    HxCmColor odd = HxCmColor::byIndex(42);
    odd.setColor(0xC2010203U);
    odd.setColorMethod(HxCmColor::kByColorIndex);
    EXPECT_EQ(odd.colorIndex(), 42);
    EXPECT_EQ(odd.color(), 0xC3010203U);
}

TEST(Color, BookNames) {
    HxCmColor color = trueColor(0x112233);
    for (const wchar_t* wrong : {L"", L"book", L"$colour", L"book$", L"$"}) {
        EXPECT_EQ(color.setNamesFromDictionaryKey(wrong), Hx::eInvalidInput) << wrong;
    }
    EXPECT_EQ(color.setNamesFromDictionaryKey(nullptr), Hx::eInvalidInput);
    EXPECT_FALSE(color.isFromBook());
    ASSERT_EQ(color.setNamesFromDictionaryKey(L"DIC 1$DIC $5"), Hx::eOk);
    EXPECT_EQ(color.bookName(), L"DIC 1");
    EXPECT_EQ(color.colorName(), L"DIC $5");
    EXPECT_EQ(color.getDictionaryKey(), L"DIC 1$DIC $5");
    EXPECT_TRUE(color.isFromBook());
    EXPECT_NE(color, trueColor(0x112233));

    color.setNames(L"Sand", nullptr);
    EXPECT_EQ(color.getDictionaryKey(), L"");
    EXPECT_FALSE(color.isFromBook());
    color.setNames(L"Sand", L"Natural");
    color.setColorMethod(HxCmColor::kByColorIndex);
    EXPECT_TRUE(color.hasBookName());
    EXPECT_FALSE(color.isFromBook());
    color.setColorIndex(3);
    EXPECT_FALSE(color.hasBookName() || color.hasColorName());
}

TEST(Color, NamesForTheUser) {
    EXPECT_EQ(HxCmColor::byIndex(256).colorNameForDisplay(), L"ByLayer");
    EXPECT_EQ(HxCmColor::byIndex(0).colorNameForDisplay(), L"ByBlock");
    EXPECT_EQ(HxCmColor::byIndex(6).colorNameForDisplay(), L"Magenta");
    EXPECT_EQ(HxCmColor::byIndex(8).colorNameForDisplay(), L"Color 8");
    HxCmColor color = HxCmColor::byRgb(10, 20, 30);
    EXPECT_EQ(color.colorNameForDisplay(), L"10,20,30");
    color.setNames(L"Sand", L"Natural");
    EXPECT_EQ(color.colorNameForDisplay(), L"Sand");

    EXPECT_EQ(HxCmColor::standardColorIndex(L"YELLOW"), 2);
    EXPECT_EQ(HxCmColor::standardColorIndex(L"bylayer"), 256);
    EXPECT_EQ(HxCmColor::standardColorIndex(L"byBlock"), 0);
    EXPECT_EQ(HxCmColor::standardColorIndex(L"no such"), 7);
    EXPECT_EQ(HxCmColor::standardColorIndex(nullptr), 7);
}

TEST(Transparency, PercentagesAsDrawingsStoreThem) {
    struct Row {
        double percent;
        std::uint32_t word;
        int read;
    };
    constexpr Row kRows[] = {{0, 0x020000FF, 0},   {10, 0x020000E5, 10}, {30, 0x020000B2, 30},
                             {50, 0x0200007F, 50}, {90, 0x02000019, 90}, {99, 0x02000019, 90},
                             {-5, 0x020000FF, 0}};
    for (const Row& row : kRows) {
        HxCmTransparency transparency;
        transparency.setAlphaPercent(row.percent);
        EXPECT_EQ(transparency.serializeOut(), row.word) << row.percent;
        EXPECT_EQ(transparency.percent(), row.read) << row.percent;
    }
    // Every whole percentage that can be set reads back.
    for (int percent = 0; percent <= 90; ++percent) {
        HxCmTransparency transparency;
        transparency.setAlphaPercent(percent);
        EXPECT_EQ(transparency.percent(), percent);
    }
    EXPECT_EQ(HxCmTransparency(0).percent(), 100);
    HxCmTransparency odd;
    odd.setAlphaPercent(std::numeric_limits<double>::quiet_NaN());
    EXPECT_TRUE(odd.isSolid());
}

TEST(Transparency, WordsOfEveryMethod) {
    HxCmTransparency transparency;
    for (const std::uint32_t word :
         {0x00000000U, 0x01000000U, 0x02000000U, 0x02000080U, 0x020000FFU, 0x03000000U}) {
        transparency.serializeIn(word);
        EXPECT_EQ(transparency.serializeOut(), word);
    }
    transparency.serializeIn(0xFF123456U);
    EXPECT_EQ(transparency.method(), HxCmTransparency::kErrorValue);
    transparency.serializeIn(0x00000040U);
    EXPECT_EQ(transparency.method(), HxCmTransparency::kByLayer);
    EXPECT_EQ(transparency.percent(), 0);
    EXPECT_FALSE(transparency.isSolid());
    EXPECT_NE(transparency, HxCmTransparency());
}

}  // namespace
