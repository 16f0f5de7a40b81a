// The box around what is drawn: goes down into references only where they reach beyond what was found.
#include "host/editor/pick/block_geometry.h"
#include "host/editor/pick/nesting.h"
#include "host/editor/picker.h"
#include "sdk/hxdbdatabase.h"

#include <algorithm>

namespace korvex {

namespace {

class ExtentsSearch {
public:
    void lookIn(const Nesting& level) {
        const std::vector<Box3d>& boxes = geometryCache().of(*level.contents).boxes;
        const std::vector<HxDbStub*>& all = members(*level.contents);
        for (std::size_t i = 0; i < boxes.size() && i < all.size(); ++i) {
            const Box3d box = boxes[i].transformed(level.toSpace);
            if (!box.isEmpty() && !isCovered(box) && isAlive(*all[i])) {
                lookAt(*all[i], box, level);
            }
        }
    }
    const Box3d& found() const { return m_found; }

private:
    static constexpr int kMostLooks = 2000000;

    bool isCovered(const Box3d& box) const {
        return m_found.x.contains(box.x) && m_found.y.contains(box.y) && m_found.z.contains(box.z);
    }

    void add(const Box3d& box) {
        if (!box.isEmpty() && box.isBounded()) {
            m_found.add(box);
        }
    }

    void lookAt(HxDbStub& entity, const Box3d& box, const Nesting& level) {
        HxDbStub* layer = m_rules.layerOf(entity, level);
        if (m_rules.isFrozen(layer)) {
            return;
        }
        if (--m_looks < 0) {
            add(box);
            return;
        }
        const Shape shape = shapeOf(entity);
        if (shape.kind == ShapeKind::reference) {
            enter(entity, *shape.placement, layer, level);
        } else if (!m_rules.isHidden(layer) && !(level.reference && shape.isTemplate)) {
            add(extents(shape, level.toSpace));
        }
    }

    /// Of an array the cells at its corners reach farthest.
    void enter(HxDbStub& entity, const BlockPlacement& placement, HxDbStub* layer, const Nesting& level) {
        Nesting inner;
        inner.outer = &level;
        inner.reference = &entity;
        inner.layer = layer;
        inner.depth = level.depth + 1;
        const ReferencedBlock block = referencedBlock(*entity.database, placement);
        if (block.contents && !level.holds(*block.contents) && inner.depth <= GeometryCache::kMaxNesting) {
            inner.contents = block.contents;
            inner.external = block.isExternal() ? block.record : nullptr;
            for (int row = 0; row < placement.rows; row += std::max(placement.rows - 1, 1)) {
                for (int column = 0; column < placement.columns;
                     column += std::max(placement.columns - 1, 1)) {
                    inner.toSpace = level.toSpace * placement.cell(block.base, column, row);
                    lookIn(inner);
                }
            }
        }
        inner.external = nullptr;
        forEachSubEntity(entity, [&](HxDbStub& attribute) {
            if (!m_rules.isHidden(m_rules.layerOf(attribute, inner))) {
                add(extents(shapeOf(attribute), level.toSpace));
            }
        });
    }

    LayerRules m_rules;
    Box3d m_found;
    int m_looks = kMostLooks;
};

}  // namespace

bool spaceExtents(const HxDbDatabase& database, HxDbObjectId space, HxGePoint3d& low, HxGePoint3d& high) {
    if (space.isNull() || space.database() != &database) {
        return false;
    }
    geometryCache().refresh();
    Nesting root;
    root.contents = space.stub();
    ExtentsSearch search;
    search.lookIn(root);
    const Box3d& box = search.found();
    if (box.isEmpty()) {
        return false;
    }
    low = {box.x.low, box.y.low, box.z.low};
    high = {box.x.high, box.y.high, box.z.high};
    return true;
}

}  // namespace korvex
