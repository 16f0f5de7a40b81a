// What is changed shows in the file, and nothing else does.
#include "sdk/hxdbdict.h"
#include "tests/io/drawing_support.h"

#include <QTemporaryDir>

namespace korvex::test {

namespace {

HxDbStub* addLayer(HxDbDatabase& database, const wchar_t* name) {
    HxDbObjectPointer<HxDbLayerTable> table(database.layerTableId(), HxDb::kForWrite);
    auto* record = new HxDbLayerTableRecord;
    HxDbObjectId id;
    EXPECT_EQ(record->setName(name), Hx::eOk);
    EXPECT_EQ(table->add(id, record), Hx::eOk);
    record->close();
    return id.stub();
}

HxDbStub* addBlock(HxDbDatabase& database, const wchar_t* name) {
    HxDbObjectPointer<HxDbBlockTable> table(database.blockTableId(), HxDb::kForWrite);
    auto* record = new HxDbBlockTableRecord;
    HxDbObjectId id;
    EXPECT_EQ(record->setName(name), Hx::eOk);
    EXPECT_EQ(table->add(id, record), Hx::eOk);
    record->close();
    return id.stub();
}

HxDbStub* addPoint(HxDbStub* block) {
    HxDbObjectPointer<HxDbBlockTableRecord> record(HxDbObjectId(block), HxDb::kForWrite);
    auto* point = new HxDbEntity(L"POINT");
    HxDbObjectId id;
    EXPECT_EQ(record->appendHxDbEntity(id, point), Hx::eOk);
    point->close();
    return id.stub();
}

std::string hex(std::uint64_t handle) {
    wchar_t text[17];
    HxDbHandle(handle).getIntoAsciiBuffer(text);
    return toUtf8(text);
}

std::string sectionOf(const std::string& text, const std::string& name) {
    return between(text, "0\nSECTION\n2\n" + name + "\n", "0\nENDSEC\n");
}

std::string blockOf(const std::string& text, const std::string& handle) {
    return between(text, "0\nBLOCK\n5\n" + handle + "\n", "0\nENDBLK\n");
}

std::size_t occurrences(const std::string& text, const std::string& wanted) {
    std::size_t found = 0;
    for (std::size_t at = text.find(wanted); at != text.npos; at = text.find(wanted, at + 1)) {
        ++found;
    }
    return found;
}

}  // namespace

TEST(EditedDrawing, FreezingALayerChangesOneLine) {
    for (const std::string& before : {sheetDrawing(), oldDrawing()}) {
        const auto database = opened(before);
        freeze(*database, L"WALLS");
        const std::string after = written(*database);
        EXPECT_EQ(changedLines(before, after), std::vector<std::string>{"0 > 1"});
        EXPECT_NE(after.find("WALLS\n70\n1\n"), after.npos);
        EXPECT_TRUE(database->isModified());
    }
}

TEST(EditedDrawing, FreezingALayerInABinaryDrawing) {
    const std::string before = binary(sheetDrawing(), 2);
    const auto database = opened(before);
    freeze(*database, L"WALLS");
    const std::string after = written(*database);
    ASSERT_EQ(after.size(), before.size());
    std::size_t changed = 0;
    for (std::size_t i = 0; i < before.size(); ++i) {
        changed += before[i] != after[i] ? 1 : 0;
    }
    EXPECT_EQ(changed, 1U);
}

TEST(EditedDrawing, ChangedImplicitLayersAreWrittenIntoTheirTable) {
    const auto database = opened(oldDrawing());
    freeze(*database, L"GLASS");
    const std::string after = written(*database);
    const std::string table = between(after, "0\nTABLE\n2\nLAYER\n", "0\nENDTAB\n");
    EXPECT_EQ(table.rfind("0\nTABLE\n2\nLAYER\n70\n2\n", 0), 0U) << table;
    EXPECT_NE(table.find("2\nGLASS\n70\n1\n"), table.npos);
    EXPECT_EQ(table.find("FRAME"), table.npos) << "layers that were not changed stay out";
}

TEST(EditedDrawing, AnUndoneRenameLeavesReferencesAsTheyWereSpelled) {
    const std::string bytes = drawing(
        "0 SECTION | 2 TABLES | 0 TABLE | 2 LAYER | 70 1 | 0 LAYER | 2 GLASS | 70 0 | 62 7 | 6 CONTINUOUS"
        "| 0 ENDTAB | 0 ENDSEC | 0 SECTION | 2 ENTITIES | 0 POINT | 8 glass | 10 1.0 | 20 2.0 | 0 ENDSEC | 0 "
        "EOF");
    const auto database = opened(bytes);
    HxDbObjectPointer<HxDbLayerTableRecord> layer(
        HxDbObjectId(findRecord(*database, TableKind::layer, L"Glass")), HxDb::kForWrite);
    ASSERT_EQ(layer->setName(L"PANES"), Hx::eOk);
    layer.close();
    EXPECT_NE(written(*database).find("0\nPOINT\n8\nPANES\n"), bytes.npos);
    EXPECT_EQ(journal(*database).undo(), Hx::eOk);
    EXPECT_EQ(written(*database), bytes);
}

TEST(EditedDrawing, MissingSectionsAndTablesAreMade) {
    const std::string bare =
        drawing("0 SECTION | 2 ENTITIES | 0 POINT | 8 A | 10 1.0 | 20 2.0 | 0 ENDSEC | 0 EOF");
    const auto database = opened(bare);
    freeze(*database, L"A");
    const std::string after = written(*database);
    EXPECT_EQ(after.find("0\nSECTION\n2\nTABLES\n0\nTABLE\n2\nLAYER\n70\n1\n0\nLAYER\n"), 0U) << after;
    EXPECT_EQ(after.substr(after.size() - bare.size()), bare);
    const auto again = opened(after);
    EXPECT_TRUE(layerVisibility(*findRecord(*again, TableKind::layer, L"a")).frozen);
}

TEST(EditedDrawing, NewAndErasedLayersMoveCountAndSeed) {
    const auto database = opened(sheetDrawing());
    HxDbStub* layer = addLayer(*database, L"NEW");
    EXPECT_GE(layer->handle, 0x100U);
    std::string after = written(*database);
    EXPECT_NE(after.find("9\n$HANDSEED\n5\n" + hex(layer->handle + 1) + "\n"), after.npos);
    std::string table = between(after, "0\nTABLE\n2\nLAYER\n", "0\nENDTAB\n");
    EXPECT_NE(table.find("AcDbSymbolTable\n70\n5\n"), table.npos);
    EXPECT_GT(table.find("0\nLAYER\n5\n" + hex(layer->handle) + "\n"), table.find("0\nLAYER\n5\n17\n"));

    erase(*database, byHandle(*database, 0x17));
    erase(*database, layer);
    after = written(*database);
    table = between(after, "0\nTABLE\n2\nLAYER\n", "0\nENDTAB\n");
    EXPECT_NE(table.find("AcDbSymbolTable\n70\n3\n"), table.npos);
    EXPECT_EQ(occurrences(table, "0\nLAYER\n"), 3U);
    EXPECT_NE(after.find("9\n$HANDSEED\n5\n100\n"), after.npos) << "nothing new is left";
}

TEST(EditedDrawing, ErasedEntitiesTakeTheirSubEntitiesAlong) {
    const auto database = opened(sheetDrawing());
    erase(*database, byHandle(*database, 0x44));
    const std::string after = written(*database);
    for (const char* gone : {"5\n44\n", "5\n45\n", "5\n46\n"}) {
        EXPECT_EQ(after.find(gone), after.npos);
    }
    EXPECT_NE(after.find("0\nSEQEND\n5\n43\n"), after.npos);
}

TEST(EditedDrawing, NewEntitiesFollowThoseOfTheirSpaceOrBlock) {
    const auto database = opened(sheetDrawing());
    const auto point = [&](HxDbStub* block) { return "0\nPOINT\n5\n" + hex(addPoint(block)->handle) + "\n"; };
    const std::string onModel = point(modelSpace(*database));
    const std::string onPaper = point(paperSpace(*database));
    const std::string inDoor = point(findRecord(*database, TableKind::block, L"DOOR"));
    const std::string inLayout = point(findRecord(*database, TableKind::block, L"*Paper_Space0"));
    const std::string after = written(*database);
    const std::string entities = sectionOf(after, "ENTITIES");
    EXPECT_NE(entities.find(onModel), entities.npos);
    EXPECT_GT(entities.find(onModel), entities.find("0\nTEXT\n"));
    EXPECT_EQ(between(entities, onModel, "0\nPOINT\n").find("67\n"), std::string::npos);
    EXPECT_NE(between(entities, onPaper, "0\nENDSEC\n").find("67\n1\n"), std::string::npos);
    EXPECT_NE(blockOf(after, "37").find(inDoor), after.npos);
    EXPECT_NE(blockOf(after, "34").find(inLayout), after.npos);
    EXPECT_TRUE(written(*opened(after)) == after);
}

TEST(EditedDrawing, NewBlocksGetBlockAndEnd) {
    for (const std::string& before : {sheetDrawing(), oldDrawing()}) {
        const auto database = opened(before);
        addPoint(addBlock(*database, L"WINDOW"));
        const std::string after = written(*database);
        EXPECT_TRUE(written(*database) == after) << "and the same the next time";
        const auto again = opened(after);
        HxDbStub* window = findRecord(*again, TableKind::block, L"WINDOW");
        ASSERT_TRUE(window);
        EXPECT_EQ(members(*window).size(), 1U);
        EXPECT_TRUE(blockBegin(*window));
        EXPECT_EQ(after.find("BLOCK_RECORD") == after.npos, before == oldDrawing());
    }
}

TEST(EditedDrawing, ErasedBlocksGoAsAWhole) {
    const auto database = opened(sheetDrawing());
    erase(*database, byHandle(*database, 0x44));
    erase(*database, findRecord(*database, TableKind::block, L"DOOR"));
    const std::string after = written(*database);
    EXPECT_EQ(occurrences(after, "0\nBLOCK\n"), 3U);
    EXPECT_EQ(occurrences(after, "0\nENDBLK\n"), 3U);
    EXPECT_EQ(after.find("CIRCLE"), after.npos);
}

TEST(EditedDrawing, RenamedBlocksAndLayersAreRenamedEverywhere) {
    const auto database = opened(sheetDrawing());
    for (const auto& [table, from, to] :
         {std::tuple{TableKind::block, L"DOOR", L"GATE"}, std::tuple{TableKind::layer, L"WALLS", L"MUR"}}) {
        HxDbObjectPointer<HxDbSymbolTableRecord> record(recordId(*database, table, from), HxDb::kForWrite);
        ASSERT_EQ(record->setName(to), Hx::eOk);
    }
    const std::string after = written(*database);
    EXPECT_EQ(after.find("DOOR"), after.npos);
    EXPECT_EQ(after.find("WALLS"), after.npos);
    EXPECT_NE(blockOf(after, "37").find("2\nGATE\n"), after.npos);
    EXPECT_NE(between(after, "0\nINSERT\n", "0\nATTRIB\n").find("2\nGATE\n"), after.npos);
    EXPECT_NE(between(after, "0\nVERTEX\n", "0\nSEQEND\n").find("8\nMUR\n"), after.npos);
}

TEST(EditedDrawing, UndoGivesTheSameBytes) {
    const std::string before = sheetDrawing();
    const auto database = opened(before);
    Journal& journal = database->imp()->journal;
    journal.beginGroup(L"TEST");
    freeze(*database, L"WALLS");
    addPoint(addBlock(*database, L"WINDOW"));
    erase(*database, byHandle(*database, 0x44));
    addLayer(*database, L"NEW");
    journal.endGroup();
    const std::string changed = written(*database);
    ASSERT_EQ(journal.undo(), Hx::eOk);
    EXPECT_EQ(changedLines(before, written(*database)), std::vector<std::string>{});
    ASSERT_EQ(journal.redo(), Hx::eOk);
    EXPECT_EQ(changedLines(changed, written(*database)), std::vector<std::string>{});
}

TEST(EditedDrawing, EntitiesFollowTheActiveLayout) {
    const std::string before = sheetDrawing();
    const auto database = opened(before);
    hxdbSetWorkingDatabase(database.get());
    ASSERT_EQ(hxdbLayoutManager()->setCurrentLayout(L"Second"), Hx::eOk);
    const std::string after = written(*database);
    const std::string entities = sectionOf(after, "ENTITIES");
    EXPECT_EQ(entities.find("Sheet"), entities.npos);
    EXPECT_NE(between(entities, "0\nLINE\n5\n35\n", "0\nENDSEC\n").find("67\n1\n"), std::string::npos);
    const std::string first = blockOf(after, "32");
    EXPECT_NE(first.find("Sheet"), first.npos);
    EXPECT_EQ(first.find("67\n1\n"), first.npos);
    EXPECT_NE(first.find("2\n*Paper_Space0\n"), first.npos);
    const std::string second = blockOf(after, "34");
    EXPECT_NE(second.find("100\nAcDbEntity\n67\n1\n8\n0\n"), second.npos);
    EXPECT_NE(second.find("3\n*Paper_Space\n"), second.npos);

    const auto again = opened(after);
    EXPECT_EQ(paperSpace(*again), byHandle(*again, 0x22));
    EXPECT_EQ(members(*paperSpace(*again)).size(), 1U);
    hxdbSetWorkingDatabase(database.get());
    ASSERT_EQ(hxdbLayoutManager()->setCurrentLayout(L"First"), Hx::eOk);
    const std::string back = written(*database);
    EXPECT_EQ(sectionOf(back, "ENTITIES"), sectionOf(before, "ENTITIES"));
    EXPECT_EQ(sectionOf(back, "BLOCKS"), sectionOf(before, "BLOCKS"));
    hxdbSetWorkingDatabase(nullptr);
}

TEST(EditedDrawing, UndoneChangeOfTheLayoutGivesTheSameBytes) {
    const std::string before = sheetDrawing();
    const auto database = opened(before);
    hxdbSetWorkingDatabase(database.get());
    Journal& journal = database->imp()->journal;
    journal.beginGroup(L"LAYOUT");
    ASSERT_EQ(hxdbLayoutManager()->setCurrentLayout(L"Second"), Hx::eOk);
    journal.endGroup();
    EXPECT_FALSE(written(*database) == before);
    ASSERT_EQ(journal.undo(), Hx::eOk);
    EXPECT_EQ(changedLines(before, written(*database)), std::vector<std::string>{});
    hxdbSetWorkingDatabase(nullptr);
}

TEST(Saving, TimeIsSetForChangesOnlyAndFilesReadBack) {
    const QTemporaryDir folder;
    const std::string path = folder.filePath("plan.dxf").toStdString();
    const std::wstring wide = fromUtf8(path);
    putFile(path, sheetDrawing());
    HxDbDatabase database(false);
    ASSERT_EQ(database.readDwgFile(wide.c_str()), Hx::eOk);
    EXPECT_STREQ(database.getFilename(), wide.c_str());
    ASSERT_EQ(saveAs(database, wide), Hx::eOk);
    EXPECT_TRUE(fileBytes(path) == sheetDrawing());

    freeze(database, L"WALLS");
    ASSERT_EQ(saveAs(database, wide), Hx::eOk);
    EXPECT_FALSE(database.isModified());
    const std::string saved = fileBytes(path);
    EXPECT_EQ(saved.find("2450000.5"), saved.npos);
    EXPECT_EQ(changedLines(sheetDrawing(), saved).size(), 2U) << "the time and the layer";
    ASSERT_EQ(saveAs(database, wide), Hx::eOk);
    EXPECT_TRUE(fileBytes(path) == saved) << "saving again is no change";

    addLayer(database, L"NEW");
    ASSERT_EQ(saveAs(database, wide), Hx::eOk);
    freeze(database, L"NEW");
    ASSERT_EQ(saveAs(database, wide), Hx::eOk);
    const auto again = opened(fileBytes(path));
    EXPECT_TRUE(layerVisibility(*findRecord(*again, TableKind::layer, L"NEW")).frozen);
}

TEST(Saving, FailureKeepsDrawingAndChanges) {
    const auto database = opened(sheetDrawing());
    freeze(*database, L"WALLS");
    const std::string before = written(*database);
    EXPECT_EQ(database->saveAs(L"/nowhere/at all/plan.dxf"), Hx::eFileAccessErr);
    EXPECT_NE(std::wstring(database->readError()).find(L"/nowhere/at all"), std::wstring::npos);
    EXPECT_TRUE(database->isModified());
    EXPECT_STREQ(database->getFilename(), L"");
    EXPECT_TRUE(written(*database) == before);
    EXPECT_EQ(database->saveAs(L""), Hx::eInvalidInput);
    EXPECT_EQ(HxDbDatabase(false).saveAs(L"/tmp/none.dxf"), Hx::eInvalidContext);
}

}  // namespace korvex::test
