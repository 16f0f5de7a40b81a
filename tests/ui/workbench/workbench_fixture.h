// A workbench on the screen, the layer manager loaded, and a user.
#pragma once

#include "host/ui/view/drawing_view.h"
#include "host/ui/workbench/main_window.h"
#include "host/ui/workbench/workbench.h"
#include "tests/module/module_fixture.h"
#include "tests/ui/workbench/user.h"

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QTabBar>
#include <QTextDocument>
#include <QToolButton>

namespace korvex::test {

/// Fixture is ModuleTest for a new drawing, or DrawingTest for one with blocks, a reference and a layout.
template <class Fixture>
class WorkbenchOver : public Fixture {
protected:
    void SetUp() override {
        Fixture::SetUp();
        openWindow();
    }
    void TearDown() override {
        user.reset();
        linker().unloadModule(kModule);  // before the window, as when the program ends
        closeWindow();
        Fixture::TearDown();
    }
    void openWindow() {
        window = std::make_unique<Workbench>(Workbench::Placement::kept);
        setMainWindowMaker([this] { return window.get(); });
        window->show();
        QApplication::setActiveWindow(window.get());
        EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
        user = std::make_unique<User>(*window);
    }
    void closeWindow() {
        setMainWindowMaker(nullptr);
        window.reset();
    }

    template <class Widget = QWidget>
    Widget& widget(const char* name) {
        auto* const found = window->template findChild<Widget*>(name);
        EXPECT_NE(found, nullptr) << name;
        return *found;
    }
    QLineEdit& edit() { return widget<QLineEdit>("CommandLine"); }
    QString history() { return widget<QPlainTextEdit>("CommandHistory").toPlainText(); }
    QString prompt() {
        QTextDocument text;
        text.setHtml(widget<QLabel>("CommandPrompt").text());
        return text.toPlainText();
    }
    QTabBar& documentTabs() { return widget<QTabBar>("DocumentTabs"); }
    QTabBar& layoutTabs() { return widget<QTabBar>("LayoutTabs"); }

    static void clickTab(QTabBar& tabs, int index, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(&tabs, button, Qt::NoModifier, tabs.tabRect(index).center());
    }
    void clickMenu(const QString& title) {
        for (QAction* action : window->menuBar()->actions()) {
            if (action->text().remove('&') == title) {
                QTest::mouseClick(window->menuBar(), Qt::LeftButton, Qt::NoModifier,
                                  window->menuBar()->actionGeometry(action).center());
                return;
            }
        }
        ADD_FAILURE() << "no menu " << title.toStdString();
    }
    static void clickEntry(QMenu& menu, const char* name) {
        for (QAction* action : menu.actions()) {
            if (action->objectName() == name) {
                QTest::mouseClick(&menu, Qt::LeftButton, Qt::NoModifier,
                                  menu.actionGeometry(action).center());
                return;
            }
        }
        ADD_FAILURE() << "no entry " << name;
    }
    static void clickButton(QWidget& dialog, const char* name) {
        auto* const button = dialog.findChild<QAbstractButton*>(name);
        ASSERT_NE(button, nullptr) << name << " in " << dialog.objectName().toStdString();
        QTest::mouseClick(button, Qt::LeftButton);
    }

    std::unique_ptr<Workbench> window;
    std::unique_ptr<User> user;
};

using WorkbenchTest = WorkbenchOver<ModuleTest>;
using DrawingWorkbenchTest = WorkbenchOver<DrawingTest>;

}  // namespace korvex::test
