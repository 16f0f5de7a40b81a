// Opening and closing every layer of a drawing, against reading and writing one number in each of as many
// objects: how cheap an open can be at all.
#include "bench/timing.h"
#include "host/db/kernel/database_imp.h"
#include "host/db/kernel/entity_access.h"
#include "sdk/hxdbsymtb.h"

#include <benchmark/benchmark.h>

namespace {

using korvex::bench::secondsOf;

/// A drawing with so many layers more than the empty one.
std::unique_ptr<HxDbDatabase> drawingOf(std::int64_t layers) {
    auto database = std::make_unique<HxDbDatabase>();
    const HxDbObjectPointer<HxDbLayerTable> table(database->layerTableId(), HxDb::kForWrite);
    for (std::int64_t i = 0; i < layers; ++i) {
        auto* layer = new HxDbLayerTableRecord;
        layer->setName((L"Layer " + std::to_wstring(i)).c_str());
        table->add(layer);
        layer->close();
    }
    return database;
}

void openAndClose(benchmark::State& state, HxDb::OpenMode mode) {
    const std::unique_ptr<HxDbDatabase> database = drawingOf(state.range(0));
    const std::vector<HxDbStub*>& layers = korvex::members(*database->layerTableId().stub());
    double opening = 0;
    double floor = 0;
    for (auto _ : state) {
        opening += secondsOf([&] {
            for (HxDbStub* stub : layers) {
                HxDbObject* layer = nullptr;
                if (hxdbOpenObject(layer, HxDbObjectId(stub), mode) == Hx::eOk) {
                    benchmark::DoNotOptimize(layer);
                    layer->close();
                }
            }
        });
        floor += secondsOf([&] {
            for (HxDbStub* stub : layers) {
                benchmark::DoNotOptimize(stub->object);
                ++stub->readers;
                benchmark::ClobberMemory();
                --stub->readers;
            }
        });
    }
    state.counters["ns_per_open"] =
        opening * 1e9 / static_cast<double>(state.iterations()) / static_cast<double>(layers.size());
    state.counters["ratio"] = opening / floor;
}

void openForRead(benchmark::State& state) { openAndClose(state, HxDb::kForRead); }
void openForWrite(benchmark::State& state) { openAndClose(state, HxDb::kForWrite); }
BENCHMARK(openForRead)->Arg(1000)->Arg(10000)->Arg(50000);
BENCHMARK(openForWrite)->Arg(1000)->Arg(10000)->Arg(50000);

}  // namespace
