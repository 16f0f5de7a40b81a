// Scanning a drawing into records against the floor: counting its pairs of lines and nothing else.
#include "host/db/groups/file_scanner.h"
#include "host/db/groups/group_cursor.h"
#include "host/db/groups/group_writer.h"

#include <benchmark/benchmark.h>

namespace {

using namespace korvex;

void writeLayer(GroupWriter& out, int number) {
    const std::uint64_t handle = 0x100 + static_cast<std::uint64_t>(number);
    out.text(0, L"LAYER");
    out.handle(5, handle);
    out.handle(330, 2);
    out.text(100, L"AcDbSymbolTableRecord");
    out.text(100, L"AcDbLayerTableRecord");
    out.text(2, L"A-WALL-" + std::to_wstring(number));
    out.integer(70, number % 8);
    out.integer(62, number % 255 + 1);
    out.text(6, L"Continuous");
    out.integer(290, 1);
    out.integer(370, -3);
    out.handle(390, 0xF);
    out.handle(347, 0x62);
    out.text(1001, L"AcCmTransparency");
    out.integer(1071, 0x020000FF);
}

/// A drawing of layers with a line on each.
std::string makeDrawing(int layers, const GroupFormat& format) {
    GroupWriter out(format);
    const auto section = [&](const wchar_t* name) {
        out.text(0, L"SECTION");
        out.text(2, name);
    };
    section(L"HEADER");
    out.text(9, L"$ACADVER");
    out.text(1, L"AC1027");
    out.text(0, L"ENDSEC");
    section(L"TABLES");
    out.text(0, L"TABLE");
    out.text(2, L"LAYER");
    out.integer(70, layers);
    for (int i = 0; i < layers; ++i) {
        writeLayer(out, i);
    }
    out.text(0, L"ENDTAB");
    out.text(0, L"ENDSEC");
    section(L"ENTITIES");
    for (int i = 0; i < layers; ++i) {
        out.text(0, L"LINE");
        out.handle(5, 0x100000 + static_cast<std::uint64_t>(i));
        out.text(8, L"A-WALL-" + std::to_wstring(i));
        for (int code : {10, 20, 30, 11, 21, 31}) {
            out.real(code, i * 0.1 + code);
        }
    }
    out.text(0, L"ENDSEC");
    out.text(0, L"EOF");
    return out.take();
}

GroupFormat textFormat() {
    GroupFormat format;
    format.crlf = true;
    format.paddedInts = true;
    return format;
}

void countGroupsFloor(benchmark::State& state) {
    const std::string drawing = makeDrawing(static_cast<int>(state.range(0)), textFormat());
    for (auto _ : state) {
        benchmark::DoNotOptimize(countGroups(drawing));
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(drawing.size()));
}

void scanRecords(benchmark::State& state) {
    const std::string drawing = makeDrawing(static_cast<int>(state.range(0)), textFormat());
    for (auto _ : state) {
        FileScanner scanner(drawing);
        DrawingError error;
        FileRecord record;
        scanner.detect(error);
        std::size_t records = 0;
        while (scanner.next(record, error)) {
            ++records;
        }
        if (!scanner.atEnd()) {
            state.SkipWithError("the drawing does not scan");
        }
        benchmark::DoNotOptimize(records);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(drawing.size()));
}

void scanAndWalkGroups(benchmark::State& state) {
    const std::string drawing = makeDrawing(static_cast<int>(state.range(0)), textFormat());
    for (auto _ : state) {
        FileScanner scanner(drawing);
        DrawingError error;
        FileRecord record;
        scanner.detect(error);
        std::size_t groups = 0;
        while (scanner.next(record, error)) {
            for (GroupCursor cursor(record.slice, scanner.format()); cursor.next();) {
                ++groups;
            }
        }
        benchmark::DoNotOptimize(groups);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(drawing.size()));
}

BENCHMARK(countGroupsFloor)->Arg(1000)->Arg(10000)->Arg(50000)->Unit(benchmark::kMicrosecond);
BENCHMARK(scanRecords)->Arg(1000)->Arg(10000)->Arg(50000)->Unit(benchmark::kMicrosecond);
BENCHMARK(scanAndWalkGroups)->Arg(1000)->Arg(10000)->Arg(50000)->Unit(benchmark::kMicrosecond);

}  // namespace
