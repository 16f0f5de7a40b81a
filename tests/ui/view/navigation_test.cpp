// Zooming and panning by hand.
#include "tests/ui/view/view_fixture.h"

namespace korvex::test {
namespace {

const DrawingText kLine = DrawingText().add("0 LINE 5 A1 8 0 10 50 20 50 11 350 21 250");

TEST_F(ViewTest, WheelKeepsThePointUnderTheCursor) {
    open(kLine);
    const QPoint at(300, 80);
    const HxGePoint3d before = pointAt(at);
    EXPECT_NEAR(300, before.x, 1e-9);
    EXPECT_NEAR(220, before.y, 1e-9);
    turnWheel(at, 3);
    EXPECT_NEAR(before.x, pointAt(at).x, 1e-9);
    EXPECT_NEAR(before.y, pointAt(at).y, 1e-9);
    EXPECT_LT(screenView(database()).height, 200);
    turnWheel(at, -3);
    EXPECT_NEAR(300, screenView(database()).height, 1e-9);
    turnWheel(at, -2000);
    turnWheel(at, 4000);
    EXPECT_GT(screenView(database()).height, 0) << "never so far that nothing comes back";
}

}  // namespace
}  // namespace korvex::test
