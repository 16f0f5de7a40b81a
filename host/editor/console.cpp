// Keeps track of line starts for the dialogue.
#include "host/editor/console.h"

namespace korvex {

namespace {

constexpr std::size_t kKept = 1U << 16U;

}  // namespace

void Console::setPane(Writer pane) {
    m_pane = std::move(pane);
    if (m_pane && !m_shown.empty()) {
        m_pane(m_shown);
    }
}

void Console::write(std::wstring_view text) {
    if (m_atLineStart && !text.empty() && text.front() == L'\n') {
        text.remove_prefix(1);
    }
    if (text.empty()) {
        return;
    }
    m_atLineStart = text.back() == L'\n';
    m_shown += text;
    if (m_shown.size() > 2 * kKept) {
        m_shown.erase(0, m_shown.size() - kKept);
    }
    if (m_writer) {
        m_writer(text);
    }
    if (m_pane) {
        m_pane(text);
    }
}

void Console::freshLine() {
    if (!m_atLineStart) {
        write(L"\n");
    }
}

void Console::print(std::wstring_view text) {
    if (!isQuiet()) {
        write(text);
    }
}

void Console::message(std::wstring_view text) {
    if (!isQuiet()) {
        freshLine();
        write(text);
        freshLine();
    }
}

void Console::prompt(std::wstring_view text) {
    if (isQuiet() || text.empty()) {
        return;
    }
    freshLine();
    write(text);
    if (text.back() != L' ' && text.back() != L'\n') {
        write(L" ");
    }
}

void Console::answer(std::wstring_view text) {
    if (!isQuiet()) {
        write(std::wstring(text) + L"\n");
    }
}

void Console::failure(std::wstring_view text, std::wstring_view place) {
    ++m_failures;
    freshLine();
    write(text);
    freshLine();
    if (m_failureWriter) {
        m_failureWriter(place.empty() ? std::wstring(text)
                                      : std::wstring(place) + L": " + std::wstring(text));
    }
}

}  // namespace korvex
