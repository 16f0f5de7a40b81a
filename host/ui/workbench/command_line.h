// The command line: what was said so far, the prompt, the line to type into.
#pragma once

#include <QPointer>
#include <QWidget>

class QFrame;
class QLabel;

namespace korvex {

class CommandEdit;
class Dialogue;
class HistoryPane;

class CommandLine : public QWidget {
    Q_OBJECT
public:
    explicit CommandLine(Dialogue& dialogue, QWidget* parent = nullptr);

    /// A piece of the dialogue as the console writes it.
    void append(const QString& text);
    /// A key that was pressed elsewhere in the window.
    void takeKey(const QKeyEvent& event);
    QWidget* edit() const;
    /// Height with a few lines of history.
    int compactHeight() const;
    /// Long prompts wrap: they keep no window wide.
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void enlargeAsked();
    /// Esc with no prompt of a command to give up.
    void cancelledIdle();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void showRequest();
    void fitPrompt();
    void cancel();

    Dialogue& m_dialogue;
    HistoryPane* m_history;
    QFrame* m_row;
    QLabel* m_prompt;
    CommandEdit* m_edit;
};

}  // namespace korvex
