// What is read and not changed is written as the same bytes; and what is read is understood.
#include "tests/io/drawing_support.h"

namespace korvex::test {

namespace {

struct Form {
    const char* name;
    std::string bytes;
};

std::vector<Form> forms() {
    const std::string sheet = sheetDrawing();
    std::string crlf;
    for (char c : sheet) {
        crlf += c == '\n' ? "\r\n" : std::string(1, c);
    }
    return {
        {"text", sheet},
        {"text with CR LF", crlf},
        {"binary", binary(sheet, 2)},
        {"R12 without handles", oldDrawing()},
        {"binary R12", binary(oldDrawing(), 1)},
        {"no last line end", sheet.substr(0, sheet.size() - 1)},
        {"blank lines at the end", sheet + "\n \n\x1A"},
        {"byte order mark", "\xEF\xBB\xBF" + oldDrawing()},
        {"no sections", drawing("0 EOF")},
        {"entities only", drawing("0 SECTION | 2 ENTITIES | 0 POINT | 8 A | 10 1 | 20 2 | 0 ENDSEC | 0 EOF")},
        {"sections twice and in another order",
         drawing(
             "0 SECTION | 2 ENTITIES | 0 POINT | 8 A | 0 ENDSEC | 0 SECTION | 2 TABLES | 0 TABLE | 2 LAYER | "
             "70 1"
             "\n 0 LAYER | 2 A | 0 ENDTAB | 0 TABLE | 2 LAYER | 70 9 | 0 LAYER | 2 B | 0 ENDTAB | 0 ENDSEC"
             "\n 0 SECTION | 2 HEADER | 9 $ACADVER | 1 AC1015 | 0 ENDSEC | 0 SECTION | 2 ENTITIES | 0 ENDSEC"
             "\n 0 SECTION | 2 HEADER | 9 $CLAYER | 8 A | 0 ENDSEC | 0 EOF")},
        {"handles taken twice, too large, of no object",
         inVersion(
             "AC1015",
             "0 SECTION | 2 ENTITIES | 0 POINT | 5 A | 330 FF | 0 POINT | 5 A | 0 POINT | 5 FFFFFFFFFFFFFFFF"
             "\n 0 POINT | 5 0 | 0 POINT | 5 nonsense | 0 ENDSEC")},
        {"blocks of one name and of none",
         inVersion("AC1009",
                   "0 SECTION | 2 BLOCKS | 0 BLOCK | 2 A | 0 ENDBLK | 0 BLOCK | 2 A | 0 POINT | 0 ENDBLK"
                   "\n 0 BLOCK | 0 ENDBLK | 0 BLOCK | 2 $MODEL_SPACE | 0 ENDBLK | 0 ENDSEC")},
        {"sub-entities without a main one",
         inVersion("AC1009", "0 SECTION | 2 ENTITIES | 0 VERTEX | 8 0 | 0 SEQEND | 0 INSERT | 2 A | 0 VERTEX "
                             "| 0 ATTRIB | 0 ENDSEC")},
    };
}

std::size_t count(const HxDbStub* container) { return container ? members(*container).size() : 0; }

}  // namespace

TEST(RoundTrip, EveryFormIsWrittenAsItWasRead) {
    for (const Form& form : forms()) {
        SCOPED_TRACE(form.name);
        const auto database = opened(form.bytes);
        EXPECT_TRUE(written(*database) == form.bytes);
        EXPECT_FALSE(database->isModified());
    }
}

TEST(RoundTrip, LookingAtEverythingChangesNothing) {
    for (const Form& form : forms()) {
        SCOPED_TRACE(form.name);
        const auto database = opened(form.bytes);
        for (HxDbStub& stub : database->imp()->stubs) {
            HxDbObject* object = nullptr;
            ASSERT_EQ(hxdbOpenObject(object, HxDbObjectId(&stub), HxDb::kForRead), Hx::eOk);
            object->close();
        }
        EXPECT_TRUE(written(*database) == form.bytes);
    }
}

TEST(Reading, EntitiesLieInTheirSpacesAndBlocks) {
    const auto database = opened(sheetDrawing());
    EXPECT_EQ(count(modelSpace(*database)), 7U);
    EXPECT_EQ(count(paperSpace(*database)), 1U);
    EXPECT_EQ(count(findRecord(*database, TableKind::block, L"*Paper_Space0")), 1U);
    HxDbStub* door = findRecord(*database, TableKind::block, L"DOOR");
    ASSERT_EQ(count(door), 1U) << "matched by its name, since its BLOCK names no owner";
    EXPECT_EQ(blockBegin(*door), byHandle(*database, 0x37));

    const HxDbStub* vertex = byHandle(*database, 0x42);
    EXPECT_TRUE(vertex->subEntity);
    EXPECT_EQ(vertex->owner, byHandle(*database, 0x41));
    const HxDbStub* attribute = byHandle(*database, 0x45);
    EXPECT_EQ(attribute->owner, byHandle(*database, 0x44));
    const HxDbStub* insert = byHandle(*database, 0x44);
    EXPECT_EQ(insert->owner, modelSpace(*database)) << "and not the layout that reacts to it";
    EXPECT_EQ(database->imp()->namedObjects, byHandle(*database, 0xC));
}

TEST(Reading, SpaceOfAnEntityWhoseOwnerIsWrong) {
    const std::string tables = R"(0 SECTION | 2 TABLES | 0 TABLE | 2 BLOCK_RECORD | 5 1 | 70 2
        0 BLOCK_RECORD | 5 20 | 330 1 | 100 AcDbSymbolTableRecord | 100 AcDbBlockTableRecord | 2 *Model_Space
        0 BLOCK_RECORD | 5 21 | 330 1 | 100 AcDbSymbolTableRecord | 100 AcDbBlockTableRecord | 2 *Paper_Space
        0 ENDTAB | 0 ENDSEC | 0 SECTION | 2 ENTITIES
        )";
    const std::string entities = R"(0 POINT | 5 40 | 330 20 | 100 AcDbEntity | 67 1 | 8 0
        0 POINT | 5 41 | 330 FF | 100 AcDbEntity | 67 1 | 8 0
        0 POINT | 5 42 | 330 21 | 100 AcDbEntity | 8 0
        0 POINT | 5 43 | 100 AcDbEntity | 100 AcDbPoint | 67 1 | 8 0 | 10 0.0
        0 POINT | 5 44 | 330 40 | 100 AcDbEntity | 8 0 | 0 ENDSEC)";
    const auto database = opened(inVersion("AC1015", tables + entities));
    EXPECT_EQ(count(paperSpace(*database)), 4U);
    EXPECT_EQ(count(modelSpace(*database)), 1U);
}

TEST(Reading, ModelSpaceWithoutItsNameAndOwnersThatAreNoSpace) {
    const std::string text =
        inVersion("AC1015", R"(0 SECTION | 2 TABLES | 0 TABLE | 2 BLOCK_RECORD | 5 1 | 70 3
        0 BLOCK_RECORD | 5 20 | 330 1 | 100 AcDbSymbolTableRecord | 100 AcDbBlockTableRecord | 2 *U
        0 BLOCK_RECORD | 5 21 | 330 1 | 100 AcDbSymbolTableRecord | 100 AcDbBlockTableRecord | 2 *Paper_Space
        0 BLOCK_RECORD | 5 22 | 330 1 | 100 AcDbSymbolTableRecord | 100 AcDbBlockTableRecord | 2 DOOR
        0 ENDTAB | 0 ENDSEC | 0 SECTION | 2 BLOCKS
        0 BLOCK | 5 30 | 330 20 | 100 AcDbEntity | 8 0 | 100 AcDbBlockBegin | 2 *U | 0 ENDBLK | 5 31 | 330 20
        0 BLOCK | 5 32 | 330 22 | 100 AcDbEntity | 8 0 | 100 AcDbBlockBegin | 2 DOOR
        0 POINT | 5 33 | 330 22 | 100 AcDbEntity | 8 0 | 0 ENDBLK | 5 34 | 330 22
        0 ENDSEC | 0 SECTION | 2 ENTITIES
        0 POINT | 5 40 | 330 22 | 100 AcDbEntity | 8 0
        0 POINT | 5 41 | 330 20 | 100 AcDbEntity | 8 0 | 0 ENDSEC)");
    const auto database = opened(text);
    ASSERT_EQ(modelSpace(*database), byHandle(*database, 0x20));
    EXPECT_EQ(count(modelSpace(*database)), 2U);
    EXPECT_EQ(writeDrawing(*database), text);
    {
        HxDbObjectPointer<HxDbBlockTableRecord> model(database->modelSpaceId(), HxDb::kForWrite);
        HxDbObjectId added;
        auto* const point = new HxDbEntity(L"POINT");
        ASSERT_EQ(model->appendHxDbEntity(added, point), Hx::eOk);
        point->close();
    }
    const std::string saved = writeDrawing(*database);
    EXPECT_EQ(saved.find("*Model_Space"), std::string::npos);
    EXPECT_EQ(count(modelSpace(*opened(saved))), 3U);
    const std::string last = saved.substr(saved.rfind("POINT"));
    EXPECT_NE(last.find("\n330\n20\n"), std::string::npos) << "a new one has an owner that the file knows";
}

TEST(Reading, OldDrawingsGetWhatTheyLack) {
    const auto database = opened(oldDrawing());
    EXPECT_EQ(count(modelSpace(*database)), 4U);
    EXPECT_EQ(count(paperSpace(*database)), 1U);
    EXPECT_EQ(count(findRecord(*database, TableKind::block, L"DOOR")), 1U);
    struct Name {
        TableKind table;
        const wchar_t* name;
    };
    for (const Name& name : {Name{TableKind::layer, L"0"}, Name{TableKind::layer, L"GLASS"},
                             Name{TableKind::layer, L"FRAME"}, Name{TableKind::linetype, L"DASHED"},
                             Name{TableKind::linetype, L"ByLayer"}, Name{TableKind::style, L"TITLES"}}) {
        HxDbStub* record = findRecord(*database, name.table, name.name);
        ASSERT_TRUE(record) << toUtf8(name.name);
        EXPECT_TRUE(record->implicit);
        EXPECT_NE(record->handle, 0U);
    }
    EXPECT_EQ(members(*database->imp()->table(TableKind::layer)).size(), 4U) << "\"walls\" is WALLS";
    EXPECT_TRUE(database->namedObjectsDictionaryId().isNull());
    EXPECT_FALSE(database->imp()->writesHandles);
}

TEST(Reading, FormAndVersionComeFromTheFile) {
    const auto sheet = opened(sheetDrawing());
    EXPECT_STREQ(sheet->version(), L"AC1015");
    EXPECT_TRUE(findRecord(*sheet, TableKind::layer, L"t\u00FCr")) << "the code page is read";
    EXPECT_GE(sheet->imp()->handles.seed(), 0x100U);
    EXPECT_TRUE(sheet->tilemode());
    const auto bare = opened(drawing("0 EOF"));
    EXPECT_STREQ(bare->version(), L"AC1009");
    EXPECT_FALSE(bare->layerZero().isNull());
}

TEST(Reading, SecondPartOfATableBelongsToIt) {
    const auto database =
        opened(drawing("0 SECTION | 2 TABLES | 0 TABLE | 2 LAYER | 70 1 | 0 LAYER | 2 A | 0 ENDTAB"
                       "\n 0 TABLE | 2 LAYER | 70 1 | 0 LAYER | 2 B | 0 ENDTAB | 0 ENDSEC | 0 EOF"));
    EXPECT_TRUE(findRecord(*database, TableKind::layer, L"A"));
    EXPECT_TRUE(findRecord(*database, TableKind::layer, L"B"));
}

}  // namespace korvex::test
