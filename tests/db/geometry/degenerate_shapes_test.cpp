// What damaged or strange drawings say about geometry: no crash, no endless loop, nothing touched by chance.
#include "tests/db/geometry/geometry_test_support.h"

#include "host/db/geometry/flatten.h"

#include <random>

namespace korvex::test {
namespace {

const char* const kTypes[] = {
    "LINE",   "LWPOLYLINE", "POLYLINE",  "CIRCLE",   "ARC",    "ELLIPSE", "SPLINE",    "TEXT",   "MTEXT",
    "ATTRIB", "ATTDEF",     "SOLID",     "TRACE",    "3DFACE", "HATCH",   "POINT",     "LEADER", "RAY",
    "XLINE",  "INSERT",     "DIMENSION", "VIEWPORT", "IMAGE",  "WIPEOUT", "ACAD_TABLE"};

void useAll(const Shape& shape) {
    const Box3d box = extents(shape);
    EXPECT_FALSE(std::isnan(box.x.low) || std::isnan(box.y.high));
    for (const HxGeMatrix3d& view : {HxGeMatrix3d(), HxGeMatrix3d::scaling(0, 0, 0),
                                     HxGeMatrix3d::scaling(1e200, 1e-200, 1), HxGeMatrix3d::rotationZ(1)}) {
        hits(shape, view, Box::around({1, 1}, 0.5));
        hits(shape, view, Box::around({1e300, std::nan("")}, 1));
        std::vector<Polyline2> lines;
        flatten(shape.path, view, 0.1, Box::around({0, 0}, 10), lines);
    }
    if (shape.placement) {
        cellsTouching(*shape.placement, {}, {{0, 1}, {0, 1}, {0, 0}}, HxGeMatrix3d(), Box::around({1, 1}, 1));
    }
    if (shape.window) {
        EXPECT_FALSE(std::isnan((shape.window->modelToPaper() * HxGePoint3d(1, 1, 1)).x));
    }
}

TEST(DegenerateShapes, WithoutGroupsAndOfZeros) {
    std::string zeros;
    for (int code = 10; code < 80; ++code) {
        zeros += (zeros.empty() ? "" : " ") + std::to_string(code) + " 0";
    }
    for (const char* type : kTypes) {
        SCOPED_TRACE(type);
        useAll(entityShape({type, ""}, {}, GroupFormat()));
        useAll(shapeOf(type, zeros + " 210 0 220 0 230 0", {zeros, zeros}));
    }
    EXPECT_EQ(ShapeKind::none, shapeOf("LWPOLYLINE", "90 3 70 1").kind);
    EXPECT_EQ(ShapeKind::none, shapeOf("INSERT", "10 0 20 0").kind) << "no block named";
}

TEST(DegenerateShapes, RandomGroups) {
    std::mt19937 random(17);
    const int codes[] = {10, 20, 30, 11, 21, 12, 22, 13, 23, 40, 41, 42, 43, 44,  45,  50,  51, 60,
                         70, 71, 72, 73, 74, 90, 91, 92, 93, 94, 95, 96, 97, 210, 220, 230, 1,  2};
    const char* const values[] = {"0",   "1",    "-1",   "2", "3",   "1e308", "-1e308", "nan",
                                  "inf", "-inf", "1e99", "4", "0.5", "x",     "1e-308", "2147483647"};
    const auto pick = [&](std::size_t n) {
        return std::uniform_int_distribution<std::size_t>(0, n - 1)(random);
    };
    for (int i = 0; i < 20000; ++i) {
        std::string words;
        for (std::size_t n = 1 + pick(40); n > 0; --n) {
            words += (words.empty() ? "" : " ") + std::to_string(codes[pick(std::size(codes))]) + " " +
                     values[pick(std::size(values))];
        }
        const char* type = kTypes[pick(std::size(kTypes))];
        SCOPED_TRACE(type + (" " + words));
        useAll(shapeOf(type, words, {words, words, "10 3 20 3 42 0.7"}));
        if (::testing::Test::HasFailure()) {
            break;
        }
    }
}

TEST(DegenerateShapes, BadVertexBreaksThePolylineOnly) {
    const Shape shape = shapeOf("LWPOLYLINE", "90 5 10 0 20 0 10 4 20 0 10 nan 20 0 10 8 20 0 10 12 20 0");
    EXPECT_TRUE(touches(shape, 2, 0));
    EXPECT_TRUE(touches(shape, 10, 0));
    EXPECT_FALSE(touches(shape, 6, 0));
}

TEST(DegenerateShapes, CurveOfNoSizeIsAPoint) {
    EXPECT_TRUE(touches(shapeOf("CIRCLE", "10 5 20 5 40 0"), 5, 5));
    EXPECT_FALSE(touches(shapeOf("CIRCLE", "10 5 20 5 40 0"), 5.1, 5));
    EXPECT_TRUE(touches(shapeOf("LINE", "10 5 20 5 11 5 21 5"), 5, 5));
}

}  // namespace
}  // namespace korvex::test
