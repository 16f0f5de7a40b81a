// Where the entities of blocks lie: boxes in a spatial index, kept between picks and put right after changes.
#pragma once

#include "host/db/geometry/entity_shape.h"
#include "host/db/geometry/spatial_index.h"
#include "host/db/kernel/entity_access.h"

#include <memory>
#include <unordered_map>

namespace korvex {

/// The shape of an entity that is no sub-entity; vertices are taken along.
Shape shapeOf(HxDbStub& entity);

/// The sub-entities of an entity, in order: calls use(HxDbStub&) for each that is alive.
template <class Use>
void forEachSubEntity(const HxDbStub& entity, Use&& use) {
    const std::vector<HxDbStub*>& all = members(*entity.owner);
    for (std::size_t i = entity.position + 1U; i < all.size(); ++i) {
        if (!all[i]->subEntity || all[i]->owner != &entity) {
            return;
        }
        if (isAlive(*all[i])) {
            use(*all[i]);
        }
    }
}

/// The entities of one block record in its own coordinates. What nobody can see has an empty box; layers do
/// not count here, so that switching them leaves the boxes as they are.
struct BlockGeometry {
    std::vector<Box3d> boxes;   ///< by place among the block's members
    SpatialIndex index;         ///< keys are those places
    bool isReferenced = false;  ///< boxes of other blocks' references depend on it

    Box3d extents() const { return index.bounds(); }
};

/// What a reference draws.
struct ReferencedBlock {
    HxDbStub* record = nullptr;    ///< the block record that it names; null when the drawing has none
    HxDbStub* contents = nullptr;  ///< whose members are drawn: of an external reference its model space
    HxGePoint3d base;

    bool isExternal() const { return record != contents; }
};
ReferencedBlock referencedBlock(const HxDbDatabase& database, const BlockPlacement& placement);

/// The geometry of every block that was looked at, for all open drawings. It listens to the drawings: a
/// change of an entity in a space costs O(log n) at the next look, a change inside a block that others
/// reference or of the block table throws everything away. Nested deeper than kMaxNesting, nothing is drawn.
class GeometryCache {
public:
    static constexpr int kMaxNesting = 100;

    /// Takes over what happened since the last look. What of() returned before may be gone then.
    void refresh();
    /// Made when it is first asked for.
    const BlockGeometry& of(HxDbStub& block);
    /// The same for one that a reference draws; empty for a block that contains itself.
    Box3d referencedExtents(HxDbStub& block);

private:
    class Drawing;
    friend class Drawing;

    BlockGeometry& entry(HxDbStub& block);
    Drawing& drawing(const HxDbDatabase& database);
    Box3d boxOf(HxDbStub& entity);
    Box3d referenceBox(HxDbStub& entity, const BlockPlacement& placement);
    void place(BlockGeometry& geometry, HxDbStub& entity);
    void forget(const HxDbDatabase& database);
    void clear();

    std::unordered_map<const HxDbDatabase*, std::unique_ptr<Drawing>> m_drawings;
    /// External references as they were loaded when their boxes were taken.
    std::unordered_map<HxDbStub*, HxDbDatabase*> m_loaded;
    int m_nesting = 0;
};

/// The one cache of the process.
GeometryCache& geometryCache();

}  // namespace korvex
