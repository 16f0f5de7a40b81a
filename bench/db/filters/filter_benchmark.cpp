// Passing every layer of a drawing through an expression, against a bare walk that reads each layer's name.
#include "sdk/hxdbdatabase.h"
#include "sdk/hxdbsymtb.h"
#include "sdk/hxlyfilter.h"

#include <benchmark/benchmark.h>
#include <chrono>
#include <memory>

namespace {

using Clock = std::chrono::steady_clock;

std::unique_ptr<HxDbDatabase> drawingOf(std::int64_t layers) {
    auto database = std::make_unique<HxDbDatabase>();
    const HxDbObjectPointer<HxDbLayerTable> table(database->layerTableId(), HxDb::kForWrite);
    for (std::int64_t i = 0; i < layers; ++i) {
        auto* layer = new HxDbLayerTableRecord;
        layer->setName(((i % 3 ? L"A-WALL-" : L"E-LITE-") + std::to_wstring(i)).c_str());
        layer->setColor(HxCmColor::byIndex(static_cast<std::int16_t>(1 + i % 255)));
        layer->setIsOff(i % 4 == 0);
        table->add(layer);
        layer->close();
    }
    return database;
}

template <class Use>
double walk(const HxDbDatabase& database, Use use) {
    const Clock::time_point start = Clock::now();
    const HxDbObjectPointer<HxDbLayerTable> table(database.layerTableId(), HxDb::kForRead);
    HxDbSymbolTableIterator* steps = nullptr;
    table->newIterator(steps);
    const std::unique_ptr<HxDbSymbolTableIterator> owner(steps);
    for (; !steps->done(); steps->step()) {
        HxDbLayerTableRecord* layer = nullptr;
        if (hxdbOpenObject(layer, steps->getRecordId(), HxDb::kForRead) == Hx::eOk) {
            use(*layer);
            layer->close();
        }
    }
    return std::chrono::duration<double>(Clock::now() - start).count();
}

void filter(benchmark::State& state, const wchar_t* expression) {
    const std::unique_ptr<HxDbDatabase> database = drawingOf(state.range(0));
    HxLyLayerFilter wanted;
    if (wanted.setFilterExpression(expression) != Hx::eOk) {
        state.SkipWithError("the expression is not understood");
        return;
    }
    double spent = 0;
    double floor = 0;
    int accepted = 0;
    for (auto _ : state) {
        const double seconds =
            walk(*database, [&](const HxDbLayerTableRecord& layer) { accepted += wanted.filter(&layer); });
        state.SetIterationTime(seconds);
        spent += seconds;
        floor += walk(*database,
                      [](const HxDbLayerTableRecord& layer) { benchmark::DoNotOptimize(layer.name()[0]); });
    }
    benchmark::DoNotOptimize(accepted);
    state.counters["ratio"] = spent / floor;
    state.counters["ns_per_layer"] =
        spent * 1e9 / static_cast<double>(state.iterations()) / static_cast<double>(state.range(0));
}

void sizes(benchmark::internal::Benchmark* bench) {
    bench->Arg(1000)->Arg(10000)->Arg(50000)->UseManualTime()->Unit(benchmark::kMillisecond);
}

BENCHMARK_CAPTURE(filter, name, L"NAME==\"A-*\"")->Apply(sizes);
BENCHMARK_CAPTURE(filter, flags, L"ON==\"True\" AND NOT FROZEN==\"True\"")->Apply(sizes);
BENCHMARK_CAPTURE(filter, mixed,
                  L"NAME==\"*WALL*,E-LITE-1#*\" AND (COLOR==\"1\" OR COLOR==\"7\" OR LOCKED==\"True\")")
    ->Apply(sizes);

}  // namespace
