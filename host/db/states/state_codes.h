// The groups of a layer state's record.
#pragma once

namespace korvex::state_group {

enum Code : int {
    kMask = 91,
    kDescription = 301,
    kSpace = 290,
    kCurrentLayer = 302,
    // of each layer
    kLayer = 8,
    kLayerHandle = 330,
    kFlags = 90,
    kColorIndex = 62,
    kLineweight = 370,
    kLinetype = 6,
    kLinetypeHandle = 331,
    kPlotStyle = 2,
    kPlotStyleOlder = 1,
    kPlotStyleObject = 390,
    kTrueColor = 92,
    kTrueColorOther = 420,
    kColorBook = 300,
    kTransparency = 440,
};

/// True for the group that an entry begins with.
constexpr bool beginsEntry(int code) { return code == kLayer || code == kLayerHandle; }

}  // namespace korvex::state_group
