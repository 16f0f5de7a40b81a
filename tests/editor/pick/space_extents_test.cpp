// The box around what is drawn, and picks against looking at everything.
#include "tests/editor/pick/pick_fixture.h"

#include <random>

namespace korvex::test {
namespace {

class SpaceExtents : public PickTest {
protected:
    void expectBox(double left, double bottom, double right, double top) {
        HxGePoint3d low, high;
        ASSERT_TRUE(spaceExtents(database(), model(), low, high));
        EXPECT_NEAR(left, low.x, 1e-6);
        EXPECT_NEAR(bottom, low.y, 1e-6);
        EXPECT_NEAR(right, high.x, 1e-6);
        EXPECT_NEAR(top, high.y, 1e-6);
    }
};

TEST_F(SpaceExtents, HoldsWhatIsSeenOnly) {
    load(DrawingText().layer("FAR").add(
        "0 CIRCLE 5 A1 8 0 10 10 20 10 40 5 0 LINE 5 A2 8 FAR 10 0 20 0 11 900 21 900 "
        "0 XLINE 5 A3 8 0 10 0 20 0 11 1 21 1"));
    expectBox(0, 0, 900, 900);
    freeze(L"FAR");
    expectBox(5, 5, 15, 15);
}

TEST_F(SpaceExtents, IsExactForTurnedReferencesAndArrays) {
    load(DrawingText()
             .block("D", "10 0 20 0", "0 CIRCLE 5 A1 8 0 10 0 20 0 40 1")
             .add("0 INSERT 5 B1 8 0 2 D 10 0 20 0 50 45 70 4 71 1 44 10"));
    const double along = 30 * std::sqrt(0.5);
    expectBox(-1, -1, along + 1, along + 1);
}

TEST_F(SpaceExtents, NothingHasNone) {
    load(DrawingText().layer("X", 1).add("0 LINE 5 A1 8 X 10 0 20 0 11 9 21 9"));
    HxGePoint3d low, high;
    EXPECT_FALSE(spaceExtents(database(), model(), low, high));
    EXPECT_FALSE(spaceExtents(database(), {}, low, high));
}

/// Distance from a segment, told anew here.
double segmentDistance(double x, double y, const double (&s)[4]) {
    const double dx = s[2] - s[0], dy = s[3] - s[1];
    const double length = dx * dx + dy * dy;
    const double t = std::min(1.0, std::max(0.0, ((x - s[0]) * dx + (y - s[1]) * dy) / length));
    return std::hypot(x - s[0] - t * dx, y - s[1] - t * dy);
}

TEST_F(PickTest, AmongManyTheNearestOfAll) {
    std::mt19937 random(23);
    std::uniform_real_distribution<double> any(0, 100), small(-4, 4);
    struct Segment {
        double ends[4];
    };
    std::vector<Segment> segments(1500);
    DrawingText drawing;
    for (std::size_t i = 0; i < segments.size(); ++i) {
        double(&s)[4] = segments[i].ends;
        s[0] = any(random), s[1] = any(random);
        s[2] = s[0] + small(random), s[3] = s[1] + small(random);
        char words[200];
        std::snprintf(words, sizeof words, "0 LINE 5 %zX 8 0 10 %.17g 20 %.17g 11 %.17g 21 %.17g", 0x1000 + i,
                      s[0], s[1], s[2], s[3]);
        drawing.add(words);
    }
    load(drawing);
    int hits = 0;
    for (int i = 0; i < 300; ++i) {
        const double x = any(random), y = any(random), half = 0.4;
        std::size_t nearest = 0;
        for (std::size_t k = 1; k < segments.size(); ++k) {
            const double d = segmentDistance(x, y, segments[k].ends);
            nearest = d < segmentDistance(x, y, segments[nearest].ends) ? k : nearest;
        }
        const double distance = segmentDistance(x, y, segments[nearest].ends);
        PickHit hit;
        const bool found = pick(model(), x, y, hit, {}, half);
        if (distance < half) {
            ASSERT_TRUE(found) << "pick " << i;
            EXPECT_EQ(0x1000 + nearest, hit.entity.handle().value()) << "pick " << i;
            ++hits;
        } else if (distance > half * 1.42) {
            EXPECT_FALSE(found) << "pick " << i;
        }
    }
    EXPECT_GT(hits, 50);
}

}  // namespace
}  // namespace korvex::test
