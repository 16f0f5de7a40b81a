// A palette on a drawing of many layers, and a bare model of as many rows in the same kind of panel to
// measure it against.
#pragma once

#include "bench/timing.h"

#include "manager_ui/grid/layer_list_ctrl.h"
#include "manager_ui/palette/layer_manager_wnd.h"
#include "manager_ui/window/layer_prop_manager_dlg.h"

#include "host/editor/documents.h"
#include "host/editor/editor.h"

#include <QApplication>
#include <QHeaderView>
#include <QTableView>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <random>

namespace korvex::bench {

inline QApplication& application() {
    static int count = 1;
    static char name[] = "layer_grid_benchmark";
    static char* arguments[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static auto* const application = new QApplication(count, arguments);
    return *application;
}

inline std::wstring layerName(std::int64_t i) {
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

inline void sizes(benchmark::internal::Benchmark* bench) {
    bench->Arg(1000)->Arg(10000)->Arg(50000)->UseManualTime()->Unit(benchmark::kMillisecond);
}

}  // namespace korvex::bench
