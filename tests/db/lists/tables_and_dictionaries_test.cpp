// Tables, dictionaries and applications by name.
#include "tests/db/lists/list_support.h"

namespace korvex::test {
namespace {

class TableLists : public ListsTest {
protected:
    static std::string search(const wchar_t* table, const wchar_t* name, int setNext = 0) {
        return shown(Chain(hxdbTblSearch(table, name, setNext)).get());
    }
    /// The record's name out of the next list; "end" behind the last.
    static std::string next(const wchar_t* table, int rewind = 0) {
        const Chain list(hxdbTblNext(table, rewind));
        return list ? TextCodec::utf8().encode(textOf(*list->rbnext)) : "end";
    }
};

TEST_F(TableLists, RecordsOfEveryTable) {
    addLayer(L"Pipes");
    EXPECT_EQ(search(L"layer", L"PIPES").substr(0, 15), "0=LAYER 2=Pipes");
    EXPECT_NE(search(L"LAYER", L"Pipes").find(" 62=7"), std::string::npos);
    EXPECT_EQ(search(L"LAYER", L"Pipes").find("330="), std::string::npos);
    EXPECT_NE(search(L"LTYPE", L"Continuous").find(" 70="), std::string::npos);
    EXPECT_EQ(search(L"APPID", L"ACAD").substr(0, 14), "0=APPID 2=ACAD");
    for (const auto& [table, name] :
         {std::pair(L"LAYER", L"none"), {L"NOTABLE", L"0"}, {L"BLOCK_RECORD", L"*Model_Space"}}) {
        EXPECT_EQ(hxdbTblSearch(table, name, 0), nullptr) << table;
    }
    EXPECT_EQ(hxdbTblSearch(nullptr, L"0", 0), nullptr);
    EXPECT_EQ(hxdbTblSearch(L"LAYER", nullptr, 0), nullptr);
    zds_name found = {0, 0};
    HxDbObjectId id;
    EXPECT_EQ(hxdbTblObjName(L"LAYER", L"0", found), RTNORM);
    EXPECT_EQ(hxdbGetObjectId(id, found), Hx::eOk);
    EXPECT_EQ(id, database.layerZero());
    EXPECT_EQ(hxdbTblObjName(L"LAYER", L"none", found), RTERROR);
    EXPECT_EQ(found[0], 0);
}

TEST_F(TableLists, BlocksShowTheirFlagsAndFirstEntity) {
    EXPECT_EQ(search(L"BLOCK", L"*Model_Space"), "0=BLOCK 2=*Model_Space 70=0 10=0,0,0");
    zds_name line = {0, 0};
    makeLine(line);
    zds_name second = {0, 0};
    makeLine(second);
    std::ostringstream handle;
    handle << std::hex << line[1];
    EXPECT_EQ(search(L"BLOCK", L"*Model_Space"), "0=BLOCK 2=*Model_Space 70=0 10=0,0,0 -2=#" + handle.str());
    EXPECT_EQ(hxdbEntDel(line), RTNORM);
    EXPECT_EQ(search(L"BLOCK", L"*Model_Space").find(handle.str()), std::string::npos);
}

TEST_F(TableLists, SteppingThroughATable) {
    for (const wchar_t* name : {L"A", L"B", L"C"}) {
        addLayer(name);
    }
    zds_name erased = {0, 0};
    ASSERT_EQ(hxdbTblObjName(L"LAYER", L"B", erased), RTNORM);
    ASSERT_EQ(hxdbEntDel(erased), RTNORM);
    EXPECT_EQ(next(L"LAYER", 1), "0");
    EXPECT_NE(next(L"LTYPE", 1), "end");  // another table has its own position
    EXPECT_EQ(next(L"LAYER"), "A");
    EXPECT_EQ(next(L"LAYER"), "C");
    EXPECT_EQ(next(L"LAYER"), "end");
    EXPECT_EQ(next(L"LAYER"), "end");
    search(L"LAYER", L"A", 1);
    EXPECT_EQ(next(L"LAYER"), "C");
    search(L"LAYER", L"0", 1);
    search(L"LAYER", L"C", 0);
    EXPECT_EQ(next(L"LAYER"), "A");
    HxDbDatabase other;
    hxdbSetWorkingDatabase(&other);
    EXPECT_EQ(next(L"LAYER"), "0");
    EXPECT_EQ(hxdbTblNext(L"NOTABLE", 1), nullptr);
}

TEST_F(TableLists, Applications) {
    EXPECT_EQ(hxdbRegApp(L"AcLayerTools"), RTNORM);
    EXPECT_EQ(hxdbRegApp(L"aclayertools"), RTNORM);
    int count = 0;
    for (std::string name = next(L"APPID", 1); name != "end"; name = next(L"APPID")) {
        count += name == "AcLayerTools" ? 1 : 0;
    }
    EXPECT_EQ(count, 1);
    for (const wchar_t* bad : {L"", L"a*b"}) {
        EXPECT_EQ(hxdbRegApp(bad), RTERROR) << bad;
    }
    EXPECT_EQ(hxdbRegApp(nullptr), RTERROR);
}

class DictionaryLists : public ListsTest {
protected:
    DictionaryLists() { EXPECT_EQ(hxdbNamedObjDict(dictionary), RTNORM); }
    /// An xrecord that nobody owns yet.
    void makeRecord(zds_name name, const wchar_t* text) {
        const Chain list(hxutBuildList(RTDXF0, L"XRECORD", 102, L"{ACAD_REACTORS", 330, dictionary, 102, L"}",
                                       330, dictionary, 100, L"AcDbXrecord", 91, 1023L, 301, text, 8,
                                       L"no layer at all", 62, -7, 290, 1, 0));
        ASSERT_EQ(hxdbEntMakeX(list.get(), name), RTNORM);
    }
    zds_name dictionary = {0, 0};
};

TEST_F(DictionaryLists, AnXrecordGoesInAndComesOut) {
    zds_name record = {0, 0};
    makeRecord(record, L"Zustand \x00E4");
    EXPECT_EQ(hxdbDictSearch(dictionary, L"State", 0), nullptr);
    ASSERT_EQ(hxdbDictAdd(dictionary, L"State", record), RTNORM);
    const Chain found(hxdbDictSearch(dictionary, L"STATE", 0));
    EXPECT_NE(shown(found.get())
                  .find("100=AcDbXrecord 280=1 91=1023 301=Zustand \xC3\xA4 8=no layer at all 62=-7 290=1"),
              std::string::npos)
        << shown(found.get());
    HxDbObjectId id;
    ASSERT_EQ(hxdbGetObjectId(id, record), Hx::eOk);
    {
        const HxDbObjectPointer<HxDbXrecord> xrecord(id, HxDb::kForRead);
        ASSERT_TRUE(xrecord);
        EXPECT_EQ(xrecord->ownerId(), database.namedObjectsDictionaryId());
        EXPECT_EQ(shown(Chain(xrecord->rbChain()).get()),
                  "91=1023 301=Zustand \xC3\xA4 8=no layer at all 62=-7 290=1");
    }
    EXPECT_EQ(hxdbDictRemove(dictionary, L"State"), RTNORM);
    EXPECT_TRUE(id.isErased());
    EXPECT_EQ(hxdbDictSearch(dictionary, L"State", 0), nullptr);
    EXPECT_EQ(hxdbDictRemove(dictionary, L"State"), RTERROR);
}

TEST_F(DictionaryLists, WhatDictionariesRefuse) {
    zds_name first = {0, 0};
    zds_name second = {0, 0};
    zds_name layer = {0, 0};
    makeRecord(first, L"1");
    makeRecord(second, L"2");
    hxdbGetZdsName(layer, database.layerZero());
    const zds_name garbage = {77, 77};
    ASSERT_EQ(hxdbDictAdd(dictionary, L"Taken", first), RTNORM);
    EXPECT_EQ(hxdbDictAdd(dictionary, L"TAKEN", second), RTERROR);
    EXPECT_EQ(hxdbDictAdd(dictionary, L"Layer", layer), RTERROR);
    EXPECT_EQ(hxdbDictAdd(dictionary, L"Garbage", garbage), RTERROR);
    EXPECT_EQ(hxdbDictAdd(dictionary, L"", second), RTERROR);
    EXPECT_EQ(hxdbDictAdd(dictionary, nullptr, second), RTERROR);
    EXPECT_EQ(hxdbDictAdd(layer, L"x", second), RTERROR);
    EXPECT_EQ(hxdbDictAdd(dictionary, L"Itself", dictionary), RTERROR);
    EXPECT_EQ(hxdbDictSearch(garbage, L"Taken", 0), nullptr);
    EXPECT_EQ(hxdbDictRemove(first, L"Taken"), RTERROR);
    const Chain still(hxdbDictSearch(dictionary, L"Taken", 0));
    EXPECT_NE(shown(still.get()).find("301=1"), std::string::npos);
}

TEST_F(DictionaryLists, ErasedEntriesLeaveTheirNamesFree) {
    zds_name first = {0, 0};
    zds_name second = {0, 0};
    makeRecord(first, L"1");
    makeRecord(second, L"2");
    ASSERT_EQ(hxdbDictAdd(dictionary, L"State", first), RTNORM);
    EXPECT_EQ(hxdbEntDel(first), RTNORM);
    EXPECT_EQ(hxdbDictAdd(dictionary, L"State", second), RTNORM);
    const Chain found(hxdbDictSearch(dictionary, L"State", 0));
    EXPECT_NE(shown(found.get()).find("301=2"), std::string::npos);
}

}  // namespace
}  // namespace korvex::test
