// Layer states: capturing, restoring, comparing and writing them, against the bare work on the records.
#include "bench/module/palette_bench.h"

#include "frame/entry/exported_functions.h"
#include "layer_states/compare/differences_model.h"
#include "layer_states/manager/layer_state_man_dlg.h"
#include "layer_states/preview/layers_after_restore.h"

#include "sdk/hxui.h"

namespace korvex::bench {
namespace {

std::unique_ptr<CKvLayerStateManDlg> engineOf(HxDbDatabase& database) {
    auto engine = std::make_unique<CKvLayerStateManDlg>(&database);
    engine->SetCurrentLayerName(L"0");
    engine->LoadHxLayerState(&database);
    return engine;
}

/// Calls `visit` with each layer, open.
template <class Visitor>
void eachLayer(HxDbDatabase& database, HxDb::OpenMode mode, Visitor visit) {
    const HxDbObjectPointer<HxDbLayerTable> table(database.layerTableId(), HxDb::kForRead);
    HxDbSymbolTableIterator* steps = nullptr;
    table->newIterator(steps);
    for (const std::unique_ptr<HxDbSymbolTableIterator> owner(steps); !steps->done(); steps->step()) {
        const HxDbObjectPointer<HxDbLayerTableRecord> layer(steps->getRecordId(), mode);
        visit(*layer.object());
    }
}

/// What a restore of everything sets, on one layer.
void setAll(HxDbLayerTableRecord& layer, int value) {
    layer.setIsOff(value % 2 == 0);
    layer.setIsLocked(value % 2 == 0);
    layer.setVPDFLT(value % 2 == 0);
    layer.setIsPlottable(value % 2 != 0);
    layer.setColor(HxCmColor::byIndex(static_cast<std::int16_t>(1 + value)));
    layer.setLineWeight(static_cast<HxDb::LineWeight>(value % 2 == 0 ? 25 : 50));
    layer.setTransparency(HxCmTransparency(static_cast<std::uint8_t>(100 + value)));
}

void setAllLayers(HxDbDatabase& database, int value) {
    const int step = hxuiMainAppService()->beginGuardedOperation(curDoc());
    eachLayer(database, HxDb::kForWrite, [&](HxDbLayerTableRecord& layer) { setAll(layer, value); });
    hxuiMainAppService()->endGuardedOperation(step);
}

/// A new state of all layers, against opening each record and reading its values.
void capture(benchmark::State& state) {
    Drawing drawing(state.range(0));
    const auto engine = engineOf(drawing.database());
    against(
        state, [&] { engine->states().remove(engine->CmdNew(L"state", L"")); },
        [&] {
            HxLyStateEntry entry;
            eachLayer(drawing.database(), HxDb::kForRead,
                      [&](HxDbLayerTableRecord& layer) { hxlyEntryOfLayer(entry, layer, {}); });
        });
}

/// Everything of every layer, against the same on the bare records in one undo step.
void restoreAll(benchmark::State& state) {
    Drawing drawing(state.range(0));
    const auto engine = engineOf(drawing.database());
    setAllLayers(drawing.database(), 1);
    engine->CmdNew(L"first", L"");
    setAllLayers(drawing.database(), 2);
    engine->CmdNew(L"second", L"");
    bool isSecond = true;
    int value = 2;
    against(
        state,
        [&] {
            isSecond = !isSecond;
            engine->CmdRestore(isSecond ? L"second" : L"first", {});
        },
        [&] {
            value = value == 4 ? 3 : 4;
            setAllLayers(drawing.database(), value);
        });
}

/// Recording all layers, hiding them and bringing them back, against turning the bare records off and on in
/// two undo steps.
void isolateAndEnd(benchmark::State& state) {
    Drawing drawing(state.range(0));
    HxDbDatabase& database = drawing.database();
    const auto turn = [&](bool off) {
        const int step = hxuiMainAppService()->beginGuardedOperation(curDoc());
        eachLayer(database, HxDb::kForWrite, [&](HxDbLayerTableRecord& layer) { layer.setIsOff(off); });
        hxuiMainAppService()->endGuardedOperation(step);
    };
    against(
        state,
        [&] {
            LayIso();
            turn(true);
            if (LayUnisoNew() == 0) state.SkipWithError("the isolation did not end");
        },
        [&] {
            turn(true);
            turn(false);
        });
}

/// What is the same already, against reading each layer and comparing it with its entry.
void restoreNothing(benchmark::State& state) {
    Drawing drawing(state.range(0));
    const auto engine = engineOf(drawing.database());
    const CKvLayerState* const saved = engine->CmdNew(L"state", L"");
    const KvLayerStateInfoArray& entries = *engine->states().entries(saved);
    against(
        state, [&] { engine->CmdRestore(L"state", {}); },
        [&] {
            const HxDbObjectPointer<HxDbLayerTable> table(drawing.database().layerTableId(), HxDb::kForRead);
            HxLyStateEntry now;
            for (const CKvLayerStateInfo* const entry : entries) {
                HxDbObjectId id;
                table->getAt(entry->GetLayerName().c_str(), id);
                const HxDbObjectPointer<HxDbLayerTableRecord> layer(id, HxDb::kForRead);
                hxlyEntryOfLayer(now, *layer.object(), {});
                benchmark::DoNotOptimize(hxlyDifferences(entry->values(), now, HxLyState::kAllProperties));
            }
        });
}

/// What a restore of everything would make of the layers, against the restore that changes nothing.
void previewAll(benchmark::State& state) {
    Drawing drawing(state.range(0));
    const auto engine = engineOf(drawing.database());
    setAllLayers(drawing.database(), 1);
    const CKvLayerState* const other = engine->CmdNew(L"other", L"");
    setAllLayers(drawing.database(), 2);
    engine->CmdNew(L"same", L"");
    std::vector<HxUiLayerAs> layers;
    against(
        state, [&] { layersAfterRestore(drawing.database(), engine->states(), other, {}, layers); },
        [&] { engine->CmdRestore(L"same", {}); });
}

/// Ten states that nobody looked into, all the same as the drawing, against reading their entries.
void compareAll(benchmark::State& state) {
    Drawing drawing(state.range(0));
    {
        const auto engine = engineOf(drawing.database());
        for (int i = 0; i < 10; ++i) {
            engine->CmdNew((L"state" + std::to_wstring(i)).c_str(), L"");
        }
        engine->BuildLayerStateExtensionDictionary();
    }
    const auto engine = engineOf(drawing.database());
    KvLayerStateMap& states = engine->states();
    against(
        state,
        [&] {
            engine->layersChanged();
            for (std::size_t i = 0; i < states.size(); ++i) {
                engine->IsSameAsDWG(states.at(i));
            }
        },
        [&] {
            for (std::size_t i = 0; i < states.size(); ++i) {
                HxLyStateReader reader(states.record(states.at(i)));
                for (HxLyStateEntry entry; reader.next(entry);) {
                    benchmark::DoNotOptimize(entry.flags);
                }
            }
        });
}

/// What differs, when everything does, and its rows in order, against reading the entries of the state.
void showDifferences(benchmark::State& state) {
    Drawing drawing(state.range(0));
    const auto engine = engineOf(drawing.database());
    setAllLayers(drawing.database(), 1);
    CKvLayerState* const other = engine->CmdNew(L"other", L"");
    engine->BuildLayerStateExtensionDictionary();
    setAllLayers(drawing.database(), 2);
    KvDifferencesModel rows;
    against(
        state,
        [&] {
            const auto found = std::make_shared<KvStateDifferences>(
                engine->differencesOf(*other, HxLyState::kAllProperties));
            rows.setDifferences(found);
        },
        [&] {
            HxLyStateReader reader(engine->states().record(other));
            for (HxLyStateEntry entry; reader.next(entry);) {
                benchmark::DoNotOptimize(entry.flags);
            }
        });
    state.counters["rows"] = rows.rowCount();
}

/// The headers of so many states, against reading them by a bare reader.
void load(benchmark::State& state) {
    Drawing drawing(350);
    {
        const auto engine = engineOf(drawing.database());
        for (std::int64_t i = 0; i < state.range(0); ++i) {
            engine->CmdNew((L"state" + std::to_wstring(i)).c_str(), L"");
        }
        engine->BuildLayerStateExtensionDictionary();
    }
    const auto records = engineOf(drawing.database());
    KvLayerStateMap& states = records->states();
    against(
        state, [&] { engineOf(drawing.database()); },
        [&] {
            for (std::size_t i = 0; i < states.size(); ++i) {
                benchmark::DoNotOptimize(HxLyStateReader(states.record(states.at(i))).header().mask);
            }
        });
}

/// One changed state among so many, against the same among ten.
void writeOne(benchmark::State& state) {
    const auto fill = [](HxDbDatabase& database, std::int64_t count) {
        auto engine = engineOf(database);
        for (std::int64_t i = 0; i < count; ++i) {
            engine->CmdNew((L"state" + std::to_wstring(i)).c_str(), L"");
        }
        engine->BuildLayerStateExtensionDictionary();
        return engine;
    };
    Drawing few(350);
    const auto among10 = fill(few.database(), 10);
    Drawing many(350);
    const auto amongMany = fill(many.database(), state.range(0));
    int round = 0;
    const auto write = [&](CKvLayerStateManDlg& engine) {
        CKvLayerState* const changed = engine.states().at(5);
        (*engine.states().entries(changed))[3]->SetLayerFlag(++round);
        engine.BuildLayerStateExtensionDictionary();
    };
    against(
        state, [&] { write(*amongMany); }, [&] { write(*among10); });
}

BENCHMARK(capture)->Apply(sizes);
BENCHMARK(restoreAll)->Apply(sizes);
BENCHMARK(isolateAndEnd)->Apply(sizes);
BENCHMARK(restoreNothing)->Apply(sizes);
BENCHMARK(previewAll)->Apply(sizes);
BENCHMARK(compareAll)->Apply(sizes);
BENCHMARK(showDifferences)->Apply(sizes);
BENCHMARK(load)->Arg(10)->Arg(100)->Arg(1000)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(writeOne)->Arg(10)->Arg(100)->Arg(1000)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace korvex::bench
