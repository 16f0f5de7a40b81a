// The palette and what follows the documents, from loading to unloading.
#include "module_state.h"

#include "model/palette_doc_reactor.h"

#include <memory>

namespace {

std::unique_ptr<KvLayerPaletteDocReactor>& docReactor() {
    static std::unique_ptr<KvLayerPaletteDocReactor> reactor;
    return reactor;
}

std::unique_ptr<KvPalettePanel>& palettePanel() {
    static std::unique_ptr<KvPalettePanel> panel;
    return panel;
}

}  // namespace

KvLayerPaletteDocReactor* paletteDocReactor() { return docReactor().get(); }
void setPaletteDocReactor(KvLayerPaletteDocReactor* reactor) { docReactor().reset(reactor); }

KvPalettePanel* layerPalette() { return palettePanel().get(); }
void setLayerPalette(KvPalettePanel* palette) { palettePanel().reset(palette); }
void forgetLayerPalette(const KvPalettePanel& palette) {
    if (palettePanel().get() == &palette) palettePanel().release();
}
