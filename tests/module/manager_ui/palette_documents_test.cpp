// The layer palette and the drawings it shows: whichever opens, closes and becomes current, and however the
// palette comes up, it shows the current drawing and edits no other.
#include "tests/module/manager_ui/palette_fixture.h"

#include "manager_ui/grid/layer_column.h"

#include "hxlyfilter.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QToolButton>
#include <QTreeWidget>

namespace korvex::test {
namespace {

class PaletteDocuments : public PaletteTest {
protected:
    DocumentManager& documents() { return editor().documents(); }
    void closeAll() {
        for (Document* document : documents().all()) {
            documents().closeDocument(document);
        }
    }
    /// As the menu of panels does.
    void toggle() { panel()->toggleViewAction()->trigger(); }
    void clickCell(int row, int column) {
        const QPoint at = grid()->visualRect(grid()->model()->index(row, column)).center();
        QTest::mouseClick(grid()->viewport(), Qt::LeftButton, Qt::NoModifier, at);
    }
    QTreeWidget& tree() { return *frame().findChild<QTreeWidget*>("IDC_LAYER_FILTER_TREE"); }
    QLineEdit& search() { return *frame().findChild<QLineEdit*>("IDC_EDIT_SEARCHLAYER"); }
    QString text(const char* label) { return frame().findChild<QLabel*>(label)->text(); }
    bool isEnabled(const char* button) { return frame().findChild<QToolButton*>(button)->isEnabled(); }
    void chooseFilter(const QString& name) {
        const QList<QTreeWidgetItem*> found = tree().findItems(name, Qt::MatchExactly | Qt::MatchRecursive);
        ASSERT_EQ(found.size(), 1) << name.toStdString();
        tree().setCurrentItem(found.front());
    }
    QString chosenFilter() { return tree().currentItem() ? tree().currentItem()->text(0) : QString(); }
    /// The filter that the drawing records as selected.
    std::wstring recordedFilter() {
        HxLyLayerFilter* root = nullptr;
        HxLyLayerFilter* selected = nullptr;
        EXPECT_EQ(database().layerFilterManager()->getFilters(root, selected), Hx::eOk);
        const std::unique_ptr<HxLyLayerFilter> owner(root);
        return selected ? std::wstring(selected->name()) : std::wstring();
    }
};

TEST_F(PaletteDocuments, LetsGoOfDrawingsThatCloseWhileItIsHidden) {
    showPalette();
    run(L"LAYERCLOSE\n");
    documents().newDocument();
    closeAll();
    idle();
    EXPECT_EQ(grid()->model()->rowCount(), 0) << "entries of a drawing that is gone";
    EXPECT_EQ(tree().topLevelItemCount(), 0);
    documents().newDocument();
    toggle();
    clickHeader(kColColor);
    idle();
    EXPECT_EQ(names(), QStringList{"0"});
    EXPECT_GT(tree().topLevelItemCount(), 0);
}

TEST_F(PaletteDocuments, ShowsTheCurrentDrawingHoweverItComesUp) {
    HxDbDatabase& floor = database();
    const HxDbObjectId walls = layer(L"WALLS");
    showPalette();
    run(L"LAYERCLOSE\n");
    documents().newDocument();
    run(L"-LAYER N Mine\n\n");
    toggle();
    EXPECT_EQ(names(), (QStringList{"0", "Mine"}));
    clickCell(1, kColLock);
    EXPECT_TRUE(HxDbObjectPointer<HxDbLayerTableRecord>(layer(L"Mine"), HxDb::kForRead)->isLocked());
    EXPECT_FALSE(floor.isModified());
    EXPECT_FALSE(HxDbObjectPointer<HxDbLayerTableRecord>(walls, HxDb::kForRead)->isLocked());
    toggle();
    run(L"-LAYER N Later\n\n");
    panel()->show();
    EXPECT_EQ(names(), (QStringList{"0", "Later", "Mine"}));
}

/// Between the switch and the next idle the rows are still those of the drawing before.
TEST_F(PaletteDocuments, EditsNothingBeforeItHasFollowed) {
    HxDbDatabase& floor = database();
    showPalette();
    documents().newDocument();
    ASSERT_GT(grid()->model()->rowCount(), 1);
    clickCell(1, kColLock);
    frame().findChild<QToolButton*>("IDC_BUTTON_DELETE")->click();
    frame().findChild<QToolButton*>("IDC_BUTTON_NEW")->click();
    EXPECT_FALSE(floor.isModified());
    EXPECT_FALSE(database().isModified());
    idle();
    EXPECT_EQ(names(), QStringList{"0"});
}

TEST_F(PaletteDocuments, IsEmptyAndSaysSoWithoutADrawing) {
    showPalette();
    closeAll();
    idle();
    EXPECT_EQ(grid()->model()->rowCount(), 0);
    EXPECT_EQ(tree().topLevelItemCount(), 0);
    EXPECT_EQ(text("IDC_STATIC_CURRENT_LAYER"), "No drawing is open");
    EXPECT_EQ(text("IDC_STATIC_LAYER_STATISTIC"), "");
    const char* const kNeedADrawing[] = {"IDC_BUTTON_NEW", "IDC_BUTTON_NEW_PROPFILTER",
                                         "IDC_BUTTON_NEW_GROUPFILTER", "IDC_BUTTON_DELETE",
                                         "IDC_BUTTON_SETCURRENT"};
    for (const char* const button : kNeedADrawing) {
        EXPECT_FALSE(isEnabled(button)) << button;
    }
    documents().newDocument();
    idle();
    EXPECT_EQ(text("IDC_STATIC_CURRENT_LAYER"), "Current layer: 0");
    EXPECT_EQ(text("IDC_STATIC_LAYER_STATISTIC"), "All: 1 of 1 layers displayed");
    for (const char* const button : kNeedADrawing) {
        EXPECT_TRUE(isEnabled(button)) << button;
    }
}

TEST_F(PaletteDocuments, TheFrameMayDeleteItFirst) {
    showPalette();
    delete panel();
    EXPECT_FALSE(panel());
    run(L"-LAYER N Later\n\n");
    showPalette();
    EXPECT_EQ(row("Later")[kColName], "Later");
    delete panel();
    linker().unloadModule(kModule);
    load();
}

TEST_F(PaletteDocuments, EachKeepsItsFilterAndSearchOverSwitches) {
    showPalette();
    Document* const floor = documents().active();
    chooseFilter("Xref");
    search().setText("*O*");
    ASSERT_EQ(names(), QStringList{"PLAN|DOORS"});
    HxApDocument* const other = documents().newDocument();
    idle();
    EXPECT_EQ(chosenFilter(), "All");
    EXPECT_EQ(search().text(), "");
    EXPECT_EQ(names(), QStringList{"0"});
    search().setText("X*");
    EXPECT_EQ(names(), QStringList());
    documents().activateDocument(floor);
    idle();
    EXPECT_EQ(chosenFilter(), "Xref");
    EXPECT_EQ(search().text(), "*O*");
    EXPECT_EQ(names(), QStringList{"PLAN|DOORS"});
    documents().activateDocument(other);
    idle();
    EXPECT_EQ(search().text(), "X*");
    EXPECT_FALSE(other->database()->isModified());
}

TEST_F(PaletteDocuments, TheDialogOpensOnTheFilterThatIsRecordedOrChosen) {
    const auto dialog = [&](const std::wstring& actions) { return run(L"CLASSICLAYER\n" + actions); };
    dialog(L"CHOOSE IDC_LAYER_FILTER_TREE All/Xref\nCLICK IDOK\n");
    EXPECT_EQ(recordedFilter(), L"<XrefRoot");
    EXPECT_TRUE(contains(dialog(L"LOOK IDC_STATIC_LAYER_STATISTIC\nCLICK IDCANCEL\n"), L"Xref: 3 of 14"));
    dialog(L"CHOOSE IDC_LAYER_FILTER_TREE All\nCLICK IDOK\n");
    EXPECT_EQ(recordedFilter(), L"<All");
    showPalette();
    chooseFilter("Xref");
    EXPECT_TRUE(contains(dialog(L"LOOK KvLayerPropManagerDlg/IDC_STATIC_LAYER_STATISTIC\nCLICK IDCANCEL\n"),
                         L"Xref: 3 of 14"))
        << "the palette's choice";
    run(L"XREF D PLAN\n");
    idle();
    EXPECT_TRUE(contains(dialog(L"LOOK KvLayerPropManagerDlg/IDC_STATIC_LAYER_STATISTIC\nCLICK IDCANCEL\n"),
                         L"All: 11 of 11"))
        << "not on a filter that leaves nothing";
    EXPECT_EQ(failures, Lines());
}

TEST_F(PaletteDocuments, WritingFiltersRecordsTheSelectedOne) {
    showPalette();
    run(L"CLICK IDC_BUTTON_NEW_GROUPFILTER\nPRESS focus Ctrl+A\nTYPE focus Mine\nPRESS focus Enter\n");
    idle();
    EXPECT_EQ(recordedFilter(), L"Mine");
    chooseFilter("Xref");
    EXPECT_EQ(recordedFilter(), L"Mine") << "looking changes no drawing";
    run(L"CLICK IDC_BUTTON_NEW_GROUPFILTER\nPRESS focus Enter\n"
        L"CHOOSE IDC_LAYER_FILTER_TREE All/Mine\nPRESS IDC_LAYER_FILTER_TREE F2\nPRESS focus Ctrl+A\n"
        L"TYPE focus Ours\nPRESS focus Enter\n");
    idle();
    EXPECT_EQ(recordedFilter(), L"Ours");
    EXPECT_EQ(failures, Lines());
}

}  // namespace
}  // namespace korvex::test
