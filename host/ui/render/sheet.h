// The sheet of paper that a layout is drawn on.
#pragma once

#include "host/db/geometry/box.h"
#include "sdk/hxdbid.h"

class HxDbDatabase;

namespace korvex {

struct Sheet {
    Box paper;               ///< in the layout's coordinates; empty when the drawing tells no size
    double millimetres = 1;  ///< in one unit of the layout
};

/// True for a paper space; blocks and model space are none.
bool isPaper(const HxDbDatabase& database, HxDbStub& space);

/// From the layout record; in drawings without layouts from the limits of paper space.
Sheet sheetOf(const HxDbDatabase& database, HxDbStub& paper);

}  // namespace korvex
