// From layers to states.
#include "tests/module/layer_states/layer_states_fixture.h"

using korvex::toUtf8;
using namespace korvex::test;

namespace {

class CaptureTest : public LayerStatesTest {
protected:
    void SetUp() override {
        LayerStatesTest::SetUp();
        openDrawing(drawing());
    }
    /// The entry that a new state would have for a layer.
    HxLyStateEntry captured(const wchar_t* name) {
        const auto states = engine();
        const CKvLayerState* const state = states->CmdNew(L"now", L"");
        const HxLyStateEntry* const entry = entryOf(states->states(), state, name);
        return entry ? *entry : HxLyStateEntry();
    }
};

}  // namespace

TEST_F(CaptureTest, TakesEachFlagByItself) {
    const struct {
        HxLyState::LayerFlag flag;
        void (*set)(HxDbLayerTableRecord&);
        void (*reset)(HxDbLayerTableRecord&);
    } flags[] = {
        {HxLyState::kLayerOff, [](auto& l) { l.setIsOff(true); }, [](auto& l) { l.setIsOff(false); }},
        {HxLyState::kLayerFrozen, [](auto& l) { l.setIsFrozen(true); },
         [](auto& l) { l.setIsFrozen(false); }},
        {HxLyState::kLayerLocked, [](auto& l) { l.setIsLocked(true); },
         [](auto& l) { l.setIsLocked(false); }},
        {HxLyState::kLayerNewViewportFrozen, [](auto& l) { l.setVPDFLT(true); },
         [](auto& l) { l.setVPDFLT(false); }},
    };
    EXPECT_EQ(captured(L"WALLS").flags, HxLyState::kLayerPlots) << "a layer that says nothing plots";
    for (const auto& flag : flags) {
        change(L"WALLS", flag.set);
        EXPECT_EQ(captured(L"WALLS").flags, HxLyState::kLayerPlots | flag.flag);
        change(L"WALLS", flag.reset);
    }
    change(L"WALLS", [](auto& l) { l.setIsPlottable(false); });
    EXPECT_EQ(captured(L"WALLS").flags, 0);
}

TEST_F(CaptureTest, TakesColoursWithRedInTheLowByte) {
    change(L"WALLS", [](auto& l) { l.setColor(HxCmColor::byRgb(0x11, 0x22, 0x33)); });
    change(L"NOTES", [](auto& l) {
        HxCmColor colour = HxCmColor::byRgb(200, 100, 50);
        colour.setNames(L"RAL 2001", L"RAL CLASSIC");
        l.setColor(colour);
        l.setTransparency(HxCmTransparency(127));
        l.setLineWeight(static_cast<HxDb::LineWeight>(35));
    });
    EXPECT_EQ(captured(L"WALLS").trueColor, 0x332211);
    EXPECT_EQ(captured(L"WALLS").colorBook, L"");
    EXPECT_EQ(captured(L"WALLS").transparency, 255) << "none set";
    const HxLyStateEntry notes = captured(L"NOTES");
    EXPECT_EQ(notes.colorBook, L"RAL CLASSIC$RAL 2001");
    EXPECT_EQ(notes.transparency, 127);
    EXPECT_EQ(notes.lineweight, 35);
    EXPECT_EQ(notes.linetype, L"Continuous");
    EXPECT_EQ(captured(L"SPARE").trueColor, -1);
}

TEST_F(CaptureTest, NamesLayersInOrderAndTheCurrentOne) {
    run(L"-LAYER\nNew\nAbove,zig\n\n");
    const auto states = engine();
    const CKvLayerState* const state = states->CmdNew(L" now ", L"all of it");
    ASSERT_NE(state, nullptr);
    EXPECT_EQ(state->GetLayerStateName(), L"now");
    EXPECT_EQ(state->GetDescription(), L"all of it");
    EXPECT_EQ(state->GetCurrentLayerName(), L"SPARE");
    EXPECT_EQ(state->GetLayerStateMake(), 2047);
    EXPECT_EQ(state->GetSpace(), 0);
    EXPECT_EQ(state->GetSameAsDWG(), 1);
    std::wstring names;
    for (const CKvLayerStateInfo* const entry : *states->states().entries(state)) {
        names += entry->GetLayerName() + (entry->GetCurrentLayer() != 0 ? L"* " : L" ");
    }
    EXPECT_EQ(names, L"0 Above NOTES SPARE* VIEWS WALLS zig ");
}

TEST_F(CaptureTest, InALayoutTakesWhatTheViewportShows) {
    goToLayout();
    inViewport(L"Freeze", L"NOTES");
    const HxDbObjectId viewport = hxdbGetCurVportId(&database());
    ASSERT_FALSE(viewport.isNull());
    change(L"WALLS", [&](auto& l) {
        l.setColor(HxCmColor::byIndex(1), viewport);
        l.setTransparency(HxCmTransparency(100), viewport);
    });
    EXPECT_EQ(captured(L"WALLS").colorIndex, 1);
    EXPECT_EQ(captured(L"WALLS").transparency, 100);
    EXPECT_EQ(captured(L"WALLS").flags, HxLyState::kLayerPlots);
    EXPECT_EQ(captured(L"NOTES").flags, HxLyState::kLayerPlots | HxLyState::kLayerCurrentViewportFrozen);
    EXPECT_EQ(captured(L"NOTES").colorIndex, 7);
    run(L"LAYOUT\nSet\nModel\n");
    EXPECT_EQ(captured(L"WALLS").colorIndex, 7) << "model space has no overrides";
    EXPECT_EQ(captured(L"NOTES").flags, HxLyState::kLayerPlots);
}

TEST_F(CaptureTest, OverwritingKeepsMaskAndPlaceAndTakesNoOverrides) {
    const auto states = engine();
    CKvLayerState* const plan = states->CmdNew(L"Plan Ä", L"first");
    states->CmdNew(L"other", L"");
    plan->SetLayerStateMake(3);
    goToLayout();
    const HxDbObjectId viewport = hxdbGetCurVportId(&database());
    change(L"WALLS", [&](auto& l) {
        l.setIsLocked(true);
        l.setColor(HxCmColor::byIndex(1), viewport);
    });
    inViewport(L"Freeze", L"NOTES");
    states->SetIsModelSpace(0);
    EXPECT_EQ(states->CmdNew(L"plan ä", L"second"), plan);
    EXPECT_EQ(states->states().size(), 2U);
    EXPECT_EQ(states->states().at(0), plan);
    EXPECT_EQ(plan->GetLayerStateName(), L"plan ä");
    EXPECT_EQ(plan->GetDescription(), L"second");
    EXPECT_EQ(plan->GetLayerStateMake(), 3);
    EXPECT_EQ(plan->GetSpace(), 1);
    const HxLyStateEntry* const walls = entryOf(states->states(), plan, L"WALLS");
    ASSERT_NE(walls, nullptr);
    EXPECT_EQ(walls->colorIndex, 7);
    EXPECT_EQ(walls->flags, HxLyState::kLayerPlots | HxLyState::kLayerLocked);
    EXPECT_EQ(entryOf(states->states(), plan, L"NOTES")->flags,
              HxLyState::kLayerPlots | HxLyState::kLayerCurrentViewportFrozen);
}

TEST_F(CaptureTest, RefusesNamesThatStatesCannotHave) {
    const auto states = engine();
    for (const wchar_t* const name : {L"", L"  ", L"a<b", L"a,b", L"a>b", L"a/b", L"a?b", L"a'b", L"a\"b",
                                      L"a\\b", L"a|b", L"a;b", L"a:b", L"a=b", L"a*b", L"a\nb"}) {
        EXPECT_EQ(states->CmdNew(name, L""), nullptr);
    }
    EXPECT_NE(states->CmdNew(L"plan-a_1 (new)", L""), nullptr);
    EXPECT_EQ(states->states().size(), 1U);
}

/// With named plot styles.
TEST_F(LayerStatesTest, OverwritingKeepsThePlotStylesThatTheStateHad) {
    SmallDrawing styled = drawing();
    styled.useNamedPlotStyles();
    openDrawing(styled);
    change(L"WALLS", [](auto& l) { ASSERT_EQ(l.setPlotStyleName(L"Screened"), Hx::eOk); });
    const auto states = engine();
    CKvLayerState* const plan = states->CmdNew(L"plan", L"");
    EXPECT_EQ(entryOf(states->states(), plan, L"WALLS")->plotStyle, L"Screened");
    change(L"WALLS", [](auto& l) { l.setPlotStyleName(L"Normal"); });
    run(L"-LAYER\nNew\nnew\n\n");
    change(L"new", [](auto& l) { l.setPlotStyleName(L"Screened"); });
    ASSERT_TRUE(states->SaveasLayerState(plan));
    EXPECT_EQ(entryOf(states->states(), plan, L"WALLS")->plotStyle, L"Screened");
    EXPECT_EQ(entryOf(states->states(), plan, L"new")->plotStyle, L"Screened") << "a layer that it lacked";
    ASSERT_EQ(states->BuildLayerStateExtensionDictionary(), 1);
    const std::wstring groups = groupsOf(recordOf(L"plan"));
    EXPECT_TRUE(contains(groups, L"6 Continuous\n390 object\n440 0\n")) << toUtf8(groups);
    EXPECT_FALSE(contains(groups, L"\n2 "));
}
