// Mouse and keyboard events that take the way of the platform's own: through windows, popups and shortcuts.
#pragma once

#include <QString>
#include <Qt>

class QPoint;
class QWidget;

namespace korvex {

struct MouseClick {
    Qt::MouseButton button = Qt::LeftButton;
    Qt::KeyboardModifiers modifiers = Qt::NoModifier;
    bool isDouble = false;
};

/// Clicks at a point of a widget. Whatever that opens has been closed when it returns, unless it does not
/// wait.
void clickAt(QWidget& widget, const QPoint& at, const MouseClick& click);

/// Presses and releases a key in the widget's window; it goes to what has the focus there. `key` is one of
/// Qt::Key, `text` what it types.
void pressKey(QWidget& widget, int key, Qt::KeyboardModifiers modifiers, const QString& text);

/// Gives a widget the keyboard, and its window the shortcuts.
void focusOn(QWidget& widget);

}  // namespace korvex
