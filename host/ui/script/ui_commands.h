// The actions of scripts as commands, for palettes and the main window.
#pragma once

namespace korvex {

/// Registers them, and starts watchModalLoops. Again changes nothing. Needs a QApplication.
void startUiCommands();

}  // namespace korvex
