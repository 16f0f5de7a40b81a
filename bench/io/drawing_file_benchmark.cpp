// Loading and saving a drawing of many layers, against reading its pairs of lines and doing nothing with
// them. "ratio" is the time over the floor's time, measured in the same run.
#include "host/db/groups/file_scanner.h"
#include "host/db/kernel/database_imp.h"
#include "host/io/drawing_reader.h"
#include "host/io/drawing_writer.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>

namespace {

using namespace korvex;
using Clock = std::chrono::steady_clock;

std::string hex(std::size_t value) {
    char text[20];
    std::snprintf(text, sizeof text, "%zX", value);
    return text;
}

/// Layers as real drawings write them, a line on every tenth but the first.
std::string manyLayers(std::size_t count) {
    std::string out =
        "  0\nSECTION\n  2\nHEADER\n  9\n$ACADVER\n  1\nAC1027\n  9\n$HANDSEED\n  5\nFFFFFF\n  0\nENDSEC\n"
        "  0\nSECTION\n  2\nTABLES\n  0\nTABLE\n  2\nLAYER\n  5\n2\n330\n0\n100\nAcDbSymbolTable\n 70\n" +
        std::to_string(count) + "\n";
    for (std::size_t i = 0; i < count; ++i) {
        const std::string name = i == 0 ? "0" : "A-WALL-" + std::to_string(i);
        out += "  0\nLAYER\n  5\n" + hex(0x100 + i) +
               "\n330\n2\n100\nAcDbSymbolTableRecord\n100\nAcDbLayerTableRecord\n  2\n" + name +
               "\n 70\n     0\n 62\n     7\n  6\nContinuous\n370\n    -3\n390\nF\n347\n6B\n";
    }
    out += "  0\nENDTAB\n  0\nENDSEC\n  0\nSECTION\n  2\nENTITIES\n";
    for (std::size_t i = 10; i < count; i += 10) {
        out += "  0\nLINE\n  5\n" + hex(0x100 + count + i) + "\n330\n1F\n100\nAcDbEntity\n  8\nA-WALL-" +
               std::to_string(i) +
               "\n100\nAcDbLine\n 10\n1.5\n 20\n2.25\n 30\n0.0\n 11\n10.0\n 21\n20.0\n 31\n0.0\n";
    }
    return out + "  0\nENDSEC\n  0\nEOF\n";
}

/// The best of several runs, in seconds.
template <class Work>
double timeOf(Work work) {
    double best = 1e9;
    for (int i = 0; i < 7; ++i) {
        const Clock::time_point start = Clock::now();
        work();
        best = std::min(best, std::chrono::duration<double>(Clock::now() - start).count());
    }
    return best;
}

double floorOf(const std::string& bytes) {
    return timeOf([&] { benchmark::DoNotOptimize(countGroups(bytes)); });
}

void report(benchmark::State& state, const std::string& bytes, double best) {
    state.counters["ratio"] = best / floorOf(bytes);
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes.size()));
}

void load(benchmark::State& state) {
    const std::string bytes = manyLayers(static_cast<std::size_t>(state.range(0)));
    double best = 1e9;
    for (auto _ : state) {
        std::string copy = bytes;
        HxDbDatabase database(false);
        std::wstring error;
        const Clock::time_point start = Clock::now();
        if (readDrawing(database, std::move(copy), error) != Hx::eOk) {
            state.SkipWithError("the drawing was not read");
            return;
        }
        const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
        best = std::min(best, seconds);
        state.SetIterationTime(seconds);
    }
    report(state, bytes, best);
}

void save(benchmark::State& state) {
    const std::string bytes = manyLayers(static_cast<std::size_t>(state.range(0)));
    HxDbDatabase database(false);
    std::wstring error;
    if (readDrawing(database, bytes, error) != Hx::eOk || writeDrawing(database) != bytes) {
        state.SkipWithError("the drawing was not read");
        return;
    }
    double best = 1e9;
    for (auto _ : state) {
        const Clock::time_point start = Clock::now();
        benchmark::DoNotOptimize(writeDrawing(database));
        const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
        best = std::min(best, seconds);
        state.SetIterationTime(seconds);
    }
    report(state, bytes, best);
}

}  // namespace

BENCHMARK(load)->Arg(1000)->Arg(10000)->Arg(50000)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(save)->Arg(1000)->Arg(10000)->Arg(50000)->UseManualTime()->Unit(benchmark::kMillisecond);
