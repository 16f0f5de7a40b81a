// Names made into bytes that compare as the names do.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

class KvCollation;

/// The natural order (KvCollation::compareNatural) of a set of names, each looked at once. A name becomes a
/// run of bytes: the ranks of its letters among all letters that occur, and for each run of digits its
/// number.
class KvNaturalKeys {
public:
    KvNaturalKeys(const KvCollation& collation, const std::vector<const std::wstring*>& names);

    /// -1, 0 or 1 for two of the names by their places.
    int compare(std::size_t a, std::size_t b) const;

private:
    static constexpr std::size_t kHeadWords = 2;
    struct Key {
        std::uint64_t head[kHeadWords];  ///< the first bytes, so that few comparisons look further
        std::uint32_t begin, end;        ///< all bytes, in m_bytes
        std::uint32_t length;            ///< of the name in letters
    };

    bool rankLetters(const std::vector<const std::wstring*>& names);
    void append(const std::wstring& name);
    void appendNumber(std::int64_t number);
    std::uint32_t rankOf(wchar_t letter) const;

    const KvCollation& m_collation;
    const std::vector<const std::wstring*>& m_names;
    bool m_isExact =
        false;  ///< false: digits do not lie together in this order; names are compared as they are
    std::vector<std::pair<wchar_t, std::uint32_t>> m_ranks;  ///< by letter in lower case
    std::vector<std::uint32_t> m_common;                     ///< the same for the first letters of all
    int m_rankBytes = 1;
    std::vector<std::uint8_t> m_bytes;
    std::vector<Key> m_keys;
};
