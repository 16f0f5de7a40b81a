// Lines, arcs, ellipses, splines and the like: where they run, and their boxes.
#include "tests/db/geometry/geometry_test_support.h"

#include "host/db/geometry/curve_piece.h"

#include <random>

namespace korvex::test {
namespace {

constexpr double kPi = 3.14159265358979323846;

void expectBox(const Shape& shape, double left, double bottom, double right, double top) {
    const Box3d box = extents(shape);
    EXPECT_NEAR(left, box.x.low, 1e-6);
    EXPECT_NEAR(bottom, box.y.low, 1e-6);
    EXPECT_NEAR(right, box.x.high, 1e-6);
    EXPECT_NEAR(top, box.y.high, 1e-6);
}

TEST(CurveShapes, LineIsTouchedBetweenItsEndsOnly) {
    const Shape line = shapeOf("LINE", "8 0 10 1 20 1 30 5 11 5 21 3 31 5");
    EXPECT_TRUE(touches(line, 3, 2));
    EXPECT_FALSE(touches(line, 3, 2.1));
    EXPECT_FALSE(touches(line, 7, 4));
    expectBox(line, 1, 1, 5, 3);
    EXPECT_EQ(5, extents(line).z.low);
}

TEST(CurveShapes, ArcRunsCounterClockwiseAcrossZero) {
    const Shape arc = shapeOf("ARC", "10 10 20 0 40 2 50 270 51 90");
    EXPECT_TRUE(touches(arc, 12, 0));
    EXPECT_TRUE(touches(arc, 10 + std::sqrt(2), std::sqrt(2)));
    EXPECT_FALSE(touches(arc, 8, 0));
    EXPECT_FALSE(touches(arc, 10, 0));
    expectBox(arc, 10, -2, 12, 2);
}

TEST(CurveShapes, CircleBelowIsMirrored) {
    const Shape circle = shapeOf("CIRCLE", "10 10 20 3 40 1 210 0 220 0 230 -1");
    EXPECT_TRUE(touches(circle, -9, 3));
    EXPECT_FALSE(touches(circle, 9, 3));
}

TEST(CurveShapes, EllipticArcKeepsItsParameters) {
    const Shape ellipse = shapeOf("ELLIPSE", "10 0 20 0 11 0 21 4 40 0.5 41 0 42 " + text(kPi / 2));
    EXPECT_TRUE(touches(ellipse, 0, 4));
    EXPECT_TRUE(touches(ellipse, -2, 0));
    EXPECT_TRUE(touches(ellipse, -2 * std::sqrt(0.5), 4 * std::sqrt(0.5)));
    EXPECT_FALSE(touches(ellipse, 2, 0));
    expectBox(ellipse, -2, 0, 0, 4);
}

TEST(CurveShapes, RaysHaveOneEnd) {
    const Shape ray = shapeOf("RAY", "10 0 20 0 11 1 21 1");
    EXPECT_TRUE(touches(ray, 1e6, 1e6));
    EXPECT_FALSE(touches(ray, -5, -5));
    EXPECT_FALSE(extents(ray).x.isBounded());
    EXPECT_EQ(0, extents(ray).y.low);
    const Shape line = shapeOf("XLINE", "10 0 20 2 11 1 21 0");
    EXPECT_TRUE(touches(line, -1e6, 2));
    EXPECT_TRUE(extents(line).y.isBounded());
}

TEST(CurveShapes, SplinePassesThroughItsFitPoints) {
    const std::string head = "70 8 71 3 ";
    const Shape spline = shapeOf("SPLINE", head + "11 0 21 0 11 2 21 3 11 5 21 -1 11 9 21 0");
    for (const auto& [x, y] : {std::pair{0, 0}, {2, 3}, {5, -1}, {9, 0}}) {
        EXPECT_TRUE(touches(spline, x, y)) << x << "," << y;
    }
    EXPECT_FALSE(touches(spline, 2, 2));
}

TEST(CurveShapes, RationalSplineIsAnExactCircleQuarter) {
    const Shape spline = shapeOf("SPLINE", "70 4 71 2 40 0 40 0 40 0 40 1 40 1 40 1 41 1 41 " +
                                               text(std::sqrt(0.5)) + " 41 1 10 1 20 0 10 1 20 1 10 0 20 1");
    for (double t = 0; t <= 1; t += 0.125) {
        EXPECT_LT(distance(spline, std::cos(t * kPi / 2), std::sin(t * kPi / 2), 0.01), 1e-5);
    }
    expectBox(spline, 0, 0, 1, 1);
}

TEST(CurveShapes, UnusableKnotsAreReplaced) {
    const Shape spline = shapeOf("SPLINE", "71 3 40 5 40 1 10 0 20 0 10 1 20 1 10 2 20 0 10 3 20 1");
    EXPECT_TRUE(touches(spline, 0, 0));
    EXPECT_TRUE(touches(spline, 3, 1));
}

TEST(CurveShapes, LeaderIsStraightOrSmooth) {
    const std::string points = " 76 3 10 0 20 0 10 2 20 2 10 4 20 0";
    EXPECT_TRUE(touches(shapeOf("LEADER", "72 0" + points), 1, 1));
    const Shape smooth = shapeOf("LEADER", "72 1" + points);
    EXPECT_FALSE(touches(smooth, 1, 1));
    EXPECT_TRUE(touches(smooth, 2, 2));
}

TEST(CurveShapes, SolidIsFilledAndFaceIsNot) {
    const std::string corners = "10 0 20 0 11 4 21 0 12 0 22 4 13 4 23 4";
    EXPECT_TRUE(touches(shapeOf("SOLID", corners), 1, 2));
    EXPECT_FALSE(touches(shapeOf("SOLID", corners), 5, 2));
    const Shape triangle = shapeOf("SOLID", "10 0 20 0 11 4 21 0 12 0 22 4");
    EXPECT_TRUE(touches(triangle, 1, 1));
    EXPECT_FALSE(touches(triangle, 3, 3));
    const Shape face = shapeOf("3DFACE", "70 1 10 0 20 0 11 4 21 0 12 4 22 4 13 0 23 4");
    EXPECT_FALSE(touches(face, 2, 2));
    EXPECT_TRUE(touches(face, 4, 2));
    EXPECT_FALSE(touches(face, 2, 0)) << "its first edge is hidden";
}

TEST(CurveShapes, HiddenAndUnknownEntitiesHaveNone) {
    EXPECT_EQ(ShapeKind::none, shapeOf("LINE", "60 1 10 0 20 0 11 5 21 0").kind);
    EXPECT_EQ(ShapeKind::none, shapeOf("LWPOLYLINE", "60 1 10 0 20 0 10 5 20 0").kind);
    EXPECT_EQ(ShapeKind::none, shapeOf("3DSOLID", "10 0 20 0 11 5 21 0").kind);
}

TEST(CurveShapes, GroupsOfApplicationsAreNotCoordinates) {
    const Shape line = shapeOf("LINE", "102 {A 10 99 102 } 10 0 20 0 11 5 21 0 1001 A 1010 7 10 50");
    EXPECT_TRUE(touches(line, 0, 0));
    EXPECT_TRUE(touches(line, 5, 0));
    EXPECT_FALSE(touches(line, 6, 0));
}

/// Distance of a point from many points of an arc: a way of telling that shares nothing with the hit test.
double sampledDistance(const EllipticArc& arc, const HxGeMatrix3d& m, Point2 p) {
    double nearest = 1e300;
    for (int i = 0; i <= 4000; ++i) {
        const HxGePoint3d q = m * arc.pointAt(arc.from + arc.sweep * i / 4000);
        nearest = std::min(nearest, std::hypot(q.x - p.x, q.y - p.y));
    }
    return nearest;
}

TEST(CurveShapes, ArcsUnderAnyTransformationAgreeWithSamples) {
    std::mt19937 random(7);
    const auto any = [&](double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random);
    };
    for (int i = 0; i < 200; ++i) {
        EllipticArc arc;
        arc.centre = {any(-5, 5), any(-5, 5), any(-5, 5)};
        arc.u = {any(-4, 4), any(-4, 4), any(-4, 4)};
        arc.v = {any(-4, 4), any(-4, 4), any(-4, 4)};
        arc.from = any(-7, 7);
        arc.sweep = any(-6.2, 6.2);
        const HxGeMatrix3d m = HxGeMatrix3d::rotationZ(any(0, 6)) *
                               HxGeMatrix3d::scaling(any(-3, 3), any(-3, 3), 1) *
                               HxGeMatrix3d::planeToWorld({any(-1, 1), any(-1, 1), any(-1, 1)});
        Shape shape;
        shape.kind = ShapeKind::curves;
        shape.path.arc(arc);
        const Point2 p{any(-12, 12), any(-12, 12)};
        const double expected = sampledDistance(arc, m, p);
        const double found = hitDistance(shape, m, Box::around(p, 100));
        EXPECT_NEAR(expected, found, 0.02) << "case " << i;
        const bool touched = hits(shape, m, Box::around(p, found / 1.5));
        EXPECT_FALSE(touched) << "case " << i << ": the corners of the box do not reach it";
        EXPECT_TRUE(hits(shape, m, Box::around(p, found * 1.01))) << "case " << i;
    }
}

TEST(CurveShapes, SplinePiecesLieOnTheSpline) {
    std::mt19937 random(11);
    std::uniform_real_distribution<double> any(-10, 10);
    for (int degree : {1, 2, 3, 5}) {
        std::vector<HxGePoint3d> control;
        std::vector<double> weights;
        for (int i = 0; i < 9; ++i) {
            control.emplace_back(any(random), any(random));
            weights.push_back(0.5 + std::fabs(any(random)));
        }
        const SplineCurve curve = makeSpline(degree, {}, weights, control);
        Shape shape;
        shape.kind = ShapeKind::curves;
        shape.path.splineTo(curve);
        for (int i = 0; i <= 50; ++i) {
            const double u =
                curve.firstParameter() + (curve.lastParameter() - curve.firstParameter()) * i / 50;
            const HxGePoint3d p = curve.pointAt(u);
            EXPECT_LT(distance(shape, p.x, p.y, 0.1), 1e-4) << "degree " << degree << " at " << u;
        }
    }
}

}  // namespace
}  // namespace korvex::test
