// Matches names with patterns, going back to the last "*" only.
#include "host/db/values/wildcard.h"

#include "host/db/kernel/text_fold.h"

#include <QChar>

#include <algorithm>
#include <string>
#include <vector>

namespace korvex {

namespace {

constexpr wchar_t kEscape = L'`';

bool isDigit(wchar_t c) { return QChar::isDigit(static_cast<uint>(c)); }
bool isLetter(wchar_t c) { return QChar::isLetter(static_cast<uint>(c)); }

/// One place of a pattern: which characters may stand there.
struct Place {
    enum Kind { character, digit, letter, other, any, run, set } kind = character;
    wchar_t value = 0;
    bool negated = false;
    std::vector<std::pair<wchar_t, wchar_t>> ranges;

    bool takes(wchar_t c) const {
        switch (kind) {
        case character: return c == value;
        case digit: return isDigit(c);
        case letter: return isLetter(c);
        case other: return !isDigit(c) && !isLetter(c);
        case set: break;
        default: return true;
        }
        for (const auto& [first, last] : ranges) {
            if (c >= first && c <= last) {
                return !negated;
            }
        }
        return negated;
    }
};

/// Reads "[...]" that begins at `at`; false when it does not close, `at` is left alone then.
bool readSet(std::wstring_view pattern, std::size_t& at, Place& place) {
    std::size_t i = at + 1;
    place.negated = i < pattern.size() && pattern[i] == L'~';
    i += place.negated ? 1 : 0;
    for (; i < pattern.size() && pattern[i] != L']'; ++i) {
        i += pattern[i] == kEscape && i + 1 < pattern.size() ? 1 : 0;
        const wchar_t first = pattern[i];
        if (i + 2 < pattern.size() && pattern[i + 1] == L'-' && pattern[i + 2] != L']') {
            i += 2;
        }
        place.ranges.emplace_back(first, pattern[i]);
    }
    if (i >= pattern.size()) {
        return false;
    }
    place.kind = Place::set;
    at = i;
    return true;
}

Place readPlace(std::wstring_view pattern, std::size_t& at) {
    Place place;
    place.value = pattern[at];
    switch (pattern[at]) {
    case L'#': place.kind = Place::digit; break;
    case L'@': place.kind = Place::letter; break;
    case L'.': place.kind = Place::other; break;
    case L'?': place.kind = Place::any; break;
    case L'*': place.kind = Place::run; break;
    case L'[':
        if (!readSet(pattern, at, place)) {
            place = Place();
            place.value = L'[';
        }
        break;
    case kEscape:
        at += at + 1 < pattern.size() ? 1 : 0;
        place.value = pattern[at];
        break;
    default: break;
    }
    return place;
}

bool matchesPlaces(std::wstring_view name, const std::vector<Place>& places) {
    std::size_t n = 0;
    std::size_t p = 0;
    std::size_t afterRun = std::wstring_view::npos;  // place after the last run, and where it was tried
    std::size_t tried = 0;
    while (n < name.size()) {
        if (p < places.size() && places[p].kind == Place::run) {
            afterRun = ++p;
            tried = n;
        } else if (p < places.size() && places[p].takes(foldCharacter(name[n]))) {
            ++n;
            ++p;
        } else if (afterRun != std::wstring_view::npos) {
            p = afterRun;
            n = ++tried;
        } else {
            return false;
        }
    }
    while (p < places.size() && places[p].kind == Place::run) {
        ++p;
    }
    return p == places.size();
}

}  // namespace

struct Pattern::Alternative {
    bool negated = false;
    std::vector<Place> places;
};

struct Pattern::Parts {
    std::vector<Alternative> alternatives;
};

Pattern::Pattern(std::wstring_view pattern) : m_parts(std::make_unique<Parts>()) {
    const std::wstring folded = foldName(pattern);
    for (std::size_t at = 0; at <= folded.size(); ++at) {
        Alternative alternative;
        alternative.negated = at < folded.size() && folded[at] == L'~';
        for (at += alternative.negated ? 1 : 0; at < folded.size() && folded[at] != L','; ++at) {
            alternative.places.push_back(readPlace(folded, at));
        }
        m_parts->alternatives.push_back(std::move(alternative));
    }
}

Pattern::~Pattern() = default;

bool Pattern::matches(std::wstring_view name) const { return matchesAny({name}); }

bool Pattern::matchesAny(std::initializer_list<std::wstring_view> names) const {
    const std::vector<Alternative>& all = m_parts->alternatives;
    return std::any_of(all.begin(), all.end(), [&](const Alternative& alternative) {
        const bool fits = std::any_of(names.begin(), names.end(), [&](std::wstring_view name) {
            return matchesPlaces(name, alternative.places);
        });
        return fits != alternative.negated;
    });
}

bool matchesPattern(std::wstring_view name, std::wstring_view pattern) {
    return Pattern(pattern).matches(name);
}

bool isPattern(std::wstring_view text) { return text.find_first_of(L"#@.*?~[`,") != std::wstring_view::npos; }

}  // namespace korvex
