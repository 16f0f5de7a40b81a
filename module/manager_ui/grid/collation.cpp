// Comparing names as the user's language does.
#include "layer_sort.h"

#include <algorithm>
#include <array>
#include <limits>
#include <stdexcept>
#include <unordered_map>

namespace {

int sign(int value) { return (value > 0) - (value < 0); }

bool isDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

/// The number of a run of digits from `at`, which moves behind it; the largest number there is when it has
/// more digits than fit.
std::int64_t takeNumber(const std::wstring& text, std::size_t& at) {
    constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
    std::int64_t number = 0;
    for (; at < text.size() && isDigit(text[at]); ++at) {
        const int digit = text[at] - L'0';
        number = number > (kMost - digit) / 10 ? kMost : number * 10 + digit;
    }
    return number;
}

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

int KvCollation::compareTexts(const std::wstring& a, const std::wstring& b) const {
    std::wstring x = a;
    std::wstring y = b;
    m_ctype->tolower(x.data(), x.data() + x.size());
    m_ctype->tolower(y.data(), y.data() + y.size());
    return sign(m_collate->compare(x.data(), x.data() + x.size(), y.data(), y.data() + y.size()));
}

int KvCollation::compareLetters(wchar_t a, wchar_t b) const {
    if (a == b) return 0;
    const wchar_t x = m_letters->lower(a, *m_ctype);
    const wchar_t y = m_letters->lower(b, *m_ctype);
    return x == y ? 0 : m_letters->compare(x, y, *m_collate);
}

int KvCollation::compareNatural(const std::wstring& a, const std::wstring& b) const {
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
