// What the screen shows of the drawing: kept in the drawing, changed by ZOOM and PAN, the measure of picks.
#pragma once

#include "sdk/hxdbdatabase.h"
#include "sdk/hxge.h"

namespace korvex {

/// The view of the current space or floating viewport.
struct View {
    HxGePoint3d center;
    double height = 0;
    double aspect = 4.0 / 3;  ///< width by height
    double unitsPerPixel = 0;
};

/// The view that is current in the working database; a view of everything when the drawing keeps none.
View currentView(HxDbDatabase& database);
/// Keeps it in the drawing. eNotApplicable when the drawing has no place for it, eInvalidInput for a height
/// that is not above 0, else the status of the change.
Hx::ErrorStatus setCurrentView(HxDbDatabase& database, const View& view);
/// A view of the box, with a little room around it.
View viewOfBox(const View& like, const HxGePoint3d& low, const HxGePoint3d& high);
/// A view of everything that the current space holds; false when it holds nothing.
bool extentsView(HxDbDatabase& database, View& view);
/// The block record of the space that commands work in: model space also in a floating viewport.
HxDbObjectId currentSpace(const HxDbDatabase& database);
/// Half the side of the pick box in drawing units.
double pickBoxHalfSize(HxDbDatabase& database);

}  // namespace korvex
