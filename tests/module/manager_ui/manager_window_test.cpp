// The layer manager around its grid: search, inversion, tool bar, placement; as a palette.
#include "tests/module/manager_ui/palette_fixture.h"

#include "manager_ui/grid/layer_column.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QSplitter>
#include <QTest>
#include <QToolButton>
#include <QTreeWidget>

namespace korvex::test {
namespace {

class ManagerWindow : public PaletteTest {
protected:
    void SetUp() override {
        PaletteTest::SetUp();
        showPalette();
    }
    template <class Control>
    Control* control(const char* name) {
        return frame().findChild<Control*>(name);
    }
    QLineEdit& search() { return *control<QLineEdit>("IDC_EDIT_SEARCHLAYER"); }
    QString statistics() { return control<QLabel>("IDC_STATIC_LAYER_STATISTIC")->text(); }
    void chooseFilter(const QString& name) {
        auto* const tree = control<QTreeWidget>("IDC_LAYER_FILTER_TREE");
        const QList<QTreeWidgetItem*> found = tree->findItems(name, Qt::MatchExactly | Qt::MatchRecursive);
        ASSERT_EQ(found.size(), 1);
        tree->setCurrentItem(found.front());
    }
    void selectLayers(const QStringList& layers) {
        grid()->clearSelection();
        for (const QString& layer : layers) {
            const int at = static_cast<int>(names().indexOf(layer));
            ASSERT_GE(at, 0) << layer.toStdString();
            const auto flags = QItemSelectionModel::Select | QItemSelectionModel::Rows;
            grid()->selectionModel()->setCurrentIndex(grid()->model()->index(at, kColName), flags);
        }
    }
    void press(const char* button) { QTest::mouseClick(control<QToolButton>(button), Qt::LeftButton); }
    std::wstring pressAnd(const char* button, const std::wstring& answers) {
        return run(L"CLICK " + QString(button).toStdWString() + L"\n" + answers);
    }
};

TEST_F(ManagerWindow, FilterSearchAndInversionGoTogether) {
    auto* const invert = control<QCheckBox>("IDC_CHECK_INVERTFILTER");
    const QStringList xrefs{"PLAN|DOORS", "PLAN|FRAMES", "PLAN|WALLS"};
    chooseFilter("Xref");
    EXPECT_EQ(names(), xrefs);
    QTest::mouseClick(control<QLabel>("IDC_STATIC_INVERTFILTER"), Qt::LeftButton);
    EXPECT_TRUE(invert->isChecked());
    EXPECT_EQ(names().size(), 11);
    EXPECT_EQ(statistics(), "Xref: 11 of 14 layers displayed");
    QTest::keyClicks(&search(), "*WALLS");
    EXPECT_EQ(names().size(), 13) << "all but those of the filter that are found";
    EXPECT_FALSE(names().contains("PLAN|WALLS"));
    EXPECT_TRUE(names().contains("WALLS"));
    invert->click();
    EXPECT_EQ(names(), QStringList{"PLAN|WALLS"});
    run(L"-LAYER LOCK PLAN|*\nN PLANWALLS\n\n");
    idle();
    EXPECT_EQ(names(), QStringList{"PLAN|WALLS"});
    EXPECT_EQ(row("PLAN|WALLS")[kColLock], "Locked");
    QTest::keyClick(&search(), Qt::Key_Escape);
    EXPECT_EQ(names(), xrefs);
}

TEST_F(ManagerWindow, ChangesComeAndGoWithSearchAndInversion) {
    search().setText("W*,~*A*");
    EXPECT_FALSE(names().contains("SPARE"));
    run(L"-LAYER N WOOD,BRICKS\n\n");
    idle();
    EXPECT_TRUE(names().contains("WOOD"));
    control<QCheckBox>("IDC_CHECK_INVERTFILTER")->click();
    const QStringList others = names();
    run(L"-LAYER N WIND,SAND\n\n");
    idle();
    EXPECT_EQ(names().size(), others.size() + 1);
    EXPECT_TRUE(names().contains("SAND"));
}

TEST_F(ManagerWindow, TextsThatAreNoPatternFindNothing) {
    for (const char* const text : {"\"", "\" OR", "[", "`", "]"}) {
        search().setText(text);
        EXPECT_EQ(names(), QStringList()) << text;
        EXPECT_FALSE(control<QToolButton>("IDC_BUTTON_DELETE")->isEnabled());
        EXPECT_FALSE(control<QToolButton>("IDC_BUTTON_SETCURRENT")->isEnabled());
    }
    search().clear();
    EXPECT_TRUE(control<QToolButton>("IDC_BUTTON_DELETE")->isEnabled());
}

TEST_F(ManagerWindow, TheSearchBoxOffersEverythingAndClearsItself) {
    QTest::mouseClick(&search(), Qt::LeftButton);
    EXPECT_EQ(search().text(), "*");
    EXPECT_EQ(names().size(), 14);
    grid()->setFocus();
    EXPECT_EQ(search().text(), "");
    QTest::keyClick(grid(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(search().hasFocus());
    QTest::keyClicks(&search(), "N*");
    EXPECT_EQ(names(), QStringList{"NOTES"});
    EXPECT_EQ(search().findChild<QToolButton*>("searchBtn")->focusPolicy(), Qt::NoFocus)
        << "the box keeps it";
    auto* const button = search().findChild<QToolButton*>("searchBtn");
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(search().text(), "");
    EXPECT_EQ(names().size(), 14);
}

TEST_F(ManagerWindow, ANewLayerIsLikeTheSelectedOneAndAsksForItsName) {
    run(L"-LAYER COLOR 3 NOTES\nLOCK NOTES\nLW 0.5 NOTES\nDESC Remarks\nNOTES\n\n");
    idle();
    selectLayers({"NOTES"});
    press("IDC_BUTTON_NEW");
    ASSERT_TRUE(hasLayer(L"Layer1"));
    QTest::keyClicks(QApplication::focusWidget(), "Fresh");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QCoreApplication::processEvents();
    idle();
    ASSERT_TRUE(names().contains("Fresh")) << names().join(' ').toStdString();
    Row wanted = row("NOTES");
    wanted[kColStatus] = row("Fresh")[kColStatus];
    wanted[kColName] = "Fresh";
    EXPECT_EQ(row("Fresh"), wanted);
    EXPECT_EQ(row("Fresh")[kColColor], "Green");
    run(L"U\nU\n");
    idle();
    EXPECT_EQ(names().size(), 14);
    EXPECT_EQ(failures, Lines());
}

TEST_F(ManagerWindow, ANewLayerTakesOverWhatTheViewportShows) {
    run(L"LAYOUT S Layout1\nMSPACE\nVPLAYER FREEZE NOTES\n\nCOLOR 1 NOTES\n\n\n");
    idle();
    selectLayers({"NOTES"});
    press("IDC_BUTTON_NEW");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    idle();
    EXPECT_EQ(row("Layer1")[kColVpFreeze], "Frozen in the viewport");
    EXPECT_EQ(row("Layer1")[kColVpColor], "Red");
    EXPECT_EQ(row("Layer1")[kColColor], "White");
    run(L"U\n");
    EXPECT_FALSE(hasLayer(L"Layer1"));
    EXPECT_EQ(frozenHere(), Names{L"NOTES"});
}

TEST_F(ManagerWindow, DeletesWhatNobodyNeedsInOneStep) {
    run(L"-LAYER N A1,A2,A3\n\n");
    idle();
    selectLayers({"A1", "A2", "WALLS", "0", "SPARE", "PLAN|WALLS"});
    const std::wstring told = pressAnd("IDC_BUTTON_DELETE", L"OK\n");
    EXPECT_TRUE(contains(told, L"Of 6 selected layers 4 were not deleted."));
    EXPECT_EQ(names().filter("A1") + names().filter("A2"), QStringList());
    EXPECT_EQ(statistics(), "All: 15 of 15 layers displayed");
    selectLayers({"A3"});
    QTest::keyClick(grid(), Qt::Key_Delete);
    EXPECT_EQ(row("A3"), Row());
    EXPECT_TRUE(contains(run(L"U\nU\n"), L"Delete Layers"));
    idle();
    EXPECT_EQ(names().size(), 17);
    EXPECT_EQ(failures, Lines());
}

TEST_F(ManagerWindow, SetCurrentRefusesFrozenAndForeignLayers) {
    run(L"-LAYER FREEZE NOTES\n\n");
    idle();
    selectLayers({"NOTES"});
    EXPECT_TRUE(contains(pressAnd("IDC_BUTTON_SETCURRENT", L"OK\n"),
                         L"Layer \"NOTES\" cannot be made current: it is frozen or belongs to an external "
                         L"reference."));
    selectLayers({"PLAN|WALLS"});
    EXPECT_TRUE(contains(pressAnd("IDC_BUTTON_SETCURRENT", L"OK\n"), L"\"PLAN|WALLS\" cannot"));
    EXPECT_EQ(variable(L"CLAYER"), L"\"SPARE\"");
    selectLayers({"WALLS"});
    QTest::keyClick(grid(), Qt::Key_Return);
    EXPECT_EQ(variable(L"CLAYER"), L"\"WALLS\"");
    EXPECT_EQ(control<QLabel>("IDC_STATIC_CURRENT_LAYER")->text(), "Current layer: WALLS");
    EXPECT_EQ(row("WALLS")[kColStatus], "Current layer");
    EXPECT_EQ(failures, Lines());
}

TEST_F(ManagerWindow, MergesIntoALayerThatTheUserChooses) {
    selectLayers({"0", "NOTES", "W\u00e4nde 2"});
    std::wstring told = run(L"CLICK IDC_LIST_LAYERS_LIST right \"W\u00e4nde 2,Name\"\n"
                            L"CHOOSE menu \"Merge Selected Layers Into...\"\n"
                            L"TYPE IDC_MERGE_SEARCH wall\nLOOK IDC_MERGE_LIST\nPRESS IDC_MERGE_SEARCH Enter\n"
                            L"OK\nOK\n");
    EXPECT_TRUE(contains(told, L"1: WALLS")) << QString::fromStdWString(told).toStdString();
    EXPECT_FALSE(contains(told, L"PLAN|WALLS"));
    EXPECT_TRUE(contains(told,
                         L"All objects of 2 layer(s) move to layer \"WALLS\", and the layers are deleted. "
                         L"[OK/Cancel]"));
    EXPECT_TRUE(contains(told, L"Of 3 selected layers 1 cannot be merged."));
    idle();
    EXPECT_FALSE(hasLayer(L"NOTES"));
    EXPECT_FALSE(hasLayer(L"W\u00e4nde 2"));
    EXPECT_EQ(names().size(), 12);
    EXPECT_EQ(failures, Lines());
    run(L"U\n");
    idle();
    EXPECT_EQ(names().size(), 14);
}

TEST_F(ManagerWindow, MergesLayersWhoseNamesLookLikePointsOrOptions) {
    run(L"-LAYER N 5,7.5,U\n\n");
    idle();
    for (const QStringList& layers : {QStringList{"7.5", "5"}, QStringList{"U"}}) {
        selectLayers(layers);
        run(L"CLICK IDC_LIST_LAYERS_LIST right \"" + layers[0].toStdWString() +
            L",Name\"\nCHOOSE menu \"Merge Selected Layers Into...\"\nTYPE IDC_MERGE_SEARCH wall\n"
            L"PRESS IDC_MERGE_SEARCH Enter\nOK\n");
        idle();
        EXPECT_FALSE(hasLayer(layers[0].toStdWString().c_str()));
        EXPECT_FALSE(hasLayer(layers.last().toStdWString().c_str()));
    }
    EXPECT_EQ(failures, Lines());
}

TEST_F(ManagerWindow, LayerStatesComeFromTheButtonAndTheMenu) {
    pressAnd(
        "IDC_BUTTON_LAYERSTATES",
        L"CLICK IDC_LAYERMAN_NEW\nTYPE IDC_LAYERSTATESAVE_COMBO Day\nCLICK IDOK\nCLICK IDC_LAYERMAN_CLOSE\n");
    run(L"CLICK IDC_LIST_LAYERS_LIST right \"WALLS,Name\"\nCHOOSE menu \"Save Layer State...\"\n"
        L"TYPE IDC_LAYERSTATESAVE_COMBO Night\nCLICK IDOK\n");
    EXPECT_TRUE(contains(run(L"CLICK IDC_LIST_LAYERS_LIST right \"WALLS,Name\"\n"
                             L"CHOOSE menu \"Layer States Manager...\"\nLOOK IDC_LAYERMAN_LIST\n"
                             L"CLICK IDC_LAYERMAN_CLOSE\n"),
                         L"Night | Model | Yes"));
    EXPECT_TRUE(contains(run(L"U\n"), L"LAYERSTATESAVE"));
    EXPECT_TRUE(contains(run(L"U\n"), L"LAYERSTATE"));
    EXPECT_EQ(failures, Lines());
}

TEST_F(ManagerWindow, MergesSpeakGermanAndWaitForATarget) {
    linker().unloadModule(kModule);
    qputenv("LC_ALL", "de_DE.UTF-8");
    load();
    showPalette();
    selectLayers({"NOTES", "0"});
    const std::wstring told = run(L"CLICK IDC_LIST_LAYERS_LIST right \"NOTES,Name\"\n"
                                  L"CHOOSE menu \"Gew\u00e4hlte Layer zusammenf\u00fchren in...\"\n"
                                  L"TYPE IDC_MERGE_SEARCH nowhere\nLOOK IDOK\nPRESS IDC_MERGE_SEARCH Ctrl+A\n"
                                  L"TYPE IDC_MERGE_SEARCH wall\nCLICK IDOK\nOK\nOK\n");
    EXPECT_TRUE(contains(told, L"\"OK\", disabled"));
    EXPECT_TRUE(contains(told,
                         L"Alle Objekte von 1 Layer(n) kommen auf den Layer \"WALLS\", und die Layer werden "
                         L"gel\u00f6scht. [OK/Cancel]"));
    EXPECT_TRUE(
        contains(told, L"Von 2 gew\u00e4hlten Layern k\u00f6nnen 1 nicht zusammengef\u00fchrt werden."));
    EXPECT_FALSE(hasLayer(L"NOTES"));
    EXPECT_EQ(failures, Lines());
    qputenv("LC_ALL", "C");
}

TEST_F(ManagerWindow, NothingIsDoneWhileACommandNeedsTheLayers) {
    selectLayers({"WALLS"});
    for (const wchar_t* const button :
         {L"IDC_BUTTON_NEW", L"IDC_BUTTON_DELETE", L"IDC_BUTTON_SETCURRENT", L"IDC_BUTTON_NEW_GROUPFILTER"}) {
        const std::wstring told = run(std::wstring(L"-LAYER\n'CLICK ") + button + L"\nOK\n\n");
        EXPECT_TRUE(contains(told, L"[OK]")) << QString::fromWCharArray(button).toStdString();
    }
    EXPECT_FALSE(hasLayer(L"Layer1"));
    EXPECT_EQ(variable(L"CLAYER"), L"\"SPARE\"");
    EXPECT_EQ(failures, Lines());
}

TEST_F(ManagerWindow, KeepsTheSplitterAndTheClosedFilterPane) {
    QTest::mouseClick(control<QToolButton>("IDC_EXPAND_BUTTON1"), Qt::LeftButton);
    EXPECT_FALSE(control<QWidget>("IDC_STATIC_FILTERBOX")->isVisible());
    run(L"LAYERCLOSE\n");
    EXPECT_EQ(std::wstring(setting(L"LayerDialog/PalletSplitPos").asString()), L"-170");
    linker().unloadModule(kModule);
    load();
    showPalette();
    EXPECT_FALSE(control<QWidget>("IDC_STATIC_FILTERBOX")->isVisible());
    QTest::mouseClick(control<QToolButton>("IDC_EXPAND_BUTTON2"), Qt::LeftButton);
    ASSERT_TRUE(control<QWidget>("IDC_STATIC_FILTERBOX")->isVisible());
    frame().resize(1600, 700);
    panel()->resize(900, 500);
    QCoreApplication::processEvents();
    auto* const splitter = qobject_cast<QSplitter*>(control<QWidget>("IDC_STATIC_FILTERBOX")->parentWidget());
    ASSERT_TRUE(splitter);
    QWidget* const handle = splitter->handle(1);
    QTest::mousePress(handle, Qt::LeftButton, Qt::NoModifier, handle->rect().center());
    QTest::mouseMove(handle, handle->rect().center() + QPoint(37, 0));
    QTest::mouseRelease(handle, Qt::LeftButton, Qt::NoModifier, handle->rect().center() + QPoint(37, 0));
    const int width = splitter->sizes().front();
    run(L"LAYERCLOSE\n");
    EXPECT_EQ(std::wstring(setting(L"LayerDialog/PalletSplitPos").asString()), std::to_wstring(width));
}

TEST_F(ManagerWindow, SpeaksGerman) {
    linker().unloadModule(kModule);
    qputenv("LC_ALL", "de_DE.UTF-8");
    load();
    showPalette();
    EXPECT_EQ(statistics(), "Alle: 14 von 14 Layern angezeigt");
    EXPECT_EQ(search().placeholderText(), "Layer suchen");
    selectLayers({"WALLS"});
    EXPECT_TRUE(contains(pressAnd("IDC_BUTTON_DELETE", L"OK\n"),
                         L"Von 1 gew\u00e4hlten Layern wurden 1 nicht gel\u00f6scht."));
    selectLayers({"PLAN|WALLS"});
    EXPECT_TRUE(contains(pressAnd("IDC_BUTTON_SETCURRENT", L"OK\n"), L"kann nicht aktuell gesetzt werden"));
    const std::wstring told = run(L"CLICK IDC_LIST_LAYERS_LIST 1,2\nPRESS IDC_LIST_LAYERS_LIST F2\nOK\n");
    EXPECT_TRUE(contains(told, L"Der Layer \"0\" kann nicht umbenannt werden"));
    qputenv("LC_ALL", "C");
}

}  // namespace
}  // namespace korvex::test
