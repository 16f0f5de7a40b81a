// Layer, colour, linetype and the like in the spellings of other programs: loading, objects, lists and saving
// see the same, and a change leaves one group of each.
#include "tests/db/kernel/kernel_support.h"

namespace korvex::test {
namespace {

std::string withEntities(const std::string& entities) {
    return inVersion(
        "AC1018",
        "0 SECTION | 2 TABLES | 0 TABLE | 2 LAYER | 5 2 | 330 0 | 100 AcDbSymbolTable | 70 3\n"
        "0 LAYER | 5 10 | 100 AcDbSymbolTableRecord | 100 AcDbLayerTableRecord | 2 0 | 70 0 | 62 7\n"
        "0 LAYER | 5 11 | 100 AcDbSymbolTableRecord | 100 AcDbLayerTableRecord | 2 A | 70 0 | 62 7\n"
        "0 LAYER | 5 12 | 100 AcDbSymbolTableRecord | 100 AcDbLayerTableRecord | 2 B | 70 0 | 62 7\n"
        "0 ENDTAB | 0 ENDSEC | 0 SECTION | 2 ENTITIES\n" +
            entities + "\n0 ENDSEC");
}

/// A drawing of one entity with the handle 40.
class SharedGroups : public testing::Test {
protected:
    void read(const std::string& entity) { database = opened(withEntities("0 " + entity)); }
    HxDbObjectId id() const { return HxDbObjectId(byHandle(*database, 0x40)); }
    HxDbObjectPointer<HxDbEntity> entity(HxDb::OpenMode mode = HxDb::kForRead) const {
        return HxDbObjectPointer<HxDbEntity>(id(), mode);
    }
    /// The layer as the object spells it, and the one that drawing and picking go by.
    std::string layers() const {
        return toUtf8(std::wstring(entity()->layer())) + " " + toUtf8(recordName(*layerOf(*id().stub())));
    }
    HxDbObjectId layer(const wchar_t* name) const { return recordId(*database, TableKind::layer, name); }
    /// The entity's groups in the saved drawing.
    std::string saved() const {
        const std::string text = between(writeDrawing(*database), "ENTITIES\n", "ENDSEC");
        std::string pairs;
        bool isCode = true;
        for (const char c : text.substr(text.find('\n') + 1)) {
            pairs += c != '\n' ? std::string(1, c) : isCode ? " " : " | ";
            isCode = c == '\n' ? !isCode : isCode;
        }
        return pairs;
    }

    std::unique_ptr<HxDbDatabase> database;
};

}  // namespace

TEST_F(SharedGroups, TheLayerCountsWhereverItStandsAndOnlyThere) {
    const std::pair<const char*, const char*> cases[] = {
        {"LINE | 5 40 | 100 AcDbEntity | 100 AcDbLine | 8 A | 10 0 | 20 0 | 11 1 | 21 0", "A A"},
        {"LINE | 5 40 | 100 AcDbEntity | 100 AcDbLine | 10 0 | 20 0 | 11 1 | 21 0 | 8 A | 1001 X | 8 B",
         "A A"},
        {"LINE | 5 40 | 8 A | 100 AcDbEntity | 8 B | 100 AcDbLine | 8 B | 10 0 | 20 0 | 11 1 | 21 0", "A A"},
        {"LINE | 5 40 | 102 {X | 8 B | 102 } | 100 AcDbEntity | 102 {Y | 8 B | 102 } | 8 A | 100 AcDbLine",
         "A A"},
        {"LWPOLYLINE | 5 40 | 100 AcDbEntity | 100 AcDbPolyline | 90 1 | 10 0 | 20 0 | 8 A", "A A"},
        {"STRANGE | 5 40 | 100 AcDbEntity | 100 Strange | 1 text | 8 A", "A A"},
        {"STRANGE | 5 40 | 100  AcDbEntity  | 8 A | 100 Strange | 8 B", "A A"},
        {"LINE | 5 40 | 100 AcDbEntity | 100 AcDbLine | 10 0 | 20 0 | 1001 X | 1003 B", " 0"},
        {"TEXT | 5 40 | 100 AcDbEntity | 100 AcDbText | 1 t | 101 Embedded Object | 8 B", " 0"},
    };
    for (const auto& [text, expected] : cases) {
        read(text);
        EXPECT_EQ(layers(), expected) << text;
    }
    read("LINE | 5 40 | 100 AcDbEntity | 100 AcDbLine | 10 0 | 20 0 | 11 1 | 21 0 | 6 DOTS | 8 NEW");
    EXPECT_FALSE(layer(L"NEW").isNull()) << "the loader sees it too";
    EXPECT_EQ(entity()->linetypeId(), recordId(*database, TableKind::linetype, L"DOTS"));
}

TEST_F(SharedGroups, BehindTheMarkerOfAClassItsOwnGroupsAreNotMistaken) {
    read("LINE | 5 40 | 100 AcDbEntity | 8 A | 100 AcDbLine | 10 0 | 20 0 | 62 3 | 370 50 | 60 1 | 67 1");
    EXPECT_EQ(entity()->color().colorIndex(), 3);
    EXPECT_EQ(entity()->lineWeight(), 50);
    EXPECT_FALSE(entity()->isVisible());
    EXPECT_EQ(entity()->blockId(), database->paperSpaceId());
    const char* const others[] = {
        "ACAD_TABLE | 5 40 | 100 AcDbEntity | 8 A | 100 AcDbBlockReference | 2 T | 100 AcDbTable | 62 3 | 60 "
        "1",
        "MTEXT | 5 40 | 100 AcDbEntity | 8 A | 100 AcDbMText | 1 t | 420 255 | 90 1",
        "LWPOLYLINE | 5 40 | 100 AcDbEntity | 8 A | 100 AcDbPolyline | 90 1 | 10 0 | 20 0 | 62 3",
        "STRANGE | 5 40 | 100 AcDbEntity | 8 A | 100 Strange | 62 3 | 60 1 | 6 DOTS",
    };
    for (const char* const text : others) {
        read(text);
        EXPECT_TRUE(entity()->color().isByLayer()) << text;
        EXPECT_TRUE(entity()->isVisible()) << text;
        EXPECT_TRUE(entity()->linetypeId().isNull()) << text;
    }
}

TEST_F(SharedGroups, ChangesTakeTheGroupsPlace) {
    const auto change = [this](const char* text) {
        read(text);
        const auto object = entity(HxDb::kForWrite);
        ASSERT_EQ(object->setLayer(layer(L"B")), Hx::eOk);
        ASSERT_EQ(object->setColor(HxCmColor::byIndex(5)), Hx::eOk);
    };
    change("LINE | 5 40 | 100 AcDbEntity | 100 AcDbLine | 8 A | 10 0 | 420 255 | 20 0 | 62 3");
    EXPECT_EQ(saved(), "0 LINE | 5 40 | 100 AcDbEntity | 100 AcDbLine | 8 B | 10 0 | 20 0 | 62 5 | 0 ");
    change("LINE | 5 40 | 8 A | 100 AcDbEntity | 6 ByLayer | 100 AcDbLine | 10 0 | 20 0");
    EXPECT_EQ(saved(),
              "0 LINE | 5 40 | 8 B | 100 AcDbEntity | 6 ByLayer | 62 5 | 100 AcDbLine | 10 0 | 20 0 | 0 ");
    change("STRANGE | 5 40 | 100 Strange | 8 A | 62 9 | 1 x");
    EXPECT_EQ(saved(), "0 STRANGE | 5 40 | 100 AcDbEntity | 62 5 | 100 Strange | 8 B | 62 9 | 1 x | 0 ");
    EXPECT_EQ(entity()->color().colorIndex(), 5);
    change("LINE | 5 40 | 100 AcDbEntity | 102 {X | 8 A | 62 1 | 102 } | 8 A | 100 AcDbLine | 10 0 | 20 0");
    EXPECT_EQ(saved(),
              "0 LINE | 5 40 | 100 AcDbEntity | 102 {X | 8 A | 62 1 | 102 } | 8 B | 62 5 | 100 AcDbLine "
              "| 10 0 | 20 0 | 0 ");
}

TEST_F(SharedGroups, ListsAndRenamesChangeTheGroupThatCounts) {
    read("LINE | 5 40 | 100 AcDbEntity | 102 {X | 8 A | 102 } | 100 AcDbLine | 8 A | 10 0 | 20 0 | 11 1 | 21 "
         "0");
    {
        HxDbObjectPointer<HxDbLayerTableRecord> record(layer(L"A"), HxDb::kForWrite);
        ASSERT_EQ(record->setName(L"C"), Hx::eOk);
    }
    EXPECT_EQ(layers(), "C C");
    EXPECT_NE(saved().find("102 {X | 8 A | 102 } | 100 AcDbLine | 8 C | 10"), std::string::npos) << saved();
    hxdbSetWorkingDatabase(database.get());
    zds_name name;
    ASSERT_EQ(hxdbGetZdsName(name, id()), Hx::eOk);
    const Chain list(hxutBuildList(-1, name, 8, L"B", RTNONE));
    EXPECT_EQ(hxdbEntMod(list.get()), RTNORM);
    hxdbSetWorkingDatabase(nullptr);
    EXPECT_NE(saved().find("102 } | 100 AcDbLine | 8 B | 10"), std::string::npos) << saved();
}

}  // namespace korvex::test
