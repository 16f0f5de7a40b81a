// The list of the layer states manager, against a bare model of as many rows in the same kind of view, and
// sorts of ready-made keys.
#include "bench/module/palette_bench.h"

#include "layer_states/manager/layer_state_list_ctrl.h"

#include <algorithm>

namespace korvex::bench {
namespace {

constexpr int kLayers = 300;

/// A drawing with so many states, which nobody has looked into.
class States {
public:
    States(std::int64_t states, std::int64_t layers) : m_drawing(layers) {
        const auto made = load();
        for (std::int64_t i = 0; i < states; ++i) {
            const std::wstring name =
                (i % 2 == 0 ? L"Plan " : L"Sheet ") + std::to_wstring(i * 7919 % 100003);
            made->CmdNew(name.c_str(), i % 3 == 0 ? L"" : L"as it was printed");
        }
        made->BuildLayerStateExtensionDictionary();
        m_engine = load();
    }
    CKvLayerStateManDlg& engine() { return *m_engine; }

private:
    std::unique_ptr<CKvLayerStateManDlg> load() {
        auto engine = std::make_unique<CKvLayerStateManDlg>(&m_drawing.database());
        engine->SetCurrentLayerName(L"0");
        engine->LoadHxLayerState(&m_drawing.database());
        return engine;
    }
    Drawing m_drawing;
    std::unique_ptr<CKvLayerStateManDlg> m_engine;
};

void show(QTableView& view) {
    view.resize(980, 400);
    view.show();
    QCoreApplication::processEvents();
}

/// As many rows and columns as the list has, whose texts are made when somebody asks.
class BareStates : public BareModel {
public:
    using BareModel::BareModel;
    int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : kStatesColumnCount;
    }
};

void openList(benchmark::State& state) {
    States states(state.range(0), kLayers);
    BareStates model(static_cast<int>(state.range(0)));
    against(
        state,
        [&] {
            CKvLayerStateListCtrl list(states.engine());
            list.showStates();
            show(list);
        },
        [&] {
            KvCellTable view(0);
            view.setItemDelegate(new KvLayerStateListItemDelegate(&view));
            view.setModel(&model);
            show(view);
        });
}

/// Columns that must look into all states have been sorted by before, so that what they show is known.
void sortList(benchmark::State& state, int column) {
    States states(state.range(0), kLayers);
    CKvLayerStateListCtrl list(states.engine());
    list.showStates();
    show(list);
    std::vector<std::pair<std::int64_t, int>> keys;
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        keys.emplace_back(i * 7919 % 255, static_cast<int>(i * 7919 % 100003));
    }
    bool isAscending = false;
    against(
        state,
        [&] {
            list.rows().sortBy(column, isAscending);
            isAscending = !isAscending;
        },
        [&] {
            std::vector<std::pair<std::int64_t, int>> sorted = keys;
            std::sort(sorted.begin(), sorted.end());
            benchmark::DoNotOptimize(sorted.data());
        });
}

/// From a key to what was found, painted, against a bare model that is reset.
void typeIntoSearch(benchmark::State& state) {
    States states(state.range(0), kLayers);
    CKvLayerStateListCtrl list(states.engine());
    list.showStates();
    show(list);
    BareStates model(static_cast<int>(state.range(0)));
    KvCellTable view(0);
    view.setItemDelegate(new KvLayerStateListItemDelegate(&view));
    view.setModel(&model);
    show(view);
    bool isLonger = false;
    against(
        state,
        [&] {
            isLonger = !isLonger;
            list.setSearch(isLonger ? "plan" : "pla");
            QCoreApplication::processEvents();
        },
        [&] {
            model.reset();
            QCoreApplication::processEvents();
        });
}

/// The first sort by a column that looks into all states.
void sortByUnseen(benchmark::State& state, int column) {
    States states(state.range(0), state.range(1));
    CKvLayerStateListCtrl list(states.engine());
    list.showStates();
    show(list);
    for (auto _ : state) {
        list.rows().forgetSeen();
        states.engine().layersChanged();
        state.SetIterationTime(secondsOf([&] { list.slotSectionClicked(column); }));
        list.slotSectionClicked(kStatesName);
    }
}

void statesOf(benchmark::internal::Benchmark* bench) {
    bench->Arg(200)->Arg(2000)->UseManualTime()->Unit(benchmark::kMillisecond);
}
void statesAndLayers(benchmark::internal::Benchmark* bench) {
    bench->Args({2000, 300})->Args({2000, 3000})->UseManualTime()->Unit(benchmark::kMillisecond);
}

BENCHMARK(openList)->Apply(statesOf);
BENCHMARK_CAPTURE(sortList, name, kStatesName)->Apply(statesOf);
BENCHMARK_CAPTURE(sortList, mark, kStatesMark)->Apply(statesOf);
BENCHMARK_CAPTURE(sortList, space, kStatesSpace)->Apply(statesOf);
BENCHMARK_CAPTURE(sortList, same, kStatesSame)->Apply(statesOf);
BENCHMARK_CAPTURE(sortList, layers, kStatesLayers)->Apply(statesOf);
BENCHMARK_CAPTURE(sortList, description, kStatesDescription)->Apply(statesOf);
BENCHMARK(typeIntoSearch)->Apply(statesOf);
BENCHMARK_CAPTURE(sortByUnseen, same, kStatesSame)->Apply(statesAndLayers)->Iterations(2);
BENCHMARK_CAPTURE(sortByUnseen, layers, kStatesLayers)->Apply(statesAndLayers)->Iterations(2);

}  // namespace
}  // namespace korvex::bench
