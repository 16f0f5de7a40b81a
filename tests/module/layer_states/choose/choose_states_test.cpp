// Choosing the states of another drawing.
#include "tests/module/layer_states/layer_states_fixture.h"

#include "layer_states/choose/choose_states_model.h"
#include "layer_states/choose/select_layer_state_dlg.h"

#include <QTableView>

#include <iostream>

namespace korvex::test {
namespace {

/// Ours: Day, and REF_Night of a reference. Theirs: night 10, day, Night 9, REF_night and one that is hidden.
/// Theirs name layers and linetypes that the drawing has and some that it lacks.
class ChooseStates : public LayerStatesTest {
protected:
    void SetUp() override {
        LayerStatesTest::SetUp();
        openDrawing(drawing());
        addTo(ours, L"Day", {});
        addTo(ours, L"REF_Night", {})->SetSpace(HxLyState::kExternalReference);
        addTo(theirs, L"night 10", {L"WALLS", L"GLASS", L"doors"});
        addTo(theirs, L"day", {L"DOORS"})->SetDescription(L"With the sun");
        addTo(theirs, L"Night 9", {L"walls", L"0"});
        addTo(theirs, L"REF_night", {});
        addTo(theirs, L"secret", {L"LAIR"})->SetLayerStateMake(HxLyState::kHidden);
        define(L"IMPORT", [this] {
            CKvSelectLayerStateDlg dialog(nullptr, ours, theirs, &database());
            result = dialog.DoModal();
            chosen.clear();
            for (const CKvLayerState* const state : dialog.chosen()) {
                chosen += state->GetLayerStateName() + L" ";
            }
        });
    }
    static CKvLayerState* addTo(KvLayerStateMap& states, const wchar_t* name,
                                const std::vector<const wchar_t*>& layers) {
        auto* const state = new CKvLayerState;
        state->SetLayerStateName(name);
        auto* const entries = new KvLayerStateInfoArray;
        for (const wchar_t* const layer : layers) {
            HxLyStateEntry entry;
            entry.layer = layer;
            entry.linetype = layer == layers.front() ? L"Wavy" : L"Continuous";
            if (layer == layers.front()) entry.plotStyle = L"Color_7";
            entries->Add(new CKvLayerStateInfo(entry, entries->GetSize(), false));
        }
        states.add(state, entries);
        return state;
    }

    KvLayerStateMap ours, theirs;
    int result = 0;
    std::wstring chosen;
};

TEST_F(ChooseStates, TellsWhatEachStateIsAndWhatTheDrawingLacks) {
    const std::wstring shown = run(L"IMPORT\nLOOK\nTICK IDC_SELSTATE_LIST day 1\nLOOK IDC_SELSTATE_SUMMARY\n"
                                   L"TICK IDC_SELSTATE_LIST \"night 10\" 1\nLOOK IDC_SELSTATE_SUMMARY\n"
                                   L"TICK IDC_SELSTATE_LIST day 0\nTICK IDC_SELSTATE_LIST \"Night 9\" 1\n"
                                   L"LOOK IDC_SELSTATE_SUMMARY\nCLICK IDOK\n");
    EXPECT_EQ(failures, Lines());
    EXPECT_EQ(result, IDOK);
    EXPECT_EQ(chosen, L"night 10 Night 9 ");
    for (const wchar_t* const text :
         {L"1: [ ] day | 1 | Replaces the one here | With the sun", L"2: [ ] Night 9 | 2 | New",
          L"3: [ ] night 10 | 3 | New", L"4: [ ] REF_night | 0 | Hides one of a reference",
          L"\"OK\", disabled", L"0 of 4 layer states chosen", L"1 of 4 layer states chosen.",
          L"Not in the drawing: 1 layer(s), 1 linetype(s), 0 plot style(s)",
          L"Not in the drawing: 2 layer(s), 1 linetype(s)", L"2 of 4 layer states chosen."}) {
        EXPECT_TRUE(contains(shown, text)) << QString::fromWCharArray(text).toStdString();
    }
    EXPECT_TRUE(contains(shown.substr(shown.rfind(L"layer states chosen")),
                         L"Not in the drawing: 2 layer(s), 1 linetype(s), 0 plot style(s)"))
        << "one of the states that lacked DOORS is chosen still";
    EXPECT_FALSE(contains(shown, L"secret"));
    if (HasFailure()) std::cout << QString::fromStdWString(shown).toStdString();
}

TEST_F(ChooseStates, AllNoneAndKeys) {
    run(L"IMPORT\nCLICK IDC_SELSTATE_ALL\nCLICK IDOK\n");
    EXPECT_EQ(chosen, L"night 10 day Night 9 REF_night ");
    run(L"IMPORT\nCLICK IDC_SELSTATE_ALL\nCLICK IDC_SELSTATE_NONE\n"
        L"PRESS IDC_SELSTATE_LIST Down Shift+Down Space\nCLICK IDOK\n");
    EXPECT_EQ(chosen, L"night 10 Night 9 ");
    run(L"IMPORT\nPRESS IDC_SELSTATE_LIST Ctrl+A Space\nCLICK IDC_SELSTATE_LIST/header Layers\n"
        L"PRESS IDC_SELSTATE_LIST Home Space Enter\n");
    EXPECT_EQ(chosen, L"night 10 day Night 9 ") << "the one without layers comes first";
    EXPECT_EQ(result, IDOK);
    run(L"IMPORT\nPRESS focus Space\nCLICK IDOK\n");
    EXPECT_EQ(chosen, L"day ") << "the list has the keyboard, its first row the focus";
    run(L"IMPORT\nCLICK IDC_SELSTATE_LIST double \"day,Import\"\nCLICK IDOK\n");
    EXPECT_EQ(chosen, L"day ");
    run(L"IMPORT\nCLICK IDC_SELSTATE_ALL\nCLICK IDC_SELSTATE_LIST double \"day,1\"\nCLICK IDOK\n");
    EXPECT_EQ(chosen, L"night 10 day Night 9 REF_night ") << "a name is beside its box";
    run(L"IMPORT\nPRESS IDC_SELSTATE_LIST Enter\nPRESS window Esc\n");
    EXPECT_EQ(result, IDCANCEL) << "Enter does nothing without a tick";
    EXPECT_EQ(failures, Lines());
}

TEST_F(ChooseStates, ManyStatesAreCountedWhileTheDialogGoesOn) {
    std::vector<std::wstring> names;
    for (int i = 0; i < 300; ++i) {
        names.push_back(L"L" + std::to_wstring(i));
    }
    std::vector<const wchar_t*> layers;
    for (const std::wstring& name : names) {
        layers.push_back(name.c_str());
    }
    theirs.clear();
    for (int i = 0; i < 400; ++i) {
        addTo(theirs, (L"State " + std::to_wstring(i)).c_str(), layers);
    }
    const std::wstring shown =
        run(L"IMPORT\nCLICK IDC_SELSTATE_ALL\nTICK IDC_SELSTATE_LIST \"State 0\" 0\nDELAY 300\n"
            L"LOOK IDC_SELSTATE_SUMMARY\nCLICK IDC_SELSTATE_NONE\nDELAY 50\nLOOK IDC_SELSTATE_SUMMARY\n"
            L"PRESS window Esc\n");
    EXPECT_TRUE(contains(shown, L"399 of 400 layer states chosen.\nNot in the drawing: 300 layer(s)"))
        << QString::fromStdWString(shown).toStdString();
    EXPECT_TRUE(contains(shown, L"0 of 400 layer states chosen.\nNot in the drawing: 0 layer(s)"));
    EXPECT_EQ(failures, Lines());
}

TEST_F(ChooseStates, OnlyNamesHaveTicks) {
    KvChooseStatesModel model(ours, theirs);
    const QModelIndex name = model.index(0, kChooseColName);
    EXPECT_TRUE(model.setData(name, Qt::Checked, Qt::CheckStateRole));
    EXPECT_EQ(name.data(Qt::CheckStateRole), Qt::Checked);
    EXPECT_FALSE(model.setData(name, "another", Qt::EditRole));
    for (int column = kChooseColName + 1; column < model.columnCount(); ++column) {
        const QModelIndex cell = model.index(0, column);
        EXPECT_FALSE(model.setData(cell, Qt::Unchecked, Qt::CheckStateRole)) << column;
        EXPECT_FALSE(cell.data(Qt::CheckStateRole).isValid()) << column;
        EXPECT_FALSE(cell.flags() & Qt::ItemIsUserCheckable) << column;
    }
    EXPECT_EQ(name.data(Qt::CheckStateRole), Qt::Checked);
}

TEST_F(ChooseStates, TheOnlyStateIsTicked) {
    theirs.clear();
    addTo(theirs, L"Evening", {L"WALLS"});
    run(L"IMPORT\nPRESS window Enter\n");
    EXPECT_EQ(result, IDOK);
    EXPECT_EQ(chosen, L"Evening ");
    EXPECT_EQ(failures, Lines());
}

}  // namespace
}  // namespace korvex::test
