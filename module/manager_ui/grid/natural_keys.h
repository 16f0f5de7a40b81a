// Names made into bytes that compare as the names do.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <vector>

class KvCollation;

/// The natural order (KvCollation::compareNatural) of a set of names, each looked at once. A name becomes a
/// run of bytes: the ranks of its letters among all letters that occur, and for each run of digits its
/// number.
class KvNaturalKeys {
public:
    /// One name in a sort: its place in the set and the first bytes of its key, which decide most
    /// comparisons without a look at anything else.
    struct Item {
        std::uint64_t high = 0, low = 0;
        std::uint32_t size = 0;  ///< of the whole key
        std::uint32_t place = 0;
    };

    /// The names must outlive the keys.
    KvNaturalKeys(const KvCollation& collation, std::vector<std::wstring_view> names);

    /// For all names, in their order.
    const std::vector<Item>& items() const { return m_items; }
    /// -1, 0 or 1.
    int compare(const Item& a, const Item& b) const {
        // They decide where both keys reach as far as they differ.
        const bool isHigh = a.high != b.high;
        const std::uint64_t x = isHigh ? a.high : a.low;
        const std::uint64_t y = isHigh ? b.high : b.low;
        if (x != y) {
            const int bytes = __builtin_clzll(x ^ y) / 8 + (isHigh ? 0 : static_cast<int>(kWordBytes));
            if (static_cast<std::uint32_t>(bytes) < std::min(a.size, b.size)) return x < y ? -1 : 1;
        }
        return compareWhole(a, b);
    }
    /// The same for two of the names by their places.
    int compare(std::size_t a, std::size_t b) const { return compare(m_items[a], m_items[b]); }

private:
    static constexpr std::size_t kWordBytes = sizeof(std::uint64_t);
    static constexpr std::size_t kHeadBytes = 2 * kWordBytes;

    bool rankLetters();
    std::size_t usualBytes() const;
    void append(std::wstring_view name);
    void appendNumber(std::int64_t number);
    std::uint32_t rankOf(wchar_t letter) const;
    std::uint32_t searchRank(wchar_t lowered) const;
    int compareWhole(const Item& a, const Item& b) const;

    const KvCollation& m_collation;
    std::vector<std::wstring_view> m_names;
    bool m_isExact =
        false;  ///< false: digits do not lie together in this order; names are compared as they are
    std::vector<std::pair<wchar_t, std::uint32_t>> m_ranks;  ///< by letter in lower case
    std::vector<std::uint32_t> m_common;                     ///< by letter, of the first of all
    int m_rankBytes = 1;
    std::vector<std::uint8_t> m_bytes;
    std::vector<std::uint32_t> m_begins;  ///< of each key, in m_bytes
    std::vector<Item> m_items;
};

/// The places of some names in their natural order, forwards or backwards; names that are equal by their keys
/// as whole texts.
std::vector<std::uint32_t> naturalOrder(const KvCollation& collation,
                                        const std::vector<std::wstring_view>& names, bool ascending);
