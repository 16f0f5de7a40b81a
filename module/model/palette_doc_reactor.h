// Follows the open documents for the layer palette.
#pragma once

#include "hxdoc.h"

/// Registered with the document manager from its making to its end. There is no palette yet that a
/// notification could concern, so all of them pass.
class KvLayerPaletteDocReactor : public HxApDocManagerReactor {
public:
    KvLayerPaletteDocReactor();
    ~KvLayerPaletteDocReactor() override;
    KvLayerPaletteDocReactor(const KvLayerPaletteDocReactor&) = delete;
    KvLayerPaletteDocReactor& operator=(const KvLayerPaletteDocReactor&) = delete;
};
