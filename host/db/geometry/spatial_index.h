// Finds what may lie in a box without looking at everything.
#pragma once

#include "host/db/geometry/box.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace korvex {

/// An R-tree over the extents of things that the caller numbers. Unbounded extents are kept beside the tree
/// and found by every query that they intersect; empty ones are never found. Finding costs O(log n + found);
/// inserting and removing O(log n).
class SpatialIndex {
public:
    using Key = std::uint32_t;
    struct Entry {
        Box3d extents;
        Key key = 0;
    };

    SpatialIndex();
    /// Packs all entries at once: O(n log n), several times faster than one by one, and the better tree.
    explicit SpatialIndex(const std::vector<Entry>& entries);
    ~SpatialIndex();
    SpatialIndex(SpatialIndex&&) noexcept;
    SpatialIndex& operator=(SpatialIndex&&) noexcept;

    void insert(const Box3d& extents, Key key);
    /// The extents must be those that the key was inserted with. False when it is not there.
    bool remove(const Box3d& extents, Key key);
    std::size_t size() const;
    /// The box around all that is in the index.
    Box3d bounds() const;

    /// Calls found(key), in no particular order, for all whose extents intersect the box, until it returns
    /// false. `found` must not change the index.
    void query(const Box3d& box, const std::function<bool(Key)>& found) const;
    /// The same for a box of the plane, at any z.
    void query(const Box& box, const std::function<bool(Key)>& found) const;
    /// The same for a box in view coordinates: all that may lie under it after the transformation (seen
    /// along z), and perhaps some more.
    void query(const HxGeMatrix3d& toView, const Box& viewBox, const std::function<bool(Key)>& found) const;

private:
    class Tree;
    std::unique_ptr<Tree> m_tree;
};

/// The part of `bounds` that a box in view coordinates covers after the transformation: a box around it in
/// the coordinates before. All of `bounds` when the transformation has no inverse.
Box3d coveredPart(const Box3d& bounds, const HxGeMatrix3d& toView, const Box& viewBox);

}  // namespace korvex
