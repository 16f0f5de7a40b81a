// Which colour, pattern and width things are drawn with: by layer, by block through nesting, faded, blended.
#include "host/editor/xrefs.h"
#include "tests/ui/render/scene_fixture.h"

#include <QTemporaryDir>

namespace korvex::test {
namespace {

TEST_F(SceneTest, LayerZeroAndByBlockTakeWhatTheReferenceHasThroughNesting) {
    load(SceneText()
             .block("INNER", line("0", 0, 0.5, 40, 0.5) + line("BLUE", 0, 10.5, 40, 10.5, "62 0") +
                                 line("BLUE", 0, 20.5, 40, 20.5) + line("0", 0, 30.5, 40, 30.5, "62 2"))
             .block("OUTER", "0 INSERT | 8 0 | 62 0 | 2 INNER | 10 50 | 20 50")
             .add("0 INSERT | 8 RED | 62 3 | 2 OUTER | 10 0 | 20 0\n0 INSERT | 8 GREEN | 2 OUTER | 10 100 | "
                  "20 0"));
    paint();
    EXPECT_EQ(kRed, at(70, 50.5)) << "layer 0, by layer: the layer of the outermost reference";
    EXPECT_EQ(kGreen, at(70, 60.5)) << "by block: the outermost reference's own colour";
    EXPECT_EQ(kBlue, at(70, 70.5)) << "a layer of its own";
    EXPECT_EQ(kYellow, at(70, 80.5)) << "a colour of its own";
    EXPECT_EQ(kGreen, at(170, 60.5)) << "by block of a reference that is by layer";
    EXPECT_EQ(kBlack, at(70, 55.5));
}

TEST_F(SceneTest, ByBlockOutsideOfBlocksIsInk) {
    load(SceneText().add(line("RED", 10, 10.5, 90, 10.5, "62 0") +
                         line("RED", 10, 20.5, 90, 20.5, "420 8421504")));
    paint();
    EXPECT_EQ(kWhite, at(50, 10.5));
    EXPECT_EQ(qRgb(128, 128, 128), at(50, 20.5)) << "true colour";
}

TEST_F(SceneTest, LooksCountAlsoBehindTheMarkerOfTheClass) {
    const std::string head = "0 LINE | 100 AcDbEntity | 100 AcDbLine | ";
    load(SceneText()
             .add(head + "8 RED | 10 10 | 20 10.5 | 11 90 | 21 10.5")
             .add(head + "10 10 | 20 20.5 | 11 90 | 21 20.5 | 8 RED | 62 3")
             .add(head + "8 RED | 10 10 | 20 30.5 | 11 90 | 21 30.5 | 60 1"));
    paint();
    EXPECT_EQ(kRed, at(50, 10.5));
    EXPECT_EQ(kGreen, at(50, 20.5));
    EXPECT_EQ(kBlack, at(50, 30.5)) << "hidden";
}

TEST_F(SceneTest, OffAndFrozenLayersAreNotDrawnLockedOnesFaded) {
    load(SceneText()
             .layer("OFF", "70 0 | 62 -1")
             .layer("FROZEN", "70 1 | 62 1")
             .layer("LOCKED", "70 4 | 62 1")
             .block("B", line("RED", 0, 0.5, 40, 0.5) + line("0", 0, 10.5, 40, 10.5))
             .add(line("OFF", 10, 10.5, 90, 10.5) + line("FROZEN", 10, 20.5, 90, 20.5) +
                  line("LOCKED", 10, 30.5, 90, 30.5))
             .add("0 INSERT | 8 OFF | 2 B | 10 10 | 20 50\n0 INSERT | 8 FROZEN | 2 B | 10 10 | 20 80"));
    style.lockedFade = 40;
    paint();
    EXPECT_EQ(kBlack, at(50, 10.5));
    EXPECT_EQ(kBlack, at(50, 20.5));
    EXPECT_EQ(qRgb(153, 0, 0), at(50, 30.5));
    EXPECT_EQ(kRed, at(30, 50.5)) << "what is on a layer of its own is seen in a reference that is off";
    EXPECT_EQ(kBlack, at(30, 60.5));
    EXPECT_EQ(kBlack, at(30, 80.5)) << "a frozen reference hides all of it";
}

TEST_F(SceneTest, TransparencyShowsWhatIsBelow) {
    load(SceneText().add(
        "0 SOLID | 8 RED | 10 0 | 20 0 | 11 100 | 21 0 | 12 0 | 22 100 | 13 100 | 23 100\n"
        "0 SOLID | 5 A0 | 8 BLUE | 440 33554559 | 10 50 | 20 50 | 11 150 | 21 50 | 12 50 | 22 150 | 13 "
        "150 | 23 150"));
    paint();
    EXPECT_EQ(kRed, at(20, 20));
    const QRgb both = at(75, 75);
    EXPECT_NEAR(128, qRed(both), 3);
    EXPECT_NEAR(127, qBlue(both), 3);
    EXPECT_NEAR(127, qBlue(at(120, 120)), 3) << "over the ground";
    {
        const HxDbObjectPointer<HxDbLayerTableRecord> red(layer(L"RED"), HxDb::kForWrite);
        ASSERT_EQ(Hx::eOk, red->setTransparency(HxCmTransparency(51)));
    }
    paint();
    EXPECT_NEAR(51, qRed(at(20, 20)), 3) << "of the layer";
}

TEST_F(SceneTest, DashesLeaveGapsUnlessTheyAreTooFineToSee) {
    load(SceneText()
             .linetype("DASHED", "73 2 | 40 20 | 49 10 | 49 -10")
             .layer("DASHES", "62 1 | 70 0 | 6 DASHED")
             .block("B", line("0", 0, 0.5, 100, 0.5, "6 ByBlock"))
             .header("9 $LTSCALE | 40 2.0")
             .add(line("DASHES", 0, 10.5, 200, 10.5) + line("RED", 0, 20.5, 200, 20.5, "6 DASHED | 48 0.5") +
                  line("RED", 0, 30.5, 200, 30.5, "6 DASHED | 48 0.01"))
             .add("0 INSERT | 8 RED | 6 DASHED | 2 B | 10 0 | 20 50"));
    paint();
    EXPECT_EQ(kRed, at(10, 10.5));
    EXPECT_EQ(kBlack, at(30, 10.5)) << "by layer, scaled by the drawing";
    EXPECT_EQ(100, count(kRed, 0, 10, 200, 11));
    EXPECT_EQ(kRed, at(5, 20.5));
    EXPECT_EQ(kBlack, at(15, 20.5)) << "and by the entity";
    EXPECT_EQ(200, count(kRed, 0, 30, 200, 31)) << "too fine";
    EXPECT_EQ(kBlack, at(30, 50.5)) << "by block";
    const int before = count(kRed, 100, 10, 200, 11);
    SceneView moved = model();
    moved.toView = HxGeMatrix3d::translation({-1e6, 0}) * moved.toView;
    load(SceneText()
             .linetype("DASHED", "73 2 | 40 20 | 49 10 | 49 -10")
             .header("9 $LTSCALE | 40 2.0")
             .add(line("RED", 0, 10.5, 2e6, 10.5, "6 DASHED")));
    moved.database = database.get();
    moved.space = database->modelSpaceId();
    paint(moved);
    EXPECT_EQ(before, count(kRed, 100, 10, 200, 11))
        << "in the middle of a line that is far longer than the window";
}

TEST_F(SceneTest, LineweightsShowWhenTheyAreWanted) {
    load(SceneText().layer("WIDE", "62 1 | 70 0 | 370 100").add(line("WIDE", 20, 50.5, 180, 50.5)));
    paint();
    EXPECT_EQ(1, count(kRed, 100, 30, 101, 70));
    style.lineweights = true;
    style.pixelsPerMillimetre = 10;
    paint();
    EXPECT_NEAR(10, count(kRed, 100, 30, 101, 70), 1);
}

TEST_F(SceneTest, ExternalReferencesAreDrawnWithTheirOwnLayers) {
    QTemporaryDir folder;
    const std::string path = folder.filePath("wing.dxf").toStdString();
    putFile(path, SceneText().layer("WALL", "62 2 | 70 0").add(line("WALL", 10, 10.5, 90, 10.5)).text());
    load(SceneText());
    HxDbObjectId block;
    std::wstring error;
    ASSERT_EQ(Hx::eOk,
              attachXref(*database, toWide(QString::fromStdString(path)), L"WING", false, block, error))
        << toUtf8(error);
    HxDbObjectPointer<HxDbBlockTableRecord> space(database->modelSpaceId(), HxDb::kForWrite);
    auto* reference = new HxDbBlockReference;
    HxDbObjectId id;
    ASSERT_EQ(Hx::eOk, space->appendHxDbEntity(id, reference));
    reference->setBlockTableRecord(block);
    reference->close();
    space.close();
    paint();
    EXPECT_EQ(kYellow, at(50, 10.5));
    {
        const HxDbObjectPointer<HxDbLayerTableRecord> wall(layer(L"WING|WALL"), HxDb::kForWrite);
        ASSERT_TRUE(wall);
        wall->setColor(HxCmColor::byIndex(3));
    }
    paint();
    EXPECT_EQ(kGreen, at(50, 10.5)) << "as the drawing that refers to it shows the layer";
    freeze(*database, L"WING|WALL");
    paint();
    EXPECT_EQ(kBlack, at(50, 10.5));
}

}  // namespace
}  // namespace korvex::test
