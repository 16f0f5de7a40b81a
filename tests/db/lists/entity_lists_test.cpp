// Entities by lists: made, read, changed, refused, erased.
#include "host/db/kernel/entity_access.h"
#include "host/db/kernel/header.h"
#include "sdk/hxdbtransaction.h"
#include "tests/db/lists/list_support.h"

#include <QTemporaryDir>

#include <limits>

namespace korvex::test {
namespace {

class EntityLists : public ListsTest {
protected:
    /// Changes the object by a chain that is put behind its name.
    static int change(const zds_name name, resbuf* more) {
        const Chain list(hxutBuildList(-1, name, 0));
        list->rbnext = more;
        return hxdbEntMod(list.get());
    }
    static std::string layerOfLine(const zds_name name) {
        const Chain list(hxdbEntGet(name));
        for (const resbuf* node = list.get(); node; node = node->rbnext) {
            if (node->restype == 8) {
                return TextCodec::utf8().encode(textOf(*node));
            }
        }
        return "none";
    }
};

TEST_F(EntityLists, ALineIsMadeReadAndChanged) {
    zds_name line = {0, 0};
    makeLine(line, Chain(hxutBuildList(62, 3, 0)));
    EXPECT_EQ(values(line), "0=LINE 8=0 62=3 10=0,0,0 11=1,2,0");
    const double end[] = {7, 8, 9};
    EXPECT_EQ(change(line, hxutBuildList(11, end, 370, 25, 0)), RTNORM);
    EXPECT_EQ(values(line), "0=LINE 8=0 62=3 370=25 10=0,0,0 11=7,8,9");
    // The whole list, changed and given back.
    const Chain all(hxdbEntGet(line));
    for (resbuf* node = all.get(); node; node = node->rbnext) {
        node->resval.rint = node->restype == 62 ? short{4} : node->resval.rint;
    }
    EXPECT_EQ(hxdbEntMod(all.get()), RTNORM);
    EXPECT_EQ(values(line), "0=LINE 8=0 62=4 370=25 10=0,0,0 11=7,8,9");
    // A handle names the object as well.
    HxDbObjectId id;
    ASSERT_EQ(hxdbGetObjectId(id, line), Hx::eOk);
    wchar_t handle[17];
    id.handle().getIntoAsciiBuffer(handle);
    const Chain byHandle(hxutBuildList(5, handle, 62, 6, 0));
    EXPECT_EQ(hxdbEntMod(byHandle.get()), RTNORM);
    EXPECT_EQ(values(line), "0=LINE 8=0 62=6 370=25 10=0,0,0 11=7,8,9");
}

TEST_F(EntityLists, RefusedChangesChangeNothing) {
    zds_name line = {0, 0};
    makeLine(line);
    zds_name owner = {0, 0};
    hxdbGetZdsName(owner, database.layerZero());
    const std::string before = list(line);
    const double bad[] = {1, std::numeric_limits<double>::quiet_NaN(), 0};
    resbuf* const refused[] = {
        hxutBuildList(62, 5, 8, L"no such layer", 0),
        hxutBuildList(RTDXF0, L"CIRCLE", 0),
        hxutBuildList(5, L"1", 0),
        hxutBuildList(330, owner, 62, 5, 0),
        hxutBuildList(62, 5, 10, bad, 0),
        hxutBuildList(62, 5, 348, line, 390, line, 70, 1, RTSTR, L"x", 0),
        hxutBuildList(62, 5, -3, 1001, L"NOT REGISTERED", 1000, L"x", 0),
    };
    for (resbuf* more : refused) {
        EXPECT_EQ(change(line, more), RTREJ);
        EXPECT_EQ(list(line), before);
    }
    const HxDbObjectPointer<HxDbObject> reader(database.modelSpaceId(), HxDb::kForRead);
    HxDbObjectId id;
    ASSERT_EQ(hxdbGetObjectId(id, line), Hx::eOk);
    HxDbObject* open = nullptr;
    ASSERT_EQ(hxdbOpenObject(open, id, HxDb::kForRead), Hx::eOk);
    EXPECT_EQ(change(line, hxutBuildList(62, 5, 0)), RTREJ);
    open->close();
    EXPECT_EQ(list(line), before);
}

TEST_F(EntityLists, NamesThatAreNone) {
    zds_name line = {0, 0};
    makeLine(line);
    const zds_name garbage[] = {
        {0, 0},   {1, 1},      {0x7fff12345678, 0x10}, {line[0], line[1] + 1}, {line[0] + 8, line[1]},
        {-1, -1}, {0, line[1]}};
    for (const zds_name& name : garbage) {
        EXPECT_EQ(hxdbEntGet(name), nullptr);
        EXPECT_EQ(hxdbEntDel(name), RTERROR);
        EXPECT_EQ(change(name, hxutBuildList(62, 1, 0)), RTERROR);
        HxDbObjectId id = database.layerZero();
        EXPECT_NE(hxdbGetObjectId(id, name), Hx::eOk);
        EXPECT_TRUE(id.isNull());
    }
    const Chain nameless(hxutBuildList(62, 1, 0));
    EXPECT_EQ(hxdbEntMod(nameless.get()), RTERROR);
    EXPECT_EQ(hxdbEntMod(nullptr), RTERROR);
    zds_name name = {1, 1};
    EXPECT_EQ(hxdbGetZdsName(name, HxDbObjectId()), Hx::eNullObjectId);
    EXPECT_EQ(name[0], 0);
    for (const wchar_t* handle : {L"", L"XYZ", L"0", L"FFFFFFF0"}) {
        EXPECT_EQ(hxdbHandEnt(handle, name), RTERROR);
    }
    // Without a drawing there is nothing, and nothing breaks.
    hxdbSetWorkingDatabase(nullptr);
    EXPECT_EQ(hxdbEntGet(line), nullptr);
    EXPECT_EQ(hxdbEntLast(name), RTERROR);
    EXPECT_EQ(hxdbEntMake(nameless.get()), RTREJ);
    EXPECT_EQ(hxdbNamedObjDict(name), RTERROR);
    EXPECT_EQ(hxdbTblNext(L"LAYER", 1), nullptr);
    EXPECT_EQ(hxdbRegApp(L"A"), RTERROR);
}

TEST_F(EntityLists, ErasingAndTheLastEntity) {
    zds_name first = {0, 0};
    zds_name second = {0, 0};
    zds_name last = {0, 0};
    EXPECT_EQ(hxdbEntLast(last), RTERROR);
    makeLine(first);
    makeLine(second);
    ASSERT_EQ(hxdbEntLast(last), RTNORM);
    EXPECT_EQ(last[1], second[1]);
    EXPECT_EQ(hxdbEntDel(second), RTNORM);
    EXPECT_EQ(hxdbEntGet(second), nullptr);
    EXPECT_EQ(change(second, hxutBuildList(62, 1, 0)), RTREJ);
    ASSERT_EQ(hxdbEntLast(last), RTNORM);
    EXPECT_EQ(last[1], first[1]);
    EXPECT_EQ(hxdbEntDel(second), RTNORM);
    EXPECT_EQ(values(second), "0=LINE 8=0 10=0,0,0 11=1,2,0");
    hxdbGetZdsName(last, database.layerZero());
    EXPECT_EQ(hxdbEntDel(last), RTERROR);
}

TEST_F(EntityLists, NewEntitiesTakeTheCurrentProperties) {
    addLayer(L"W\x00E4nde");
    setHeaderValue(database, L"$CLAYER", {{8, L"W\x00E4nde", 0, 0}});
    setHeaderValue(database, L"$CECOLOR", {{62, L"", 0, 5}});
    setHeaderValue(database, L"$CELTYPE", {{6, L"Continuous", 0, 0}});
    setHeaderValue(database, L"$CELTSCALE", {{40, L"", 2.5, 0}});
    setHeaderValue(database, L"$CELWEIGHT", {{370, L"", 0, 50}});
    zds_name line = {0, 0};
    makeLine(line);
    EXPECT_EQ(values(line), "0=LINE 8=W\xC3\xA4nde 6=Continuous 62=5 48=2.5 370=50 10=0,0,0 11=1,2,0");
    makeLine(line, Chain(hxutBuildList(8, L"0", 62, 1, 370, 25, 0)));
    EXPECT_EQ(values(line), "0=LINE 6=Continuous 48=2.5 8=0 62=1 370=25 10=0,0,0 11=1,2,0");
    makeLine(line, Chain(hxutBuildList(420, 255L, 0)));
    EXPECT_EQ(values(line), "0=LINE 8=W\xC3\xA4nde 6=Continuous 48=2.5 370=50 420=255 10=0,0,0 11=1,2,0");
}

TEST_F(EntityLists, ACopyInPaperSpaceHasItsOwnHead) {
    zds_name line = {0, 0};
    zds_name copy = {0, 0};
    makeLine(line);
    ASSERT_EQ(database.setTilemode(false), Hx::eOk);
    const Chain original(hxdbEntGet(line));
    ASSERT_EQ(hxdbEntMakeX(original.get(), copy), RTNORM);
    EXPECT_NE(copy[1], line[1]);
    EXPECT_EQ(values(copy), "0=LINE 67=1 8=0 10=0,0,0 11=1,2,0");
    HxDbObjectId id;
    ASSERT_EQ(hxdbGetObjectId(id, copy), Hx::eOk);
    const HxDbObjectPointer<HxDbEntity> entity(id, HxDb::kForRead);
    ASSERT_TRUE(entity);
    EXPECT_EQ(entity->blockId(), database.paperSpaceId());
    EXPECT_EQ(entity->ownerId(), database.paperSpaceId());
}

TEST_F(EntityLists, WhatIsNotMade) {
    const double p[] = {0, 0, 0};
    const Chain lists[] = {
        Chain(hxutBuildList(10, p, 11, p, 0)),
        Chain(hxutBuildList(RTDXF0, L"NOSUCHTHING", 10, p, 0)),
        Chain(hxutBuildList(RTDXF0, L"LINE", 10, p, 0)),
        Chain(hxutBuildList(RTDXF0, L"LINE", 10, p, 11, p, 8, L"no such layer", 0)),
        Chain(hxutBuildList(RTDXF0, L"LINE", 100, L"AcDbCircle", 10, p, 11, p, 0)),
        Chain(hxutBuildList(RTDXF0, L"LINE", 10, p, 11, p, RTSTR, L"x", 0)),
        Chain(hxutBuildList(RTDXF0, L"INSERT", 2, L"no such block", 10, p, 0)),
        Chain(hxutBuildList(RTDXF0, L"INSERT", 66, 1, 2, L"*Model_Space", 10, p, 0)),
        Chain(hxutBuildList(RTDXF0, L"LWPOLYLINE", 90, 3L, 10, p, 10, p, 0)),
        Chain(hxutBuildList(RTDXF0, L"POLYLINE", 66, 1, 0)),
        Chain(hxutBuildList(RTDXF0, L"VERTEX", 10, p, 0)),
        Chain(hxutBuildList(RTDXF0, L"BLOCK", 2, L"B", 70, 0, 10, p, 0)),
        Chain(hxutBuildList(RTDXF0, L"STYLE", 2, L"B", 70, 0, 0)),
        Chain(hxutBuildList(RTDXF0, L"LAYER", 70, 0, 0)),
        Chain(hxutBuildList(RTDXF0, L"LAYER", 2, L"a*b", 70, 0, 0)),
        Chain(hxutBuildList(RTDXF0, L"LAYER", 2, L"0", 70, 0, 0)),
        Chain(hxutBuildList(RTDXF0, L"LAYER", 2, L"B", 6, L"no such linetype", 0)),
        Chain(hxutBuildList(RTDXF0, L"LAYER", 2, L"B", 62, 0, 0)),
        Chain(hxutBuildList(RTDXF0, L"XRECORD", 100, L"AcDbXrecord", 1, L"x", 0)),
        Chain(hxutBuildList(RTDXF0, L"LINE", 10, p, 11, p, -3, 1001, L"NOT REGISTERED", 1000, L"x", 0)),
    };
    for (const Chain& list : lists) {
        EXPECT_EQ(hxdbEntMake(list.get()), RTREJ) << shown(list.get());
    }
    EXPECT_EQ(hxdbEntMake(nullptr), RTREJ);
    zds_name last = {0, 0};
    EXPECT_EQ(hxdbEntLast(last), RTERROR);
}

TEST_F(EntityLists, EntitiesOfSeveralSubclasses) {
    const double p[] = {1, 2, 3};
    const Chain arc(hxutBuildList(RTDXF0, L"arc", 50, 0.0, 51, 90.0, 10, p, 40, 5.0, 0));
    const Chain flat(hxutBuildList(RTDXF0, L"LWPOLYLINE", 100, L"AcDbEntity", 8, L"0", 100, L"AcDbPolyline",
                                   90, 2L, 70, 0, 10, p, 42, 0.5, 10, p, 0));
    zds_name name = {0, 0};
    ASSERT_EQ(hxdbEntMakeX(arc.get(), name), RTNORM);
    const std::string groups = list(name);
    EXPECT_NE(groups.find("100=AcDbEntity 8=0 100=AcDbCircle 10=1,2,3 40=5 100=AcDbArc 50=0 51=90"),
              std::string::npos)
        << groups;
    ASSERT_EQ(hxdbEntMakeX(flat.get(), name), RTNORM);
    EXPECT_EQ(values(name), "0=LWPOLYLINE 8=0 90=2 70=0 10=1,2,0 42=0.5 10=1,2,0");
}

TEST_F(EntityLists, ExtendedDataByApplication) {
    ASSERT_EQ(hxdbRegApp(L"ONE"), RTNORM);
    ASSERT_EQ(hxdbRegApp(L"TWO"), RTNORM);
    zds_name line = {0, 0};
    makeLine(line, Chain(hxutBuildList(-3, 1001, L"ONE", 1000, L"a", 1001, L"TWO", 1071, 7L, 0)));
    const auto xdata = [&](const wchar_t* application) {
        const Chain applications(hxutBuildList(RTSTR, application, 0));
        const std::string all = list(line, applications.get());
        const std::size_t start = all.find("-3=");
        return start == std::string::npos ? std::string() : all.substr(start);
    };
    EXPECT_EQ(xdata(L"*"), "-3= 1001=ONE 1000=a 1001=TWO 1071=7");
    EXPECT_EQ(xdata(L"two"), "-3= 1001=TWO 1071=7");
    EXPECT_EQ(xdata(L"none"), "");
    EXPECT_EQ(list(line).find("-3="), std::string::npos);
    // At the end of the whole list, the other application's data stays.
    Chain all(hxdbEntGet(line));
    resbuf* end = all.get();
    while (end->rbnext) {
        end = end->rbnext;
    }
    end->rbnext = hxutBuildList(-3, 1001, L"ONE", 1000, L"b", 1000, L"c", 0);
    EXPECT_EQ(hxdbEntMod(all.get()), RTNORM);
    EXPECT_EQ(xdata(L"*"), "-3= 1001=ONE 1000=b 1000=c 1001=TWO 1071=7");
    EXPECT_EQ(change(line, hxutBuildList(-3, 1001, L"TWO", 0)), RTNORM);
    EXPECT_EQ(xdata(L"*"), "-3= 1001=ONE 1000=b 1000=c");
}

/// Counts what a database tells.
class Counter : public HxDbDatabaseReactor {
public:
    void objectOpenedForModify(const HxDbDatabase*, const HxDbObject*) override { ++opened; }
    void objectModified(const HxDbDatabase*, const HxDbObject*) override { ++modified; }
    void objectAppended(const HxDbDatabase*, const HxDbObject*) override { ++appended; }
    int opened = 0, modified = 0, appended = 0;
};

TEST_F(EntityLists, LayersAreChangedThroughTheirObjects) {
    const HxDbObjectId id = addLayer(L"Old");
    zds_name layer = {0, 0};
    zds_name line = {0, 0};
    hxdbGetZdsName(layer, id);
    makeLine(line, Chain(hxutBuildList(8, L"Old", 0)));
    Counter counter;
    database.addReactor(&counter);
    EXPECT_EQ(change(layer, hxutBuildList(70, 5, 62, -3, 2, L"New", 0)), RTNORM);
    EXPECT_EQ(counter.opened, 1);
    EXPECT_EQ(counter.modified, 1);
    {
        const HxDbObjectPointer<HxDbLayerTableRecord> record(id, HxDb::kForRead);
        ASSERT_TRUE(record);
        EXPECT_TRUE(record->isFrozen() && record->isLocked() && record->isOff());
        EXPECT_EQ(record->color().colorIndex(), 3);
        EXPECT_STREQ(record->name(), L"New");
    }
    EXPECT_EQ(layerOfLine(line), "New");
    EXPECT_EQ(change(layer, hxutBuildList(2, L"0", 62, 1, 0)), RTREJ);
    EXPECT_EQ(change(layer, hxutBuildList(2, L"a*b", 0)), RTREJ);
    EXPECT_EQ(change(layer, hxutBuildList(2, L"New", 62, -3, 0)), RTNORM);  // nothing new
    zds_name zero = {0, 0};
    hxdbGetZdsName(zero, database.layerZero());
    EXPECT_EQ(change(zero, hxutBuildList(70, 1, 0)), RTREJ);  // the current layer
    EXPECT_EQ(counter.modified, 1);
    database.removeReactor(&counter);
}

TEST_F(EntityLists, ListsAreTakenBackWithTheTransaction) {
    zds_name line = {0, 0};
    makeLine(line);
    const std::string before = list(line);
    zds_name added = {0, 0};
    database.transactionManager()->startTransaction();
    EXPECT_EQ(change(line, hxutBuildList(62, 5, 0)), RTNORM);
    makeLine(added);
    EXPECT_EQ(hxdbEntDel(line), RTNORM);
    EXPECT_EQ(database.transactionManager()->abortTransaction(), Hx::eOk);
    EXPECT_EQ(list(line), before);
    EXPECT_EQ(hxdbEntGet(added), nullptr);
    EXPECT_EQ(hxdbEntDel(added), RTERROR);  // it was never made
}

TEST_F(EntityLists, WhatListsMadeIsInTheSavedDrawing) {
    ASSERT_EQ(hxdbRegApp(L"ONE"), RTNORM);
    zds_name line = {0, 0};
    makeLine(line, Chain(hxutBuildList(62, 3, -3, 1001, L"ONE", 1000, L"a", 0)));
    zds_name dictionary = {0, 0};
    zds_name record = {0, 0};
    ASSERT_EQ(hxdbNamedObjDict(dictionary), RTNORM);
    const Chain content(
        hxutBuildList(RTDXF0, L"XRECORD", 330, dictionary, 100, L"AcDbXrecord", 1, L"\x4E2D", 330, line, 0));
    ASSERT_EQ(hxdbEntMakeX(content.get(), record), RTNORM);
    ASSERT_EQ(hxdbDictAdd(dictionary, L"Mine", record), RTNORM);
    const QTemporaryDir folder;
    const std::wstring path = folder.filePath("made.dxf").toStdWString();
    ASSERT_EQ(database.saveAs(path.c_str()), Hx::eOk) << "not saved";

    HxDbDatabase read(false);
    ASSERT_EQ(read.readDwgFile(path.c_str()), Hx::eOk) << "not read";
    hxdbSetWorkingDatabase(&read);
    const auto byHandle = [](const zds_name name) {
        wchar_t handle[17];
        zds_name found = {0, 0};
        HxDbHandle(static_cast<std::uint64_t>(name[1])).getIntoAsciiBuffer(handle);
        EXPECT_EQ(hxdbHandEnt(handle, found), RTNORM);
        const Chain applications(hxutBuildList(RTSTR, L"ONE", 0));
        return list(found, applications.get());
    };
    const std::string lineRead = byHandle(line);
    const std::string recordRead = byHandle(record);
    ASSERT_EQ(hxdbNamedObjDict(dictionary), RTNORM);
    EXPECT_EQ(shown(Chain(hxdbDictSearch(dictionary, L"Mine", 0)).get()), recordRead);
    hxdbSetWorkingDatabase(&database);
    EXPECT_EQ(lineRead, byHandle(line));
    EXPECT_EQ(recordRead, byHandle(record));
}

TEST(EntityListsOfADrawing, EveryObjectTakesItsOwnListAndStaysTheSame) {
    HxDbDatabase drawing(false);
    ASSERT_EQ(drawing.readDwgFile(L"" KORVEX_SOURCE_DIR "/samples/office-floor.dxf"), Hx::eOk) << "no sample";
    hxdbSetWorkingDatabase(&drawing);
    const Chain everything(hxutBuildList(RTSTR, L"*", 0));
    std::size_t tried = 0;
    for (HxDbStub& stub : drawing.imp()->stubs) {
        zds_name name = {0, 0};
        hxdbGetZdsName(name, HxDbObjectId(&stub));
        const Chain list(hxdbEntGet(name));
        if (!list) {
            continue;
        }
        ++tried;
        const std::string before(currentBlob(stub).groups());
        EXPECT_EQ(hxdbEntMod(list.get()), RTNORM) << shown(list.get());
        const Chain withData(hxdbEntGetX(name, everything.get()));
        EXPECT_EQ(hxdbEntMod(withData.get()), RTNORM) << shown(withData.get());
        EXPECT_EQ(std::string(currentBlob(stub).groups()), before);
    }
    EXPECT_GT(tried, 100U);
    hxdbSetWorkingDatabase(nullptr);
}

}  // namespace
}  // namespace korvex::test
