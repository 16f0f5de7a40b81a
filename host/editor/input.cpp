// Hands out the answers of the sources and shows them.
#include "host/editor/input.h"

#include <algorithm>

namespace korvex {

namespace {

constexpr int kPatience = 1000;

}  // namespace

void Input::push(std::unique_ptr<InputSource> source) { m_sources.push_front(std::move(source)); }

void Input::append(std::unique_ptr<InputSource> source) { m_sources.push_back(std::move(source)); }

void Input::unread(const std::wstring& text) {
    ScriptOptions options;
    options.echo = m_sources.empty() || m_sources.front()->echoes();
    options.document = m_sources.empty() ? nullptr : m_sources.front()->document();
    push(std::make_unique<ScriptSource>(text, options));
}

void Input::clear() {
    m_sources.clear();
    m_sent.clear();
    m_place.clear();
}

void Input::send(std::wstring text, ScriptOptions options) {
    options.closesLastLine = false;
    m_sent.emplace_back(std::move(text), std::move(options));
}

bool Input::takeSent(bool transparentOnly) {
    if (m_sent.empty() || (transparentOnly && m_sent.front().first.compare(0, 1, L"'") != 0)) {
        return false;
    }
    push(std::make_unique<ScriptSource>(std::move(m_sent.front().first), std::move(m_sent.front().second)));
    m_sent.pop_front();
    return true;
}

void Input::forget(const HxApDocument* document) {
    const auto isOf = [document](const auto& sent) { return sent.second.document == document; };
    m_sent.erase(std::remove_if(m_sent.begin(), m_sent.end(), isOf), m_sent.end());
    const auto reads = [document](const auto& source) { return source->document() == document; };
    m_sources.erase(std::remove_if(m_sources.begin(), m_sources.end(), reads), m_sources.end());
}

void Input::dropDry() {
    while (!m_sources.empty() && m_sources.front()->isDry()) {
        m_sources.pop_front();
    }
}

bool Input::isDry() {
    dropDry();
    return m_sources.empty() && m_sent.empty();
}

bool Input::isInteractive() {
    dropDry();
    return !m_sources.empty() && m_sources.front()->isInteractive();
}

const InputSource* Input::source() {
    dropDry();
    return m_sources.empty() ? nullptr : m_sources.front().get();
}

bool Input::next(AnswerEnd end, const std::wstring& prompt, Token& token) {
    dropDry();
    while (!m_sources.empty()) {
        InputSource& source = *m_sources.front();
        const bool shows = source.echoes() && !source.isInteractive();
        if (shows) {
            m_console.prompt(prompt);
        }
        if (source.next(end, prompt, token)) {
            m_dryCalls = 0;
            m_place = source.place();
            if (shows) {
                m_console.answer(token.cancels ? L"*Cancel*" : token.text);
            }
            return true;
        }
        m_sources.pop_front();
    }
    if (++m_dryCalls > kPatience) {
        m_dryCalls = 0;
        throw InputExhausted();
    }
    return false;
}

}  // namespace korvex
