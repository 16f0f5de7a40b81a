// The layer palette, against a bare model of as many rows in the same kind of view, and sorts of ready-made
// keys.
#include "manager_ui/grid/layer_column.h"
#include "manager_ui/grid/layer_list_ctrl.h"
#include "manager_ui/grid/layer_list_model.h"
#include "manager_ui/palette/layer_manager_wnd.h"
#include "manager_ui/window/layer_prop_manager_dlg.h"
#include "model/layer_prop_manager.h"

#include "host/editor/documents.h"
#include "host/editor/editor.h"

#include <QApplication>
#include <QHeaderView>
#include <QTableView>
#include <QTemporaryDir>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <memory>
#include <random>

namespace {

using Clock = std::chrono::steady_clock;

template <class Work>
double secondsOf(Work work) {
    const Clock::time_point start = Clock::now();
    work();
    return std::chrono::duration<double>(Clock::now() - start).count();
}

QApplication& application() {
    static int count = 1;
    static char name[] = "layer_grid_benchmark";
    static char* arguments[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static auto* const application = new QApplication(count, arguments);
    return *application;
}

std::wstring layerName(std::int64_t i) {
    static const wchar_t* const kParts[] = {L"A-WALL", L"a-door", L"E-LITE", L"S-GRID", L"M-DUCT"};
    return std::wstring(kParts[i % 5]) + L"-" + std::to_wstring(i * 7919 % 100003);
}

/// A new, current document with so many layers.
class Drawing {
public:
    explicit Drawing(std::int64_t layers) {
        application();
        qputenv("KORVEX_PROFILE_DIR", m_folder.path().toUtf8());
        m_document = korvex::editor().documents().newDocument();
        std::mt19937 random(1);
        const HxDbObjectPointer<HxDbLayerTable> table(database().layerTableId(), HxDb::kForWrite);
        for (std::int64_t i = 0; i < layers; ++i) {
            auto* layer = new HxDbLayerTableRecord;
            layer->setName(layerName(i).c_str());
            layer->setColor(HxCmColor::byIndex(static_cast<std::int16_t>(1 + random() % 255)));
            layer->setIsOff(random() % 4 == 0);
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

/// Rows that cost nothing.
class BareModel : public QAbstractTableModel {
public:
    explicit BareModel(int rows) : m_rows(rows) {}
    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : m_rows; }
    int columnCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : 13; }
    QVariant data(const QModelIndex& at, int role) const override {
        return role == Qt::DisplayRole ? QVariant(QString::number(at.row())) : QVariant();
    }
    void change(int row) { emit dataChanged(index(row, 0), index(row, 12)); }
    void reset() {
        beginResetModel();
        endResetModel();
    }

private:
    int m_rows;
};

/// A frame with the bare model's view docked in it, shown and painted.
struct BarePanel {
    explicit BarePanel(int rows) : model(rows) {
        auto* const panel = new HxUiDockPanel(&frame);
        auto* const view = new QTableView(panel);
        view->verticalHeader()->hide();
        view->setModel(&model);
        view->setGeometry(2, 24, 480, 560);
        frame.resize(1000, 640);
        frame.dockPanel(panel, nullptr, kHxDockLeft, kHxDockWhole);
        panel->show();
        frame.show();
        QCoreApplication::processEvents();
    }
    HxUiDockFrameWindow frame;
    BareModel model;
};

struct Palette {
    Palette() {
        palette = new KvLayerManagerWnd(&frame);
        palette->initDialog();
        palette->setGeometry(0, 0, 500, 600);
        frame.resize(1000, 640);
        frame.dockPanel(palette, nullptr, kHxDockLeft, kHxDockWhole);
        palette->show();
        frame.show();
        QCoreApplication::processEvents();
    }
    KvLayerListCtrl& list() { return palette->content().list(); }
    HxUiDockFrameWindow frame;
    KvLayerManagerWnd* palette;
};

/// `work` against `floor`, both once before.
template <class Work, class Floor>
void against(benchmark::State& state, Work work, Floor floor) {
    double spent = 0;
    double least = 0;
    work();
    floor();
    for (auto _ : state) {
        const double seconds = secondsOf(work);
        state.SetIterationTime(seconds);
        spent += seconds;
        least += secondsOf(floor);
    }
    state.counters["ratio"] = spent / least;
    state.counters["ns_per_layer"] =
        spent * 1e9 / static_cast<double>(state.iterations()) / static_cast<double>(state.range(0));
}

void open(benchmark::State& state) {
    Drawing drawing(state.range(0));
    std::size_t bytes = 0;
    against(
        state,
        [&] {
            Palette palette;
            bytes = palette.list().rows().bytes();
        },
        [&] { BarePanel panel(static_cast<int>(state.range(0))); });
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

void sizes(benchmark::internal::Benchmark* bench) {
    bench->Arg(1000)->Arg(10000)->Arg(50000)->UseManualTime()->Unit(benchmark::kMillisecond);
}

BENCHMARK(open)->Apply(sizes);
BENCHMARK_CAPTURE(sortBy, name, kColName)->Apply(sizes);
BENCHMARK_CAPTURE(sortBy, color, kColColor)->Apply(sizes);
BENCHMARK_CAPTURE(sortBy, linetype, kColLinetype)->Apply(sizes);
BENCHMARK(oneDirtyRow)->Apply(sizes);
BENCHMARK(everyRowDirty)->Apply(sizes);
BENCHMARK(switchFilter)->Apply(sizes);

}  // namespace
