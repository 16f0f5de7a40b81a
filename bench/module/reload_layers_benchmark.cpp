// Listing every layer of a drawing, against a bare walk of the layer table that opens each record.
#include "bench/timing.h"
#include "model/layer_prop_manager.h"

#include "host/editor/documents.h"
#include "host/editor/editor.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <memory>

namespace {

using korvex::bench::secondsOf;

/// A new, current document with so many layers more.
class Drawing {
public:
    explicit Drawing(std::int64_t layers) {
        qputenv("KORVEX_PROFILE_DIR", m_folder.path().toUtf8());
        m_document = korvex::editor().documents().newDocument();
        const HxDbObjectPointer<HxDbLayerTable> table(database().layerTableId(), HxDb::kForWrite);
        for (std::int64_t i = 0; i < layers; ++i) {
            auto* layer = new HxDbLayerTableRecord;
            layer->setName((L"Layer " + std::to_wstring(i)).c_str());
            table->add(layer);
            layer->close();
        }
    }
    ~Drawing() { korvex::editor().documents().closeDocument(m_document); }
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;
    HxDbDatabase& database() { return *m_document->database(); }

private:
    QTemporaryDir m_folder;
    HxApDocument* m_document;
};

void walk(const HxDbDatabase& database) {
    const HxDbObjectPointer<HxDbLayerTable> table(database.layerTableId(), HxDb::kForRead);
    HxDbSymbolTableIterator* steps = nullptr;
    table->newIterator(steps);
    const std::unique_ptr<HxDbSymbolTableIterator> owner(steps);
    for (; !steps->done(); steps->step()) {
        HxDbLayerTableRecord* record = nullptr;
        if (hxdbOpenObject(record, steps->getRecordId(), HxDb::kForRead) == Hx::eOk) {
            benchmark::DoNotOptimize(record->name());
            record->close();
        }
    }
}

void tell(benchmark::State& state, double work, double floor) {
    state.counters["ns_per_layer"] =
        work * 1e9 / static_cast<double>(state.iterations()) / static_cast<double>(state.range(0));
    state.counters["ratio"] = work / floor;
}

/// `work` is done once more before it is timed.
template <class Work>
void against(benchmark::State& state, const HxDbDatabase& database, Work work) {
    double spent = 0;
    double floor = 0;
    work();
    for (auto _ : state) {
        spent += secondsOf(work);
        floor += secondsOf([&] { walk(database); });
    }
    tell(state, spent, floor);
}

void reloadInPalette(benchmark::State& state) {
    Drawing drawing(state.range(0));
    KvLayerPropManager manager(&drawing.database(), true);
    against(state, drawing.database(), [&] { manager.ReloadLayers(); });
}

/// With beginning and giving up the dialog's transaction, which holds every record.
void reloadInDialog(benchmark::State& state) {
    Drawing drawing(state.range(0));
    KvLayerPropManager manager(&drawing.database(), false);
    against(state, drawing.database(), [&] {
        manager.Initialize();
        manager.ReloadLayers();
        manager.Cancel();
    });
}

void filterAll(benchmark::State& state) {
    Drawing drawing(state.range(0));
    KvLayerPropManager manager(&drawing.database(), true);
    manager.ReloadLayers();
    manager.ReloadFilters();
    against(state, drawing.database(),
            [&] { benchmark::DoNotOptimize(manager.GetFilteredLayers(manager.GetRootFilter()).length()); });
}

BENCHMARK(reloadInPalette)->Arg(1000)->Arg(10000)->Arg(50000);
BENCHMARK(reloadInDialog)->Arg(1000)->Arg(10000)->Arg(50000);
BENCHMARK(filterAll)->Arg(1000)->Arg(10000)->Arg(50000);

}  // namespace
