// Feeds the lines of scripts to windows that wait.
#include "host/ui/script/script_driver.h"

#include "host/base/text.h"
#include "host/editor/command_processor.h"
#include "host/editor/editor.h"
#include "host/ui/dialogs/message_box.h"
#include "host/ui/script/actions.h"
#include "host/ui/script/widget_names.h"
#include "sdk/hxdialog.h"
#include "sdk/hxed.h"

#include <QApplication>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QThread>
#include <QTimerEvent>

#include <vector>

namespace korvex {

namespace {

/// How long until it is looked again whether work that keeps the event loop busy is done, in milliseconds.
constexpr int kRetryDelay = 20;

int loopLevel() { return QThread::currentThread()->loopLevel(); }

/// Calls a function once when the event loop has nothing else to do. A timer of its own for each, since one
/// that is being served does not fire in the loops inside of that.
class IdleCall : public QObject {
public:
    IdleCall(int delay, std::function<void()> function) : m_function(std::move(function)) {
        startTimer(delay);
    }

protected:
    void timerEvent(QTimerEvent* event) override {
        killTimer(event->timerId());
        deleteLater();
        m_function();
    }

private:
    std::function<void()> m_function;
};

/// Who answers a window that waits.
enum class Answerer { user, script, nobody };

class ScriptDriver : public QObject, public HxEditorReactor {
public:
    ScriptDriver() {
        qApp->installEventFilter(this);
        hxedEditor()->addReactor(this);
    }
    void setUnattended(bool unattended) { m_isUnattended = unattended; }

    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() == QEvent::Show && object->isWidgetType() &&
            waits(*static_cast<const QWidget*>(object))) {
            schedule(0);
        }
        return false;
    }

    void commandWillStart(const wchar_t* /*name*/) override { m_busy.push_back(loopLevel()); }
    void commandEnded(const wchar_t* /*name*/) override { commandDone(); }
    void commandCancelled(const wchar_t* /*name*/) override { commandDone(); }
    void commandFailed(const wchar_t* /*name*/) override { commandDone(); }

private:
    static bool waits(const QWidget& widget) {
        return widget.isWindow() && (widget.isModal() || qobject_cast<const QMenu*>(&widget));
    }
    static QWidget* waitingWindow() {
        auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        return menu ? menu : QApplication::activeModalWidget();
    }

    void commandDone() {
        if (!m_busy.empty()) {
            m_busy.pop_back();
        }
    }

    Answerer answerer() const {
        const InputSource* const source = editor().input().source();
        if (source) {
            return source->isInteractive() ? Answerer::user : Answerer::script;
        }
        return m_isUnattended || editor().processor().isRunning() ? Answerer::nobody : Answerer::user;
    }

    void schedule(int delay) {
        if (!m_isScheduled) {
            m_isScheduled = true;
            new IdleCall(delay, [this] {
                m_isScheduled = false;
                turn();
            });
        }
    }

    void turn() {
        QWidget* const window = waitingWindow();
        const Answerer who = answerer();
        if (!window || who == Answerer::user) {
            return;
        }
        // A loop inside of the one in which the running command or action began: somebody waits in it.
        // Otherwise the action still works, and only lets the window be painted.
        const int busy = m_busy.empty() ? 0 : m_busy.back();
        if (loopLevel() <= busy) {
            schedule(kRetryDelay);
            return;
        }
        m_busy.push_back(loopLevel());
        if (who == Answerer::script) {
            takeLine(*window);
        } else {
            giveUp(*window);
        }
        commandDone();
        if (waitingWindow()) {
            schedule(0);
        }
    }

    void takeLine(QWidget& window) {
        auto* const box = qobject_cast<MessageBox*>(&window);
        InputRequest request;
        request.end = AnswerEnd::line;
        request.wants = InputRequest::Wants::text;
        request.prompt = promptOf(window, box);
        Token token;
        if (!editor().input().next(request, token)) {
            return;  // the next turn sees that nobody answers
        }
        const QPointer<QWidget> open(&window);
        m_last = &window;
        const ActionResult result = act(window, box, token);
        if (!result.trouble.empty()) {
            editor().processor().fail(result.trouble);
        }
    }

    static std::wstring called(const QWidget& window) {
        if (qobject_cast<const QMenu*>(&window)) {
            return L"a menu";
        }
        return L"the dialog \"" + toWide(windowLabel(window)) + L"\"";
    }

    /// A message is shown in full once.
    std::wstring promptOf(const QWidget& window, const MessageBox* box) const {
        if (box) {
            return toWide(m_last == &window ? box->choices() : box->question());
        }
        return toWide(windowLabel(window) + ":");
    }

    static ActionResult act(QWidget& window, MessageBox* box, const Token& token) {
        if (token.cancels) {
            closeAsByEsc(window);
            return {};
        }
        ActionResult result = performAction(token.text);
        if (result.isAction) {
            return result;
        }
        if (box) {
            return answerBox(*box, token.text);
        }
        if (toQString(token.text).trimmed().isEmpty()) {
            return {};
        }
        result.trouble = L"\"" + token.text + L"\" is nothing that can be done while " + called(window) +
                         L" is open. Use one of " + actionNames() + L".";
        return result;
    }

    static ActionResult answerBox(MessageBox& box, const std::wstring& answer) {
        QPushButton* const button = box.buttonFor(toQString(answer));
        if (!button) {
            return {true, L"\"" + answer + L"\" does not tell which button is meant: " +
                              toWide(box.choices()) + L" Use its name, or " + actionNames() + L"."};
        }
        button->click();
        return {};
    }

    static void closeAsByEsc(QWidget& window) {
        const QPointer<QWidget> open(&window);
        if (auto* const dialog = qobject_cast<QDialog*>(&window)) {
            dialog->reject();
        } else {
            window.close();
        }
    }

    void giveUp(QWidget& window) {
        auto* const box = qobject_cast<MessageBox*>(&window);
        const QPointer<QWidget> open(&window);
        if (box && m_last != &window) {
            editor().console().message(toWide(box->question()));
        }
        editor().processor().fail(
            box ? L"The script ended before the message was answered: " + toWide(box->escapeWord()) +
                      L" is taken, as by Esc. Add a line with the answer."
                : L"The script ended while " + called(window) +
                      L" was open: it is closed as by Esc. Add lines that work in it and close it.");
        closeAsByEsc(window);
        if (open && open->isVisible()) {  // it refuses; nobody is there to see why
            if (auto* const dialog = qobject_cast<QDialog*>(open.data())) {
                dialog->QDialog::done(QDialog::Rejected);
            }
            open->hide();
        }
    }

    bool m_isScheduled = false;
    bool m_isUnattended = false;
    /// The event-loop levels in which the running commands and actions began, the innermost last.
    std::vector<int> m_busy;
    QPointer<QWidget> m_last;  ///< the window that the last line acted on
};

ScriptDriver& driver() {
    static auto& only = *new ScriptDriver;
    return only;
}

}  // namespace

void watchModalLoops() { driver(); }

void setUnattended(bool unattended) { driver().setUnattended(unattended); }

}  // namespace korvex
