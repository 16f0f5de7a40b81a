// Hands out the answers of the sources and shows them.
#include "host/editor/input.h"

#include <algorithm>

namespace korvex {

namespace {

constexpr int kPatience = 1000;

}  // namespace

void Input::push(std::unique_ptr<InputSource> source) {
    interruptWaiting();
    m_sources.push_front(std::move(source));
}

void Input::append(std::unique_ptr<InputSource> source) {
    interruptWaiting();
    const bool userIsLast = !m_sources.empty() && m_sources.back()->isInteractive();
    m_sources.insert(m_sources.end() - (userIsLast ? 1 : 0), std::move(source));
}

void Input::interruptWaiting() {
    for (const auto& source : m_sources) {
        source->interrupt();
    }
}

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
    interruptWaiting();
}

bool Input::takeSent(bool transparentOnly) {
    if (m_sent.empty() || (transparentOnly && m_sent.front().first.compare(0, 1, L"'") != 0)) {
        return false;
    }
    push(std::make_unique<ScriptSource>(std::move(m_sent.front().first), std::move(m_sent.front().second)));
    m_sent.pop_front();
    return true;
}

void Input::dropSent() {
    while (!m_sources.empty() && m_sources.front()->document()) {
        m_sources.pop_front();
    }
}

void Input::forget(const HxApDocument* document) {
    const auto isOf = [document](const auto& sent) { return sent.second.document == document; };
    m_sent.erase(std::remove_if(m_sent.begin(), m_sent.end(), isOf), m_sent.end());
    const auto reads = [document](const auto& source) { return source->document() == document; };
    m_sources.erase(std::remove_if(m_sources.begin(), m_sources.end(), reads), m_sources.end());
}

void Input::stopScripts() {
    const auto user = std::find_if(m_sources.begin(), m_sources.end(),
                                   [](const auto& source) { return source->isInteractive(); });
    if (user != m_sources.end()) {
        m_sources.erase(m_sources.begin(), user);
    }
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

/// Others may have come and gone while a source waited.
void Input::drop(const InputSource* source) {
    const auto isIt = [source](const auto& other) { return other.get() == source; };
    m_sources.erase(std::remove_if(m_sources.begin(), m_sources.end(), isIt), m_sources.end());
}

bool Input::next(const InputRequest& request, Token& token) {
    dropDry();
    while (!m_sources.empty()) {
        const std::shared_ptr<InputSource> source = m_sources.front();
        const bool shows = source->echoes() && !source->isInteractive();
        if (shows) {
            m_console.prompt(request.prompt);
        }
        token = Token();
        if (source->next(request, token)) {
            m_dryCalls = 0;
            m_place = source->place();
            if (shows) {
                m_console.answer(token.cancels ? L"*Cancel*" : token.text);
            }
            return true;
        }
        drop(source.get());
    }
    if (++m_dryCalls > kPatience) {
        m_dryCalls = 0;
        throw InputExhausted();
    }
    return false;
}

}  // namespace korvex
