// Asking where a block is drawn, for all commands that draw one.
#pragma once

#include <string>

namespace korvex {

/// Asks for place, scales and rotation and draws the block. False when it was not drawn.
bool askAndPlaceBlock(const std::wstring& name);

}  // namespace korvex
