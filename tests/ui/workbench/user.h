// A user before the workbench: acts when the command line, a dialog or a menu waits, inside of the real loop.
#pragma once

#include "host/editor/command_processor.h"
#include "host/editor/editor.h"
#include "host/ui/workbench/workbench.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QElapsedTimer>
#include <QMenu>
#include <QTest>
#include <QTimer>

#include <deque>
#include <functional>
#include <gtest/gtest.h>

namespace korvex::test {

/// Steps that are done one by one, each as soon as what it waits for is there.
class User : public QObject {
public:
    using Step = std::function<void()>;

    explicit User(Workbench& window) : m_window(window) {
        m_tick.setInterval(2);
        connect(&m_tick, &QTimer::timeout, this, &User::tick);
    }

    /// When a prompt waits and no dialog is in the way.
    void then(Step step) { m_steps.push_back({Wait::prompt, std::move(step)}); }
    /// When the prompt of no command waits.
    void atCommandPrompt(Step step) { m_steps.push_back({Wait::command, std::move(step)}); }
    /// When a modal window is open.
    void inDialog(std::function<void(QWidget&)> step) {
        m_steps.push_back({Wait::dialog, [step] { step(*QApplication::activeModalWidget()); }});
    }
    /// When a menu is open.
    void inMenu(std::function<void(QMenu&)> step) {
        m_steps.push_back(
            {Wait::menu, [step] { step(*qobject_cast<QMenu*>(QApplication::activePopupWidget())); }});
    }
    /// When a condition has come true.
    void when(std::function<bool()> condition, Step step) {
        m_steps.push_back({Wait::condition, std::move(step), std::move(condition)});
    }
    void types(const QString& text) {
        then([this, text] { QTest::keyClicks(m_window.findChild<QWidget*>("CommandLine"), text); });
    }
    void presses(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        then([this, key, modifiers] {
            QTest::keyClick(m_window.findChild<QWidget*>("CommandLine"), static_cast<Qt::Key>(key),
                            modifiers);
        });
    }
    /// An answer and Enter.
    void enters(const QString& text) {
        types(text);
        presses(Qt::Key_Return);
    }

    /// Once things have calmed down does nothing at all for a while, not even look, between two calls.
    void rests(int milliseconds, Step begin, Step end) {
        m_steps.push_back({Wait::condition,
                           [this, milliseconds, begin = std::move(begin), end = std::move(end)] {
                               m_tick.stop();
                               whenCalm([this, milliseconds, begin, end] {
                                   begin();
                                   QTimer::singleShot(milliseconds, this, [this, end] {
                                       end();
                                       m_quiet.restart();
                                       m_tick.start();
                                   });
                               });
                           },
                           [] { return true; }});
    }

    /// Runs the host until all steps are done, and ends it at the next command prompt.
    void work() {
        m_quiet.start();
        m_tick.start();
        editor().input().append(m_window.makeSource());
        editor().processor().runAll();
        m_tick.stop();
        EXPECT_TRUE(m_steps.empty()) << m_steps.size() << " steps were not reached";
    }

private:
    enum class Wait { prompt, command, dialog, menu, condition };
    struct Waiting {
        Wait wait;
        Step step;
        std::function<bool()> condition = {};
    };
    static constexpr int kPatience = 10000;  // milliseconds

    static bool isReady(const Waiting& next, Workbench& window) {
        const bool isFree = !QApplication::activeModalWidget() && !QApplication::activePopupWidget();
        switch (next.wait) {
        case Wait::prompt: return isFree && window.dialogue().request();
        case Wait::command: return isFree && window.dialogue().request() && !window.dialogue().isAsking();
        case Wait::dialog: return QApplication::activeModalWidget() != nullptr;
        case Wait::menu: return qobject_cast<QMenu*>(QApplication::activePopupWidget()) != nullptr;
        case Wait::condition: return next.condition();
        }
        return false;
    }

    void tick() {
        const bool isFree = !QApplication::activeModalWidget() && !QApplication::activePopupWidget();
        if (m_isBeginning || (m_depth > 0 && isFree)) {  // a step that waits itself
            return;
        }
        if (m_steps.empty()) {
            if (isReady({Wait::command, {}, {}}, m_window)) {
                editor().processor().requestQuit();
                m_window.dialogue().interrupt();
            } else if (m_quiet.elapsed() > kPatience) {
                giveUp("the command prompt");
            }
            return;
        }
        if (isReady(m_steps.front(), m_window)) {
            m_quiet.restart();
            begin();
        } else if (m_quiet.elapsed() > kPatience) {
            giveUp("a step");
        }
    }

    /// Not from inside of the timer's event, which does not come again while it is being handled: a step may
    /// open a dialog.
    void begin() {
        const Step step = std::move(m_steps.front().step);
        m_steps.pop_front();
        m_isBeginning = true;
        QMetaObject::invokeMethod(
            this,
            [this, step] {
                m_isBeginning = false;
                ++m_depth;
                step();
                --m_depth;
            },
            Qt::QueuedConnection);
    }

    /// When no event has come for a while; at the latest after some seconds.
    void whenCalm(Step step) {
        constexpr int kCalm = 250;  // milliseconds
        auto* const calm = new QTimer(this);
        calm->setSingleShot(true);
        connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, calm,
                [calm] { calm->start(kCalm); });
        const auto go = [calm, step = std::move(step)] {
            calm->disconnect();
            calm->stop();
            calm->deleteLater();
            step();
        };
        connect(calm, &QTimer::timeout, this, go);
        QTimer::singleShot(12 * kCalm, calm, go);
    }

    void giveUp(const char* what) {
        const InputRequest* const request = m_window.dialogue().request();
        ADD_FAILURE() << "waited in vain for " << what << "; prompt: "
                      << (request ? QString::fromStdWString(request->prompt).toStdString() : "none")
                      << "; window: "
                      << (QApplication::activeModalWidget()
                              ? QApplication::activeModalWidget()->objectName().toStdString()
                              : "none");
        if (QWidget* const modal = QApplication::activeModalWidget()) {
            QMetaObject::invokeMethod(modal, "reject");
        }
        if (QWidget* const popup = QApplication::activePopupWidget()) {
            popup->close();
        }
        editor().processor().requestQuit();
        m_window.dialogue().end();
    }

    Workbench& m_window;
    QTimer m_tick;
    QElapsedTimer m_quiet;
    std::deque<Waiting> m_steps;
    bool m_isBeginning = false;
    int m_depth = 0;  ///< steps that have not ended
};

}  // namespace korvex::test
