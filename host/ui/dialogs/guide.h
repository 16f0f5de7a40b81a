// The user's guide.
#pragma once

#include <QString>

class HxUiBaseDialog;

namespace korvex {

/// The file of a page ("layer-states.md"), of the installed guide or of the source tree; empty when there is
/// none.
QString guidePage(const QString& page);

/// Opens a page in the user's viewer; where no program opens it, a box over the dialog tells the path. False
/// when there is no such page.
bool showGuidePage(HxUiBaseDialog& over, const QString& page);

}  // namespace korvex
