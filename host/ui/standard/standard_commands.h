// COLOR and LINETYPE: what new objects get, chosen in the host's dialogs.
#pragma once

namespace korvex {

/// Registers them. Again changes nothing. Needs a QApplication.
void startStandardCommands();

}  // namespace korvex
