// Fuzz target: any groups are taken as the record of a layer state. What is read of it is the same every time
// and after it was written again; renames that are undone leave the drawing's bytes as they were.
#include "host/db/kernel/database_imp.h"
#include "host/db/kernel/entity_access.h"
#include "host/io/drawing_reader.h"
#include "host/io/drawing_writer.h"
#include "sdk/hxads.h"
#include "sdk/hxdbdict.h"
#include "sdk/hxlystate.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <vector>

namespace {

using namespace korvex;

constexpr std::uint64_t kDictionary = 0xA1;
constexpr std::uint64_t kState = 0xA2;

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

/// Pairs, one a line, as groups of a text drawing.
std::string groupsOf(std::string_view pairs) {
    std::string out;
    while (!pairs.empty()) {
        const std::string_view line = pairs.substr(0, pairs.find('\n'));
        pairs.remove_prefix(std::min(line.size() + 1, pairs.size()));
        const std::size_t blank = line.find(' ');
        out += std::string(line.substr(0, blank)) + "\n" + std::string(line.substr(blank + 1)) + "\n";
    }
    return out;
}

/// A drawing with layers WALLS and DOORS (11, 12) and linetype DASHED (33) around the record's content.
std::string drawingWith(const std::string& content) {
    static const std::string head = groupsOf(R"(0 SECTION
2 HEADER
9 $ACADVER
1 AC1027
9 $PSTYLEMODE
290 0
9 $HANDSEED
5 200
0 ENDSEC
0 SECTION
2 TABLES
0 TABLE
2 LTYPE
5 5
0 LTYPE
5 33
330 5
100 AcDbSymbolTableRecord
100 AcDbLinetypeTableRecord
2 DASHED
70 0
0 ENDTAB
0 TABLE
2 LAYER
5 2
102 {ACAD_XDICTIONARY
360 A0
102 }
0 LAYER
5 11
330 2
100 AcDbSymbolTableRecord
100 AcDbLayerTableRecord
2 WALLS
70 0
0 LAYER
5 12
330 2
100 AcDbSymbolTableRecord
100 AcDbLayerTableRecord
2 DOORS
70 0
0 ENDTAB
0 ENDSEC
0 SECTION
2 OBJECTS
0 DICTIONARY
5 C
100 AcDbDictionary
3 ACAD_PLOTSTYLENAME
350 70
0 ACDBDICTIONARYWDFLT
5 70
330 C
100 AcDbDictionary
3 Normal
350 71
100 AcDbDictionaryWithDefault
340 71
0 ACDBPLACEHOLDER
5 71
330 70
0 DICTIONARY
5 A0
330 2
100 AcDbDictionary
3 ACAD_LAYERSTATES
360 A1
0 DICTIONARY
5 A1
330 A0
100 AcDbDictionary
3 State
360 A2
0 XRECORD
5 A2
330 A1
100 AcDbXrecord
)");
    return head + content + groupsOf("0 ENDSEC\n0 EOF\n");
}

bool same(const HxLyStateEntry& a, const HxLyStateEntry& b) {
    return a.layer == b.layer && a.flags == b.flags && a.colorIndex == b.colorIndex &&
           a.trueColor == b.trueColor && a.colorBook == b.colorBook && a.linetype == b.linetype &&
           a.lineweight == b.lineweight && a.plotStyle == b.plotStyle && a.transparency == b.transparency;
}

using Entries = std::vector<HxLyStateEntry>;

bool same(const Entries& a, const Entries& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const HxLyStateEntry& x, const HxLyStateEntry& y) { return same(x, y); });
}

Entries entriesOf(HxLyStateReader& reader) {
    Entries entries;
    HxLyStateEntry entry;
    while (reader.next(entry)) {
        entries.push_back(entry);
    }
    return entries;
}

/// Groups of 16 bits hold it, and no text stands for another one.
bool isWritable(const HxLyStateEntry& entry) {
    const auto fits = [](std::int32_t value) { return value == static_cast<std::int16_t>(value); };
    const auto isPlain = [](const std::wstring& text) {
        return std::all_of(text.begin(), text.end(),
                           [](wchar_t c) { return c >= L' ' && c != L'\\' && c < 0xD800; });
    };
    return fits(entry.colorIndex) && fits(entry.lineweight) && isPlain(entry.layer) &&
           isPlain(entry.linetype) && isPlain(entry.colorBook);
}

/// Puts the entries into another record and reads them from there.
void writeAgain(HxDbDatabase& database, const HxLyStateHeader& header, Entries entries) {
    const HxDbObjectId dictionary(database.imp()->handles.find(kDictionary));
    HxLyStateListBuilder builder(&database, dictionary, header);
    entries.erase(std::remove_if(
                      entries.begin(), entries.end(),
                      [&](const HxLyStateEntry& entry) { return !isWritable(entry) || !builder.add(entry); }),
                  entries.end());
    resbuf* list = builder.take();
    zds_name made = {0, 0};
    require(list && hxdbEntMakeX(list, made) == RTNORM);
    hxutRelRb(list);
    HxDbObjectId id;
    require(hxdbGetObjectId(id, made) == Hx::eOk);
    HxLyStateReader again(id);
    require(again.status() == Hx::eOk && again.header().mask == header.mask);
    for (HxLyStateEntry& entry : entries) {
        if (entry.trueColor == -1) {
            entry.colorBook.clear();  // has no group then
        }
    }
    require(same(entriesOf(again), entries));
}

void rename(HxDbDatabase& database, std::uint64_t handle, const wchar_t* name) {
    const HxDbObjectPointer<HxDbSymbolTableRecord> record(HxDbObjectId(database.imp()->handles.find(handle)),
                                                          HxDb::kForWrite);
    if (record) {
        record->setName(name);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes = drawingWith(std::string(reinterpret_cast<const char*>(data), size));
    HxDbDatabase database(false);
    std::wstring error;
    if (readDrawing(database, bytes, error) != Hx::eOk) {
        return 0;
    }
    const HxDbObjectId record(database.imp()->handles.find(kState));
    HxDbXrecordWalk walk(record);
    require(walk.status() == Hx::eOk);
    int begun = 0;
    while (walk.next()) {
        begun += walk.code() == 8 || walk.code() == 330 ? 1 : 0;
    }
    HxLyStateReader reader(record);
    const Entries entries = entriesOf(reader);
    if (reader.status() != Hx::eOk) {
        require(reader.status() == Hx::eKeyNotFound && entries.empty());
        return 0;
    }
    require(static_cast<int>(entries.size()) + reader.skippedEntries() == begun);
    reader.rewind();
    require(same(entriesOf(reader), entries));

    hxdbSetWorkingDatabase(&database);
    journal(database).beginGroup(L"RENAME");
    rename(database, 0x11, L"B");
    rename(database, 0x12, L"WALLS");
    rename(database, 0x33, L"C");
    writeDrawing(database);
    HxLyStateReader renamed(record);
    require(entriesOf(renamed).size() == entries.size());
    journal(database).endGroup();
    journal(database).undo();
    require(writeDrawing(database) == bytes);
    writeAgain(database, reader.header(), entries);
    hxdbSetWorkingDatabase(nullptr);
    return 0;
}
