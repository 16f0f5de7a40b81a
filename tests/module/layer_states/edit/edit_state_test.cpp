// Editing the layers of a state, with mouse, keys and answers of a script.
#include "tests/module/layer_states/edit/edit_state_fixture.h"

#include "layer_states/edit/edit_layer_state_list.h"
#include "manager_ui/cells/cell_roles.h"

#include <QAbstractButton>
#include <QScreen>
#include <QScrollBar>

namespace korvex::test {
namespace {

using EditState = EditStateTest;
constexpr wchar_t kList[] = L"IDC_LAYERSTATE_LIST";

std::wstring click(const std::wstring& cell, const std::wstring& how = L"") {
    return std::wstring(L"CLICK ") + kList + L" " + how + L" \"" + cell + L"\"\n";
}
std::wstring press(const std::wstring& keys) { return std::wstring(L"PRESS ") + kList + L" " + keys + L"\n"; }
/// Selects rows by their names.
std::wstring select(const std::vector<std::wstring>& layers) {
    std::wstring actions;
    for (const std::wstring& layer : layers) {
        actions += click(layer + L",Name", actions.empty() ? L"" : L"ctrl");
    }
    return actions;
}

TEST_F(EditState, SelectedRowsGetWhatTheClickedOneIsNot) {
    original(L"NOTES").SetLayerFlag(HxLyState::kLayerOff | HxLyState::kLayerPlots);
    edit(select({L"GLASS", L"NOTES", L"WALLS"}) + click(L"NOTES,On") + click(L"GLASS,Lock") +
         click(L"WALLS,Plot") + click(L"NOTES,New VP Freeze"));
    EXPECT_EQ(failures, Lines());
    EXPECT_EQ(result, IDOK);
    for (const wchar_t* const name : {L"GLASS", L"NOTES", L"WALLS"}) {
        EXPECT_EQ(entry(name).GetLayerFlag(), HxLyState::kLayerLocked | HxLyState::kLayerNewViewportFrozen)
            << CStdStr<char>(entry(name).GetLayerName().begin(), entry(name).GetLayerName().end());
    }
    EXPECT_EQ(entry(L"SPARE").GetLayerFlag(), HxLyState::kLayerPlots);
    EXPECT_EQ(namesOf(edited), L"WALLS SPARE* PLAN|DOORS NOTES GLASS ") << "the state keeps its order";
    edit(click(L"WALLS,On"));
    EXPECT_TRUE(has(L"WALLS", HxLyState::kLayerOff));
}

TEST_F(EditState, TheCurrentLayerIsNotFrozen) {
    const std::wstring shown =
        edit(select({L"NOTES", L"SPARE", L"WALLS"}) + click(L"WALLS,Freeze") + L"OK\n");
    EXPECT_TRUE(
        contains(shown, L"KORVEX: Layer \"SPARE\" is the current layer of the state and was not frozen"));
    EXPECT_TRUE(has(L"NOTES", HxLyState::kLayerFrozen));
    EXPECT_TRUE(has(L"WALLS", HxLyState::kLayerFrozen));
    EXPECT_FALSE(has(L"SPARE", HxLyState::kLayerFrozen));
    state = std::move(edited);
    original(L"SPARE").SetLayerFlag(HxLyState::kLayerFrozen);
    edit(click(L"SPARE,Freeze"));
    EXPECT_FALSE(has(L"SPARE", HxLyState::kLayerFrozen)) << "a current layer that is frozen can be thawed";
    EXPECT_EQ(failures, Lines());
}

TEST_F(EditState, CancelLeavesTheStateAndTheDrawingAsTheyWere) {
    const std::string before = fileNow();
    const std::wstring names = namesOf(state);
    run(L"EDIT\n" + select({L"GLASS", L"WALLS"}) + click(L"WALLS,On") + click(L"WALLS,Color") +
        L"PRESS IDC_COLOR_TEXT Ctrl+A\nTYPE IDC_COLOR_TEXT red\nCLICK IDOK\n" + press(L"Del") +
        click(L"NOTES,Name", L"double") + L"CLICK IDC_LAYERSTATE_ADD\nPRESS IDC_SELLAYER_LIST Ctrl+A\n" +
        L"CLICK IDOK\nPRESS window Esc\n");
    EXPECT_EQ(failures, Lines());
    EXPECT_EQ(result, IDCANCEL);
    EXPECT_EQ(namesOf(state), names);
    EXPECT_EQ(original(L"WALLS").GetLayerFlag(), HxLyState::kLayerPlots);
    EXPECT_EQ(original(L"WALLS").GetColorIndex(), 7);
    EXPECT_EQ(fileNow(), before);
}

TEST_F(EditState, ADoubleClickMakesCurrentWhatCanBe) {
    original(L"GLASS").SetLayerFlag(HxLyState::kLayerFrozen);
    std::wstring shown =
        edit(click(L"GLASS,Name", L"double") + L"OK\n" + click(L"PLAN|DOORS,Name", L"double") + L"OK\n");
    EXPECT_TRUE(contains(shown, L"Layer \"GLASS\" is frozen in the state and cannot be made current"));
    EXPECT_TRUE(contains(shown, L"Layer \"PLAN|DOORS\" belongs to an external reference"));
    EXPECT_EQ(current, L"SPARE");
    shown = edit(click(L"NOTES,Name", L"double") + L"LOOK IDC_LAYERSTATE_LIST\n");
    EXPECT_EQ(current, L"NOTES");
    EXPECT_EQ(namesOf(edited), L"WALLS SPARE PLAN|DOORS NOTES* GLASS ");
    edit(click(L"WALLS,Name") + press(L"Enter"));
    EXPECT_EQ(current, L"WALLS");
    edit(click(L"WALLS,Lock", L"double"));
    EXPECT_EQ(current, L"SPARE") << "only on names";
    EXPECT_EQ(failures, Lines());
}

TEST_F(EditState, PickersGiveTheirChoiceToAllSelectedRows) {
    original(L"WALLS").SetTransparency(127);
    const std::wstring shown = edit(
        select({L"NOTES", L"WALLS"}) + click(L"WALLS,Color") +
        L"CLICK IDC_COLOR_TABS True Color\nPRESS IDC_COLOR_RGB Ctrl+A\nTYPE IDC_COLOR_RGB 10,20,30\nCLICK "
        L"IDOK\n" +
        click(L"NOTES,Lineweight") + L"CHOOSE IDC_LW_LIST \"0.70 mm\"\nCLICK IDOK\n" +
        click(L"WALLS,Transparency") +
        L"LOOK IDC_TRANS_VALUE\nPRESS IDC_TRANS_VALUE Ctrl+A\nTYPE IDC_TRANS_VALUE 30\nCLICK IDOK\n" +
        click(L"WALLS,Linetype") +
        L"LOOK IDC_LINETYPE_LIST\nCLICK IDC_LINETYPE_LOAD\nCLICK IDC_LINETYPE_AVAILABLE 2\nCLICK IDOK\n" +
        L"CLICK IDC_LINETYPE_LIST 2\nCLICK IDOK\n");
    EXPECT_EQ(failures, Lines());
    EXPECT_TRUE(contains(shown, L"\"50 %\"")) << "alpha 127";
    EXPECT_LT(shown.find(L"(selected)", shown.find(L"Continuous")), shown.find(L"IDC_LINETYPE_LOAD"));
    for (const wchar_t* const name : {L"NOTES", L"WALLS"}) {
        EXPECT_EQ(entry(name).GetRGBColor(), 10 | 20 << 8 | 30 << 16);
        EXPECT_EQ(entry(name).GetLineWeight(), 70);
        EXPECT_EQ(entry(name).GetTransparency(), 178) << "of which 30 per cent are missing";
        EXPECT_NE(entry(name).GetLineType(), L"Continuous");
        EXPECT_FALSE(entry(name).GetLineType().empty());
    }
    EXPECT_EQ(entry(L"GLASS").GetRGBColor(), -1);
    state = std::move(edited);
    edit(click(L"WALLS,Color") + L"CLICK IDC_COLOR_TABS Index Color\nPRESS IDC_COLOR_TEXT Ctrl+A\n" +
         L"TYPE IDC_COLOR_TEXT red\nCLICK IDOK\n");
    EXPECT_EQ(entry(L"WALLS").GetColorIndex(), 1);
    EXPECT_EQ(entry(L"WALLS").GetRGBColor(), -1) << "an index takes the true colour away";
    edit(click(L"WALLS,Color") +
         L"CLICK IDC_COLOR_TABS Color Books\nCLICK IDC_COLOR_BOOK_COLORS 3\nCLICK IDOK\n");
    EXPECT_NE(entry(L"WALLS").GetColorBook().find(L'$'), std::wstring::npos);
    EXPECT_GE(entry(L"WALLS").GetRGBColor(), 0);
    edit(click(L"WALLS,Color") + L"CLICK IDCANCEL\n" + click(L"WALLS,Lineweight") + L"CLICK IDCANCEL\n");
    EXPECT_EQ(entry(L"WALLS").GetRGBColor(), 10 | 20 << 8 | 30 << 16);
}

TEST_F(EditState, PlotStylesThatFollowColorsCannotBeChosen) {
    const std::wstring shown =
        edit(click(L"WALLS,Plot Style") + press(L"Space Enter") + L"LOOK IDC_LAYERSTATE_COUNT\n");
    EXPECT_TRUE(contains(shown, L"Layers: 5, selected: 1")) << "the click selects its row";
    EXPECT_EQ(failures, Lines());
}

class EditStateWithStyles : public EditStateTest {
    void prepare(SmallDrawing& drawing) override { drawing.useNamedPlotStyles(); }
};

TEST_F(EditStateWithStyles, PlotStylesAreChosenAmongThoseThatTheDrawingHas) {
    original(L"WALLS").SetPlotStyle(L"Ghost");
    const std::wstring shown = edit(click(L"WALLS,Plot Style") + L"LOOK IDC_PLOTSTYLE_LIST\n" +
                                    L"CHOOSE IDC_PLOTSTYLE_LIST Screened\nCLICK IDOK\n");
    EXPECT_TRUE(contains(shown, L"Ghost")) << "one that the drawing lacks is offered";
    EXPECT_EQ(entry(L"WALLS").GetPlotStyle(), L"Screened");
    EXPECT_EQ(failures, Lines());
}

TEST_F(EditState, LayersOfTheDrawingAreAdded) {
    change(L"VIEWS", [](HxDbLayerTableRecord& record) {
        record.setIsLocked(true);
        record.setColor(HxCmColor::byRgb(1, 2, 3));
        record.setDescription(L"What is looked through");
    });
    const std::wstring shown =
        edit(press(L"Insert") + L"LOOK IDC_SELLAYER_LIST\nCLICK IDC_SELLAYER_LIST \"VIEWS\"\nCLICK IDOK\n" +
             click(L"VIEWS,Plot") + L"LOOK IDC_LAYERSTATE_COUNT\n");
    EXPECT_TRUE(contains(shown, L"VIEWS | What is looked through"));
    EXPECT_FALSE(contains(shown, L"| NOTES |")) << "the state holds it";
    EXPECT_TRUE(contains(shown, L"Layers: 6, selected: 1"));
    EXPECT_EQ(namesOf(edited), L"WALLS SPARE* PLAN|DOORS NOTES GLASS VIEWS ");
    EXPECT_EQ(entry(L"VIEWS").GetLayerFlag(), HxLyState::kLayerLocked);
    EXPECT_EQ(entry(L"VIEWS").GetRGBColor(), 1 | 2 << 8 | 3 << 16);
    EXPECT_EQ(entry(L"VIEWS").GetLayerIndex(), 5);
    EXPECT_EQ(failures, Lines());
}

TEST_F(EditState, LayersToAddSortByTheirDescriptions) {
    change(L"0", [](HxDbLayerTableRecord& record) { record.setDescription(L"Sheet 10"); });
    change(L"VIEWS", [](HxDbLayerTableRecord& record) { record.setDescription(L"sheet 9"); });
    const std::wstring shown =
        edit(press(L"Insert") + L"CLICK IDC_SELLAYER_LIST/header Description\nLOOK IDC_SELLAYER_LIST\n"
                                L"PRESS IDC_SELLAYER_LIST Home\nCLICK IDOK\n");
    EXPECT_TRUE(contains(shown, L"1: VIEWS | sheet 9\n  2: 0 | Sheet 10")) << toUtf8(shown);
    EXPECT_EQ(namesOf(edited), L"WALLS SPARE* PLAN|DOORS NOTES GLASS VIEWS ");
    EXPECT_EQ(failures, Lines());
}

TEST_F(EditState, ADoubleClickAddsALayer) {
    edit(press(L"Insert") + L"CLICK IDC_SELLAYER_LIST double \"0\"\n");
    EXPECT_EQ(namesOf(edited), L"WALLS SPARE* PLAN|DOORS NOTES GLASS 0 ");
    EXPECT_EQ(failures, Lines());
}

TEST_F(EditState, AddTellsWhenTheStateHoldsAll) {
    const std::wstring shown = edit(L"CLICK IDC_LAYERSTATE_ADD\nPRESS IDC_SELLAYER_LIST Ctrl+A\nCLICK IDOK\n"
                                    L"CLICK IDC_LAYERSTATE_ADD\nOK\n");
    EXPECT_TRUE(contains(shown, L"KORVEX: The state holds all layers of the drawing already. [OK] <OK>"));
    EXPECT_EQ(edited->GetSize(), 7) << "0 and VIEWS came";
    edit(L"CLICK IDC_LAYERSTATE_ADD\nPRESS focus Ctrl+A\nCLICK IDCANCEL\n");
    EXPECT_EQ(edited->GetSize(), 5);
    EXPECT_EQ(failures, Lines());
}

TEST_F(EditState, RowsAreRemovedAlsoTheCurrentOne) {
    edit(L"CLICK IDC_LAYERSTATE_LIST/header Name\n" + select({L"WALLS", L"SPARE", L"GLASS"}) +
         L"CLICK IDC_LAYERSTATE_DEL\n");
    EXPECT_EQ(namesOf(edited), L"PLAN|DOORS NOTES ");
    EXPECT_EQ(current, L"");
    EXPECT_EQ(entry(L"NOTES").GetLayerIndex(), 1);
    const std::wstring shown = edit(press(L"Ctrl+A") + press(L"Del") + press(L"Del Space Enter") +
                                    L"LOOK IDC_LAYERSTATE_DEL\nPRESS IDC_LAYERSTATE_LIST Insert\n"
                                    L"PRESS IDC_SELLAYER_LIST Ctrl+A\nCLICK IDOK\n");
    EXPECT_TRUE(contains(shown, L"disabled")) << "nothing is selected";
    EXPECT_EQ(edited->GetSize(), 5) << "an empty state takes the drawing's layers";
    EXPECT_EQ(failures, Lines());
}

TEST_F(EditState, HeadersSortByNaturalOrderAndKeepTheSelection) {
    original(L"WALLS").SetLayerName(L"L10");
    original(L"NOTES").SetLayerName(L"l9");
    original(L"GLASS").SetLineWeight(200);
    const std::wstring shown =
        edit(click(L"l9,Name") +
             L"LOOK IDC_LAYERSTATE_LIST\nCLICK IDC_LAYERSTATE_LIST/header Name\n"
             L"LOOK IDC_LAYERSTATE_LIST\nCLICK IDC_LAYERSTATE_LIST/header Lineweight\n"
             L"CLICK IDC_LAYERSTATE_LIST/header Lineweight\nLOOK IDC_LAYERSTATE_LIST\n" +
             press(L"Right Space"));
    const auto at = [&](const wchar_t* row, std::size_t from = 0) { return shown.find(row, from); };
    EXPECT_LT(at(L"1: GLASS"), at(L"2: l9"));
    EXPECT_LT(at(L"2: l9"), at(L"3: L10"));
    EXPECT_LT(at(L"5: SPARE"), at(L"1: SPARE")) << "the other way round";
    EXPECT_NE(at(L"1: GLASS", at(L"1: SPARE")), std::wstring::npos) << "the heaviest first";
    EXPECT_TRUE(has(L"l9", HxLyState::kLayerOff));
    EXPECT_FALSE(has(L"GLASS", HxLyState::kLayerOff));
    EXPECT_EQ(failures, Lines());
}

TEST_F(EditState, EachColumnSortsByWhatItShows) {
    original(L"WALLS").SetLineType(L"Dashed");
    original(L"NOTES").SetLineType(L"DASHED");
    original(L"GLASS").SetLineType(L"Wavy");
    original(L"SPARE").SetLayerFlag(HxLyState::kLayerOff);
    original(L"NOTES").SetLayerFlag(HxLyState::kLayerLocked);
    original(L"WALLS").SetTransparency(100);
    original(L"NOTES").SetRGBColor(0);
    const auto sorted = [this](const std::wstring& header) {
        const std::wstring shown =
            edit(L"CLICK IDC_LAYERSTATE_LIST/header \"" + header + L"\"\nLOOK IDC_LAYERSTATE_LIST\n");
        std::wstring order;
        for (int row = 1; row <= 5; ++row) {
            order += shown[shown.find(L"  " + std::to_wstring(row) + L": ") + 5];
        }
        return order;
    };
    EXPECT_EQ(sorted(L"Linetype"), L"PSNWG") << "the same name is the same in any case";
    EXPECT_EQ(sorted(L"On"), L"SGNPW") << "what is off first, as in the layer manager";
    EXPECT_EQ(sorted(L"Lock"), L"GPSWN");
    EXPECT_EQ(sorted(L"Transparency"), L"GNPSW");
    EXPECT_EQ(sorted(L"Color"), L"NGPSW") << "true colours first";
    EXPECT_EQ(failures, Lines());
}

TEST_F(EditState, TheFocusGoesOnAfterAddingAndRemoving) {
    edit(click(L"NOTES,Name") + press(L"Right Right Del Shift+Space") + press(L"Space"));
    EXPECT_TRUE(has(L"PLAN|DOORS", HxLyState::kLayerFrozen))
        << "the row that took the place, in the same column";
    edit(click(L"GLASS,Name") + press(L"Right Del Space"));
    EXPECT_TRUE(has(L"NOTES", HxLyState::kLayerOff)) << "the new first one";
    edit(click(L"WALLS,Lock") + press(L"Del Space"));
    EXPECT_TRUE(has(L"SPARE", HxLyState::kLayerLocked)) << "the last one that is left";
    const std::wstring shown =
        edit(press(L"Insert") + L"LOOK IDOK\nLOOK IDC_SELLAYER_LIST\nPRESS IDC_SELLAYER_LIST Ctrl+A\n"
                                L"CLICK IDOK\nPRESS focus Up\nPRESS focus Right Space\n");
    EXPECT_TRUE(contains(shown, L"\"OK\", disabled")) << "nothing is chosen yet";
    EXPECT_TRUE(contains(shown, L"  1: 0 | "));
    EXPECT_TRUE(has(L"0", HxLyState::kLayerOff)) << "the list has the keyboard, the row added last the focus";
    EXPECT_FALSE(has(L"VIEWS", HxLyState::kLayerOff));
    EXPECT_EQ(failures, Lines());
}

TEST_F(EditState, CellsShowMarksIconsAndSwatches) {
    original(L"NOTES").SetRGBColor(255);
    original(L"NOTES").SetLayerFlag(HxLyState::kLayerOff | HxLyState::kLayerFrozen | HxLyState::kLayerLocked |
                                    HxLyState::kLayerNewViewportFrozen);
    const auto told = [](const QTableView* view, int row) {
        QStringList texts;
        for (const int column :
             {kStateColOn, kStateColFreeze, kStateColLock, kStateColPlot, kStateColNewVpFreeze}) {
            texts << view->model()->index(row, column).data(Qt::AccessibleTextRole).toString();
        }
        return texts.join(", ");
    };
    whileOpen = [told](CKvEditLayerStateDlg& dialog) {
        const auto* const view = dialog.findChild<QTableView*>("IDC_LAYERSTATE_LIST");
        const auto at = [view](int row, int column) { return view->model()->index(row, column); };
        const auto isMarked = [&](int row) {
            return !at(row, kStateColName).data(kRolePayload).value<KvMarkItemData>().mark.isNull();
        };
        EXPECT_EQ(at(3, kStateColName).data(), "SPARE");
        EXPECT_TRUE(isMarked(3));
        EXPECT_FALSE(isMarked(0));
        EXPECT_EQ(at(3, kStateColName).data(Qt::AccessibleTextRole), "SPARE, current layer");
        EXPECT_EQ(at(1, kStateColColor).data(kRolePayload).value<LayerListColorItemData>().color.red(), 255);
        EXPECT_FALSE(at(0, kStateColFreeze).data(Qt::DecorationRole).value<QIcon>().isNull());
        EXPECT_FALSE(dialog.windowIcon().isNull());
        EXPECT_TRUE(view->horizontalScrollBar()->maximum() == 0 ||
                    dialog.width() >= dialog.screen()->availableGeometry().width() - 24)
            << "as wide as all columns, or as the screen allows";
        EXPECT_EQ(told(view, 0), "On, Thawed, Unlocked, Plots, Thawed in new viewports");
        EXPECT_EQ(told(view, 1), "Off, Frozen, Locked, Does not plot, Frozen in new viewports");
        for (const char* const id : {"IDC_LAYERSTATE_ADD", "IDC_LAYERSTATE_DEL"}) {
            const auto* const button = dialog.findChild<QAbstractButton*>(id);
            EXPECT_FALSE(button->icon().isNull()) << id;
            EXPECT_TRUE(button->text().isEmpty()) << id;
        }
        for (int column = kStateColOn; column < kStateColumnCount; ++column) {
            EXPECT_EQ(at(0, column).data(kRoleGreyed).toBool(), column == kStateColPlotStyle);
            EXPECT_FALSE(at(0, column).data(kRoleOverridden).toBool());
        }
    };
    edit(L"DELAY 50\n");
    EXPECT_EQ(failures, Lines());
}

TEST_F(EditState, KeysClickTheCellWithTheFocus) {
    edit(click(L"NOTES,Name") + press(L"Right Right Right Shift+Down") + press(L"Space") +
         press(L"Left Enter"));
    EXPECT_TRUE(has(L"NOTES", HxLyState::kLayerLocked));
    EXPECT_TRUE(has(L"PLAN|DOORS", HxLyState::kLayerLocked));
    EXPECT_FALSE(has(L"GLASS", HxLyState::kLayerLocked));
    edit(click(L"NOTES,Lineweight", L"ctrl") + press(L"Enter") +
         L"CHOOSE IDC_LW_LIST \"2.11 mm\"\nCLICK IDOK\n");
    EXPECT_EQ(entry(L"NOTES").GetLineWeight(), 211);
    edit(press(L"s") + press(L"Right Space"));
    EXPECT_TRUE(has(L"SPARE", HxLyState::kLayerOff)) << "a letter goes to a name";
    EXPECT_EQ(failures, Lines());
}

TEST_F(EditState, TheListHasNoRowsOfEntriesThatWereTaken) {
    CKvEditLayerStateListCtrl list;
    list.SetLayerStateInfoArray(CloneLayerStateInfoArray(state.get()));
    EXPECT_TRUE(list.FindLayerIsEqual(L"plan|doors"));
    const KvLayerStateEntries taken(list.takeLayerStateInfoArray());
    EXPECT_EQ(taken->GetSize(), 5);
    EXPECT_EQ(list.rows().rowCount(), 0);
    EXPECT_FALSE(list.FindLayerIsEqual(L"PLAN|DOORS"));
    EXPECT_EQ(list.takeLayerStateInfoArray(), nullptr);
}

TEST_F(EditState, RemovingRowsLeavesTheOthersInPlace) {
    constexpr int kRows = 200;
    auto* const many = new KvLayerStateInfoArray;
    for (int i = 0; i < kRows; ++i) {
        HxLyStateEntry entry;
        entry.layer = L"L" + std::to_wstring(i);
        many->Add(new CKvLayerStateInfo(entry, i, false));
    }
    CKvEditLayerStateListCtrl list;
    list.SetLayerStateInfoArray(many);
    list.resize(800, 300);
    list.show();
    QCoreApplication::processEvents();
    list.verticalScrollBar()->setValue(100);
    list.selectRowNumbers({103, 105});
    list.removeSelected();
    EXPECT_EQ(list.verticalScrollBar()->value(), 100);
    EXPECT_EQ(list.currentIndex().row(), 103);
    EXPECT_EQ(list.rows().rowCount(), kRows - 2);
}

TEST_F(EditState, LineweightsAreShownInTheUsersUnits) {
    original(L"WALLS").SetLineWeight(25);
    original(L"NOTES").SetLineWeight(-1);
    original(L"GLASS").SetLineWeight(-2);
    std::wstring shown = edit(L"LOOK IDC_LAYERSTATE_LIST\n");
    for (const wchar_t* const text : {L"| 0.25 mm |", L"| ByLayer |", L"| ByBlock |", L"| Default |"}) {
        EXPECT_TRUE(contains(shown, text)) << QString::fromWCharArray(text).toStdString();
    }
    EXPECT_TRUE(contains(shown, L"SPARE")) << "whose row says that it is current";
    run(L"LWUNITS 0\n");
    shown = edit(L"LOOK IDC_LAYERSTATE_LIST\n");
    EXPECT_TRUE(contains(shown, L"| 0.010\" |"));
    run(L"LWUNITS 1\n");
}

TEST_F(EditState, TellsWhoseLayersTheyAreAndWhatTheButtonsDo) {
    std::wstring shown = edit(L"LOOK\n");
    EXPECT_TRUE(contains(shown, L"Edit Layer State: Evening"))
        << QString::fromStdWString(shown).toStdString();
    shown = edit(L"PRESS IDC_LAYERSTATE_LIST Tab\nLOOK focus\nPRESS focus Tab\nLOOK focus\nPRESS focus Tab\n"
                 L"LOOK focus\nPRESS focus Tab\nLOOK focus\n");
    EXPECT_LT(shown.find(L"\"Help\""), shown.find(L"\"OK\""));
    EXPECT_LT(shown.find(L"\"OK\""), shown.find(L"\"Cancel\""));
    EXPECT_LT(shown.find(L"\"Cancel\""), shown.find(L"Add layers of the drawing to the state (Ins)"));
    EXPECT_TRUE(contains(shown, L"(Ins)"));
    EXPECT_EQ(failures, Lines());
    EXPECT_EQ(CloneLayerStateInfoArray(nullptr), nullptr);
    CKvEditLayerStateDlg empty(nullptr, nullptr, nullptr, L"");
    EXPECT_EQ(empty.GetCloneLayerStateInfoArray(), nullptr);
}

}  // namespace
}  // namespace korvex::test
