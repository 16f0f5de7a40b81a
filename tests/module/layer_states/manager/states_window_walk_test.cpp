// Seeded walks through the layer states manager, its buttons and undo.
#include "tests/module/layer_states/manager/states_window_fixture.h"
#include "tests/walk_seed.h"

#include <random>

namespace korvex::test {
namespace {

class StatesWindowWalk : public StatesWindowTest {
protected:
    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(m_random); }
    std::wstring anyName() { return L"Plan " + std::to_wstring(below(6)); }

    /// Names that the list shows.
    static Names listed(const std::wstring& shown) {
        Names names;
        for (std::size_t at = shown.find(L"| Plan "); at != std::wstring::npos;
             at = shown.find(L"| Plan ", at + 1)) {
            names.insert(shown.substr(at + 2, shown.find(L" | ", at + 2) - at - 2));
        }
        return names;
    }
    /// One thing that a user does; what it asks is answered, and the rest given up.
    std::wstring step() {
        const std::wstring list = L"IDC_LAYERMAN_LIST";
        const std::wstring go = L"PRESS " + list + L" " + (below(2) == 0 ? L"Home" : L"End") + L"\n";
        switch (below(9)) {
        case 0:
            return L"CLICK IDC_LAYERMAN_NEW\nTYPE IDC_LAYERSTATESAVE_COMBO New " + std::to_wstring(m_step) +
                   L"\nPRESS IDC_LAYERSTATESAVE_COMBO Home\nTYPE IDC_LAYERSTATESAVE_COMBO Plan \nCLICK "
                   L"IDOK\n";
        case 1: return go + L"PRESS " + list + L" Del\n" + (below(2) == 0 ? L"OK\n" : L"Cancel\n");
        case 2:
            return go + L"PRESS " + list + L" F2\nTYPE focus Plan " + std::to_wstring(100 + m_step) +
                   L"\nPRESS focus " + (below(3) == 0 ? L"Esc\n" : L"Enter\n");
        case 3: return go + L"CLICK IDC_LAYERMAN_SAVE\nOK\n";
        case 4: return L"CLICK " + list + L"/header " + (below(2) == 0 ? L"Name\n" : L"Layers\n");
        case 5: return go + L"CLICK IDC_LAYERMAN_CHECK6\n";
        case 6: return L"CLICK IDC_LAYERMAN_EXPAND\nCLICK IDC_LAYERMAN_EXPAND\n";
        case 7: return L"PRESS " + list + L" Ctrl+A\n";
        default: return L"TYPE IDC_LAYERMAN_SEARCH *\nPRESS IDC_LAYERMAN_SEARCH Esc\n";
        }
    }
    const std::uint32_t m_seed = walkSeed(20);
    std::mt19937 m_random{m_seed};
    int m_step = 0;
};

TEST_F(StatesWindowWalk, TheDrawingHasWhatWasShownAndUndoTakesItBack) {
    SCOPED_TRACE("KORVEX_WALK_SEED=" + std::to_string(m_seed));
    const QByteArray before = withoutSeed();
    for (int session = 0; session < 12; ++session) {
        std::wstring actions = L"LAYERSTATE\nCLICK IDC_LAYERMAN_NEW\nTYPE IDC_LAYERSTATESAVE_COMBO Plan s" +
                               std::to_wstring(session) + L"\nCLICK IDOK\n";
        for (int i = 0; i < 8; ++i, ++m_step) {
            actions += step();
        }
        const std::wstring shown =
            run(actions + L"CLICK IDC_LAYERMAN_LIST/header Name\nLOOK IDC_LAYERMAN_LIST\n" +
                L"PRESS IDC_LAYERMAN_LIST Home\nCLICK IDC_LAYERMAN_" +
                (below(2) == 0 ? L"CLOSE\n" : L"RESTORE\n"));
        EXPECT_EQ(listed(shown), states()) << session;
        if (below(3) == 0) run(L"-LAYER\nF\nWALLS\n\n");
        if (below(4) == 0) run(L"U\nREDO\n");
    }
    EXPECT_GT(states().size(), 2U);
    run(L"UNDO 100\n");
    EXPECT_TRUE(withoutSeed() == before);
}

}  // namespace
}  // namespace korvex::test
