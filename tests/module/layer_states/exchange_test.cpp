// The manager's states out of files and other drawings.
#include "tests/module/layer_states/layer_states_fixture.h"

using namespace korvex::test;

namespace {

class ExchangeTest : public LayerStatesTest {
protected:
    void SetUp() override {
        LayerStatesTest::SetUp();
        SmallDrawing colleague = drawing();
        const std::string header = "100\nAcDbXrecord\n91\n2047\n301\ntheirs\n290\n0\n302\nSPARE\n";
        const std::string values = "\n90\n9\n62\n4\n370\n-3\n6\nContinuous\n2\nColor_4\n440\n0\n";
        colleague.state("evening", header + "8\nWALLS" + values);
        colleague.state("print", header + "8\nONLY THERE" + values);
        write("colleague.dxf", colleague.text());
        write("bare.dxf", drawing().text());
        openDrawing(drawing());
        states = engine();
        states->setQuestions(&questions);
    }
    static bool all(KvLayerStateMap& theirs, std::vector<CKvLayerState*>& chosen) {
        for (std::size_t i = 0; i < theirs.size(); ++i) {
            chosen.push_back(theirs.at(i));
        }
        return true;
    }
    Agreeing questions;
    std::unique_ptr<CKvLayerStateManDlg> states;
};

}  // namespace

TEST_F(ExchangeTest, TakesChosenStatesOfAnotherDrawing) {
    CKvLayerState* const mine = states->CmdNew(L"Evening", L"mine");
    EXPECT_EQ(states->ImportDrawingFile(path("colleague.dxf"), all), 2);
    ASSERT_EQ(states->states().size(), 2U);
    EXPECT_EQ(states->states().at(0), mine) << "in its place";
    EXPECT_EQ(mine->GetDescription(), L"theirs");
    EXPECT_EQ(mine->GetSameAsDWG(), 0) << "unknown until somebody compares";
    EXPECT_EQ(states->imported(), states->states().at(1));
    ASSERT_EQ(states->BuildLayerStateExtensionDictionary(), 1);
    ASSERT_TRUE(states->CmdRestore(L"print", {}));
    EXPECT_TRUE(hasLayer(L"ONLY THERE"));
    EXPECT_EQ(now(L"ONLY THERE").colorIndex, 4);
    EXPECT_EQ(engine()->states().size(), 2U);
}

TEST_F(ExchangeTest, TakesNothingWhenNothingIsChosenOrThere) {
    const auto none = [](KvLayerStateMap& theirs, std::vector<CKvLayerState*>& chosen) {
        return !all(theirs, chosen);
    };
    EXPECT_EQ(states->ImportDrawingFile(path("colleague.dxf"), none), 0);
    EXPECT_EQ(questions.m_noStates, 0);
    EXPECT_EQ(states->ImportDrawingFile(path("bare.dxf"), all), 0);
    EXPECT_EQ(states->ImportDrawingFile(path("lost.dxf"), all), 0);
    EXPECT_EQ(questions.m_noStates, 2);
    EXPECT_EQ(states->imported(), nullptr);
    EXPECT_EQ(states->states().size(), 0U);
    EXPECT_FALSE(database().isModified());
}

TEST_F(ExchangeTest, ExportsAndImportsAFile) {
    change(L"WALLS", [](auto& l) { l.setColor(HxCmColor::byRgb(1, 2, 3)); });
    CKvLayerState* const mine = states->CmdNew(L"mine", L"as it is");
    EXPECT_FALSE(states->ExportLayerStateFile(path("none.las"), nullptr));
    ASSERT_TRUE(states->ExportLayerStateFile(path("mine.las"), mine));
    ASSERT_TRUE(states->removeLayerState(mine));
    ASSERT_EQ(states->ImportLayerStateFile(path("mine.las")), 1);
    EXPECT_EQ(states->imported()->GetSameAsDWG(), 1) << "the mark is right at once";
    EXPECT_EQ(states->imported()->IsLasFileType(), 1);
    EXPECT_EQ(entryOf(states->states(), states->imported(), L"WALLS")->trueColor, 0x030201);
}
