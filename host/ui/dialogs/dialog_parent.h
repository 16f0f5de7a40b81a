// Where dialogs without a parent of their own belong, and how they are placed.
#pragma once

class QWidget;

namespace korvex {

/// The parent of a message box: the one that is given; for null the dialog that is open, or the main window;
/// null when there is none of these.
QWidget* boxParent(QWidget* parent);

/// A dialog that is about to be shown stays above the one that is open, whatever its parent.
void stackAboveOpenDialog(QWidget& dialog);

/// Moves a window to the middle of its parent's, or of the screen when that is not shown, and never out of
/// the screen.
void centerWindow(QWidget& window);

}  // namespace korvex
