// Redrawing a drawing of mixed entities, all of it and zoomed in, against the floor: as many bare lines drawn
// by the same QPainter on the same QImage. "ratio" is the time over the floor's, measured in the same run;
// "bytes_per_entity" is what the painter keeps.
#include "bench/ui/mixed_drawing.h"
#include "host/editor/picker.h"
#include "host/io/drawing_reader.h"
#include "host/ui/render/scene_painter.h"
#include "sdk/hxdbdatabase.h"

#include <QGuiApplication>
#include <QImage>
#include <QLineF>
#include <QPainter>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <map>
#include <memory>
#include <random>
#include <vector>

namespace {

using namespace korvex;
using Clock = std::chrono::steady_clock;

constexpr int kWidth = 1600, kHeight = 1000;

void startGui() {
    static int count = 1;
    static char name[] = "redraw_bench";
    static char* arguments[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static const QGuiApplication application(count, arguments);
}

/// A drawing, loaded once for each size.
struct Drawing {
    HxDbDatabase database{false};
    ScenePainter painter;
    HxGePoint3d low, high;

    /// The middle part of the extents, over the whole picture.
    SceneView view(double part) {
        SceneView view;
        view.database = &database;
        view.space = database.modelSpaceId();
        const double scale = std::min(kWidth / (high.x - low.x), kHeight / (high.y - low.y)) / part;
        view.toView = HxGeMatrix3d::translation({kWidth / 2.0, kHeight / 2.0}) *
                      HxGeMatrix3d::scaling(scale, -scale, 1) *
                      HxGeMatrix3d::translation({-(low.x + high.x) / 2, -(low.y + high.y) / 2});
        return view;
    }
};

Drawing& drawingOf(int entities) {
    static std::map<int, std::unique_ptr<Drawing>> drawings;
    std::unique_ptr<Drawing>& drawing = drawings[entities];
    if (!drawing) {
        drawing = std::make_unique<Drawing>();
        std::wstring error;
        readDrawing(drawing->database, MixedDrawing(entities).text(), error);
        spaceExtents(drawing->database, drawing->database.modelSpaceId(), drawing->low, drawing->high);
    }
    return *drawing;
}

QImage& picture() {
    static QImage image(kWidth, kHeight, QImage::Format_RGB32);
    return image;
}

double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// Short lines all over the picture in one call.
double floorOf(int count) {
    std::mt19937 random(2);
    std::uniform_real_distribution<double> x(0, kWidth), y(0, kHeight), step(-8, 8);
    std::vector<QLineF> lines;
    for (int i = 0; i < count; ++i) {
        const QPointF from(x(random), y(random));
        lines.emplace_back(from, from + QPointF(step(random), step(random)));
    }
    double best = 1e9;
    for (int i = 0; i < 5; ++i) {
        const Clock::time_point start = Clock::now();
        QPainter painter(&picture());
        painter.fillRect(picture().rect(), Qt::black);
        painter.setPen(QPen(Qt::white, 0));
        painter.drawLines(lines.data(), static_cast<int>(lines.size()));
        painter.end();
        best = std::min(best, secondsSince(start));
    }
    return best;
}

void redraw(benchmark::State& state, double part) {
    startGui();
    const int entities = static_cast<int>(state.range(0));
    Drawing& drawing = drawingOf(entities);
    const SceneView view = drawing.view(part);
    const SceneStyle style = SceneStyle::dark();
    const auto paint = [&] {
        QPainter painter(&picture());
        drawing.painter.paint(painter, QRectF(0, 0, kWidth, kHeight), view, style);
    };
    paint();
    double best = 1e9;
    for (auto _ : state) {
        const Clock::time_point start = Clock::now();
        paint();
        const double seconds = secondsSince(start);
        best = std::min(best, seconds);
        state.SetIterationTime(seconds);
    }
    if (!drawing.painter.isComplete()) {
        state.SkipWithError("the picture is not complete");
    }
    state.counters["ratio"] = best / floorOf(entities);
    state.counters["bytes_per_entity"] = static_cast<double>(drawing.painter.bytes()) / entities;
}

void redrawAll(benchmark::State& state) { redraw(state, 1); }
void redrawOneHundredth(benchmark::State& state) { redraw(state, 0.01); }

/// The first paint reads everything that is seen.
void firstPaint(benchmark::State& state) {
    startGui();
    const int entities = static_cast<int>(state.range(0));
    Drawing& drawing = drawingOf(entities);
    const SceneView view = drawing.view(1);
    double best = 1e9;
    for (auto _ : state) {
        ScenePainter fresh;
        const Clock::time_point start = Clock::now();
        QPainter painter(&picture());
        fresh.paint(painter, QRectF(0, 0, kWidth, kHeight), view, SceneStyle::dark());
        painter.end();
        const double seconds = secondsSince(start);
        best = std::min(best, seconds);
        state.SetIterationTime(seconds);
    }
    state.counters["ratio"] = best / floorOf(entities);
}

}  // namespace

BENCHMARK(redrawAll)->Arg(1000)->Arg(10000)->Arg(100000)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(redrawOneHundredth)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(firstPaint)->Arg(1000)->Arg(10000)->Arg(100000)->UseManualTime()->Unit(benchmark::kMillisecond);
