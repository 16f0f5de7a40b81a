// Makes the main window when it is first asked for.
#include "host/ui/workbench/main_window.h"

#include "sdk/hxui.h"

#include <QPointer>
#include <QWidget>

namespace korvex {

namespace {

struct MainWindow {
    std::function<QWidget*()> maker;
    QPointer<QWidget> window;
};

MainWindow& mainWindow() {
    static MainWindow theWindow;
    return theWindow;
}

}  // namespace

void setMainWindowMaker(std::function<QWidget*()> maker) { mainWindow() = {std::move(maker), nullptr}; }

QWidget* existingMainWindow() { return mainWindow().window; }

}  // namespace korvex

QWidget* hxuiMainWindow() {
    korvex::MainWindow& main = korvex::mainWindow();
    if (!main.window && main.maker) {
        // Whoever is asked for the window while it is being made gets none.
        const std::function<QWidget*()> maker = std::move(main.maker);
        main.maker = nullptr;
        main.window = maker();
    }
    return main.window;
}
