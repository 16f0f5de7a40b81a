// How the kinds of entities look.
#include "tests/ui/render/scene_fixture.h"

#include <QDir>

namespace korvex::test {
namespace {

TEST_F(SceneTest, ArcsAndBulgesGoWhereTheyShould) {
    load(SceneText()
             .add("0 ARC | 8 RED | 10 50 | 20 50 | 40 40 | 50 0 | 51 90")
             .add("0 LWPOLYLINE | 8 GREEN | 90 2 | 70 0 | 10 120 | 20 50 | 42 1 | 10 160 | 20 50"));
    for (const double scale : {1.0, 0.5}) {
        paint(model(scale));
        const double s = scale;
        const double d = 40 * std::sqrt(0.5);
        EXPECT_GT(count(kRed, std::floor((50 + d) * s) - 1, std::floor((50 + d) * s) - 1,
                        std::floor((50 + d) * s) + 2, std::floor((50 + d) * s) + 2),
                  0);
        EXPECT_EQ(0, count(kRed, 0, 0, 49 * s, 49 * s));
        EXPECT_GT(count(kGreen, 139 * s, 28 * s, 141 * s, 32 * s), 0) << "below its chord";
    }
}

TEST_F(SceneTest, CurvesStaySmoothHoweverFarOneZoomsIn) {
    load(SceneText().add("0 LWPOLYLINE | 8 RED | 90 2 | 70 1 | 10 0 | 20 0 | 42 1 | 10 100 | 20 0 | 42 1\n"
                         "0 CIRCLE | 8 GREEN | 10 50 | 20 0 | 40 60"));
    paint();  // read at a coarse scale first
    for (const double scale : {1e3, 1e6, 1e9}) {
        // Around the points of the circles at 30 degrees, where chords would leave the window's middle.
        for (const double radius : {50.0, 60.0}) {
            SceneView close = model();
            const double x = 50 + radius * std::cos(0.5), y = radius * std::sin(0.5);
            close.toView = HxGeMatrix3d::translation({100, 100}) * HxGeMatrix3d::scaling(scale, -scale, 1) *
                           HxGeMatrix3d::translation({-x, -y});
            paint(close);
            EXPECT_GT(count(radius == 50 ? kRed : kGreen, 98, 98, 102, 102), 0) << scale << " " << radius;
        }
    }
}

TEST_F(SceneTest, FillingsKeepTheirHoles) {
    const std::string square =
        "92 2 | 72 0 | 73 1 | 93 4 | 10 10 | 20 10 | 10 90 | 20 10 | 10 90 | 20 90 | 10 10 | 20 90 | 97 0";
    const std::string hole =
        " | 92 2 | 72 0 | 73 1 | 93 4 | 10 40 | 20 40 | 10 60 | 20 40 | 10 60 | 20 60 | 10 40 | 20 60 | 97 0";
    load(SceneText()
             .add("0 HATCH | 8 RED | 10 0 | 20 0 | 30 0 | 2 SOLID | 70 1 | 71 0 | 91 2 | " + square + hole)
             .add("0 LWPOLYLINE | 8 GREEN | 90 3 | 70 0 | 43 12 | 10 110 | 20 20 | 10 180 | 20 20 | 10 180 | "
                  "20 90")
             .add("0 LWPOLYLINE | 8 BLUE | 90 2 | 70 0 | 43 0.1 | 10 110 | 20 150.5 | 10 180 | 20 150.5"));
    paint();
    EXPECT_EQ(kRed, at(25, 25));
    EXPECT_EQ(kBlack, at(50, 50));
    EXPECT_EQ(kGreen, at(150, 24));
    EXPECT_EQ(kBlack, at(150, 28));
    EXPECT_EQ(kGreen, at(177, 60));
    EXPECT_EQ(kBlue, at(150, 150.5)) << "thinner than a pixel";
    SceneView inside = model(1000);
    inside.toView = HxGeMatrix3d::translation({-25000, 25000}) * inside.toView;
    paint(inside);
    EXPECT_EQ(kSize * kSize, count(kRed, 0, 0, kSize, kSize)) << "all boundaries are outside of the window";
}

TEST_F(SceneTest, MasksCoverWhatIsBelowThem) {
    load(SceneText().add(
        line("RED", 0, 50.5, 200, 50.5) +
        "0 WIPEOUT | 8 GREEN | 10 50 | 20 30 | 11 40 | 21 0 | 12 0 | 22 40 | 13 1 | 23 1 | 280 1 | 71 2 | "
        "91 4 | 14 -0.5 | 24 -0.5 | 14 0.5 | 24 -0.5 | 14 0.5 | 24 0.5 | 14 -0.5 | 24 0.5\n" +
        line("BLUE", 0, 40.5, 200, 40.5)));
    paint();
    EXPECT_EQ(kRed, at(20, 50.5));
    EXPECT_EQ(kBlack, at(70, 50.5));
    EXPECT_EQ(kBlue, at(70, 40.5)) << "drawn after it";
}

TEST_F(SceneTest, TextStandsWhereItsAlignmentPutsIt) {
    const std::string text = "0 TEXT | 8 RED | 40 12 | 1 HHHH | ";
    load(SceneText()
             .add(text + "10 100 | 20 100 | 50 90")
             .add(text + "10 0 | 20 0 | 11 190 | 21 20 | 72 2")
             .add("0 MTEXT | 8 GREEN | 10 10 | 20 190 | 40 10 | 41 0 | 71 1 | 1 {\\fArial;\\H2x;HH}\\PHH"));
    paint();
    EXPECT_GT(ink(87, 101, 100, 140), 60) << "upwards, to the left of its base line";
    EXPECT_EQ(0, ink(101, 95, 200, 150));
    EXPECT_GT(ink(140, 20, 191, 33), 60);
    EXPECT_EQ(0, ink(192, 15, 200, 40)) << "ends at its point";
    EXPECT_EQ(0, ink(140, 5, 200, 19)) << "nothing below the base line";
    EXPECT_GT(ink(8, 180, 60, 190), 20) << "the first line";
    EXPECT_EQ(0, ink(8, 175, 60, 179)) << "between the lines";
    EXPECT_GT(ink(8, 163, 60, 174), 20) << "the second one";
    EXPECT_EQ(0, ink(60, 150, 140, 200)) << "codes are not shown";
    paint(model(0.1));
    EXPECT_GT(ink(0, 0, 20, 20), 3) << "too small to read: a mark";
}

TEST_F(SceneTest, TextMayBeStretchedBeyondAllMeasure) {
    load(SceneText()
             .add("0 TEXT | 8 RED | 40 12 | 41 5e4 | 1 HHHH | 10 0.5 | 20 10")
             .add("0 TEXT | 8 GREEN | 40 12 | 41 1e-9 | 1 HHHH | 10 100.5 | 20 50")
             .add("0 TEXT | 8 BLUE | 40 12 | 51 89.9999 | 1 HHHH | 10 0.5 | 20 100")
             .add("0 TEXT | 8 RED | 40 150 | 1 HHHH | 10 0.5 | 20 50"));
    for (const double scale : {0.001, 0.2, 1.0, 4.0, 100.0, 1e5}) {
        paint(model(scale));
    }
    paint();
    EXPECT_GT(count(kRed, 0, 60, kSize, kSize), 2000) << "letters larger than the picture";
}

TEST_F(SceneTest, AttributesFollowTheirReferenceAndTemplatesAreLeftOut) {
    load(SceneText()
             .block("TAG", line("0", 0, 0.5, 20, 0.5) +
                               "0 ATTDEF | 8 0 | 10 0 | 20 5 | 40 10 | 1 X | 3 Number | 2 HHHHHH | 70 0")
             .add("0 INSERT | 8 RED | 66 1 | 2 TAG | 10 20 | 20 20\n"
                  "0 ATTRIB | 8 0 | 10 100 | 20 100 | 40 20 | 1 HH | 2 NO | 70 0\n0 SEQEND | 8 0"));
    paint();
    EXPECT_GT(count(kRed, 100, 100, 140, 121), 40) << "on layer 0: that of the reference";
    EXPECT_EQ(0, ink(20, 25, 90, 40)) << "the definition";
    EXPECT_EQ(kRed, at(30, 20.5));
}

TEST_F(SceneTest, ArraysFillTheirCells) {
    load(SceneText()
             .block("DOT", line("0", 0, 0.5, 4, 0.5))
             .add("0 INSERT | 8 RED | 2 DOT | 10 0 | 20 0 | 70 20 | 71 10 | 44 10 | 45 20")
             .add("0 INSERT | 8 GREEN | 2 DOT | 41 0.001 | 42 0.001 | 10 0 | 20 10 | 70 30000 | 71 2 | 44 "
                  "0.005 | 45 1"));
    paint();
    EXPECT_EQ(kRed, at(192, 180.5));
    EXPECT_EQ(kBlack, at(197, 180.5));
    EXPECT_GT(count(kGreen, 0, 10, 150, 11), 140) << "cells far smaller than pixels make a line";
    EXPECT_TRUE(painter.isComplete());
}

TEST_F(SceneTest, SmallBlocksKeepTheColourOfWhatIsSeenOfThem) {
    load(SceneText()
             .layer("FROZEN", "70 1 | 62 1")
             .block("DOOR", line("FROZEN", 0, 0, 1, 1) + line("GREEN", 0, 0, 1, 1))
             .block("NOTHING", line("FROZEN", 0, 0, 1, 1))
             .add("0 INSERT | 8 BLUE | 2 DOOR | 41 0.1 | 42 0.1 | 10 50.2 | 20 50.2\n"
                  "0 INSERT | 8 BLUE | 2 NOTHING | 41 0.1 | 42 0.1 | 10 80.2 | 20 80.2"));
    paint();
    EXPECT_EQ(kGreen, at(50.25, 50.25));
    EXPECT_EQ(1, ink(0, 0, kSize, kSize));
}

TEST_F(SceneTest, EndlessLinesCrossTheWindow) {
    load(SceneText().add("0 XLINE | 8 RED | 10 1000 | 20 50.5 | 11 1 | 21 0\n"
                         "0 RAY | 8 GREEN | 10 100.5 | 20 100 | 11 0 | 21 1"));
    paint();
    EXPECT_EQ(kSize, count(kRed, 0, 50, kSize, 51));
    EXPECT_EQ(kGreen, at(100.5, 150));
    EXPECT_EQ(kBlack, at(100.5, 90));
}

TEST_F(SceneTest, PointsLookAsTheDrawingAsksButThoseOfDimensions) {
    load(SceneText()
             .layer("Defpoints", "70 0 | 62 1")
             .header("9 $PDMODE | 70 2 | 9 $PDSIZE | 40 8.0")
             .add("0 POINT | 8 GREEN | 10 50.5 | 20 50.5\n0 POINT | 8 DEFPOINTS | 10 100.5 | 20 50.5"));
    paint();
    EXPECT_EQ(kGreen, at(57.5, 50.5));
    EXPECT_EQ(kGreen, at(50.5, 43.5));
    EXPECT_EQ(kBlack, at(53.5, 53.5));
    EXPECT_EQ(1, count(kRed, 0, 0, kSize, kSize));
}

TEST_F(SceneTest, SampleDrawingsShowSomething) {
    const QDir folder(QStringLiteral(KORVEX_SOURCE_DIR "/samples/small"));
    const QStringList files = folder.entryList({QStringLiteral("*.dxf")});
    ASSERT_FALSE(files.isEmpty());
    for (const QString& name : files) {
        database = std::make_unique<HxDbDatabase>(false);
        ASSERT_EQ(Hx::eOk, database->readDwgFile(folder.filePath(name).toStdWString().c_str()));
        for (const HxDbObjectId& space : {database->modelSpaceId(), database->paperSpaceId()}) {
            paint(view(space, 0.02));
            paint(view(space, 50));
            paint(view(space));
            EXPECT_EQ(0, count(kUntouched, 0, 0, kSize, kSize)) << name.toStdString();
        }
        paint();
        EXPECT_GT(ink(0, 0, kSize, kSize), 20) << name.toStdString();
    }
}

}  // namespace
}  // namespace korvex::test
