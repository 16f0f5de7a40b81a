// The plan of the kernel's tests with layer states in it.
#pragma once

#include "sdk/hxlystate.h"
#include "tests/db/kernel/kernel_support.h"

namespace korvex::test {

/// A1 holds the states A2 (by names), A3 (by handles), A4 (spellings mixed) and A5, which is no state.
inline std::string statesDrawing() {
    std::string text = planDrawing();
    const std::string table = drawing("5 2 | 330 0 | 100 AcDbSymbolTable | 70 6");
    text.replace(text.find(table), drawing("5 2").size(),
                 drawing("5 2 | 102 {ACAD_XDICTIONARY | 360 A0 | 102 }"));
    const auto putBefore = [&](const std::string& place, const char* groups) {
        text.insert(text.find(drawing(place)), drawing(groups));
    };
    putBefore(
        "0 ENDTAB | 0 ENDSEC",
        "0 BLOCK_RECORD | 5 B0 | 330 1 | 100 AcDbSymbolTableRecord | 100 AcDbBlockTableRecord | 2 PIPE");
    putBefore("0 ENDSEC | 0 SECTION | 2 ENTITIES", R"(
0 BLOCK | 5 B1 | 330 B0 | 100 AcDbEntity | 8 0 | 100 AcDbBlockBegin | 2 PIPE | 70 4 | 10 0.0 | 20 0.0 | 30 0.0 | 3 PIPE | 1 pipe.dxf
0 ENDBLK | 5 B2 | 330 B0 | 100 AcDbEntity | 8 0 | 100 AcDbBlockEnd)");
    std::string states = drawing(R"(
0 DICTIONARY | 5 A0 | 330 2 | 100 AcDbDictionary | 280 1 | 281 1 | 3 ACAD_LAYERSTATES | 360 A1
0 DICTIONARY | 5 A1 | 102 {ACAD_REACTORS | 330 A0 | 102 } | 330 A0 | 100 AcDbDictionary | 280 1 | 281 1 | 3 Names | 360 A2 | 3 Handles | 360 A3 | 3 Mixed | 360 A4 | 3 None | 360 A5
0 XRECORD | 5 A2 | 102 {ACAD_REACTORS | 330 A1 | 102 } | 330 A1 | 100 AcDbXrecord | 280 1 | 91 2047 | 301 by names | 290 1 | 302 Walls
8 Walls | 90 8 | 62 1 | 370 25 | 6 Dashed | 390 72 | 92 255 | 300 BOOK$Red | 440 33554559
8 GONE | 90 3 | 62 3 | 370 -3 | 6 Continuous | 2 Color_3 | 440 0
8 PIPE~VALVE | 90 12 | 62 4 | 370 -3 | 6 LOST | 390 FE | 92 -1 | 440 33554432
0 XRECORD | 5 A3 | 102 {ACAD_REACTORS | 330 A1 | 102 } | 330 A1 | 100 AcDbXrecord | 280 1 | 91 1023 | 301 | 290 0 | 302 0
330 11 | 90 8 | 62 1 | 370 -3 | 331 33 | 1 Color_1 | 92 -1023475712 | 440 0
330 FE | 90 9 | 62 2 | 370 -3 | 331 32 | 1 Color_2 | 440 0
330 32 | 90 9 | 62 2 | 370 -3 | 331 32 | 1 Color_2 | 440 0
330 15 | 90 10 | 62 5 | 370 50 | 331 FE | 1 Color_5 | 92 -1 | 420 66051 | 440 33554457
0 XRECORD | 5 A4 | 330 A1 | 100 AcDbXrecord | 301 first
330 12 | 440 33554687 | 92 3271557121 | 6 DASHED | 62 3 | 390 71 | 90 0
8 EMPTY | 420 255 | 92 -1 | 331 32 | 301 second | 92 -1040187391 | 6 | 1
91 256 | 290 1 | 302 EMPTY
0 XRECORD | 5 A5 | 330 A1 | 100 AcDbXrecord | 280 1 | 301 no mask | 8 WALLS | 90 8
)");
    std::replace(states.begin(), states.end(), '~', '|');
    text.insert(text.find(drawing("0 ENDSEC | 0 EOF")), states);
    return text;
}

/// "WALLS 8 c1 w25 DASHED Bold a255", with "t0000FF" and "BOOK$Red" where they are there.
inline std::string told(const HxLyStateEntry& entry) {
    char hex[24] = "";
    if (entry.trueColor >= 0) {
        std::snprintf(hex, sizeof hex, " t%06llX", static_cast<unsigned long long>(entry.trueColor));
    }
    return toUtf8(entry.layer) + " " + std::to_string(entry.flags) + " c" + std::to_string(entry.colorIndex) +
           hex + (entry.colorBook.empty() ? "" : " " + toUtf8(entry.colorBook)) + " w" +
           std::to_string(entry.lineweight) + " " + toUtf8(entry.linetype) + " " + toUtf8(entry.plotStyle) +
           " a" + std::to_string(entry.transparency);
}

inline std::vector<std::string> allOf(HxLyStateReader& reader) {
    std::vector<std::string> all;
    HxLyStateEntry entry;
    while (reader.next(entry)) {
        all.push_back(told(entry));
    }
    return all;
}

inline std::vector<std::string> entriesOf(HxDbObjectId record) {
    HxLyStateReader reader(record);
    EXPECT_EQ(reader.status(), Hx::eOk);
    return allOf(reader);
}

class StatesTest : public KernelTest {
protected:
    explicit StatesTest(const std::string& bytes = statesDrawing()) : KernelTest(bytes) {}
};

}  // namespace korvex::test
