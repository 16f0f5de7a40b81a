// The 255 colours that a colour index stands for.
#pragma once

#include <cstdint>

namespace korvex {

/// The index (1 to 255) whose colour is nearest to a true colour; of several the lowest.
std::int16_t nearestColorIndex(std::uint8_t red, std::uint8_t green, std::uint8_t blue);

}  // namespace korvex
