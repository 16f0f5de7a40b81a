// References, their arrays, and viewports: where they put what they show.
#include "tests/db/geometry/geometry_test_support.h"

#include <random>

namespace korvex::test {
namespace {

void expectPoint(double x, double y, double z, const HxGePoint3d& p) {
    EXPECT_NEAR(x, p.x, 1e-9);
    EXPECT_NEAR(y, p.y, 1e-9);
    EXPECT_NEAR(z, p.z, 1e-9);
}

TEST(Placement, InsertTurnsScalesAndMovesAboutTheBasePoint) {
    const Shape shape = shapeOf("INSERT", "2 DOOR 10 100 20 50 41 2 42 3 50 90");
    ASSERT_EQ(ShapeKind::reference, shape.kind);
    EXPECT_EQ(L"DOOR", shape.placement->block);
    const HxGeMatrix3d m = shape.placement->cell({1, 1, 0}, 0, 0);
    expectPoint(100, 50, 0, m * HxGePoint3d(1, 1));
    expectPoint(100, 52, 0, m * HxGePoint3d(2, 1));
    expectPoint(97, 50, 0, m * HxGePoint3d(1, 2));
}

TEST(Placement, ArraySpacingsTurnButDoNotScale) {
    const Shape shape = shapeOf("INSERT", "2 B 10 0 20 0 41 5 42 5 50 90 70 3 71 2 44 10 45 20");
    expectPoint(-20, 20, 0, shape.placement->cell({}, 2, 1) * HxGePoint3d());
}

TEST(Placement, ExtrusionMirrorsAnInsert) {
    const Shape shape = shapeOf("INSERT", "2 B 10 7 20 0 210 0 220 0 230 -1");
    expectPoint(-8, 0, 0, shape.placement->cell({}, 0, 0) * HxGePoint3d(1, 0));
}

TEST(Placement, DimensionsAreDrawnWhereTheirBlockLies) {
    const Shape shape = shapeOf("DIMENSION", "2 *D1 10 5 20 5 11 9 21 9");
    ASSERT_EQ(ShapeKind::reference, shape.kind);
    expectPoint(3, 4, 0, shape.placement->cell({9, 9, 9}, 0, 0) * HxGePoint3d(3, 4));
}

TEST(Placement, CellsTouchingNeverMissesOne) {
    std::mt19937 random(3);
    const auto any = [&](double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random);
    };
    long long looked = 0;
    long long touched = 0;
    for (int i = 0; i < 300; ++i) {
        BlockPlacement placement;
        placement.position = {any(-50, 50), any(-50, 50)};
        placement.scale = {any(-2, 2), any(-2, 2), 1};
        placement.rotation = any(0, 7);
        placement.columns = 1 + static_cast<int>(any(0, 12));
        placement.rows = 1 + static_cast<int>(any(0, 12));
        placement.columnSpacing = i % 5 ? any(-9, 9) : 0;
        placement.rowSpacing = i % 7 ? any(-9, 9) : 0;
        const Box3d block{{-1, 2}, {0, 3}, {0, 0}};
        const HxGeMatrix3d view = HxGeMatrix3d::rotationZ(any(0, 7));
        const Box box = Box::around({any(-60, 60), any(-60, 60)}, any(0.1, 8));
        const CellRange cells = cellsTouching(placement, {}, block, view, box);
        looked += cells.isEmpty()
                      ? 0
                      : (cells.lastColumn - cells.firstColumn + 1) * (cells.lastRow - cells.firstRow + 1);
        for (int column = 0; column < placement.columns; ++column) {
            for (int row = 0; row < placement.rows; ++row) {
                if (!block.inView(view * placement.cell({}, column, row)).intersects(box)) {
                    continue;
                }
                ++touched;
                const bool columnIn = column >= cells.firstColumn && column <= cells.lastColumn;
                const bool rowIn = row >= cells.firstRow && row <= cells.lastRow;
                EXPECT_TRUE((columnIn || placement.columnSpacing == 0) &&
                            (rowIn || placement.rowSpacing == 0))
                    << "case " << i << " cell " << column << "," << row;
            }
        }
    }
    EXPECT_GT(touched, 100);
    EXPECT_LT(looked, touched * 4) << "most cells are left out";
}

TEST(Placement, ViewportMapsItsViewCentreToItsMiddle) {
    const Shape shape = shapeOf("VIEWPORT", "10 100 20 50 40 40 41 20 68 2 69 2 12 5 22 6 45 200 51 90 "
                                            "16 0 26 0 36 1 17 1000 27 0 37 0 90 32768");
    ASSERT_EQ(ShapeKind::viewport, shape.kind);
    EXPECT_TRUE(shape.window->isFloating() && shape.window->isOn());
    const HxGeMatrix3d m = shape.window->modelToPaper();
    // The view's plane is turned by 90 degrees: its (5, 6) is (6, -5) from the target.
    expectPoint(100, 50, 0, m * HxGePoint3d(1006, -5));
    expectPoint(100, 51, 0, m * HxGePoint3d(1016, -5));
    EXPECT_TRUE(touches(shape, 80, 50));
    EXPECT_FALSE(touches(shape, 100, 50));
}

TEST(Placement, ViewportFromAboveAndAside) {
    const Shape front =
        shapeOf("VIEWPORT", "10 0 20 0 40 10 41 10 68 2 69 3 12 0 22 0 45 10 16 0 26 -1 36 0");
    expectPoint(3, 4, -2, front.window->modelToPaper() * HxGePoint3d(3, 2, 4));
    EXPECT_FALSE(shapeOf("VIEWPORT", "10 0 20 0 40 9 41 9 68 1 69 1").window->isFloating());
    EXPECT_FALSE(shapeOf("VIEWPORT", "10 0 20 0 40 9 41 9 68 3 69 2 90 131072").window->isOn());
    EXPECT_FALSE(shapeOf("VIEWPORT", "10 0 20 0 40 9 41 9 68 0 69 2").window->isOn());
}

TEST(Placement, ViewportOfOldDrawings) {
    const Shape shape = shapeOf("VIEWPORT", "10 0 20 0 40 10 41 10 68 2 69 2 1001 ACAD 1000 MVIEW 1002 { "
                                            "1070 16 1010 0 1020 0 1030 0 1010 0 1020 0 1030 1 1040 0 "
                                            "1040 100 1040 30 1040 40 1040 50 1002 }");
    expectPoint(1, 0, 0, shape.window->modelToPaper() * HxGePoint3d(40, 40));
}

}  // namespace
}  // namespace korvex::test
