// What cells show, column defaults, lineweight texts, numbered texts.
#include "tests/module/manager_ui/layer_entries.h"

#include "frame/util/format_message.h"
#include "manager_ui/grid/layer_cells.h"
#include "manager_ui/grid/layer_column.h"
#include "manager_ui/grid/layer_icons.h"
#include "manager_ui/grid/lineweight_text.h"

#include "sdk/hxed.h"

#include <gtest/gtest.h>

namespace korvex::test {
namespace {

void setUnits(short value) {
    resbuf units = {};
    units.restype = RTSHORT;
    units.resval.rint = value;
    ASSERT_EQ(hxedSetVar(L"LWUNITS", &units), RTNORM);
}

TEST(LineweightText, IsInMillimetresInchesOrAWord) {
    setUnits(1);
    EXPECT_EQ(StringByLineWeight(25, false), L"0.25 mm");
    EXPECT_EQ(StringByLineWeight(211, false), L"2.11 mm");
    EXPECT_EQ(StringByLineWeight(2, true), L"0.09 mm");
    EXPECT_EQ(StringByLineWeight(-1, true), L"Layer");
    setUnits(0);
    EXPECT_EQ(StringByLineWeight(25, false), L"0.010 \"");
    setUnits(1);
    EXPECT_EQ(StringByLineWeight(-1, false), L"Layer");
    EXPECT_EQ(StringByLineWeight(-2, false), L"Block");
    EXPECT_EQ(StringByLineWeight(-3, false), L"Default");
    EXPECT_EQ(getThicknessFromLineweight(-3), 1);
    EXPECT_LT(getThicknessFromLineweight(50), getThicknessFromLineweight(200));
    EXPECT_LE(getThicknessFromLineweight(32000), 9);
}

TEST(LayerColumns, DefaultWidthsOfModelSpaceAndLayout) {
    const auto widths = [](KvColumnSet set) {
        std::vector<int> all;
        for (const tagKvLayerListInfo& column : defaultColumns(set)) {
            EXPECT_EQ(columnOf(column), column.index);
            all.push_back(column.width);
        }
        return all;
    };
    EXPECT_EQ(widths(KvColumnSet::modelSpace),
              (std::vector<int>{35, 70, 30, 40, 35, 60, 125, 80, 60, 60, 40, 60, 90}));
    EXPECT_EQ(widths(KvColumnSet::layout),
              (std::vector<int>{35, 70, 30, 40, 35, 60, 80, 80, 80, 60, 40, 60, 60, 90, 60, 80, 80, 60, 80}));
}

TEST(LayerCells, ShowTheRecord) {
    LayerEntries entries;
    KvLayerData* const layer = entries.add(L"Walls", [](HxDbLayerTableRecord& l) {
        l.setIsOff(true);
        l.setIsFrozen(true);
        l.setIsLocked(true);
        l.setIsPlottable(false);
        l.setVPDFLT(true);
        l.setColor(HxCmColor::byRgb(10, 20, 30));
        l.setLineWeight(static_cast<HxDb::LineWeight>(50));
        l.setTransparency(HxCmTransparency(128));
        l.setDescription(L"outer");
    });
    setUnits(1);
    const KvLayerCellContext context(&entries.database);
    const KvLayerCells cells = makeLayerCells(*layer->layerRec(), context);
    EXPECT_EQ(cells[kColStatus].icon, kIconUnused);
    EXPECT_EQ(cells[kColName].text, "Walls");
    EXPECT_EQ(cells[kColOn].icon, kIconOff);
    EXPECT_EQ(cells[kColFreeze].icon, kIconFrozen);
    EXPECT_EQ(cells[kColLock].icon, kIconLocked);
    EXPECT_EQ(cells[kColColor].text, "10,20,30");
    EXPECT_EQ(cells[kColColor].color, HxCmColor::byRgb(10, 20, 30));
    EXPECT_EQ(cells[kColLinetype].text, "Continuous");
    EXPECT_EQ(cells[kColLineweight].text, "0.50 mm");
    EXPECT_EQ(cells[kColLineweight].lineweight, 50);
    EXPECT_EQ(cells[kColTransparency].text, "49");
    EXPECT_EQ(cells[kColPlotStyle].whyGrey == 0, !entries.database.plotStyleMode());
    EXPECT_EQ(cells[kColPlot].icon, kIconNoPlot);
    EXPECT_EQ(cells[kColNewVpFreeze].icon, kIconNewVpFrozen);
    EXPECT_EQ(cells[kColDescription].text, "outer");
    const KvLayerCells zero = makeLayerCells(*entries.entries.front()->layerRec(), context);
    EXPECT_EQ(zero[kColStatus].icon, kIconCurrent);  // nothing is on it
    EXPECT_EQ(zero[kColTransparency].text, "0");
}

TEST(FormatMessage, PutsArgumentsIntoNumberedPlaces) {
    EXPECT_EQ(formatMessage("%1: %2!d! of %3!d! (%%)", {"All", "5", "12"}), "All: 5 of 12 (%)");
    EXPECT_EQ(formatMessage("%2!d! von %1!d!, %4 %", {"a%2", "b"}), "b von a%2, %4 %");
    EXPECT_EQ(formatMessage("%1!d", {"x"}), "x!d");
}

}  // namespace
}  // namespace korvex::test
