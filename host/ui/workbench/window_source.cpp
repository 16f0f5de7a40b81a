// Takes the user's answers and shows them in the dialogue.
#include "host/ui/workbench/window_source.h"

#include "host/editor/command_processor.h"
#include "host/editor/editor.h"
#include "host/editor/number_text.h"

namespace korvex {

namespace {

/// The answer as the dialogue shows it.
std::wstring shownText(const InputRequest& request, const Token& token) {
    if (token.cancels) {
        return L"*Cancel*";
    }
    if (token.point) {
        return realText(token.point->x) + L"," + realText(token.point->y);
    }
    const bool repeats = token.text.empty() && request.wants == InputRequest::Wants::command;
    return repeats ? editor().processor().lastCommand() : token.text;
}

}  // namespace

bool WindowSource::next(const InputRequest& request, Token& token) {
    if (!m_dialogue || !m_dialogue->wait(request, token)) {
        return false;
    }
    if (!token.interrupted) {
        editor().console().prompt(request.prompt);
        editor().console().answer(shownText(request, token));
    }
    return true;
}

void WindowSource::interrupt() {
    if (m_dialogue) {
        m_dialogue->interrupt();
    }
}

}  // namespace korvex
