// Comparing names as the user's language does.
#pragma once

#include <cstdint>
#include <locale>
#include <memory>
#include <string>
#include <string_view>

/// The user's letters: lower case and collation, as the environment's locale has them; "C" where that does
/// not exist. Looking up a facet and comparing single letters are dear: they are done once for each letter.
class KvCollation {
public:
    KvCollation();
    /// For a locale by name; std::runtime_error when there is none.
    explicit KvCollation(const char* locale);
    ~KvCollation();
    KvCollation(const KvCollation&) = delete;
    KvCollation& operator=(const KvCollation&) = delete;

    /// -1, 0 or 1: whole texts in lower case.
    int compareTexts(const std::wstring& a, const std::wstring& b) const;
    /// -1, 0 or 1: digits as numbers, other letters one by one in lower case. When one text ends before
    /// the other and they are equal so far, the one with fewer letters is the smaller.
    int compareNatural(std::wstring_view a, std::wstring_view b) const;

    /// The same in two steps: the lower case is made once.
    std::wstring lowered(std::wstring text) const;
    int compareLowered(const std::wstring& a, const std::wstring& b) const;

    wchar_t lower(wchar_t c) const;
    /// -1, 0 or 1: single letters in lower case.
    int compareLetters(wchar_t a, wchar_t b) const;
    static bool isDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }
    /// The number of a run of digits from `at`, which moves behind it; the largest number there is when it
    /// has more digits than fit.
    static std::int64_t takeNumber(std::wstring_view text, std::size_t& at);

private:
    class Letters;
    void open(const std::locale& locale);

    std::locale m_locale;
    const std::ctype<wchar_t>* m_ctype = nullptr;
    const std::collate<wchar_t>* m_collate = nullptr;
    std::unique_ptr<Letters> m_letters;
};
