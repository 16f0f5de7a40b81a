// The index against looking at every box.
#include "host/db/geometry/spatial_index.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

namespace korvex {
namespace {

class SpatialIndexTest : public ::testing::Test {
protected:
    double any(double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(m_random);
    }
    Box3d anyBox() {
        const HxGePoint3d a(any(-100, 100), any(-100, 100), any(-5, 5));
        Box3d box;
        box.add(a);
        box.add(a + HxGeVector3d(any(0, 6), any(0, 6), any(0, 2)));
        return box;
    }
    static std::vector<SpatialIndex::Key> found(const SpatialIndex& index, const HxGeMatrix3d& view,
                                                const Box& box) {
        std::vector<SpatialIndex::Key> keys;
        index.query(view, box, [&](SpatialIndex::Key key) {
            keys.push_back(key);
            return true;
        });
        std::sort(keys.begin(), keys.end());
        return keys;
    }

    std::mt19937 m_random{5};
};

TEST_F(SpatialIndexTest, FindsAllUnderABoxInAnyView) {
    std::vector<SpatialIndex::Entry> entries;
    for (SpatialIndex::Key key = 0; key < 2000; ++key) {
        entries.push_back({anyBox(), key});
    }
    entries[7].extents.x = Range::all();
    entries[8].extents = Box3d();
    const SpatialIndex index(entries);
    EXPECT_EQ(1999u, index.size());
    for (int i = 0; i < 60; ++i) {
        const HxGeMatrix3d view =
            HxGeMatrix3d::scaling(any(0.1, 2), any(-2, -0.1), 1) * HxGeMatrix3d::rotationZ(any(0, 7)) *
            (i % 2 ? HxGeMatrix3d::planeToWorld({any(-1, 1), any(-1, 1), 1}).inverse() : HxGeMatrix3d());
        const Box box = Box::around({any(-100, 100), any(-100, 100)}, any(0.1, 10));
        const std::vector<SpatialIndex::Key> keys = found(index, view, box);
        for (const SpatialIndex::Entry& entry : entries) {
            if (entry.extents.inView(view).intersects(box) && entry.key != 7) {
                // Boxes around turned boxes overlap more than the turned boxes do: ask for the middle only.
                const HxGePoint3d middle =
                    view * HxGePoint3d(entry.extents.x.low + entry.extents.x.size() / 2,
                                       entry.extents.y.low + entry.extents.y.size() / 2,
                                       entry.extents.z.low + entry.extents.z.size() / 2);
                EXPECT_TRUE(!box.contains(Point2{middle.x, middle.y}) ||
                            std::binary_search(keys.begin(), keys.end(), entry.key))
                    << "view " << i << " key " << entry.key;
            }
        }
        EXPECT_LT(keys.size(), 900u) << "view " << i;
    }
}

TEST_F(SpatialIndexTest, FollowsInsertionAndRemoval) {
    SpatialIndex index;
    std::vector<Box3d> boxes;
    for (SpatialIndex::Key key = 0; key < 500; ++key) {
        boxes.push_back(anyBox());
        index.insert(boxes.back(), key);
    }
    for (SpatialIndex::Key key = 0; key < 500; key += 2) {
        EXPECT_TRUE(index.remove(boxes[key], key));
        EXPECT_FALSE(index.remove(boxes[key], key));
    }
    const Box box = Box::around({0, 0}, 40);
    std::vector<SpatialIndex::Key> expected;
    for (SpatialIndex::Key key = 1; key < 500; key += 2) {
        if (Box{boxes[key].x, boxes[key].y}.intersects(box)) {
            expected.push_back(key);
        }
    }
    EXPECT_EQ(expected, found(index, HxGeMatrix3d(), box));
    EXPECT_GT(expected.size(), 20u);
}

TEST_F(SpatialIndexTest, ViewWithoutInverseFindsEverything) {
    const SpatialIndex index({{anyBox(), 1}, {anyBox(), 2}});
    EXPECT_EQ(2u, found(index, HxGeMatrix3d::scaling(0, 1, 1), Box::around({0, 0}, 1)).size());
}

}  // namespace
}  // namespace korvex
