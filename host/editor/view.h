// What the screen shows of the drawing, the measure of picks. ZOOM and PAN change the view that the drawing
// keeps; wheel and mouse only what the window shows, which the drawing knows nothing of.
#pragma once

#include "sdk/hxdbdatabase.h"
#include "sdk/hxge.h"

namespace korvex {

/// The view of the current space or floating viewport.
struct View {
    HxGePoint3d center;  ///< in the current space
    double height = 0;
    double aspect = 4.0 / 3;  ///< width by height
    double unitsPerPixel = 0;
};

/// The size of the window that shows the drawing, in device-independent pixels. 0 by 0: there is none, and
/// 800 by 600 pixels count.
void setScreenSize(int width, int height);

/// What commands and picks go by: what the window shows or, in a floating viewport, what that one shows.
View currentView(HxDbDatabase& database);
/// Keeps it in the drawing, and shows it. Where the drawing has no place for it, it is only shown.
/// eInvalidInput for a height that is not above 0, eNotApplicable for a floating viewport of a drawing that
/// keeps its view elsewhere (R12), else the status of the change.
Hx::ErrorStatus setCurrentView(HxDbDatabase& database, const View& view);

/// What the window shows of model space or of the sheet, whatever viewport is worked in: what was set last
/// for this space if the drawing's own view is still what it was then, else the drawing's own, or a view of
/// everything when that shows next to nothing. Until it is moved it follows the window's shape, so that what
/// it shows stays in sight.
View screenView(HxDbDatabase& database);
/// Shows something else and leaves the drawing as it is. A view that cannot be shown is ignored.
void setScreenView(HxDbDatabase& database, const View& view);
/// A view of everything on the sheet or in model space; false when there is nothing.
bool screenExtents(HxDbDatabase& database, View& view);
/// A view of the box, with a little room around it.
View viewOfBox(const View& like, const HxGePoint3d& low, const HxGePoint3d& high);
/// A view of everything that the current space holds; false when it holds nothing.
bool extentsView(HxDbDatabase& database, View& view);
/// The block record of the space that commands work in: model space also in a floating viewport.
HxDbObjectId currentSpace(const HxDbDatabase& database);
/// Half the side of the pick box in drawing units.
double pickBoxHalfSize(HxDbDatabase& database);

}  // namespace korvex
