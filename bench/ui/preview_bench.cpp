// Pictures with other layers in the size of a pane, against the window's redraw of the whole drawing: "ratio"
// is the time over that redraw's, measured in the same run. Of the layers a third is off and a third has
// another colour.
#include "bench/ui/mixed_drawing.h"
#include "host/editor/documents.h"
#include "host/editor/view.h"
#include "host/ui/view/scene_layers.h"
#include "sdk/hxdbsymtb.h"
#include "sdk/hxpreview.h"

#include <QApplication>
#include <QFile>
#include <QPainter>
#include <QTemporaryDir>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>

namespace {

using namespace korvex;
using Clock = std::chrono::steady_clock;

const QSize kWindow(1600, 1000);
const QSize kPane(480, 320);
constexpr int kBudget = 250;

void startGui() {
    static int count = 1;
    static char name[] = "preview_bench";
    static char* arguments[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static const QApplication application(count, arguments);
}

double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// An open document, its window's painter warm.
class Opened {
public:
    explicit Opened(int entities) {
        QFile file(m_folder.filePath("mixed.dxf"));
        if (file.open(QIODevice::WriteOnly)) {
            file.write(QByteArray::fromStdString(MixedDrawing(entities).text()));
            file.close();
        }
        HxApDocument* document = nullptr;
        hxDocManager()->openDocument(file.fileName().toStdWString().c_str(), document);
        m_document = document;
        setScreenSize(kWindow.width(), kWindow.height());
        redraw();
    }
    ~Opened() { hxDocManager()->closeDocument(m_document); }
    Opened(const Opened&) = delete;
    Opened& operator=(const Opened&) = delete;

    HxDbDatabase& database() { return *m_document->database(); }
    double redraw() {
        const Clock::time_point start = Clock::now();
        QImage image(kWindow, QImage::Format_RGB32);
        QPainter on(&image);
        const Frame frame{ScreenMap(screenView(database()), kWindow), kWindow, 1};
        m_painter.paint(on, QRectF({0, 0}, QSizeF(kWindow)), sceneView(database(), frame),
                        SceneStyle::dark());
        return secondsSince(start);
    }
    double bestRedraw() {
        double best = 1e9;
        for (int i = 0; i < 5; ++i) {
            best = std::min(best, redraw());
        }
        return best;
    }
    std::vector<HxUiLayerAs> layers() {
        std::vector<HxUiLayerAs> all;
        const HxDbObjectPointer<HxDbLayerTable> table(database().layerTableId(), HxDb::kForRead);
        HxDbSymbolTableIterator* steps = nullptr;
        table->newIterator(steps);
        const std::unique_ptr<HxDbSymbolTableIterator> owner(steps);
        for (; !steps->done(); steps->step()) {
            HxUiLayerAs as;
            as.layer = steps->getRecordId();
            as.properties = all.size() % 3 == 0   ? HxLyState::kOn
                            : all.size() % 3 == 1 ? HxLyState::kColor
                                                  : 0;
            as.isOff = true;
            as.color = HxCmColor::byIndex(6);
            all.push_back(as);
        }
        return all;
    }

private:
    QTemporaryDir m_folder;
    HxApDocument* m_document = nullptr;
    ScenePainter m_painter;
};

/// `isKept`: by a preview that has drawn before. Times include the making of a fresh one.
void preview(benchmark::State& state, bool isKept, int milliseconds) {
    startGui();
    Opened drawing(static_cast<int>(state.range(0)));
    const std::vector<HxUiLayerAs> layers = drawing.layers();
    HxUiLayerPreview kept;
    QImage image;
    if (isKept) {
        kept.draw(image, &drawing.database(), layers, kPane, 1, 600000);
    }
    double best = 1e9;
    bool isCoarse = false;
    bool isComplete = true;
    for (auto _ : state) {
        HxUiLayerPreview fresh;
        HxUiLayerPreview& used = isKept ? kept : fresh;
        const Clock::time_point start = Clock::now();
        if (used.draw(image, &drawing.database(), layers, kPane, 1, milliseconds) != Hx::eOk) {
            state.SkipWithError("no picture");
        }
        const double seconds = secondsSince(start);
        best = std::min(best, seconds);
        state.SetIterationTime(seconds);
        isCoarse = isCoarse || used.isCoarse();
        isComplete = isComplete && used.isComplete();
    }
    state.counters["ratio"] = best / drawing.bestRedraw();
    state.counters["coarse"] = isCoarse ? 1 : 0;
    state.counters["complete"] = isComplete ? 1 : 0;
}

void nextPreview(benchmark::State& state) { preview(state, true, kBudget); }
void firstPreview(benchmark::State& state) { preview(state, false, kBudget); }
/// The fine one is given up soon, so that all of the coarse one counts.
void firstCoarsePreview(benchmark::State& state) { preview(state, false, 1); }

}  // namespace

BENCHMARK(nextPreview)->Arg(1000)->Arg(10000)->Arg(100000)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(firstPreview)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Arg(1000000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(firstCoarsePreview)->Arg(100000)->Arg(1000000)->UseManualTime()->Unit(benchmark::kMillisecond);
