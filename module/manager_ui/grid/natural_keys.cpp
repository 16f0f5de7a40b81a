// Names made into bytes that compare as the names do.
#include "natural_keys.h"

#include "collation.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr wchar_t kCommonLetters = 0x250;
constexpr std::size_t kWordBytes = sizeof(std::uint64_t);
constexpr std::size_t kHeadBytes = 2 * kWordBytes;

int sign(int value) { return (value > 0) - (value < 0); }

/// Counted in bytes from the highest. REQUIRES: they differ.
std::size_t firstDifference(std::uint64_t x, std::uint64_t y) {
    std::size_t byte = 0;
    for (std::uint64_t rest = x ^ y; (rest >> 56) == 0; rest <<= 8) {
        ++byte;
    }
    return byte;
}

}  // namespace

KvNaturalKeys::KvNaturalKeys(const KvCollation& collation, std::vector<std::wstring_view> names)
    : m_collation(collation), m_names(std::move(names)) {
    m_isExact = rankLetters();
    m_items.resize(m_names.size());
    m_begins.reserve(m_names.size());
    for (std::size_t place = 0; place < m_names.size(); ++place) {
        m_items[place].place = static_cast<std::uint32_t>(place);
        if (m_isExact) append(m_names[place]);
    }
}

/// Equal letters have the same rank; ranks begin with 1. False when some other letter stands among the
/// digits, or there are too many letters.
bool KvNaturalKeys::rankLetters() {
    std::wstring letters = L"0123456789";
    std::vector<bool> seen(kCommonLetters);
    for (const std::wstring_view name : m_names) {
        for (const wchar_t c : name) {
            const wchar_t letter = m_collation.lower(c);
            const auto at = static_cast<std::size_t>(letter);
            if (at < seen.size() ? seen[at] : false) continue;
            if (at < seen.size()) seen[at] = true;
            letters += letter;
        }
    }
    std::sort(letters.begin(), letters.end());
    letters.erase(std::unique(letters.begin(), letters.end()), letters.end());
    std::stable_sort(letters.begin(), letters.end(),
                     [this](wchar_t a, wchar_t b) { return m_collation.compareLetters(a, b) < 0; });
    std::uint32_t rank = 0;
    for (std::size_t i = 0; i < letters.size(); ++i) {
        rank += i == 0 || m_collation.compareLetters(letters[i - 1], letters[i]) != 0;
        m_ranks.emplace_back(letters[i], rank);
    }
    m_rankBytes = rank <= 0xFF ? 1 : 2;
    std::sort(m_ranks.begin(), m_ranks.end());
    m_common.assign(kCommonLetters, 0);
    for (const auto& [letter, place] : m_ranks) {
        if (letter < kCommonLetters) m_common[static_cast<std::size_t>(letter)] = place;
    }
    return rank <= 0xFFFF && rankOf(L'9') - rankOf(L'0') == 9;
}

std::uint32_t KvNaturalKeys::rankOf(wchar_t letter) const {
    if (letter < kCommonLetters) return m_common[static_cast<std::size_t>(letter)];
    const auto found = std::lower_bound(m_ranks.begin(), m_ranks.end(), std::make_pair(letter, 0U));
    return found->second;
}

/// Short numbers before long ones, then by their bytes.
void KvNaturalKeys::appendNumber(std::int64_t number) {
    int count = 0;
    for (std::int64_t rest = number; rest > 0; rest >>= 8) {
        ++count;
    }
    m_bytes.push_back(static_cast<std::uint8_t>(count));
    while (count-- > 0) {
        m_bytes.push_back(static_cast<std::uint8_t>(number >> (8 * count)));
    }
}

void KvNaturalKeys::append(std::wstring_view name) {
    const std::size_t begin = m_bytes.size();
    for (std::size_t i = 0; i < name.size();) {
        const bool isDigit = KvCollation::isDigit(name[i]);
        const std::uint32_t rank = rankOf(isDigit ? L'0' : m_collation.lower(name[i]));
        if (m_rankBytes == 2) m_bytes.push_back(static_cast<std::uint8_t>(rank >> 8));
        m_bytes.push_back(static_cast<std::uint8_t>(rank));
        if (isDigit) {
            appendNumber(KvCollation::takeNumber(name, i));
        } else {
            ++i;
        }
    }
    Item& item = m_items[m_begins.size()];
    m_begins.push_back(static_cast<std::uint32_t>(begin));
    item.size = static_cast<std::uint32_t>(m_bytes.size() - begin);
    for (std::size_t i = 0; i < kHeadBytes; ++i) {
        const std::uint64_t byte = i < item.size ? m_bytes[begin + i] : 0;
        std::uint64_t& word = i < kWordBytes ? item.high : item.low;
        word |= byte << (56 - 8 * (i % kWordBytes));
    }
}

/// The first bytes decide where both keys reach as far as they differ: at the end of one of two equal keys
/// the lengths of the names count.
int KvNaturalKeys::compare(const Item& a, const Item& b) const {
    if (!m_isExact) return m_collation.compareNatural(m_names[a.place], m_names[b.place]);
    const std::uint64_t x = a.high != b.high ? a.high : a.low;
    const std::uint64_t y = a.high != b.high ? b.high : b.low;
    if (x != y) {
        const std::size_t differs = firstDifference(x, y) + (a.high != b.high ? 0 : kWordBytes);
        if (differs < std::min(a.size, b.size)) return x < y ? -1 : 1;
    }
    return compareWhole(a, b);
}

int KvNaturalKeys::compareWhole(const Item& a, const Item& b) const {
    const std::size_t common = std::min(a.size, b.size);
    const int order =
        common == 0 ? 0 : std::memcmp(&m_bytes[m_begins[a.place]], &m_bytes[m_begins[b.place]], common);
    if (order != 0) return sign(order);
    const std::size_t xLength = m_names[a.place].size();
    const std::size_t yLength = m_names[b.place].size();
    if (a.size == b.size || xLength == yLength) return 0;
    return xLength < yLength ? -1 : 1;
}
