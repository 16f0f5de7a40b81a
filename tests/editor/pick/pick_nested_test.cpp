// Picking through blocks: what is hit, what holds it, where it lies.
#include "tests/editor/pick/pick_fixture.h"

namespace korvex::test {
namespace {

TEST_F(PickTest, NearestInTheBoxWins) {
    load(
        DrawingText().add("0 LINE 5 A1 8 0 10 0 20 0 11 10 21 0 0 LINE 5 A2 8 0 10 0 20 0.15 11 10 21 0.15"));
    EXPECT_EQ("A1", pick(5, 0.05));
    EXPECT_EQ("A2", pick(5, 0.1));
    EXPECT_EQ("", pick(5, 0.3));
    PickHit hit;
    EXPECT_TRUE(pick(model(), 5, 0.3, hit, {}, 0.2));
    EXPECT_EQ("", pick(-1, 0)) << "beyond the end";
}

TEST_F(PickTest, OfEquallyNearOnesTheLastIsOnTop) {
    load(DrawingText().add("0 LINE 5 A1 8 0 10 0 20 0 11 10 21 0 0 CIRCLE 5 A2 8 0 10 0 20 0 40 5 "
                           "0 LINE 5 A3 8 0 10 0 20 0 11 5 21 0"));
    EXPECT_EQ("A3", pick(4, 0));
    EXPECT_EQ("A1", pick(9, 0));
}

TEST_F(PickTest, ThreeLevelsOfBlocks) {
    // Each level moves, turns or scales; base points are taken off.
    load(DrawingText()
             .block("C", "10 1 20 1", "0 LINE 5 A1 8 0 10 1 20 1 11 5 21 1")
             .block("B", "10 0 20 0", "0 INSERT 5 B1 8 0 2 C 10 10 20 0 50 90")
             .block("A", "10 0 20 0", "0 INSERT 5 B2 8 0 2 B 10 0 20 0 41 2 42 2")
             .add("0 INSERT 5 B3 8 0 2 A 10 100 20 100 50 180"));
    // The line runs from (10,0) upwards in B, from (20,0) to (20,8) in A, mirrored about (100,100) here.
    EXPECT_EQ("A1 in B1 in B2 in B3", pick(80, 95));
    EXPECT_EQ("", pick(80, 91));
    EXPECT_EQ("", pick(120, 105));
    PickHit hit;
    ASSERT_TRUE(pick(model(), 80, 95, hit));
    const HxGePoint3d end = hit.transform * HxGePoint3d(5, 1);
    EXPECT_NEAR(80, end.x, 1e-9);
    EXPECT_NEAR(92, end.y, 1e-9);
}

TEST_F(PickTest, EveryCellOfAnArray) {
    load(DrawingText()
             .block("D", "10 0 20 0", "0 LINE 5 A1 8 0 10 0 20 0 11 1 21 0")
             .add("0 INSERT 5 B1 8 0 2 D 10 0 20 0 50 90 70 20000 71 3 44 10 45 5"));
    EXPECT_EQ("A1 in B1", pick(0, 0.5));
    EXPECT_EQ("A1 in B1", pick(-10, 150000.5));
    EXPECT_EQ("", pick(-10, 155));
    EXPECT_EQ("", pick(-15, 0.5)) << "three rows only";
}

TEST_F(PickTest, PartsCountAsWhatTheyBelongTo) {
    load(DrawingText()
             .block("TAGGED", "10 0 20 0",
                    "0 LINE 5 A1 8 0 10 0 20 0 11 1 21 0 0 ATTDEF 5 A2 8 0 10 0 20 5 40 1 1 V 2 TTTT 70 0")
             .block("*D1", "10 0 20 0", "0 LINE 5 A3 8 0 10 50 20 50 11 60 21 50")
             .add("0 POLYLINE 5 A4 8 0 66 1 70 0 0 VERTEX 5 A5 8 0 10 20 20 0 42 1 "
                  "0 VERTEX 5 A6 8 0 10 30 20 0 0 SEQEND 5 A7 8 0")
             .add("0 INSERT 5 B1 8 0 66 1 2 TAGGED 10 0 20 100 0 ATTRIB 5 A8 8 0 10 7 20 107 40 1 1 VALUE 2 "
                  "TTTT "
                  "70 0 0 SEQEND 5 A9 8 0")
             .add("0 DIMENSION 5 AA 8 0 2 *D1 10 55 20 55 70 0")
             .add("0 ATTDEF 5 AB 8 0 10 200 20 0 40 1 1 V 2 TTTT 70 0"));
    EXPECT_EQ("A4", pick(25, -5)) << "the polyline by its bulge";
    EXPECT_EQ("A8 in B1", pick(7.5, 107)) << "attributes lie beside their reference's placing";
    EXPECT_EQ("", pick(0.5, 105)) << "their definitions are not drawn there";
    EXPECT_EQ("A1 in B1", pick(0.5, 100));
    EXPECT_EQ("AB", pick(200.5, 0)) << "a definition of its own is";
    EXPECT_EQ("AA", pick(55, 50)) << "a dimension is one object";
}

TEST_F(PickTest, HiddenAndErasedEntitiesAreNotThere) {
    load(DrawingText().add("0 LINE 5 A1 8 0 60 1 10 0 20 0 11 10 21 0 0 LINE 5 A2 8 0 10 0 20 5 11 10 21 5"));
    EXPECT_EQ("", pick(5, 0));
    EXPECT_EQ("A2", pick(5, 5));
    {
        const HxDbObjectPointer<HxDbEntity> line(byHandle(0xA2), HxDb::kForWrite);
        line->erase();
    }
    EXPECT_EQ("", pick(5, 5));
    {
        const HxDbObjectPointer<HxDbEntity> line(byHandle(0xA2), HxDb::kForWrite, true);
        line->erase(false);
    }
    EXPECT_EQ("A2", pick(5, 5));
}

TEST_F(PickTest, ChangesAreSeenAtTheNextPick) {
    load(DrawingText()
             .block("B", "10 0 20 0", "0 LINE 5 A1 8 0 10 0 20 0 11 5 21 0")
             .block("C", "10 0 20 0", "0 INSERT 5 B2 8 0 2 B 10 0 20 0")
             .add("0 INSERT 5 B1 8 0 2 B 10 0 20 0 0 INSERT 5 B3 8 0 2 C 10 0 20 50"));
    EXPECT_EQ("A1 in B1", pick(2, 0));
    EXPECT_EQ("A1 in B2 in B3", pick(2, 50));
    {
        const HxDbObjectPointer<HxDbBlockReference> reference(byHandle(0xB1), HxDb::kForWrite);
        reference->setPosition({0, 20, 0});
    }
    EXPECT_EQ("", pick(2, 0));
    EXPECT_EQ("A1 in B1", pick(2, 20));
    {
        const HxDbObjectPointer<HxDbBlockReference> inner(byHandle(0xB2), HxDb::kForWrite);
        inner->setPosition({0, 5, 0});
    }
    EXPECT_EQ("A1 in B2 in B3", pick(2, 55)) << "within a block that another holds";
    HxDbObjectId added;
    {
        auto* reference = new HxDbBlockReference();
        const HxDbObjectId block =
            HxDbObjectPointer<HxDbBlockReference>(byHandle(0xB1), HxDb::kForRead)->blockTableRecord();
        const HxDbObjectPointer<HxDbBlockTableRecord> space(model(), HxDb::kForWrite);
        reference->setBlockTableRecord(block);
        reference->setPosition({0, 80, 0});
        ASSERT_EQ(Hx::eOk, space->appendHxDbEntity(added, reference));
        reference->close();
    }
    PickHit hit;
    ASSERT_TRUE(pick(model(), 2, 80, hit));
    EXPECT_EQ(std::vector<HxDbObjectId>{added}, hit.containers);
}

TEST_F(PickTest, BlocksWithinThemselvesEnd) {
    DrawingText drawing;
    drawing.block("SELF", "10 0 20 0",
                  "0 LINE 5 A1 8 0 10 0 20 0 11 5 21 0 0 INSERT 5 B1 8 0 2 SELF 10 1 20 1");
    drawing.block("L0", "10 0 20 0", "0 LINE 5 A2 8 0 10 100 20 0 11 105 21 0");
    for (int level = 1; level <= 8; ++level) {
        std::string inserts;
        for (int i = 0; i < 12; ++i) {
            char handle[16];
            std::snprintf(handle, sizeof handle, "%X", 0x1000 + level * 16 + i);
            inserts += (i ? " 0 INSERT 5 " : "0 INSERT 5 ") + std::string(handle) + " 8 0 2 L" +
                       std::to_string(level - 1) + " 10 0 20 0";
        }
        drawing.block("L" + std::to_string(level), "10 0 20 0", inserts);
    }
    drawing.add("0 INSERT 5 B2 8 0 2 SELF 10 0 20 0 0 INSERT 5 B3 8 0 2 L8 10 0 20 0");
    load(drawing);
    EXPECT_EQ("A1 in B2", pick(2, 0));
    PickHit hit;
    EXPECT_TRUE(pick(model(), 102, 0, hit)) << "430 million lines on top of each other";
    HxGePoint3d low, high;
    EXPECT_TRUE(spaceExtents(database(), model(), low, high));
}

TEST_F(PickTest, DeepNestingEndsSomewhere) {
    DrawingText drawing;
    drawing.block("L0", "10 0 20 0", "0 LINE 5 A1 8 0 10 0 20 0 11 5 21 0");
    for (int level = 1; level <= 3000; ++level) {
        char handle[16];
        std::snprintf(handle, sizeof handle, "%X", 0x1000 + level);
        drawing.block("L" + std::to_string(level), "10 0 20 0",
                      "0 INSERT 5 " + std::string(handle) + " 8 0 2 L" + std::to_string(level - 1) +
                          " 10 0 20 0");
    }
    drawing.add("0 INSERT 5 B1 8 0 2 L60 10 0 20 0 0 INSERT 5 B2 8 0 2 L3000 10 0 20 50");
    load(drawing);
    PickHit hit;
    ASSERT_TRUE(pick(model(), 2, 0, hit));
    EXPECT_EQ(61u, hit.containers.size());
    EXPECT_EQ("", pick(2, 50));
}

TEST_F(PickTest, NonsenseIsNotPicked) {
    load(DrawingText().add("0 LINE 5 A1 8 0 10 0 20 0 11 10 21 0 0 INSERT 5 B1 8 0 2 NONE 10 0 20 0 "
                           "0 INSERT 5 B2 8 0 2 *Model_Space 10 0 20 0 41 0 42 0"));
    PickHit hit;
    EXPECT_FALSE(pick(model(), std::nan(""), 0, hit));
    EXPECT_FALSE(pick(model(), 5, 0, hit, {}, -1));
    EXPECT_FALSE(pick({}, 5, 0, hit));
    EXPECT_TRUE(pick(model(), 5, 0, hit));
}

}  // namespace
}  // namespace korvex::test
