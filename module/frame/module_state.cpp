// What the module holds from its loading to its unloading.
#include "module_state.h"

#include <memory>

namespace {

HxModuleHandle instanceHandle = nullptr;
HxModuleHandle resourceHandle = nullptr;

std::unique_ptr<KvPalettePanel>& palettePanel() {
    static std::unique_ptr<KvPalettePanel> panel;
    return panel;
}

}  // namespace

HxModuleHandle moduleInstance() { return instanceHandle; }
void setModuleInstance(HxModuleHandle instance) { instanceHandle = instance; }

HxModuleHandle globalResInstance() { return resourceHandle; }
void setGlobalResInstance(HxModuleHandle library) { resourceHandle = library; }

KvPalettePanel* layerPalette() { return palettePanel().get(); }
void setLayerPalette(KvPalettePanel* palette) { palettePanel().reset(palette); }
