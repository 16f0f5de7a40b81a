// The edit dialog on a state whose entries are of all kinds.
#pragma once

#include "tests/module/layer_states/layer_states_fixture.h"

#include "layer_states/edit/edit_layer_state_dlg.h"
#include "layer_states/edit/layer_state_infos.h"
#include "layer_states/file/las_reader.h"

#include <QTableView>
#include <QTimer>

namespace korvex::test {

/// The drawing has WALLS, NOTES, SPARE, VIEWS and 0; the state GLASS, which the drawing lacks, NOTES,
/// PLAN|DOORS, SPARE, WALLS, in another order than their names'. SPARE is current.
class EditStateTest : public LayerStatesTest {
protected:
    void SetUp() override {
        LayerStatesTest::SetUp();
        SmallDrawing made = drawing();
        prepare(made);
        openDrawing(std::move(made));
        state.reset(new KvLayerStateInfoArray);
        for (const wchar_t* const name : {L"WALLS", L"SPARE", L"PLAN|DOORS", L"NOTES", L"GLASS"}) {
            HxLyStateEntry entry;
            entry.layer = name;
            entry.flags = HxLyState::kLayerPlots;
            entry.linetype = L"Continuous";
            entry.plotStyle = L"Normal";
            state->Add(new CKvLayerStateInfo(entry, state->GetSize(), state->GetSize() == 1));
        }
        define(L"EDIT", [this] {
            CKvEditLayerStateDlg dialog(nullptr, state.get(), &database(), L"Evening");
            if (whileOpen) QTimer::singleShot(0, &dialog, [&] { whileOpen(dialog); });
            result = dialog.DoModal();
            current = dialog.currentLayerName();
            edited.reset(dialog.GetCloneLayerStateInfoArray());
        });
    }
    virtual void prepare(SmallDrawing& /*drawing*/) {}
    /// The dialog is edited as a script's lines say and ends with OK; what was shown comes back.
    std::wstring edit(const std::wstring& actions) { return run(L"EDIT\n" + actions + L"CLICK IDOK\n"); }

    static CKvLayerStateInfo* entryIn(const KvLayerStateEntries& entries, const wchar_t* name) {
        for (CKvLayerStateInfo* const entry : *entries) {
            if (entry->GetLayerName() == name) return entry;
        }
        ADD_FAILURE() << "no entry";
        return nullptr;
    }
    CKvLayerStateInfo& entry(const wchar_t* name) { return *entryIn(edited, name); }
    CKvLayerStateInfo& original(const wchar_t* name) { return *entryIn(state, name); }
    bool has(const wchar_t* name, int flag) { return (entry(name).GetLayerFlag() & flag) != 0; }
    std::wstring namesOf(const KvLayerStateEntries& entries) {
        std::wstring names;
        for (const CKvLayerStateInfo* const entry : *entries) {
            names += entry->GetLayerName() + (entry->GetCurrentLayer() != 0 ? L"* " : L" ");
        }
        return names;
    }

    KvLayerStateEntries state, edited;
    int result = 0;
    CStdStr<wchar_t> current;
    std::function<void(CKvEditLayerStateDlg&)> whileOpen;  ///< called when it is shown; a script waits for it
};

}  // namespace korvex::test
