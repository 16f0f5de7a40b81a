// Message boxes.
#pragma once

#include <QDialog>
#include <QString>

#include <vector>

class QPushButton;

namespace korvex {

/// What a message box is to show.
struct BoxRequest {
    QString text;
    QString caption;
    unsigned type = 0;  ///< HxMessageBoxType
};

/// A message with its buttons, which end it with their HxDialogResult. Its object name is "MessageBox", those
/// of its buttons are "IDOK", "IDCANCEL", "IDYES", "IDNO", "IDRETRY".
class MessageBox : public QDialog {
    Q_OBJECT
public:
    MessageBox(QWidget* parent, const BoxRequest& request);

    /// "[Yes/No] <Yes>:"
    QString choices() const;
    /// Caption and text before that.
    QString question() const;
    /// The button that an answer means: its word, the beginning of it, or what is written on it; the default
    /// one for an empty answer. Null when none or more than one fits.
    QPushButton* buttonFor(const QString& answer) const;
    /// The word of the button whose result Esc and the close button give.
    QString escapeWord() const;
    void reject() override { done(m_escapeResult); }

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    struct Choice {
        QString word;  ///< English, for scripts
        QPushButton* button = nullptr;
    };

    bool addIcon();
    void addButtons();
    QString wordOf(const QPushButton* button) const;

    BoxRequest m_request;
    std::vector<Choice> m_choices;
    QPushButton* m_default = nullptr;
    int m_escapeResult = 0;
};

}  // namespace korvex
