// The layer manager as a dialog: everything in one transaction, kept by OK, taken back by Cancel.
#include "tests/module/manager_ui/palette_fixture.h"

#include "manager_ui/grid/layer_column.h"

namespace korvex::test {
namespace {

class ManagerDialog : public PaletteTest {
protected:
    std::wstring dialog(const std::wstring& actions) { return run(L"CLASSICLAYER\n" + actions); }
};

/// One of each kind of edit.
constexpr wchar_t kEdits[] =
    L"CLICK IDC_LIST_LAYERS_LIST \"WALLS,Freeze\"\n"
    L"CLICK IDC_LIST_LAYERS_LIST ctrl \"NOTES,Name\"\n"
    L"CLICK IDC_LIST_LAYERS_LIST \"NOTES,Lock\"\n"
    L"CLICK IDC_LIST_LAYERS_LIST \"NOTES,Color\"\n"
    L"PRESS IDC_COLOR_TEXT Ctrl+A\nTYPE IDC_COLOR_TEXT green\nCLICK IDOK\n"
    L"CLICK IDC_LIST_LAYERS_LIST \"NOTES,Linetype\"\nCLICK IDC_LINETYPE_LOAD\n"
    L"CLICK IDC_LINETYPE_AVAILABLE 2\nCLICK IDOK\nCLICK IDC_LINETYPE_LIST 2\nCLICK IDOK\n"
    L"CLICK IDC_LIST_LAYERS_LIST \"TOP,Name\"\nPRESS IDC_LIST_LAYERS_LIST F2\n"
    L"PRESS focus Ctrl+A\nTYPE focus Summit\nPRESS focus Enter\n"
    L"CLICK IDC_LIST_LAYERS_LIST double \"OUTER,Name\"\n"
    L"CLICK IDC_BUTTON_NEW\nPRESS focus Enter\n"
    L"CLICK IDC_BUTTON_NEW\nTYPE focus Gone\nPRESS focus Enter\n"
    L"CLICK IDC_BUTTON_DELETE\n"
    L"CLICK IDC_LIST_LAYERS_LIST \"MIDDLE,Name\"\n"
    L"CLICK IDC_LIST_LAYERS_LIST right \"MIDDLE,Name\"\nCHOOSE menu \"New Group Filter of Selection\"\n"
    L"PRESS focus Enter\n";

TEST_F(ManagerDialog, CancelLeavesNoByteChanged) {
    const QByteArray before = bytes();
    dialog(std::wstring(kEdits) + L"CLICK IDCANCEL\n");
    EXPECT_EQ(failures, Lines());
    EXPECT_EQ(bytes(), before);
    EXPECT_EQ(variable(L"CLAYER"), L"\"SPARE\"");
    dialog(L"CLICK IDC_LIST_LAYERS_LIST \"WALLS,Lock\"\nPRESS window Esc\n");
    EXPECT_EQ(bytes(), before);
}

TEST_F(ManagerDialog, OkIsOneUndoStep) {
    const QByteArray before = bytes();
    dialog(std::wstring(kEdits) + L"CLICK IDOK\n");
    EXPECT_EQ(failures, Lines());
    EXPECT_EQ(frozen(), Names{L"WALLS"});
    EXPECT_TRUE(hasLayer(L"Summit"));
    EXPECT_TRUE(hasLayer(L"Layer1"));
    EXPECT_FALSE(hasLayer(L"Gone"));
    EXPECT_EQ(variable(L"CLAYER"), L"\"OUTER\"");
    EXPECT_NE(bytes(), before);
    EXPECT_TRUE(contains(run(L"U\n"), L"CLASSICLAYER"));
    EXPECT_EQ(bytes(), before);
}

TEST_F(ManagerDialog, PaletteFollowsWhenTheDialogIsOver) {
    showPalette();
    dialog(L"CLICK KvLayerPropManagerDlg/IDC_LIST_LAYERS_LIST \"WALLS,Freeze\"\nCLICK IDOK\n");
    idle();
    EXPECT_EQ(row("WALLS")[kColFreeze], "Frozen");
    dialog(L"CLICK IDC_BUTTON_NEW\nPRESS focus Enter\nCLICK IDCANCEL\n");
    idle();
    EXPECT_EQ(row("Layer1"), Row());
    EXPECT_EQ(failures, Lines());
}

TEST_F(ManagerDialog, OverridesAreSetOnTheRecords) {
    run(L"LAYOUT S Layout1\nMSPACE\n");
    const QByteArray before = bytes();
    const std::wstring edits = L"CLICK IDC_LIST_LAYERS_LIST \"WALLS,Name\"\n"
                               L"CLICK IDC_LIST_LAYERS_LIST \"WALLS,VP Freeze\"\n"
                               L"CLICK IDC_LIST_LAYERS_LIST \"WALLS,VP Color\"\n"
                               L"PRESS IDC_COLOR_TEXT Ctrl+A\nTYPE IDC_COLOR_TEXT red\nCLICK IDOK\n"
                               L"CLICK IDC_LIST_LAYERS_LIST \"WALLS,VP Lineweight\"\n"
                               L"CHOOSE IDC_LW_LIST \"0.70 mm\"\nCLICK IDOK\n";
    dialog(edits + L"CLICK IDCANCEL\n");
    EXPECT_EQ(bytes(), before);
    dialog(edits + L"CLICK IDOK\n");
    EXPECT_EQ(frozenHere(), Names{L"WALLS"});
    const HxDbObjectPointer<HxDbLayerTableRecord> walls(layer(L"WALLS"), HxDb::kForRead);
    bool isOverride = false;
    EXPECT_EQ(walls->color(hxedGetCurViewportObjectId(), isOverride).colorIndex(), 1);
    EXPECT_EQ(walls->lineWeight(hxedGetCurViewportObjectId(), isOverride), 70);
    EXPECT_TRUE(isOverride);
    EXPECT_EQ(failures, Lines());
}

TEST_F(ManagerDialog, KeepsOrderPlaceAndFlags) {
    dialog(L"CLICK IDC_LIST_LAYERS_LIST/header On\nCLICK IDC_LIST_LAYERS_LIST/header On\n"
           L"TICK IDC_CHECK_INVERTFILTER 1\nCHOOSE IDC_LAYER_FILTER_TREE All/Xref\nCLICK IDOK\n");
    EXPECT_TRUE(hxedInvertLayerFilterFlag());
    EXPECT_TRUE(hxedUseCurrentFilterFlag());
    EXPECT_FALSE(std::wstring(setting(L"LayerDialog/MainWindowRect").asString()).empty());
    EXPECT_EQ(std::wstring(setting(L"LayerDialog/DialogSplitPos").asString()), L"170");
    const std::wstring place = setting(L"LayerDialog/MainWindowRect").asString();
    const std::wstring shown = dialog(L"LOOK IDC_LIST_LAYERS_LIST\nCLICK IDOK\n");
    EXPECT_LT(shown.find(L"| PLAN|WALLS |"), shown.find(L"| PLAN|DOORS |")) << "the greatest first";
    EXPECT_EQ(std::wstring(setting(L"LayerDialog/MainWindowRect").asString()), place);
    EXPECT_FALSE(hxedInvertLayerFilterFlag());
    EXPECT_FALSE(hxedUseCurrentFilterFlag());
    EXPECT_EQ(failures, Lines());
}

TEST_F(ManagerDialog, HasNothingToShowWithoutADrawing) {
    for (Document* document : editor().documents().all()) {
        editor().documents().closeDocument(document);
    }
    const std::wstring told = dialog(L"");
    EXPECT_EQ(failures.size(), 1U) << "the host says that no drawing is open";
    EXPECT_TRUE(contains(told, L"CLASSICLAYER needs a drawing"));
}

}  // namespace
}  // namespace korvex::test
