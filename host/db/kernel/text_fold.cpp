// Case folding by Unicode's simple mapping, independent of the process's locale.
#include "host/db/kernel/text_fold.h"

#include <QChar>

namespace korvex {

wchar_t foldCharacter(wchar_t c) {
    if (c < 128) {
        return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c + 32) : c;
    }
    return static_cast<wchar_t>(QChar::toCaseFolded(static_cast<uint>(c)));
}

std::wstring foldName(std::wstring_view name) {
    std::wstring out(name);
    for (wchar_t& c : out) {
        c = foldCharacter(c);
    }
    return out;
}

bool equalNames(std::wstring_view a, std::wstring_view b) {
    if (a.size() != b.size()) {
        return false;
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (a[i] != b[i] && foldCharacter(a[i]) != foldCharacter(b[i])) {
            return false;
        }
    }
    return true;
}

}  // namespace korvex
