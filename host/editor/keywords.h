// Keywords of a prompt: their lists, what a typed word abbreviates, the option list of a prompt.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace korvex {

/// The keywords that one prompt accepts.
///
/// A list is written with blanks between the keywords: "Color LType eXit". The first run of capitals and
/// digits is the least that must be typed. After a "_" come the global keywords in the same order
/// ("Ja Nein _ Yes No"); without one the local keywords are the global ones.
class KeywordList {
public:
    enum class Match { none, one, ambiguous };
    struct Result {
        Match match = Match::none;
        std::wstring keyword;                  ///< match one: the global form
        std::vector<std::wstring> candidates;  ///< ambiguous: what it might mean, as the user sees them
    };

    /// Takes a list. False, and the list is empty, when global and local keywords are not as many.
    bool assign(std::wstring_view text);
    bool empty() const { return m_local.empty(); }
    void clear();

    /// What a typed word stands for; case is ignored. "_Yes" looks at the global keywords. A whole keyword
    /// goes before an exact abbreviation, that before a longer beginning. A run of capitals inside the word
    /// ("eXit") is reached by exactly that run or by the whole word.
    Result match(std::wstring_view typed) const;

    /// "Color/LType/eXit", the local keywords.
    std::wstring text() const;

private:
    std::vector<std::wstring> m_local;
    std::vector<std::wstring> m_global;
};

}  // namespace korvex
