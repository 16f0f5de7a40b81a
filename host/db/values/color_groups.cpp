// Colours from groups and to groups.
#include "host/db/values/color_groups.h"

#include <algorithm>
#include <climits>
#include <cstdlib>

namespace korvex {

namespace {

constexpr int kTrueColorCode = 420;
constexpr int kBookCode = 430;

}  // namespace

void ColorGroups::clear() {
    m_index = m_standard;
    m_trueColor = -1;
    m_bookKey.clear();
}

bool ColorGroups::read(const GroupCursor& group) {
    switch (group.code()) {
    case kIndexCode: m_index = std::max(group.asInteger(), -LLONG_MAX); return true;  // it will be negated
    case kTrueColorCode: m_trueColor = group.asInteger() & 0xFFFFFF; return true;
    case kBookCode: m_bookKey = group.asText(); return true;
    default: return false;
    }
}

HxCmColor ColorGroups::color() const {
    const bool mayBeByOthers = m_standard == HxCmColor::kIndexByLayer;
    const long long index = std::llabs(m_index);
    const bool isIndex = mayBeByOthers ? m_index >= 0 && index <= HxCmColor::kIndexByLayer
                                       : index > HxCmColor::kIndexByBlock && index < HxCmColor::kIndexByLayer;
    HxCmColor color = HxCmColor::byIndex(isIndex ? static_cast<std::int16_t>(index) : m_standard);
    if (m_trueColor >= 0) {
        const auto part = [&](unsigned shift) {
            return static_cast<std::uint32_t>(m_trueColor >> shift) & 0xFFU;
        };
        color.setColor(static_cast<std::uint32_t>(HxCmColor::kTrueColor) << 24U | part(0) << 16U |
                       part(8) << 8U | part(16));
        color.setNamesFromDictionaryKey(m_bookKey.c_str());
    }
    return color;
}

long long ColorGroups::indexOf(const HxCmColor& color) const {
    return color == this->color() ? m_index : color.colorIndex();
}

void ColorGroups::writeTrueColor(FieldWriter& out, const HxCmColor& color) {
    if (color.isByColor()) {
        out.integer(kTrueColorCode, color.red() << 16 | color.green() << 8 | color.blue());
    } else {
        out.absent(kTrueColorCode);
    }
    if (color.isFromBook()) {
        out.text(kBookCode, color.getDictionaryKey());
    } else {
        out.absent(kBookCode);
    }
}

}  // namespace korvex
