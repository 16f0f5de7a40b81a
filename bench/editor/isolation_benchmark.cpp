// LAYISO in drawings of many layers, without what the module records, against the floor: opening each layer
// for write and turning it off, as one undo step.
#include "host/editor/commands/isolate_layers.h"
#include "host/editor/documents.h"
#include "host/editor/editor.h"
#include "host/editor/layer_names.h"
#include "sdk/hxdbsymtb.h"
#include "sdk/hxdoc.h"
#include "sdk/hxed.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace korvex;

/// A new drawing with so many layers besides 0.
class ManyLayers {
public:
    explicit ManyLayers(long long count) {
        qputenv("KORVEX_PROFILE_DIR", m_folder.path().toUtf8());
        editor().documents().newDocument();
        m_document = editor().documents().current();
        HxDbLayerTable* table = nullptr;
        database().getLayerTable(table, HxDb::kForWrite);
        for (long long i = 0; i < count; ++i) {
            auto layer = std::make_unique<HxDbLayerTableRecord>();
            layer->setName((L"A-" + std::to_wstring(i)).c_str());
            table->add(layer.get());
            layer.release()->close();
        }
        table->close();
    }
    ~ManyLayers() { editor().documents().closeDocument(m_document); }
    ManyLayers(const ManyLayers&) = delete;
    ManyLayers& operator=(const ManyLayers&) = delete;

    HxDbDatabase& database() { return *m_document->database(); }

    /// One undo step a turn; it is taken back outside of the time.
    template <class Change>
    void measure(benchmark::State& state, Change&& change) {
        for (auto _ : state) {
            hxedBeginUndoGroup(m_document, L"isolate");
            change();
            hxedEndUndoGroup(m_document);
            state.PauseTiming();
            std::vector<std::wstring> names;
            m_document->undo().undo(1, names);
            state.ResumeTiming();
        }
    }

private:
    QTemporaryDir m_folder;
    Document* m_document;
};

void isolateNamed(benchmark::State& state, const wchar_t* names) {
    ManyLayers drawing(state.range(0));
    drawing.measure(state, [&] {
        const IsolatedLayers kept{selectLayers(drawing.database(), names).layers, {}};
        benchmark::DoNotOptimize(isolate(drawing.database(), kept, OtherLayers::off, {}));
    });
}
void isolateByNames(benchmark::State& state) { isolateNamed(state, L"A-1,A-20,A-300"); }
BENCHMARK(isolateByNames)->Arg(500)->Arg(50000)->Unit(benchmark::kMillisecond);
/// Looks at the names of all layers first.
void isolateByPattern(benchmark::State& state) { isolateNamed(state, L"A-1?"); }
BENCHMARK(isolateByPattern)->Arg(500)->Arg(50000)->Unit(benchmark::kMillisecond);

void floorTurnOff(benchmark::State& state) {
    ManyLayers drawing(state.range(0));
    const std::vector<HxDbObjectId> layers = selectLayers(drawing.database(), L"*").layers;
    drawing.measure(state, [&] {
        for (const HxDbObjectId& id : layers) {
            const HxDbObjectPointer<HxDbLayerTableRecord> layer(id, HxDb::kForWrite);
            layer->setIsOff(true);
        }
    });
}
BENCHMARK(floorTurnOff)->Arg(500)->Arg(50000)->Unit(benchmark::kMillisecond);

}  // namespace
