// Changing one value in a large xrecord and reading its groups again, against copying the same groups one by
// one.
#include "bench/timing.h"
#include "host/db/groups/group_cursor.h"
#include "host/db/groups/group_writer.h"
#include "host/db/kernel/database_imp.h"
#include "host/db/lists/chain.h"
#include "sdk/hxads.h"
#include "sdk/hxdbdict.h"
#include "sdk/hxed.h"

#include <benchmark/benchmark.h>

namespace korvex {
namespace {

using bench::secondsOf;

/// As many entries as a snapshot of so many layers has, seven groups each.
Chain contents(std::int64_t layers, short first) {
    ChainBuilder list;
    list.add(Chain(hxutBuildList(91, 2047L, 290, first, 0)));
    for (std::int64_t i = 0; i < layers; ++i) {
        const std::wstring name = L"A-WALL-" + std::to_wstring(i);
        list.add(Chain(hxutBuildList(8, name.c_str(), 90, 8L, 62, 7, 370, 25, 6, L"Continuous", 2, L"Color_7",
                                     440, 0L, 0)));
    }
    return Chain(list.release());
}

void changeXrecord(benchmark::State& state) {
    HxDbDatabase database;
    hxdbSetWorkingDatabase(&database);
    HxDbObjectId id;
    {
        const HxDbObjectPointer<HxDbDictionary> root(database.namedObjectsDictionaryId(), HxDb::kForWrite);
        auto* const record = new HxDbXrecord;
        root->setAt(L"STATE", record, id);
        record->setFromRbChain(contents(state.range(0), 0).get());
        record->close();
    }
    const Chain lists[] = {contents(state.range(0), 1), contents(state.range(0), 0)};
    const GroupFormat& format = database.imp()->format;
    double changing = 0;
    double copying = 0;
    std::size_t turn = 0;
    for (auto _ : state) {
        {
            const HxDbObjectPointer<HxDbXrecord> record(id, HxDb::kForWrite);
            record->setFromRbChain(lists[turn++ % 2].get());
        }
        changing += secondsOf([&] { benchmark::DoNotOptimize(currentBlob(*id.stub()).groups().data()); });
        copying += secondsOf([&] {
            GroupWriter out(format);
            for (GroupCursor cursor(currentBlob(*id.stub()).groups(), format); cursor.next();) {
                out.copy(cursor);
            }
            const std::string copy = out.take();
            benchmark::DoNotOptimize(copy.data());
        });
    }
    hxdbSetWorkingDatabase(nullptr);
    state.counters["ms_per_change"] = changing * 1e3 / static_cast<double>(state.iterations());
    state.counters["ratio"] = changing / copying;
}
BENCHMARK(changeXrecord)->Arg(1000)->Arg(10000)->Arg(50000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace korvex
