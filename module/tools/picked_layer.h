// Which layer is meant by a pick.
#pragma once

#include "hxads.h"
#include "hxstring.h"

/// The layer of an object that was picked, or of a block reference that holds it. `containers` is the chain
/// of those references, innermost first, null for an object that lies in no block; `nesting` says as
/// FreezeOptions::Nesting who counts. A layer that an external reference calls LAYER is "BLOCK|LAYER" in the
/// drawing, but its layer "0" is the drawing's own. Empty when the object cannot be read.
CStdStr<wchar_t> layerOfPick(const zds_name picked, const resbuf* containers, int nesting);
