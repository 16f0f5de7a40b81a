// Sends events by the functions that Qt's own test library sends them by.
#include "host/ui/script/real_events.h"

#include <QApplication>
#include <QPointer>
#include <QWidget>
#include <QWindow>

QT_BEGIN_NAMESPACE
Q_GUI_EXPORT void qt_handleMouseEvent(QWindow* window, const QPointF& local, const QPointF& global,
                                      Qt::MouseButtons state, Qt::MouseButton button, QEvent::Type type,
                                      Qt::KeyboardModifiers mods, int timestamp);
Q_GUI_EXPORT void qt_handleKeyEvent(QWindow* window, QEvent::Type type, int key, Qt::KeyboardModifiers mods,
                                    const QString& text, bool autorep, ushort count);
QT_END_NAMESPACE

namespace korvex {

namespace {

/// Clicks that are farther apart than this, in milliseconds, are no double-click.
constexpr int kApart = 10000;

/// The time that events tell: it only goes on by what is sent.
int& clock() {
    static int now = kApart;
    return now;
}

struct Pointer {
    QPointer<QWindow> window;
    QPointF local, global;
    Qt::KeyboardModifiers modifiers;

    void send(QEvent::Type type, Qt::MouseButton button) {
        if (window) {
            const Qt::MouseButtons held = type == QEvent::MouseButtonPress ? button : Qt::NoButton;
            qt_handleMouseEvent(window, local, global, held, button, type, modifiers, ++clock());
        }
    }
};

QWindow* windowOf(const QWidget& widget) { return widget.window()->windowHandle(); }

}  // namespace

void clickAt(QWidget& widget, const QPoint& at, const MouseClick& click) {
    Pointer pointer{windowOf(widget), widget.mapTo(widget.window(), at), widget.mapToGlobal(at),
                    click.modifiers};
    clock() += kApart;
    pointer.send(QEvent::MouseMove, Qt::NoButton);
    for (int i = 0; i < (click.isDouble ? 2 : 1); ++i) {
        pointer.send(QEvent::MouseButtonPress, click.button);
        pointer.send(QEvent::MouseButtonRelease, click.button);
    }
}

void pressKey(QWidget& widget, int key, Qt::KeyboardModifiers modifiers, const QString& text) {
    const QPointer<QWindow> window = windowOf(widget);
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        if (window) {
            qt_handleKeyEvent(window, type, key, modifiers, text, false, 1);
        }
    }
}

void focusOn(QWidget& widget) {
    QWidget* const window = widget.window();
    if (QApplication::activeWindow() != window && window->windowType() != Qt::Popup) {
        window->activateWindow();
        QApplication::setActiveWindow(window);
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);  // the platform tells it later
    }
    if (!widget.hasFocus()) {
        widget.setFocus(Qt::OtherFocusReason);
    }
}

}  // namespace korvex
