// Polylines of both kinds: bulges, widths, closing, meshes.
#include "tests/db/geometry/geometry_test_support.h"

namespace korvex::test {
namespace {

TEST(Polyline, BulgeOfOneIsHalfACircleToTheRight) {
    const Shape shape = shapeOf("LWPOLYLINE", "90 2 70 0 10 0 20 0 42 1 10 4 20 0");
    EXPECT_TRUE(touches(shape, 2, -2));
    EXPECT_FALSE(touches(shape, 2, 2));
    EXPECT_FALSE(touches(shape, 2, 0));
    const Shape other = shapeOf("LWPOLYLINE", "90 2 70 0 10 0 20 0 42 -1 10 4 20 0");
    EXPECT_TRUE(touches(other, 2, 2));
}

TEST(Polyline, ClosingSegmentHasTheLastBulge) {
    const std::string vertices = "10 0 20 0 10 4 20 0 42 0 10 4 20 4 42 1";
    EXPECT_FALSE(touches(shapeOf("LWPOLYLINE", "90 3 70 0 " + vertices), 0, 4, 0.1));
    const Shape closed = shapeOf("LWPOLYLINE", "90 3 70 1 " + vertices);
    EXPECT_TRUE(touches(closed, 0, 4, 0.1));
    EXPECT_FALSE(touches(closed, 2, 2, 0.1));
}

TEST(Polyline, WidthIsPartOfIt) {
    const Shape line = shapeOf("LWPOLYLINE", "90 2 70 0 43 2 10 0 20 0 10 10 20 0");
    EXPECT_TRUE(touches(line, 5, 0));
    EXPECT_TRUE(touches(line, 5, 0.9));
    EXPECT_FALSE(touches(line, 5, 1.1));
    EXPECT_NEAR(-1, extents(line).y.low, 1e-9);
    const Shape tapered = shapeOf("LWPOLYLINE", "90 2 70 0 10 0 20 0 40 0 41 4 10 10 20 0");
    EXPECT_TRUE(touches(tapered, 9, 1.5));
    EXPECT_FALSE(touches(tapered, 1, 1.5));
}

TEST(Polyline, WideBulgeIsARing) {
    for (const char* widths : {"43 1 10 0 20 0 42 1", "10 0 20 0 40 1 41 1.001 42 1"}) {
        const Shape ring = shapeOf("LWPOLYLINE", std::string("90 2 ") + widths + " 10 4 20 0");
        EXPECT_TRUE(touches(ring, 2, -2)) << widths;
        EXPECT_TRUE(touches(ring, 2, -2.4)) << widths;
        EXPECT_FALSE(touches(ring, 2, -2.6)) << widths;
        EXPECT_FALSE(touches(ring, 2, -1.4)) << widths;
    }
}

TEST(Polyline, ElevationAndExtrusionPlaceIt) {
    const Shape shape = shapeOf("LWPOLYLINE", "90 2 38 7 10 1 20 0 10 5 20 0 210 0 220 0 230 -1");
    EXPECT_TRUE(touches(shape, -3, 0));
    EXPECT_NEAR(-7, extents(shape).z.low, 1e-9);
}

TEST(Polyline, OldOneTakesItsVertices) {
    const Shape shape =
        shapeOf("POLYLINE", "66 1 70 1 10 0 20 0 30 3", {"10 0 20 0 42 1", "10 4 20 0", "10 4 20 4"});
    EXPECT_TRUE(touches(shape, 2, -2));
    EXPECT_TRUE(touches(shape, 2, 2)) << "closed";
    EXPECT_EQ(3, extents(shape).z.high);
}

TEST(Polyline, OldOneHandsItsWidthDown) {
    const Shape shape = shapeOf("POLYLINE", "66 1 70 0 40 2 41 2", {"10 0 20 0", "10 9 20 0 40 0 41 0"});
    EXPECT_TRUE(touches(shape, 4, 0.9));
}

TEST(Polyline, FrameOfASplineFitIsNotDrawn) {
    const Shape shape = shapeOf("POLYLINE", "70 4", {"10 0 20 9 70 16", "10 0 20 0 70 8", "10 5 20 0 70 8"});
    EXPECT_TRUE(touches(shape, 3, 0));
    EXPECT_FALSE(touches(shape, 0, 5));
}

TEST(Polyline, SpacePolylineKeepsItsHeights) {
    const Shape shape = shapeOf("POLYLINE", "70 8 40 3 41 3", {"10 0 20 0 30 1 42 1", "10 4 20 0 30 9"});
    EXPECT_TRUE(touches(shape, 2, 0));
    EXPECT_FALSE(touches(shape, 2, 1)) << "neither width nor bulge";
    EXPECT_EQ(9, extents(shape).z.high);
}

TEST(Polyline, MeshIsItsGrid) {
    const std::vector<std::string> points = {"10 0 20 0 70 64", "10 2 20 0 70 64", "10 0 20 2 70 64",
                                             "10 2 20 2 70 64"};
    const Shape mesh = shapeOf("POLYLINE", "70 16 71 2 72 2", points);
    EXPECT_TRUE(touches(mesh, 1, 0));
    EXPECT_TRUE(touches(mesh, 0, 1));
    EXPECT_TRUE(touches(mesh, 2, 1));
    EXPECT_FALSE(touches(mesh, 1, 1));
    EXPECT_EQ(ShapeKind::none, shapeOf("POLYLINE", "70 16 71 30000 72 30000", points).kind);
}

TEST(Polyline, PolyfaceHidesNegativeEdges) {
    const Shape mesh = shapeOf("POLYLINE", "70 64 71 3 72 1",
                               {"10 0 20 0 70 192", "10 4 20 0 70 192", "10 0 20 4 70 192",
                                "10 0 20 0 70 128 71 1 72 -2 73 3", "70 128 71 99 72 -99 73 0"});
    EXPECT_TRUE(touches(mesh, 2, 0));
    EXPECT_FALSE(touches(mesh, 2, 2));
    EXPECT_TRUE(touches(mesh, 0, 2));
}

}  // namespace
}  // namespace korvex::test
