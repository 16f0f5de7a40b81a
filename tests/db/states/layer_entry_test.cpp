// Layers as entries of layer states.
#include "tests/db/states/states_support.h"

namespace korvex::test {

namespace {

using namespace HxLyState;

class LayerEntry : public StatesTest {
protected:
    std::string entryOf(const wchar_t* name, std::uint64_t viewport = 0) {
        const HxDbObjectPointer<HxDbLayerTableRecord> open(layer(name), HxDb::kForRead);
        hxlyEntryOfLayer(entry, *open.object(), viewport ? id(viewport) : HxDbObjectId());
        return told(entry);
    }
    HxLyStateEntry entry;  ///< one for all, so that nothing of the layer before may be left in it
};

HxLyStateEntry plain() {
    HxLyStateEntry entry;
    entry.layer = L"A";
    entry.linetype = L"DASHED";
    entry.plotStyle = L"Bold";
    return entry;
}

std::int32_t differences(const HxLyStateEntry& b, std::int32_t mask = 0xFFFF) {
    return hxlyDifferences(plain(), b, mask);
}

}  // namespace

TEST_F(LayerEntry, HasTheLayersOwnValues) {
    EXPECT_EQ(entryOf(L"WALLS"), "WALLS 8 c1 w-3 Continuous Normal a255");
    change<HxDbLayerTableRecord>(layer(L"WALLS"), [](HxDbLayerTableRecord& wall) {
        wall.setIsOff(true);
        wall.setIsLocked(true);
        wall.setVPDFLT(true);
        HxCmColor color = HxCmColor::byRgb(1, 2, 3);
        color.setNames(L"Red", L"BOOK");
        EXPECT_EQ(wall.setColor(color), Hx::eOk);
        EXPECT_EQ(wall.setTransparency(HxCmTransparency(127)), Hx::eOk);
        EXPECT_EQ(wall.setIsFrozen(true), Hx::eOk);
        EXPECT_EQ(wall.setIsPlottable(false), Hx::eOk);
    });
    const std::string told = entryOf(L"WALLS");
    EXPECT_EQ(told.substr(0, 9), "WALLS 23 ");
    EXPECT_NE(told.find(" t030201 BOOK$Red w-3 Continuous Normal a127"), told.npos);
    EXPECT_EQ(entryOf(L"DOORS"), "DOORS 8 c3 w50 DASHED Bold a255");
    EXPECT_EQ(entryOf(L"Defpoints"), "Defpoints 0 c7 w-3 Continuous Normal a255");
}

TEST_F(LayerEntry, HasTheValuesInEffectInAViewport) {
    const std::string in62 = entryOf(L"WALLS", 0x62);
    const std::string in61 = entryOf(L"WALLS", 0x61);
    EXPECT_EQ(in62.substr(0, 10), "WALLS 8 c5");
    EXPECT_EQ(in61, "WALLS 8 c1 w50 Continuous Normal a255");
    HxArray<HxDbObjectId> layers;
    layers.append(layer(L"WALLS"));
    change<HxDbViewport>(id(0x61), [&](HxDbViewport& v) { v.freezeLayersInViewport(layers); });
    EXPECT_EQ(entryOf(L"WALLS", 0x61).substr(0, 8), "WALLS 40");
    EXPECT_EQ(entryOf(L"WALLS", 0x62), in62);
    EXPECT_EQ(entryOf(L"WALLS").substr(0, 7), "WALLS 8");
}

TEST(LayerDifferences, TellEachPropertyThatTheMaskAsksFor) {
    EXPECT_EQ(differences(plain()), 0);
    HxLyStateEntry other = plain();
    other.layer = L"B";
    EXPECT_EQ(differences(other), 0);
    other.flags = kLayerOff | kLayerCurrentViewportFrozen;
    EXPECT_EQ(differences(other), kOn | kCurrentViewportFrozen);
    other.flags = kLayerFrozen | kLayerLocked | kLayerPlots | kLayerNewViewportFrozen;
    EXPECT_EQ(differences(other), kFrozen | kLocked | kPlot | kNewViewportFrozen);
    EXPECT_EQ(differences(other, kPlot | kColor), kPlot);
    other = plain();
    other.linetype = L"dashed";
    other.plotStyle = L"BOLD";
    EXPECT_EQ(differences(other), 0);
    other.linetype = L"Continuous";
    other.plotStyle = L"Thin";
    other.lineweight = 25;
    other.transparency = 0;
    EXPECT_EQ(differences(other), kLinetype | kPlotStyle | kLineweight | kTransparency);
    other.linetype.clear();
    other.plotStyle.clear();
    EXPECT_EQ(differences(other), kLineweight | kTransparency);
}

TEST(LayerDifferences, CompareColoursByBookThenTrueColourThenIndex) {
    HxLyStateEntry a = plain();
    HxLyStateEntry b = plain();
    const auto differ = [&] { return hxlyDifferences(a, b, kColor) == kColor; };
    b.colorIndex = 3;
    EXPECT_TRUE(differ());
    a.trueColor = b.trueColor = 0x112233;
    EXPECT_FALSE(differ());
    a.colorBook = L"BOOK$Red";
    EXPECT_FALSE(differ());
    b.colorBook = L"book$RED";
    EXPECT_FALSE(differ());
    b.colorBook = L"BOOK$Blue";
    EXPECT_TRUE(differ());
    b.colorBook = a.colorBook;
    b.trueColor = 0x112234;
    EXPECT_TRUE(differ());
    b.trueColor = -1;
    b.colorIndex = a.colorIndex;
    EXPECT_TRUE(differ());
}

}  // namespace korvex::test
