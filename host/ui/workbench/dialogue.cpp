// Waits for answers in nested event loops.
#include "host/ui/workbench/dialogue.h"

#include "host/editor/command_processor.h"
#include "host/editor/command_stack.h"
#include "host/editor/editor.h"

#include <QEventLoop>
#include <QPointer>

namespace korvex {

namespace {

constexpr int kPatience = 1000;

/// The command that a text begins with may run inside of another one.
bool runsInside(const QString& text) { return text.startsWith('\''); }

void pushLines(const QString& text) {
    editor().input().push(std::make_unique<ScriptSource>(text.toStdWString(), ScriptOptions()));
}

}  // namespace

struct Dialogue::Wait {
    explicit Wait(const InputRequest& asked) : request(asked) {}
    const InputRequest& request;
    Token token;
    bool answered = false;
    QEventLoop loop;
};

Dialogue::~Dialogue() { end(); }

bool Dialogue::wait(const InputRequest& request, Token& token) {
    if (m_ended) {
        return false;
    }
    if (isUnwanted()) {
        if (++m_cancelled > kPatience) {
            throw InputExhausted();
        }
        token.cancels = true;
        return true;
    }
    if (!m_ahead.isEmpty()) {
        pushLines(m_ahead);
        m_ahead.clear();
        token.interrupted = true;
        return true;
    }
    const QPointer<Dialogue> self(this);
    Wait wait(request);
    m_waits.push_back(&wait);
    Q_EMIT asked();
    if (!wait.answered) {
        wait.loop.exec();
    }
    if (!self) {
        return false;
    }
    m_waits.pop_back();
    Q_EMIT asked();
    token = wait.token;
    return wait.answered;
}

bool Dialogue::isUnwanted() const {
    const CommandProcessor& processor = editor().processor();
    return processor.isRunning() && processor.commandCount() == m_unwanted;
}

Dialogue::Wait* Dialogue::open() const {
    return m_waits.empty() || m_waits.back()->answered ? nullptr : m_waits.back();
}

const InputRequest* Dialogue::request() const {
    const Wait* wait = open();
    return wait ? &wait->request : nullptr;
}

bool Dialogue::isAsking() const {
    const InputRequest* waiting = request();
    return waiting && waiting->wants != InputRequest::Wants::command;
}

void Dialogue::answerWith(const Token& token) {
    if (Wait* wait = open()) {
        wait->token = token;
        wait->answered = true;
        wait->loop.quit();
    }
}

void Dialogue::interrupt() {
    Token token;
    token.interrupted = true;
    for (Wait* wait : m_waits) {
        if (!wait->answered) {
            wait->token = token;
            wait->answered = true;
            wait->loop.quit();
        }
    }
}

void Dialogue::end() {
    m_ended = true;
    for (Wait* wait : m_waits) {
        wait->loop.quit();
    }
}

void Dialogue::answer(const QString& text) {
    const InputRequest* waiting = request();
    const bool isOneAnswer =
        waiting && !text.contains('\n') &&
        (waiting->end == AnswerEnd::line || (!text.contains(' ') && !text.contains('\t')));
    if (!isOneAnswer) {
        type(text + '\n');
        return;
    }
    Token token;
    token.text = text.toStdWString();
    answerWith(token);
}

void Dialogue::answer(const HxGePoint3d& point) {
    Token token;
    token.point = point;
    answerWith(token);
}

void Dialogue::cancel() {
    if (!open()) {
        m_ahead.clear();
        editor().input().stopScripts();
        return;
    }
    Token token;
    token.cancels = true;
    answerWith(token);
}

void Dialogue::type(const QString& text) {
    if (open()) {
        pushLines(text);
    } else {
        m_ahead += text;
    }
}

void Dialogue::run(const QString& text, HxApDocument* document) {
    ScriptOptions options;
    options.document = document;
    const CommandProcessor& processor = editor().processor();
    if (!runsInside(text) && processor.isRunning()) {
        m_unwanted = processor.commandCount();
        m_cancelled = 0;
        editor().input().stopScripts();
    } else if (!runsInside(text) && isAsking()) {
        cancel();  // a palette asks
    }
    editor().input().send(text.toStdWString(), options);
}

}  // namespace korvex
