// Keys and menus through the window manager, which decides what window has the keyboard.
#include "sdk/hxdock.h"
#include "tests/display/real_input.h"

namespace korvex::test {
namespace {

class Keyboard : public DisplayTest {
protected:
    bool isIn(const QWidget& part) const {
        const QWidget* const now = QApplication::focusWidget();
        return now && (now == &part || part.isAncestorOf(now));
    }
};

TEST_F(Keyboard, GoesAroundTheWindowsAndBack) {
    const auto palette = [this]() -> HxUiDockPanel& { return widget<HxUiDockPanel>("KvLayerManagerWnd"); };
    user->enters("LAYERPALETTE");
    user->then([palette] { palette().floatAt(100, 120); });
    user->when([palette] { return palette().windowHandle() && palette().windowHandle()->isExposed(); },
               [this] {
                   moveTo(middleOf(edit()));
                   byHand({"click", "1"});
               });
    user->when([this] { return edit().hasFocus(); }, [] { byHand({"key", "F6"}); });
    user->when([this, palette] { return isIn(palette()); }, [] { byHand({"key", "shift+F6"}); });
    user->when([this] { return isIn(*window->centralWidget()); }, [] { byHand({"type", "LINE "}); });
    user->when([this] { return window->dialogue().isAsking(); }, [] { byHand({"key", "Escape"}); });
    user->work();
}

TEST_F(Keyboard, MenusOpenByMouseAndKeys) {
    const auto isOpen = [](const char* name) {
        return [name] {
            const QWidget* const popup = QApplication::activePopupWidget();
            return popup && popup->objectName() == name && popup->windowHandle()->isExposed();
        };
    };
    const auto isClosed = [] { return !QApplication::activePopupWidget(); };
    user->then([this] {
        const QMenuBar& bar = *window->menuBar();
        moveTo(bar.mapToGlobal(bar.actionGeometry(bar.actions().value(0)).center()));
        byHand({"click", "1"});
    });
    user->when(isOpen("MenuFile"), [] { byHand({"key", "Right"}); });
    user->when(isOpen("MenuEdit"), [] { byHand({"key", "Escape", "Escape"}); });
    user->when(isClosed, [] { byHand({"key", "alt+l"}); });
    user->when(isOpen("MenuLayer"), [] { byHand({"key", "Escape", "Escape"}); });
    user->when(isClosed, [] {});
    user->work();
}

}  // namespace
}  // namespace korvex::test
