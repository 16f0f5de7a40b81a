// The prompts that wait for the user, and all ways to answer them: command line, mouse, menus.
#pragma once

#include "host/editor/input_source.h"

#include <QObject>
#include <QString>

#include <vector>

class QEventLoop;

namespace korvex {

/// Prompts wait in nested event loops, the innermost is answered first. Nothing here throws but wait.
class Dialogue : public QObject {
    Q_OBJECT
public:
    explicit Dialogue(QObject* parent = nullptr) : QObject(parent) {}
    ~Dialogue() override;

    /// Puts a prompt and waits for its answer. False when there will be none: the window is gone. Throws
    /// InputExhausted when a command goes on asking while everything is being cancelled.
    bool wait(const InputRequest& request, Token& token);
    /// Ends all waits without an answer, as Token::interrupted.
    void interrupt();
    /// Cancels all prompts and lets no others wait.
    void end();

    /// The prompt that waits; null when none does.
    const InputRequest* request() const;
    /// A prompt of a command waits, and not the command prompt.
    bool isAsking() const;

    /// Answers the waiting prompt; without one the text is kept for the next.
    void answer(const QString& text);
    void answer(const HxGePoint3d& point);
    /// Esc: gives up the waiting prompt, and a script that runs.
    void cancel();
    /// Lines as a script would hold them, each ended by a line end; they come before all other input.
    void type(const QString& text);
    /// Runs a command, given with the answers to its first prompts and its ending blank or line end. One that
    /// begins with "'" runs inside of what runs now, before any other what runs now is cancelled. `document`
    /// (may be null) becomes the active one for it.
    void run(const QString& text, HxApDocument* document = nullptr);

Q_SIGNALS:
    /// Another prompt waits now, or none.
    void asked();

private:
    struct Wait;
    Wait* open() const;
    bool isUnwanted() const;
    void answerWith(const Token& token);

    std::vector<Wait*> m_waits;
    std::size_t m_unwanted =
        0;                ///< the command (CommandProcessor::commandCount) all of whose prompts are cancelled
    int m_cancelled = 0;  ///< how many of them were
    bool m_ended = false;
    QString m_ahead;  ///< lines typed while no prompt waits
};

}  // namespace korvex
