// Writing a layer-state file, against writing the same bytes; reading one, against cutting and trimming its
// lines.
#include "bench/timing.h"
#include "layer_states/file/las_reader.h"
#include "layer_states/file/las_text.h"
#include "layer_states/file/las_writer.h"

#include <QSaveFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

using korvex::bench::secondsOf;

/// A state with so many layers; `letter` is in each name.
class Sample {
public:
    Sample(std::int64_t layers, wchar_t letter) {
        auto* const state = new CKvLayerState;
        state->SetLayerStateName(L"evening");
        auto* const entries = new KvLayerStateInfoArray;
        for (int i = 0; i < static_cast<int>(layers); ++i) {
            HxLyStateEntry entry;
            entry.layer = std::wstring(L"A-WALL-FULL-") + letter + L"-" + std::to_wstring(i);
            entry.flags = i & 0x3F;
            entry.colorIndex = 1 + i % 255;
            if (i % 4 == 0) entry.trueColor = i;
            entry.linetype = i % 3 ? L"Continuous" : L"DASHED2";
            entry.plotStyle = L"Color_" + std::to_wstring(entry.colorIndex);
            entries->Add(new CKvLayerStateInfo(entry, i, false));
        }
        m_map.add(state, entries);
        KvLasWriter writer(1252);
        writer.begin(*state);
        m_map.visitEntries(state, [&](const HxLyStateEntry& entry) {
            writer.add(entry);
            return true;
        });
        m_bytes = writer.bytes();
    }
    const KvLayerStateMap& map() const { return m_map; }
    const CKvLayerState& state() const { return *m_map.at(0); }
    const std::string& bytes() const { return m_bytes; }

private:
    KvLayerStateMap m_map;
    std::string m_bytes;
};

void tell(benchmark::State& state, double work, double floor) {
    state.counters["ratio"] = work / floor;
    state.counters["ns_per_layer"] =
        work * 1e9 / static_cast<double>(state.iterations()) / static_cast<double>(state.range(0));
}

void writeBytes(const QString& path, const std::string& bytes) {
    QSaveFile file(path);
    const bool isDone = file.open(QIODevice::WriteOnly) &&
                        file.write(bytes.data(), static_cast<qint64>(bytes.size())) > 0 && file.commit();
    benchmark::DoNotOptimize(isDone);
}

void write(benchmark::State& state, wchar_t letter) {
    const Sample sample(state.range(0), letter);
    const QTemporaryDir folder;
    const QString path = folder.filePath("out.las");
    double spent = 0;
    double floor = 0;
    for (auto _ : state) {
        spent += secondsOf([&] {
            if (!writeLasFile(path.toStdWString(), sample.map(), sample.state()).isWritten) {
                state.SkipWithError("not written");
            }
        });
        floor += secondsOf([&] { writeBytes(path, sample.bytes()); });
    }
    tell(state, spent, floor);
}

/// Making the bytes alone.
void make(benchmark::State& state, wchar_t letter) {
    const Sample sample(state.range(0), letter);
    double spent = 0;
    double floor = 0;
    for (auto _ : state) {
        spent += secondsOf([&] {
            KvLasWriter writer(1252);
            writer.begin(sample.state());
            sample.map().visitEntries(&sample.state(), [&](const HxLyStateEntry& entry) {
                writer.add(entry);
                return true;
            });
            benchmark::DoNotOptimize(writer.bytes().data());
        });
        floor += secondsOf([&] {
            const std::string copy = sample.bytes();
            benchmark::DoNotOptimize(copy.data());
        });
    }
    tell(state, spent, floor);
}

void read(benchmark::State& state, wchar_t letter) {
    const Sample sample(state.range(0), letter);
    double spent = 0;
    double floor = 0;
    for (auto _ : state) {
        KvLasState result;
        spent += secondsOf([&] {
            KvLasFailure failure;
            result = readLas(sample.bytes(), failure);
        });
        if (!result) state.SkipWithError("not read");
        floor += secondsOf([&] {
            KvLasLines lines(sample.bytes());
            std::string_view line;
            while (lines.next(line)) {
                benchmark::DoNotOptimize(line.data());
            }
        });
    }
    tell(state, spent, floor);
}

void sizes(benchmark::internal::Benchmark* bench) {
    bench->Arg(1000)->Arg(10000)->Arg(50000)->Unit(benchmark::kMillisecond);
}

BENCHMARK_CAPTURE(write, ascii, L'W')->Apply(sizes);
BENCHMARK_CAPTURE(write, umlauts, L'\u00D6')->Apply(sizes);
BENCHMARK_CAPTURE(make, ascii, L'W')->Apply(sizes);
BENCHMARK_CAPTURE(read, ascii, L'W')->Apply(sizes);
BENCHMARK_CAPTURE(read, umlauts, L'\u00D6')->Apply(sizes);

}  // namespace
