// The groups of an entity record that its shape is made from.
#pragma once

#include "host/db/entities/entity_cursor.h"
#include "hxge.h"

#include <array>
#include <bitset>
#include <string>

namespace korvex {

/// Puts a group that is a coordinate of point `base` (its x is group `base`, y + 10, z + 20) into place;
/// false for any other group.
bool readCoordinate(const GroupCursor& group, int base, HxGePoint3d& point);

/// An entity whose groups stand once each: points 10 to 18, reals 38 to 59, numbers 60 to 79 and 90, texts
/// 1, 2 and 7, handle 340, extrusion 210. Of a code that is there again, the first counts.
class EntityFields {
public:
    EntityFields(std::string_view groups, const GroupFormat& format);

    bool has(int code) const { return code >= 0 && code < kCodes && m_seen[static_cast<std::size_t>(code)]; }
    const HxGePoint3d& point(int code) const { return m_points[static_cast<std::size_t>(code - 10)]; }
    HxGeVector3d vector(int code) const {
        const HxGePoint3d& p = point(code);
        return {p.x, p.y, p.z};
    }
    double real(int code, double fallback = 0) const {
        return has(code) ? m_reals[static_cast<std::size_t>(code - 38)] : fallback;
    }
    /// Degrees in the drawing, radians here.
    double angle(int code, double fallback = 0) const;
    /// Not only integers: some writers put a real or blanks there. 0 for what is no number.
    int integer(int code, int fallback = 0) const;
    std::wstring text(int code) const;                 ///< 1 (behind all that 3 continues), 2 or 7
    std::uint64_t handle() const { return m_handle; }  ///< 340; 0 when there is none

    HxGeVector3d extrusion() const { return m_extrusion; }
    /// From the entity's plane to the coordinates of its owner.
    HxGeMatrix3d plane() const { return HxGeMatrix3d::planeToWorld(m_extrusion); }
    bool isHidden() const { return m_isHidden; }

private:
    static constexpr int kCodes = 400;
    void read(const EntityCursor& group);

    const TextCodec& m_codec;
    std::bitset<kCodes> m_seen;
    std::array<HxGePoint3d, 9> m_points;
    std::array<double, 22> m_reals{};
    std::array<long long, 31> m_integers{};
    std::string m_text, m_name;
    std::string_view m_style;
    std::uint64_t m_handle = 0;
    HxGeVector3d m_extrusion{0, 0, 1};
    bool m_isHidden = false;
};

}  // namespace korvex
