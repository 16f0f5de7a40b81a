// The line that answers are typed into.
#pragma once

#include "host/editor/input_source.h"

#include <QLineEdit>
#include <QPointer>

namespace korvex {

class CompletionList;

/// Ends answers as a command line does: by Enter, and by Space where the prompt takes words. Remembers what
/// was entered, completes names.
class CommandEdit : public QLineEdit {
    Q_OBJECT
public:
    explicit CommandEdit(QWidget* parent = nullptr);

    /// The prompt that waits; null for none.
    void setRequest(const InputRequest* request);
    /// Gives it a key that was pressed elsewhere in the window.
    void takeKey(const QKeyEvent& event);

Q_SIGNALS:
    /// An answer, as typed; empty for Enter alone.
    void entered(const QString& text);
    /// Several lines were pasted.
    void linesPasted(const QString& text);
    /// Esc, with what was typed dropped.
    void cancelled();
    /// F2.
    void enlargeAsked();
    /// Page up (-1) and page down (1), for the history pane.
    void pageTurned(int by);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    bool isAnswerEnd(const QKeyEvent& event) const;
    bool isChoosing() const;
    void enter();
    void escape();
    void arrow(int by);
    bool complete();
    void offer();
    void recall(int by);
    void takeLines(const QString& text);

    InputRequest m_request;
    bool m_hasRequest = false;
    QStringList m_history;
    int m_historyAt = 0;  ///< the entry shown; the size when none is
    QString m_draft;      ///< what was typed before going back in the history
    CompletionList* m_list;
};

}  // namespace korvex
