// Asking for the values that layers and viewport overrides have: colour, linetype, lineweight and so on.
#pragma once

#include "host/editor/ask.h"
#include "sdk/hxcm.h"
#include "sdk/hxdbsymtb.h"

#include <optional>

namespace korvex {

// Each asks until it has an answer that it can read. Nothing comes back when the user gave up, or when the
// drawing does not have what was named; that is told.

struct ColorAnswer {
    HxCmColor color;
    bool turnsOff = false;  ///< an index with "-" before it
};
/// Enter gives `fallback`.
std::optional<ColorAnswer> askColor(std::int16_t fallback);
std::optional<HxDbObjectId> askLinetype();
/// In inches or millimetres as LWUNITS says; what is no lineweight becomes the nearest.
std::optional<HxDb::LineWeight> askLineweight();
std::optional<HxCmTransparency> askTransparency();
/// An entry of the drawing's named plot styles.
std::optional<HxDbObjectId> askPlotStyle();

/// "0.25 mm" or "0.010\"" as LWUNITS says, or "Default".
std::wstring lineweightText(HxDb::LineWeight weight);

}  // namespace korvex
