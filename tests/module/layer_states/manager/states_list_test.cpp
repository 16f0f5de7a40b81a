// The list of the layer states manager: what it finds out, and when.
#include "tests/module/layer_states/layer_states_fixture.h"

#include "layer_states/manager/layer_state_list_ctrl.h"

#include <QHeaderView>
#include <QTest>

namespace korvex::test {
namespace {

class StatesList : public LayerStatesTest {
protected:
    void SetUp() override {
        LayerStatesTest::SetUp();
        openDrawing(drawing());
    }
};

TEST_F(StatesList, OnlyRowsThatAreSeenAreLookedInto) {
    constexpr int kStates = 200;
    const auto states = engine();
    for (int i = 0; i < kStates; ++i) {
        states->CmdNew((L"Plan " + std::to_wstring(i)).c_str(), L"");
    }
    CKvLayerStateListCtrl list(*states);
    list.resize(500, 200);
    list.show();
    list.showStates();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&list));
    QCoreApplication::processEvents();
    EXPECT_EQ(list.rows().rowCount(), kStates);
    EXPECT_GT(list.rows().seenStates(), 0);
    EXPECT_LT(list.rows().seenStates(), kStates / 4);
    list.setSearch("Plan 1?");
    EXPECT_EQ(list.rows().rowCount(), 110) << "10 to 19 and 100 to 199";
    list.setSearch("[");
    EXPECT_EQ(list.rows().rowCount(), 0) << "no pattern: the text itself";
}

TEST_F(StatesList, KeepsTheSelectionAndForgetsStatesThatAreGone) {
    const auto states = engine();
    CKvLayerState* const a = states->CmdNew(L"A", L"2");
    CKvLayerState* const b = states->CmdNew(L"B", L"1");
    states->CmdNew(L"C", L"3");
    CKvLayerStateListCtrl list(*states);
    list.showStates();
    list.SetLastSelectItem(b);
    EXPECT_EQ(list.rows().rowOf(b), 1);
    list.slotSectionClicked(kStatesDescription);
    EXPECT_EQ(list.rows().rowOf(b), 0);
    EXPECT_EQ(list.selectedState(), b);
    states->removeLayerState(b);
    EXPECT_EQ(list.rows().stateAt(0), nullptr);
    EXPECT_FALSE(list.rows().index(0, kStatesName).data().isValid());
    EXPECT_EQ(list.selectedStates(), std::vector<CKvLayerState*>());
    list.showStates();
    EXPECT_EQ(list.rows().rowOf(a), 0);
    EXPECT_EQ(list.rows().index(0, kStatesSame).data().toString(), "Yes");
    change(L"WALLS", [](HxDbLayerTableRecord& layer) { layer.setIsLocked(true); });
    states->layersChanged();
    EXPECT_EQ(list.rows().index(0, kStatesSame).data().toString(), "Yes") << "known already";
    list.rows().forgetSeen();
    EXPECT_EQ(list.rows().index(0, kStatesSame).data().toString(), "No");
}

}  // namespace
}  // namespace korvex::test
