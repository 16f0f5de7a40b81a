// Damaged files are refused with the place, and leave nothing behind.
#include "tests/io/drawing_support.h"

#include <QTemporaryDir>

namespace korvex::test {

namespace {

struct Damage {
    const char* name;
    std::string pairs;
    std::wstring message;  ///< its beginning, with line and group code
};

std::wstring readingError(const std::string& bytes, Hx::ErrorStatus expected) {
    HxDbDatabase database(false);
    std::wstring error;
    EXPECT_EQ(readDrawing(database, bytes, error), expected);
    EXPECT_TRUE(database.layerTableId().isNull());
    EXPECT_TRUE(database.namedObjectsDictionaryId().isNull());
    EXPECT_TRUE(database.imp()->layout.empty());
    return error;
}

}  // namespace

TEST(Damage, TellsLineAndCode) {
    const Damage damages[] = {
        {"table in a table",
         "0 SECTION | 2 TABLES | 0 TABLE | 2 LAYER | 0 TABLE | 2 STYLE | 0 ENDTAB | 0 ENDSEC | 0 EOF",
         L"line 9, group 0: a TABLE begins inside the TABLE of line 5"},
        {"table without end", "0 SECTION | 2 TABLES | 0 TABLE | 2 LAYER | 0 ENDSEC | 0 EOF",
         L"line 9, group 0: the section ends inside the TABLE of line 5"},
        {"unknown table without end", "0 SECTION | 2 TABLES | 0 TABLE | 2 VX | 0 ENDSEC | 0 EOF",
         L"line 9, group 0: the section ends inside the TABLE of line 5"},
        {"table without name", "0 SECTION | 2 TABLES | 0 TABLE | 70 1 | 0 ENDTAB | 0 ENDSEC | 0 EOF",
         L"line 5, group 0: the TABLE has no name"},
        {"record outside of tables", "0 SECTION | 2 TABLES | 0 LAYER | 2 A | 0 ENDSEC | 0 EOF",
         L"line 5, group 0: the section TABLES holds a record that is in no TABLE"},
        {"end outside of tables", "0 SECTION | 2 TABLES | 0 ENDTAB | 0 ENDSEC | 0 EOF", L"line 5, group 0:"},
        {"record of another table",
         "0 SECTION | 2 TABLES | 0 TABLE | 2 LAYER | 0 STYLE | 2 A | 0 ENDTAB | 0 ENDSEC | 0 EOF",
         L"line 9, group 0: a record of another type stands in the TABLE of line 5"},
        {"block in a block",
         "0 SECTION | 2 BLOCKS | 0 BLOCK | 2 A | 0 BLOCK | 2 B | 0 ENDBLK | 0 ENDSEC | 0 EOF",
         L"line 9, group 0: a BLOCK begins inside the BLOCK of line 5"},
        {"block without end", "0 SECTION | 2 BLOCKS | 0 BLOCK | 2 A | 0 LINE | 8 0 | 0 ENDSEC | 0 EOF",
         L"line 13, group 0: the section ends inside the BLOCK of line 5"},
        {"entity outside of blocks", "0 SECTION | 2 BLOCKS | 0 LINE | 8 0 | 0 ENDSEC | 0 EOF",
         L"line 5, group 0: the section BLOCKS holds a record that is in no BLOCK"},
        {"object in a block",
         "0 SECTION | 2 BLOCKS | 0 BLOCK | 2 A | 0 DICTIONARY | 0 ENDBLK | 0 ENDSEC | 0 EOF",
         L"line 9, group 0: a record that is no entity stands in a BLOCK"},
        {"layer among entities", "0 SECTION | 2 ENTITIES | 0 LINE | 8 0 | 0 LAYER | 2 A | 0 ENDSEC | 0 EOF",
         L"line 9, group 0: a record that is no entity stands in the section ENTITIES"},
        {"entity among objects", "0 SECTION | 2 OBJECTS | 0 LINE | 8 0 | 0 ENDSEC | 0 EOF",
         L"line 5, group 0: a record that is no object stands in the section OBJECTS"},
        {"record in the header", "0 SECTION | 2 HEADER | 9 $CLAYER | 8 0 | 0 LINE | 8 0 | 0 ENDSEC | 0 EOF",
         L"line 9, group 0: the section HEADER holds a record"},
        {"entity among classes", "0 SECTION | 2 CLASSES | 0 LINE | 8 0 | 0 ENDSEC | 0 EOF",
         L"line 5, group 0: the section CLASSES holds"},
        {"header value without name", "0 SECTION | 2 HEADER | 9 $CLAYER | 8 0 | 9 | 70 1 | 0 ENDSEC | 0 EOF",
         L"line 9, group 9: a header variable has no name"},
        {"no number", "0 SECTION | 2 ENTITIES | 0 LINE | 8 0 | 62 red | 0 ENDSEC | 0 EOF",
         L"line 10, group 62:"},
        {"section without end", "0 SECTION | 2 ENTITIES | 0 LINE | 8 0 | 0 EOF", L"line 9, group 0:"},
        {"no end", "0 SECTION | 2 ENTITIES | 0 ENDSEC", L"line 6:"},
    };
    for (const Damage& damage : damages) {
        SCOPED_TRACE(damage.name);
        const std::wstring error = readingError(drawing(damage.pairs), Hx::eBadDxfSequence);
        EXPECT_EQ(error.rfind(damage.message, 0), 0U) << toUtf8(error);
        EXPECT_NE(error.find(L"backup"), error.npos) << "the remedy";
    }
}

TEST(Damage, BinaryFilesTellTheByte) {
    const std::string bytes = binary(drawing("0 SECTION | 2 TABLES | 0 LAYER | 2 A | 0 ENDSEC | 0 EOF"), 2);
    const std::wstring error = readingError(bytes, Hx::eBadDxfSequence);
    EXPECT_EQ(error.rfind(L"byte offset 0x29, group 0: the section TABLES", 0), 0U) << toUtf8(error);
}

TEST(Damage, WhatIsNoDrawingIsSaidSo) {
    EXPECT_FALSE(readingError("", Hx::eFilerError).empty());
    EXPECT_FALSE(readingError("\x89PNG\r\n\x1A\n....", Hx::eFilerError).empty());
}

TEST(Damage, CutOffAnywhereIsRefused) {
    for (const std::string& whole : {sheetDrawing(), binary(oldDrawing(), 1)}) {
        const std::size_t last = whole.rfind("EOF");
        for (std::size_t size = 0; size < last + 3; ++size) {
            HxDbDatabase database(false);
            std::wstring error;
            ASSERT_NE(readDrawing(database, whole.substr(0, size), error), Hx::eOk) << "cut at " << size;
            ASSERT_FALSE(error.empty());
        }
    }
}

TEST(Damage, FilesThatCannotBeReadAreNamed) {
    const QTemporaryDir folder;
    struct Case {
        std::wstring path;
        Hx::ErrorStatus status;
    };
    for (const Case& file : {Case{toWide(folder.filePath("none.dxf")), Hx::eFileNotFound},
                             Case{toWide(folder.path()), Hx::eFileAccessErr},
                             Case{L"/dev/null", Hx::eFileAccessErr}, Case{L"", Hx::eInvalidInput}}) {
        HxDbDatabase database(false);
        EXPECT_EQ(database.readDwgFile(file.path.c_str()), file.status) << toUtf8(file.path);
        EXPECT_NE(std::wstring(database.readError()).find(file.path), std::wstring::npos);
        EXPECT_STREQ(database.getFilename(), L"");
    }
}

TEST(Damage, DatabasesAreFilledOnce) {
    const QTemporaryDir folder;
    const std::string path = folder.filePath("plan.dwt").toStdString();
    putFile(path, sheetDrawing());
    HxDbDatabase database(false);
    ASSERT_EQ(database.readDwgFile(fromUtf8(path).c_str()), Hx::eOk) << "names of files tell nothing";
    EXPECT_EQ(database.readDwgFile(fromUtf8(path).c_str()), Hx::eInvalidContext);
    EXPECT_FALSE(database.layerZero().isNull());
}

TEST(Damage, WhatFollowsEofStaysInTheFile) {
    const std::string bytes = sheetDrawing() + "more\nand more\n";
    const auto database = opened(bytes);
    EXPECT_EQ(writeDrawing(*database), bytes);
}

}  // namespace korvex::test
