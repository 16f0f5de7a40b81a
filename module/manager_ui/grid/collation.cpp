// Comparing names as the user's language does.
#include "collation.h"

#include <algorithm>
#include <array>
#include <limits>
#include <stdexcept>
#include <unordered_map>

namespace {

int sign(int value) { return (value > 0) - (value < 0); }

std::locale userLocale() {
    try {
        return std::locale("");
    } catch (const std::runtime_error&) {
        return std::locale::classic();
    }
}

}  // namespace

/// Letters in lower case, and how pairs of them compare, as far as anyone asked.
class KvCollation::Letters {
public:
    Letters() { m_lower.fill(-1); }

    wchar_t lower(wchar_t c, const std::ctype<wchar_t>& ctype) {
        const auto at = static_cast<std::size_t>(c);
        if (at >= kCommon) return ctype.tolower(c);
        if (m_lower[at] < 0) m_lower[at] = ctype.tolower(c);
        return m_lower[at];
    }

    int compare(wchar_t a, wchar_t b, const std::collate<wchar_t>& collate) {
        const std::uint64_t pair = static_cast<std::uint64_t>(a) << 32U | static_cast<std::uint32_t>(b);
        const auto known = m_orders.find(pair);
        if (known != m_orders.end()) return known->second;
        const int order = sign(collate.compare(&a, &a + 1, &b, &b + 1));
        m_orders.emplace(pair, order);
        return order;
    }

private:
    static constexpr std::size_t kCommon = 1024;
    std::array<wchar_t, kCommon> m_lower{};
    std::unordered_map<std::uint64_t, int> m_orders;
};

KvCollation::KvCollation() { open(userLocale()); }

KvCollation::KvCollation(const char* locale) { open(std::locale(locale)); }

KvCollation::~KvCollation() = default;

void KvCollation::open(const std::locale& locale) {
    m_locale = locale;
    m_ctype = &std::use_facet<std::ctype<wchar_t>>(m_locale);
    m_collate = &std::use_facet<std::collate<wchar_t>>(m_locale);
    m_letters = std::make_unique<Letters>();
}

std::int64_t KvCollation::takeNumber(std::wstring_view text, std::size_t& at) {
    constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
    std::int64_t number = 0;
    for (; at < text.size() && isDigit(text[at]); ++at) {
        const int digit = text[at] - L'0';
        number = number > (kMost - digit) / 10 ? kMost : number * 10 + digit;
    }
    return number;
}

std::wstring KvCollation::lowered(std::wstring text) const {
    m_ctype->tolower(text.data(), text.data() + text.size());
    return text;
}

wchar_t KvCollation::lower(wchar_t c) const { return m_letters->lower(c, *m_ctype); }

int KvCollation::compareTexts(const std::wstring& a, const std::wstring& b) const {
    return compareLowered(lowered(a), lowered(b));
}

/// Not by the locale's transformed texts: some platforms' do not compare as its texts do.
int KvCollation::compareLowered(const std::wstring& a, const std::wstring& b) const {
    return sign(m_collate->compare(a.data(), a.data() + a.size(), b.data(), b.data() + b.size()));
}

int KvCollation::compareLetters(wchar_t a, wchar_t b) const {
    if (a == b) return 0;
    const wchar_t x = lower(a);
    const wchar_t y = lower(b);
    return x == y ? 0 : m_letters->compare(x, y, *m_collate);
}

int KvCollation::compareNatural(std::wstring_view a, std::wstring_view b) const {
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < a.size() && j < b.size()) {
        if (isDigit(a[i]) && isDigit(b[j])) {
            const std::int64_t x = takeNumber(a, i);
            const std::int64_t y = takeNumber(b, j);
            if (x != y) return x < y ? -1 : 1;
        } else if (const int order = compareLetters(a[i++], b[j++])) {
            return order;
        }
    }
    const bool bothEnd = i == a.size() && j == b.size();
    return bothEnd || a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}
