// The list of the edit dialog, against a bare model of as many rows in the same kind of view and copies of as
// many entries, and sorts of ready-made keys.
#include "bench/module/palette_bench.h"

#include "layer_states/edit/edit_layer_state_list.h"
#include "layer_states/edit/layer_state_infos.h"
#include "layer_states/file/las_reader.h"

#include <QKeyEvent>

#include <algorithm>

namespace korvex::bench {
namespace {

KvLayerStateEntries entries(std::int64_t count) {
    KvLayerStateEntries made(new KvLayerStateInfoArray);
    for (std::int64_t i = 0; i < count; ++i) {
        HxLyStateEntry entry;
        entry.layer = layerName(i);
        entry.linetype = i % 3 == 0 ? L"Dashed" : L"Continuous";
        entry.plotStyle = L"Normal";
        entry.colorIndex = static_cast<std::int32_t>(1 + i % 255);
        made->Add(new CKvLayerStateInfo(entry, static_cast<int>(i), i == 0));
    }
    return made;
}

/// A list that is shown and painted.
struct List {
    explicit List(const KvLayerStateInfoArray& state) {
        list.SetLayerStateInfoArray(CloneLayerStateInfoArray(&state));
        show(list);
    }
    static void show(QTableView& view) {
        view.resize(980, 400);
        view.show();
        QCoreApplication::processEvents();
    }
    void press(Qt::Key key) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(&list, &event);
        QCoreApplication::processEvents();
    }
    CKvEditLayerStateListCtrl list;
};

/// Sorted by name.
void openList(benchmark::State& state) {
    Drawing drawing(0);
    const KvLayerStateEntries given = entries(state.range(0));
    BareModel model(static_cast<int>(state.range(0)));
    against(
        state, [&] { List list(*given); },
        [&] {
            const KvLayerStateEntries copy(CloneLayerStateInfoArray(given.get()));
            QTableView view;
            view.setModel(&model);
            view.verticalHeader()->hide();
            List::show(view);
        });
}

void sortList(benchmark::State& state, int column) {
    Drawing drawing(0);
    const KvLayerStateEntries given = entries(state.range(0));
    List shown(*given);
    std::vector<std::pair<std::int64_t, int>> keys;
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        keys.emplace_back(i * 7919 % 255, static_cast<int>(i * 7919 % 100003));
    }
    bool ascending = false;
    against(
        state,
        [&] {
            shown.list.rows().sortBy(column, ascending);
            ascending = !ascending;
        },
        [&] {
            std::vector<std::pair<std::int64_t, int>> sorted = keys;
            std::sort(sorted.begin(), sorted.end());
            benchmark::DoNotOptimize(sorted.data());
        });
}

/// A click on a header with all rows selected, which stay so; against the bare sort.
void clickHeader(benchmark::State& state) {
    Drawing drawing(0);
    const KvLayerStateEntries given = entries(state.range(0));
    List shown(*given);
    std::vector<std::pair<std::int64_t, int>> keys;
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        keys.emplace_back(i * 7919 % 255, static_cast<int>(i * 7919 % 100003));
    }
    shown.list.selectAll();
    against(
        state, [&] { shown.list.slotSectionClicked(kStateColColor); },
        [&] {
            std::vector<std::pair<std::int64_t, int>> sorted = keys;
            std::sort(sorted.begin(), sorted.end());
            benchmark::DoNotOptimize(sorted.data());
        });
}

/// All rows at once, against a view that is told of a change.
void toggleAll(benchmark::State& state) {
    Drawing drawing(0);
    const KvLayerStateEntries given = entries(state.range(0));
    List shown(*given);
    shown.list.setCurrentIndex(shown.list.rows().index(0, kStateColLock));
    shown.list.selectAll();
    BareModel model(static_cast<int>(state.range(0)));
    QTableView view;
    view.setModel(&model);
    List::show(view);
    view.selectAll();
    against(
        state, [&] { shown.press(Qt::Key_Space); },
        [&] {
            model.change(0);
            QCoreApplication::processEvents();
        });
}

BENCHMARK(openList)->Apply(sizes);
BENCHMARK_CAPTURE(sortList, name, kStateColName)->Apply(sizes);
BENCHMARK_CAPTURE(sortList, color, kStateColColor)->Apply(sizes);
BENCHMARK_CAPTURE(sortList, linetype, kStateColLinetype)->Apply(sizes);
BENCHMARK(clickHeader)->Apply(sizes);
BENCHMARK(toggleAll)->Apply(sizes);

}  // namespace
}  // namespace korvex::bench
