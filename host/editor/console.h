// The command line's output: messages, prompts with their answers, failures.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace korvex {

/// Writes the dialogue as a command line shows it. Messages and prompts may begin with a line end, as is the
/// custom; one at the start of a line is dropped, so that no empty lines come of it.
class Console {
public:
    using Writer = std::function<void(std::wstring_view)>;

    /// Where the dialogue goes; none: nowhere.
    void setWriter(Writer writer) { m_writer = std::move(writer); }
    /// A window that shows the dialogue as well; it begins with what was shown so far.
    void setPane(Writer pane);
    /// Who is told of failures besides; the text is one line with its place.
    void setFailureWriter(Writer writer) { m_failureWriter = std::move(writer); }
    /// Asked before anything but a failure is shown.
    void setQuiet(std::function<bool()> isQuiet) { m_isQuiet = std::move(isQuiet); }
    bool isQuiet() const { return m_isQuiet && m_isQuiet(); }

    /// A piece of text, as it is.
    void print(std::wstring_view text);
    /// A message on lines of its own.
    void message(std::wstring_view text);
    /// A prompt on a new line, with a blank behind it, and the answer to it.
    void prompt(std::wstring_view text);
    void answer(std::wstring_view text);
    /// Something that the user asked for was not done: a message that shows also while the command line is
    /// quiet. `place` is where the script stands, or empty.
    void failure(std::wstring_view text, std::wstring_view place);
    std::size_t failures() const { return m_failures; }
    void resetFailures() { m_failures = 0; }

private:
    void write(std::wstring_view text);
    void freshLine();

    Writer m_writer;
    Writer m_pane;
    std::wstring m_shown;  ///< the last of it, for a pane that comes later
    Writer m_failureWriter;
    std::function<bool()> m_isQuiet;
    bool m_atLineStart = true;
    std::size_t m_failures = 0;
};

}  // namespace korvex
