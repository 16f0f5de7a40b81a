// -LAYERSTATE as users and scripts give it: in one line, question by question, over other drawings.
#include "sdk/hxlystate.h"
#include "tests/editor/editor_fixture.h"
#include "tests/module/small_drawing.h"

namespace korvex::test {
namespace {

class LayerStateCommand : public EditorTest {
protected:
    void SetUp() override {
        run(L"-LAYER N WALLS,DOORS,NOTES\nC 1 WALLS\n\n");
        ASSERT_EQ(failures, Lines());
    }
    HxDbLayerStateManager& states() { return *database().getLayerStateManager(); }
    HxLyStateHeader header(const wchar_t* name) {
        HxLyStateHeader found;
        EXPECT_EQ(states().getLayerStateHeader(found, name), Hx::eOk);
        return found;
    }
    bool isFrozen(const wchar_t* name) {
        const HxDbObjectPointer<HxDbLayerTableRecord> record(layer(name), HxDb::kForRead);
        return record && record->isFrozen();
    }
    int color(const wchar_t* name) {
        const HxDbObjectPointer<HxDbLayerTableRecord> record(layer(name), HxDb::kForRead);
        return record->color().colorIndex();
    }
    /// The failures of some commands, without the ones before.
    Lines failuresOf(const std::wstring& commands) {
        failures.clear();
        run(commands);
        return failures;
    }
};

}  // namespace

TEST_F(LayerStateCommand, OneLineAsksNothingMore) {
    EXPECT_TRUE(contains(run(L"-LAYERSTATE Save late evening\n-LAYER F WALLS\n\n"), L"saved: 4 layer(s)."));
    EXPECT_TRUE(isFrozen(L"WALLS"));
    EXPECT_EQ(failuresOf(L"-LAYERSTATE Compare late evening\n"), Lines{L"late evening: 1 difference(s)"});
    EXPECT_TRUE(
        contains(run(L"-LAYERSTATE Compare late evening\n"), L"  WALLS: freeze: frozen, should be thawed"));
    failures.clear();
    run(L"-LAYERSTATE Restore LATE evening\n");
    EXPECT_FALSE(isFrozen(L"WALLS"));
    EXPECT_TRUE(contains(run(L"-LAYERSTATE Compare late evening\n"), L"late evening: the same"));
    EXPECT_TRUE(contains(run(L"U\n"), L"Restore layer state LATE evening"));
    EXPECT_TRUE(isFrozen(L"WALLS"));
    EXPECT_TRUE(contains(run(L"U\nU\n"), L"Save layer state late evening"));
    EXPECT_FALSE(states().hasLayerState(L"late evening"));
    EXPECT_EQ(failures, Lines());
}

TEST_F(LayerStateCommand, QuestionByQuestion) {
    run(L"-LAYERSTATE\nSave\nevening\nas we leave \n");
    EXPECT_EQ(header(L"evening").description, L"as we leave ");
    EXPECT_EQ(header(L"evening").mask, HxLyState::kAllProperties & ~HxLyState::kCurrentViewportFrozen);
    run(L"-LAYER F WALLS\nC 3 WALLS\n\n-LAYERSTATE\nRestore\nevening\nxyz\nc, w\n");
    EXPECT_EQ(failures.size(), 1U) << "xyz are no letters of properties";
    EXPECT_EQ(color(L"WALLS"), 1);
    EXPECT_TRUE(isFrozen(L"WALLS"));
    run(L"-LAYERSTATE\nRestore\nevening\n\n");
    EXPECT_FALSE(isFrozen(L"WALLS"));
    failures.clear();

    EXPECT_TRUE(contains(run(L"-LAYERSTATE Save EVENING\nNo\n"), L"No layer state was saved."));
    run(L"-LAYER F DOORS\n\n-LAYERSTATE Save EVENING\nYes\n");
    EXPECT_EQ(header(L"evening").description, L"as we leave ") << "it stays when nobody asks";
    run(L"-LAYERSTATE\nSave\nevening\nYes\n\n");
    EXPECT_EQ(header(L"evening").description, L"as we leave ");
    EXPECT_EQ(failures, Lines());
    EXPECT_EQ(failuresOf(L"-LAYERSTATE Save EVENING").size(), 1U) << "the question is not answered";
}

TEST_F(LayerStateCommand, ListTellsEachState) {
    ASSERT_EQ(states().saveLayerState(L"morning", 7, {}, L"coffee"), Hx::eOk);
    ASSERT_EQ(states().saveLayerState(L"secret", HxLyState::kHidden | 7, {}), Hx::eOk);
    run(L"-LAYER OFF NOTES\n\n-LAYERSTATE Save evening\n");
    const std::wstring list = run(L"-LAYERSTATE ?\n");
    EXPECT_TRUE(contains(list, L"morning                         4       Model   differs  coffee"));
    EXPECT_TRUE(contains(list, L"evening                         4       Model   same     "));
    EXPECT_TRUE(contains(list, L"2 layer state(s)."));
    EXPECT_FALSE(contains(list, L"secret"));
    EXPECT_EQ(failuresOf(L"-LAYERSTATE Compare *\n"), Lines{L"morning: 1 difference(s)"});
    EXPECT_EQ(failuresOf(L"-LAYERSTATE Compare secret\n"), Lines{L"secret: 1 difference(s)"});
    EXPECT_EQ(failuresOf(L"-LAYERSTATE Delete *n*g,none\n").size(), 1U);
    EXPECT_FALSE(states().hasLayerState(L"morning"));
    EXPECT_TRUE(states().hasLayerState(L"secret")) << "patterns leave hidden ones alone";
    EXPECT_TRUE(contains(run(L"U\n"), L"Delete 2 layer states"));
    EXPECT_TRUE(states().hasLayerState(L"morning"));
}

TEST_F(LayerStateCommand, TheStatesLayerBecomesCurrentAndTheOtherMayFreeze) {
    run(L"-LAYER Set DOORS\nF NOTES\n\n-LAYERSTATE Save evening\n-LAYER T NOTES\nSet NOTES\nF DOORS\n\n");
    ASSERT_EQ(variable(L"CLAYER"), L"\"NOTES\"");
    run(L"-LAYERSTATE Restore evening\n");
    EXPECT_EQ(variable(L"CLAYER"), L"\"DOORS\"");
    EXPECT_TRUE(isFrozen(L"NOTES")) << "frozen once another layer is current";
    run(L"U\n");
    EXPECT_EQ(variable(L"CLAYER"), L"\"NOTES\"");
    EXPECT_FALSE(isFrozen(L"NOTES"));
    run(L"-LAYERSTATE\nRestore\nevening\nC\n");
    EXPECT_EQ(variable(L"CLAYER"), L"\"NOTES\"") << "its layer stays frozen without F";
    EXPECT_EQ(failures, Lines());
}

TEST_F(LayerStateCommand, RenameAndRefusals) {
    run(L"-LAYERSTATE Save evening\n-LAYERSTATE Save night\n-LAYERSTATE reName evening\ndusk\n");
    EXPECT_EQ(failures, Lines());
    EXPECT_TRUE(states().hasLayerState(L"dusk"));
    EXPECT_TRUE(contains(run(L"U\n"), L"Rename layer state evening"));
    const auto refusal = [this](const std::wstring& line) {
        const Lines all = failuresOf(L"-LAYERSTATE " + line + L"\n");
        return all.size() == 1 ? all.front() : std::to_wstring(all.size()) + L" failures";
    };
    EXPECT_TRUE(contains(refusal(L"reName evening\nnight"), L"the name is taken"));
    EXPECT_TRUE(contains(refusal(L"reName evening\na|b"), L"none of < >"));
    EXPECT_TRUE(contains(refusal(L"reName noon"), L"There is no layer state \"noon\""));
    EXPECT_TRUE(contains(refusal(L"Save a*b"), L"none of < >"));
    EXPECT_TRUE(contains(refusal(L"Restore noon"), L"-LAYERSTATE ? lists them"));
    EXPECT_TRUE(contains(refusal(L"Delete noon"), L"-LAYERSTATE ? lists them"));
    EXPECT_TRUE(contains(refusal(L"Compare noon"), L"no drawing file of that name"));
    EXPECT_TRUE(contains(refusal(L"Import noon.dxf"), L"\"noon.dxf\" was not read"));
    write("old.dxf", "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1009\n0\nENDSEC\n0\nEOF\n");
    run(L"OPEN " + path("old.dxf") + L"\n");
    EXPECT_TRUE(contains(refusal(L"Save evening"), L"drawings older than R13 cannot hold layer states"));
}

TEST_F(LayerStateCommand, StatesOfOtherDrawings) {
    run(L"-LAYERSTATE Save day\n-LAYER OFF DOORS\n\n-LAYERSTATE Save evening\n");
    run(L"SAVEAS " + path("standard.dxf") + L"\nNEW\n-LAYER N WALLS,DOORS\n\n-LAYERSTATE Save Evening\n");
    ASSERT_EQ(failures, Lines());
    const std::wstring file = path("standard.dxf");
    const std::wstring told = run(L"-LAYERSTATE Compare " + file + L"\nevening\n");
    EXPECT_TRUE(contains(told, L"  WALLS: color: White, should be Red"));
    EXPECT_TRUE(contains(told, L"  NOTES: missing"));
    EXPECT_EQ(failures, Lines{L"evening: 3 difference(s)"});
    EXPECT_EQ(failuresOf(L"-LAYERSTATE Compare " + file + L"\n*\n").size(), 2U);
    EXPECT_EQ(failuresOf(L"-LAYERSTATE Compare " + file + L"\nnoon\n").size(), 1U);

    run(L"-LAYERSTATE Import " + file + L"\n\nNo\n");
    EXPECT_EQ(header(L"day").currentLayer, L"0");
    EXPECT_EQ(failuresOf(L"-LAYERSTATE Compare evening\n"), Lines()) << "the drawing's own was kept";
    EXPECT_TRUE(contains(run(L"U\n"), L"Import layer state day"));
    EXPECT_FALSE(states().hasLayerState(L"day"));
    run(L"-LAYERSTATE Import " + file + L"\n*\nAll\n");
    EXPECT_EQ(failuresOf(L"-LAYERSTATE Compare evening\n"), Lines{L"evening: 3 difference(s)"});
    EXPECT_TRUE(contains(run(L"U\n"), L"Import 2 layer states"));
}

TEST_F(LayerStateCommand, FreezingInAFloatingViewport) {
    SmallDrawing drawing;
    drawing.model(drawing.line("PLAIN", 0, 0, 1, 0));
    drawing.paper(drawing.viewport(1, 150, 100, 300, 150, 100) + drawing.viewport(2, 60, 100, 100, 5, 0));
    write("layout.dxf", drawing.text());
    run(L"OPEN " + path("layout.dxf") +
        L"\nLAYOUT S Layout1\nMSPACE\nVPLAYER F PLAIN\n\n\n-LAYERSTATE Save sheet\n");
    run(L"VPLAYER T PLAIN\n\n\n");
    EXPECT_EQ(failures, Lines());
    EXPECT_EQ(failuresOf(L"PSPACE\n-LAYERSTATE Compare sheet\n"), Lines()) << "on paper no viewport counts";
    EXPECT_EQ(failuresOf(L"MSPACE\n-LAYERSTATE Compare sheet\n"), Lines{L"sheet: 1 difference(s)"});
    EXPECT_EQ(failuresOf(L"-LAYERSTATE Restore sheet\n-LAYERSTATE Compare sheet\n"), Lines());
    const HxDbObjectPointer<HxDbViewport> viewport(hxedGetCurViewportObjectId(), HxDb::kForRead);
    EXPECT_TRUE(viewport->isLayerFrozenInViewport(layer(L"PLAIN")));
}

}  // namespace korvex::test
