// Names made into bytes that compare as the names do.
#include "natural_keys.h"

#include "collation.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr wchar_t kCommonLetters = 0x250;

int sign(int value) { return (value > 0) - (value < 0); }

}  // namespace

KvNaturalKeys::KvNaturalKeys(const KvCollation& collation, const std::vector<const std::wstring*>& names)
    : m_collation(collation), m_names(names) {
    m_isExact = rankLetters(names);
    if (!m_isExact) return;
    m_keys.reserve(names.size());
    for (const std::wstring* const name : names) {
        append(*name);
    }
}

/// Equal letters have the same rank; ranks begin with 1. False when some other letter stands among the
/// digits, or there are too many letters.
bool KvNaturalKeys::rankLetters(const std::vector<const std::wstring*>& names) {
    std::wstring letters = L"0123456789";
    std::vector<bool> seen(kCommonLetters);
    for (const std::wstring* const name : names) {
        for (const wchar_t c : *name) {
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

void KvNaturalKeys::append(const std::wstring& name) {
    Key key{};
    key.begin = static_cast<std::uint32_t>(m_bytes.size());
    key.length = static_cast<std::uint32_t>(name.size());
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
    key.end = static_cast<std::uint32_t>(m_bytes.size());
    for (std::size_t i = 0; i < sizeof(key.head); ++i) {
        const std::size_t at = key.begin + i;
        const std::uint64_t byte = at < key.end ? m_bytes[at] : 0;
        key.head[i / 8] |= byte << (56 - 8 * (i % 8));
    }
    m_keys.push_back(key);
}

/// The heads decide only where both keys reach beyond them: at the end of one of two equal keys their lengths
/// count.
int KvNaturalKeys::compare(std::size_t a, std::size_t b) const {
    if (!m_isExact) return m_collation.compareNatural(*m_names[a], *m_names[b]);
    const Key& x = m_keys[a];
    const Key& y = m_keys[b];
    const std::size_t xSize = x.end - x.begin;
    const std::size_t ySize = y.end - y.begin;
    if (std::min(xSize, ySize) >= sizeof(x.head)) {
        for (std::size_t i = 0; i < kHeadWords; ++i) {
            if (x.head[i] != y.head[i]) return x.head[i] < y.head[i] ? -1 : 1;
        }
    }
    const std::size_t common = std::min(xSize, ySize);
    const int order =
        common == 0 ? 0 : std::memcmp(m_bytes.data() + x.begin, m_bytes.data() + y.begin, common);
    if (order != 0) return sign(order);
    if (xSize == ySize || x.length == y.length) return 0;
    return x.length < y.length ? -1 : 1;
}
