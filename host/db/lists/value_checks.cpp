// Values are checked before anything is changed, so that a list is taken whole or not at all.
#include "host/db/lists/value_checks.h"

#include "host/db/kernel/entity_access.h"
#include "host/db/kernel/text_fold.h"
#include "host/db/lists/chain.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace korvex {

namespace {

constexpr short kLineWeights[] = {-3, -2, -1, 0,  5,  9,  13,  15,  18,  20,  25,  30,  35, 40,
                                  50, 53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211};

bool isFinite(const resbuf& node) {
    switch (valueKind(node.restype)) {
    case ValueKind::real: return std::isfinite(node.resval.rreal);
    case ValueKind::point:
        return std::all_of(node.resval.rpoint, node.resval.rpoint + 3,
                           [](double x) { return std::isfinite(x); });
    default: return true;
    }
}

struct FlatPoint {
    std::string_view type;
    int first, last;
};
constexpr FlatPoint kFlatPoints[] = {{"LWPOLYLINE", 10, 10}, {"VPORT", 10, 15}, {"VIEWPORT", 12, 15},
                                     {"VIEW", 10, 10},       {"IMAGE", 13, 14}, {"WIPEOUT", 13, 14},
                                     {"LAYOUT", 10, 11}};

}  // namespace

bool isFlatPoint(std::string_view type, int code) {
    return std::any_of(std::begin(kFlatPoints), std::end(kFlatPoints), [&](const FlatPoint& flat) {
        return flat.type == type && code >= flat.first && code <= flat.last;
    });
}

bool ValueChecks::accepts(const resbuf& node) const {
    return isFinite(node) && (!hasAppearance() || acceptsAppearance(node)) && acceptsName(node);
}

bool ValueChecks::acceptsAppearance(const resbuf& node) const {
    const VersionTraits traits = m_database.imp()->traits();
    const int value = node.resval.rint;
    switch (node.restype) {
    case 62: return m_isEntity ? value >= 0 && value <= 256 : value != 0 && std::abs(value) <= 255;
    case 370: {
        const bool exists =
            std::find(std::begin(kLineWeights), std::end(kLineWeights), value) != std::end(kLineWeights);
        return traits.hasLineWeights && exists && (m_isEntity || (value != -1 && value != -2));
    }
    case 290: return m_isEntity || traits.hasLineWeights;
    case 420: return traits.hasTrueColors && node.resval.rlong >= 0 && node.resval.rlong <= 0xFFFFFF;
    case 430:
    case 440: return traits.hasTrueColors;
    default: return true;
    }
}

bool ValueChecks::acceptsName(const resbuf& node) const {
    const TableKind table = referencedTable(m_type, m_isEntity, node.restype);
    if (table == TableKind::count) {
        return true;
    }
    const std::wstring_view name = textOf(node);
    const bool byContext =
        table == TableKind::linetype && (equalNames(name, L"ByLayer") || equalNames(name, L"ByBlock"));
    return byContext ? m_isEntity : findRecord(m_database, table, name) != nullptr;
}

}  // namespace korvex
