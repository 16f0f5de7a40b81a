// Rows stay where the user sees them: what changes is shown in its place, and only new and erased layers come
// and go, until the user sorts, filters or searches.
#include "tests/module/manager_ui/layer_entries.h"
#include "tests/module/manager_ui/palette_fixture.h"

#include "manager_ui/grid/layer_column.h"
#include "manager_ui/grid/layer_list_ctrl.h"
#include "manager_ui/grid/layer_list_model.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QTest>
#include <QTreeWidget>

namespace korvex::test {
namespace {

class PaletteRows : public PaletteTest {
protected:
    void SetUp() override {
        PaletteTest::SetUp();
        showPalette();
    }
    void clickCell(int row, int column) {
        grid()->scrollTo(grid()->model()->index(row, column));
        const QPoint at = grid()->visualRect(grid()->model()->index(row, column)).center();
        QTest::mouseClick(grid()->viewport(), Qt::LeftButton, Qt::NoModifier, at);
        idle();
    }
    QLineEdit& search() { return *frame().findChild<QLineEdit*>("IDC_EDIT_SEARCHLAYER"); }
    QTreeWidget& tree() { return *frame().findChild<QTreeWidget*>("IDC_LAYER_FILTER_TREE"); }
    void addFilter(const std::wstring& name, const std::wstring& expression) {
        run(L"CLICK IDC_BUTTON_NEW_PROPFILTER\nPRESS IDC_PROPFILTER_NAME Ctrl+A\nTYPE IDC_PROPFILTER_NAME " +
            name + L"\nTYPE IDC_PROPFILTER_EXPRESSION " + expression + L"\nCLICK IDOK\n");
        idle();
    }
};

TEST_F(PaletteRows, TwoClicksOnOnePlaceChangeOneLayer) {
    clickHeader(kColOn);
    const QStringList before = names();
    const QString third = before[3];
    clickCell(3, kColOn);
    EXPECT_EQ(names(), before);
    EXPECT_EQ(row(third)[kColOn], "Off");
    clickCell(3, kColOn);
    EXPECT_EQ(names(), before);
    EXPECT_EQ(row(third)[kColOn], "On");
    clickCell(3, kColOn);
    clickHeader(kColOn);
    clickHeader(kColOn);
    EXPECT_EQ(names().front(), third) << "the header sorts";
}

TEST_F(PaletteRows, AChangeThatTheFilterWouldHideStaysInView) {
    addFilter(L"Lit", L"ON==\"True\"");
    const QStringList before = names();
    ASSERT_EQ(before.size(), 14);
    clickCell(2, kColOn);
    EXPECT_EQ(names(), before);
    EXPECT_EQ(rowAt(2)[kColOn], "Off");
    run(L"-LAYER OFF NOTES,TOP\nN Dark,Bright\nOFF Dark\n\n");
    idle();
    EXPECT_EQ(row("NOTES")[kColOn], "Off");
    EXPECT_TRUE(names().contains("Bright"));
    EXPECT_FALSE(names().contains("Dark")) << "new, and the filter leaves it out";
    auto* const invert = frame().findChild<QCheckBox*>("IDC_CHECK_INVERTFILTER");
    invert->click();
    EXPECT_EQ(names(), (QStringList{"Dark", before[2], "NOTES", "TOP"}));
    run(L"-LAYER ON NOTES\n\n");
    idle();
    EXPECT_EQ(names(), (QStringList{"Dark", before[2], "NOTES", "TOP"}));
    invert->click();
    EXPECT_TRUE(names().contains("NOTES"));
    EXPECT_FALSE(names().contains("TOP"));
}

TEST_F(PaletteRows, NewLayersStayUntilTheListIsMadeAnew) {
    run(L"CLICK IDC_BUTTON_NEW_GROUPFILTER\nPRESS focus Ctrl+A\nTYPE focus G\nPRESS focus Enter\n"
        L"CHOOSE IDC_LAYER_FILTER_TREE All\nCLICK IDC_LIST_LAYERS_LIST right \"NOTES,Name\"\n"
        L"CHOOSE menu \"Add to Group Filter/G\"\nCHOOSE IDC_LAYER_FILTER_TREE All/G\n");
    idle();
    search().setText("NO*");
    ASSERT_EQ(names(), QStringList{"NOTES"});
    run(L"CLICK IDC_BUTTON_NEW\nPRESS focus Ctrl+A\nTYPE focus Fresh\nPRESS focus Enter\n");
    idle();
    idle();
    EXPECT_EQ(names(), (QStringList{"Fresh", "NOTES"})) << "though the search does not find it";
    run(L"-LAYER LOCK NOTES,Fresh\n\n");
    idle();
    EXPECT_EQ(names(), (QStringList{"Fresh", "NOTES"}));
    search().setText("N*");
    EXPECT_EQ(names(), QStringList{"NOTES"});
    search().clear();
    EXPECT_EQ(names(), (QStringList{"Fresh", "NOTES"})) << "it is in the group";
    EXPECT_EQ(failures, Lines());
}

TEST_F(PaletteRows, ErasedLayersGoAndComeBackAtTheirPlaces) {
    clickHeader(kColName);
    const QStringList before = names();
    ASSERT_EQ(before.front(), "XREFS") << "the greatest first";
    std::wstring many = L"-LAYER N ";
    for (int i = 0; i < 40; ++i) {
        many += (i ? L",L" : L"L") + std::to_wstring(i);
    }
    run(many + L"\n\n");
    run(L"-LAYER N Q1,Q2\n\n");
    idle();
    EXPECT_EQ(names().size(), 56);
    EXPECT_EQ(names().indexOf("L9"), names().indexOf("L10") + 1);
    EXPECT_EQ(names().indexOf("Q2") + 1, names().indexOf("Q1"));
    grid()->selectRow(static_cast<int>(names().indexOf("NOTES")));
    run(L"U\n");
    idle();
    run(L"U\n");
    idle();
    EXPECT_EQ(names(), before);
    EXPECT_EQ(grid()->selectionModel()->selectedRows(kColName).value(0).data().toString(), "NOTES");
    run(L"REDO 1\n");
    idle();
    EXPECT_EQ(names().size(), 54);
    EXPECT_EQ(names().indexOf("L9"), names().indexOf("L10") + 1);
}

TEST_F(PaletteRows, ASortedColumnThatIsMovedStaysTheSortedOne) {
    run(L"-LAYER OFF NOTES\n\n");
    idle();
    clickHeader(kColOn);
    ASSERT_EQ(names().front(), "NOTES");
    QHeaderView& header = *grid()->horizontalHeader();
    header.moveSection(header.visualIndex(kColOn), 0);
    EXPECT_EQ(header.sortIndicatorSection(), kColOn);
    header.moveSection(header.visualIndex(kColDescription), 0);
    EXPECT_EQ(header.sortIndicatorSection(), kColOn);
    search().setText("*");
    EXPECT_EQ(names().front(), "NOTES");
    clickHeader(kColOn);
    EXPECT_EQ(names().back(), "NOTES") << "the other way round";
    run(L"LAYOUT S Layout1\n");
    idle();
    EXPECT_EQ(header.sortIndicatorSection(), kColOn) << "another set of columns";
    EXPECT_EQ(names().back(), "NOTES");
}

/// The grid by itself: whatever a row held, it is the given layer's afterwards.
TEST(LayerList, ARowIsMadeAnewFromAnyLayer) {
    needApplication();
    LayerEntries entries;
    KvLayerData* const first = entries.add(L"First", nullptr);
    KvLayerData* const second = entries.add(L"Second", nullptr);
    KvLayerListCtrl list;
    list.rows().setHeaders(std::vector<QString>(kModelColumnCount));
    list.rows().setLayers({entries.entries.front().get(), first});
    const auto name = [&](int row) { return list.rows().index(row, kColName).data().toString(); };
    ASSERT_EQ(name(1), "First");
    list.SetRowItemData(1, second);
    EXPECT_EQ(name(1), "Second");
    EXPECT_EQ(list.FindLayerData(second), 1);
    EXPECT_EQ(list.FindLayerData(first), -1);
    {
        const HxDbObjectPointer<HxDbLayerTableRecord> record(second->layerId(), HxDb::kForWrite);
        record->setName(L"Renamed");
    }
    EXPECT_EQ(name(1), "Second") << "cells are kept";
    list.SetRowItemData(1, second);
    EXPECT_EQ(name(1), "Renamed");
    list.SetRowItemData(5, first);
    list.SetRowItemData(0, nullptr);
    EXPECT_EQ(name(0), "0");
}

}  // namespace
}  // namespace korvex::test
