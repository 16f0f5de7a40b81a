// The classic dialog's object: what it loads into the engine and writes out of it, its order.
#include "tests/module/layer_states/layer_states_fixture.h"

#include "dialogs/classic_layer_dialog.h"
#include "dialogs/classic_layer_functions.h"

#include "frame/util/result_buffers.h"

using korvex::toUtf8;
using namespace korvex::test;

namespace {

using ClassicDialog = LayerStatesTest;

resbuf* flagsOf(resbuf* list) {
    resbuf* found = nullptr;
    kv_Associate(list, 70, &found);
    return found;
}

}  // namespace

TEST_F(ClassicDialog, SortsPunctuationDigitsLettersWithoutCase) {
    EXPECT_EQ(strcmpSort(L"Layer1", L"layer1"), 0);
    const wchar_t* const order[] = {L"\u9000", L"",   L"_X", L"0",      L"10",
                                    L"A",      L"a1", L"z",  L"\u00E4", L"\u4E00"};
    // the empty name is the beginning of every other, whatever those sort as
    EXPECT_EQ(strcmpSort(L"", L"\u9000"), -1);
    for (std::size_t i = 2; i + 1 < std::size(order); ++i) {
        EXPECT_EQ(strcmpSort(order[i], order[i + 1]), -1) << toUtf8(order[i]) << toUtf8(order[i + 1]);
        EXPECT_EQ(strcmpSort(order[i + 1], order[i]), 1);
        EXPECT_EQ(strcmpSort(order[0], order[i]), -1) << toUtf8(order[i]);
    }
}

TEST_F(ClassicDialog, FindsPlotStylesOfDrawingsWithNames) {
    SmallDrawing styled = drawing();
    styled.useNamedPlotStyles();
    openDrawing(styled);
    change(L"WALLS", [](auto& l) { l.setPlotStyleName(L"Screened"); });
    zds_name walls = {0, 0};
    ASSERT_EQ(hxdbTblObjName(L"LAYER", L"WALLS", walls), RTNORM);
    const ListPtr list(hxdbEntGet(walls));
    EXPECT_EQ(GetPlotStyleName(list.get()), L"Screened");
    EXPECT_EQ(GetPlotStyleName(nullptr), L"BYCOLOR");
    write("by colour.dxf", drawing().text());
    open("by colour.dxf");
    EXPECT_EQ(GetPlotStyleName(list.get()), L"BYCOLOR");
}

TEST_F(ClassicDialog, FindsFiltersOfEarlierVersions) {
    openDrawing(drawing());
    EXPECT_EQ(FindLayerFilter(L"walls"), nullptr);
    {
        const HxDbObjectPointer<HxDbDictionary> root(database().namedObjectsDictionaryId(), HxDb::kForWrite);
        HxDbObjectId id;
        auto* const filters = new HxDbDictionary;
        ASSERT_EQ(root->setAt(L"VREX_LAYERFILTERS", filters, id), Hx::eOk);
        auto* const filter = new HxDbXrecord;
        ASSERT_EQ(filters->setAt(L"walls", filter, id), Hx::eOk);
        filter->close();
        filters->close();
    }
    const ListPtr found(FindLayerFilter(L"WALLS"));
    EXPECT_NE(found, nullptr);
    EXPECT_EQ(FindLayerFilter(L"doors"), nullptr);
    EXPECT_EQ(FindLayerFilter(nullptr), nullptr);
}

TEST_F(ClassicDialog, LoadsLayersAndWhatTheViewportOverrides) {
    openDrawing(drawing());
    CVrexLayerP inModel;
    inModel.InitLayerStateInfo();
    EXPECT_EQ(inModel.layerStates().GetLayerResbufMap().size(), 5U) << "without a viewport, too";
    EXPECT_NE(inModel.layerStates().FindLayerResbuf(L"WALLS"), nullptr);
    EXPECT_EQ(inModel.layerStates().FindVpLayerInfo(L"WALLS"), nullptr);
    goToLayout();
    inViewport(L"Freeze", L"NOTES");
    change(L"WALLS", [&](auto& l) { l.setColor(HxCmColor::byIndex(1), hxdbGetCurVportId(&database())); });
    CVrexLayerP dialog;
    dialog.InitLayerStateInfo();
    const CKvVpLayerInfo* const walls = dialog.layerStates().FindVpLayerInfo(L"WALLS");
    ASSERT_NE(walls, nullptr);
    EXPECT_EQ(walls->GetVpLayerColor().colorIndex(), 1);
    EXPECT_EQ(walls->GetVpLayerLineTypeName(), L"Continuous");
    EXPECT_EQ(walls->GetVpLayerLineWeight(), HxDb::kLnWtByLwDefault);
    EXPECT_TRUE(walls->GetVpLayerTransparency().isSolid());
    EXPECT_EQ(dialog.IsLayerVpLayerFrozen(L"notes"), 1);
    EXPECT_EQ(dialog.IsLayerVpLayerFrozen(L"WALLS"), 0);
    EXPECT_EQ(dialog.IsLayerVpLayerFrozen(L"none"), 0);
    EXPECT_EQ(CKvLayerStateManDlg::IsLayerNameVpLayerFrozen(nullptr, L"NOTES"), 0);
}

TEST_F(ClassicDialog, WritesOnlyListsThatDiffer) {
    openDrawing(drawing());
    saveAs(database(), path("states.dxf"));
    CVrexLayerP dialog;
    dialog.InitLayerStateInfo();
    for (const wchar_t* const name : {L"0", L"WALLS", L"NOTES"}) {
        ASSERT_NE(dialog.layerStates().FindLayerResbuf(name), nullptr);
    }
    EXPECT_EQ(dialog.UpdateLayerStateToLayerList(), 0);
    EXPECT_FALSE(database().isModified());
    flagsOf(dialog.layerStates().FindLayerResbuf(L"WALLS"))->resval.rint = 4;
    resbuf* const made =
        hxutBuildList(RTDXF0, L"LAYER", 100, L"AcDbSymbolTableRecord", 100, L"AcDbLayerTableRecord", 2,
                      L"MADE", 70, 4, 62, 3, 6, L"Continuous", 0);
    dialog.layerStates().AddLayerResbuf(L"MADE", made);
    EXPECT_EQ(dialog.UpdateLayerStateToLayerList(), 2);
    EXPECT_EQ(now(L"WALLS").flags & HxLyState::kLayerLocked, HxLyState::kLayerLocked);
    EXPECT_EQ(now(L"MADE").colorIndex, 3);
    EXPECT_EQ(dialog.UpdateLayerStateToLayerList(), 0) << "written once";
}

TEST_F(ClassicDialog, ListsWhatTheFilterLetsThrough) {
    openDrawing(drawing());
    run(L"-LAYER\nOFF\nNOTES\n\n");
    CVrexLayerP dialog;
    dialog.InitLayerStateInfo();
    dialog.FillLayerList();
    ASSERT_EQ(dialog.rowCount(), 5);
    EXPECT_EQ(dialog.text(0, CVrexLayerP::kNameColumn), L"0");
    EXPECT_EQ(dialog.FindLayerNameToRow(L"walls"), 4);
    dialog.sortBy(CVrexLayerP::kNameColumn);
    EXPECT_EQ(dialog.FindLayerNameToRow(L"walls"), 0) << "the other way round";
    dialog.sortBy(CVrexLayerP::kOnColumn);
    EXPECT_EQ(dialog.FindLayerNameToRow(L"NOTES"), 0) << "by its picture";
    dialog.setFilter(L"s", false);
    EXPECT_EQ(dialog.rowCount(), 4);
    dialog.setFilter(L"s", true);
    EXPECT_EQ(dialog.rowCount(), 1);
    dialog.setName(L" 0 ");
    dialog.OnKillfocusEditName();
    EXPECT_EQ(dialog.selectedRow(), 0);
    dialog.OnClose();
    EXPECT_EQ(dialog.layerStates().GetLayerResbufMap().size(), 0U);
}
