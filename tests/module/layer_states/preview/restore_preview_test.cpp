// The picture before a restore: what the drawing looks like after it, and a pane that draws it when it must.
#include "tests/database_listener.h"
#include "tests/module/layer_states/layer_states_fixture.h"

#include "layer_states/preview/preview_picture.h"
#include "layer_states/preview/restore_preview.h"

#include "sdk/hxpreview.h"
#include "tests/walk_seed.h"

#include <QTest>
#include <QToolButton>

#include <random>

using namespace korvex::test;

namespace {

constexpr int kAll = HxLyState::kAllProperties;
constexpr int kNoLimit = 600000;  // milliseconds: the tests may run on a busy machine

class PreviewTest : public LayerStatesTest {
protected:
    ~PreviewTest() override {
        CKvLayerStateManDlg::m_bCloseNoFindChecked = 0;
        CKvLayerStateManDlg::m_bViewportReplaceChecked = 0;
    }
    QImage drawn(const std::vector<HxUiLayerAs>& layers) {
        QImage image;
        EXPECT_EQ(Hx::eOk, m_preview.draw(image, &database(), layers, QSize(400, 300), 1, kNoLimit));
        return image;
    }
    /// The picture of a restore is that of the drawing afterwards, another one than now, and takes nothing.
    void expectSameAsRestored(const wchar_t* name, const KvRestoreOptions& options) {
        const auto states = engine();
        CKvLayerState* const state = states->states().find(name);
        ASSERT_NE(state, nullptr);
        const std::string before = fileNow();
        const QImage now = drawn({});
        std::vector<HxUiLayerAs> layers;
        int told = 0;
        QImage preview;
        {
            const Listener listener(database());
            ASSERT_TRUE(layersAfterRestore(database(), states->states(), state, options, layers));
            preview = drawn(layers);
            told = listener.told;
        }
        EXPECT_EQ(0, told);
        EXPECT_EQ(before, fileNow()) << "neither layers nor linetypes are made";
        EXPECT_NE(now, preview);
        CKvLayerStateManDlg::m_bCloseNoFindChecked = options.turnOffOthers ? 1 : 0;
        CKvLayerStateManDlg::m_bViewportReplaceChecked = options.asViewportOverrides ? 1 : 0;
        ASSERT_TRUE(states->restoreLayerState(*state, options.mask, options.viewport));
        EXPECT_EQ(drawn({}), preview);
        run(L"U\n");
        EXPECT_EQ(now, drawn({}));
    }
    /// State "S", in which the layers differ in all that can be seen from the drawing, which stays as it is.
    void saveOtherState() {
        saveState(L"Now");
        change(L"WALLS", [this](auto& l) {
            l.setColor(HxCmColor::byRgb(200, 90, 7));
            l.setLineWeight(static_cast<HxDb::LineWeight>(200));
            l.setLinetypeObjectId(linetype(L"DASHED"));
            l.setTransparency(HxCmTransparency(std::uint8_t(120)));
        });
        change(L"NOTES", [](auto& l) { l.setIsOff(true); });
        change(L"HALLS", [](auto& l) { l.setIsFrozen(true); });
        change(L"VIEWS", [](auto& l) {
            l.setIsLocked(true);
            l.setColor(HxCmColor::byIndex(3));
        });
        saveState(L"S");
        ASSERT_TRUE(engine()->CmdRestore(L"Now", {}));
    }
    HxDbObjectId linetype(const wchar_t* name) {
        const HxDbObjectPointer<HxDbLinetypeTable> table(database().linetypeTableId(), HxDb::kForRead);
        HxDbObjectId id;
        table->getAt(name, id);
        return id;
    }
    static KvRestoreOptions with(std::int32_t mask) {
        KvRestoreOptions options;
        options.mask = mask;
        return options;
    }
    static SmallDrawing crossed() {
        SmallDrawing drawing = LayerStatesTest::drawing();
        drawing.linetype("DASHED", 1, 1);
        drawing.model(drawing.line("VIEWS", 0, 0, 10, 8) + drawing.line("0", 0, 8, 10, 0) +
                      drawing.line("HALLS", 0, 6, 10, 6));
        return drawing;
    }

private:
    HxUiLayerPreview m_preview;
};

TEST_F(PreviewTest, IsTheDrawingAfterARestoreInModelSpace) {
    openDrawing(crossed());
    run(L"LWDISPLAY 1\n");
    saveOtherState();
    expectSameAsRestored(L"S", with(kAll));
    for (const HxLyState::Property property :
         {HxLyState::kOn, HxLyState::kFrozen, HxLyState::kColor, HxLyState::kLineweight,
          HxLyState::kTransparency, HxLyState::kLocked, HxLyState::kLinetype}) {
        SCOPED_TRACE(property);
        expectSameAsRestored(L"S", with(property));
    }
}

TEST_F(PreviewTest, TurnsOffWhatTheStateDoesNotName) {
    SmallDrawing named = crossed();
    named.state(
        "S",
        "100\nAcDbXrecord\n91\n2047\n290\n1\n302\n0\n8\nWALLS\n90\n8\n62\n4\n370\n-3\n6\nMISSING\n440\n0\n"
        "8\nLOST\n90\n8\n62\n4\n370\n-3\n6\nMISSING\n440\n0\n");
    openDrawing(named);
    KvRestoreOptions options = with(kAll);
    options.turnOffOthers = true;
    expectSameAsRestored(L"S", options);
    goToLayout();
    expectSameAsRestored(L"S", options);
}

TEST_F(PreviewTest, TheCurrentLayerStaysThawed) {
    openDrawing(crossed());
    run(L"CLAYER 0\n");
    change(L"SPARE", [](auto& l) { l.setIsFrozen(true); });
    change(L"HALLS", [](auto& l) { l.setIsFrozen(true); });
    saveState(L"S");
    change(L"SPARE", [](auto& l) { l.setIsFrozen(false); });
    change(L"HALLS", [](auto& l) { l.setIsFrozen(false); });
    expectSameAsRestored(L"S", with(kAll));
    run(L"CLAYER SPARE\n");
    const auto states = engine();
    std::vector<HxUiLayerAs> layers;
    ASSERT_TRUE(
        layersAfterRestore(database(), states->states(), states->states().find(L"S"), with(kAll), layers));
    for (const HxUiLayerAs& as : layers) {
        EXPECT_EQ(as.layer == layer(L"HALLS"), (as.properties & HxLyState::kFrozen) != 0);
    }
    expectSameAsRestored(L"S", with(kAll));
}

TEST_F(PreviewTest, IsTheDrawingAfterARestoreInALayout) {
    SmallDrawing two = crossed();
    two.paper(two.viewport(3, 250, 100, 90, 5, 0));
    openDrawing(two);
    saveOtherState();
    goToLayout();
    run(L"CVPORT 2\n");
    inViewport(L"Freeze", L"WALLS");
    saveState(L"T");
    inViewport(L"Thaw", L"WALLS");
    inViewport(L"Freeze", L"NOTES");
    expectSameAsRestored(L"T", with(kAll));
    expectSameAsRestored(L"T", with(HxLyState::kCurrentViewportFrozen));
    run(L"CVPORT 3\n");
    inViewport(L"Freeze", L"HALLS");
    expectSameAsRestored(L"T", with(kAll));
    expectSameAsRestored(L"S", with(kAll));
    KvRestoreOptions options = with(kAll);
    options.asViewportOverrides = true;
    expectSameAsRestored(L"S", options);
    const auto states = engine();
    CKvLayerStateManDlg::m_bViewportReplaceChecked = 1;
    ASSERT_TRUE(states->CmdRestore(L"S", {}));
    change(L"WALLS", [](auto& l) { l.setColor(HxCmColor::byIndex(6)); });
    run(L"CVPORT 2\n");
    expectSameAsRestored(L"Now", with(HxLyState::kColor));
    expectSameAsRestored(L"S", options);
}

TEST_F(PreviewTest, LayersOfReferencesAreSeenThroughThem) {
    SmallDrawing plan;
    plan.model(plan.line("WALLS", 0, 0, 10, 10) + plan.line("DOORS", 0, 10, 10, 0));
    write("plan.dxf", plan.text());
    SmallDrawing host = crossed();
    host.xref("PLAN", "plan.dxf");
    host.model(host.insert("PLAN", "WALLS", 20, 0));
    openDrawing(host);
    saveState(L"Now");
    change(L"PLAN|WALLS", [](auto& l) { l.setColor(HxCmColor::byIndex(2)); });
    change(L"PLAN|DOORS", [](auto& l) { l.setIsOff(true); });
    saveState(L"S");
    ASSERT_TRUE(engine()->CmdRestore(L"Now", {}));
    expectSameAsRestored(L"S", with(kAll));
    expectSameAsRestored(L"S", with(HxLyState::kOn));
}

TEST_F(PreviewTest, NothingComesOfNothing) {
    openDrawing(crossed());
    const auto states = engine();
    auto* const empty = new CKvLayerState;
    empty->SetLayerStateName(L"EMPTY");
    ASSERT_TRUE(states->AddLayerState(empty, nullptr));
    std::vector<HxUiLayerAs> layers(1);
    EXPECT_FALSE(layersAfterRestore(database(), states->states(), empty, with(kAll), layers));
    EXPECT_TRUE(layers.empty());
    EXPECT_FALSE(layersAfterRestore(database(), states->states(), nullptr, with(kAll), layers));
}

/// Layers changed at random, a state of some moment restored at another, in all spaces and ways.
TEST_F(PreviewTest, RandomRestoresLookAsTheirPreviews) {
    SmallDrawing two = crossed();
    two.paper(two.viewport(3, 250, 100, 90, 5, 0));
    openDrawing(two);
    run(L"LWDISPLAY 1\n");
    const unsigned seed = walkSeed(7);
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const auto any = [&](unsigned below) { return static_cast<int>(random() % below); };
    const wchar_t* const names[] = {L"0", L"WALLS", L"NOTES", L"SPARE", L"HALLS", L"VIEWS"};
    const auto shuffle = [&] {
        for (const wchar_t* const name : names) {
            const HxDbObjectId there = any(2) == 0 ? HxDbObjectId() : hxdbGetCurVportId(&database());
            change(name, [&](auto& l) {
                l.setIsOff(any(3) == 0);
                l.setIsFrozen(any(3) == 0);
                l.setIsLocked(any(3) == 0);
                l.setColor(HxCmColor::byIndex(static_cast<std::int16_t>(1 + any(6))), there);
                l.setLineWeight(static_cast<HxDb::LineWeight>(any(2) == 0 ? 25 : 200), there);
                l.setTransparency(HxCmTransparency(static_cast<std::uint8_t>(255 - 100 * any(2))), there);
            });
            if (!database().tilemode()) inViewport(any(2) == 0 ? L"Freeze" : L"Thaw", name);
        }
    };
    const auto goSomewhere = [&] {
        const wchar_t* const ways[] = {L"TILEMODE 1\n", L"TILEMODE 0\nMSPACE\nCVPORT 2\n",
                                       L"TILEMODE 0\nMSPACE\nCVPORT 3\n", L"TILEMODE 0\nPSPACE\n"};
        run(ways[any(4)]);
    };
    int different = 0;
    for (int round = 0; round < 40 && !HasFailure(); ++round) {
        SCOPED_TRACE(round);
        goSomewhere();
        shuffle();
        const auto states = engine();
        CKvLayerState* const state = states->CmdNew(L"R", L"");
        goSomewhere();
        shuffle();
        run(std::wstring(L"-LAYER\nThaw\n") + names[round % 6] + L"\nSet\n" + names[round % 6] + L"\n\n");
        KvRestoreOptions options = with(any(3) == 0 ? static_cast<std::int32_t>(random() % kAll) : kAll);
        options.asViewportOverrides = any(2) == 0;
        std::vector<HxUiLayerAs> layers;
        ASSERT_TRUE(layersAfterRestore(database(), states->states(), state, options, layers));
        const QImage now = drawn({});
        const QImage preview = drawn(layers);
        CKvLayerStateManDlg::m_bViewportReplaceChecked = options.asViewportOverrides ? 1 : 0;
        ASSERT_TRUE(states->restoreLayerState(*state, options.mask, {}));
        EXPECT_EQ(drawn({}), preview);
        different += now != preview ? 1 : 0;
    }
    EXPECT_GT(different, 20);
}

class PaneTest : public PreviewTest {
protected:
    void SetUp() override {
        PreviewTest::SetUp();
        openDrawing(crossed());
        saveOtherState();
        m_engine = engine();
        state = m_engine->states().find(L"S");
    }
    void TearDown() override {
        pane.reset();
        m_engine.reset();
        PreviewTest::TearDown();
    }
    KvLayerStateMap& map() { return m_engine->states(); }
    void showPane() {
        pane = std::make_unique<KvRestorePreview>(map(), &database());
        pane->resize(400, 300);
        pane->show();
        QTest::qWait(0);
    }
    KvPreviewPicture& shown() { return *pane->findChild<KvPreviewPicture*>(); }
    QToolButton& heading() { return *pane->findChild<QToolButton*>("IDC_LAYERMAN_PREVIEW_FOLD"); }
    /// Longer than it takes to draw.
    bool isDrawn(int pictures) {
        return QTest::qWaitFor([&] { return pane->pictures() >= pictures; }, 20000);
    }
    static void rest() { QTest::qWait(400); }

    std::unique_ptr<KvRestorePreview> pane;
    CKvLayerState* state = nullptr;

private:
    std::unique_ptr<CKvLayerStateManDlg> m_engine;
};

TEST_F(PaneTest, DrawsOnceAfterManyChangesAndThenRests) {
    showPane();
    const QString none = shown().text();
    EXPECT_FALSE(none.isEmpty());
    EXPECT_EQ(none, shown().accessibleDescription());
    for (const std::int32_t mask : {1, 2, 3, kAll}) {
        pane->setSelection({state}, with(mask));
    }
    EXPECT_EQ(0, pane->pictures()) << "not while it changes";
    ASSERT_TRUE(isDrawn(1));
    EXPECT_EQ("S", shown().accessibleDescription());
    std::vector<HxUiLayerAs> layers;
    layersAfterRestore(database(), map(), state, with(kAll), layers);
    QImage expected;
    HxUiLayerPreview own;
    own.draw(expected, &database(), layers, shown().size() - QSize(2, 2), 1, kNoLimit);
    EXPECT_EQ(expected, shown().picture()) << "with the last mask";
    rest();
    EXPECT_EQ(1, pane->pictures()) << "nothing has changed";
    pane->resize(500, 300);
    ASSERT_TRUE(isDrawn(2));
    EXPECT_EQ(shown().size() - QSize(2, 2), shown().picture().size());
    pane->setSelection({state, map().find(L"Now")}, with(kAll));
    EXPECT_TRUE(shown().picture().isNull());
    EXPECT_FALSE(shown().text().isEmpty());
    EXPECT_NE(none, shown().text());
    pane->setSelection({}, with(kAll));
    EXPECT_EQ(none, shown().text());
    rest();
    EXPECT_EQ(2, pane->pictures());
}

TEST_F(PaneTest, AStateThatGoesMeanwhileIsNoHarm) {
    showPane();
    const QString none = shown().text();
    pane->setSelection({state}, with(kAll));
    map().remove(state);
    rest();
    EXPECT_EQ(0, pane->pictures());
    EXPECT_EQ(none, shown().text());
    auto* const empty = new CKvLayerState;
    empty->SetLayerStateName(L"EMPTY");
    map().add(empty, nullptr);
    pane->setSelection({empty}, with(kAll));
    rest();
    EXPECT_TRUE(shown().text().contains("EMPTY"));
}

TEST_F(PaneTest, FoldedNothingIsDrawnAndTheNextOneIsFolded) {
    showPane();
    EXPECT_FALSE(pane->isFolded());
    pane->setSelection({state}, with(kAll));
    ASSERT_TRUE(isDrawn(1));
    const int open = pane->sizeHint().height();
    QTest::mouseClick(&heading(), Qt::LeftButton);
    EXPECT_TRUE(pane->isFolded());
    EXPECT_FALSE(shown().isVisible());
    EXPECT_LT(pane->sizeHint().height(), open / 2);
    pane->setSelection({state}, with(1));
    rest();
    EXPECT_EQ(1, pane->pictures());
    showPane();
    EXPECT_TRUE(pane->isFolded());
    const QString tip = heading().toolTip();
    pane->setSelection({state}, with(kAll));
    rest();
    EXPECT_EQ(0, pane->pictures());
    heading().setFocus();
    QTest::keyClick(&heading(), Qt::Key_Space);
    EXPECT_FALSE(pane->isFolded());
    EXPECT_NE(tip, heading().toolTip());
    EXPECT_TRUE(isDrawn(1)) << "what was selected meanwhile";
    pane->hide();
    pane->setSelection({state}, with(1));
    rest();
    EXPECT_EQ(1, pane->pictures()) << "nor is anything drawn that is not seen";
    pane->show();
    EXPECT_TRUE(isDrawn(2));
    showPane();
    EXPECT_FALSE(pane->isFolded());
}

}  // namespace
