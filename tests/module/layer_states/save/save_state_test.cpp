// Saving under a name without showing the dialog.
#include "tests/module/layer_states/layer_states_fixture.h"

#include "layer_states/save/save_layer_state_dlg.h"

namespace korvex::test {
namespace {

class SaveState : public LayerStatesTest {
protected:
    void SetUp() override {
        LayerStatesTest::SetUp();
        openDrawing(drawing());
        define(L"SAVE", [this] {
            CKvSaveLayerStateDlg dialog(nullptr, states, target, L"SPARE");
            dialog.SetSpace(HxLyState::kLayout);
            result = dialog.DoNewState(name, L"a description", 0);
            isNew = dialog.GetIsCreate() != 0;
            saved = dialog.GetLayerStateName();
        });
    }
    CKvLayerState& add(const wchar_t* stateName) {
        auto* const state = new CKvLayerState;
        state->SetLayerStateName(stateName);
        states.add(state, nullptr);
        return *state;
    }
    std::wstring save(const wchar_t* typed) {
        name = typed;
        target = hasDrawing ? &database() : nullptr;
        return run(L"SAVE\nOK\n");
    }
    KvLayerStateMap states;
    const wchar_t* name = L"";
    bool hasDrawing = true;
    HxDbDatabase* target = nullptr;
    int result = -1;
    bool isNew = false;
    CStdStr<wchar_t> saved;
};

TEST_F(SaveState, MakesOneOrOverwritesWithoutAQuestion) {
    save(L" Plan \t");
    EXPECT_EQ(result, 1);
    EXPECT_TRUE(isNew);
    EXPECT_EQ(saved, L"Plan");
    ASSERT_EQ(states.size(), 1U);
    CKvLayerState& state = *states.at(0);
    EXPECT_EQ(state.GetSpace(), HxLyState::kLayout);
    EXPECT_EQ(state.GetCurrentLayerName(), L"SPARE");
    EXPECT_EQ(state.GetDescription(), L"a description");
    EXPECT_EQ(states.entries(&state)->GetSize(), 5);
    state.SetLayerStateMake(HxLyState::kColor);
    change(L"WALLS", [](HxDbLayerTableRecord& layer) { layer.setIsLocked(true); });
    EXPECT_FALSE(contains(save(L"PLAN"), L"Overwrite"));
    EXPECT_EQ(result, 1);
    EXPECT_FALSE(isNew);
    ASSERT_EQ(states.size(), 1U);
    EXPECT_EQ(state.GetLayerStateName(), L"PLAN");
    EXPECT_EQ(state.GetLayerStateMake(), HxLyState::kColor) << "the mask stays";
    EXPECT_NE(entryOf(states, &state, L"WALLS")->flags & HxLyState::kLayerLocked, 0);
}

TEST_F(SaveState, RefusesBadNamesAndStatesThatAreNotTheDrawings) {
    EXPECT_TRUE(contains(save(L"a|b"), L"Type a name without them. [OK]"));
    EXPECT_EQ(result, 0);
    save(L"Plan");
    states.at(0)->SetSpace(HxLyState::kExternalReference);
    EXPECT_TRUE(contains(save(L"plan"), L"The name \"plan\" belongs to a layer state"));
    EXPECT_EQ(result, 0);
    EXPECT_EQ(states.size(), 1U);
}

TEST_F(SaveState, OffersTheNamesThatCanBeSavedOver) {
    add(L"One").SetDescription(L"the first");
    add(L"Two").SetSpace(HxLyState::kExternalReference);
    add(L"Three").SetLayerStateMake(HxLyState::kHidden);
    add(L"Four");
    define(L"SHOW", [this] {
        CKvSaveLayerStateDlg dialog(nullptr, states, &database(), L"SPARE");
        result = dialog.DoModal();
    });
    const std::wstring shown =
        run(L"SHOW\nLOOK\nCHOOSE IDC_LAYERSTATESAVE_COMBO Four\nCHOOSE IDC_LAYERSTATESAVE_COMBO One\n"
            L"LOOK IDC_LAYERSTATESAVE_EDIT\nPRESS window Esc\n");
    EXPECT_TRUE(contains(shown, L"IDC_LAYERSTATESAVE_COMBO: \"\" of \"One\" | \"Four\"\n")) << toUtf8(shown);
    EXPECT_TRUE(contains(shown, L"IDC_LAYERSTATESAVE_EDIT: \"the first\""));
    EXPECT_EQ(result, IDCANCEL);
    EXPECT_EQ(failures, Lines());
}

TEST_F(SaveState, NamesEndAtTheirLongest) {
    define(L"SHOW", [this] {
        CKvSaveLayerStateDlg dialog(nullptr, states, &database(), L"SPARE");
        result = dialog.DoModal();
    });
    run(L"SHOW\nTYPE IDC_LAYERSTATESAVE_COMBO " + std::wstring(300, L'x') + L"\nCLICK IDOK\n");
    EXPECT_EQ(result, IDOK);
    ASSERT_EQ(states.size(), 1U);
    EXPECT_EQ(states.at(0)->GetLayerStateName().size(), 255U);
    EXPECT_EQ(failures, Lines());
}

TEST_F(SaveState, SavesNothingWithoutADrawing) {
    hasDrawing = false;
    save(L"Plan");
    EXPECT_EQ(result, 0);
    EXPECT_EQ(states.size(), 0U);
}

}  // namespace
}  // namespace korvex::test
