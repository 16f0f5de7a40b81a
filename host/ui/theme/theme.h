// The host's look: dark or light, by the system variable COLORTHEME, changed at run time.
#pragma once

#include "host/ui/theme/theme_icon.h"

namespace korvex {

struct ThemeColors;

/// Gives the application its style, palette and style sheet and keeps them up with COLORTHEME. Calling it
/// again changes nothing. Needs a QApplication.
void startTheme();

/// The theme that is shown; before startTheme the one that COLORTHEME asks for.
bool isDark();
/// Its colours, for what widgets paint themselves. They learn of another theme as of another palette
/// (QEvent::PaletteChange).
const ThemeColors& themeColors();

}  // namespace korvex
