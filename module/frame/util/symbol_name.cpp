// The rule for names of layers, filters and other symbols.
#include "symbol_name.h"

#include <clocale>
#include <cwchar>
#include <cwctype>

namespace {

constexpr std::size_t kMaxNameLength = 255;
constexpr int kMaxCountedCharacters = 256;
constexpr wchar_t kForbidden[] = L"\"*,/:;<=>?\\`|";

/// The user's locale for as long as it lives; then "C" with the user's character types.
class UserLocale {
public:
    UserLocale() { std::setlocale(LC_ALL, ""); }
    ~UserLocale() {
        std::setlocale(LC_ALL, "C");
        std::setlocale(LC_CTYPE, "");
    }
    UserLocale(const UserLocale&) = delete;
    UserLocale& operator=(const UserLocale&) = delete;
};

bool isDecimal(wchar_t c) { return c >= L'0' && c <= L'9'; }

bool isHexadecimal(wchar_t c) { return isDecimal(c) || (c >= L'a' && c <= L'f') || (c >= L'A' && c <= L'F'); }

bool areHexadecimal(const wchar_t* text, int count) {
    while (count > 0 && isHexadecimal(*text)) {
        ++text;
        --count;
    }
    return count == 0;
}

/// Length of the escaped character that `text` begins with; 0 when it begins with none.
int escapeLength(const wchar_t* text) {
    if (text[0] != L'\\' || text[1] == 0 || text[2] != L'+') return 0;
    const wchar_t* const digits = text + 3;
    switch (text[1]) {
    case L'U':
    case L'u': return areHexadecimal(digits, 4) ? 7 : 0;
    case L'M':
    case L'm': return isDecimal(digits[0]) && areHexadecimal(digits + 1, 4) ? 8 : 0;
    default: return 0;
    }
}

bool isAllowed(wchar_t c) {
    return std::iswalnum(static_cast<std::wint_t>(c)) != 0 || std::wcschr(kForbidden, c) == nullptr;
}

}  // namespace

bool kv_isvalidname(const wchar_t* name) {
    if (!name || *name == 0 || *name == L' ' || std::wcslen(name) > kMaxNameLength) return false;
    const UserLocale locale;
    int counted = 0;
    while (*name != 0 && counted < kMaxCountedCharacters) {
        const int escape = escapeLength(name);
        if (escape == 0 && !isAllowed(*name)) return false;
        name += escape > 0 ? escape : 1;
        ++counted;
    }
    return counted > 0 && *name == 0;
}
