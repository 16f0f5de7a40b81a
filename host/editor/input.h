// The answers of all sources in one line: who answers next, strings that wait for the host to be idle.
#pragma once

#include "host/editor/console.h"
#include "host/editor/input_source.h"
#include "host/editor/script_source.h"

#include <deque>
#include <stdexcept>

namespace korvex {

/// Thrown out of a command that keeps asking although its input was cancelled over and over.
struct InputExhausted : std::runtime_error {
    InputExhausted() : std::runtime_error("the command keeps asking after its input had ended") {}
};

/// Hands out answers: first those of what was pushed last, when that is dry those of what lies below it.
/// Belongs to the editor.
class Input {
public:
    explicit Input(Console& console) : m_console(console) {}

    /// Answers that come before all others.
    void push(std::unique_ptr<InputSource> source);
    /// Answers that come after all others but the user's own.
    void append(std::unique_ptr<InputSource> source);
    /// Gives back text that was read too far; it comes next.
    void unread(const std::wstring& text);
    void clear();

    /// A string to be run as if typed, when no command is running; one that begins with "'" already at the
    /// next prompt.
    void send(std::wstring text, ScriptOptions options);
    /// Lets the oldest sent string come next; `transparentOnly` only if it begins with "'". False when there
    /// is none.
    bool takeSent(bool transparentOnly);
    /// Drops what is left of the string that was sent and answers now: its command cannot run, and its
    /// answers are no commands.
    void dropSent();
    /// Forgets what was sent to a document that is going.
    void forget(const HxApDocument* document);

    /// Drops all scripts before the user's own source; without one nothing. What was sent stays.
    void stopScripts();

    /// The next answer with its prompt shown; false when all sources are dry. Throws InputExhausted when that
    /// was so a thousand times in a row. May give Token::interrupted: other input came while a source waited.
    bool next(const InputRequest& request, Token& token);
    /// No answer is left; waiting strings count.
    bool isDry();
    bool isInteractive();
    /// The last call of next found nothing.
    bool ranDry() const { return m_dryCalls > 0; }
    /// The source that answers next; null when there is none.
    const InputSource* source();
    /// Where the last answer came from.
    const std::wstring& place() const { return m_place; }

private:
    void dropDry();
    void drop(const InputSource* source);
    void interruptWaiting();

    Console& m_console;
    std::deque<std::shared_ptr<InputSource>> m_sources;  ///< the next one in front; kept while it waits
    std::deque<std::pair<std::wstring, ScriptOptions>> m_sent;
    std::wstring m_place;
    int m_dryCalls = 0;
};

}  // namespace korvex
