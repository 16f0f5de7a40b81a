// Windows and controls by the names that scripts give them.
#pragma once

#include <QString>

#include <vector>

class QAction;
class QWidget;

namespace korvex {

/// The window that the user would work in: an open menu, the innermost modal dialog, the active window or the
/// main window. Null when nothing is shown.
QWidget* topmostWindow();

/// The windows that take input now, the topmost first.
std::vector<QWidget*> openWindows();

/// How messages call a window: its title, else its object name.
QString windowLabel(const QWidget& window);

/// How messages and lists call a control: its object name, else the text on it.
QString controlLabel(const QWidget& control);

/// A text without mnemonic marks and without a shortcut behind a tab.
QString withoutMnemonic(const QString& text);

/// What a name stands for.
struct NamedObject {
    QWidget* widget = nullptr;
    QAction* action = nullptr;  ///< an action of a tool bar or menu, when no widget has the name
    QString trouble;            ///< why it is neither
};

/// Looks in the windows that take input now. A name is an object name, a path of them ("dialog/IDOK"), the
/// text of a button, or one of: "focus", what has the keyboard; "menu", the open menu; "window", the topmost
/// window; "header" at the end of a path, the column headers of a view. Visible controls come first.
NamedObject findNamed(const QString& name);

}  // namespace korvex
