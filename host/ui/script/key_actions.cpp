// TYPE and PRESS: what a user does with the keyboard.
#include "host/ui/script/action_parts.h"
#include "host/ui/script/real_events.h"
#include "host/ui/script/widget_names.h"

#include <QAbstractButton>
#include <QKeySequence>
#include <QPointer>
#include <QWidget>

namespace korvex {

namespace {

constexpr int kButtonDelay = 500;  ///< in milliseconds, more than enough

struct KeyText {
    int key;
    const char* text;
};
constexpr KeyText kKeyTexts[] = {
    {Qt::Key_Return, "\r"},    {Qt::Key_Enter, "\r"},    {Qt::Key_Tab, "\t"},      {Qt::Key_Backtab, "\t"},
    {Qt::Key_Backspace, "\b"}, {Qt::Key_Escape, "\x1b"}, {Qt::Key_Delete, "\x7f"}, {Qt::Key_Space, " "},
};

/// What a key types; nothing together with Ctrl, Alt or Meta.
QString textOf(int key, Qt::KeyboardModifiers modifiers) {
    if (modifiers & ~(Qt::ShiftModifier | Qt::KeypadModifier)) {
        return {};
    }
    for (const KeyText& row : kKeyTexts) {
        if (row.key == key) {
            return row.text;
        }
    }
    if (key >= Qt::Key_Escape) {
        return {};
    }
    const QChar letter(key);
    return modifiers & Qt::ShiftModifier ? letter.toUpper() : letter.toLower();
}

/// The key that types a character.
int keyOf(const QString& character) {
    return character.size() == 1 ? character.at(0).toUpper().unicode() : int(Qt::Key_unknown);
}

/// A button that a mnemonic presses comes up again, and is clicked, a little later.
void waitForButtons() {
    letTimePass(kButtonDelay, [] {
        const QWidget* const window = topmostWindow();
        const auto buttons = window ? window->findChildren<QAbstractButton*>() : QList<QAbstractButton*>();
        return std::none_of(buttons.begin(), buttons.end(),
                            [](const QAbstractButton* button) { return button->isDown(); });
    });
}

/// A character that two code units make up stays whole.
QStringList charactersOf(const QString& text) {
    QStringList characters;
    for (int at = 0; at < text.size(); ++at) {
        const bool isPair = text.at(at).isHighSurrogate() && at + 1 < text.size();
        characters << text.mid(at, isPair ? 2 : 1);
        at += isPair ? 1 : 0;
    }
    return characters;
}

}  // namespace

QString typeAction(Words words) {
    QString trouble;
    const QPointer<QWidget> widget = usableControl(words, trouble);
    if (!widget) {
        return trouble;
    }
    focusOn(*widget);
    for (const QString& character : charactersOf(words.rest())) {
        if (widget) {
            const bool isUpper = character.at(0).isUpper();
            pressKey(*widget, keyOf(character), isUpper ? Qt::ShiftModifier : Qt::NoModifier, character);
        }
    }
    return {};
}

QString pressAction(Words words) {
    QString trouble;
    const QPointer<QWidget> widget = usableControl(words, trouble);
    if (!widget) {
        return trouble;
    }
    if (words.isEmpty()) {
        return "The keys are missing, for instance Enter, Ctrl+A, F2.";
    }
    focusOn(*widget);
    while (!words.isEmpty()) {
        const QString name = words.next().text;
        const QKeySequence sequence(name, QKeySequence::PortableText);
        const int combined = sequence.isEmpty() ? int(Qt::Key_unknown) : sequence[0];
        const int key = combined & ~static_cast<int>(Qt::KeyboardModifierMask);
        if (key == Qt::Key_unknown || key == 0) {
            return QString("There is no key \"%1\". Keys are called like Enter, Ctrl+A, F2, Del, Down.")
                .arg(name);
        }
        const Qt::KeyboardModifiers modifiers(combined & static_cast<int>(Qt::KeyboardModifierMask));
        if (!widget) {
            return QString("What had the keyboard is gone before the key %1.").arg(name);
        }
        pressKey(*widget, key, modifiers, textOf(key, modifiers));
        if (modifiers & Qt::AltModifier) {
            waitForButtons();
        }
    }
    return {};
}

}  // namespace korvex
