// Freezing by name, called directly: results for layers that are frozen, missing or held by someone else.
#include "tests/module/module_fixture.h"

#include "tools/freeze_layer.h"

namespace korvex::test {
namespace {

using FreezeLayer = DrawingTest;

TEST_F(FreezeLayer, FrozenAlreadyIsDoneAndReportedAgain) {
    int byName = 0;
    int asPicked = 0;
    define(L"FREEZE", [&] {
        const zds_name none = {0, 0};
        const HxModuleHandle library = LoadResourceDll(builtFile("KvLayerManagerRes.dll").c_str());
        {
            const HxResourceOverride resources(library);
            byName = FrzLayerByName(L"walls");
            asPicked = FrzOneLayer(L"WALLS", 1, none);
        }
        hxFreeResourceDll(library);
    });
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(contains(run(L"FREEZE\n"), L"Layer \"WALLS\" is frozen."));
        EXPECT_EQ(byName, RTNORM);
        EXPECT_EQ(asPicked, RTNORM);
        EXPECT_EQ(frozen(), Names{L"WALLS"});
    }
    EXPECT_EQ(failures, Lines());
}

TEST_F(FreezeLayer, TellsPicksThatFrozeNothing) {
    const zds_name none = {0, 0};
    EXPECT_EQ(FrzOneLayer(L"spare", 1, none), -1);
    EXPECT_EQ(FrzOneLayer(L"PLAN|NONE", 1, none), RTNORM);
    run(L"LAYOUT S Layout1\nPSPACE\n");
    EXPECT_EQ(FrzOneLayer(L"SPARE", 1, none), -1);
    run(L"MSPACE\n");
    EXPECT_EQ(FrzOneLayer(L"PLAN|NONE", 1, none), -1);
    EXPECT_EQ(FrzOneLayer(L"PLAN|NONE", 0, none), RTNORM);
    EXPECT_EQ(FrzOneLayer(L"walls", 1, none), RTNORM);
    EXPECT_EQ(frozenHere(), Names{L"WALLS"});
    EXPECT_EQ(frozen(), Names());
}

TEST_F(FreezeLayer, OnlyTheCurrentLayerIsToldToBeCurrent) {
    run(L"LAYOUT S Layout1\nMSPACE\n");
    bool isHeld = true;
    define(L"FREEZE", [&] {
        const zds_name none = {0, 0};
        const HxModuleHandle library = LoadResourceDll(builtFile("KvLayerManagerRes.dll").c_str());
        {
            const HxResourceOverride resources(library);
            const HxDbObjectPointer<HxDbLayerTableRecord> held(isHeld ? layer(L"SPARE") : HxDbObjectId(),
                                                               HxDb::kForRead);
            EXPECT_EQ(FrzOneLayer(L"spare", 0, none), RTNORM);
        }
        hxFreeResourceDll(library);
    });
    EXPECT_FALSE(contains(run(L"FREEZE\n"), L"is the current layer")) << "it is held open, and that is why";
    isHeld = false;
    EXPECT_TRUE(contains(run(L"FREEZE\n"), L"\"spare\" is the current layer"));
    EXPECT_EQ(frozen(), Names());
    EXPECT_EQ(failures, Lines());
}

TEST_F(FreezeLayer, FailsWithoutLayerOrDatabase) {
    EXPECT_EQ(FrzLayerByName(nullptr), RTERROR);
    EXPECT_EQ(FrzLayerByName(L""), RTERROR);
    EXPECT_EQ(FrzLayerByName(L"PLAN|NONE"), RTERROR);
    EXPECT_EQ(FrzLayerByName(L"SPARE"), RTERROR);  // the current layer
    {
        const HxDbObjectPointer<HxDbLayerTableRecord> held(layer(L"WALLS"), HxDb::kForRead);
        EXPECT_EQ(FrzLayerByName(L"WALLS"), RTERROR);
    }
    hxdbSetWorkingDatabase(nullptr);
    EXPECT_EQ(FrzLayerByName(L"WALLS"), RTERROR);
    hxdbSetWorkingDatabase(&database());
    EXPECT_EQ(frozen(), Names());
    EXPECT_EQ(FrzLayerByName(L"WALLS"), RTNORM);
}

}  // namespace
}  // namespace korvex::test
