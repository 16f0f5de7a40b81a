// Which layers show and hide what picks find: within blocks, in external references, in viewports.
#include "host/editor/xrefs.h"
#include "tests/editor/pick/pick_fixture.h"

namespace korvex::test {
namespace {

TEST_F(PickTest, OffAndFrozenLayersCannotBePicked) {
    load(DrawingText()
             .layer("OFF", 0, -7)
             .layer("FROZEN", 1)
             .layer("LOCKED", 4)
             .add("0 LINE 5 A1 8 OFF 10 0 20 0 11 9 21 0 0 LINE 5 A2 8 FROZEN 10 0 20 1 11 9 21 1 "
                  "0 LINE 5 A3 8 LOCKED 10 0 20 2 11 9 21 2 0 LINE 5 A4 8 NOSUCH 10 0 20 3 11 9 21 3"));
    EXPECT_EQ("", pick(5, 0));
    EXPECT_EQ("", pick(5, 1));
    EXPECT_EQ("A3", pick(5, 2));
    EXPECT_EQ("A4", pick(5, 3));
    turnOff(L"OFF", false);
    freeze(L"LOCKED");
    EXPECT_EQ("A1", pick(5, 0)) << "layers count as they are at the pick";
    EXPECT_EQ("", pick(5, 2));
}

TEST_F(PickTest, LayerZeroTakesTheLayerOfTheReference) {
    load(DrawingText()
             .layer("INNER")
             .layer("OUTER")
             .layer("OTHER")
             .block("C", "10 0 20 0",
                    "0 LINE 5 A1 8 0 10 0 20 0 11 9 21 0 0 LINE 5 A2 8 OTHER 10 0 20 1 11 9 21 1")
             .block("B", "10 0 20 0", "0 INSERT 5 B1 8 0 2 C 10 0 20 0")
             .block("A", "10 0 20 0", "0 INSERT 5 B2 8 INNER 2 C 10 0 20 0")
             .add("0 INSERT 5 B3 8 OUTER 2 B 10 0 20 0 0 INSERT 5 B4 8 OUTER 2 A 10 0 20 50 "
                  "0 INSERT 5 B5 8 OUTER 66 1 2 C 10 0 20 90 0 ATTRIB 5 A3 8 0 10 0 20 95 40 1 1 V 2 T 70 0 "
                  "0 SEQEND 5 A4 8 OUTER"));
    turnOff(L"OUTER");
    EXPECT_EQ("", pick(5, 0)) << "0 in a reference on 0 in a reference that is off";
    EXPECT_EQ("A2 in B1 in B3", pick(5, 1)) << "an off reference shows what is on other layers";
    EXPECT_EQ("A1 in B2 in B4", pick(5, 50)) << "0 in a reference on a layer that is on";
    EXPECT_EQ("", pick(0.3, 95.5)) << "an attribute on 0 of an off reference";
    turnOff(L"OUTER", false);
    EXPECT_EQ("A3 in B5", pick(0.3, 95.5));
    freeze(L"OUTER");
    EXPECT_EQ("", pick(5, 1)) << "a frozen reference hides all that is in it";
    EXPECT_EQ("", pick(5, 51));
    freeze(L"OUTER", false);
    freeze(L"INNER");
    EXPECT_EQ("", pick(5, 51));
    EXPECT_EQ("A2 in B1 in B3", pick(5, 1));
}

/// A sheet with two windows on model space: 1:10 on the left, turned by a quarter on the right.
DrawingText sheet() {
    return DrawingText()
        .layer("WALLS")
        .layer("FRAMES")
        .add("0 LINE 5 A1 8 WALLS 10 0 20 100 11 1000 21 100 0 LINE 5 A2 8 0 10 100 20 0 11 100 21 1000")
        .add("0 LINE 5 A3 67 1 8 0 10 0 20 -5 11 200 21 -5")
        .add("0 VIEWPORT 5 B1 67 1 8 0 10 0 20 0 40 900 41 900 68 1 69 1 12 0 22 0 45 900")
        .add("0 VIEWPORT 5 B2 67 1 8 FRAMES 10 50 20 50 40 100 41 100 68 2 69 2 12 500 22 500 45 1000 90 "
             "32768")
        .add(
            "0 VIEWPORT 5 B3 67 1 8 FRAMES 10 200 20 50 40 100 41 100 68 3 69 3 12 -500 22 500 45 1000 51 90")
        .add("0 VIEWPORT 5 B4 67 1 8 FRAMES 10 350 20 50 40 100 41 100 68 0 69 4 12 500 22 500 45 1000");
}

TEST_F(PickTest, FromThePaperThroughAViewport) {
    load(sheet());
    EXPECT_EQ("A1", pickIn(paper(), 30, 10)) << "model (300,100)";
    EXPECT_EQ("A2", pickIn(paper(), 10, 70));
    EXPECT_EQ("A1", pickIn(paper(), 240, 50)) << "turned: model (500,100)";
    EXPECT_EQ("", pickIn(paper(), 330, 10)) << "the viewport is off";
    EXPECT_EQ("", pickIn(paper(), 130, 10)) << "outside of both";
    EXPECT_EQ("A3", pickIn(paper(), 60, -5));
    EXPECT_EQ("B2", pickIn(paper(), 100, 50)) << "the frame itself";
    EXPECT_EQ("", pickIn(paper(), 450, 0)) << "the sheet's own viewport has no frame";
    turnOff(L"FRAMES");
    EXPECT_EQ("", pickIn(paper(), 100, 50));
    EXPECT_EQ("A1", pickIn(paper(), 30, 10)) << "a window without frame";
    PickHit hit;
    ASSERT_TRUE(pick(paper(), 30, 10, hit));
    const HxGePoint3d start = hit.transform * HxGePoint3d(0, 100);
    EXPECT_NEAR(0, start.x, 1e-9);
    EXPECT_NEAR(10, start.y, 1e-9);
}

TEST_F(PickTest, LayersFrozenInAViewport) {
    load(sheet());
    HxArray<HxDbObjectId> layers;
    layers.append(layer(L"WALLS"));
    {
        const HxDbObjectPointer<HxDbViewport> viewport(byHandle(0xB2), HxDb::kForWrite);
        ASSERT_EQ(Hx::eOk, viewport->freezeLayersInViewport(layers));
    }
    EXPECT_EQ("", pickIn(paper(), 30, 10));
    EXPECT_EQ("A1", pickIn(paper(), 240, 50));
    EXPECT_EQ("", pickIn(model(), 300, 100, byHandle(0xB2))) << "working in the viewport";
    EXPECT_EQ("A1", pickIn(model(), 300, 100, byHandle(0xB3)));
    EXPECT_EQ("A1", pick(300, 100));
}

TEST_F(PickTest, WindowsMayBeClippedAndViewsTilted) {
    load(DrawingText()
             .add("0 LINE 5 A1 8 0 10 0 20 0 30 50 11 100 21 0 31 50")
             .add("0 CIRCLE 5 C1 67 1 8 0 10 50 20 50 40 20")
             .add("0 VIEWPORT 5 B1 67 1 8 0 10 0 20 0 40 900 41 900 68 1 69 1 12 0 22 0 45 900")
             .add("0 VIEWPORT 5 B2 67 1 8 0 10 50 20 50 40 100 41 100 68 2 69 2 12 50 22 50 45 100 90 98304 "
                  "340 C1 16 0 26 -1 36 0"));
    EXPECT_EQ("A1", pickIn(paper(), 50, 50)) << "seen from the front, the height is up";
    EXPECT_EQ("", pickIn(paper(), 20, 50)) << "outside of the round window";
    PickRequest request;
    PickHit hit;
    request.database = &database();
    request.space = model();
    request.viewport = byHandle(0xB2);
    request.point = {50, 7, 50};
    request.halfSize = 0.1;
    EXPECT_TRUE(pickAt(request, hit)) << "along the direction of view";
}

TEST_F(PickTest, ExternalReferences) {
    const std::wstring path =
        write("plan.dxf", DrawingText()
                              .layer("WALLS")
                              .block("DOOR", "10 0 20 0", "0 LINE 5 A3 8 WALLS 10 0 20 0 11 9 21 0")
                              .add("0 LINE 5 A1 8 WALLS 10 0 20 0 11 9 21 0 "
                                   "0 LINE 5 A2 8 0 10 0 20 1 11 9 21 1 "
                                   "0 INSERT 5 B9 8 0 2 DOOR 10 0 20 5"));
    load(DrawingText().layer("SITE").add("0 INSERT 5 B1 8 SITE 2 PLAN 10 100 20 100 41 2 42 2 50 90"));
    EXPECT_EQ("", pick(100, 105));
    HxDbObjectId block;
    std::wstring error;
    ASSERT_EQ(Hx::eOk, attachXref(database(), path, L"PLAN", false, block, error))
        << testing::PrintToString(error);
    EXPECT_EQ("A1 in B1", pick(100, 105));
    EXPECT_EQ("A2 in B1", pick(98, 105));
    EXPECT_EQ("A3 in B9 in B1", pick(90, 105));
    freeze(L"PLAN|WALLS");
    EXPECT_EQ("", pick(100, 105));
    EXPECT_EQ("", pick(90, 105));
    EXPECT_EQ("A2 in B1", pick(98, 105)) << "its layer 0 is that of the reference";
    turnOff(L"SITE");
    EXPECT_EQ("", pick(98, 105));
    ASSERT_EQ(Hx::eOk, reloadXref(database(), block, error));
    turnOff(L"SITE", false);
    EXPECT_EQ("A2 in B1", pick(98, 105));
}

}  // namespace
}  // namespace korvex::test
