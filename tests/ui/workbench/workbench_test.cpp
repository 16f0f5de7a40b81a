// The window as a whole: spaces, theme, scripts, what it remembers, what may go wrong under it.
#include "host/ui/theme/theme.h"
#include "tests/ui/workbench/workbench_fixture.h"

#include <QScreen>
#include <QSplitter>

namespace korvex::test {
namespace {

class WholeWindowTest : public DrawingWorkbenchTest {};

TEST_F(WholeWindowTest, LayoutTabsRunTheCommands) {
    Recorder recorder;
    user->then([this] {
        EXPECT_EQ(layoutTabs().count(), 2);
        EXPECT_EQ(layoutTabs().tabText(1), "Layout1");
        clickTab(layoutTabs(), 1);
    });
    user->when([this] { return !database().tilemode(); }, [] {});
    user->atCommandPrompt([this] {
        EXPECT_EQ(layoutTabs().currentIndex(), 1);
        clickTab(layoutTabs(), 0);
    });
    user->when([this] { return database().tilemode(); }, [] {});
    user->atCommandPrompt([this] { EXPECT_EQ(layoutTabs().currentIndex(), 0); });
    user->then([this] { window->findChild<QAction*>("ActionZoomExtents")->trigger(); });
    user->work();
    EXPECT_FALSE(database().isModified()) << "who looks changes nothing";
    EXPECT_EQ(std::count(recorder.log.begin(), recorder.log.end(), L"end LAYOUT"), 1);
    EXPECT_EQ(std::count(recorder.log.begin(), recorder.log.end(), L"end MODEL"), 1);
}

TEST_F(WholeWindowTest, TheStatusBarFollowsLayerAndTheme) {
    user->then([this] { EXPECT_EQ(widget<QToolButton>("StatusLayer").text().trimmed(), "SPARE"); });
    user->enters("CLAYER WALLS");
    user->then([this] { EXPECT_EQ(widget<QToolButton>("StatusLayer").text().trimmed(), "WALLS"); });
    user->then([this] { clickMenu("View"); });
    const bool wasDark = isDark();
    user->inMenu([this, wasDark](QMenu& menu) {
        menu.close();
        widget<QMenu>("MenuTheme").actions().value(wasDark ? 1 : 0)->trigger();
    });
    user->when([wasDark] { return isDark() != wasDark; }, [] {});
    user->then([this, wasDark] {
        EXPECT_EQ(window->palette().color(QPalette::Window).lightness() < 128, !wasDark);
    });
    user->enters(wasDark ? "COLORTHEME 0" : "COLORTHEME 1");
    user->work();
}

TEST_F(WholeWindowTest, RunsScriptsAndGoesOnWithTheUser) {
    write("some.scr", "; three circles\nCIRCLE 1,1 1\nCIRCLE 2,2 1\nCIRCLE 3,3\n");
    const int before = entities();
    user->enters("SCRIPT");
    user->enters(QString::fromStdWString(path("some.scr")));
    user->then([this] { EXPECT_TRUE(window->dialogue().isAsking()); });
    user->enters("7");
    user->work();
    EXPECT_EQ(entities(), before + 3);
    EXPECT_TRUE(history().contains("Command: CIRCLE"));
}

TEST_F(WholeWindowTest, MenuCommandsEndOthersUnlessTheyAreTransparent) {
    user->enters("CIRCLE");
    user->then([this] { window->findChild<QAction*>("ActionZoomExtents")->trigger(); });
    user->then([this] {
        EXPECT_TRUE(prompt().contains("center")) << prompt().toStdString();
        EXPECT_STREQ(editor().documents().active()->commandInProgress(), L"CIRCLE");
        window->findChild<QAction*>("ActionLayfrz")->trigger();
    });
    user->when([] { return std::wstring(editor().documents().active()->commandInProgress()) == L"LAYFRZ"; },
               [] {});
    user->then([this] { EXPECT_TRUE(prompt().startsWith("Pick an object")) << prompt().toStdString(); });
    user->presses(Qt::Key_Escape);
    user->work();
    EXPECT_TRUE(failures.empty());
}

TEST_F(WholeWindowTest, UndoNamesItsStep) {
    user->types("circle 400,400 5 ");
    user->atCommandPrompt([this] {
        EXPECT_EQ(window->findChild<QAction*>("ActionUndo")->text().remove('&'), "Undo CIRCLE");
        EXPECT_FALSE(window->findChild<QAction*>("ActionRedo")->isEnabled());
        window->findChild<QAction*>("ActionUndo")->trigger();
    });
    user->atCommandPrompt([this] {
        EXPECT_FALSE(window->findChild<QAction*>("ActionUndo")->isEnabled());
        EXPECT_EQ(window->findChild<QAction*>("ActionRedo")->text().remove('&'), "Redo CIRCLE");
    });
    user->work();
}

TEST_F(WholeWindowTest, ComesBackWhereItWas) {
    window->setGeometry(40, 50, 700, 500);
    QCoreApplication::processEvents();
    widget<QSplitter>("WorkSplitter").setSizes({200, 260});
    const QList<int> sizes = widget<QSplitter>("WorkSplitter").sizes();
    window->keepPlacement();
    user.reset();
    closeWindow();
    openWindow();
    EXPECT_EQ(window->geometry().size(), QSize(700, 500));
    EXPECT_EQ(widget<QSplitter>("WorkSplitter").sizes(), sizes);
}

TEST_F(WholeWindowTest, ComesBackOntoAScreenThatIsThere) {
    window->setGeometry(9000, 7000, 600, 400);
    window->keepPlacement();
    user.reset();
    closeWindow();
    openWindow();
    EXPECT_TRUE(QApplication::primaryScreen()->availableGeometry().intersects(window->geometry()));
}

TEST_F(WholeWindowTest, MayBeDeletedWhileAPromptWaits) {
    user.reset();
    editor().input().append(window->makeSource());
    QTimer::singleShot(20, [this] { window.reset(); });
    editor().processor().runAll();
    EXPECT_EQ(window, nullptr);
}

/// Fails in an event handler, as a palette of a module may.
class Faulty : public QObject {
public:
    bool event(QEvent* event) override {
        if (event->type() == QEvent::User) {
            throw std::runtime_error("a fault in a handler");
        }
        return QObject::event(event);
    }
};

TEST_F(WholeWindowTest, FaultsInHandlersEndInAMessage) {
    Faulty faulty;
    user->enters("CIRCLE");
    user->then([&faulty] { QCoreApplication::postEvent(&faulty, new QEvent(QEvent::User)); });
    user->when([this] { return !failures.empty(); }, [] {});
    user->enters("5,5");
    user->enters("1");
    user->work();
    ASSERT_EQ(failures.size(), 1U);
    EXPECT_TRUE(contains(failures[0], L"a fault in a handler"));
    EXPECT_TRUE(history().contains("a fault in a handler"));
}

/// Goes on asking whatever the user says.
void askForEver() {
    while (true) {
        askKeyword({L"Again?", L"No"});
    }
}

TEST_F(WholeWindowTest, ACommandThatNeverStopsAskingCanBeLeft) {
    define(L"FOREVER", askForEver);
    user->enters("FOREVER");
    user->presses(Qt::Key_Escape);
    user->then([this] {
        EXPECT_TRUE(window->dialogue().isAsking());
        window->findChild<QAction*>("ActionRedraw")->trigger();  // transparent: nothing is given up
    });
    user->then([this] { window->findChild<QAction*>("ActionRegen")->trigger(); });
    user->atCommandPrompt([] {});
    user->work();
    ASSERT_EQ(failures.size(), 1U);
    EXPECT_TRUE(contains(failures[0], L"FOREVER was stopped"));
}

TEST_F(WholeWindowTest, EveryControlHasANameAndAToolTip) {
    for (const char* name : {"CommandLine", "DrawingView", "DocumentTabs", "LayoutTabs", "StatusCoordinates",
                             "StatusLayer", "StatusSpace", "CommandHistory"}) {
        EXPECT_FALSE(widget(name).accessibleName().isEmpty()) << name;
    }
    for (const QToolButton* button : window->findChildren<QToolButton*>()) {
        if (button->isVisible()) {
            EXPECT_FALSE(button->toolTip().isEmpty()) << button->objectName().toStdString();
        }
    }
}

}  // namespace
}  // namespace korvex::test
