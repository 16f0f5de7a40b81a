// Tells what a file is that is no drawing with group codes, by its first bytes.
#pragma once

#include <string>
#include <string_view>

namespace korvex::groups {

/// Length of what a binary drawing begins with: a name of 18 characters, CR, LF, Ctrl-Z, 0.
inline constexpr std::size_t kSentinelSize = 22;

/// True when the bytes begin as a binary drawing with group codes does.
bool hasBinarySentinel(std::string_view bytes);

/// What is wrong with the file and what to do; empty when nothing speaks against a text drawing.
std::wstring notADrawing(std::string_view bytes);

}  // namespace korvex::groups
