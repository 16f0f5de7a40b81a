// Walks an entity's groups, and tells which of them are those that all entities share (layer, linetype,
// colour and the like). Whatever reads or writes one of these, as an object, for drawing or while loading,
// does it by this walk, so that everyone sees the same.
#pragma once

#include "host/db/groups/group_cursor.h"

#include <array>

namespace korvex {

/// The groups that every entity may have, whatever its class.
namespace shared_group {
enum Code : int {
    kLinetype = 6,
    kLayer = 8,
    kLinetypeScale = 48,
    kVisibility = 60,
    kColorIndex = 62,
    kPaper = 67,
    kShadows = 284,
    kMaterial = 347,
    kVisualStyle = 348,
    kLineWeight = 370,
    kPlotStyleKind = 380,
    kPlotStyle = 390,
    kLayout = 410,
    kTrueColor = 420,
    kColorBook = 430,
    kTransparency = 440,
};
constexpr std::array<int, 16> kCodes = {kLinetype,    kLayer,      kLinetypeScale, kVisibility,
                                        kColorIndex,  kPaper,      kShadows,       kMaterial,
                                        kVisualStyle, kLineWeight, kPlotStyleKind, kPlotStyle,
                                        kLayout,      kTrueColor,  kColorBook,     kTransparency};

constexpr std::size_t kLast = kCodes.back();
/// A bit for each code, by code.
constexpr std::array<std::uint32_t, kLast + 1> bitsOfCodes() {
    std::array<std::uint32_t, kLast + 1> bits{};
    for (std::size_t i = 0; i < kCodes.size(); ++i) {
        bits[static_cast<std::size_t>(kCodes[i])] = 1U << i;
    }
    return bits;
}
inline constexpr std::array<std::uint32_t, kLast + 1> kBits = bitsOfCodes();

/// 0 for any other code.
constexpr std::uint32_t bitOf(int code) {
    const auto at = static_cast<unsigned>(code);
    return at <= kLast ? kBits[at] : 0;
}
}  // namespace shared_group

/// True for the codes of shared_group.
inline bool isSharedCode(int code) { return shared_group::bitOf(code) != 0; }

/// The text of a group without blanks around it: markers, types and names of runs.
std::string_view trimmedText(const GroupCursor& group);

/// Steps over the groups that belong to the entity itself: leaves out "102 {...}" runs and ends before
/// extended data and embedded objects, which use the same codes for things of their own.
///
/// Shared groups stand before the marker of the entity's own class. Some programs put them behind it; there
/// they count if the class has no such group of its own, up to where its vertices, bytes or the like begin.
/// The layer, which no class uses for anything else, counts wherever it stands; it is all that counts behind
/// the marker of a class that is not known. Of a code that is there again the first counts.
class EntityCursor {
public:
    EntityCursor(std::string_view groups, const GroupFormat& format)
        : m_cursor(groups, format), m_groups(groups) {}
    bool next() {
        while (m_cursor.next()) {
            const int code = m_cursor.code();
            if (code >= 1000 || code == 101) {
                return false;
            }
            if (code == 102) {
                m_inRun = trimmedText(m_cursor).substr(0, 1) == "{";
            } else if (!m_inRun) {
                note(code);
                return true;
            }
        }
        return false;
    }
    /// Steps to the next shared group that counts; false when none can come any more.
    bool nextShared();
    /// The group is a shared one that counts.
    bool isShared() const { return m_isShared; }
    /// No shared group can come any more.
    bool isSharedOver() const { return (m_open & ~m_seen) == 0; }

    int code() const { return m_cursor.code(); }
    const GroupCursor* operator->() const { return &m_cursor; }
    const GroupCursor& operator*() const { return m_cursor; }

private:
    void note(int code) {
        const std::uint32_t bit = shared_group::bitOf(code);
        m_isShared = (bit & m_open & ~m_seen) != 0;
        m_seen |= m_isShared ? bit : 0;
        if (code == 100 && !m_isOwn) {
            marker();
        } else if (code == m_bulkCode) {
            m_open &= shared_group::bitOf(shared_group::kLayer);
        }
    }
    void marker();

    static constexpr int kNoCode = -10000;
    static constexpr std::uint32_t kAll = (1U << shared_group::kCodes.size()) - 1;

    GroupCursor m_cursor;
    std::string_view m_groups;
    std::uint32_t m_open = kAll;  ///< shared groups that count here, a bit each
    std::uint32_t m_seen = 0;
    int m_bulkCode = kNoCode;  ///< begins the part where only the layer counts
    bool m_isOwn = false;      ///< behind the marker of the class
    bool m_isShared = false;
    bool m_inRun = false;
};

}  // namespace korvex
