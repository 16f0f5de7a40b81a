// Edits in the layer manager, against the bare changes of the records that they make.
#include "bench/module/palette_bench.h"

#include "manager_ui/editing/layer_change.h"
#include "manager_ui/grid/layer_column.h"
#include "manager_ui/grid/layer_list_model.h"
#include "model/layer_data.h"
#include "model/layer_prop_manager.h"

#include "host/editor/command_processor.h"
#include "host/editor/script_source.h"
#include "sdk/hxdbentity.h"
#include "sdk/hxui.h"

#include <QCheckBox>
#include <QLineEdit>

namespace korvex::bench {
namespace {

std::vector<HxDbObjectId> layersOf(KvLayerListCtrl& list) {
    std::vector<HxDbObjectId> ids;
    for (const KvLayerData* const layer : list.rows().layers()) {
        ids.push_back(layer->layerId());
    }
    return ids;
}

std::vector<HxDbObjectId> tableOrder(HxDbDatabase& database) {
    std::vector<HxDbObjectId> ids;
    const HxDbObjectPointer<HxDbLayerTable> table(database.layerTableId(), HxDb::kForRead);
    HxDbSymbolTableIterator* steps = nullptr;
    table->newIterator(steps);
    for (const std::unique_ptr<HxDbSymbolTableIterator> owner(steps); !steps->done(); steps->step()) {
        ids.push_back(steps->getRecordId());
    }
    return ids;
}

std::wstring nameOf(HxDbObjectId layer) {
    return HxDbObjectPointer<HxDbLayerTableRecord>(layer, HxDb::kForRead)->name();
}

/// Runs commands as typed.
void run(const std::wstring& commands) {
    editor().input().append(std::make_unique<ScriptSource>(commands, ScriptOptions()));
    editor().processor().runAll();
}

/// Lines in model space, on these layers by turns.
std::vector<HxDbObjectId> addLines(HxDbDatabase& database, const std::vector<HxDbObjectId>& layers,
                                   int count) {
    std::vector<HxDbObjectId> lines;
    const HxDbObjectPointer<HxDbBlockTableRecord> space(database.modelSpaceId(), HxDb::kForWrite);
    for (int i = 0; i < count; ++i) {
        auto* const line = new HxDbEntity(L"LINE");
        HxDbObjectId id;
        space->appendHxDbEntity(id, line);
        line->setLayer(layers[static_cast<std::size_t>(i) % layers.size()]);
        line->close();
        lines.push_back(id);
    }
    return lines;
}

/// Another property than the click sets, as one undo step.
void editBare(const std::vector<HxDbObjectId>& layers, std::size_t count, bool frozen) {
    const int step = hxuiMainAppService()->beginGuardedOperation(curDoc());
    for (std::size_t i = 0; i < count; ++i) {
        const HxDbObjectPointer<HxDbLayerTableRecord> record(layers[i], HxDb::kForWrite);
        record->setVPDFLT(frozen);
    }
    hxuiMainAppService()->endGuardedOperation(step);
}

/// One click on so many selected rows of 50,000.
void click(benchmark::State& state) {
    Drawing drawing(50000);
    Palette palette;
    KvLayerListCtrl& list = palette.list();
    const int rows = static_cast<int>(state.range(0));
    const int last = list.rows().columnCount() - 1;
    list.selectionModel()->select({list.rows().index(0, 0), list.rows().index(rows - 1, last)},
                                  QItemSelectionModel::ClearAndSelect);
    const std::vector<HxDbObjectId> layers = layersOf(list);
    bool frozen = false;
    against(
        state, [&] { list.OnClickSubItemLayersList(0, kColLock); },
        [&] {
            frozen = !frozen;
            editBare(layers, static_cast<std::size_t>(rows), frozen);
        });
    state.counters.erase("ns_per_layer");
}

/// A key in the search box, until the rows are painted; against reading every name and painting as many rows.
void search(benchmark::State& state) {
    Drawing drawing(state.range(0));
    Palette palette;
    BarePanel panel(static_cast<int>(state.range(0)));
    const std::vector<HxDbObjectId> layers = layersOf(palette.list());
    const QStringList texts{"*W*", "*W*L*", "*-1*", "A*"};
    int next = 0;
    against(
        state,
        [&] {
            palette.palette->content().OnEnChangeEditSearch(texts[next++ % texts.size()]);
            QCoreApplication::processEvents();
        },
        [&] {
            std::size_t length = 0;
            for (const HxDbObjectId id : layers) {
                const HxDbObjectPointer<HxDbLayerTableRecord> record(id, HxDb::kForRead);
                length += std::wcslen(record->name());
            }
            benchmark::DoNotOptimize(length);
            panel.model.reset();
            QCoreApplication::processEvents();
        });
}

/// From the button to the open editor; against adding a record and painting.
void newLayer(benchmark::State& state) {
    Drawing drawing(state.range(0));
    Palette palette;
    BarePanel panel(static_cast<int>(state.range(0)));
    int made = 0;
    against(
        state,
        [&] {
            palette.palette->content().OnButtonNew();
            QCoreApplication::processEvents();
        },
        [&] {
            const HxDbObjectPointer<HxDbLayerTable> table(drawing.database().layerTableId(), HxDb::kForWrite);
            auto* const layer = new HxDbLayerTableRecord;
            layer->setName((L"Bare" + std::to_wstring(++made)).c_str());
            table->add(layer);
            layer->close();
            panel.model.reset();
            QCoreApplication::processEvents();
        });
}

/// 1,000 layers that nobody needs; against erasing as many records and finding out what is in use.
void deleteLayers(benchmark::State& state) {
    constexpr int kDeleted = 1000;
    Drawing drawing(state.range(0) + 2 * kDeleted);
    Palette palette;
    KvLayerListCtrl& list = palette.list();
    const int last = list.rows().columnCount() - 1;
    double spent = 0;
    double least = 0;
    for (auto _ : state) {
        const std::vector<HxDbObjectId> layers = layersOf(list);
        list.selectionModel()->select({list.rows().index(2, 0), list.rows().index(kDeleted + 1, last)},
                                      QItemSelectionModel::ClearAndSelect);
        const double seconds = secondsOf([&] { palette.palette->content().OnButtonDelete(); });
        state.SetIterationTime(seconds);
        spent += seconds;
        least += secondsOf([&] {
            const int step = hxuiMainAppService()->beginGuardedOperation(curDoc());
            {
                const HxDbObjectPointer<HxDbLayerTable> table(drawing.database().layerTableId(),
                                                              HxDb::kForWrite);
                table->generateUsageData();
            }
            for (std::size_t i = kDeleted + 2; i < 2 * kDeleted + 2; ++i) {
                const HxDbObjectPointer<HxDbLayerTableRecord> record(layers[i], HxDb::kForWrite);
                record->erase();
            }
            hxuiMainAppService()->endGuardedOperation(step);
        });
        state.PauseTiming();
        run(L"U\nU\n");
        palette.palette->refreshWndLayers(curDocDatabase(), true);
        state.ResumeTiming();
    }
    state.counters["ratio"] = spent / least;
}

/// 100 layers with 100,000 lines between them; against giving as many lines another layer.
void merge(benchmark::State& state) {
    constexpr int kLines = 100000;
    constexpr int kMerged = 100;
    Drawing drawing(state.range(0));
    const std::vector<HxDbObjectId> layers = tableOrder(drawing.database());
    const std::vector<HxDbObjectId> lines =
        addLines(drawing.database(), {layers.begin() + 1, layers.begin() + 1 + kMerged}, kLines);
    std::wstring names;
    for (int i = 1; i <= kMerged; ++i) {
        names += (i > 1 ? L"," : L"") + nameOf(layers[static_cast<std::size_t>(i)]);
    }
    const std::wstring command = L"_.-laymrg _N " + names + L"\n\n_N 0\n_Y ";
    double spent = 0;
    double least = 0;
    for (auto _ : state) {
        const double seconds = secondsOf([&] { run(command); });
        state.SetIterationTime(seconds);
        spent += seconds;
        run(L"U\n");
        least += secondsOf([&] {
            const int step = hxuiMainAppService()->beginGuardedOperation(curDoc());
            for (const HxDbObjectId line : lines) {
                const HxDbObjectPointer<HxDbEntity> entity(line, HxDb::kForWrite);
                entity->setLayer(layers.front());
            }
            hxuiMainAppService()->endGuardedOperation(step);
        });
        run(L"U\n");
    }
    state.counters["ratio"] = spent / least;
}

/// Which of 1,000 layers are in use, and their rows, after a line was drawn among so many; against reading
/// every object's layer.
void usage(benchmark::State& state) {
    Drawing drawing(1000);
    const std::vector<HxDbObjectId> lines =
        addLines(drawing.database(), tableOrder(drawing.database()), static_cast<int>(state.range(0)));
    Palette palette;
    against(
        state,
        [&] {
            palette.palette->SetDirtyUsage();
            palette.palette->OnUpdateCmdUI();
            QCoreApplication::processEvents();
        },
        [&] {
            std::size_t own = 0;
            for (const HxDbObjectId line : lines) {
                const HxDbObjectPointer<HxDbEntity> entity(line, HxDb::kForRead);
                own += entity->layerId().isNull() ? 0 : 1;
            }
            benchmark::DoNotOptimize(own);
        });
    state.counters.erase("ns_per_layer");
}

/// The dialog's Cancel after 10,000 edits, against aborting a bare transaction of as many.
void cancel(benchmark::State& state) {
    constexpr std::size_t kEdits = 10000;
    Drawing drawing(state.range(0) + kEdits);
    const std::vector<HxDbObjectId> layers = tableOrder(drawing.database());
    const std::vector<HxDbObjectId> edited(layers.begin(), layers.begin() + kEdits);
    HxDbTransactionManager& transactions = *drawing.database().transactionManager();
    double spent = 0;
    double least = 0;
    for (auto _ : state) {
        KvLayerPropManagerDlg dialog(&drawing.database(), nullptr);
        dialog.setIsPalette(false);
        dialog.OnInitDialog();
        changeLayers(dialog.list(), edited, "Lock",
                     [](HxDbLayerTableRecord& layer) { layer.setIsLocked(true); });
        const double seconds = secondsOf([&] { dialog.OnCancel(); });
        state.SetIterationTime(seconds);
        spent += seconds;
        transactions.startTransaction();
        for (const HxDbObjectId layer : layers) {
            HxDbObject* object = nullptr;
            transactions.getObject(object, layer, HxDb::kForRead);
        }
        for (const HxDbObjectId layer : edited) {
            HxDbObject* object = nullptr;
            transactions.getObject(object, layer, HxDb::kForWrite);
            static_cast<HxDbLayerTableRecord*>(object)->setIsLocked(true);
        }
        least += secondsOf([&] { transactions.abortTransaction(); });
    }
    state.counters["ratio"] = spent / least;
}

BENCHMARK(click)->Arg(1)->Arg(1000)->Arg(50000)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(search)->Apply(sizes);
BENCHMARK(newLayer)->Apply(sizes);
BENCHMARK(deleteLayers)->Apply(sizes)->Iterations(5);
BENCHMARK(merge)->Apply(sizes)->Iterations(3);
BENCHMARK(usage)->Arg(1000)->Arg(10000)->Arg(100000)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(cancel)->Apply(sizes)->Iterations(5);

}  // namespace
}  // namespace korvex::bench
