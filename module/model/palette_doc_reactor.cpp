// Follows the open documents for the layer palette.
#include "palette_doc_reactor.h"

KvLayerPaletteDocReactor::KvLayerPaletteDocReactor() { hxDocManager()->addReactor(this); }

KvLayerPaletteDocReactor::~KvLayerPaletteDocReactor() { hxDocManager()->removeReactor(this); }
