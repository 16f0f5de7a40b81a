// Comparing names as the drawing does: without case, in all scripts.
#pragma once

#include <string>
#include <string_view>

namespace korvex {

/// A character with case taken out.
wchar_t foldCharacter(wchar_t c);
/// The name with case taken out; equal names fold to equal texts.
std::wstring foldName(std::wstring_view name);
bool equalNames(std::wstring_view a, std::wstring_view b);

}  // namespace korvex
