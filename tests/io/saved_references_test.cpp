// What a saved record names by handle is in the file, and means the same object when the file is opened.
#include "sdk/hxdbdict.h"
#include "tests/io/incomplete_drawings.h"

namespace korvex::test {

namespace {

/// Names of the layers frozen in the first viewport.
std::vector<std::string> frozen(const HxDbDatabase& database) {
    std::vector<std::string> names;
    for (HxDbStub* layer : layersFrozenIn(*firstViewport(database))) {
        names.push_back(toUtf8(recordName(*layer)));
    }
    return names;
}

/// The seed of the file is above every handle in it.
void expectSeedAbove(const std::string& text, std::uint64_t handle) {
    const auto again = opened(text);
    const std::string seed = between(text, "$HANDSEED\n5\n", "\n0\n").substr(12);
    EXPECT_GT(std::stoull(seed, nullptr, 16), handle);
    EXPECT_TRUE(byHandle(*again, handle));
}

using Names = std::vector<std::string>;

}  // namespace

TEST(SavedReferences, AFrozenLayerThatIsOnlyImpliedBecomesARecord) {
    const std::string before =
        incompletePlan(std::string(kModel) + kPaper, std::string("0 VIEWPORT | 5 50") + kViewport);
    for (const bool inBinary : {false, true}) {
        const std::string bytes = inBinary ? binary(before, 2) : before;
        const auto database = opened(bytes);
        journal(*database).beginGroup(L"FREEZE");
        freezeInViewport(*database, L"GHOST");
        journal(*database).endGroup();
        const std::string after = written(*database);
        EXPECT_TRUE(written(*database) == after) << "and the same the next time";
        const auto again = opened(after);
        EXPECT_EQ(frozen(*again), Names{"GHOST"});
        EXPECT_FALSE(findRecord(*again, TableKind::layer, L"GHOST")->implicit);
        EXPECT_TRUE(findRecord(*again, TableKind::layer, L"SHADE")->implicit) << "nothing names its handle";
        if (!inBinary) {
            expectSeedAbove(after, findRecord(*database, TableKind::layer, L"GHOST")->handle);
            EXPECT_NE(after.find("2\nLAYER\n5\n2\n330\n0\n100\nAcDbSymbolTable\n70\n3\n"), after.npos);
        }
        ASSERT_EQ(journal(*database).undo(), Hx::eOk);
        EXPECT_TRUE(written(*database) == bytes);
        ASSERT_EQ(journal(*database).redo(), Hx::eOk);
        EXPECT_TRUE(written(*database) == after);
    }
}

TEST(SavedReferences, TheOwnerOfANewEntityIsInTheFile) {
    // Without the record of model space, and without those of both and their table.
    const std::string tables = incompletePlan("", "");
    const std::string noTable = tables.substr(0, tables.find("0\nTABLE\n2\nBLOCK_RECORD\n")) +
                                tables.substr(tables.find("0\nENDSEC\n0\nSECTION\n2\nENTITIES\n"));
    for (const std::string& before : {incompletePlan(kPaper, ""), noTable}) {
        const auto database = opened(before);
        journal(*database).beginGroup(L"DRAW");
        const HxDbStub* point = addPoint(modelSpace(*database));
        journal(*database).endGroup();
        const std::string after = written(*database);
        const auto again = opened(after);
        const HxDbStub* space = modelSpace(*again);
        EXPECT_TRUE(space->inFile && space->contents->blockBegin && space->contents->blockEnd);
        EXPECT_EQ(space->handle, point->owner->handle);
        EXPECT_EQ(members(*space).size(), 3U);
        EXPECT_EQ(ownerOf(*byHandle(*again, point->handle)), space);
        expectSeedAbove(after, point->owner->handle);
        ASSERT_EQ(journal(*database).undo(), Hx::eOk);
        EXPECT_TRUE(written(*database) == before);
    }
}

TEST(SavedReferences, ObjectsWithoutAHandleOfTheirOwnAreWrittenWithOne) {
    const auto database =
        opened(incompletePlan(std::string(kModel) + kPaper,
                              std::string("0 VIEWPORT | 5 10") + kViewport,  // as the layer's
                              "330 2"));
    const HxDbObjectId viewport(firstViewport(*database));
    freezeInViewport(*database, L"WALLS");
    for (const wchar_t* layer : {L"0", L"WALLS"}) {
        overrideColor(recordId(*database, TableKind::layer, layer), viewport);
    }
    const std::string after = written(*database);
    const auto again = opened(after);
    EXPECT_EQ(frozen(*again), Names{"WALLS"});
    EXPECT_EQ(firstViewport(*again)->handle, viewport.handle().value());
    for (const wchar_t* name : {L"0", L"WALLS"}) {
        const auto* layer =
            HxDbLayerTableRecord::cast(hxdbObjectPointer(recordId(*again, TableKind::layer, name)));
        bool isOverride = false;
        EXPECT_EQ(layer->color(HxDbObjectId(firstViewport(*again)), isOverride).colorIndex(), 3);
        EXPECT_TRUE(isOverride) << toUtf8(name);
    }
    EXPECT_EQ(recordId(*again, TableKind::layer, L"0").handle().value(), 0x10U)
        << "who had it first keeps it";
    const std::size_t at = after.find("2\nWALLS\n");
    EXPECT_NE(after.rfind("0\nLAYER\n5\n", at), after.npos);
}

TEST(SavedReferences, ATableGetsTheHandleThatItsNewRecordsName) {
    const auto database = opened(inVersion(
        "AC1015", "0 SECTION | 2 TABLES | 0 TABLE | 2 LAYER | 70 0 | 0 ENDTAB | 0 ENDSEC | 0 SECTION "
                  "| 2 ENTITIES | 0 POINT | 5 40 | 8 GHOST | 0 ENDSEC"));
    freeze(*database, L"GHOST");
    const std::string after = written(*database);
    const auto again = opened(after);
    const HxDbStub* table = again->imp()->table(TableKind::layer);
    EXPECT_EQ(table->handle, database->imp()->table(TableKind::layer)->handle);
    EXPECT_EQ(after.find("0\nTABLE\n2\nLAYER\n5\n"), after.find("0\nTABLE\n2\nLAYER\n")) << after;
    EXPECT_EQ(ownerOf(*members(*table).front()), table);
}

TEST(SavedReferences, HandlesThatAnythingNamesAreNotGivenOut) {
    // In a viewport, in a table that the host does not know, in extended data, in the header.
    std::string before = incompletePlan(std::string(kModel) + kPaper,
                                        std::string("0 VIEWPORT | 5 50") + kViewport +
                                            "331 100 | 1001 ACAD | 1005 101 | 1005 FFFFFFFFFFFFFFFF\n");
    before.insert(before.find("0\nTABLE\n"),
                  drawing("0 TABLE | 2 VX | 5 102 | 70 0 | 0 VX | 5 103 | 0 ENDTAB"));
    before.insert(before.find("9\n$HANDSEED"), drawing("9 $CMATERIAL | 347 104"));
    for (const std::string& bytes : {before, binary(before, 2)}) {
        const auto database = opened(bytes);
        for (const HxDbStub& stub : database->imp()->stubs) {
            EXPECT_TRUE(stub.handle < 0x100 || stub.handle > 0x104) << stub.handle;
        }
        EXPECT_TRUE(written(*database) == bytes);
        EXPECT_GT(addPoint(modelSpace(*database))->handle, 0x104U);
        EXPECT_TRUE(frozen(*opened(written(*database))).empty());
    }
}

TEST(SavedReferences, ASeedThatLeavesNoHandlesDoesNotCount) {
    std::string before = incompletePlan(std::string(kModel) + kPaper, "");
    before.replace(before.find("$HANDSEED\n5\n100"), 15, "$HANDSEED\n5\nFFFFFFFFFFFFFFFF");
    const auto database = opened(before);
    const std::uint64_t handle = addPoint(modelSpace(*database))->handle;
    EXPECT_TRUE(byHandle(*opened(written(*database)), handle));
}

TEST(SavedReferences, OnlyWhatAnErasedObjectOwnsGoesWithIt) {
    std::string before = sheetDrawing();
    // Table, named objects and a dictionary name the line as their owner; another dictionary is its own.
    before.replace(before.find("2\nLAYER\n5\n2\n330\n0\n"), 18, "2\nLAYER\n5\n2\n330\n40\n");
    before.replace(before.find("0\nDICTIONARY\n5\nC\n330\n0\n"), 24, "0\nDICTIONARY\n5\nC\n330\n40\n");
    before.replace(before.find("0\nDICTIONARY\n5\n1A\n330\nC\n"), 25, "0\nDICTIONARY\n5\n1A\n330\n40\n");
    before.replace(before.find("0\nLINE\n5\n40\n"), 12,
                   "0\nLINE\n5\n40\n102\n{ACAD_XDICTIONARY\n360\n70\n102\n}\n");
    before.insert(before.find("0\nWIDGET\n"),
                  drawing("0 DICTIONARY | 5 70 | 330 40 | 100 AcDbDictionary | 3 NOTE "
                          "| 360 71 | 0 XRECORD | 5 71 | 330 70 | 100 AcDbXrecord"));
    const auto database = opened(before);
    EXPECT_TRUE(written(*database) == before);
    journal(*database).beginGroup(L"ERASE");
    erase(*database, byHandle(*database, 0x40));
    journal(*database).endGroup();
    const auto again = opened(written(*database));
    for (const std::uint64_t kept : {0x2, 0xC, 0x1A, 0x50, 0x60}) {
        EXPECT_TRUE(byHandle(*again, kept)) << kept;
    }
    EXPECT_TRUE(findRecord(*again, TableKind::layer, L"WALLS")->inFile);
    for (const std::uint64_t gone : {0x40, 0x70, 0x71}) {
        EXPECT_FALSE(byHandle(*again, gone)) << gone;
    }
    ASSERT_EQ(journal(*database).undo(), Hx::eOk);
    EXPECT_TRUE(written(*database) == before);
}

TEST(SavedReferences, BlocksKeepTheirHeadsAndEnds) {
    const std::string before = sheetDrawing();
    const auto database = opened(before);
    erase(*database, byHandle(*database, 0x37));
    erase(*database, byHandle(*database, 0x39));
    EXPECT_TRUE(written(*database) == before) << "they go with their record only";
    erase(*database, byHandle(*database, 0x44));
    erase(*database, findRecord(*database, TableKind::block, L"DOOR"));
    const auto again = opened(written(*database));
    EXPECT_FALSE(byHandle(*again, 0x37) || byHandle(*again, 0x39));
}

}  // namespace korvex::test
