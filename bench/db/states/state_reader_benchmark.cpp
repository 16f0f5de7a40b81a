// Reading layer states' records: headers of many states against a plain walk over the groups of all, and all
// entries against a plain walk that decodes what they hold.
#include "bench/timing.h"
#include "host/db/groups/group_cursor.h"
#include "host/db/groups/group_types.h"
#include "host/db/groups/group_writer.h"
#include "host/db/kernel/database_imp.h"
#include "host/db/objects/xrecord_imp.h"
#include "sdk/hxdbdict.h"
#include "sdk/hxdbsymtb.h"
#include "sdk/hxlystate.h"

#include <benchmark/benchmark.h>

namespace korvex {
namespace {

using bench::secondsOf;

enum Spelling : int { kNames, kHandles };

/// A drawing with so many states of so many layers.
class States {
public:
    States(std::int64_t states, std::int64_t layers, Spelling spelling = kNames) {
        addLayers(spelling == kHandles ? layers : 1);
        const HxDbObjectPointer<HxDbDictionary> dictionary(stateDictionary(), HxDb::kForWrite);
        for (std::int64_t i = 0; i < states; ++i) {
            GroupWriter out(database.imp()->format);
            out.integer(91, 2047);
            out.text(301, L"as built");
            out.integer(290, 1);
            out.text(302, L"0");
            for (std::int64_t layer = 0; layer < layers; ++layer) {
                addEntry(out, layer, spelling);
            }
            auto* const record = new HxDbXrecord;
            HxDbObjectId id;
            dictionary->setAt((L"STATE" + std::to_wstring(i)).c_str(), record, id);
            fields<XrecordImp>(record).setGroups(out.take());
            record->close();
            currentBlob(*id.stub());
            fields<XrecordImp>(record).setGroups({});  // not twice in memory
            records.push_back(id);
        }
    }
    void renameLayer(const std::wstring& name) const {
        const HxDbObjectPointer<HxDbLayerTableRecord> layer(m_layers.front(), HxDb::kForWrite);
        layer->setName(name.c_str());
    }
    /// Over all groups.
    template <class Use>
    void walk(Use use) const {
        for (const HxDbObjectId& id : records) {
            for (GroupCursor cursor(currentBlob(*id.stub()).groups(), database.imp()->format);
                 cursor.next();) {
                use(cursor);
            }
        }
    }

    /// Over all values.
    void walkValues() const {
        std::wstring text;
        walk([&](const GroupCursor& group) {
            if (groupType(group.code()) == GroupType::text) {
                group.asText(text);
                benchmark::DoNotOptimize(text.data());
            } else {
                benchmark::DoNotOptimize(group.asInteger());
            }
        });
    }

    HxDbDatabase database;
    std::vector<HxDbObjectId> records;

private:
    static std::wstring nameOf(std::int64_t layer) { return L"A-WALL-EXTERIOR-" + std::to_wstring(layer); }
    void addLayers(std::int64_t count) {
        const HxDbObjectPointer<HxDbLayerTable> table(database.layerTableId(), HxDb::kForWrite);
        for (std::int64_t i = 0; i < count; ++i) {
            auto* const layer = new HxDbLayerTableRecord;
            layer->setName(nameOf(i).c_str());
            m_layers.emplace_back();
            table->add(m_layers.back(), layer);
            layer->close();
        }
    }
    void addEntry(GroupWriter& out, std::int64_t i, Spelling spelling) const {
        if (spelling == kHandles) {
            out.handle(330, m_layers[static_cast<std::size_t>(i)].handle().value());
        } else {
            out.text(8, nameOf(i));
        }
        out.integer(90, 8);
        out.integer(62, 1 + i % 255);
        out.integer(370, 25);
        if (spelling == kHandles) {
            out.handle(331, database.continuousLinetype().handle().value());
        } else {
            out.text(6, L"Continuous");
        }
        out.text(spelling == kHandles ? 1 : 2, L"Color_7");
        if (i % 4 == 0) {
            out.integer(92, 0x1020FF);
        }
        out.integer(440, 0);
    }
    /// Where drawings keep their states.
    HxDbObjectId stateDictionary() {
        const HxDbObjectPointer<HxDbLayerTable> table(database.layerTableId(), HxDb::kForWrite);
        table->createExtensionDictionary();
        const HxDbObjectPointer<HxDbDictionary> extension(table->extensionDictionary(), HxDb::kForWrite);
        auto* const dictionary = new HxDbDictionary;
        HxDbObjectId id;
        extension->setAt(L"ACAD_LAYERSTATES", dictionary, id);
        dictionary->close();
        return id;
    }

    std::vector<HxDbObjectId> m_layers;
};

void readHeaders(benchmark::State& state) {
    const States states(state.range(0), 350);
    double reading = 0;
    double walking = 0;
    for (auto _ : state) {
        reading += secondsOf([&] {
            for (const HxDbObjectId& id : states.records) {
                const HxLyStateReader reader(id);
                benchmark::DoNotOptimize(reader.header().mask);
            }
        });
        walking += secondsOf(
            [&] { states.walk([](const GroupCursor& group) { benchmark::DoNotOptimize(group.code()); }); });
    }
    state.counters["ms"] = reading * 1e3 / static_cast<double>(state.iterations());
    state.counters["ratio"] = reading / walking;
}
BENCHMARK(readHeaders)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

/// A rename reaches each record when it is read next.
void readHeadersAfterRename(benchmark::State& state) {
    const States states(state.range(0), 350);
    double reading = 0;
    double walking = 0;
    int turn = 0;
    for (auto _ : state) {
        states.renameLayer(L"B-WALL-" + std::to_wstring(turn++));
        reading += secondsOf([&] {
            for (const HxDbObjectId& id : states.records) {
                const HxLyStateReader reader(id);
                benchmark::DoNotOptimize(reader.header().mask);
            }
        });
        walking += secondsOf([&] { states.walkValues(); });
    }
    state.counters["ms"] = reading * 1e3 / static_cast<double>(state.iterations());
    state.counters["ratio"] = reading / walking;
}
BENCHMARK(readHeadersAfterRename)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

void readEntries(benchmark::State& state) {
    const States states(state.range(0), state.range(1), static_cast<Spelling>(state.range(2)));
    double reading = 0;
    double walking = 0;
    for (auto _ : state) {
        reading += secondsOf([&] {
            HxLyStateEntry entry;
            for (const HxDbObjectId& id : states.records) {
                for (HxLyStateReader reader(id); reader.next(entry);) {
                    benchmark::DoNotOptimize(entry.layer.data());
                }
            }
        });
        walking += secondsOf([&] { states.walkValues(); });
    }
    const auto entries = static_cast<double>(state.iterations() * state.range(0) * state.range(1));
    state.counters["ns_per_entry"] = reading * 1e9 / entries;
    state.counters["ratio"] = reading / walking;
}
/// The largest is 5 million entries.
BENCHMARK(readEntries)
    ->ArgsProduct({{100}, {1000, 10000, 50000}, {kNames, kHandles}})
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace korvex
