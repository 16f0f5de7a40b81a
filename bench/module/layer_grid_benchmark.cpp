// The layer palette, against a bare model of as many rows in the same kind of view, and sorts of ready-made
// keys.
#include "bench/module/palette_bench.h"

#include "manager_ui/grid/layer_column.h"
#include "manager_ui/grid/layer_list_model.h"
#include "model/layer_data.h"
#include "model/layer_prop_manager.h"

#include <algorithm>

namespace korvex::bench {
namespace {

/// Against the same palette on an empty drawing, whose grid shows the bare model.
void open(benchmark::State& state) {
    Drawing empty(0);
    HxApDocument* const emptyDocument = curDoc();
    Drawing drawing(state.range(0));
    HxApDocument* const fullDocument = curDoc();
    BareModel model(static_cast<int>(state.range(0)));
    double spent = 0;
    double least = 0;
    std::size_t bytes = 0;
    for (auto _ : state) {
        hxDocManager()->activateDocument(fullDocument);
        const double seconds = secondsOf([&] {
            Palette palette;
            bytes = palette.list().rows().bytes();
        });
        state.SetIterationTime(seconds);
        spent += seconds;
        hxDocManager()->activateDocument(emptyDocument);
        least += secondsOf([&] {
            Palette palette;
            palette.list().setModel(&model);
            QCoreApplication::processEvents();
        });
    }
    state.counters["ratio"] = spent / least;
    state.counters["floor_ms"] = least * 1000 / static_cast<double>(state.iterations());
    state.counters["bytes_per_layer"] = static_cast<double>(bytes) / static_cast<double>(state.range(0));
}

void sortBy(benchmark::State& state, int column) {
    Drawing drawing(state.range(0));
    Palette palette;
    struct Key {
        std::wstring name;
        int value;
    };
    std::vector<Key> keys;
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        keys.push_back({layerName(i), static_cast<int>(i % 255)});
    }
    std::shuffle(keys.begin(), keys.end(), std::mt19937(2));
    bool ascending = false;
    against(
        state,
        [&] {
            palette.list().Sort(column, ascending);
            ascending = !ascending;
        },
        [&] {
            std::vector<Key> sorted = keys;
            std::sort(sorted.begin(), sorted.end(), [column](const Key& a, const Key& b) {
                return column == kColName || a.value == b.value ? a.name < b.name : a.value < b.value;
            });
            benchmark::DoNotOptimize(sorted.data());
        });
}

void oneDirtyRow(benchmark::State& state) {
    Drawing drawing(state.range(0));
    Palette palette;
    BarePanel panel(static_cast<int>(state.range(0)));
    const HxDbObjectId layer = palette.list().rows().layerAt(3)->layerId();
    against(
        state,
        [&] {
            palette.palette->SetDirtyNeedRefreshListItem(layer);
            palette.palette->OnUpdateCmdUI();
            QCoreApplication::processEvents();
        },
        [&] {
            panel.model.change(3);
            QCoreApplication::processEvents();
        });
}

/// From the marks that a command left for each layer to what is seen of them.
void everyRowDirty(benchmark::State& state) {
    Drawing drawing(state.range(0));
    Palette palette;
    BarePanel panel(static_cast<int>(state.range(0)));
    std::vector<HxDbObjectId> layers;
    for (const KvLayerData* layer : palette.list().rows().layers()) {
        layers.push_back(layer->layerId());
    }
    against(
        state,
        [&] {
            for (const HxDbObjectId layer : layers) {
                palette.palette->SetDirtyNeedRefreshListItem(layer);
            }
            palette.palette->OnUpdateCmdUI();
            QCoreApplication::processEvents();
        },
        [&] {
            std::vector<HxDbObjectId> sorted = layers;
            std::sort(sorted.begin(), sorted.end());
            benchmark::DoNotOptimize(sorted.data());
            panel.model.reset();
            QCoreApplication::processEvents();
        });
}

void switchFilter(benchmark::State& state) {
    Drawing drawing(state.range(0));
    Palette palette;
    BarePanel panel(static_cast<int>(state.range(0)));
    KvLayerPropManager& manager = *palette.palette->content().manager();
    HxLyLayerFilter* const root = manager.GetRootFilter();
    auto* const some = new HxLyLayerFilter;
    some->setName(L"Some");
    some->setFilterExpression(L"NAME==\"*WALL*\" AND ON==\"True\" OR COLOR==\"1\"");
    root->addNested(some);
    against(
        state,
        [&] {
            manager.SetCurrentFilter(manager.GetCurrentFilter() == some ? root : some);
            palette.palette->content().UpdateLayerList(true);
            QCoreApplication::processEvents();
        },
        [&] {
            panel.model.reset();
            QCoreApplication::processEvents();
        });
}

BENCHMARK(open)->Apply(sizes);
BENCHMARK_CAPTURE(sortBy, name, kColName)->Apply(sizes);
BENCHMARK_CAPTURE(sortBy, color, kColColor)->Apply(sizes);
BENCHMARK_CAPTURE(sortBy, linetype, kColLinetype)->Apply(sizes);
BENCHMARK(oneDirtyRow)->Apply(sizes);
BENCHMARK(everyRowDirty)->Apply(sizes);
BENCHMARK(switchFilter)->Apply(sizes);

}  // namespace
}  // namespace korvex::bench
