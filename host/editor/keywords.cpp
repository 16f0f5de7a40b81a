// Matches typed words with keywords by their capitals.
#include "host/editor/keywords.h"

#include "host/db/kernel/text_fold.h"

#include <QChar>

#include <algorithm>

namespace korvex {

namespace {

/// How well a word fits a keyword; more is better.
enum Fit { noFit, beginning, abbreviation, whole };

bool isRequired(wchar_t c) { return QChar::isUpper(static_cast<uint>(c)) || (c >= L'0' && c <= L'9'); }

Fit fit(const std::wstring& word, const std::wstring& keyword) {
    const std::wstring folded = foldName(keyword);
    if (word == folded) {
        return whole;
    }
    const auto first = std::find_if(keyword.begin(), keyword.end(), isRequired);
    if (first == keyword.end()) {
        return noFit;
    }
    const auto last = std::find_if_not(first, keyword.end(), isRequired);
    const std::wstring required = foldName(std::wstring(first, last));
    if (word == required) {
        return abbreviation;
    }
    const bool begins = word.size() > required.size() && folded.compare(0, word.size(), word) == 0;
    return first == keyword.begin() && begins ? beginning : noFit;
}

std::vector<std::wstring> split(std::wstring_view text) {
    std::vector<std::wstring> words;
    std::size_t at = 0;
    while ((at = text.find_first_not_of(L' ', at)) != std::wstring_view::npos) {
        const std::size_t end = std::min(text.find(L' ', at), text.size());
        words.emplace_back(text.substr(at, end - at));
        at = end;
    }
    return words;
}

}  // namespace

void KeywordList::clear() {
    m_local.clear();
    m_global.clear();
}

bool KeywordList::assign(std::wstring_view text) {
    m_local = split(text);
    const auto bar = std::find(m_local.begin(), m_local.end(), L"_");
    if (bar == m_local.end()) {
        m_global = m_local;
        return true;
    }
    m_global.assign(bar + 1, m_local.end());
    m_local.erase(bar, m_local.end());
    if (m_global.size() == m_local.size()) {
        return true;
    }
    clear();
    return false;
}

KeywordList::Result KeywordList::match(std::wstring_view typed) const {
    Result result;
    const bool global = !typed.empty() && typed.front() == L'_';
    const std::wstring word = foldName(typed.substr(global ? 1 : 0));
    if (word.empty()) {
        return result;
    }
    const std::vector<std::wstring>& keywords = global ? m_global : m_local;
    Fit best = beginning;
    for (std::size_t i = 0; i < keywords.size(); ++i) {
        const Fit fits = fit(word, keywords[i]);
        if (fits < best) {
            continue;
        }
        if (fits > best) {
            result.candidates.clear();
        }
        best = fits;
        result.candidates.push_back(m_local[i]);
        result.keyword = m_global[i];
    }
    if (!result.candidates.empty()) {
        result.match = result.candidates.size() == 1 ? Match::one : Match::ambiguous;
    }
    return result;
}

std::wstring KeywordList::text() const {
    std::wstring out;
    for (const std::wstring& keyword : m_local) {
        out += (out.empty() ? L"" : L"/") + keyword;
    }
    return out;
}

}  // namespace korvex
