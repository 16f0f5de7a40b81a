// Names made into bytes that compare as the names do.
#include "natural_keys.h"

#include "collation.h"
#include "merge_sort.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr wchar_t kCommonLetters = 0x250;

int sign(int value) { return (value > 0) - (value < 0); }

}  // namespace

KvNaturalKeys::KvNaturalKeys(const KvCollation& collation, std::vector<std::wstring_view> names)
    : m_collation(collation), m_names(std::move(names)) {
    m_isExact = rankLetters();
    m_items.resize(m_names.size());
    m_begins.reserve(m_names.size());
    if (m_isExact) m_bytes.reserve(usualBytes());
    for (std::size_t place = 0; place < m_names.size(); ++place) {
        m_items[place].place = static_cast<std::uint32_t>(place);
        if (m_isExact) append(m_names[place]);
    }
}

/// A little more than letters, for the numbers.
std::size_t KvNaturalKeys::usualBytes() const {
    std::size_t letters = 0;
    for (const std::wstring_view name : m_names) {
        letters += name.size() + 2;
    }
    return letters * static_cast<std::size_t>(m_rankBytes);
}

/// Equal letters have the same rank; ranks begin with 1. False when some other letter stands among the
/// digits, or there are too many letters.
bool KvNaturalKeys::rankLetters() {
    std::wstring letters = L"0123456789";
    std::vector<char> seen(kCommonLetters);
    for (const std::wstring_view name : m_names) {
        for (const wchar_t c : name) {
            const auto at = static_cast<std::size_t>(c);
            if (at < seen.size() && seen[at] != 0) continue;
            if (at < seen.size()) seen[at] = 1;
            letters += m_collation.lower(c);
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
    for (std::size_t at = 0; at < seen.size(); ++at) {
        const bool isDigit = KvCollation::isDigit(static_cast<wchar_t>(at));
        if (seen[at] != 0 || isDigit) m_common[at] = searchRank(m_collation.lower(static_cast<wchar_t>(at)));
    }
    return rank <= 0xFFFF && rankOf(L'9') - rankOf(L'0') == 9;
}

std::uint32_t KvNaturalKeys::searchRank(wchar_t lowered) const {
    return std::lower_bound(m_ranks.begin(), m_ranks.end(), std::make_pair(lowered, 0U))->second;
}

std::uint32_t KvNaturalKeys::rankOf(wchar_t letter) const {
    const auto at = static_cast<std::size_t>(letter);
    return at < m_common.size() ? m_common[at] : searchRank(m_collation.lower(letter));
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
        const std::uint32_t rank = rankOf(isDigit ? L'0' : name[i]);
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

int KvNaturalKeys::compareWhole(const Item& a, const Item& b) const {
    if (!m_isExact) return m_collation.compareNatural(m_names[a.place], m_names[b.place]);
    const std::size_t common = std::min(a.size, b.size);
    const int order =
        common == 0 ? 0 : std::memcmp(&m_bytes[m_begins[a.place]], &m_bytes[m_begins[b.place]], common);
    if (order != 0) return sign(order);
    const std::size_t xLength = m_names[a.place].size();
    const std::size_t yLength = m_names[b.place].size();
    if (a.size == b.size || xLength == yLength) return 0;
    return xLength < yLength ? -1 : 1;
}

/// What is compared lies together in the order of the sort.
std::vector<std::uint32_t> naturalOrder(const KvCollation& collation,
                                        const std::vector<std::wstring_view>& names, bool ascending) {
    const KvNaturalKeys keys(collation, names);
    std::vector<KvNaturalKeys::Item> items = keys.items();
    mergeSort(items, [&](const KvNaturalKeys::Item& a, const KvNaturalKeys::Item& b) {
        int order = keys.compare(a, b);
        if (order == 0)
            order = collation.compareTexts(std::wstring(names[a.place]), std::wstring(names[b.place]));
        return ascending ? order < 0 : order > 0;
    });
    std::vector<std::uint32_t> places(items.size());
    std::transform(items.begin(), items.end(), places.begin(),
                   [](const KvNaturalKeys::Item& item) { return item.place; });
    return places;
}
