// What the module holds from its loading to its unloading.
#pragma once

#include "palette_panel.h"

#include "hxresource.h"

class KvLayerPaletteDocReactor;

/// The module itself; null before the host has attached it.
HxModuleHandle moduleInstance();
void setModuleInstance(HxModuleHandle instance);

/// The resource library; null while it is not loaded.
HxModuleHandle globalResInstance();
void setGlobalResInstance(HxModuleHandle library);

/// Follows the documents; null before initialisation. Owned as the palette is.
KvLayerPaletteDocReactor* paletteDocReactor();
void setPaletteDocReactor(KvLayerPaletteDocReactor* reactor);

/// The layer palette; null until it is first shown. Owned here: setting another deletes the one before, null
/// takes it away.
KvPalettePanel* layerPalette();
void setLayerPalette(KvPalettePanel* palette);
/// The panel is being deleted, whoever does it; nothing when it is not the one that is owned here.
void forgetLayerPalette(const KvPalettePanel& palette);
