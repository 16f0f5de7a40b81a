// Layer states out of drawings that are not open.
#include "tests/module/layer_states/file/recording_questions.h"
#include "tests/module/module_fixture.h"

#include "layer_states/file/layer_state_files.h"
#include "layer_states/file/other_drawing.h"

#include "sdk/hxlystate.h"

namespace korvex::test {
namespace {

using Log = std::vector<std::wstring>;

class OtherDrawing : public DrawingTest {
protected:
    RecordingQuestions questions;
};

TEST_F(OtherDrawing, ItsStatesOutliveItInTheMapThatTakesThem) {
    HxDbLayerStateManager* const manager = database().getLayerStateManager();
    ASSERT_EQ(manager->saveLayerState(L"evening", HxLyState::kAllProperties, {}, L"late"), Hx::eOk);
    ASSERT_EQ(manager->saveLayerState(L"night", HxLyState::kAllProperties | HxLyState::kHidden, {}), Hx::eOk);
    ASSERT_EQ(database().saveAs(path("other.dwt").c_str()), Hx::eOk);
    editor().documents().newDocument();
    HxDbDatabase* const working = hxdbWorkingDatabase();

    KvLayerStateMap map;
    {
        KvOtherDrawing other;
        ASSERT_TRUE(other.read(path("other.dwt"), questions));
        ASSERT_EQ(other.states().size(), 2U);
        CKvLayerState* const evening = other.states().find(L"Evening");
        ASSERT_TRUE(evening);
        EXPECT_FALSE(other.states().hasReadEntries(evening));
        const auto imported =
            KvLayerStateFiles(map, questions).importStates({evening}, other.states(), working);
        ASSERT_EQ(imported.size(), 1U);
    }
    EXPECT_EQ(hxdbWorkingDatabase(), working);
    ASSERT_EQ(map.size(), 1U);
    EXPECT_EQ(map.at(0)->GetDescription(), L"late");
    EXPECT_EQ(map.at(0)->GetCurrentLayerName(), L"SPARE");
    EXPECT_EQ(map.at(0)->IsLasFileType(), 0);
    EXPECT_TRUE(map.record(map.at(0)).isNull());
    Names layers, current;
    for (const CKvLayerStateInfo* const entry : *map.entries(map.at(0))) {
        layers.insert(entry->GetLayerName());
        if (entry->GetCurrentLayer() == 1) current.insert(entry->GetLayerName());
    }
    EXPECT_TRUE(layers.count(L"W\u00E4nde 2")) << "also what a layer-state file could not tell";
    EXPECT_EQ(current, Names{L"SPARE"});
    EXPECT_EQ(questions.log, Log());
}

TEST_F(OtherDrawing, WithoutStatesItIsToldAndUntouched) {
    write("bad.dxf", "0\nSECTION\n2\nHEADER\n9\n");
    KvOtherDrawing other;
    EXPECT_FALSE(other.read(path("plan.dxf"), questions));
    EXPECT_FALSE(other.read(path("bad.dxf"), questions));
    EXPECT_FALSE(other.read(path("none.dxf"), questions));
    EXPECT_EQ(other.states().size(), 0U);
    EXPECT_EQ(questions.log, (Log{L"no states", L"unreadable", L"unreadable"}));
}

TEST_F(OtherDrawing, ABareNameIsFoundBesideTheDrawing) {
    database().getLayerStateManager()->saveLayerState(L"evening", HxLyState::kAllProperties, {});
    ASSERT_EQ(database().saveAs(path("other.dxf").c_str()), Hx::eOk);
    KvOtherDrawing other;
    EXPECT_TRUE(other.read(L"other.dxf", questions));
}

}  // namespace
}  // namespace korvex::test
