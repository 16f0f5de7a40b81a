// Curves as polylines for drawing: near enough, and with no more points than that takes.
#include "tests/db/geometry/geometry_test_support.h"

#include "host/db/geometry/flatten.h"

namespace korvex::test {
namespace {

TEST(Flatten, MeetsItsToleranceInsideTheWindow) {
    const Shape circle = shapeOf("CIRCLE", "10 0 20 0 40 100");
    std::vector<Polyline2> lines;
    flatten(circle.path, HxGeMatrix3d(), 0.01, Box::around({0, 0}, 200), lines);
    ASSERT_EQ(1u, lines.size());
    for (std::size_t i = 1; i < lines[0].size(); ++i) {
        const Point2 a = lines[0][i - 1];
        const Point2 b = lines[0][i];
        EXPECT_NEAR(100, std::hypot((a.x + b.x) / 2, (a.y + b.y) / 2), 0.011);
        EXPECT_NEAR(100, std::hypot(b.x, b.y), 1e-6);
    }
    EXPECT_LT(lines[0].size(), 600u);
    std::vector<Polyline2> away;
    flatten(circle.path, HxGeMatrix3d(), 0.01, Box::around({900, 0}, 10), away);
    EXPECT_LT(away[0].size(), 8u) << "outside of the window it is cut short";
}

TEST(Flatten, CutsEndlessLinesToTheWindow) {
    std::vector<Polyline2> lines;
    flatten(shapeOf("RAY", "10 0 20 0 11 1 21 0").path, HxGeMatrix3d(), 1, Box::around({50, 0}, 10), lines);
    ASSERT_EQ(1u, lines.size());
    EXPECT_EQ(40, lines[0].front().x);
    EXPECT_EQ(60, lines[0].back().x);
    flatten(shapeOf("RAY", "10 0 20 0 11 -1 21 0").path, HxGeMatrix3d(), 1, Box::around({50, 0}, 10), lines);
    EXPECT_EQ(1u, lines.size());
}

}  // namespace
}  // namespace korvex::test
