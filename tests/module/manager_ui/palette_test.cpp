// The layer palette: what it shows, what it follows, how it comes and goes.
#include "tests/module/manager_ui/palette_fixture.h"

#include "manager_ui/grid/layer_column.h"

#include <QLabel>
#include <QTest>
#include <QTreeWidget>

namespace korvex::test {
namespace {

using Palette = PaletteTest;

TEST_F(Palette, ShowsEveryLayerOfTheDrawingByName) {
    showPalette();
    EXPECT_EQ(grid()->model()->columnCount(), 13);
    EXPECT_EQ(names(),
              (QStringList{"0", "INNER", "MIDDLE", "NOTES", "OUTER", "PLAN|DOORS", "PLAN|FRAMES",
                           "PLAN|WALLS", "SPARE", "TOP", "TURNED", "WALLS", "W\u00e4nde 2", "XREFS"}));
    EXPECT_EQ(row("SPARE")[kColStatus], "Current layer");
    EXPECT_EQ(row("WALLS")[kColStatus], "In use");
    EXPECT_EQ(row("WALLS")[kColLinetype], "Continuous");
    EXPECT_EQ(row("WALLS")[kColColor], "White");
    EXPECT_EQ(frame().findChild<QLabel*>("IDC_STATIC_CURRENT_LAYER")->text(), "Current layer: SPARE");
    EXPECT_EQ(frame().findChild<QLabel*>("IDC_STATIC_LAYER_STATISTIC")->text(),
              "All: 14 of 14 layers displayed");
    const QModelIndexList selected = grid()->selectionModel()->selectedRows(kColName);
    ASSERT_EQ(selected.size(), 1);
    EXPECT_EQ(selected.front().data().toString(), "SPARE");
    EXPECT_EQ(grid()->columnViewportPosition(kColStatus), 0) << "not scrolled to the side";
}

TEST_F(Palette, LayerOpensItUnlessTheDialogIsWanted) {
    run(L"LAYERDLGMODE 0\n");
    EXPECT_TRUE(contains(run(L"LAYER\nLOOK\nCLICK IDCANCEL\n"), L"IDCANCEL: \"Cancel\""));
    EXPECT_FALSE(panel());
    run(L"LAYERDLGMODE 1\nLAYER\n");
    ASSERT_TRUE(panel());
    EXPECT_TRUE(panel()->isVisible());
    EXPECT_TRUE(hxuiMainAppService()->isLayerPaletteVisible());
    EXPECT_EQ(panel()->currentDockPosition(), 1);
    EXPECT_EQ(hxGetResourceHandle(), nullptr);
    EXPECT_EQ(failures, Lines());
}

TEST_F(Palette, FollowsCommandsUndoAndOtherDrawings) {
    showPalette();
    run(L"-LAYER FREEZE WALLS\nN Extra\n\n");
    EXPECT_EQ(row("WALLS")[kColFreeze], "Thawed");  // not before the host is idle
    idle();
    EXPECT_EQ(row("WALLS")[kColFreeze], "Frozen");
    EXPECT_EQ(row("Extra")[kColOn], "On");
    run(L"U\n");
    idle();
    EXPECT_EQ(row("WALLS")[kColFreeze], "Thawed");
    EXPECT_EQ(row("Extra"), Row());
    run(L"REDO\n");
    idle();
    EXPECT_EQ(row("Extra")[kColName], "Extra");

    editor().documents().newDocument();
    idle();
    EXPECT_EQ(names(), QStringList{"0"});
    editor().documents().closeDocument(curDoc());
    idle();
    EXPECT_EQ(row("WALLS")[kColFreeze], "Frozen");
    for (Document* document : editor().documents().all()) {
        editor().documents().closeDocument(document);
    }
    idle();
    EXPECT_EQ(grid()->model()->rowCount(), 0);
}

TEST_F(Palette, HasLayoutColumnsInALayout) {
    showPalette();
    run(L"LAYOUT S Layout1\nMSPACE\nVPLAYER FREEZE NOTES\n\n\nVPLAYER COLOR 1 WALLS\n\n\n");
    idle();
    ASSERT_EQ(grid()->model()->columnCount(), 19);
    EXPECT_EQ(row("NOTES")[kColVpFreeze], "Frozen in the viewport");
    EXPECT_EQ(row("WALLS")[kColVpFreeze], "Thawed in the viewport");
    EXPECT_EQ(row("WALLS")[kColVpColor], "Red");
    EXPECT_EQ(row("WALLS")[kColColor], "White");
    const int at = names().indexOf("WALLS");
    EXPECT_EQ(grid()->model()->index(at, kColVpColor).data(Qt::BackgroundRole).value<QColor>(),
              QColor(106, 182, 226));
    EXPECT_EQ(row("WALLS")[kColStatus], "In use, with viewport overrides");
    run(L"MODEL\n");
    idle();
    EXPECT_EQ(grid()->model()->columnCount(), 13);
}

TEST_F(Palette, KeepsMarksWhileItIsHidden) {
    showPalette();
    run(L"LAYERCLOSE\n");
    EXPECT_FALSE(panel()->isVisible());
    EXPECT_FALSE(hxuiMainAppService()->isLayerPaletteVisible());
    run(L"-LAYER LOCK WALLS\n\n");
    idle();
    panel()->setVisible(true);
    idle();
    EXPECT_EQ(row("WALLS")[kColLock], "Locked");
    run(L"LAYERCLOSE\nLAYERPALETTE\n");
    EXPECT_EQ(frame().findChildren<HxUiDockPanel*>().size(), 1);
    EXPECT_TRUE(panel()->isVisible());
}

TEST_F(Palette, ShowsEachChangedRowOnceAndEverythingWithoutMore) {
    showPalette();
    int refreshed = 0;
    int reset = 0;
    const QAbstractItemModel* const model = grid()->model();
    QObject::connect(model, &QAbstractItemModel::dataChanged, grid(), [&] { ++refreshed; });
    QObject::connect(model, &QAbstractItemModel::modelReset, grid(), [&] { ++reset; });
    run(L"-LAYER COLOR 1 WALLS\nCOLOR 2 WALLS\nLOCK WALLS\n\n");
    idle();
    EXPECT_EQ(refreshed, 1);
    EXPECT_EQ(reset, 0);
    EXPECT_EQ(row("WALLS")[kColColor], "Yellow");
    run(L"-LAYER UNLOCK WALLS\n\nLAYOUT S Layout1\n");
    refreshed = 0;
    idle();
    EXPECT_EQ(refreshed, 0) << "the whole covers single rows";
    EXPECT_GT(reset, 0);
    EXPECT_EQ(row("WALLS")[kColLock], "Unlocked");
}

TEST_F(Palette, TellsWhichLayersAreInUseAsObjectsComeAndGo) {
    run(L"-LAYER N Fresh,Other\nSET Fresh\n\n");
    showPalette();
    run(L"-LAYER SET SPARE\n\n");
    idle();
    EXPECT_EQ(row("Fresh")[kColStatus], "Not in use");
    run(L"-LAYER SET Fresh\n\nLINE 0,0 1,1\n\n-LAYER SET SPARE\n\n");
    idle();
    EXPECT_EQ(row("Fresh")[kColStatus], "In use");
    EXPECT_EQ(row("Other")[kColStatus], "Not in use");
    auto* const tree = frame().findChild<QTreeWidget*>("IDC_LAYER_FILTER_TREE");
    const auto choose = [tree](const char* filter) {
        tree->setCurrentItem(tree->findItems(filter, Qt::MatchExactly | Qt::MatchRecursive).front());
    };
    choose("All Used Layers");
    EXPECT_TRUE(names().contains("Fresh"));
    run(L"ERASE L\n\n");
    idle();
    EXPECT_EQ(row("Fresh")[kColStatus], "Not in use") << "in its place until the filter is chosen again";
    choose("All");
    choose("All Used Layers");
    EXPECT_FALSE(names().contains("Fresh"));
    run(L"U\n");
    choose("All");
    idle();
    EXPECT_EQ(row("Fresh")[kColStatus], "In use");
}

TEST_F(Palette, SortsByHeaderAndKeepsTheSelection) {
    showPalette();
    run(L"-LAYER OFF NOTES,TOP\n\n");
    idle();
    QHeaderView& header = *grid()->horizontalHeader();
    const auto click = [&](int column) {
        QTest::mouseClick(header.viewport(), Qt::LeftButton, Qt::NoModifier,
                          QPoint(header.sectionViewportPosition(column) + 8, header.height() / 2));
    };
    click(kColOn);
    EXPECT_EQ(names().mid(0, 3), (QStringList{"NOTES", "TOP", "0"}));
    grid()->selectRow(1);
    click(kColOn);
    EXPECT_EQ(names().mid(0, 2), (QStringList{"XREFS", "W\u00e4nde 2"}));
    const QModelIndexList selected = grid()->selectionModel()->selectedRows(kColName);
    ASSERT_EQ(selected.size(), 1);
    EXPECT_EQ(selected.front().data().toString(), "TOP");
    click(kColName);
    EXPECT_EQ(names().front(), "0");
    run(L"-LAYER N AAA\n\n");
    idle();
    EXPECT_EQ(names().mid(0, 2), (QStringList{"0", "AAA"}));
}

TEST_F(Palette, KeepsColumnsInTheProfile) {
    showPalette();
    grid()->setColumnWidth(kColName, 233);
    grid()->horizontalHeader()->moveSection(grid()->horizontalHeader()->visualIndex(kColLock), 0);
    linker().unloadModule(kModule);
    load();
    showPalette();
    EXPECT_EQ(grid()->columnWidth(kColName), 233);
    EXPECT_EQ(grid()->horizontalHeader()->visualIndex(kColLock), 0);
    EXPECT_EQ(grid()->columnWidth(kColDescription), 90);
}

TEST_F(Palette, MakesCellsOnlyForWhatIsSeen) {
    std::wstring names;
    for (int i = 0; i < 3000; ++i) {
        names += (i ? L",L" : L"L") + std::to_wstring(i);
    }
    run(L"-LAYER N " + names + L"\n\n");
    showPalette();
    EXPECT_GT(grid()->model()->rowCount(), 3000);
    EXPECT_LT(grid()->model()->property("filledRows").toInt(), 100);
}

TEST_F(Palette, KeysGoThroughTheRows) {
    showPalette();
    grid()->setFocus();
    QTest::keyClick(grid(), Qt::Key_Home);
    EXPECT_EQ(grid()->currentIndex().row(), 0);
    QTest::keyClick(grid(), Qt::Key_End, Qt::ShiftModifier);
    EXPECT_EQ(grid()->selectionModel()->selectedRows().size(), 14);
    QTest::keyClicks(grid(), "wa");
    EXPECT_EQ(grid()->currentIndex().sibling(grid()->currentIndex().row(), kColName).data().toString(),
              "WALLS");
    QTest::keyClick(grid(), Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(grid()->selectionModel()->selectedRows().size(), 14);
}

TEST_F(Palette, FiltersOfTheTreeChooseTheRows) {
    run(L"-LAYER OFF NOTES\n\n");
    showPalette();
    auto* const tree = frame().findChild<QTreeWidget*>("IDC_LAYER_FILTER_TREE");
    const QList<QTreeWidgetItem*> xref = tree->findItems("Xref", Qt::MatchExactly | Qt::MatchRecursive);
    ASSERT_EQ(xref.size(), 1);
    tree->setCurrentItem(xref.front());
    EXPECT_EQ(names(), (QStringList{"PLAN|DOORS", "PLAN|FRAMES", "PLAN|WALLS"}));
    EXPECT_EQ(frame().findChild<QLabel*>("IDC_STATIC_LAYER_STATISTIC")->text(),
              "Xref: 3 of 14 layers displayed");
    run(L"LAYOUT S Layout1\n");
    idle();
    EXPECT_EQ(names().size(), 3);  // another space, the same filter
    run(L"XREF D PLAN\n");
    idle();
    EXPECT_EQ(grid()->model()->rowCount(), 0);
}

TEST_F(Palette, GoesWithTheModule) {
    showPalette();
    linker().unloadModule(kModule);
    EXPECT_FALSE(panel());
    frame().notifyIdle();
    run(L"-LAYER N Later\n\n");
    load();
    showPalette();
    EXPECT_EQ(row("Later")[kColName], "Later");
}

}  // namespace
}  // namespace korvex::test
