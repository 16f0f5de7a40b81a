// Puts history pane, prompt and edit line together.
#include "host/ui/workbench/command_line.h"

#include "host/ui/workbench/command_edit.h"
#include "host/ui/workbench/dialogue.h"
#include "host/ui/workbench/history_pane.h"
#include "host/ui/workbench/prompt_text.h"

#include <QFocusEvent>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace korvex {

namespace {

constexpr int kCompactLines = 3;
constexpr int kMargin = 4;
constexpr int kLeastWidth = 200;
constexpr double kMostPrompt = 0.7;  ///< of the width

/// Comes to a keyword at once when it is reached by Tab.
class PromptLabel : public QLabel {
protected:
    void focusInEvent(QFocusEvent* event) override {
        QLabel::focusInEvent(event);
        if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason) {
            QLabel::focusNextPrevChild(event->reason() == Qt::TabFocusReason);
        }
    }
};

QLabel* makePrompt() {
    auto* prompt = new PromptLabel;
    prompt->setObjectName("CommandPrompt");
    prompt->setAccessibleName(QObject::tr("Prompt"));
    prompt->setTextFormat(Qt::RichText);
    prompt->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    prompt->setFocusPolicy(Qt::TabFocus);
    return prompt;
}

}  // namespace

CommandLine::CommandLine(Dialogue& dialogue, QWidget* parent)
    : QWidget(parent), m_dialogue(dialogue), m_history(new HistoryPane), m_row(new QFrame),
      m_prompt(makePrompt()), m_edit(nullptr) {
    setObjectName("CommandPanel");
    m_row->setFrameShape(QFrame::StyledPanel);
    m_row->setBackgroundRole(QPalette::Base);
    m_row->setAutoFillBackground(true);
    auto* row = new QHBoxLayout(m_row);
    row->setContentsMargins(kMargin, kMargin / 2, kMargin, kMargin / 2);
    row->addWidget(m_prompt);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_history, 1);
    layout->addWidget(m_row);
    m_edit = new CommandEdit(m_row);
    m_edit->setObjectName("CommandLine");
    m_edit->setAccessibleName(tr("Command line"));
    m_edit->setToolTip(
        tr("Type a command or an answer: Enter or Space ends it, Esc cancels, Tab completes, Up and "
           "Down bring earlier ones back"));
    row->addWidget(m_edit, 1, Qt::AlignBottom);
    setFocusProxy(m_edit);
    setTabOrder(m_prompt, m_edit);
    connect(m_edit, &CommandEdit::entered, &m_dialogue, qOverload<const QString&>(&Dialogue::answer));
    connect(m_edit, &CommandEdit::linesPasted, &m_dialogue, &Dialogue::type);
    connect(m_edit, &CommandEdit::cancelled, this, &CommandLine::cancel);
    connect(m_edit, &CommandEdit::enlargeAsked, this, &CommandLine::enlargeAsked);
    connect(m_edit, &CommandEdit::pageTurned, m_history, &HistoryPane::turnPage);
    connect(m_prompt, &QLabel::linkActivated, this, [this](const QString& link) {
        m_edit->setFocus(Qt::OtherFocusReason);
        m_dialogue.answer(linkedKeyword(link));
    });
    connect(&m_dialogue, &Dialogue::asked, this, &CommandLine::showRequest);
    showRequest();
}

QWidget* CommandLine::edit() const { return m_edit; }

void CommandLine::cancel() {
    if (!m_dialogue.isAsking()) {
        Q_EMIT cancelledIdle();
    }
    m_dialogue.cancel();
}

void CommandLine::takeKey(const QKeyEvent& event) { m_edit->takeKey(event); }

void CommandLine::showRequest() {
    const InputRequest* request = m_dialogue.request();
    m_edit->setRequest(request);
    m_prompt->setText(request ? promptHtml(*request) : QString());
    m_prompt->setToolTip(request ? promptHint(*request) : QString());
    fitPrompt();
}

/// A long prompt takes several lines, so that enough room is left to type.
void CommandLine::fitPrompt() {
    m_prompt->setWordWrap(false);
    const int most = static_cast<int>(kMostPrompt * width());
    const int wanted = m_prompt->text().isEmpty() ? 0 : m_prompt->sizeHint().width();
    m_prompt->setWordWrap(wanted > most);
    m_prompt->setFixedWidth(std::min(wanted, std::max(most, 0)));
    m_prompt->setFixedHeight(wanted > most ? m_prompt->heightForWidth(most) : m_edit->sizeHint().height());
    m_prompt->setVisible(wanted > 0);
}

void CommandLine::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    fitPrompt();
}

void CommandLine::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) {
        showRequest();  // links take their colour when the text is set
    }
}

QSize CommandLine::minimumSizeHint() const { return {kLeastWidth, QWidget::minimumSizeHint().height()}; }

int CommandLine::compactHeight() const {
    return m_row->sizeHint().height() + m_history->heightOf(kCompactLines);
}

void CommandLine::append(const QString& text) { m_history->append(text); }

}  // namespace korvex
