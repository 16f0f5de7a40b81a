// Small drawings for the tests of files, written as pairs: "0 LINE | 8 WALLS | 10 0.5". And what tests do
// with them.
#pragma once

#include "host/db/groups/file_scanner.h"
#include "host/db/groups/group_cursor.h"
#include "host/db/groups/group_writer.h"
#include "host/db/kernel/database_imp.h"
#include "host/db/kernel/entity_access.h"
#include "sdk/hxdbentity.h"
#include "tests/io/saving.h"

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <string>

namespace korvex::test {

/// The text drawing that pairs, parted by "|" or line ends, stand for.
inline std::string drawing(std::string_view pairs, const std::string& lineEnd = "\n") {
    constexpr std::string_view kBlanks = " \t";
    std::string out;
    while (!pairs.empty()) {
        const std::size_t end = std::min(pairs.find_first_of("|\n"), pairs.size());
        std::string_view pair = pairs.substr(0, end);
        pairs.remove_prefix(std::min(end + 1, pairs.size()));
        pair.remove_prefix(std::min(pair.find_first_not_of(kBlanks), pair.size()));
        pair = pair.substr(0, pair.find_last_not_of(kBlanks) + 1);
        if (!pair.empty()) {
            const std::size_t blank = std::min(pair.find(' '), pair.size());
            out += std::string(pair.substr(0, blank)) + lineEnd +
                   std::string(pair.substr(std::min(blank + 1, pair.size()))) + lineEnd;
        }
    }
    return out;
}

/// A text drawing in binary form.
inline std::string binary(const std::string& text, int codeBytes) {
    FileScanner scanner(text);
    DrawingError error;
    EXPECT_TRUE(scanner.detect(error));
    GroupFormat format = scanner.format();
    format.binary = true;
    format.codeBytes = codeBytes;
    GroupWriter out(format);
    GroupCursor cursor(text, scanner.format());
    while (cursor.next()) {
        out.transcode(cursor);
    }
    return std::string("KORVEX. Binary DXF\r\n\x1A\0", 22) + out.data();
}

/// A drawing with the header values that tests look at around its other sections.
inline std::string inVersion(const std::string& version, std::string_view sections) {
    return drawing("0 SECTION | 2 HEADER | 9 $ACADVER | 1 " + version +
                   "\n 9 $DWGCODEPAGE | 3 ANSI_1252 | 9 $CLAYER | 8 0 | 9 $TDUPDATE | 40 2450000.5"
                   "\n 9 $TILEMODE | 70 1 | 9 $HANDSEED | 5 100 | 0 ENDSEC\n" +
                   std::string(sections) + "\n 0 EOF");
}

/// R2000: three layouts, a block, sub-entities, an object and a section that the host does not know.
inline std::string sheetDrawing() {
    return inVersion(
        "AC1015",
        R"(
0 SECTION | 2 CLASSES | 0 CLASS | 1 WIDGET | 2 AcDbWidget | 3 Widgets | 90 0 | 280 0 | 281 0 | 0 ENDSEC
0 SECTION | 2 TABLES
0 TABLE | 2 LTYPE | 5 5 | 330 0 | 100 AcDbSymbolTable | 70 3
0 LTYPE | 5 14 | 330 5 | 100 AcDbSymbolTableRecord | 100 AcDbLinetypeTableRecord | 2 ByBlock | 70 0 | 3 | 72 65 | 73 0 | 40 0.0
0 LTYPE | 5 15 | 330 5 | 100 AcDbSymbolTableRecord | 100 AcDbLinetypeTableRecord | 2 ByLayer | 70 0 | 3 | 72 65 | 73 0 | 40 0.0
0 LTYPE | 5 16 | 330 5 | 100 AcDbSymbolTableRecord | 100 AcDbLinetypeTableRecord | 2 Continuous | 70 0 | 3 | 72 65 | 73 0 | 40 0.0
0 ENDTAB
0 TABLE | 2 LAYER | 5 2 | 330 0 | 100 AcDbSymbolTable | 70 4
0 LAYER | 5 10 | 330 2 | 100 AcDbSymbolTableRecord | 100 AcDbLayerTableRecord | 2 0 | 70 0 | 62 7 | 6 Continuous | 370 -3
0 LAYER | 5 11 | 330 2 | 100 AcDbSymbolTableRecord | 100 AcDbLayerTableRecord | 2 WALLS | 70 0 | 62 1 | 6 Continuous | 370 -3 | 1001 ACAD | 1070 5
999 a comment
0 LAYER | 5 12 | 330 2 | 100 AcDbSymbolTableRecord | 100 AcDbLayerTableRecord | 2 T)"
        "\xFC"
        R"(R | 70 0 | 62 3 | 6 Continuous | 370 -3
0 LAYER | 5 17 | 330 2 | 100 AcDbSymbolTableRecord | 100 AcDbLayerTableRecord | 2 EMPTY | 70 0 | 62 5 | 6 Continuous | 370 -3
0 ENDTAB
0 TABLE | 2 STYLE | 5 3 | 330 0 | 100 AcDbSymbolTable | 70 1
0 STYLE | 5 13 | 330 3 | 100 AcDbSymbolTableRecord | 100 AcDbTextStyleTableRecord | 2 Standard | 70 0 | 40 0.0 | 41 1.0 | 50 0.0 | 71 0 | 42 2.5 | 3 txt | 4
0 ENDTAB
0 TABLE | 2 VX | 5 6 | 330 0 | 100 AcDbSymbolTable | 70 0 | 0 VXRECORD | 5 7 | 0 ENDTAB
0 TABLE | 2 BLOCK_RECORD | 5 1 | 330 0 | 100 AcDbSymbolTable | 70 4
0 BLOCK_RECORD | 5 20 | 330 1 | 100 AcDbSymbolTableRecord | 100 AcDbBlockTableRecord | 2 *Model_Space | 340 50
0 BLOCK_RECORD | 5 21 | 330 1 | 100 AcDbSymbolTableRecord | 100 AcDbBlockTableRecord | 2 *Paper_Space | 340 51
0 BLOCK_RECORD | 5 22 | 330 1 | 100 AcDbSymbolTableRecord | 100 AcDbBlockTableRecord | 2 *Paper_Space0 | 340 52
0 BLOCK_RECORD | 5 23 | 330 1 | 100 AcDbSymbolTableRecord | 100 AcDbBlockTableRecord | 2 DOOR | 340 0
0 ENDTAB
0 ENDSEC
0 SECTION | 2 BLOCKS
0 BLOCK | 5 30 | 330 20 | 100 AcDbEntity | 8 0 | 100 AcDbBlockBegin | 2 *Model_Space | 70 0 | 10 0.0 | 20 0.0 | 30 0.0 | 3 *Model_Space | 1
0 ENDBLK | 5 31 | 330 20 | 100 AcDbEntity | 8 0 | 100 AcDbBlockEnd
0 BLOCK | 5 32 | 330 21 | 100 AcDbEntity | 67 1 | 8 0 | 100 AcDbBlockBegin | 2 *Paper_Space | 70 0 | 10 0.0 | 20 0.0 | 30 0.0 | 3 *Paper_Space | 1
0 ENDBLK | 5 33 | 330 21 | 100 AcDbEntity | 67 1 | 8 0 | 100 AcDbBlockEnd
0 BLOCK | 5 34 | 330 22 | 100 AcDbEntity | 8 0 | 100 AcDbBlockBegin | 2 *Paper_Space0 | 70 0 | 10 0.0 | 20 0.0 | 30 0.0 | 3 *Paper_Space0 | 1
0 LINE | 5 35 | 330 22 | 100 AcDbEntity | 8 WALLS | 100 AcDbLine | 10 3.0 | 20 0.0 | 30 0.0 | 11 1.0 | 21 1.0 | 31 0.0
0 ENDBLK | 5 36 | 330 22 | 100 AcDbEntity | 8 0 | 100 AcDbBlockEnd
0 BLOCK | 5 37 | 100 AcDbEntity | 8 0 | 100 AcDbBlockBegin | 2 door | 70 2 | 10 0.0 | 20 0.0 | 30 0.0 | 3 DOOR | 1
0 CIRCLE | 5 38 | 330 23 | 100 AcDbEntity | 8 0 | 100 AcDbCircle | 10 0.0 | 20 0.0 | 30 0.0 | 40 1.0
0 ENDBLK | 5 39 | 100 AcDbEntity | 8 0 | 100 AcDbBlockEnd
0 ENDSEC
0 SECTION | 2 ENTITIES
0 LINE | 5 40 | 330 20 | 100 AcDbEntity | 8 WALLS | 100 AcDbLine | 10 0.0 | 20 0.0 | 30 0.0 | 11 1.50 | 21 1.0 | 31 0.0
0 POLYLINE | 5 41 | 330 20 | 100 AcDbEntity | 8 WALLS | 100 AcDb2dPolyline | 66 1 | 10 0.0 | 20 0.0 | 30 0.0
0 VERTEX | 5 42 | 330 41 | 100 AcDbEntity | 8 WALLS | 100 AcDbVertex | 100 AcDb2dVertex | 10 0.0 | 20 0.0 | 30 0.0
0 SEQEND | 5 43 | 330 41 | 100 AcDbEntity | 8 WALLS
0 INSERT | 5 44 | 102 {ACAD_REACTORS | 330 51 | 102 } | 330 20 | 100 AcDbEntity | 8 0 | 100 AcDbBlockReference | 66 1 | 2 DOOR | 10 5.0 | 20 5.0 | 30 0.0
0 ATTRIB | 5 45 | 330 44 | 100 AcDbEntity | 8 T)"
        "\xFC"
        R"(R | 100 AcDbText | 10 5.0 | 20 5.0 | 30 0.0 | 40 2.5 | 1 D1 | 100 AcDbAttribute | 2 NO | 70 0
0 SEQEND | 5 46 | 330 44 | 100 AcDbEntity | 8 0
0 TEXT | 5 47 | 330 21 | 100 AcDbEntity | 67 1 | 8 0 | 100 AcDbText | 10 1.0 | 20 1.0 | 30 0.0 | 40 2.5 | 1 Sheet
0 ENDSEC
0 SECTION | 2 OBJECTS
0 DICTIONARY | 5 C | 330 0 | 100 AcDbDictionary | 281 1 | 3 ACAD_LAYOUT | 350 1A | 3 WIDGETS | 350 60
0 DICTIONARY | 5 1A | 330 C | 100 AcDbDictionary | 281 1 | 3 Model | 350 50 | 3 First | 350 51 | 3 Second | 350 52
0 LAYOUT | 5 50 | 330 1A | 100 AcDbPlotSettings | 1 | 100 AcDbLayout | 1 Model | 70 1 | 71 0 | 330 20
0 LAYOUT | 5 51 | 330 1A | 100 AcDbPlotSettings | 1 | 100 AcDbLayout | 1 First | 70 1 | 71 1 | 330 21
0 LAYOUT | 5 52 | 330 1A | 100 AcDbPlotSettings | 1 | 100 AcDbLayout | 1 Second | 70 1 | 71 2 | 330 22
0 WIDGET | 5 60 | 330 C | 100 AcDbWidget | 310 00FF10 | 160 -5 | 1 last
0 ENDSEC
0 SECTION | 2 THUMBNAILIMAGE | 90 3 | 310 ABCDEF | 0 ENDSEC
)");
}

/// R12 without handles: names that no table has, a block, paper space.
inline std::string oldDrawing() {
    return drawing(R"(999 made by hand
0 SECTION | 2 HEADER | 9 $ACADVER | 1 AC1009 | 9 $HANDLING | 70 0 | 0 ENDSEC
0 SECTION | 2 TABLES
0 TABLE | 2 LAYER | 70 1 | 0 LAYER | 2 WALLS | 70 0 | 62 1 | 6 CONTINUOUS | 0 ENDTAB
0 ENDSEC
0 SECTION | 2 BLOCKS
0 BLOCK | 8 0 | 2 DOOR | 70 0 | 10 0.0 | 20 0.0 | 3 DOOR | 0 LINE | 8 GLASS | 6 DASHED | 10 0.0 | 20 0.0 | 11 1.0 | 21 0.0 | 0 ENDBLK | 8 0
0 ENDSEC
0 SECTION | 2 ENTITIES
0 LINE | 8 walls | 10 0.0 | 20 0.0 | 11 1.0 | 21 0.0
0 INSERT | 8 WALLS | 66 1 | 2 DOOR | 10 0.0 | 20 0.0
0 ATTRIB | 8 WALLS | 10 0.0 | 20 0.0 | 40 2.5 | 1 D1 | 2 NO | 70 0 | 7 TITLES
0 SEQEND | 8 WALLS
0 LINE | 67 1 | 8 FRAME | 10 0.0 | 20 0.0 | 11 1.0 | 21 0.0
0 ENDSEC
0 EOF)");
}

/// A database with a drawing in it.
inline std::unique_ptr<HxDbDatabase> opened(const std::string& bytes) {
    auto database = std::make_unique<HxDbDatabase>(false);
    std::wstring error;
    EXPECT_EQ(readDrawing(*database, bytes, error), Hx::eOk) << toUtf8(error);
    return database;
}

inline HxDbObjectId recordId(const HxDbDatabase& database, TableKind table, const wchar_t* name) {
    return HxDbObjectId(findRecord(database, table, name));
}

inline HxDbStub* byHandle(const HxDbDatabase& database, std::uint64_t handle) {
    return database.imp()->handles.find(handle);
}

inline void freeze(HxDbDatabase& database, const wchar_t* layer) {
    HxDbObjectPointer<HxDbLayerTableRecord> record(recordId(database, TableKind::layer, layer),
                                                   HxDb::kForWrite);
    ASSERT_EQ(record.openStatus(), Hx::eOk);
    ASSERT_EQ(record->setIsFrozen(true), Hx::eOk);
}

inline void erase(HxDbDatabase& database, HxDbStub* stub) {
    static_cast<void>(database);
    HxDbObject* object = nullptr;
    ASSERT_EQ(hxdbOpenObject(object, HxDbObjectId(stub), HxDb::kForWrite), Hx::eOk);
    ASSERT_EQ(object->erase(), Hx::eOk);
    object->close();
}

/// The text between two marks of a text drawing, the first one included.
inline std::string between(const std::string& text, const std::string& from, const std::string& to) {
    const std::size_t start = text.find(from);
    const std::size_t end = start == text.npos ? text.npos : text.find(to, start + from.size());
    return start == text.npos ? "" : text.substr(start, end - start);
}

/// Lines of two texts that differ, as "old > new"; "" at the end of a text.
inline std::vector<std::string> changedLines(const std::string& before, const std::string& after) {
    std::vector<std::string> changes;
    std::size_t a = 0;
    std::size_t b = 0;
    while (a < before.size() || b < after.size()) {
        const std::size_t endA = std::min(before.find('\n', a), before.size());
        const std::size_t endB = std::min(after.find('\n', b), after.size());
        const std::string lineA = a < before.size() ? before.substr(a, endA - a) : "";
        const std::string lineB = b < after.size() ? after.substr(b, endB - b) : "";
        if (lineA != lineB) {
            changes.push_back(lineA + " > " + lineB);
        }
        a = endA + 1;
        b = endB + 1;
    }
    return changes;
}

inline std::string fileBytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline void putFile(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

}  // namespace korvex::test
