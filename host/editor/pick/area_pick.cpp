// Selection by a rectangle: the index gives what may be in it, boxes decide what they can, shapes the rest.
#include "host/db/geometry/hit_test.h"
#include "host/editor/pick/block_geometry.h"
#include "host/editor/pick/floating_windows.h"
#include "host/editor/pick/nesting.h"
#include "host/editor/picker.h"
#include "sdk/hxdbdatabase.h"

#include <algorithm>

namespace korvex {

namespace {

/// Entities in blocks and array cells that are looked at for one reference, and for all of a request.
constexpr int kMostLooksEach = 400000;
constexpr int kMostLooksInAll = 4000000;

bool mayPlaceBlock(std::string_view type) {
    return type == "INSERT" || type == "ACAD_TABLE" || type.find("DIMENSION") != std::string_view::npos;
}

/// Looks in a reference for one thing that can be seen and passes a test.
class ReferenceSearch {
public:
    enum class Test {
        isSeen,   ///< any
        touches,  ///< the rectangle
        leaves,   ///< is not wholly in the rectangle
    };

    ReferenceSearch(const HxGeMatrix3d& view, const Box& box, LayerRules& rules)
        : m_view(view), m_box(box), m_rules(rules) {}

    bool finds(Test test, HxDbStub& reference, const Nesting& root, const Shape& shape, HxDbStub* layer) {
        m_test = test;
        return enter(reference, *shape.placement, layer, root);
    }
    /// The next reference may be looked at as long as there is something left of the whole.
    void begin() {
        m_inAll -= kMostLooksEach - std::max(m_looks, 0);
        m_looks = std::min(kMostLooksEach, m_inAll);
    }
    bool gaveUp() const { return m_looks < 0; }

private:
    bool enter(HxDbStub& reference, const BlockPlacement& placement, HxDbStub* layer, const Nesting& level) {
        Nesting inner;
        inner.outer = &level;
        inner.reference = &reference;
        inner.layer = layer;
        inner.depth = level.depth + 1;
        const ReferencedBlock block = referencedBlock(*reference.database, placement);
        if (block.contents && !level.holds(*block.contents) && inner.depth <= GeometryCache::kMaxNesting) {
            inner.contents = block.contents;
            inner.external = block.isExternal() ? block.record : nullptr;
            if (findsInCells(inner, placement, block.base)) {
                return true;
            }
        }
        inner.contents = nullptr;
        inner.external = nullptr;
        bool found = false;
        forEachSubEntity(reference, [&](HxDbStub& attribute) {
            found = found || (!m_rules.isHidden(m_rules.layerOf(attribute, inner)) &&
                              passes(shapeOf(attribute), m_view * level.toSpace));
        });
        return found;
    }

    bool findsInCells(Nesting& inner, const BlockPlacement& placement, const HxGePoint3d& base) {
        CellRange cells{0, placement.columns - 1, 0, placement.rows - 1};
        int columnStep = 1;
        int rowStep = 1;
        if (m_test == Test::isSeen) {
            cells = {0, 0, 0, 0};
        } else if (m_test == Test::touches) {
            cells = cellsTouching(placement, base, geometryCache().of(*inner.contents).extents(),
                                  m_view * inner.outer->toSpace, m_box);
        } else {  // the cells at the corners reach farthest
            columnStep = std::max(placement.columns - 1, 1);
            rowStep = std::max(placement.rows - 1, 1);
        }
        for (int row = cells.firstRow; row <= cells.lastRow; row += rowStep) {
            for (int column = cells.firstColumn; column <= cells.lastColumn; column += columnStep) {
                if (--m_looks < 0) {
                    return false;
                }
                inner.toSpace = inner.outer->toSpace * placement.cell(base, column, row);
                if (findsIn(inner)) {
                    return true;
                }
            }
        }
        return false;
    }

    bool findsIn(const Nesting& level) {
        const HxGeMatrix3d toView = m_view * level.toSpace;
        const BlockGeometry& geometry = geometryCache().of(*level.contents);
        if (m_test == Test::touches) {
            std::vector<std::size_t> found;
            geometry.index.query(toView, m_box, [&](SpatialIndex::Key key) {
                found.push_back(key);
                return true;
            });
            return std::any_of(found.begin(), found.end(),
                               [&](std::size_t key) { return findsAt(key, level, toView); });
        }
        for (std::size_t i = 0; i < geometry.boxes.size() && m_looks >= 0; ++i) {
            const Box3d& box = geometry.boxes[i];
            const bool staysInside = m_test == Test::leaves && m_box.contains(box.inView(toView));
            if (!box.isEmpty() && !staysInside && findsAt(i, level, toView)) {
                return true;
            }
            m_looks -= staysInside ? 1 : 0;
        }
        return false;
    }

    bool findsAt(std::size_t key, const Nesting& level, const HxGeMatrix3d& toView) {
        const std::vector<HxDbStub*>& all = members(*level.contents);
        if (--m_looks < 0 || key >= all.size() || !isAlive(*all[key])) {
            return false;
        }
        HxDbStub& entity = *all[key];
        HxDbStub* layer = m_rules.layerOf(entity, level);
        if (m_rules.isFrozen(layer)) {
            return false;
        }
        const Shape shape = shapeOf(entity);
        if (shape.kind == ShapeKind::reference) {
            return enter(entity, *shape.placement, layer, level);
        }
        return !m_rules.isHidden(layer) && !shape.isTemplate && passes(shape, toView);
    }

    bool passes(const Shape& shape, const HxGeMatrix3d& toView) const {
        switch (m_test) {
        case Test::touches: return hits(shape, toView, m_box);
        case Test::isSeen: return shape.kind != ShapeKind::none;
        case Test::leaves: break;
        }
        const Box extents = extentsInView(shape, toView);
        return !extents.isEmpty() && !m_box.contains(extents);
    }

    HxGeMatrix3d m_view;
    Box m_box;
    LayerRules& m_rules;
    Test m_test = Test::isSeen;
    int m_looks = kMostLooksEach;
    int m_inAll = kMostLooksInAll;
};

/// Judges top-level objects.
class AreaSearch {
public:
    AreaSearch(const HxGeMatrix3d& view, const Box& box, HxDbStub* viewport, bool crossing)
        : m_view(view), m_box(box), m_crossing(crossing), m_rules(viewport),
          m_references(view, box, m_rules) {}

    bool takes(HxDbStub& entity, const Nesting& root, const Box3d& extents) {
        HxDbStub* layer = m_rules.layerOf(entity, root);
        if (m_rules.isFrozen(layer)) {
            return false;
        }
        const bool isInside = m_box.contains(extents.inView(m_view));
        if (mayPlaceBlock(entityGroups(entity).type)) {
            const Shape shape = shapeOf(entity);
            return shape.kind == ShapeKind::reference && takesReference(entity, root, shape, layer, isInside);
        }
        return !m_rules.isHidden(layer) && (isInside || takesShape(shapeOf(entity)));
    }

private:
    using Test = ReferenceSearch::Test;

    bool takesShape(const Shape& shape) const {
        if (m_crossing) {
            return hits(shape, m_view, m_box);
        }
        const Box extents = extentsInView(shape, m_view);
        return !extents.isEmpty() && m_box.contains(extents);
    }

    bool takesReference(HxDbStub& entity, const Nesting& root, const Shape& shape, HxDbStub* layer,
                        bool isInside) {
        m_references.begin();
        const auto finds = [&](Test test) { return m_references.finds(test, entity, root, shape, layer); };
        bool takes = false;
        if (isInside) {
            takes = finds(Test::isSeen);
        } else if (m_crossing) {
            takes = finds(Test::touches);
        } else {
            takes = !finds(Test::leaves) && finds(Test::isSeen);
        }
        return m_references.gaveUp() ? m_crossing || isInside : takes;
    }

    HxGeMatrix3d m_view;
    Box m_box;
    bool m_crossing;
    LayerRules m_rules;
    ReferenceSearch m_references;
};

}  // namespace

std::vector<HxDbObjectId> pickInArea(const AreaRequest& request) {
    std::vector<HxDbObjectId> taken;
    HxDbStub* space = request.space.stub();
    if (!request.database || !space) {
        return taken;
    }
    geometryCache().refresh();
    const bool isModel = space == modelSpace(*request.database);
    const HxGeMatrix3d view = isModel ? turnOf(request.viewport.stub()) : HxGeMatrix3d();
    const HxGePoint3d first = view * request.first;
    const HxGePoint3d second = view * request.second;
    Box box;
    box.add(Point2{first.x, first.y});
    box.add(Point2{second.x, second.y});

    const BlockGeometry& geometry = geometryCache().of(*space);
    std::vector<SpatialIndex::Key> found;
    geometry.index.query(view, box, [&](SpatialIndex::Key key) {
        found.push_back(key);
        return true;
    });
    std::sort(found.begin(), found.end());
    Nesting root;
    root.contents = space;
    AreaSearch search(view, box, request.viewport.stub(), request.crossing);
    const std::vector<HxDbStub*>& all = members(*space);
    for (const SpatialIndex::Key key : found) {
        if (key < all.size() && isAlive(*all[key]) && search.takes(*all[key], root, geometry.boxes[key])) {
            taken.emplace_back(all[key]);
        }
    }
    return taken;
}

}  // namespace korvex
