// Clicks that change the viewport that is worked in.
#pragma once

#include "host/db/geometry/box.h"

namespace korvex {

class Document;

/// Another floating viewport at a point of the sheet becomes the one that is worked in, also while a command
/// runs; where there is none, nothing happens.
void workInViewportAt(Document& document, Point2 sheet);

/// On the sheet of a layout: into the floating viewport at this point (MSPACE), or out of the one that is
/// worked in (PSPACE). False when the point asks for neither. The commands run when the host is idle.
bool changeSpaceByDoubleClick(Document& document, Point2 sheet);

}  // namespace korvex
