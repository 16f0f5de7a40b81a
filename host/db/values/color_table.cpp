// Indexes 1 to 9 are the standard colours, 10 to 249 a colour wheel of 24 hues in five brightnesses, each
// full and half saturated, 250 to 255 greys.
#include "host/db/values/color_table.h"

#include "sdk/hxcm.h"

#include <algorithm>
#include <array>

namespace korvex {

namespace {

constexpr int kCount = 256;
constexpr int kFirstOfWheel = 10;
constexpr int kFirstGrey = 250;
constexpr int kStepsOfHue = 4;  ///< hues between two neighbours of red, yellow, green, cyan, blue, magenta
constexpr std::uint32_t kWhite = 0xFFFFFF;

constexpr std::uint32_t kStandard[] = {kWhite,   0xFF0000, 0xFFFF00, 0x00FF00, 0x00FFFF,
                                       0x0000FF, 0xFF00FF, kWhite,   0x808080, 0xC0C0C0};
constexpr std::uint32_t kGreys[] = {0x333333, 0x5B5B5B, 0x848484, 0xADADAD, 0xD6D6D6, kWhite};
/// The strongest component of each brightness.
constexpr int kBrightness[] = {255, 165, 127, 76, 38};

/// A component's strength in quarters of the brightness: full for two sixths of the wheel around its own hue,
/// falling to nothing over a sixth on either side.
constexpr int quarters(int hue, int ownHue) {
    constexpr int kHues = 6 * kStepsOfHue;
    const int turn = (hue - ownHue + kHues) % kHues;
    const int away = std::min(turn, kHues - turn);
    return std::clamp(2 * kStepsOfHue - away, 0, kStepsOfHue);
}

constexpr std::uint32_t wheelColor(int index) {
    const int hue = (index - kFirstOfWheel) / 10;
    const int shade = (index - kFirstOfWheel) % 10;
    const int value = kBrightness[shade / 2];
    const bool half = shade % 2 == 1;
    std::uint32_t rgb = 0;
    for (const int ownHue : {0, 2 * kStepsOfHue, 4 * kStepsOfHue}) {
        const int full = quarters(hue, ownHue);
        // Half saturated: half way between the full colour and the brightness's grey.
        const int component =
            half ? value * (full + kStepsOfHue) / (2 * kStepsOfHue) : value * full / kStepsOfHue;
        rgb = rgb << 8U | static_cast<std::uint32_t>(component);
    }
    return rgb;
}

constexpr std::array<std::uint32_t, kCount> makeTable() {
    std::array<std::uint32_t, kCount> table{};
    for (int i = 0; i < kCount; ++i) {
        table[static_cast<std::size_t>(i)] = i < kFirstOfWheel ? kStandard[i]
                                             : i < kFirstGrey  ? wheelColor(i)
                                                               : kGreys[i - kFirstGrey];
    }
    return table;
}

constexpr std::array<std::uint32_t, kCount> kTable = makeTable();

int component(std::uint32_t rgb, unsigned shift) { return static_cast<int>(rgb >> shift & 0xFFU); }

}  // namespace

std::int16_t nearestColorIndex(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
    const auto distance = [&](std::uint32_t rgb) {
        const int r = component(rgb, 16) - red;
        const int g = component(rgb, 8) - green;
        const int b = component(rgb, 0) - blue;
        return r * r + g * g + b * b;
    };
    const auto nearest = std::min_element(kTable.begin() + 1, kTable.end(),
                                          [&](auto a, auto b) { return distance(a) < distance(b); });
    return static_cast<std::int16_t>(nearest - kTable.begin());
}

}  // namespace korvex

std::uint32_t hxedGetRGB(int colorIndex) {
    using namespace korvex;
    return colorIndex > 0 && colorIndex < kCount ? kTable[static_cast<std::size_t>(colorIndex)] : kWhite;
}
