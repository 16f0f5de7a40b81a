// What differs between a state and the drawing: as found, and as the manager shows it.
#include "tests/module/layer_states/layer_states_fixture.h"
#include "tests/module/layer_states/manager/states_window_fixture.h"

#include "layer_states/compare/differences_pane.h"
#include "layer_states/manager/layer_state_man_window.h"
#include "layer_states/preview/preview_picture.h"
#include "layer_states/preview/restore_preview.h"

#include <QCheckBox>
#include <QDesktopServices>
#include <QHelpEvent>
#include <QScreen>
#include <QTextBrowser>
#include <QToolButton>
#include <QToolTip>

#include <random>

namespace korvex::test {
namespace {

constexpr int kAll = HxLyState::kAllProperties;

/// Layouts get the widgets that are linked into the tests, not those of the module.
class OwnWidgets {
public:
    OwnWidgets() {
        forgetLayerStateWidgets();
        registerLayerStateWidgets();
    }
    ~OwnWidgets() { forgetLayerStateWidgets(); }
    OwnWidgets(const OwnWidgets&) = delete;
    OwnWidgets& operator=(const OwnWidgets&) = delete;
};

class DifferencesTest : public LayerStatesTest {
protected:
    void scatter(std::mt19937& random, const wchar_t* name) {
        const auto coin = [&random] { return (random() & 1U) != 0; };
        change(name, [&](HxDbLayerTableRecord& record) {
            record.setIsOff(coin());
            if (record.objectId() != database().clayer()) record.setIsFrozen(coin());
            record.setIsLocked(coin());
            record.setVPDFLT(coin());
            record.setIsPlottable(coin());
            record.setColor(HxCmColor::byIndex(coin() ? 1 : 2));
            record.setLineWeight(static_cast<HxDb::LineWeight>(coin() ? 30 : 50));
            record.setTransparency(HxCmTransparency(static_cast<std::uint8_t>(coin() ? 40 : 90)));
        });
    }
    KvStateDifferences found(const wchar_t* name, std::int32_t mask) {
        m_engine = engine();
        const CKvLayerState* const state = m_engine->states().find(name);
        return state ? m_engine->differencesOf(*state, mask) : KvStateDifferences();
    }

    std::unique_ptr<CKvLayerStateManDlg> m_engine;
};

TEST_F(DifferencesTest, AreWhatARestoreWithThatMaskChanges) {
    std::mt19937 random(7);
    for (const bool inLayout : {false, true}) {
        openDrawing(drawing());
        if (inLayout) goToLayout();
        int seen = 0;
        for (int round = 0; round < 40; ++round) {
            for (const wchar_t* const name : {L"WALLS", L"NOTES", L"VIEWS"}) {
                scatter(random, name);
            }
            if (round % 4 == 0) saveState(L"then");
            const auto mask = static_cast<std::int32_t>(random()) & kAll;
            const std::size_t differing = found(L"then", mask).layers().size();
            CKvLayerState& state = *m_engine->states().find(L"then");
            ASSERT_TRUE(m_engine->restoreLayerState(state, mask, {}));
            EXPECT_EQ(m_engine->restored().changed, static_cast<int>(differing)) << round << " " << mask;
            EXPECT_TRUE(m_engine->differencesOf(state, mask).layers().empty()) << round << " " << mask;
            seen += static_cast<int>(differing);
        }
        EXPECT_GT(seen, 20);
    }
}

TEST_F(DifferencesTest, NameLayerPropertiesAndBothValues) {
    openDrawing(drawing());
    saveState(L"then");
    change(L"NOTES", [](auto& record) {
        record.setIsOff(true);
        record.setColor(HxCmColor::byRgb(1, 2, 3));
    });
    const KvStateDifferences differences = found(L"then", kAll);
    ASSERT_EQ(differences.layers().size(), 1U);
    const KvStateDifferences::Layer& notes = differences.layers().front();
    EXPECT_EQ(notes.inState.GetLayerName(), L"NOTES");
    EXPECT_EQ(notes.properties, HxLyState::kOn | HxLyState::kColor);
    EXPECT_EQ(notes.inState.GetLayerFlag() & HxLyState::kLayerOff, 0);
    EXPECT_EQ(notes.inDrawing.GetLayerFlag() & HxLyState::kLayerOff, HxLyState::kLayerOff);
    EXPECT_EQ(notes.inDrawing.GetRGBColor(), 0x030201);
    EXPECT_EQ(found(L"then", HxLyState::kColor).layers().front().properties, HxLyState::kColor);
    EXPECT_TRUE(found(L"then", HxLyState::kLocked).layers().empty());
}

TEST_F(DifferencesTest, CountLayersThatTheDrawingLacksWhateverTheMask) {
    openDrawing(drawing());
    saveState(L"then");
    run(L"-LAYER\nN\nEXTRA\n\n");
    saveState(L"with");
    change(L"EXTRA", [](auto& record) { EXPECT_EQ(record.erase(), Hx::eOk); });
    EXPECT_TRUE(found(L"then", kAll).layers().empty());
    for (const std::int32_t mask : {0, kAll}) {
        const KvStateDifferences differences = found(L"with", mask);
        ASSERT_EQ(differences.layers().size(), 1U) << mask;
        EXPECT_EQ(differences.layers().front().inState.GetLayerName(), L"EXTRA");
        EXPECT_TRUE(differences.layers().front().inDrawing.GetLayerName().empty());
        EXPECT_EQ(differences.layers().front().properties, 0);
    }
}

TEST_F(DifferencesTest, TellWhatTheViewportOfALayoutFreezes) {
    openDrawing(drawing());
    goToLayout();
    saveState(L"then");
    inViewport(L"Freeze", L"NOTES");
    const KvStateDifferences differences = found(L"then", kAll);
    ASSERT_EQ(differences.layers().size(), 1U);
    EXPECT_EQ(differences.layers().front().properties, HxLyState::kCurrentViewportFrozen);
    run(L"LAYOUT\nSet\nModel\n");
    EXPECT_TRUE(found(L"then", kAll).layers().empty()) << "nothing is frozen in a viewport there";
}

TEST_F(DifferencesTest, ThePanesLineFoldsTheListOutAndIn) {
    openDrawing(drawing());
    saveState(L"then");
    const OwnWidgets widgets;
    KvDifferencesPane pane;
    auto& line = *pane.findChild<QToolButton*>("IDC_LAYERMAN_DIFFERS");
    auto& list = *pane.findChild<QTableView*>("IDC_LAYERMAN_DIFFERENCES");
    EXPECT_FALSE(line.isEnabled()) << "there is no state";
    pane.showDifferences(found(L"then", kAll));
    EXPECT_FALSE(line.isEnabled()) << "there is no difference";
    const QString tip = line.toolTip();
    EXPECT_FALSE(tip.isEmpty());
    change(L"NOTES", [](auto& record) { record.setIsOff(true); });
    change(L"WALLS", [](auto& record) { record.setIsOff(true); });
    pane.showDifferences(found(L"then", kAll));
    EXPECT_TRUE(line.isEnabled());
    EXPECT_TRUE(list.isHidden());
    EXPECT_EQ(list.model()->rowCount(), 0) << "rows are for a list that is seen";
    EXPECT_EQ(line.arrowType(), Qt::RightArrow);
    EXPECT_EQ(pane.sizePolicy().verticalPolicy(), QSizePolicy::Fixed);
    int grows = 0;
    QObject::connect(&pane, &KvDifferencesPane::heightChanged, [&](int by) { grows += by; });
    std::vector<std::wstring> chosen;
    QObject::connect(&pane, &KvDifferencesPane::layerChosen,
                     [&](const CStdStr<wchar_t>& layer) { chosen.push_back(layer); });
    line.click();
    EXPECT_FALSE(list.isHidden());
    EXPECT_EQ(list.model()->rowCount(), 2);
    EXPECT_EQ(line.arrowType(), Qt::DownArrow);
    EXPECT_EQ(pane.sizePolicy().verticalPolicy(), QSizePolicy::Expanding);
    EXPECT_GT(grows, 6 * list.verticalHeader()->defaultSectionSize());
    EXPECT_FALSE(list.accessibleName().isEmpty());
    EXPECT_EQ(list.selectionMode(), QAbstractItemView::SingleSelection);
    EXPECT_EQ(list.model()->flags(list.model()->index(0, 1)),
              Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemNeverHasChildren);
    list.setCurrentIndex(list.model()->index(1, 0));
    list.setCurrentIndex(list.model()->index(0, 0));
    EXPECT_EQ(chosen, (std::vector<std::wstring>{L"WALLS", L"NOTES"}));
    pane.show();
    list.setColumnWidth(0, 8);
    const QPoint cell = list.visualRect(list.model()->index(0, 0)).center();
    QHelpEvent help(QEvent::ToolTip, cell, list.viewport()->mapToGlobal(cell));
    QApplication::sendEvent(list.viewport(), &help);
    EXPECT_EQ(QToolTip::text(), "NOTES") << "what a narrow cell cuts off";
    pane.showNothing();
    EXPECT_EQ(list.model()->rowCount(), 0);
    EXPECT_TRUE(line.isEnabled()) << "it folds the list in";
    EXPECT_EQ(chosen.size(), 2U);
    pane.showDifferences(found(L"then", HxLyState::kLocked));
    EXPECT_TRUE(line.isEnabled());
    const KvDifferencesPane next;
    EXPECT_FALSE(next.findChild<QTableView*>("IDC_LAYERMAN_DIFFERENCES")->isHidden()) << "as the last one";
    line.click();
    EXPECT_EQ(grows, 0);
    EXPECT_TRUE(list.isHidden());
}

TEST_F(DifferencesTest, ThePreviewFollowsSelectionAndTicks) {
    openDrawing(drawing());
    saveState(L"A");
    change(L"NOTES", [](auto& record) { record.setIsOff(true); });
    saveState(L"B");
    const OwnWidgets widgets;
    m_engine = engine();
    KvLayerStateManWindow window(*m_engine, nullptr);
    QTimer::singleShot(0, &window, [&] {
        auto* const preview = window.findChild<KvRestorePreview*>();
        preview->setFolded(false);  // the screen may be narrow
        auto* const picture = window.findChild<KvPreviewPicture*>();
        const auto drawn = [&] {
            const int before = preview->pictures();
            EXPECT_TRUE(QTest::qWaitFor([&] { return preview->pictures() > before; }, 20000));
            return picture->picture();
        };
        auto* const list = window.findChild<CKvLayerStateListCtrl*>();
        list->SetLastSelectItem(m_engine->states().find(L"A"));
        const QImage withNotes = drawn();
        list->SetLastSelectItem(m_engine->states().find(L"B"));
        const QImage without = drawn();
        EXPECT_NE(withNotes, without);
        list->SetLastSelectItem(m_engine->states().find(L"A"));
        EXPECT_EQ(drawn(), withNotes);
        window.GetDlgItem<QCheckBox>("IDC_LAYERMAN_CHECK1")->click();
        EXPECT_EQ(drawn(), without) << "on and off are not restored";
        list->selectAll();
        EXPECT_TRUE(QTest::qWaitFor([&] { return !picture->text().isEmpty(); }, 20000));
        window.EndDialog(IDCANCEL);
    });
    window.DoModal();
}

TEST_F(DifferencesTest, TheManagersWindowMakesRoomForPreviewAndList) {
    openDrawing(drawing());
    saveState(L"A");
    change(L"NOTES", [](auto& record) { record.setIsOff(true); });
    const OwnWidgets widgets;
    m_engine = engine();
    KvLayerStateManWindow window(*m_engine, nullptr);
    QTimer::singleShot(0, &window, [&] {
        auto* const preview = window.findChild<KvRestorePreview*>();
        auto* const list = window.findChild<CKvLayerStateListCtrl*>();
        auto* const line = window.findChild<QToolButton*>("IDC_LAYERMAN_DIFFERS");
        const QSize screen = window.screen()->availableSize();
        preview->setFolded(true);
        const QSize folded = window.size();
        preview->setFolded(false);
        EXPECT_EQ(window.width(), qMin(folded.width() + preview->unfoldedWidth(), screen.width()));
        EXPECT_GT(window.width(), folded.width());
        const auto left = [&](QWidget* widget) { return widget->mapTo(&window, QPoint()).x(); };
        EXPECT_LT(left(list), left(preview));
        EXPECT_LT(left(preview), left(window.GetDlgItem("IDC_LAYERMAN_NEW")));
        EXPECT_GT(list->width(), preview->width()) << "the list keeps its own";
        EXPECT_TRUE(QTest::qWaitFor([&] { return line->isEnabled(); }, 20000));
        line->click();
        EXPECT_LE(window.height(), screen.height());
        line->click();
        for (const char* const option : {"IDC_LAYERMAN_CHECK12", "IDC_LAYERMAN_CHECK13"}) {
            EXPECT_TRUE(QTest::qWaitFor([&] { return preview->pictures() > 0; }, 20000));
            const int before = preview->pictures();
            window.GetDlgItem<QCheckBox>(option)->click();
            EXPECT_TRUE(QTest::qWaitFor([&] { return preview->pictures() > before; }, 20000)) << option;
            window.GetDlgItem<QCheckBox>(option)->click();
        }
        window.EndDialog(IDCANCEL);
    });
    window.DoModal();
}

TEST_F(DifferencesTest, AManagerWithoutStatesMakesAndImportsThem) {
    openDrawing(drawing());
    const OwnWidgets widgets;
    m_engine = engine();
    KvLayerStateManWindow window(*m_engine, nullptr);
    QTimer::singleShot(0, &window, [&] {
        for (const char* const name :
             {"IDC_LAYERMAN_SAVE", "IDC_LAYERMAN_EDIT", "IDC_LAYERMAN_RENAME", "IDC_LAYERMAN_DEL",
              "IDC_LAYERMAN_EXPORT", "IDC_LAYERMAN_RESTORE", "IDC_LAYERMAN_CHECK1", "IDC_LAYERMAN_CHECK12"}) {
            EXPECT_FALSE(window.GetDlgItem(name)->isEnabled()) << name;
        }
        EXPECT_TRUE(window.GetDlgItem("IDC_LAYERMAN_NEW")->isEnabled());
        EXPECT_TRUE(window.GetDlgItem("IDC_LAYERMAN_IMPORT")->isEnabled());
        window.EndDialog(IDCANCEL);
    });
    window.DoModal();
}

class DifferencesPaneTest : public StatesWindowTest {
protected:
    void SetUp() override {
        StatesWindowTest::SetUp();
        run(L"LAYERSTATESAVE\nTYPE IDC_LAYERSTATESAVE_COMBO Plan\nCLICK IDOK\n"
            L"LAYERSTATESAVE\nTYPE IDC_LAYERSTATESAVE_COMBO Copy\nCLICK IDOK\n"
            L"-LAYER\nOFF\nNOTES\nC\n3\nWALLS\nLW\n0.3\nWALLS\n\n");
    }
    std::wstring manager(const std::wstring& actions) {
        return run(L"LAYERSTATE\n" + actions + L"CLICK IDC_LAYERMAN_CLOSE\n");
    }
    static constexpr wchar_t kLook[] = L"LOOK IDC_LAYERMAN_DIFFERS\nLOOK IDC_LAYERMAN_DIFFERENCES\n";
    static constexpr wchar_t kFold[] = L"CLICK IDC_LAYERMAN_DIFFERS\n";
    static constexpr wchar_t kPlan[] = L"CLICK IDC_LAYERMAN_LIST \"Plan,Name\"\n";
};

TEST_F(DifferencesPaneTest, FollowsSelectionAndTicks) {
    const std::wstring shown = manager(std::wstring(kPlan) + kFold + kLook + kFold);
    EXPECT_TRUE(contains(shown, L"IDC_LAYERMAN_DIFFERS: \"Differs from the drawing in 2 layers\" ticked"));
    EXPECT_TRUE(contains(shown, L"Layer | Property | In the State | In the Drawing\n"
                                L"  1: NOTES | On/Off | On | Off\n"
                                L"  2: WALLS | Color | White | Green\n"
                                L"  3: WALLS | Lineweight | Default | 0.30 mm\n"));
    EXPECT_TRUE(
        contains(manager(std::wstring(kPlan) + L"CLICK IDC_LAYERMAN_CHECK1\nLOOK IDC_LAYERMAN_DIFFERS\n"),
                 L"Differs from the drawing in 1 layer\""));
    const std::wstring none =
        manager(std::wstring(kPlan) + L"CLICK IDC_LAYERMAN_CLEARALL\nLOOK IDC_LAYERMAN_DIFFERS\n");
    EXPECT_TRUE(contains(none, L"The drawing is as the state has it, in what is ticked"));
    EXPECT_TRUE(contains(
        manager(std::wstring(kPlan) + L"PRESS IDC_LAYERMAN_LIST Ctrl+A\nLOOK IDC_LAYERMAN_DIFFERS\n"),
        L"Select one state to see what differs from the drawing"));
    EXPECT_EQ(failures, Lines());
}

TEST_F(DifferencesPaneTest, NamesTheValuesOfEachProperty) {
    run(L"-LAYER\nTR\n50\nWALLS\nLOck\nWALLS\nPlot\nNo\nWALLS\nFreeze\nWALLS\n\n");
    ASSERT_EQ(failures, Lines());
    const std::wstring shown = manager(std::wstring(kPlan) + kFold + kLook + kFold);
    EXPECT_TRUE(contains(shown, L"  2: WALLS | Frozen/Thawed | Thawed | Frozen\n"
                                L"  3: WALLS | Locked/Unlocked | Unlocked | Locked\n"
                                L"  4: WALLS | Plot/No plot | Plots | Does not plot\n"
                                L"  5: WALLS | Color | White | Green\n"
                                L"  6: WALLS | Lineweight | Default | 0.30 mm\n"
                                L"  7: WALLS | Transparency | 0 | 50\n"))
        << toUtf8(shown);
    EXPECT_EQ(failures, Lines());
}

TEST_F(DifferencesPaneTest, SortsByEachColumn) {
    const auto sorted = [this](const wchar_t* column) {
        const std::wstring shown = manager(std::wstring(kPlan) + L"CLICK IDC_LAYERMAN_DIFFERENCES/header \"" +
                                           column + L"\"\n" + L"LOOK IDC_LAYERMAN_DIFFERENCES\n");
        std::wstring order;
        for (const wchar_t* const row : {L"1: ", L"2: ", L"3: "}) {
            const std::size_t at = shown.rfind(row) + 3;
            order += shown.substr(at, shown.find(L'\n', at) - at) + L"; ";
        }
        return order;
    };
    manager(kFold);
    EXPECT_EQ(sorted(L"In the State"), L"WALLS | Lineweight | Default | 0.30 mm; NOTES | On/Off | On | Off; "
                                       L"WALLS | Color | White | Green; ");
    EXPECT_EQ(sorted(L"Property"), L"NOTES | On/Off | On | Off; WALLS | Color | White | Green; "
                                   L"WALLS | Lineweight | Default | 0.30 mm; ");
    manager(kFold);
    EXPECT_EQ(failures, Lines());
}

TEST_F(DifferencesPaneTest, LeadsToTheLayerInThePaletteAlsoWhenItIsFilteredOut) {
    showPalette();
    run(L"CLICK IDC_EDIT_SEARCHLAYER\nTYPE IDC_EDIT_SEARCHLAYER note*\n");
    ASSERT_EQ(names().indexOf("WALLS"), -1);
    manager(std::wstring(kPlan) + kFold + L"CLICK IDC_LAYERMAN_DIFFERENCES \"WALLS,Layer\"\n" + kFold);
    EXPECT_NE(names().indexOf("WALLS"), -1);
    EXPECT_EQ(grid()->currentIndex().row(), names().indexOf("WALLS"));
    EXPECT_EQ(grid()->selectionModel()->selectedRows().size(), 1);
    EXPECT_EQ(failures, Lines());
}

TEST_F(DifferencesPaneTest, LeadsToTheLayerInTheDialogBelow) {
    const std::wstring shown = run(std::wstring(L"CLASSICLAYER\nCLICK IDC_BUTTON_LAYERSTATES\n") + kPlan +
                                   kFold + L"CLICK IDC_LAYERMAN_DIFFERENCES \"NOTES,Layer\"\n" + kFold +
                                   L"CLICK IDC_LAYERMAN_CLOSE\nLOOK IDC_LIST_LAYERS_LIST\nCLICK IDCANCEL\n");
    const std::size_t selected = shown.find(L"(selected)");
    ASSERT_NE(selected, std::wstring::npos);
    EXPECT_TRUE(contains(shown.substr(shown.rfind(L'\n', selected), selected), L"NOTES"));
    EXPECT_EQ(shown.find(L"(selected)", selected + 1), std::wstring::npos);
    EXPECT_EQ(failures, Lines());
}

TEST_F(DifferencesPaneTest, HelpOpensTheGuide) {
    EXPECT_TRUE(contains(manager(L"CLICK IDC_LAYERMAN_HELP\nOK\n"),
                         L"No program was found that shows the guide. The page is\n\n"));
    QTextBrowser viewer;
    QDesktopServices::setUrlHandler("file", &viewer, "setSource");
    for (const wchar_t* const help :
         {L"LAYERSTATE\nCLICK IDC_LAYERMAN_HELP\nPRESS window Esc\n",
          L"LAYERSTATE\nPRESS IDC_LAYERMAN_LIST F1\nPRESS window Esc\n",
          L"LAYERSTATE\nCLICK IDC_LAYERMAN_EDIT\nPRESS window F1\nPRESS window Esc\nPRESS window Esc\n",
          L"LAYERSTATESAVE\nCLICK IDC_LAYERMAN_HELP\nPRESS window Esc\n"}) {
        viewer.setSource(QUrl());
        run(help);
        EXPECT_TRUE(viewer.source().toLocalFile().endsWith("docs/layer-states.md")) << toUtf8(help);
        EXPECT_TRUE(viewer.toPlainText().startsWith("Layer states"));
    }
    QDesktopServices::unsetUrlHandler("file");
    EXPECT_EQ(failures, Lines());
}

}  // namespace
}  // namespace korvex::test
