// Entity lists and objects that their caller holds: in a transaction, or open for a change.
#include "tests/db/lists/list_support.h"

#include "host/base/text.h"
#include "host/io/drawing_reader.h"
#include "sdk/hxdbtransaction.h"

namespace korvex::test {
namespace {

class HeldObjects : public ListsTest {
protected:
    static int change(const zds_name name, Chain values) {
        ChainBuilder list;
        list.add(Chain(hxutBuildList(-1, name, 0)));
        list.add(std::move(values));
        return hxdbEntMod(Chain(list.release()).get());
    }
    static Chain nodes(resbuf* list) { return Chain(list); }
    HxDbTransactionManager& transactions() { return *database.transactionManager(); }
    HxDbObject* hold(HxDbObjectId id, HxDb::OpenMode mode) {
        HxDbObject* object = nullptr;
        EXPECT_EQ(transactions().getObject(object, id, mode), Hx::eOk);
        return object;
    }
    HxDbObjectId addDictionary() {
        const HxDbObjectPointer<HxDbDictionary> root(database.namedObjectsDictionaryId(), HxDb::kForWrite);
        auto* const made = new HxDbDictionary;
        HxDbObjectId id;
        EXPECT_EQ(root->setAt(L"STATES", made, id), Hx::eOk);
        made->close();
        return id;
    }
    void makeRecord(zds_name name, const wchar_t* text) {
        const Chain list(hxutBuildList(RTDXF0, L"XRECORD", 100, L"AcDbXrecord", 301, text, 0));
        ASSERT_EQ(hxdbEntMakeX(list.get(), name), RTNORM);
    }
};

TEST_F(HeldObjects, WhatATransactionHoldsIsChangedAndErased) {
    const HxDbObjectId walls = addLayer(L"WALLS");
    const HxDbObjectId spare = addLayer(L"SPARE");
    zds_name layer = {0, 0};
    zds_name other = {0, 0};
    hxdbGetZdsName(layer, walls);
    hxdbGetZdsName(other, spare);
    const std::string before = list(layer);
    transactions().startTransaction();
    const auto* const read = HxDbLayerTableRecord::cast(hold(walls, HxDb::kForRead));
    EXPECT_EQ(change(layer, nodes(hxutBuildList(70, 4, 62, -3, 0))), RTNORM);
    EXPECT_TRUE(read->isLocked() && read->isOff());
    EXPECT_FALSE(read->isWriteEnabled()) << "others can read it again";
    EXPECT_TRUE(HxDbObjectPointer<HxDbLayerTableRecord>(walls, HxDb::kForRead));
    hold(spare, HxDb::kForWrite);
    EXPECT_EQ(change(other, nodes(hxutBuildList(70, 4, 0))), RTNORM);
    EXPECT_EQ(hxdbEntDel(other), RTNORM);
    EXPECT_TRUE(spare.isErased());
    EXPECT_EQ(hxdbEntDel(other), RTNORM);
    EXPECT_FALSE(spare.isErased());
    {
        const HxDbObjectPointer<HxDbObject> reader(walls, HxDb::kForRead);
        EXPECT_EQ(change(layer, nodes(hxutBuildList(70, 0, 0))), RTREJ) << "somebody else reads it, too";
        EXPECT_EQ(hxdbEntDel(layer), RTERROR);
    }
    transactions().abortTransaction();
    EXPECT_EQ(list(layer), before);
}

TEST_F(HeldObjects, ARefusedListTakesBackNothingButItself) {
    const HxDbObjectId walls = addLayer(L"WALLS");
    zds_name layer = {0, 0};
    hxdbGetZdsName(layer, walls);
    transactions().startTransaction();
    auto* const record = HxDbLayerTableRecord::cast(hold(walls, HxDb::kForWrite));
    record->setIsLocked(true);
    EXPECT_EQ(change(layer, nodes(hxutBuildList(2, L"Renamed", -3, 1001, L"NOT REGISTERED", 1000, L"x", 0))),
              RTREJ);
    EXPECT_STREQ(record->name(), L"WALLS");
    EXPECT_TRUE(record->isLocked());
    transactions().endTransaction();
    EXPECT_TRUE(HxDbObjectPointer<HxDbLayerTableRecord>(walls, HxDb::kForRead)->isLocked());
}

TEST_F(HeldObjects, AnOpenDictionaryIsSearchedFilledAndGivenExtendedData) {
    const HxDbObjectId id = addDictionary();
    zds_name dictionary = {0, 0};
    zds_name first = {0, 0};
    zds_name second = {0, 0};
    hxdbGetZdsName(dictionary, id);
    makeRecord(first, L"1");
    makeRecord(second, L"2");
    hxdbRegApp(L"AcLayerTools");
    {
        const HxDbObjectPointer<HxDbDictionary> open(id, HxDb::kForWrite);
        EXPECT_EQ(hxdbDictAdd(dictionary, L"State", first), RTNORM);
        EXPECT_NE(Chain(hxdbDictSearch(dictionary, L"STATE", 0)), nullptr);
        EXPECT_EQ(hxdbDictAdd(dictionary, L"state", second), RTERROR);
        EXPECT_EQ(change(dictionary, nodes(hxutBuildList(-3, 1001, L"AcLayerTools", 1000, L"Layout1", 0))),
                  RTNORM);
        EXPECT_EQ(hxdbDictAdd(dictionary, L"Second", second), RTNORM);
        EXPECT_EQ(hxdbDictRemove(dictionary, L"State"), RTNORM);
        EXPECT_TRUE(open->isWriteEnabled()) << "it is still the caller's";
    }
    const HxDbObjectPointer<HxDbDictionary> again(id, HxDb::kForRead);
    EXPECT_EQ(again->numEntries(), 1U);
    EXPECT_EQ(shown(Chain(again->xData(L"AcLayerTools")).get()), "1001=AcLayerTools 1000=Layout1");
    EXPECT_NE(Chain(hxdbDictSearch(dictionary, L"Second", 0)), nullptr);
}

TEST_F(HeldObjects, AnErasedObjectsEntryCanBeTakenOut) {
    zds_name root = {0, 0};
    zds_name first = {0, 0};
    ASSERT_EQ(hxdbNamedObjDict(root), RTNORM);
    makeRecord(first, L"1");
    ASSERT_EQ(hxdbDictAdd(root, L"State", first), RTNORM);
    ASSERT_EQ(hxdbEntDel(first), RTNORM);
    EXPECT_EQ(hxdbDictRemove(root, L"state"), RTNORM);
    EXPECT_EQ(hxdbDictRemove(root, L"state"), RTERROR);
    ASSERT_EQ(hxdbEntDel(first), RTNORM);  // it is back, but not in the dictionary
    EXPECT_EQ(hxdbDictSearch(root, L"State", 0), nullptr);
}

TEST_F(HeldObjects, LayersAndLinetypesAreMade) {
    zds_name dashes = {0, 0};
    const Chain linetype(hxutBuildList(RTDXF0, L"LTYPE", 2, L"Dashes", 70, 0, 3, L"__ __", 72, 65, 73, 2, 40,
                                       0.75, 49, 0.5, 49, -0.25, 0));
    ASSERT_EQ(hxdbEntMakeX(linetype.get(), dashes), RTNORM);
    EXPECT_NE(list(dashes).find("2=Dashes 70=0 3=__ __ 72=65 73=2 40=0.75 49=0.5 49=-0.25"),
              std::string::npos)
        << list(dashes);
    zds_name layer = {0, 0};
    const Chain wanted(hxutBuildList(RTDXF0, L"LAYER", 100, L"AcDbSymbolTableRecord", 100,
                                     L"AcDbLayerTableRecord", 2, L"Made", 70, 5, 62, -3, 6, L"Dashes", 290, 0,
                                     370, 50, 0));
    ASSERT_EQ(hxdbEntMakeX(wanted.get(), layer), RTNORM);
    HxDbObjectId id;
    ASSERT_EQ(hxdbGetObjectId(id, layer), Hx::eOk);
    {
        const HxDbObjectPointer<HxDbLayerTableRecord> record(id, HxDb::kForRead);
        ASSERT_TRUE(record);
        EXPECT_STREQ(record->name(), L"Made");
        EXPECT_TRUE(record->isFrozen() && record->isLocked() && record->isOff() && !record->isPlottable());
        EXPECT_EQ(record->color().colorIndex(), 3);
        EXPECT_EQ(record->lineWeight(), 50);
        HxDbObjectId linetypeId;
        hxdbGetObjectId(linetypeId, dashes);
        EXPECT_EQ(record->linetypeObjectId(), linetypeId);
    }
    EXPECT_EQ(hxdbEntMake(wanted.get()), RTREJ) << "the name is taken";
    const HxDbObjectPointer<HxDbLayerTable> table(database.layerTableId(), HxDb::kForRead);
    EXPECT_TRUE(table->has(L"MADE"));
}

TEST_F(HeldObjects, OldDrawingsHaveNoPlotFlagOfLayers) {
    std::wstring error;
    HxDbDatabase old(false);
    const std::string file =
        "  0\nSECTION\n  2\nHEADER\n  9\n$ACADVER\n  1\nAC1009\n  0\nENDSEC\n  0\nSECTION\n"
        "  2\nTABLES\n  0\nTABLE\n  2\nLAYER\n 70\n1\n  0\nLAYER\n  2\nA\n 70\n0\n 62\n7\n"
        "  6\nCONTINUOUS\n  0\nENDTAB\n  0\nENDSEC\n  0\nEOF\n";
    ASSERT_EQ(readDrawing(old, file, error), Hx::eOk) << toUtf8(error);
    hxdbSetWorkingDatabase(&old);
    zds_name layer = {0, 0};
    ASSERT_EQ(hxdbTblObjName(L"LAYER", L"A", layer), RTNORM);
    EXPECT_EQ(change(layer, nodes(hxutBuildList(290, 0, 0))), RTREJ);
    EXPECT_EQ(change(layer, nodes(hxutBuildList(370, 50, 0))), RTREJ);
    EXPECT_EQ(change(layer, nodes(hxutBuildList(62, 3, 0))), RTNORM);
    hxdbSetWorkingDatabase(&database);
}

}  // namespace
}  // namespace korvex::test
