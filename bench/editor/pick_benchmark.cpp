// One pick in a drawing, and selections of all or half of it by a rectangle, against the floor: looking at
// the bounding boxes of all its entities.
#include "host/db/geometry/box.h"
#include "host/editor/picker.h"
#include "host/editor/selection.h"
#include "sdk/hxdbdatabase.h"

#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace korvex;

constexpr double kSide = 10000;

/// Lines, arcs and references all over a square, and their boxes.
struct Plan {
    std::unique_ptr<HxDbDatabase> database;
    std::vector<Box> boxes;
    std::vector<HxGePoint3d> points;
};

void addGroup(std::string& out, int code, const std::string& value) {
    out += std::to_string(code) + "\n" + value + "\n";
}

std::string makeDrawing(int entities, std::vector<Box>& boxes) {
    std::mt19937 random(1);
    std::uniform_real_distribution<double> any(0, kSide);
    std::string out;
    const auto add = [&](std::initializer_list<std::pair<int, std::string>> groups) {
        for (const auto& [code, value] : groups) {
            addGroup(out, code, value);
        }
    };
    add({{0, "SECTION"},
         {2, "BLOCKS"},
         {0, "BLOCK"},
         {8, "0"},
         {2, "DOOR"},
         {70, "0"},
         {10, "0"},
         {20, "0"}});
    add({{0, "LINE"}, {8, "0"}, {10, "0"}, {20, "0"}, {11, "9"}, {21, "0"}, {0, "ENDBLK"}, {8, "0"}});
    add({{0, "ENDSEC"}, {0, "SECTION"}, {2, "ENTITIES"}});
    for (int i = 0; i < entities; ++i) {
        const double x = any(random), y = any(random);
        const std::string sx = std::to_string(x), sy = std::to_string(y);
        Box box;
        box.add(Point2{x, y});
        if (i % 10 == 0) {
            add({{0, "INSERT"}, {8, "0"}, {2, "DOOR"}, {10, sx}, {20, sy}});
            box.add(Point2{x + 9, y});
        } else if (i % 10 < 4) {
            add({{0, "ARC"}, {8, "0"}, {10, sx}, {20, sy}, {40, "8"}, {50, "0"}, {51, "90"}});
            box.add(Point2{x + 8, y + 8});
        } else {
            const double right = x + 12, top = y + 7;
            add({{0, "LINE"},
                 {8, "0"},
                 {10, sx},
                 {20, sy},
                 {11, std::to_string(right)},
                 {21, std::to_string(top)}});
            box.add(Point2{right, top});
        }
        boxes.push_back(box);
    }
    add({{0, "ENDSEC"}, {0, "EOF"}});
    return out;
}

/// Loaded once for each size.
const Plan& planOf(int entities) {
    static std::map<int, Plan> plans;
    Plan& plan = plans[entities];
    if (!plan.database) {
        QTemporaryDir folder;
        QFile file(folder.filePath("plan.dxf"));
        if (file.open(QIODevice::WriteOnly)) {
            file.write(QByteArray::fromStdString(makeDrawing(entities, plan.boxes)));
            file.close();
        }
        plan.database = std::make_unique<HxDbDatabase>(false);
        plan.database->readDwgFile(file.fileName().toStdWString().c_str());
        std::mt19937 random(2);
        std::uniform_real_distribution<double> any(0, kSide);
        for (int i = 0; i < 512; ++i) {
            plan.points.emplace_back(any(random), any(random));
        }
    }
    return plan;
}

void walkAllBoxesFloor(benchmark::State& state) {
    const Plan& plan = planOf(static_cast<int>(state.range(0)));
    std::size_t next = 0;
    for (auto _ : state) {
        const HxGePoint3d& p = plan.points[next++ % plan.points.size()];
        const Box pickBox = Box::around({p.x, p.y}, 3);
        int touched = 0;
        for (const Box& box : plan.boxes) {
            touched += box.intersects(pickBox) ? 1 : 0;
        }
        benchmark::DoNotOptimize(touched);
    }
}

PickRequest requestIn(const Plan& plan) {
    PickRequest request;
    request.database = plan.database.get();
    request.space = plan.database->modelSpaceId();
    request.halfSize = 3;
    return request;
}

void pick(benchmark::State& state) {
    const Plan& plan = planOf(static_cast<int>(state.range(0)));
    PickRequest request = requestIn(plan);
    PickHit hit;
    pickAt(request, hit);
    std::size_t next = 0;
    std::size_t hits = 0;
    for (auto _ : state) {
        request.point = plan.points[next++ % plan.points.size()];
        hits += pickAt(request, hit) ? 1U : 0U;
    }
    state.counters["hits"] = static_cast<double>(hits) / static_cast<double>(state.iterations());
}

/// The first pick in a drawing takes the boxes of everything.
void firstPick(benchmark::State& state) {
    std::vector<Box> boxes;
    QTemporaryDir folder;
    QFile file(folder.filePath("plan.dxf"));
    if (file.open(QIODevice::WriteOnly)) {
        file.write(QByteArray::fromStdString(makeDrawing(static_cast<int>(state.range(0)), boxes)));
        file.close();
    }
    for (auto _ : state) {
        state.PauseTiming();
        Plan plan;
        plan.database = std::make_unique<HxDbDatabase>(false);
        plan.database->readDwgFile(file.fileName().toStdWString().c_str());
        const PickRequest request = requestIn(plan);
        PickHit hit;
        state.ResumeTiming();
        benchmark::DoNotOptimize(pickAt(request, hit));
        state.PauseTiming();
        plan.database.reset();
        state.ResumeTiming();
    }
}

void selectIn(benchmark::State& state, double right, bool crossing) {
    const Plan& plan = planOf(static_cast<int>(state.range(0)));
    Selection& selection = selectionOf(*plan.database);
    AreaRequest request;
    request.database = plan.database.get();
    request.space = plan.database->modelSpaceId();
    request.first = {-100, -100};
    request.second = {right, kSide + 100};
    request.crossing = crossing;
    pickInArea(request);
    for (auto _ : state) {
        selection.add(pickInArea(request));
        benchmark::DoNotOptimize(selection.objects().size());
        state.PauseTiming();
        selection.clear();
        state.ResumeTiming();
    }
}

void selectAll(benchmark::State& state) { selectIn(state, kSide + 100, false); }
void selectHalfByCrossing(benchmark::State& state) { selectIn(state, kSide / 2, true); }

BENCHMARK(selectAll)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(selectHalfByCrossing)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(walkAllBoxesFloor)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMicrosecond);
BENCHMARK(pick)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMicrosecond);
BENCHMARK(firstPick)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace
