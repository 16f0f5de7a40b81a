// Saving, restoring and comparing a layer state of all layers, against opening each layer and changing a
// flag.
#include "bench/timing.h"
#include "sdk/hxdbdatabase.h"
#include "sdk/hxdbsymtb.h"
#include "sdk/hxlystate.h"

#include <benchmark/benchmark.h>
#include <memory>
#include <vector>

namespace korvex {
namespace {

using bench::secondsOf;

/// A drawing with so many layers, and a state of them.
class Layers {
public:
    explicit Layers(std::int64_t count) {
        const HxDbObjectPointer<HxDbLayerTable> table(database.layerTableId(), HxDb::kForWrite);
        for (std::int64_t i = 0; i < count; ++i) {
            auto* const layer = new HxDbLayerTableRecord;
            HxDbObjectId id;
            layer->setName((L"A-WALL-EXTERIOR-" + std::to_wstring(i)).c_str());
            table->add(id, layer);
            layer->close();
            ids.push_back(id);
        }
        save();
    }
    HxDbLayerStateManager& states() const { return *database.getLayerStateManager(); }
    void save() const { states().saveLayerState(L"all", HxLyState::kAllProperties, {}); }
    void restore() const { states().restoreLayerState(L"all", {}); }
    /// Turns all layers on or off.
    void turn(bool off) const {
        for (const HxDbObjectId& id : ids) {
            const HxDbObjectPointer<HxDbLayerTableRecord> layer(id, HxDb::kForWrite);
            layer->setIsOff(off);
        }
    }

    HxDbDatabase database;
    std::vector<HxDbObjectId> ids;
};

void saveState(benchmark::State& state) {
    const Layers layers(state.range(0));
    for (auto _ : state) {
        layers.save();
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(saveState)->Arg(1000)->Arg(10000)->Arg(50000)->Unit(benchmark::kMillisecond)->Complexity();

void compareState(benchmark::State& state) {
    const Layers layers(state.range(0));
    HxArray<HxLyStateDifference> differences;
    for (auto _ : state) {
        layers.states().compareLayerStateToDb(differences, L"all", {});
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(compareState)->Arg(1000)->Arg(10000)->Arg(50000)->Unit(benchmark::kMillisecond)->Complexity();

/// Every layer differs: what the restore takes beside the opening and changing that it cannot do without.
void restoreState(benchmark::State& state) {
    const Layers layers(state.range(0));
    double restoring = 0;
    double turning = 0;
    for (auto _ : state) {
        turning += secondsOf([&] { layers.turn(true); });
        restoring += secondsOf([&] { layers.restore(); });
    }
    state.counters["ms"] = restoring * 1e3 / static_cast<double>(state.iterations());
    state.counters["ratio"] = restoring / turning;
}
BENCHMARK(restoreState)->Arg(1000)->Arg(10000)->Arg(50000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace korvex
