// The layer palette for those who only mark it while it is seen.
#pragma once

#include "frame/module_state.h"

/// Null when there is no palette or it is hidden.
inline KvLayerPaletteMarks* visiblePalette() {
    KvLayerPaletteMarks* const palette = layerPalette();
    return palette && palette->isPaletteVisible() ? palette : nullptr;
}
