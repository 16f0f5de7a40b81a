// Random walks in the edit dialog, told beside by a plain list.
#include "tests/module/layer_states/edit/edit_state_fixture.h"
#include "tests/walk_seed.h"

#include <algorithm>
#include <random>
#include <set>

namespace korvex::test {
namespace {

struct Layer {
    std::wstring name;
    int flags;
    bool isCurrent;
};
struct Column {
    const wchar_t* header;
    int flag;
};
constexpr Column kColumns[] = {{L"On", HxLyState::kLayerOff},
                               {L"Freeze", HxLyState::kLayerFrozen},
                               {L"Lock", HxLyState::kLayerLocked},
                               {L"Plot", HxLyState::kLayerPlots},
                               {L"New VP Freeze", HxLyState::kLayerNewViewportFrozen}};

/// What a user does in the dialog, as a script's lines, and what should become of the entries.
class Walk {
public:
    Walk(std::uint32_t seed, const KvLayerStateInfoArray& state) : m_random(seed) {
        for (const CKvLayerStateInfo* const entry : state) {
            m_layers.push_back({entry->GetLayerName(), entry->GetLayerFlag(), entry->GetCurrentLayer() != 0});
        }
    }
    void step() {
        if (m_layers.empty()) return add();
        const std::size_t at = pick(m_layers.size());
        switch (pick(12)) {
        case 0: return selectAlone(at);
        case 1:
        case 2: return selectToo(at);
        case 3: return press(L"Ctrl+A", true);
        case 4: return sort();
        case 5: return add();
        case 6: return pick(3) == 0 ? remove() : sort();
        case 7: return makeCurrent(at);
        default: return toggle(at, kColumns[pick(std::size(kColumns))]);
        }
    }
    std::wstring actions, expected;
    void tell() {
        expected.clear();
        for (const Layer& layer : m_layers) {
            expected += layer.name + (layer.isCurrent ? L"* " : L" ") + std::to_wstring(layer.flags) + L"\n";
        }
    }

private:
    std::size_t pick(std::size_t count) { return m_random() % count; }
    void click(std::size_t at, const wchar_t* column, const wchar_t* how) {
        actions += std::wstring(L"CLICK IDC_LAYERSTATE_LIST ") + how + L" \"" + m_layers[at].name + L"," +
                   column + L"\"\n";
    }
    void press(const wchar_t* key, bool selectsAll) {
        actions += std::wstring(L"PRESS IDC_LAYERSTATE_LIST ") + key + L"\n";
        for (const Layer& layer : m_layers) {
            if (selectsAll) m_selected.insert(layer.name);
        }
    }
    void selectAlone(std::size_t at) {
        click(at, L"Name", L"");
        m_selected = {m_layers[at].name};
    }
    void selectToo(std::size_t at) {
        click(at, L"Name", L"ctrl");
        if (!m_selected.erase(m_layers[at].name)) m_selected.insert(m_layers[at].name);
    }
    void sort() {
        // these are never scrolled out of sight
        const wchar_t* const headers[] = {L"Freeze", L"Lock", L"Linetype"};
        actions += std::wstring(L"CLICK IDC_LAYERSTATE_LIST/header ") + headers[pick(3)] + L"\n";
    }
    void toggle(std::size_t at, const Column& column) {
        click(at, column.header, L"");
        if (!m_selected.count(m_layers[at].name)) m_selected = {m_layers[at].name};
        const bool wanted = (m_layers[at].flags & column.flag) == 0;
        bool isTold = false;
        for (Layer& layer : m_layers) {
            if (!m_selected.count(layer.name)) continue;
            if (layer.isCurrent && wanted && column.flag == HxLyState::kLayerFrozen) {
                isTold = true;
            } else {
                layer.flags = wanted ? layer.flags | column.flag : layer.flags & ~column.flag;
            }
        }
        if (isTold) actions += L"OK\n";
    }
    void makeCurrent(std::size_t at) {
        click(at, L"Name", L"double");
        m_selected = {m_layers[at].name};
        if ((m_layers[at].flags & HxLyState::kLayerFrozen) ||
            m_layers[at].name.find(L'|') != std::wstring::npos) {
            actions += L"OK\n";
            return;
        }
        for (Layer& layer : m_layers) {
            layer.isCurrent = layer.name == m_layers[at].name;
        }
    }
    void remove() {
        press(L"Del", false);
        m_layers.erase(
            std::remove_if(m_layers.begin(), m_layers.end(),
                           [this](const Layer& layer) { return m_selected.count(layer.name) > 0; }),
            m_layers.end());
        m_selected.clear();
    }
    /// All that the drawing has.
    void add() {
        press(L"Insert", false);
        std::set<std::wstring> added;
        for (const wchar_t* const name : {L"0", L"NOTES", L"SPARE", L"VIEWS", L"WALLS"}) {
            const auto isIt = [name](const Layer& layer) { return layer.name == name; };
            if (std::any_of(m_layers.begin(), m_layers.end(), isIt)) continue;
            m_layers.push_back({name, HxLyState::kLayerPlots, false});
            added.insert(name);
        }
        actions += added.empty() ? L"OK\n" : L"PRESS IDC_SELLAYER_LIST Ctrl+A\nCLICK IDOK\n";
        if (!added.empty()) m_selected = added;
    }

    std::mt19937 m_random;
    std::vector<Layer> m_layers;
    std::set<std::wstring> m_selected;
};

TEST_F(EditStateTest, RandomEditsGiveWhatAPlainListGives) {
    constexpr int kWalks = 12;
    constexpr int kSteps = 60;
    const std::uint32_t seed = walkSeed(20);
    const std::string drawing = fileNow();
    for (int walk = 0; walk < kWalks; ++walk) {
        SCOPED_TRACE("KORVEX_WALK_SEED=" + std::to_string(seed) + ", walk " + std::to_string(walk));
        Walk steps(seed + static_cast<std::uint32_t>(walk), *state);
        for (int step = 0; step < kSteps; ++step) {
            steps.step();
        }
        steps.tell();
        edit(steps.actions);
        ASSERT_EQ(failures, Lines()) << QString::fromStdWString(steps.actions).toStdString();
        std::wstring told;
        for (const CKvLayerStateInfo* const entry : *edited) {
            told += entry->GetLayerName() + (entry->GetCurrentLayer() ? L"* " : L" ") +
                    std::to_wstring(entry->GetLayerFlag()) + L"\n";
        }
        ASSERT_EQ(told, steps.expected) << QString::fromStdWString(steps.actions).toStdString();
        ASSERT_EQ(namesOf(state), L"WALLS SPARE* PLAN|DOORS NOTES GLASS ");
    }
    EXPECT_EQ(fileNow(), drawing);
}

}  // namespace
}  // namespace korvex::test
