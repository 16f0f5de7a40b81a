// Reads command names, runs the commands in their document, keeps each one an undo step.
#pragma once

#include "host/editor/command_stack.h"
#include "host/editor/input_source.h"

#include <functional>
#include <string>
#include <vector>

namespace korvex {

class Document;
class Editor;

/// Runs commands one after the other, transparent ones inside of others. Belongs to the editor.
class CommandProcessor {
public:
    explicit CommandProcessor(Editor& editor) : m_editor(editor) {}

    /// Asks for a command and runs it. False when no input is left or the host is to end.
    bool runNext();
    void runAll();

    /// Runs what an answer to a prompt asks for, when that is a transparent command: "'NAME". False when it
    /// is an ordinary answer. A command that is none of the transparent ones is refused with a message.
    bool runTransparent(const std::wstring& answer, AnswerEnd end);

    /// The running command reports that it could not do what it should: a message, and it counts as failed.
    void fail(const std::wstring& message);

    /// Names of the running commands, parted by "'"; empty when there is none.
    std::wstring runningNames() const;
    bool isRunning() const { return !m_running.empty(); }
    /// A command runs, and does not wait for an answer.
    bool isWorking() const { return m_running.size() > m_waiting; }
    /// The running command waits for an answer as long as this lives.
    class Waiting {
    public:
        explicit Waiting(CommandProcessor& processor)
            : m_processor(processor), m_before(processor.m_waiting) {
            processor.m_waiting = processor.m_running.size();
        }
        ~Waiting() { m_processor.m_waiting = m_before; }
        Waiting(const Waiting&) = delete;
        Waiting& operator=(const Waiting&) = delete;

    private:
        CommandProcessor& m_processor;
        std::size_t m_before;
    };
    /// Commands begun at the command prompt so far: tells whether it is still the same one that runs.
    std::size_t commandCount() const { return m_count; }
    /// What Enter at the command prompt repeats; empty at first.
    const std::wstring& lastCommand() const { return m_last; }
    bool isRunningTransparent() const { return m_running.size() > 1; }

    /// The host ends after the running command.
    void requestQuit() { m_quit = true; }
    bool isQuitting() const { return m_quit; }
    void reset();

private:
    struct Running {
        std::wstring name;
        Document* document;
        bool failed = false;
    };
    enum class Outcome { ended, cancelled, failed };

    void runTyped(const std::wstring& typed);
    void execute(const Command& command, const std::function<void()>& body);
    Outcome perform(const std::function<void()>& body);
    void tellOutcome(Outcome outcome, const wchar_t* name, const Document* began);
    bool closeLeftovers(Document& document, int transactionsBefore);
    void followSource();
    void unknown(const std::wstring& typed);

    Editor& m_editor;
    std::vector<Running> m_running;
    std::wstring m_last;
    std::size_t m_count = 0;
    std::size_t m_waiting = 0;  ///< how many commands ran when the innermost question was put
    bool m_quit = false;
};

}  // namespace korvex
