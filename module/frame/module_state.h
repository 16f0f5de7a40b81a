// The palette and what follows the documents, from loading to unloading.
#pragma once

#include "palette_panel.h"

class KvLayerPaletteDocReactor;

/// Follows the documents; null before initialisation. Owned as the palette is.
KvLayerPaletteDocReactor* paletteDocReactor();
void setPaletteDocReactor(KvLayerPaletteDocReactor* reactor);

/// The layer palette; null until it is first shown. Owned here: setting another deletes the one before, null
/// takes it away.
KvPalettePanel* layerPalette();
void setLayerPalette(KvPalettePanel* palette);
/// The panel is being deleted, whoever does it; nothing when it is not the one that is owned here.
void forgetLayerPalette(const KvPalettePanel& palette);
