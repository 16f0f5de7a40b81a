// Finds parents for dialogs and places dialogs over them.
#include "host/ui/dialogs/dialog_parent.h"

#include "host/ui/workbench/main_window.h"

#include <QApplication>
#include <QLayout>
#include <QScreen>
#include <QWidget>
#include <QWindow>

namespace korvex {

QWidget* boxParent(QWidget* parent) {
    QWidget* const modal = QApplication::activeModalWidget();
    return parent ? parent : modal ? modal : existingMainWindow();
}

void stackAboveOpenDialog(QWidget& dialog) {
    const QWidget* const modal = QApplication::activeModalWidget();
    if (modal && modal->windowHandle()) {
        dialog.winId();  // makes its window
        dialog.windowHandle()->setTransientParent(modal->windowHandle());
    }
}

void centerWindow(QWidget& window) {
    if (!window.testAttribute(Qt::WA_Resized)) {
        window.adjustSize();
    } else if (window.layout()) {
        window.layout()->activate();  // it may need more room than was given
    }
    const QWidget* const parent = window.parentWidget() ? window.parentWidget()->window() : nullptr;
    const bool isOverParent = parent && parent->isVisible() && !parent->isMinimized();
    const QScreen* const screen = isOverParent ? parent->screen() : QGuiApplication::primaryScreen();
    const QRect room = screen ? screen->availableGeometry() : QRect();
    QRect place(QPoint(), window.frameGeometry().size());
    place.moveCenter(isOverParent ? parent->frameGeometry().center() : room.center());
    place.moveRight(std::min(place.right(), room.right()));
    place.moveBottom(std::min(place.bottom(), room.bottom()));
    place.moveLeft(std::max(place.left(), room.left()));
    place.moveTop(std::max(place.top(), room.top()));
    window.move(place.topLeft());
}

}  // namespace korvex
