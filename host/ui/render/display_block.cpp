// Reads entities into the display list.
#include "host/ui/render/display_block.h"

#include "host/editor/pick/block_geometry.h"
#include "host/ui/render/space_flatten.h"

#include <algorithm>
#include <limits>

namespace korvex {

namespace {

/// Octaves between the tolerances of a curve that is flattened anew: towards finer ones each, towards coarser
/// ones only when much is gained.
constexpr int kFiner = 1;
constexpr int kCoarser = 12;

int octaveOf(double tolerance) {
    const double octave = std::floor(std::log2(tolerance));
    return static_cast<int>(std::min(std::max(octave, -120.0), 120.0));
}

bool isCurved(const Path& path) {
    bool curved = false;
    path.forEach([&curved](const PathSegment& segment) {
        curved = segment.verb == PathVerb::arc || segment.verb == PathVerb::spline;
        return !curved;
    });
    return curved;
}

bool isEndless(const Path& path) {
    bool endless = false;
    path.forEach([&endless](const PathSegment& segment) {
        endless = segment.verb == PathVerb::ray || segment.verb == PathVerb::xline;
        return !endless;
    });
    return endless;
}

/// All at one height: 2 numbers a point are enough.
bool isFlat(const std::vector<double>& points) {
    for (std::size_t i = 3; i + 2 < points.size(); i += 3) {
        if (points[i] == points[i] && points[i + 2] != points[2]) {
            return false;
        }
    }
    return true;
}

DisplayKind kindOf(const Shape& shape) {
    switch (shape.kind) {
    case ShapeKind::point: return DisplayKind::dots;
    case ShapeKind::viewport: return DisplayKind::frame;
    default: break;
    }
    switch (shape.filling) {
    case Filling::evenOdd: return DisplayKind::area;
    case Filling::any: return DisplayKind::band;
    case Filling::none: break;
    }
    if (shape.isMask) {
        return DisplayKind::mask;
    }
    return isEndless(shape.path) ? DisplayKind::endless : DisplayKind::lines;
}

}  // namespace

bool DisplayBlock::isFine(const DisplayItem& item, double tolerance) {
    if (item.detail == DisplayItem::kExact) {
        return true;
    }
    const int wanted = octaveOf(tolerance);
    return item.detail <= wanted && item.detail >= wanted - kCoarser;
}

void DisplayBlock::read(std::size_t place, HxDbStub& entity, double tolerance) {
    DisplayItem& item = m_items[place];
    drop(item);
    item = DisplayItem();
    item.kind = DisplayKind::none;
    if (!isAlive(entity)) {
        return;
    }
    const Shape shape = shapeOf(entity);
    if (shape.kind == ShapeKind::none) {
        return;
    }
    item.look = this->place(entityLook(entity));
    item.isTemplate = shape.isTemplate;
    readShape(item, entity, shape, tolerance);
}

void DisplayBlock::readShape(DisplayItem& item, HxDbStub& entity, const Shape& shape, double tolerance) {
    if (shape.kind == ShapeKind::reference) {
        readReference(item, entity, shape);
        return;
    }
    if (shape.kind == ShapeKind::text) {
        readText(item, entity);
        return;
    }
    if (shape.kind == ShapeKind::viewport && !shape.window->isFloating()) {
        return;
    }
    item.kind = kindOf(shape);
    if (item.kind == DisplayKind::endless || (item.kind == DisplayKind::lines && readArc(item, shape.path))) {
        return;
    }
    readPath(item, shape.path, tolerance);
}

void DisplayBlock::readReference(DisplayItem& item, HxDbStub& entity, const Shape& shape) {
    DisplayReference reference;
    const BlockPlacement& placement = *shape.placement;
    const ReferencedBlock block = referencedBlock(*entity.database, placement);
    reference.block = block.record;
    reference.firstCell = placement.cell(block.base, 0, 0);
    if (placement.rows > 1 || placement.columns > 1) {
        reference.array =
            std::make_unique<DisplayReference::Array>(DisplayReference::Array{shape.placement, block.base});
    }
    forEachSubEntity(entity, [&reference](HxDbStub&) { reference.hasAttributes = true; });
    item.kind = DisplayKind::reference;
    if (m_freeReferences.empty()) {
        item.first = static_cast<std::uint32_t>(m_references.size());
        m_references.push_back(std::move(reference));
    } else {
        item.first = m_freeReferences.back();
        m_freeReferences.pop_back();
        m_references[item.first] = std::move(reference);
    }
}

bool DisplayBlock::readText(DisplayItem& item, HxDbStub& entity) {
    const EntityGroups groups = entityGroups(entity);
    const EntityFields fields(groups.groups, groups.format);
    TextRun run =
        layOut(groups.type == "MTEXT" ? paragraphContent(fields) : lineTextContent(fields, groups.type),
               *entity.database);
    if (run.lines.empty()) {
        return false;
    }
    item.kind = DisplayKind::text;
    if (m_freeTexts.empty()) {
        item.first = static_cast<std::uint32_t>(m_texts.size());
        m_texts.push_back(std::move(run));
    } else {
        item.first = m_freeTexts.back();
        m_freeTexts.pop_back();
        m_texts[item.first] = std::move(run);
    }
    return true;
}

bool DisplayBlock::readArc(DisplayItem& item, const Path& path) {
    if (path.steps() != 2) {
        return false;
    }
    bool isArc = false;
    path.forEach([&](const PathSegment& segment) {
        const EllipticArc& arc = segment.arc;
        if (segment.verb == PathVerb::arc && arc.u.z == 0 && arc.v.z == 0) {
            isArc = true;
            item.first = static_cast<std::uint32_t>(m_numbers.size());
            m_numbers.insert(m_numbers.end(), {arc.centre.z, arc.centre.x, arc.centre.y, arc.u.x, arc.u.y,
                                               arc.v.x, arc.v.y, arc.from, arc.sweep});
            item.count = 9;
            item.kind = DisplayKind::arc;
        }
        return true;
    });
    return isArc;
}

void DisplayBlock::readPath(DisplayItem& item, const Path& path, double tolerance) {
    if (isCurved(path)) {
        const int octave = octaveOf(tolerance) - kFiner;
        item.detail = static_cast<std::int8_t>(octave);
        tolerance = std::ldexp(1.0, octave);
    }
    std::vector<double> points;
    flattenInSpace(path, tolerance, points);
    store(item, points);
}

void DisplayBlock::store(DisplayItem& item, const std::vector<double>& points) {
    item.first = static_cast<std::uint32_t>(m_numbers.size());
    item.isSpatial = !isFlat(points);
    if (points.empty()) {
        item.kind = DisplayKind::none;
    } else if (item.isSpatial) {
        m_numbers.insert(m_numbers.end(), points.begin(), points.end());
    } else {
        m_numbers.push_back(points[2]);
        for (std::size_t i = 0; i + 2 < points.size(); i += 3) {
            m_numbers.insert(m_numbers.end(), {points[i], points[i + 1]});
        }
    }
    item.count = static_cast<std::uint32_t>(m_numbers.size() - item.first);
}

std::uint32_t DisplayBlock::place(const EntityLook& look) {
    const auto [found, isNew] = m_lookPlaces.try_emplace(look, static_cast<std::uint32_t>(m_looks.size()));
    if (isNew) {
        m_looks.push_back(look);
    }
    return found->second;
}

void DisplayBlock::drop(DisplayItem& item) {
    if (item.kind == DisplayKind::text) {
        m_texts[item.first] = TextRun();
        m_freeTexts.push_back(item.first);
    } else if (item.kind == DisplayKind::reference) {
        m_references[item.first] = DisplayReference();
        m_freeReferences.push_back(item.first);
    } else {
        m_unused += item.count;
    }
    item = DisplayItem();
}

void DisplayBlock::forget(std::size_t place) {
    if (place < m_items.size()) {
        drop(m_items[place]);
    }
}

void DisplayBlock::forgetReferences() {
    for (DisplayItem& item : m_items) {
        if (item.kind == DisplayKind::reference) {
            drop(item);
        }
    }
}

void DisplayBlock::tidy() {
    constexpr std::size_t kWorthwhile = 4096;
    if (m_unused > kWorthwhile && m_unused > m_numbers.size() / 2) {
        std::vector<double> kept;
        kept.reserve(m_numbers.size() - m_unused);
        for (DisplayItem& item : m_items) {
            if (item.count > 0) {
                const auto first = m_numbers.begin() + static_cast<std::ptrdiff_t>(item.first);
                item.first = static_cast<std::uint32_t>(kept.size());
                kept.insert(kept.end(), first, first + static_cast<std::ptrdiff_t>(item.count));
            }
        }
        m_numbers = std::move(kept);
        m_unused = 0;
    } else if (m_numbers.capacity() - m_numbers.size() > kWorthwhile + m_numbers.size() / 8) {
        m_numbers.shrink_to_fit();
    }
}

std::size_t DisplayBlock::bytes() const {
    constexpr std::size_t kMapNode = 4 * sizeof(void*);
    std::size_t total =
        sizeof *this + m_items.capacity() * sizeof(DisplayItem) + m_numbers.capacity() * sizeof(double) +
        m_references.size() * sizeof(DisplayReference) + m_looks.capacity() * sizeof(EntityLook) +
        m_lookPlaces.size() * (sizeof(EntityLook) + kMapNode);
    for (const TextRun& text : m_texts) {
        total += text.bytes();
    }
    return total;
}

}  // namespace korvex
