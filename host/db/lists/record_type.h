// Type names as lists give them.
#pragma once

#include <string>
#include <string_view>

namespace korvex {

/// In capitals; a character that no type name has becomes "?".
inline std::string recordTypeOf(std::wstring_view text) {
    std::string type;
    for (const wchar_t c : text) {
        const bool lower = c >= L'a' && c <= L'z';
        const wchar_t capital = lower ? static_cast<wchar_t>(c - L'a' + L'A') : c;
        type.push_back(capital > 0 && capital < 128 ? static_cast<char>(capital) : '?');
    }
    return type;
}

}  // namespace korvex
