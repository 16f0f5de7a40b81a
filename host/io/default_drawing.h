// The drawing that NEW begins with.
#pragma once

#include "sdk/hxdbdatabase.h"

namespace korvex {

/// Fills an empty database: version AC1027, millimetres, layer "0", the standard linetypes, text and
/// dimension style, model space, one layout "Layout1" on A3, the plot style "Normal". Made now, never saved,
/// without changes.
void buildDefaultDrawing(HxDbDatabase& database);

}  // namespace korvex
