// Follows the editor for the layer palette.
#pragma once

#include "hxed.h"

/// Registered with the editor from its making to its end. There is no palette yet that a notification could
/// concern, so all of them pass.
class KvLayerPaletteEditorReactor : public HxEditorReactor {
public:
    KvLayerPaletteEditorReactor();
    ~KvLayerPaletteEditorReactor() override;
    KvLayerPaletteEditorReactor(const KvLayerPaletteEditorReactor&) = delete;
    KvLayerPaletteEditorReactor& operator=(const KvLayerPaletteEditorReactor&) = delete;
};
