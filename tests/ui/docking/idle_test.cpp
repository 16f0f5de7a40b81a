// When the frame tells that the host is idle, and when not.
#include "host/ui/docking/idle_notifier.h"
#include "tests/editor/editor_fixture.h"
#include "tests/ui/docking/dock_fixture.h"

#include <QDialog>
#include <QEventLoop>
#include <QMenu>
#include <QTimer>

namespace korvex::test {
namespace {

constexpr int kFew =
    10;  ///< some events of the display still come; in a loop that wakes itself it were hundreds

class IdleTest : public EditorTest {
protected:
    IdleTest() {
        frame.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&frame));
        turn(30);
    }
    /// Lets the event loop wait for a while.
    static void turn(int milliseconds) {
        QEventLoop loop;
        QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
        loop.exec();
    }
    HxUiDockFrameWindow frame;
    QSignalSpy idle{&frame, &HxUiDockFrameWindow::OnIdle};
};

TEST_F(IdleTest, ComesWhenEventsHaveRunOutAndWakesNothing) {
    turn(200);
    EXPECT_GE(idle.count(), 1);
    EXPECT_LE(idle.count(), kFew) << "it must not keep the loop going";
    idle.clear();
    int told = 0;
    QObject::connect(&frame, &HxUiDockFrameWindow::OnIdle, [&told, this] {
        if (++told == 1) {
            QTimer::singleShot(0, &frame, [] {});  // one more turn
        }
    });
    turn(200);
    EXPECT_GE(idle.count(), 2);
    EXPECT_LE(idle.count(), kFew);
}

TEST_F(IdleTest, NotWithinItselfNorWhileADialogOrMenuIsOpen) {
    QObject::connect(&frame, &HxUiDockFrameWindow::OnIdle, [] { turn(20); });
    turn(30);
    const int before = idle.count();
    EXPECT_GE(before, 1);
    EXPECT_LE(before, kFew);

    QDialog dialog(&frame);
    QTimer::singleShot(50, &dialog, &QDialog::accept);
    idle.clear();
    int during = -1;
    QObject::connect(&dialog, &QDialog::accepted, [&] { during = idle.count(); });
    dialog.exec();
    EXPECT_EQ(during, 0);

    QMenu menu(&frame);
    menu.addAction("one");
    menu.popup(frame.mapToGlobal(QPoint(5, 5)));
    idle.clear();
    turn(30);
    EXPECT_EQ(idle.count(), 0);
    menu.close();
    turn(30);
    EXPECT_GE(idle.count(), 1);
}

TEST_F(IdleTest, NotWhileACommandRuns) {
    int during = -1;
    define(L"WAIT", [&] {
        idle.clear();
        turn(50);
        IdleNotifier::notifyAll();
        during = idle.count();
    });
    run(L"WAIT\n");
    EXPECT_EQ(during, 0);
}

TEST_F(IdleTest, BeforeEachQuestionOfACommand) {
    std::vector<int> counts;
    editor().setIdleHandler([] { IdleNotifier::notifyAll(); });
    define(L"ASK", [&] {
        idle.clear();
        IdleNotifier::notifyAll();
        counts.push_back(idle.count());
        askKeyword({L"One?", L"Yes No"});
        counts.push_back(idle.count());
        IdleNotifier::notifyAll();
        askKeyword({L"Two?", L"Yes No"});
        counts.push_back(idle.count());
    });
    run(L"ASK Y N\n");
    editor().setIdleHandler(nullptr);
    EXPECT_EQ(counts, (std::vector<int>{0, 1, 2}));
}

TEST_F(IdleTest, OnceForEveryTurnOfARunWithoutWindows) {
    int turns = 0;
    editor().setIdleHandler([&turns] {
        ++turns;
        QCoreApplication::processEvents();
        IdleNotifier::notifyAll();
    });
    idle.clear();
    run(L"NOMUTT 0\nNOMUTT 0\n");
    editor().setIdleHandler(nullptr);
    EXPECT_GE(turns, 3);
    EXPECT_EQ(idle.count(), turns);
}

}  // namespace
}  // namespace korvex::test
