// Comparing names as the drawing does: without case, in all scripts.
#pragma once

#include "host/base/text.h"

namespace korvex {

/// The name with case taken out; equal names fold to equal texts.
inline std::wstring foldName(std::wstring_view name) { return foldCase(name); }
bool equalNames(std::wstring_view a, std::wstring_view b);

}  // namespace korvex
