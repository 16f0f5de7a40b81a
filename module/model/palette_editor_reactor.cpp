// Follows the editor for the layer palette.
#include "palette_editor_reactor.h"

KvLayerPaletteEditorReactor::KvLayerPaletteEditorReactor() { hxedEditor()->addReactor(this); }

KvLayerPaletteEditorReactor::~KvLayerPaletteEditorReactor() { hxedEditor()->removeReactor(this); }
