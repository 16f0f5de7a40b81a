// Small operations on wide text: trimming, comparing, copying.
#include "text_utilities.h"

#include <algorithm>
#include <cwchar>

namespace {

constexpr wchar_t kBlank = L' ';

wchar_t foldAscii(wchar_t c) { return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c; }

wchar_t* endOf(wchar_t* text) { return text + std::wcslen(text); }

/// First character that is no blank; the end when there is none.
wchar_t* firstInk(wchar_t* text) { return text + std::wcsspn(text, L" "); }

/// The place after the last character that is no blank.
wchar_t* inkEnd(wchar_t* text) {
    wchar_t* end = endOf(text);
    while (end > text && end[-1] == kBlank) {
        --end;
    }
    return end;
}

void removeLeading(wchar_t* text) {
    wchar_t* const first = firstInk(text);
    std::wmemmove(text, first, std::wcslen(first) + 1);
}

void removeTrailing(wchar_t* text) { *inkEnd(text) = 0; }

void removeInner(wchar_t* text) {
    wchar_t* const tail = inkEnd(text);
    wchar_t* const kept = std::remove(firstInk(text), tail, kBlank);
    std::wmemmove(kept, tail, std::wcslen(tail) + 1);
}

int compareFolded(const wchar_t* a, const wchar_t* b) {
    while (*a != 0 && foldAscii(*a) == foldAscii(*b)) {
        ++a;
        ++b;
    }
    return static_cast<int>(foldAscii(*a)) - static_cast<int>(foldAscii(*b));
}

wchar_t* newCopy(const wchar_t* source, std::size_t length) {
    auto* const copy = new wchar_t[length + 1];
    std::wmemcpy(copy, source, length);
    copy[length] = 0;
    return copy;
}

}  // namespace

void kv_trim(wchar_t* text, const wchar_t* operations) {
    if (!text) return;
    if (*firstInk(text) == 0) {
        *text = 0;
        return;
    }
    for (; operations && *operations; ++operations) {
        switch (foldAscii(*operations)) {
        case L'b': removeLeading(text); break;
        case L'e': removeTrailing(text); break;
        case L'm': removeInner(text); break;
        default: break;
        }
    }
}

int db_compareNames(const wchar_t* a, const wchar_t* b) { return compareFolded(a, b); }

int strings_i_compare(const wchar_t* a, const wchar_t* b) { return a && b ? compareFolded(a, b) : -1; }

void db_astrncpy(wchar_t** target, const wchar_t* source, int n) {
    if (!target) return;
    wchar_t* copy = nullptr;
    if (source) {
        const std::size_t whole = std::wcslen(source);
        copy = newCopy(source, n < 0 ? whole : std::min(whole, static_cast<std::size_t>(n)));
    }
    delete[] * target;
    *target = copy;
}

wchar_t* kv_realloc_char(wchar_t* text, int size) {
    const std::size_t wanted = size > 1 ? static_cast<std::size_t>(size) : 1;
    const std::size_t used = text ? std::wcslen(text) + 1 : 0;
    if (used >= wanted) return text;
    auto* const grown = new wchar_t[wanted]();
    if (text) std::wmemcpy(grown, text, used);
    delete[] text;
    return grown;
}

void ChangeSlashToBackslashAndRemovePipe(wchar_t* text) {
    if (!text) return;
    std::replace(text, endOf(text), L'/', L'\\');
    std::replace(text, endOf(text), L'|', kBlank);
}
