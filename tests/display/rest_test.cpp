// A window that is left alone does nothing.
#include "tests/display/real_input.h"

#include <QAbstractEventDispatcher>

#include <sys/resource.h>

namespace korvex::test {
namespace {

double processorSeconds() {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& t) { return double(t.tv_sec) + double(t.tv_usec) / 1e6; };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

class Rest : public DisplayTest {
protected:
    /// Leaves the window alone for a while. The cursor of the command line may blink.
    void rests(const char* what, int milliseconds) {
        user->rests(
            milliseconds,
            [this] {
                m_titles = std::make_unique<EventCount>(
                    std::vector{QEvent::WindowTitleChange, QEvent::ModifiedChange});
                m_turns = 0;
                m_blocks = QObject::connect(QAbstractEventDispatcher::instance(),
                                            &QAbstractEventDispatcher::aboutToBlock, [this] { ++m_turns; });
                m_before = processorSeconds();
            },
            [this, what, milliseconds] {
                QObject::disconnect(m_blocks);
                EXPECT_LE(processorSeconds() - m_before, std::max(0.06, 0.02 * milliseconds / 1000)) << what;
                EXPECT_LE(m_turns, 5 + milliseconds / 100) << what << ": something wakes the loop";
                EXPECT_EQ(m_titles->count, 0) << what;
                m_titles.reset();
            });
    }

private:
    std::unique_ptr<EventCount> m_titles;
    QMetaObject::Connection m_blocks;
    int m_turns = 0;
    double m_before = 0;
};

TEST_F(Rest, AWindowThatIsLeftAloneDoesNothing) {
    user->enters("CIRCLE 1,1 1");  // the title shows that the drawing was changed
    rests("the window", 1500);
    user->enters("LAYERPALETTE");
    rests("with the palette", 5000);
    user->enters("LAYFRZ");
    rests("while a command waits", 2000);
    user->presses(Qt::Key_Escape);
    user->then([this] { window->findChild<QAction*>("ActionAbout")->trigger(); });
    user->inDialog([](QWidget&) {});
    rests("with a dialog", 2000);
    user->inDialog([](QWidget& dialog) { dialog.close(); });
    user->work();
}

}  // namespace
}  // namespace korvex::test
