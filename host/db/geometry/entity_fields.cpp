// Sorts an entity's groups by what they tell.
#include "host/db/geometry/entity_fields.h"

#include "host/db/geometry/spline_curve.h"

#include <algorithm>
#include <climits>

namespace korvex {

namespace {

constexpr double kDegree = 0.017453292519943295769;

}  // namespace

bool readCoordinate(const GroupCursor& group, int base, HxGePoint3d& point) {
    const int code = group.code();
    if (code == base) {
        point.x = group.asReal();
    } else if (code == base + 10) {
        point.y = group.asReal();
    } else if (code == base + 20) {
        point.z = group.asReal();
    } else {
        return false;
    }
    return true;
}

EntityFields::EntityFields(std::string_view groups, const GroupFormat& format) : m_codec(*format.codec) {
    for (EntityCursor cursor(groups, format); cursor.next();) {
        read(cursor);
    }
    if (!isUsable(m_extrusion)) {
        m_extrusion = {0, 0, 1};
    }
}

void EntityFields::read(const EntityCursor& cursor) {
    const GroupCursor& group = *cursor;
    const int code = group.code();
    if (code == shared_group::kVisibility && cursor.isShared()) {
        m_isHidden = group.asInteger() != 0;
    }
    if (code == 3) {
        m_text += group.raw();
        return;
    }
    if (code < 0 || code >= kCodes || has(code)) {
        return;
    }
    m_seen.set(static_cast<std::size_t>(code));
    if (code == 1) {
        m_text += group.raw();
    } else if (code == 2) {
        m_name = group.raw();
    } else if (code == 7) {
        m_style = group.raw();
    } else if (code >= 10 && code <= 37 && code % 10 <= 8) {
        readCoordinate(group, 10 + code % 10, m_points[static_cast<std::size_t>(code % 10)]);
    } else if (code >= 38 && code <= 59) {
        m_reals[static_cast<std::size_t>(code - 38)] = group.asReal();
    } else if (code >= 60 && code <= 90) {
        m_integers[static_cast<std::size_t>(code - 60)] = group.asInteger();
    } else if (code == 210 || code == 220 || code == 230) {
        (code == 210 ? m_extrusion.x : code == 220 ? m_extrusion.y : m_extrusion.z) = group.asReal();
    } else if (code == 340) {
        m_handle = group.asHandle();
    }
}

double EntityFields::angle(int code, double fallback) const {
    return has(code) ? real(code) * kDegree : fallback;
}

int EntityFields::integer(int code, int fallback) const {
    if (!has(code)) {
        return fallback;
    }
    const long long value = m_integers[static_cast<std::size_t>(code - 60)];
    return static_cast<int>(std::min<long long>(std::max<long long>(value, INT_MIN), INT_MAX));
}

std::wstring EntityFields::text(int code) const {
    return m_codec.decode(code == 1 ? std::string_view(m_text) : code == 2 ? m_name : m_style);
}

}  // namespace korvex
