// The shared groups' table, and what is known of classes whose shared groups may stand behind their marker.
#include "host/db/entities/entity_cursor.h"

#include "host/db/groups/group_lexer.h"

#include <algorithm>

namespace korvex {

namespace {

using shared_group::bitOf;

constexpr std::uint32_t kLayerBit = bitOf(shared_group::kLayer);
constexpr std::uint32_t kTextGround =
    bitOf(shared_group::kTrueColor) | bitOf(shared_group::kColorBook) | bitOf(shared_group::kTransparency);

/// A class without groups of its own under shared codes, but for those of `own`.
struct KnownClass {
    std::string_view type;
    int bulkCode = 0;       ///< begins what there may be thousands of; 0: nothing (it is the type's code)
    std::uint32_t own = 0;  ///< shared codes that mean something else behind the marker
};
constexpr KnownClass kKnownClasses[] = {
    {"3DFACE"},
    {"3DLINE"},
    {"3DSOLID", 1},
    {"ARC"},
    {"ARC_DIMENSION"},
    {"ATTDEF"},
    {"ATTRIB"},
    {"BLOCK"},
    {"BODY", 1},
    {"CIRCLE"},
    {"DIMENSION"},
    {"ELLIPSE"},
    {"ENDBLK"},
    {"EXTRUDEDSURFACE", 1, bitOf(shared_group::kLinetypeScale)},
    {"HATCH", 91},
    {"HELIX", 40},
    {"IMAGE", 91},
    {"INSERT"},
    {"LARGE_RADIAL_DIMENSION"},
    {"LEADER", 10},
    {"LINE"},
    {"LWPOLYLINE", 10},
    {"MESH", 92},
    {"MLINE", 11},
    {"MPOLYGON", 91},
    {"MTEXT", 0, kTextGround},
    {"MULTILEADER", 300},
    {"OLE2FRAME", 310},
    {"POINT"},
    {"POLYLINE"},
    {"RAY"},
    {"REGION", 1},
    {"SEQEND"},
    {"SHAPE"},
    {"SOLID"},
    {"SPLINE", 40},
    {"SURFACE", 1},
    {"SWEPTSURFACE", 1, bitOf(shared_group::kLinetypeScale)},
    {"TEXT"},
    {"TOLERANCE"},
    {"TRACE"},
    {"VERTEX"},
    {"VIEWPORT", 331, bitOf(shared_group::kVisualStyle)},
    {"WIPEOUT", 91},
    {"XLINE"},
};

const KnownClass* knownClass(std::string_view type) {
    const auto found =
        std::lower_bound(std::begin(kKnownClasses), std::end(kKnownClasses), type,
                         [](const KnownClass& known, std::string_view t) { return known.type < t; });
    return found != std::end(kKnownClasses) && found->type == type ? found : nullptr;
}

}  // namespace

std::string_view trimmedText(const GroupCursor& group) { return groups::trimmed(group.raw()); }

bool EntityCursor::nextShared() {
    while (!isSharedOver() && next()) {
        if (m_isShared) {
            return true;
        }
    }
    return false;
}

void EntityCursor::marker() {
    if (trimmedText(m_cursor) == "AcDbEntity") {
        return;
    }
    GroupCursor first(m_groups, m_cursor.format());
    const KnownClass* known = first.next() ? knownClass(trimmedText(first)) : nullptr;
    m_isOwn = true;
    m_open = known ? kAll & ~known->own : kLayerBit;
    m_bulkCode = known && known->bulkCode != 0 ? known->bulkCode : kNoCode;
}

}  // namespace korvex
