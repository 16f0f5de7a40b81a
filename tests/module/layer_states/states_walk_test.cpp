// Random walks over layers and their states.
#include "tests/module/layer_states/layer_states_fixture.h"
#include "tests/walk_seed.h"

#include <random>

using korvex::toUtf8;
using namespace korvex::test;

namespace {

class StatesWalk : public LayerStatesTest {
protected:
    void start(bool namedPlotStyles) {
        SmallDrawing file = drawing();
        if (namedPlotStyles) file.useNamedPlotStyles();
        for (int i = 0; i < 12; ++i) {
            file.layer("L" + std::to_string(i));
        }
        file.state("by handle", "100\nAcDbXrecord\n280\n1\n91\n2047\n301\n\n290\n0\n302\n0\n330\n" +
                                    file.layerHandle("L3") + "\n90\n12\n62\n3\n370\n25\n331\n16\n1\n" +
                                    (namedPlotStyles ? "Screened" : "Color_3") +
                                    "\n92\n-1023475712\n440\n0\n");
        openDrawing(file);
    }
    int pick(int count) { return static_cast<int>(m_random() % static_cast<unsigned>(count)); }
    std::wstring anyLayer() { return L"L" + std::to_wstring(pick(14)); }
    std::wstring anyState() {
        return std::wstring(pick(3) == 0 ? L"STATE" : L"state") + std::to_wstring(pick(4));
    }

    void editLayer() {
        const std::wstring name = anyLayer();
        switch (pick(9)) {
        case 0: run(L"-LAYER\nOFF\n" + name + L"\n\n"); break;
        case 1: run(L"-LAYER\nON\n*\n\n"); break;
        case 2: run(L"-LAYER\nFreeze\n" + name + L"\n\n"); break;
        case 3: run(L"-LAYER\nThaw\n*\n\n"); break;
        case 4: run(L"-LAYER\nLOck\n" + name + L"\n\n"); break;
        case 5: run(L"-LAYER\nColor\n" + std::to_wstring(1 + pick(255)) + L"\n" + name + L"\n\n"); break;
        case 6: run(L"-LAYER\nSet\n" + name + L"\n\n"); break;
        case 7: run(L"-LAYER\nMake\n" + name + L"\n\n"); break;
        default: run(L"-LAYER\nRename\n" + name + L"\n" + anyLayer() + L"\n\n"); break;
        }
        failures.clear();  // refusals are part of the walk
    }
    /// One session of the manager.
    void session() {
        const auto states = engine();
        states->setQuestions(&m_questions);
        KvLayerStateMap& map = states->states();
        CKvLayerState* const any =
            map.size() == 0 ? nullptr : map.at(static_cast<std::size_t>(pick(static_cast<int>(map.size()))));
        switch (pick(9)) {
        case 0:
        case 1: states->CmdNew(anyState().c_str(), L"walk"); break;
        case 2:
        case 8: restore(*states, any); break;
        case 3: states->SaveasLayerState(any); break;
        case 4: states->removeLayerState(pick(2) == 0 ? any : nullptr); break;
        case 5: rename(*states, any); break;
        case 6: exchange(*states, any); break;
        default: editEntries(*states, any); break;
        }
        EXPECT_EQ(states->BuildLayerStateExtensionDictionary(), 1);
        EXPECT_FALSE(haveLayerStatesChanged(map)) << "what was written is what is there";
    }
    void restore(CKvLayerStateManDlg& states, CKvLayerState* state) {
        if (!state || states.states().entries(state)->GetSize() == 0) return;
        const bool isAll = pick(2) == 0;
        const int mask = isAll ? int{HxLyState::kAllProperties} : 1 + pick(HxLyState::kAllProperties);
        EXPECT_TRUE(states.restoreLayerState(*state, mask, {}));
        EXPECT_EQ(restoreFailures(states.restored()), L"");
        const bool freezesCurrent = states.IsSameAsDWG(state) == 0;
        if (isAll && !freezesCurrent) ++m_same;
        if (isAll && freezesCurrent) expectOnlyCurrentDiffers(states, *state);
    }
    /// The layer that was current stays thawed.
    void expectOnlyCurrentDiffers(CKvLayerStateManDlg& states, const CKvLayerState& state) {
        int others = 0;
        const KvRestorePlace place = KvRestorePlace::of(database());
        states.states().visitEntries(&state, [&](const HxLyStateEntry& entry) {
            const std::int32_t changes =
                wantedChanges(entry, now(entry.layer.c_str()), state.GetLayerStateMake(), place);
            others += changes != 0 && changes != HxLyState::kFrozen ? 1 : 0;
            return true;
        });
        EXPECT_EQ(others, 0) << toUtf8(state.GetLayerStateName());
    }
    void rename(CKvLayerStateManDlg& states, CKvLayerState* state) {
        const std::wstring name = anyState();
        if (state && !states.states().find(name)) state->SetLayerStateName(name);
    }
    void exchange(CKvLayerStateManDlg& states, CKvLayerState* state) {
        if (!state) return;
        const std::wstring file = path("walk.las");
        ASSERT_TRUE(states.ExportLayerStateFile(file, state));
        ASSERT_EQ(states.ImportLayerStateFile(file), 1);
        EXPECT_EQ(states.imported(), state);
    }
    void editEntries(CKvLayerStateManDlg& states, CKvLayerState* state) {
        KvLayerStateInfoArray* const entries = states.states().entries(state);
        if (!entries || entries->GetSize() == 0) return;
        CKvLayerStateInfo& entry = *(*entries)[pick(entries->GetSize())];
        entry.SetLayerFlag(pick(64));
        entry.SetTransparency(pick(256));
        state->SetLayerStateMake(pick(2) == 0 ? int{HxLyState::kAllProperties} : pick(2048));
        state->SetDescription(L"edit " + std::to_wstring(pick(100)));
    }
    void walk(std::uint32_t seed, bool namedPlotStyles) {
        m_random.seed(seed);
        start(namedPlotStyles);
        const std::string first = fileNow();
        for (int i = 0; i < 250; ++i) {
            switch (pick(12)) {
            case 0: run(L"U\n"); break;
            case 1: run(L"REDO\n"); break;
            case 2: run(pick(3) == 0 ? L"LAYOUT\nSet\nLayout1\nMSPACE\n" : L"LAYOUT\nSet\nModel\n"); break;
            case 3: inViewport(L"Freeze", anyLayer()); break;
            case 4:
            case 5:
            case 6: editLayer(); break;
            default: session(); break;
            }
            failures.clear();
        }
        fileNow();  // must be readable
        run(L"UNDO\n10000\n");
        failures.clear();
        EXPECT_EQ(fileNow(), first) << "seed " << seed;
        EXPECT_GT(m_same, 0) << "seed " << seed;
    }

    std::mt19937 m_random;
    Agreeing m_questions;
    int m_same = 0;
};

}  // namespace

TEST_F(StatesWalk, EndsWhereItBegan) { walk(walkSeed(11), false); }

TEST_F(StatesWalk, EndsWhereItBeganWithNamedPlotStyles) { walk(walkSeed(12), true); }
