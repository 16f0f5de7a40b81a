// The R-tree behind SpatialIndex; the only file that includes its heavy header.
#include "host/db/geometry/spatial_index.h"

#include <algorithm>

#define BOOST_ALLOW_DEPRECATED_HEADERS  // Boost's own includes; it would say so at every build
#include <boost/geometry.hpp>
#include <boost/geometry/index/rtree.hpp>

namespace korvex {

namespace {

namespace bg = boost::geometry;
namespace bgi = boost::geometry::index;

using TreePoint = bg::model::point<double, 3, bg::cs::cartesian>;
using TreeBox = bg::model::box<TreePoint>;
using Value = std::pair<TreeBox, SpatialIndex::Key>;

TreeBox treeBox(const Box3d& b) {
    return {TreePoint(b.x.low, b.y.low, b.z.low), TreePoint(b.x.high, b.y.high, b.z.high)};
}

Box3d fromTree(const TreeBox& b) {
    const TreePoint& low = b.min_corner();
    const TreePoint& high = b.max_corner();
    return {{low.get<0>(), high.get<0>()}, {low.get<1>(), high.get<1>()}, {low.get<2>(), high.get<2>()}};
}

/// Far enough that volumes stay finite numbers.
bool fitsTree(const Box3d& b) {
    constexpr double kFar = 1e90;
    return std::min({b.x.low, b.y.low, b.z.low}) > -kFar && std::max({b.x.high, b.y.high, b.z.high}) < kFar;
}

bool isSame(const Range& a, const Range& b) { return a.low == b.low && a.high == b.high; }
bool isSame(const Box3d& a, const Box3d& b) {
    return isSame(a.x, b.x) && isSame(a.y, b.y) && isSame(a.z, b.z);
}

}  // namespace

class SpatialIndex::Tree {
public:
    using Packed = bgi::rtree<Value, bgi::rstar<16>>;

    Tree() = default;
    explicit Tree(const std::vector<Value>& values) : packed(values) {}

    Packed packed;
    std::vector<Entry> beside;  ///< unbounded, or too far out
};

SpatialIndex::SpatialIndex() : m_tree(std::make_unique<Tree>()) {}
SpatialIndex::~SpatialIndex() = default;
SpatialIndex::SpatialIndex(SpatialIndex&&) noexcept = default;
SpatialIndex& SpatialIndex::operator=(SpatialIndex&&) noexcept = default;

SpatialIndex::SpatialIndex(const std::vector<Entry>& entries) {
    std::vector<Value> values;
    std::vector<Entry> beside;
    values.reserve(entries.size());
    for (const Entry& entry : entries) {
        if (entry.extents.isEmpty()) {
            continue;
        }
        if (fitsTree(entry.extents)) {
            values.emplace_back(treeBox(entry.extents), entry.key);
        } else {
            beside.push_back(entry);
        }
    }
    m_tree = std::make_unique<Tree>(values);
    m_tree->beside = std::move(beside);
}

void SpatialIndex::insert(const Box3d& extents, Key key) {
    if (extents.isEmpty()) {
        return;
    }
    if (fitsTree(extents)) {
        m_tree->packed.insert(Value(treeBox(extents), key));
    } else {
        m_tree->beside.push_back({extents, key});
    }
}

bool SpatialIndex::remove(const Box3d& extents, Key key) {
    if (extents.isEmpty()) {
        return false;
    }
    if (fitsTree(extents)) {
        return m_tree->packed.remove(Value(treeBox(extents), key)) > 0;
    }
    std::vector<Entry>& beside = m_tree->beside;
    const auto found = std::find_if(beside.begin(), beside.end(), [&](const Entry& entry) {
        return entry.key == key && isSame(entry.extents, extents);
    });
    if (found == beside.end()) {
        return false;
    }
    beside.erase(found);
    return true;
}

std::size_t SpatialIndex::size() const { return m_tree->packed.size() + m_tree->beside.size(); }

Box3d SpatialIndex::bounds() const {
    Box3d box;
    if (!m_tree->packed.empty()) {
        box.add(fromTree(m_tree->packed.bounds()));
    }
    for (const Entry& entry : m_tree->beside) {
        box.add(entry.extents);
    }
    return box;
}

void SpatialIndex::query(const Box3d& box, const std::function<bool(Key)>& found) const {
    if (box.isEmpty()) {
        return;
    }
    for (const Entry& entry : m_tree->beside) {
        if (entry.extents.intersects(box) && !found(entry.key)) {
            return;
        }
    }
    const auto end = m_tree->packed.qend();
    for (auto it = m_tree->packed.qbegin(bgi::intersects(treeBox(box))); it != end; ++it) {
        if (!found(it->second)) {
            return;
        }
    }
}

void SpatialIndex::query(const Box& box, const std::function<bool(Key)>& found) const {
    query(Box3d{box.x, box.y, Range::all()}, found);
}

void SpatialIndex::query(const HxGeMatrix3d& toView, const Box& viewBox,
                         const std::function<bool(Key)>& found) const {
    query(coveredPart(bounds(), toView, viewBox), found);
}

}  // namespace korvex
