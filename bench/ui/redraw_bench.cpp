// Redrawing a drawing of mixed entities, all of it and zoomed in, against the floor: as many bare lines drawn
// by the same QPainter on the same QImage. "ratio" is the time over the floor's, measured in the same run;
// "bytes_per_entity" is what the painter keeps.
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
#include <string>
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

/// Text of a drawing: groups as a code and a value.
class Groups {
public:
    Groups& operator()(int code, const std::string& value) {
        m_text += std::to_string(code) + "\n" + value + "\n";
        return *this;
    }
    Groups& operator()(int code, double value) { return (*this)(code, std::to_string(value)); }
    const std::string& text() const { return m_text; }

private:
    std::string m_text;
};

/// Of ten entities four are lines, two polylines, one each an arc, a circle, a text, a reference; on 20
/// layers, in the density of a floor plan. Coordinates as in a survey.
class MixedDrawing {
public:
    explicit MixedDrawing(int entities) : m_side(std::sqrt(entities) * 10) {
        tables();
        blocks();
        m_out(0, "SECTION")(2, "ENTITIES");
        for (int i = 0; i < entities; ++i) {
            entity(i);
        }
        m_out(0, "ENDSEC")(0, "EOF");
    }
    const std::string& text() const { return m_out.text(); }

private:
    static constexpr double kEast = 450000, kNorth = 5200000;

    void tables() {
        m_out(0, "SECTION")(2, "HEADER")(9, "$ACADVER")(1, "AC1015")(9, "$TILEMODE")(70, "1")(0, "ENDSEC");
        m_out(0, "SECTION")(2, "TABLES")(0, "TABLE")(2, "LTYPE")(70, "1");
        m_out(0, "LTYPE")(2, "DASHED")(70, "0")(3, "")(72, "65")(73, "2")(40, 3.0)(49, 2.0)(74, "0")(
            49, -1.0)(74, "0");
        m_out(0, "ENDTAB")(0, "TABLE")(2, "LAYER")(70, "20");
        for (int i = 0; i < 20; ++i) {
            m_out(0, "LAYER")(2, "L" + std::to_string(i))(70, "0")(62, std::to_string(i + 1))(
                6, i % 5 == 0 ? "DASHED" : "Continuous");
        }
        m_out(0, "ENDTAB")(0, "ENDSEC");
    }
    void blocks() {
        m_out(0, "SECTION")(2, "BLOCKS")(0, "BLOCK")(8, "0")(2, "DOOR")(70, "0")(10, 0.0)(20, 0.0);
        m_out(0, "LINE")(8, "0")(10, 0.0)(20, 0.0)(11, 9.0)(21, 0.0);
        m_out(0, "LINE")(8, "0")(10, 0.0)(20, 0.0)(11, 0.0)(21, 9.0);
        m_out(0, "ARC")(8, "0")(10, 0.0)(20, 0.0)(40, 9.0)(50, 0.0)(51, 90.0);
        m_out(0, "ENDBLK")(8, "0")(0, "ENDSEC");
    }
    double any(double most) { return std::uniform_real_distribution<double>(0, most)(m_random); }

    void entity(int i) {
        const double x = kEast + any(m_side);
        const double y = kNorth + any(m_side);
        const std::string layer = "L" + std::to_string(m_random() % 20);
        switch (i % 10) {
        case 4:
        case 5:
            m_out(0, "LWPOLYLINE")(8, layer)(90, "5")(70, "0");
            for (int k = 0; k < 5; ++k) {
                m_out(10, x + any(15))(20, y + any(15));
            }
            break;
        case 6: m_out(0, "ARC")(8, layer)(10, x)(20, y)(40, 2 + any(8))(50, 0.0)(51, any(350)); break;
        case 7: m_out(0, "CIRCLE")(8, layer)(10, x)(20, y)(40, 1 + any(4)); break;
        case 8: m_out(0, "TEXT")(8, layer)(10, x)(20, y)(40, 2.5)(1, "Room " + std::to_string(i)); break;
        case 9: m_out(0, "INSERT")(8, layer)(2, "DOOR")(10, x)(20, y)(50, any(360)); break;
        default: m_out(0, "LINE")(8, layer)(10, x)(20, y)(11, x + any(20) - 10)(21, y + any(20) - 10);
        }
    }

    double m_side;
    std::mt19937 m_random{1};
    Groups m_out;
};

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
