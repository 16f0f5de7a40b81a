// Keys of the command line.
#include "host/ui/workbench/command_edit.h"

#include "host/ui/workbench/completion_list.h"

#include <QKeyEvent>

#include <algorithm>

namespace korvex {

namespace {

constexpr int kMostRemembered = 200;
constexpr int kLeastOffered = 2;

}  // namespace

CommandEdit::CommandEdit(QWidget* parent) : QLineEdit(parent), m_list(new CompletionList(this)) {
    setFrame(false);
    connect(this, &QLineEdit::textChanged, this, &CommandEdit::takeLines);
    connect(this, &QLineEdit::textEdited, this, &CommandEdit::offer);
    connect(m_list, &CompletionList::clickedWord, this, [this](const QString& word) {
        setText(word);
        enter();
    });
}

void CommandEdit::setRequest(const InputRequest* request) {
    m_hasRequest = request != nullptr;
    if (request) {
        m_request = *request;
    }
    m_list->hide();
}

bool CommandEdit::isChoosing() const { return m_list->isVisible(); }

bool CommandEdit::isAnswerEnd(const QKeyEvent& event) const {
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter: return true;
    case Qt::Key_Space:
        return m_hasRequest && m_request.end == AnswerEnd::blank && event.modifiers() == Qt::NoModifier;
    default: return false;
    }
}

/// Shortcuts of the window that a line would take for itself go on when there is nothing to edit.
bool CommandEdit::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride && text().isEmpty()) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->matches(QKeySequence::Undo) || key->matches(QKeySequence::Redo) ||
            key->matches(QKeySequence::SelectAll) || key->matches(QKeySequence::Delete)) {
            event->ignore();
            return false;
        }
    }
    if (event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Tab && key->modifiers() == Qt::NoModifier && complete()) {
            return true;
        }
    }
    return QLineEdit::event(event);
}

void CommandEdit::keyPressEvent(QKeyEvent* event) {
    if (isAnswerEnd(*event)) {
        enter();
        return;
    }
    switch (event->key()) {
    case Qt::Key_Escape: escape(); return;
    case Qt::Key_Up: arrow(-1); return;
    case Qt::Key_Down: arrow(1); return;
    case Qt::Key_PageUp: Q_EMIT pageTurned(-1); return;
    case Qt::Key_PageDown: Q_EMIT pageTurned(1); return;
    case Qt::Key_F2: Q_EMIT enlargeAsked(); return;
    default: QLineEdit::keyPressEvent(event);
    }
}

void CommandEdit::focusOutEvent(QFocusEvent* event) {
    m_list->hide();
    QLineEdit::focusOutEvent(event);
}

void CommandEdit::takeKey(const QKeyEvent& event) {
    setFocus(Qt::OtherFocusReason);
    QKeyEvent press(event.type(), event.key(), event.modifiers(), event.text(), event.isAutoRepeat());
    QCoreApplication::sendEvent(this, &press);
}

void CommandEdit::enter() {
    const QString word = m_list->chosen();
    const QString answer = word.isEmpty() ? text() : word;
    if (!answer.isEmpty() && (m_history.isEmpty() || m_history.last() != answer)) {
        m_history << answer;
        while (m_history.size() > kMostRemembered) {
            m_history.removeFirst();
        }
    }
    m_historyAt = m_history.size();
    m_draft.clear();
    m_list->hide();
    clear();
    Q_EMIT entered(answer);
}

void CommandEdit::escape() {
    if (isChoosing()) {
        m_list->hide();
        return;
    }
    m_historyAt = m_history.size();
    clear();
    Q_EMIT cancelled();
}

void CommandEdit::arrow(int by) {
    if (isChoosing() && (by > 0 || !m_list->chosen().isEmpty())) {
        m_list->step(by);
        return;
    }
    m_list->hide();
    recall(by);
}

void CommandEdit::recall(int by) {
    const int at = std::min(std::max(m_historyAt + by, 0), m_history.size());
    if (at == m_historyAt) {
        return;
    }
    if (m_historyAt == m_history.size()) {
        m_draft = text();
    }
    m_historyAt = at;
    setText(at == m_history.size() ? m_draft : m_history[at]);
}

/// Tab. False when there is nothing to complete, so that it moves the focus.
bool CommandEdit::complete() {
    if (!m_hasRequest || (text().isEmpty() && m_request.wants == InputRequest::Wants::command)) {
        return false;
    }
    const std::vector<Completion> found = completionsOf(text(), m_request);
    const QString common = commonBeginning(found);
    if (common.size() > text().size()) {
        setText(common);
        m_list->offer(found.size() > 1 ? found : std::vector<Completion>());
    } else if (isChoosing()) {
        m_list->step(1);
    } else if (found.size() > 1) {
        m_list->offer(found);
    }
    return !found.empty() || !text().isEmpty();
}

/// While the user types a name.
void CommandEdit::offer() {
    const bool isName =
        m_hasRequest && (m_request.wants == InputRequest::Wants::command || text().startsWith('\''));
    if (isName && text().size() >= kLeastOffered) {
        m_list->offer(completionsOf(text(), m_request));
    } else {
        m_list->hide();
    }
}

void CommandEdit::takeLines(const QString& text) {
    if (!text.contains('\n') && !text.contains('\r') && !text.contains(QChar::LineSeparator) &&
        !text.contains(QChar::ParagraphSeparator)) {
        return;
    }
    QString lines = text;
    lines.replace(QChar::LineSeparator, '\n').replace(QChar::ParagraphSeparator, '\n');
    clear();
    m_list->hide();
    Q_EMIT linesPasted(lines.endsWith('\n') ? lines : lines + '\n');
}

}  // namespace korvex
