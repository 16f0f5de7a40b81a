// Which entities are seen, and where: down through references and arrays.
#include "host/ui/render/scene_walk.h"

#include "host/editor/pick/block_geometry.h"

#include <algorithm>

namespace korvex {

namespace {

constexpr double kPixel = 1;        ///< what is smaller is a point
constexpr double kTolerance = 0.3;  ///< pixels by which curves may be off
/// Pixels of an entity beyond which the curves that are kept are too coarse to go by.
constexpr double kLargestKept = 16384;
constexpr int kTokenLooks = 64;
constexpr long long kItemWork = 1, kCellWork = 4;

/// The longest that the transformation makes a unit.
double stretchOf(const HxGeMatrix3d& m) {
    double longest = 0;
    for (std::size_t column = 0; column < 3; ++column) {
        longest = std::max(longest, std::hypot(m.entry[0][column], m.entry[1][column]));
    }
    return longest;
}

/// A box seen along z, and whether it can be seen at all.
Box seen(const Box3d& box, const HxGeMatrix3d& m) {
    if (!box.isBounded()) {
        return Box::all();
    }
    const auto along = [&](std::size_t row) {
        const auto& e = m.entry[row];
        const double middle = e[0] * (box.x.low + box.x.high) + e[1] * (box.y.low + box.y.high) +
                              e[2] * (box.z.low + box.z.high);
        const double reach = std::fabs(e[0]) * (box.x.high - box.x.low) +
                             std::fabs(e[1]) * (box.y.high - box.y.low) +
                             std::fabs(e[2]) * (box.z.high - box.z.low);
        return Range{(middle - reach) / 2 + e[3], (middle + reach) / 2 + e[3]};
    };
    return {along(0), along(1)};
}

double sizeOf(const Box& box) { return std::max(box.x.high - box.x.low, box.y.high - box.y.low); }

/// A good part of the whole is seen: going through all of it beats asking the index.
bool isMost(const Box3d& part, const Box3d& whole) {
    const auto share = [](const Range& a, const Range& b) { return b.size() > 0 ? a.size() / b.size() : 1; };
    return share(part.x, whole.x) * share(part.y, whole.y) > 0.1;
}

}  // namespace

SceneWalk::SceneWalk(Canvas& canvas, DisplayCache& cache, LookRules& rules, const WalkSettings& settings,
                     WorkBudget& budget)
    : m_canvas(canvas), m_cache(cache), m_rules(rules), m_settings(settings), m_budget(budget) {
    const double margin = 4 + 2 * settings.pointSize;
    const QRect& clip = canvas.clip();
    m_window = {{clip.left() - margin, clip.left() + clip.width() + margin},
                {clip.top() - margin, clip.top() + clip.height() + margin}};
}

void SceneWalk::drawSpace(HxDbStub& space, const HxGeMatrix3d& toDevice) {
    WalkLevel level;
    level.contents = &space;
    drawContents(space, toDevice, m_rules.root(), level);
}

void SceneWalk::drawContents(HxDbStub& contents, const HxGeMatrix3d& toDevice, LookContext& context,
                             const WalkLevel& level) {
    const BlockGeometry& geometry = geometryCache().of(contents);
    const Box3d whole = geometry.extents();
    const Box3d part = coveredPart(whole, toDevice, m_window);
    if (part.isEmpty()) {
        return;
    }
    DisplayBlock& display = m_cache.of(contents);
    const Place place{contents,           display, toDevice, context, m_rules.table(context, display), level,
                      stretchOf(toDevice)};
    const std::size_t count = std::min(geometry.boxes.size(), members(contents).size());
    constexpr std::size_t kFew = 64;
    const bool isAll = count < kFew || isMost(part, whole);
    if (isAll && (count < kFew || !m_settings.isCoarse)) {
        for (std::size_t i = 0; i < count && !m_budget.isSpent(); ++i) {
            if (geometry.boxes[i].intersects(part)) {
                visit(place, i, geometry.boxes[i]);
            }
        }
        return;
    }
    std::vector<std::size_t> found;
    if (isAll) {
        for (std::size_t i = 0; i < count; ++i) {
            if (geometry.boxes[i].intersects(part)) {
                found.push_back(i);
            }
        }
    } else {
        geometry.index.query(part, [&](SpatialIndex::Key key) {
            if (key < count) {
                found.push_back(key);
            }
            return true;
        });
        std::sort(found.begin(), found.end());
    }
    visitAll(place, geometry, std::move(found));
}

/// In their order; a coarse walk takes small ones last, and every so-many-th each time.
void SceneWalk::visitAll(const Place& place, const BlockGeometry& geometry, std::vector<std::size_t> places) {
    constexpr double kSmall = 2 * kPixel;
    constexpr std::size_t kStrides = 16;
    auto large = places.end();
    if (m_settings.isCoarse) {
        large = std::stable_partition(places.begin(), places.end(), [&](std::size_t at) {
            return sizeOf(seen(geometry.boxes[at], place.toDevice)) >= kSmall;
        });
    }
    const std::size_t strides = m_settings.isCoarse ? kStrides : 1;
    const auto visitRange = [&](std::size_t from, std::size_t to) {
        for (std::size_t start = 0; start < strides; ++start) {
            for (std::size_t i = from + start; i < to && !m_budget.isSpent(); i += strides) {
                visit(place, places[i], geometry.boxes[places[i]]);
            }
        }
    };
    const auto middle = static_cast<std::size_t>(large - places.begin());
    visitRange(0, middle);
    visitRange(middle, places.size());
}

void SceneWalk::visit(const Place& place, std::size_t at, const Box3d& box) {
    const Box shown = seen(box, place.toDevice);
    if (!shown.intersects(m_window)) {
        return;
    }
    m_budget.left -= kItemWork;
    HxDbStub& entity = *members(place.contents)[at];
    const double size = sizeOf(shown);
    const double tolerance = kTolerance / place.stretch * std::max(1.0, std::min(size, 1e9) / kLargestKept);
    const DisplayItem& item = place.display.item(at, entity, tolerance);
    if (item.kind == DisplayKind::none || (item.isTemplate && place.level.depth > 0) ||
        (item.kind == DisplayKind::frame && !m_settings.drawsFrames)) {
        return;
    }
    if (size < kPixel && item.kind != DisplayKind::reference && item.kind != DisplayKind::dots) {
        const ResolvedLook& look = m_rules.look(place.context, place.table, place.display, item.look);
        if (!look.isHidden) {
            usePen(look);
            m_canvas.dot(shown.centre());
        }
        return;
    }
    drawItem(place, entity, item, size);
}

void SceneWalk::drawItem(const Place& place, HxDbStub& entity, const DisplayItem& item, double size) {
    const ResolvedLook& look = m_rules.look(place.context, place.table, place.display, item.look);
    if (item.kind == DisplayKind::reference) {
        if (!look.isFrozen) {
            drawReference(place, entity, item, look, size);
        }
        return;
    }
    if (look.isHidden) {
        return;
    }
    usePen(look);
    switch (item.kind) {
    case DisplayKind::arc: drawArc(place, entity, item, look); break;
    case DisplayKind::dots: drawDots(place, item, look); break;
    case DisplayKind::text: drawText(place, place.display.text(item)); break;
    case DisplayKind::endless: drawShape(place, entity, item, look); break;
    default:
        if (item.detail != DisplayItem::kExact && size > kLargestKept) {
            drawShape(place, entity, item, look);
        } else {
            drawRuns(place, item, look);
        }
    }
}

SceneWalk::Inside SceneWalk::enter(const Place& place, const DisplayReference& reference,
                                   const ResolvedLook& look) {
    Inside inside;
    HxDbDatabase* external = reference.block ? xrefDatabase(*reference.block) : nullptr;
    HxDbStub* contents = external ? modelSpace(*external) : reference.block;
    inside.context = &m_rules.inside(place.context, look, external ? reference.block : nullptr);
    inside.level = {&place.level, contents, place.level.depth + 1};
    if (contents && !place.level.holds(*contents) && inside.level.depth <= GeometryCache::kMaxNesting) {
        inside.contents = contents;
    }
    return inside;
}

void SceneWalk::drawReference(const Place& place, HxDbStub& entity, const DisplayItem& item,
                              const ResolvedLook& look, double size) {
    const DisplayReference& reference = place.display.reference(item);
    const Inside inside = enter(place, reference, look);
    if (inside.contents && size < 2 * kPixel) {
        int looks = kTokenLooks;
        if (const ResolvedLook* mark = token(*inside.contents, *inside.context, inside.level, looks)) {
            usePen(*mark);
            const Box3d& box = geometryCache().of(place.contents).boxes[entity.position];
            m_canvas.dot(seen(box, place.toDevice).centre());
        }
    } else if (inside.contents && reference.array) {
        drawCells(place, reference, inside);
    } else if (inside.contents) {
        drawCell(inside, place.toDevice * reference.firstCell);
    }
    if (reference.hasAttributes) {
        drawAttributes(place, entity, m_rules.inside(place.context, look, nullptr));
    }
}

void SceneWalk::drawCell(const Inside& inside, const HxGeMatrix3d& toDevice) {
    m_budget.left -= kCellWork;
    drawContents(*inside.contents, toDevice, *inside.context, inside.level);
}

void SceneWalk::drawCells(const Place& place, const DisplayReference& reference, const Inside& inside) {
    const Box3d extents = geometryCache().of(*inside.contents).extents();
    const CellRange cells =
        cellsTouching(*reference.array->placement, reference.array->base, extents, place.toDevice, m_window);
    const HxGeMatrix3d first = place.toDevice * reference.firstCell;
    const double size = sizeOf(seen(extents, first));
    const auto stride = [&](int column, int row) {
        const HxGeVector3d step =
            place.toDevice * (reference.array->cell(column, row) * HxGePoint3d()) - first * HxGePoint3d();
        const double length = std::hypot(step.x, step.y);
        return length > 0 && length < kPixel ? static_cast<int>(std::min(std::ceil(kPixel / length), 32767.0))
                                             : 1;
    };
    const int columns = stride(1, 0);
    const int rows = stride(0, 1);
    int looks = kTokenLooks;
    const ResolvedLook* mark =
        size < 2 * kPixel ? token(*inside.contents, *inside.context, inside.level, looks) : nullptr;
    for (int row = cells.firstRow; row <= cells.lastRow; row += rows) {
        for (int column = cells.firstColumn; column <= cells.lastColumn; column += columns) {
            if (m_budget.isSpent()) {
                return;
            }
            const HxGeMatrix3d cell = place.toDevice * reference.array->cell(column, row);
            if (size >= 2 * kPixel) {
                drawCell(inside, cell);
            } else if (mark) {
                m_budget.left -= kCellWork;
                usePen(*mark);
                m_canvas.dot(seen(extents, cell).centre());
            }
        }
    }
}

void SceneWalk::drawAttributes(const Place& place, HxDbStub& entity, LookContext& context) {
    forEachSubEntity(entity, [&](HxDbStub& attribute) { drawAttribute(place, attribute, context); });
}

void SceneWalk::drawAttribute(const Place& place, HxDbStub& attribute, LookContext& context) {
    const DisplayItem& item = place.display.item(attribute.position, attribute, 1);
    if (item.kind != DisplayKind::text) {
        return;
    }
    m_budget.left -= kItemWork;
    const ResolvedLook& look =
        m_rules.look(context, m_rules.table(context, place.display), place.display, item.look);
    if (!look.isHidden) {
        usePen(look);
        drawText(place, place.display.text(item));
    }
}

/// The look of the first thing that is seen in a block, to stand for all of it.
const ResolvedLook* SceneWalk::token(HxDbStub& contents, LookContext& context, const WalkLevel& level,
                                     int& looks) {
    DisplayBlock& display = m_cache.of(contents);
    LookTable& table = m_rules.table(context, display);
    if (table.hasToken) {
        return table.token;
    }
    const std::vector<HxDbStub*>& all = members(contents);
    const ResolvedLook* found = nullptr;
    for (std::size_t i = 0; i < all.size() && !found && looks > 0; ++i) {
        if (all[i]->subEntity || !isAlive(*all[i])) {
            continue;
        }
        --looks;
        const DisplayItem& item = display.item(i, *all[i], 1e9);
        if (item.kind == DisplayKind::none || item.kind == DisplayKind::frame || item.isTemplate) {
            continue;
        }
        const ResolvedLook& look = m_rules.look(context, table, display, item.look);
        if (item.kind != DisplayKind::reference) {
            found = look.isHidden ? nullptr : &look;
        } else if (!look.isFrozen) {
            const DisplayReference& reference = display.reference(item);
            if (reference.block && !level.holds(*reference.block) && !xrefDatabase(*reference.block) &&
                level.depth < GeometryCache::kMaxNesting) {
                WalkLevel inner{&level, reference.block, level.depth + 1};
                found = token(*reference.block, m_rules.inside(context, look, nullptr), inner, looks);
            }
        }
    }
    table.token = found;
    table.hasToken = true;
    return found;
}

void SceneWalk::drawPath(HxDbStub& space, const std::vector<HxDbStub*>& path, const HxGeMatrix3d& toDevice) {
    WalkLevel level;
    level.contents = &space;
    if (!path.empty()) {
        drawPathIn(space, path, path.size() - 1, toDevice, m_rules.root(), level);
    }
}

void SceneWalk::drawPathIn(HxDbStub& contents, const std::vector<HxDbStub*>& path, std::size_t at,
                           const HxGeMatrix3d& toDevice, LookContext& context, const WalkLevel& level) {
    HxDbStub& entity = *path[at];
    const BlockGeometry& geometry = geometryCache().of(contents);
    if (entity.owner != &contents || entity.position >= geometry.boxes.size() || m_budget.isSpent()) {
        return;
    }
    DisplayBlock& display = m_cache.of(contents);
    const Place place{contents,           display, toDevice, context, m_rules.table(context, display), level,
                      stretchOf(toDevice)};
    const double size = sizeOf(seen(geometry.boxes[entity.position], toDevice));
    const DisplayItem item = display.item(entity.position, entity, kTolerance / place.stretch);
    if (item.kind == DisplayKind::none) {
        return;
    }
    if (at == 0) {
        drawItem(place, entity, item, size);
        return;
    }
    if (item.kind != DisplayKind::reference) {
        return;
    }
    const ResolvedLook& look = m_rules.look(context, place.table, display, item.look);
    const DisplayReference& reference = display.reference(item);
    if (path[at - 1]->subEntity && path[at - 1]->owner == &entity) {
        drawAttribute(place, *path[at - 1], m_rules.inside(context, look, nullptr));
        return;
    }
    const Inside inside = enter(place, reference, look);
    if (!inside.contents) {
        return;
    }
    const DisplayReference::Array* array = reference.array.get();
    const int columns = array ? array->placement->columns : 1;
    const int rows = array ? array->placement->rows : 1;
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns && !m_budget.isSpent(); ++column) {
            m_budget.left -= kCellWork;
            const HxGeMatrix3d cell = array ? array->cell(column, row) : reference.firstCell;
            drawPathIn(*inside.contents, path, at - 1, toDevice * cell, *inside.context, inside.level);
        }
    }
}

}  // namespace korvex
