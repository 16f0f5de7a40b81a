// Where dialogs without a parent of their own belong, and how they are placed.
#pragma once

class QWidget;

namespace korvex {

/// The parent itself; for null the dialog or menu's window that is open, or the main window; null when there
/// is none of these.
QWidget* dialogParent(QWidget* parent);

/// Moves a window to the middle of its parent's, or of the screen when that is not shown, and never out of
/// the screen.
void centerWindow(QWidget& window);

}  // namespace korvex
