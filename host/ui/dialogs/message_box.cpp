// Builds message boxes and waits for their answers.
#include "host/ui/dialogs/message_box.h"

#include "host/base/library.h"
#include "host/ui/dialogs/code_in_use.h"
#include "host/ui/dialogs/dialog_parent.h"
#include "host/ui/dialogs/message_text.h"
#include "host/ui/script/script_driver.h"
#include "sdk/hxdialog.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QSvgWidget>

namespace korvex {

namespace {

constexpr unsigned kButtonBits = 0xF;
constexpr unsigned kIconBits = 0xF0;

struct ButtonRow {
    int result;
    const char* id;
    const char* word;
    QDialogButtonBox::StandardButton standard;
};
constexpr ButtonRow kButtons[] = {
    {IDOK, "IDOK", "OK", QDialogButtonBox::Ok},
    {IDCANCEL, "IDCANCEL", "Cancel", QDialogButtonBox::Cancel},
    {IDYES, "IDYES", "Yes", QDialogButtonBox::Yes},
    {IDNO, "IDNO", "No", QDialogButtonBox::No},
    {IDRETRY, "IDRETRY", "Retry", QDialogButtonBox::Retry},
};

const ButtonRow& rowOf(int result) {
    return *std::find_if(std::begin(kButtons), std::end(kButtons),
                         [result](const ButtonRow& row) { return row.result == result; });
}

std::vector<int> resultsOf(unsigned type) {
    switch (type & kButtonBits) {
    case MB_OKCANCEL: return {IDOK, IDCANCEL};
    case MB_YESNOCANCEL: return {IDYES, IDNO, IDCANCEL};
    case MB_YESNO: return {IDYES, IDNO};
    case MB_RETRYCANCEL: return {IDRETRY, IDCANCEL};
    default: return {IDOK};
    }
}

std::size_t defaultPosition(unsigned type) {
    return (type & MB_DEFBUTTON3) ? 2 : (type & MB_DEFBUTTON2) ? 1 : 0;
}

/// The picture's resource; empty for none.
QString iconOf(unsigned type) {
    switch (type & kIconBits) {
    case MB_ICONERROR: return ":/korvex/messages/error.svg";
    case MB_ICONQUESTION: return ":/korvex/messages/question.svg";
    case MB_ICONEXCLAMATION: return ":/korvex/messages/warning.svg";
    case MB_ICONINFORMATION: return ":/korvex/messages/information.svg";
    default: return {};
    }
}

QString plain(QString text) { return text.remove('&'); }

bool startsWith(const QString& word, const QString& start) {
    return word.startsWith(start, Qt::CaseInsensitive);
}

/// The caller's library counts as in use while the box is open.
int showBox(QWidget* parent, const BoxRequest& request, const link_map* caller) {
    watchModalLoops();
    const ModalUse use(caller, request.caption);
    MessageBox box(boxParent(parent), request);
    return box.exec();
}

}  // namespace

MessageBox::MessageBox(QWidget* parent, const BoxRequest& request) : QDialog(parent), m_request(request) {
    setObjectName("MessageBox");
    setWindowTitle(request.caption);
    // Neither help nor minimise and maximise buttons: whoever hides a question hides that the program waits.
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                   Qt::WindowCloseButtonHint);
    setModal(true);
    auto* const grid = new QGridLayout(this);
    const int gap = fontMetrics().height();
    grid->setContentsMargins(gap, gap, gap, gap * 3 / 4);
    grid->setHorizontalSpacing(gap);
    grid->setVerticalSpacing(gap);
    grid->setSizeConstraint(QLayout::SetFixedSize);
    auto* const text = new MessageText(request.text, this);
    text->setAccessibleName(request.text);
    const int textColumn = addIcon() ? 1 : 0;
    grid->addWidget(text, 0, textColumn, 1, 2 - textColumn, Qt::AlignLeft | Qt::AlignVCenter);
    addButtons();
}

bool MessageBox::addIcon() {
    const QString icon = iconOf(m_request.type);
    if (!icon.isEmpty()) {
        auto* const picture = new QSvgWidget(icon, this);
        const int size = fontMetrics().height() * 5 / 2;
        picture->setFixedSize(size, size);
        picture->setObjectName("MessageIcon");
        static_cast<QGridLayout*>(layout())->addWidget(picture, 0, 0, Qt::AlignTop);
    }
    return !icon.isEmpty();
}

void MessageBox::addButtons() {
    auto* const box = new QDialogButtonBox(this);
    const std::vector<int> results = resultsOf(m_request.type);
    for (const int result : results) {
        const ButtonRow& row = rowOf(result);
        QPushButton* const button = box->addButton(row.standard);
        button->setObjectName(row.id);
        button->setIcon({});
        connect(button, &QPushButton::clicked, this, [this, result] { done(result); });
        m_choices.push_back({row.word, button});
    }
    const bool cancels = std::find(results.begin(), results.end(), IDCANCEL) != results.end();
    m_escapeResult = cancels ? int(IDCANCEL) : results.back();
    m_default = m_choices[std::min(defaultPosition(m_request.type), m_choices.size() - 1)].button;
    m_default->setDefault(true);
    m_default->setFocus();
    static_cast<QGridLayout*>(layout())->addWidget(box, 1, 0, 1, 2);
}

QString MessageBox::wordOf(const QPushButton* button) const {
    for (const Choice& choice : m_choices) {
        if (choice.button == button) {
            return choice.word;
        }
    }
    return {};
}

QString MessageBox::escapeWord() const { return rowOf(m_escapeResult).word; }

QString MessageBox::choices() const {
    QStringList words;
    for (const Choice& choice : m_choices) {
        words << choice.word;
    }
    return QString("[%1] <%2>:").arg(words.join('/'), wordOf(m_default));
}

QString MessageBox::question() const {
    return QString("%1: %2 %3").arg(m_request.caption, m_request.text, choices());
}

QPushButton* MessageBox::buttonFor(const QString& answer) const {
    const QString wanted = answer.trimmed();
    QPushButton* found = wanted.isEmpty() ? m_default : nullptr;
    for (const Choice& choice : m_choices) {
        const bool fits = startsWith(choice.word, wanted) || startsWith(plain(choice.button->text()), wanted);
        if (!wanted.isEmpty() && fits) {
            if (found) {
                return nullptr;
            }
            found = choice.button;
        }
    }
    return found;
}

void MessageBox::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy)) {
        QApplication::clipboard()->setText(m_request.text);
        event->accept();
        return;
    }
    QDialog::keyPressEvent(event);
}

}  // namespace korvex

// Looks at where it returns to: it must stay a call of its own.
__attribute__((noinline)) int hxuiMessageBox(QWidget* parent, const wchar_t* text, const wchar_t* caption,
                                             unsigned type) {
    const korvex::BoxRequest request = {korvex::toQString(text),
                                        korvex::toQString(caption ? caption : hxProductName()), type};
    return korvex::showBox(parent, request, korvex::libraryAt(__builtin_return_address(0)));
}

const wchar_t* hxProductName() { return L"KORVEX"; }
