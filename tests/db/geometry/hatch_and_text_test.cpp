// Hatch boundaries of both forms, and the boxes of texts.
#include "tests/db/geometry/geometry_test_support.h"

namespace korvex::test {
namespace {

const std::string kHatch = "10 0 20 0 30 0 210 0 220 0 230 1 2 SOLID ";

TEST(Hatch, PolylineLoopsWithAHole) {
    const std::string loops =
        "71 0 91 2 92 3 72 0 73 1 93 4 10 0 20 0 10 10 20 0 10 10 20 10 10 0 20 10 97 0 "
        "92 2 72 1 73 1 93 2 10 3 20 5 42 1 10 7 20 5 42 1 97 0 75 0 76 1 98 1 10 50 20 50";
    const Shape solid = shapeOf("HATCH", kHatch + "70 1 " + loops);
    EXPECT_TRUE(touches(solid, 1, 1));
    EXPECT_FALSE(touches(solid, 5, 5)) << "in the round hole";
    EXPECT_TRUE(touches(solid, 5, 3)) << "on its edge";
    EXPECT_FALSE(touches(solid, 50, 50)) << "a seed point is no vertex";
    const Shape pattern = shapeOf("HATCH", kHatch + "70 0 " + loops);
    EXPECT_FALSE(touches(pattern, 1, 1));
    EXPECT_TRUE(touches(pattern, 10, 5));
}

TEST(Hatch, EdgeLoopOfAllKinds) {
    // A line, a clockwise half circle, half an ellipse and a spline back.
    const Shape shape = shapeOf(
        "HATCH", kHatch +
                     "70 0 91 1 92 1 93 4 72 1 10 0 20 0 11 4 21 0 "
                     "72 2 10 6 20 0 40 2 50 180 51 360 73 0 "
                     "72 3 10 8 20 3 11 0 21 -3 40 0.5 50 0 51 180 73 1 "
                     "72 4 94 1 73 0 74 0 95 4 96 2 40 0 40 0 40 1 40 1 10 8 20 6 10 0 20 0 97 0 97 0 75 0");
    EXPECT_TRUE(touches(shape, 2, 0));
    EXPECT_TRUE(touches(shape, 6, 2)) << "clockwise from the left over the top";
    EXPECT_FALSE(touches(shape, 6, -2));
    EXPECT_TRUE(touches(shape, 9.5, 3));
    EXPECT_FALSE(touches(shape, 6.5, 3));
    EXPECT_TRUE(touches(shape, 4, 3)) << "the spline of degree 1";
}

TEST(Hatch, FullCircleEdgeOfASolid) {
    const Shape shape =
        shapeOf("HATCH", kHatch + "70 1 91 1 92 1 93 1 72 2 10 5 20 5 40 3 50 0 51 360 73 1 97 0 75 0");
    EXPECT_TRUE(touches(shape, 5, 5));
    EXPECT_TRUE(touches(shape, 5, 8));
    EXPECT_FALSE(touches(shape, 8, 8));
    EXPECT_FALSE(touches(shape, 1, 5)) << "level with where the circle begins and ends";
}

TEST(TextBox, StandsOnItsBaseLine) {
    const Shape shape = shapeOf("TEXT", "10 10 20 10 40 2 1 ABCDEFGH 50 90");
    EXPECT_TRUE(touches(shape, 9, 12)) << "runs upwards, its body to the left";
    EXPECT_FALSE(touches(shape, 11, 12));
    EXPECT_FALSE(touches(shape, 9, 9));
}

TEST(TextBox, IsJustifiedAtItsSecondPoint) {
    const std::string text = "40 2 1 ABCDEFGH 10 0 20 0 11 50 21 50 ";
    EXPECT_TRUE(touches(shapeOf("TEXT", text + "72 2"), 47, 51)) << "right";
    EXPECT_FALSE(touches(shapeOf("TEXT", text + "72 2"), 52, 51));
    EXPECT_TRUE(touches(shapeOf("TEXT", text + "72 1 73 3"), 52, 49)) << "top centre";
    EXPECT_FALSE(touches(shapeOf("TEXT", text + "72 1 73 3"), 52, 51));
    EXPECT_TRUE(touches(shapeOf("ATTRIB", text + "2 TAG 70 0 72 1 74 3"), 52, 49));
    EXPECT_TRUE(touches(shapeOf("TEXT", text + "72 5"), 25, 25)) << "fitted between its points";
    EXPECT_FALSE(touches(shapeOf("TEXT", text + "72 0"), 50, 51)) << "left: the first point counts";
    EXPECT_TRUE(touches(shapeOf("TEXT", text + "71 2"), -2, 1)) << "backwards";
}

TEST(TextBox, ParagraphGrowsWithItsLines) {
    const std::string head = "10 0 20 0 40 1 71 1 ";
    const Shape one = shapeOf("MTEXT", head + "1 ABCD");
    const Shape three = shapeOf("MTEXT", head + "1 {\\fArial|b0;AB}CD\\PEF\\PGH");
    EXPECT_TRUE(touches(one, 0.5, -0.5));
    EXPECT_FALSE(touches(one, 0.5, -2));
    EXPECT_TRUE(touches(three, 0.5, -2));
    EXPECT_NEAR(extents(one).x.high, extents(three).x.high, 1e-9) << "codes have no width";
    const Shape wrapped = shapeOf("MTEXT", head + "41 3 1 ABCDEFGHIJKLMNOP");
    EXPECT_LT(extents(wrapped).x.high, 3.01);
    EXPECT_LT(extents(wrapped).y.low, -3);
    const Shape measured = shapeOf("MTEXT", "10 0 20 0 40 1 71 5 42 8 43 4 11 0 21 1 1 A");
    EXPECT_NEAR(-2, extents(measured).x.low, 1e-9);
    EXPECT_NEAR(4, extents(measured).y.high, 1e-9);
}

TEST(TextBox, AttributesMayBeInvisible) {
    const std::string text = "40 2 1 VALUE 2 TAG 10 0 20 0 ";
    EXPECT_EQ(ShapeKind::none, shapeOf("ATTRIB", text + "70 1").kind);
    EXPECT_EQ(ShapeKind::text, shapeOf("ATTRIB", text + "70 0").kind);
    EXPECT_TRUE(shapeOf("ATTDEF", text + "70 0").isTemplate);
    EXPECT_FALSE(shapeOf("ATTDEF", text + "70 2").isTemplate) << "a constant one is drawn";
}

}  // namespace
}  // namespace korvex::test
