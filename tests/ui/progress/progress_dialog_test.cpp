// The progress dialog: when it comes, what it shows, whom it lets have input.
#include "host/ui/progress/progress_dialog.h"
#include "sdk/hxui.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QMouseEvent>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QThread>
#include <QTimer>
#include <QVBoxLayout>

#include <functional>
#include <gtest/gtest.h>

namespace korvex::test {
namespace {

class ProgressDialogTest : public ::testing::Test {
protected:
    ProgressDialogTest() {
        auto* column = new QVBoxLayout(&window);
        column->addWidget(&button);
        column->addWidget(&edit);
        QObject::connect(&button, &QPushButton::clicked, [this] { ++clicks; });
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        edit.setFocus();
        showProgressOver(&window);
    }
    ~ProgressDialogTest() override { showProgressOver(nullptr); }

    static ProgressDialog* dialog() {
        return qobject_cast<ProgressDialog*>(QApplication::activeModalWidget());
    }

    /// Works for a while with a look at the dialog at every step; true when it was not given up.
    static bool work(int milliseconds, const std::function<void()>& look, bool canCancel = true) {
        HxUiProgress progress(L"Counting sheep", milliseconds, canCancel);
        QElapsedTimer clock;
        clock.start();
        while (clock.elapsed() < milliseconds) {
            look();
            if (!progress.step(clock.elapsed())) {
                return false;
            }
            QThread::msleep(5);
        }
        return true;
    }
    static void post(QWidget* widget, QEvent::Type type) {
        const Qt::MouseButtons pressed = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
        QCoreApplication::postEvent(
            widget, new QMouseEvent(type, widget->rect().center(), Qt::LeftButton, pressed, Qt::NoModifier));
    }
    static void postClick(QWidget* widget) {
        post(widget, QEvent::MouseButtonPress);
        post(widget, QEvent::MouseButtonRelease);
    }
    static void postKey(QWidget* widget, int key, const QString& text = {}) {
        QCoreApplication::postEvent(widget, new QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier, text));
    }

    QWidget window;
    QPushButton button{"Other"};
    QLineEdit edit;
    int clicks = 0;
};

TEST_F(ProgressDialogTest, ShortWorkShowsNothingLongWorkDoes) {
    int shown = 0;
    EXPECT_TRUE(work(250, [&] { shown += dialog() ? 1 : 0; }));
    EXPECT_EQ(shown, 0);
    int last = -1;
    EXPECT_TRUE(work(1000, [&] {
        if (ProgressDialog* open = dialog()) {
            ++shown;
            const auto* bar = open->findChild<QProgressBar*>();
            EXPECT_GE(bar->value(), last);
            last = bar->value();
            EXPECT_EQ(bar->accessibleName(), "Counting sheep");
            EXPECT_TRUE(open->isVisible());
        }
    }));
    EXPECT_GT(shown, 10);
    EXPECT_GE(last, 80);
    EXPECT_FALSE(dialog()) << "it goes with the work";
    EXPECT_TRUE(edit.isVisible());
}

TEST_F(ProgressDialogTest, NoInputAndNoTimerReachesAnythingElse) {
    int ticks = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&ticks] { ++ticks; });
    timer.start(0);
    EXPECT_TRUE(work(800, [&] {
        if (dialog()) {
            postClick(&button);
            postKey(&edit, Qt::Key_A, "a");
        }
    }));
    EXPECT_EQ(ticks, 0);
    // What was posted before the last look; a click after it is the next user's.
    QCoreApplication::removePostedEvents(&button);
    QCoreApplication::removePostedEvents(&edit);
    EXPECT_EQ(clicks, 0);
    EXPECT_EQ(edit.text(), "");
}

TEST_F(ProgressDialogTest, CancelAndEscEndTheWork) {
    EXPECT_FALSE(work(5000, [] {
        if (ProgressDialog* open = dialog()) {
            postClick(open->findChild<QPushButton*>());
        }
    }));
    EXPECT_FALSE(dialog());
    EXPECT_FALSE(work(5000, [] {
        if (ProgressDialog* open = dialog()) {
            postKey(open, Qt::Key_Escape);
        }
    }));
    EXPECT_FALSE(work(5000, [this] {
        if (dialog()) {
            postKey(&edit, Qt::Key_Escape);
        }
    })) << "wherever the window system believes the keyboard to be";
}

TEST_F(ProgressDialogTest, WorkThatCannotBeCancelledGoesOn) {
    bool hasButton = true;
    EXPECT_TRUE(work(
        800,
        [&] {
            if (ProgressDialog* open = dialog()) {
                hasButton = open->findChild<QPushButton*>()->isVisible();
                postKey(open, Qt::Key_Escape);
            }
        },
        false));
    EXPECT_FALSE(hasButton);
}

TEST_F(ProgressDialogTest, WithoutAShownWindowNothingIsShown) {
    window.hide();
    int shown = 0;
    EXPECT_TRUE(work(700, [&] { shown += dialog() ? 1 : 0; }));
    EXPECT_EQ(shown, 0);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

}  // namespace
}  // namespace korvex::test
