// The four answers of the delete dialog.
#include "tests/module/layer_states/layer_states_fixture.h"

#include "layer_states/edit/delete_layer_state_dlg.h"

namespace korvex::test {
namespace {

TEST_F(LayerStatesTest, EachButtonOfTheDeleteDialogHasItsResult) {
    int result = 0;
    define(L"ASK", [&result] {
        CKvDeleteLayerStateDlg dialog;
        dialog.SetDelString(L"Plan & <b>A</b>");
        result = dialog.DoModal();
    });
    const auto answer = [&](const wchar_t* action) {
        result = 0;
        run(std::wstring(L"ASK\n") + action + L"\n");
        return result;
    };
    EXPECT_EQ(answer(L"CLICK IDC_DELLAYERSTATE_YES"), 3069);
    EXPECT_EQ(answer(L"PRESS window Enter"), 3069);
    EXPECT_EQ(answer(L"CLICK IDC_DELLAYERSTATE_YESALL"), 3070);
    EXPECT_EQ(answer(L"PRESS window Alt+N"), 3071);
    EXPECT_EQ(answer(L"PRESS window Esc"), 2);
    EXPECT_TRUE(contains(run(L"ASK\nLOOK IDC_DELLAYERSTATE_STATIC\nPRESS window Esc\n"), L"Plan & <b>A</b>"));
    EXPECT_EQ(failures, Lines());
}

}  // namespace
}  // namespace korvex::test
