// The one main window of the process: who makes it, and when.
#pragma once

#include <functional>

class QWidget;

namespace korvex {

/// How the main window is made when hxuiMainWindow is first asked for it; null: the program has none. What
/// was made before is forgotten.
void setMainWindowMaker(std::function<QWidget*()> maker);
/// The main window if it has been made and lives; asking does not make it.
QWidget* existingMainWindow();

}  // namespace korvex
