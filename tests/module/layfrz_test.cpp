// LAYFRZ on a drawing: whose layer is frozen, where, and what can be taken back.
#include "tests/module/module_fixture.h"

#include "host/editor/editor_notices.h"

namespace korvex::test {
namespace {

constexpr wchar_t kNesting[] = L"UserInterfaceSettings\\LayerTools\\FRZ_BlockNesting";
constexpr wchar_t kViewport[] = L"UserInterfaceSettings\\LayerTools\\FRZ_Vpfreeze";

class LayFrz : public DrawingTest {
protected:
    std::wstring layfrz(const std::wstring& answers) { return run(L"LAYFRZ " + answers + L"\n"); }
    void goToViewport() {
        run(L"LAYOUT S Layout1\nMSPACE\n");
        ASSERT_EQ(variable(L"CVPORT"), L"2");
    }
};

TEST_F(LayFrz, FreezesByNestingAndUndoesTheWholeCommand) {
    struct Row {
        const wchar_t* pick;
        const wchar_t* no;
        const wchar_t* block;
        const wchar_t* entity;
    };
    const Row rows[] = {
        {L"5,0", L"WALLS", L"WALLS", L"WALLS"},
        {L"5,6", L"W\u00E4nde 2", L"W\u00E4nde 2", L"W\u00E4nde 2"},
        {L"105,0", L"TOP", L"MIDDLE", L"INNER"},
        {L"200,15", L"TURNED", L"TURNED", L"INNER"},
        {L"305,0", L"XREFS", L"PLAN|WALLS", L"PLAN|WALLS"},
        {L"305,2", L"XREFS", L"0", L"0"},
        {L"305,4", L"XREFS", L"PLAN|FRAMES", L"PLAN|DOORS"},
        {L"405,0", L"TOP", L"PLAN|WALLS", L"PLAN|WALLS"},
    };
    for (const Row& row : rows) {
        const std::wstring pick = row.pick;
        for (const auto& [keyword, layer] :
             {std::pair(L"No", row.no), std::pair(L"Block", row.block), std::pair(L"Entity", row.entity)}) {
            const std::wstring shown =
                layfrz(L"Settings Block " + std::wstring(keyword) + L" " + pick + L" X");
            EXPECT_EQ(frozen(), Names{layer}) << pick << " " << keyword;
            EXPECT_TRUE(contains(shown, L"Layer \"" + std::wstring(layer) + L"\" is frozen.")) << shown;
            EXPECT_EQ(run(L"U\n"), L"Command: U\nLAYFRZ\n");
            EXPECT_EQ(frozen(), Names()) << pick << " " << keyword;
        }
    }
    EXPECT_EQ(failures, Lines());
    EXPECT_EQ(hxGetResourceHandle(), nullptr);
}

TEST_F(LayFrz, EchoIsOffWhileALayerIsFrozenAndThenAsItWas) {
    Recorder recorder;
    for (const wchar_t* const echo : {L"1", L"0"}) {
        run(L"CMDECHO " + std::wstring(echo) + L"\n");
        recorder.log.clear();
        layfrz(L"5,0 5,2 U 5,8 X");
        EXPECT_EQ(variable(L"CMDECHO"), echo);
        EXPECT_EQ(std::count(recorder.log.begin(), recorder.log.end(), L"did CMDECHO"), 4)
            << "off and back for each of two layers, not for the one that is refused";
        EXPECT_EQ(frozen(), Names{L"WALLS"});
        run(L"U\n");
    }
}

TEST_F(LayFrz, UndoTakesBackOnePickAtATime) {
    layfrz(L"5,0 5,2 105,0 U X");
    EXPECT_EQ(frozen(), (Names{L"WALLS", L"NOTES"}));
    run(L"U\n");
    EXPECT_EQ(frozen(), Names());
    run(L"REDO\n");
    EXPECT_EQ(frozen(), (Names{L"WALLS", L"NOTES"}));
    run(L"U\n");

    const std::wstring nothing = L"Everything has been undone.";
    EXPECT_FALSE(contains(layfrz(L"5,0 5,2 105,0 U U U X"), L"undone")) << "it goes without a word";
    EXPECT_EQ(frozen(), Names());
    EXPECT_TRUE(contains(layfrz(L"5,0 5,2 105,0 U U U U X"), nothing));
    EXPECT_TRUE(contains(layfrz(L"U 5,2 X"), nothing));
    EXPECT_EQ(frozen(), Names{L"NOTES"});
    // What was undone can be picked again.
    layfrz(L"5,0 U 5,0 X");
    EXPECT_EQ(frozen(), (Names{L"WALLS", L"NOTES"}));
}

TEST_F(LayFrz, ARefusedPickIsAStepOfItsOwn) {
    layfrz(L"5,0 5,8 U X");
    EXPECT_EQ(frozen(), Names{L"WALLS"});
    layfrz(L"5,2 5,8 U U X");
    EXPECT_EQ(frozen(), Names{L"WALLS"});
}

TEST_F(LayFrz, RefusesTheCurrentLayerAndGoesOn) {
    const std::wstring shown = layfrz(L"5,8 5,0 X");
    EXPECT_TRUE(contains(shown, L"\"SPARE\" is the current layer and was not frozen")) << shown;
    EXPECT_EQ(frozen(), Names{L"WALLS"});
    run(L"CLAYER 0\n");
    EXPECT_TRUE(contains(layfrz(L"305,2 X"), L"\"0\" is the current layer"));
    EXPECT_EQ(frozen(), Names{L"WALLS"});
    // The sheet itself, outside of its viewports, is no different.
    run(L"-LAYER T WALLS\n\nCLAYER WALLS\nLAYOUT S Layout1\nPSPACE\n");
    EXPECT_TRUE(contains(layfrz(L"100,100 X"), L"\"WALLS\" is the current layer"));
}

TEST_F(LayFrz, GoesOnAfterMissesAndWordsAndEndsAtEnter) {
    EXPECT_EQ(frozen(), Names());
    const std::wstring shown = layfrz(L"5000,5000 hello 5,0\n");
    EXPECT_TRUE(contains(shown, L"Expects a point or Settings")) << shown;
    EXPECT_EQ(frozen(), Names{L"WALLS"});
    EXPECT_EQ(failures, Lines());
    // Nothing after Enter reaches the command.
    EXPECT_TRUE(contains(run(L"LAYFRZ\n\n5,2\n"), L"Unknown command \"5,2\""));
    EXPECT_EQ(frozen(), Names{L"WALLS"});
    // A cancel keeps what is frozen.
    layfrz(L"5,2 \x1B");
    EXPECT_EQ(frozen(), (Names{L"WALLS", L"NOTES"}));
}

TEST_F(LayFrz, KeepsItsSettings) {
    EXPECT_EQ(setting(kNesting).type(), VrexVariant::kEmpty);
    layfrz(L"X");
    EXPECT_EQ(setting(kNesting), VrexVariant(std::int32_t(1)));
    EXPECT_EQ(setting(kViewport), VrexVariant(std::int32_t(1)));

    EXPECT_TRUE(contains(layfrz(L"S B Entity S V Freeze \x1B"), L"<Block>"));
    EXPECT_EQ(setting(kNesting), VrexVariant(std::int32_t(2)));
    EXPECT_EQ(setting(kViewport), VrexVariant(std::int32_t(0)));
    // Enter changes nothing, at the menu and below it.
    const std::wstring shown = run(L"LAYFRZ S B\n\nS V\n\nS\n\nX\n");
    EXPECT_TRUE(contains(shown, L"<Entity>")) << shown;
    EXPECT_TRUE(contains(shown, L"use [Freeze/Vpfreeze] <Freeze>:")) << shown;
    EXPECT_EQ(setting(kNesting), VrexVariant(std::int32_t(2)));
    EXPECT_EQ(failures, Lines());

    layfrz(L"S B No S V Vpfreeze X");
    EXPECT_EQ(setting(kNesting), VrexVariant(std::int32_t(0)));
    EXPECT_EQ(setting(kViewport), VrexVariant(std::int32_t(1)));
    // A setting of another type counts as 0.
    vrexConfig()->setValue(kHxConfigUser, kNesting, VrexVariant(L"2"));
    vrexConfig()->setValue(kHxConfigUser, kViewport, VrexVariant(true));
    const std::wstring again = run(L"LAYFRZ S B\n\nS V\n\nX\n");
    EXPECT_TRUE(contains(again, L"<No>") && contains(again, L"<Freeze>")) << again;
}

TEST_F(LayFrz, AsksAgainAfterUnknownWordsAndEndsAtACancel) {
    const std::wstring shown = layfrz(L"S what B what Entity S V what Freeze X");
    std::size_t complaints = 0;
    for (std::size_t at = shown.find(L"Invalid option"); at != std::wstring::npos;
         at = shown.find(L"Invalid option", at + 1)) {
        ++complaints;
    }
    EXPECT_EQ(complaints, 3U) << shown;
    EXPECT_EQ(setting(kNesting), VrexVariant(std::int32_t(2)));
    for (const wchar_t* const answers : {L"S \x1B", L"S B \x1B", L"S V \x1B"}) {
        run(L"LAYFRZ " + std::wstring(answers) + L"5,0\n");
        EXPECT_EQ(frozen(), Names()) << answers;
    }
    EXPECT_EQ(setting(kNesting), VrexVariant(std::int32_t(2)));
}

TEST_F(LayFrz, WorksWithoutAConfigurationService) {
    const QByteArray profile = qgetenv("KORVEX_PROFILE_DIR");
    qputenv("KORVEX_PROFILE_DIR", "/dev/null/none");
    ASSERT_EQ(vrexConfig(), nullptr);
    const std::wstring shown = layfrz(L"S B Entity 105,0 S B\n\nX");
    qputenv("KORVEX_PROFILE_DIR", profile);
    EXPECT_TRUE(contains(shown, L"<Block>") && contains(shown, L"<Entity>")) << shown;
    EXPECT_EQ(frozen(), Names{L"INNER"});
    EXPECT_EQ(setting(kNesting).type(), VrexVariant::kEmpty);
}

TEST_F(LayFrz, FreezesInTheCurrentViewportOnly) {
    goToViewport();
    const std::wstring shown = layfrz(L"5,0 X");
    EXPECT_TRUE(contains(shown, L"Layer \"WALLS\" is frozen in the current viewport.")) << shown;
    EXPECT_EQ(frozenHere(), Names{L"WALLS"});
    EXPECT_EQ(frozen(), Names());
    run(L"U\n");
    EXPECT_EQ(frozenHere(), Names());
    layfrz(L"5,0 5,2 U X");
    EXPECT_EQ(frozenHere(), Names{L"WALLS"});
    layfrz(L"S V Freeze 5,2 X");
    EXPECT_EQ(frozen(), Names{L"NOTES"});
    EXPECT_EQ(frozenHere(), Names{L"WALLS"});
}

TEST_F(LayFrz, RedrawsAfterAFreezeInAViewport) {
    layfrz(L"5,0 X");
    goToViewport();
    int before = redrawCount();
    layfrz(L"5,2 105,0 X");
    EXPECT_EQ(redrawCount(), before + 2);
    before = redrawCount();
    layfrz(L"5,8 No X");
    layfrz(L"S V Freeze 305,0 X");
    EXPECT_EQ(redrawCount(), before) << "only then: the host shows other changes by itself";
}

TEST_F(LayFrz, QualifiedNamesEndAt255Characters) {
    const std::string block(150, 'P');
    const std::string name(120, 'L');
    const std::string cut = (block + "|" + name).substr(0, 255);
    SmallDrawing plan;
    plan.model(plan.line(name, 0, 0, 10, 0));
    write("long.dxf", plan.text());
    SmallDrawing floor;
    floor.xref(block, "long.dxf");
    floor.model(floor.insert(block, "XREFS", 0, 0) + floor.line(cut, 0, 50, 10, 50));
    write("of-long-names.dxf", floor.text());
    open("of-long-names.dxf");
    ASSERT_TRUE(hasLayer(std::wstring(cut.begin(), cut.end()).c_str()));
    layfrz(L"S B Entity 5,0 X");
    EXPECT_EQ(frozen(), Names{std::wstring(cut.begin(), cut.end())});
    EXPECT_EQ(failures, Lines());
}

TEST_F(LayFrz, AsksBeforeTheCurrentLayerFreezesInAViewport) {
    goToViewport();
    for (const wchar_t* const no : {L"5,8\n\nX", L"5,8 No X", L"5,8 what N X", L"5,8 \x1B"}) {
        const std::wstring shown = layfrz(no);
        EXPECT_TRUE(contains(shown, L"Freeze it in the current viewport? [Yes/No] <No>:")) << shown;
        EXPECT_EQ(contains(shown, L"Invalid option keyword."), contains(no, L"what")) << shown;
        EXPECT_EQ(frozenHere(), Names()) << no;
    }
    // A cancelled question ends the command.
    run(L"LAYFRZ 5,8 \x1B"
        L"5,0\n");
    EXPECT_EQ(frozenHere(), Names());
    layfrz(L"5,8 Yes X");
    EXPECT_EQ(frozenHere(), Names{L"SPARE"});
    EXPECT_EQ(frozen(), Names());
}

TEST_F(LayFrz, LeavesTheCurrentLayerToTheHostInAViewportWithFreeze) {
    goToViewport();
    const std::wstring shown = layfrz(L"S V Freeze 5,8 X");
    EXPECT_FALSE(contains(shown, L"Freeze it in the current viewport?")) << shown;
    EXPECT_FALSE(contains(shown, L"\"SPARE\" is frozen")) << shown;
    EXPECT_TRUE(contains(shown, L"\"SPARE\" is the current layer")) << shown;
    EXPECT_EQ(frozen(), Names());
    EXPECT_EQ(frozenHere(), Names());
}

TEST_F(LayFrz, PicksThroughAViewportFromTheSheet) {
    run(L"LAYOUT S Layout1\nPSPACE\n");
    ASSERT_EQ(variable(L"CVPORT"), L"1");
    layfrz(L"100,100 X");
    EXPECT_EQ(frozen(), Names{L"WALLS"});
    EXPECT_EQ(run(L"U\n"), L"Command: U\nLAYFRZ\n");
    EXPECT_EQ(frozen(), Names());
}

TEST_F(LayFrz, SpeaksGerman) {
    linker().unloadModule(kModule);
    qputenv("LC_ALL", "de_AT.UTF-8");
    load();
    const std::wstring shown = run(L"LAYERFRIEREN E B O 105,0 Beenden\n");
    EXPECT_TRUE(contains(shown, L"Layer \"INNER\" ist gefroren.")) << shown;
    EXPECT_TRUE(contains(shown, L"[Block/Objekt/Nein] <Block>:")) << shown;
    EXPECT_EQ(setting(kNesting), VrexVariant(std::int32_t(2)));
    run(L"_LAYFRZ _Undo 5,0 _Undo 5,2 _eXit\n");
    EXPECT_EQ(frozen(), (Names{L"INNER", L"NOTES"}));
    EXPECT_EQ(failures, Lines());
    qputenv("LC_ALL", "C");
}

}  // namespace
}  // namespace korvex::test
