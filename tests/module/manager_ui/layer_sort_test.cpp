// The order of the grid's rows.
#include "tests/module/manager_ui/layer_entries.h"

#include "manager_ui/grid/layer_column.h"
#include "manager_ui/grid/layer_sort.h"
#include "manager_ui/grid/merge_sort.h"
#include "manager_ui/grid/natural_keys.h"

#include <gtest/gtest.h>
#include <numeric>
#include <random>

namespace korvex::test {
namespace {

std::mt19937 seeded() { return std::mt19937(20261125); }

/// The comparison of names as it is told, without any of the shortcuts.
int naturalByTheBook(const std::wstring& a, const std::wstring& b, const std::locale& locale) {
    std::size_t i = 0;
    std::size_t j = 0;
    const auto digit = [](wchar_t c) { return c >= L'0' && c <= L'9'; };
    while (i < a.size() && j < b.size()) {
        if (digit(a[i]) && digit(b[j])) {
            std::size_t iEnd = i;
            std::size_t jEnd = j;
            while (iEnd < a.size() && digit(a[iEnd]))
                ++iEnd;
            while (jEnd < b.size() && digit(b[jEnd]))
                ++jEnd;
            const long long x = std::stoll(a.substr(i, iEnd - i));
            const long long y = std::stoll(b.substr(j, jEnd - j));
            if (x != y) return x < y ? -1 : 1;
            i = iEnd;
            j = jEnd;
            continue;
        }
        const wchar_t x = std::use_facet<std::ctype<wchar_t>>(locale).tolower(a[i++]);
        const wchar_t y = std::use_facet<std::ctype<wchar_t>>(locale).tolower(b[j++]);
        const int order = std::use_facet<std::collate<wchar_t>>(locale).compare(&x, &x + 1, &y, &y + 1);
        if (order != 0) return order < 0 ? -1 : 1;
    }
    if ((i == a.size() && j == b.size()) || a.size() == b.size()) return 0;
    return a.size() < b.size() ? -1 : 1;
}

TEST(MergeSort, KeepsEveryItemWhateverTheComparisonAnswers) {
    std::mt19937 random = seeded();
    for (const std::size_t size : {0U, 1U, 2U, 3U, 16U, 17U, 1000U}) {
        for (int kind = 0; kind < 4; ++kind) {
            std::vector<int> items(size);
            std::iota(items.begin(), items.end(), 0);
            std::shuffle(items.begin(), items.end(), random);
            mergeSort(items, [&](int a, int b) {
                return kind == 0 ? a < b : kind == 1 ? true : kind == 2 ? false : random() % 2 == 0;
            });
            std::vector<int> expected(size);
            std::iota(expected.begin(), expected.end(), 0);
            if (kind == 0) {
                EXPECT_EQ(items, expected);
            }
            std::sort(items.begin(), items.end());
            EXPECT_EQ(items, expected);
        }
    }
}

TEST(Collation, NumbersCountAsNumbersAndCaseDoesNot) {
    const KvCollation collation("C");
    const struct {
        const wchar_t* a;
        const wchar_t* b;
        int order;
    } cases[] = {{L"Layer2", L"Layer10", -1},
                 {L"A2", L"a10", -1},
                 {L"A1", L"A2", -1},
                 {L"a", L"A", 0},
                 {L"L01", L"L1", 0},
                 {L"L1", L"L1x", -1},
                 {L"L001", L"L1x", 1},
                 {L"9", L"a", -1},
                 {L"", L"a", -1},
                 {L"x18446744073709551616", L"x9223372036854775807", 0}};
    for (const auto& c : cases) {
        EXPECT_EQ(collation.compareNatural(c.a, c.b), c.order) << c.a << " " << c.b;
        EXPECT_EQ(collation.compareNatural(c.b, c.a), -c.order) << c.b << " " << c.a;
    }
    EXPECT_GT(collation.compareTexts(L"l1", L"L01"), 0);
}

TEST(Collation, ShortcutsChangeNoOrderInAnyLocale) {
    std::mt19937 random = seeded();
    const std::wstring letters = L"aAbB zZ01 29-_|äÄößé中文";
    for (const char* name : {"C", "C.UTF-8", "en_US.UTF-8", "de_DE.UTF-8", "sv_SE.UTF-8"}) {
        std::locale locale;
        try {
            locale = std::locale(name);
        } catch (const std::runtime_error&) {
            continue;  // not installed here
        }
        const KvCollation collation(name);
        for (int i = 0; i < 20000; ++i) {
            std::wstring a(random() % 3 * 8, L"xY\u00e4"[random() % 3]);  // often the same beginning
            std::wstring b(a, 0, a.size() - random() % (a.size() + 1) / 8);
            for (std::size_t n = random() % 7; n > 0; --n)
                a += letters[random() % letters.size()];
            for (std::size_t n = random() % 7; n > 0; --n)
                b += letters[random() % letters.size()];
            const int order = naturalByTheBook(a, b, locale);
            ASSERT_EQ(collation.compareNatural(a, b), order) << name << a << b;
            ASSERT_EQ(KvNaturalKeys(collation, {a, b}).compare(0, 1), order) << name << a << b;
        }
    }
}

TEST(LayerSort, ColoursCompareByIndexThenTrueColoursByTheirParts) {
    const HxCmColor red = HxCmColor::byIndex(1);
    const HxCmColor late = HxCmColor::byIndex(250);
    const HxCmColor dark = HxCmColor::byRgb(1, 2, 3);
    const HxCmColor bright = HxCmColor::byRgb(1, 3, 0);
    EXPECT_EQ(MyComp::colorComp(red, late), -1);
    EXPECT_EQ(MyComp::colorComp(red, dark), 1);
    EXPECT_EQ(MyComp::colorComp(dark, red), -1);
    EXPECT_EQ(MyComp::colorComp(dark, bright), -1);
    EXPECT_EQ(MyComp::colorComp(bright, bright), 0);
}

class LayerOrder : public ::testing::Test {
protected:
    std::wstring sorted(int column, bool ascending) {
        std::vector<KvLayerData*> layers = entries.all();
        sortLayers(layers, MyComp(column, ascending, &entries.database, nullptr));
        std::wstring names;
        for (KvLayerData* layer : layers) {
            names += (names.empty() ? L"" : L" ") + std::wstring(layer->layerRec()->name());
        }
        return names;
    }
    LayerEntries entries;
};

TEST_F(LayerOrder, EachColumnHasItsKeyAndNamesBreakTies) {
    entries.add(L"A10", [](HxDbLayerTableRecord& l) { l.setIsOff(true); });
    entries.add(L"a2", [](HxDbLayerTableRecord& l) {
        l.setLineWeight(static_cast<HxDb::LineWeight>(0));
        l.setColor(HxCmColor::byRgb(0, 0, 9));
    });
    entries.add(L"A1", [](HxDbLayerTableRecord& l) {
        l.setIsLocked(true);
        l.setIsFrozen(true);
        l.setTransparency(HxCmTransparency(128));
        l.setDescription(L"B");
    });
    EXPECT_EQ(sorted(kColName, true), L"0 A1 a2 A10");
    EXPECT_EQ(sorted(kColName, false), L"A10 a2 A1 0");
    EXPECT_EQ(sorted(kColOn, true), L"A10 0 A1 a2");
    EXPECT_EQ(sorted(kColOn, false), L"a2 A1 0 A10");
    EXPECT_EQ(sorted(kColFreeze, true), L"0 A10 a2 A1");
    EXPECT_EQ(sorted(kColLock, false), L"A1 a2 A10 0");
    EXPECT_EQ(sorted(kColColor, true), L"a2 0 A1 A10");
    EXPECT_EQ(sorted(kColLineweight, true), L"0 A1 A10 a2");
    EXPECT_EQ(sorted(kColTransparency, false), L"A1 a2 A10 0");
    EXPECT_EQ(sorted(kColDescription, true), L"0 A10 a2 A1");
    EXPECT_EQ(sorted(kColVpFreeze, true), L"0 A1 A10 a2");
}

TEST_F(LayerOrder, KeysMadeOnceOrderAsComparingEachPairDoes) {
    std::mt19937 random = seeded();
    for (int i = 0; i < 120; ++i) {
        const std::wstring name =
            (i % 2 ? L"Wall-" : L"wall ") + std::to_wstring(random() % 1000) + L"x" + std::to_wstring(i);
        entries.add(name.c_str(), [&](HxDbLayerTableRecord& l) {
            l.setIsOff(random() % 2);
            l.setIsLocked(random() % 2);
            l.setColor(random() % 2 ? HxCmColor::byIndex(static_cast<std::int16_t>(1 + random() % 5))
                                    : HxCmColor::byRgb(static_cast<std::uint8_t>(random() % 3), 0, 0));
        });
    }
    for (const int column : {kColStatus, kColName, kColOn, kColLock, kColColor, kColLinetype}) {
        for (const bool ascending : {true, false}) {
            const MyComp order(column, ascending, &entries.database, nullptr);
            std::vector<KvLayerData*> fast = entries.all();
            sortLayers(fast, order);
            std::vector<KvLayerData*> naive = entries.all();
            std::stable_sort(naive.begin(), naive.end(),
                             [&order](KvLayerData* a, KvLayerData* b) { return order.lessthan(a, b); });
            EXPECT_EQ(fast, naive) << column;
        }
    }
}

TEST_F(LayerOrder, ALayerThatCanNotBeReadGoesBeforeEveryOther) {
    KvLayerData* const a = entries.add(L"A", nullptr);
    KvLayerData* const b = entries.add(L"B", nullptr);
    const MyComp order(kColName, true, &entries.database, nullptr);
    EXPECT_TRUE(order.lessthan(a, b));
    EXPECT_FALSE(order.lessthan(b, a));
    b->setValid(false);
    EXPECT_TRUE(order.lessthan(a, b));
    EXPECT_TRUE(order.lessthan(b, a));
    std::vector<KvLayerData*> layers = entries.all();
    sortLayers(layers, order);
    EXPECT_EQ(layers.size(), 3U);
    EXPECT_EQ(std::count(layers.begin(), layers.end(), b), 1);
}

}  // namespace
}  // namespace korvex::test
