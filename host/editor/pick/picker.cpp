// Goes down through references to whatever comes near the pick point, and takes what is nearest.
#include "host/editor/picker.h"

#include "host/db/geometry/hit_test.h"
#include "host/editor/pick/block_geometry.h"
#include "host/editor/pick/floating_windows.h"
#include "host/editor/pick/nesting.h"
#include "sdk/hxdbdatabase.h"

#include <algorithm>
#include <limits>

namespace korvex {

namespace {

/// Entities and array cells that one pick looks at, at most: blocks that hold each other many times over
/// would take for ever otherwise.
constexpr int kMostLooks = 400000;

/// What came nearest so far.
struct Nearest {
    double distance = std::numeric_limits<double>::infinity();
    PickHit hit;
};

/// Looks for what is near the pick box in one space, seen through one viewport.
class Search {
public:
    Search(const HxGeMatrix3d& view, const Box& box, HxDbStub* viewport, Nearest& nearest)
        : m_view(view), m_box(box), m_rules(viewport), m_nearest(nearest) {}

    void lookIn(HxDbStub& space, const HxGeMatrix3d& toSpace) {
        Nesting root;
        root.contents = &space;
        root.toSpace = toSpace;
        lookIn(root);
    }

private:
    void lookIn(const Nesting& level) {
        const HxGeMatrix3d toView = m_view * level.toSpace;
        std::vector<SpatialIndex::Key> found;
        geometryCache().of(*level.contents).index.query(toView, m_box, [&](SpatialIndex::Key key) {
            found.push_back(key);
            return true;
        });
        std::sort(found.begin(), found.end());
        const std::vector<HxDbStub*>& all = members(*level.contents);
        for (const SpatialIndex::Key key : found) {
            if (--m_looks < 0) {
                return;
            }
            if (key < all.size() && isAlive(*all[key])) {
                lookAt(*all[key], level, toView);
            }
        }
    }

    void lookAt(HxDbStub& entity, const Nesting& level, const HxGeMatrix3d& toView) {
        HxDbStub* layer = m_rules.layerOf(entity, level);
        if (m_rules.isFrozen(layer)) {
            return;
        }
        const Shape shape = shapeOf(entity);
        if (shape.kind == ShapeKind::reference) {
            enter(entity, *shape.placement, layer, level, toView);
        } else if (!m_rules.isHidden(layer) && !(level.reference && shape.isTemplate)) {
            offer(entity, shape, level, toView);
        }
    }

    void enter(HxDbStub& entity, const BlockPlacement& placement, HxDbStub* layer, const Nesting& level,
               const HxGeMatrix3d& toView) {
        Nesting inner;
        inner.outer = &level;
        inner.reference = &entity;
        inner.layer = layer;
        inner.isOneObject = entityGroups(entity).type != "INSERT";
        inner.depth = level.depth + 1;
        const ReferencedBlock block = referencedBlock(*entity.database, placement);
        if (block.contents && !level.holds(*block.contents) && inner.depth <= GeometryCache::kMaxNesting) {
            inner.contents = block.contents;
            inner.external = block.isExternal() ? block.record : nullptr;
            enterCells(inner, placement, block.base, toView);
        }
        inner.contents = nullptr;
        inner.external = nullptr;
        inner.toSpace = level.toSpace;
        forEachSubEntity(entity, [&](HxDbStub& attribute) {
            if (!m_rules.isHidden(m_rules.layerOf(attribute, inner))) {
                offer(attribute, shapeOf(attribute), inner, toView);
            }
        });
    }

    void enterCells(Nesting& inner, const BlockPlacement& placement, const HxGePoint3d& base,
                    const HxGeMatrix3d& toView) {
        const Box3d contents = geometryCache().of(*inner.contents).extents();
        const CellRange cells = cellsTouching(placement, base, contents, toView, m_box);
        for (int row = cells.firstRow; row <= cells.lastRow; ++row) {
            for (int column = cells.firstColumn; column <= cells.lastColumn && --m_looks >= 0; ++column) {
                inner.toSpace = inner.outer->toSpace * placement.cell(base, column, row);
                lookIn(inner);
            }
        }
    }

    /// Of equally near ones the last counts: it is drawn on top.
    void offer(HxDbStub& entity, const Shape& shape, const Nesting& level, const HxGeMatrix3d& toView) {
        const double distance = hitDistance(shape, toView, m_box);
        if (!(distance < std::numeric_limits<double>::infinity()) || distance > m_nearest.distance) {
            return;
        }
        m_nearest.distance = distance;
        PickHit& hit = m_nearest.hit;
        hit.entity = HxDbObjectId(&entity);
        hit.transform = level.toSpace;
        hit.containers.clear();
        for (const Nesting* in = &level; in->reference; in = in->outer) {
            if (in->isOneObject) {
                hit.entity = HxDbObjectId(in->reference);
                hit.transform = in->outer->toSpace;
                hit.containers.clear();
            } else {
                hit.containers.emplace_back(in->reference);
            }
        }
    }

    HxGeMatrix3d m_view;
    Box m_box;
    LayerRules m_rules;
    Nearest& m_nearest;
    int m_looks = kMostLooks;
};

}  // namespace

bool pickAt(const PickRequest& request, PickHit& hit) {
    HxDbStub* space = request.space.stub();
    if (!request.database || !space) {
        return false;
    }
    geometryCache().refresh();
    Nearest nearest;
    const HxDbStub* paper = paperSpace(*request.database);
    HxDbStub* model = modelSpace(*request.database);
    const Box onPaper = Box::around({request.point.x, request.point.y}, request.halfSize);
    if (space == paper && model && request.throughViewports) {
        for (const FloatingWindow& at : floatingWindowsAt(*request.database, *space, onPaper.centre())) {
            Search(HxGeMatrix3d(), onPaper, at.viewport, nearest).lookIn(*model, at.window->modelToPaper());
        }
    }
    const HxGeMatrix3d view = space == model ? turnOf(request.viewport.stub()) : HxGeMatrix3d();
    const HxGePoint3d point = view * request.point;
    const Box box = Box::around({point.x, point.y}, request.halfSize);
    Search(view, box, request.viewport.stub(), nearest).lookIn(*space, HxGeMatrix3d());
    if (nearest.hit.entity.isNull()) {
        return false;
    }
    hit = std::move(nearest.hit);
    return true;
}

}  // namespace korvex
