// The editor of the process: its command line, its input, its commands, its documents.
#pragma once

#include "host/editor/ask.h"
#include "host/editor/console.h"
#include "host/editor/input.h"

#include <functional>

namespace korvex {

class CommandProcessor;
class CommandStack;
class DocumentManager;
class UserDialogs;

/// All that one host has once.
class Editor {
public:
    Editor();
    ~Editor();
    Editor(const Editor&) = delete;
    Editor& operator=(const Editor&) = delete;

    Console& console() { return m_console; }
    Input& input() { return m_input; }
    CommandStack& commands() { return *m_commands; }
    CommandProcessor& processor() { return *m_processor; }
    DocumentManager& documents() { return *m_documents; }

    /// The window's dialogs, null for none. They belong to the window.
    void setDialogs(UserDialogs* dialogs) { m_dialogs = dialogs; }
    /// Those to use for the next question; null when the command line is to ask: there is no window, or a
    /// script answers.
    UserDialogs* dialogs() { return m_input.isInteractive() ? m_dialogs : nullptr; }

    /// Called before each question, a command's or the command prompt: lets palettes and timers have their
    /// turn.
    void setIdleHandler(std::function<void()> handler) { m_idle = std::move(handler); }
    void idle() {
        if (m_idle) {
            m_idle();
        }
    }

    /// A failure, told with the place of the script that asked for it.
    void failure(const std::wstring& text) { m_console.failure(text, m_input.place()); }

    InitGet takeInitGet();
    void setInitGet(InitGet init) { m_initGet = std::move(init); }
    /// The keyword or arbitrary input of the last SDK input function.
    std::optional<std::wstring> lastInput;
    int errorNumber = 0;    ///< ERRNO
    HxGePoint3d lastPoint;  ///< LASTPOINT
    /// The last question was given up.
    bool cancelled = false;

private:
    Console m_console;
    Input m_input{m_console};
    UserDialogs* m_dialogs = nullptr;
    std::function<void()> m_idle;
    InitGet m_initGet;
    std::unique_ptr<CommandStack> m_commands;
    std::unique_ptr<DocumentManager> m_documents;
    std::unique_ptr<CommandProcessor> m_processor;
};

/// The one editor; made when first asked for, with the host's own commands.
Editor& editor();

}  // namespace korvex
