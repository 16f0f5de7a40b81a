// Cuts text into answers.
#include "host/editor/script_source.h"

#include <QFile>
#include <QFileInfo>
#include <QTextStream>

#include <algorithm>

namespace korvex {

namespace {

constexpr wchar_t kCancel = 3;
constexpr wchar_t kEscape = 27;

bool isBlank(wchar_t c) { return c == L' ' || c == L'\t'; }
bool isCancel(wchar_t c) { return c == kCancel || c == kEscape; }

}  // namespace

ScriptSource::ScriptSource(std::wstring text, ScriptOptions options)
    : m_text(std::move(text)), m_options(std::move(options)) {
    for (std::size_t at = m_text.find(L"\r\n"); at != std::wstring::npos; at = m_text.find(L"\r\n", at)) {
        m_text.erase(at, 1);
    }
    std::replace(m_text.begin(), m_text.end(), L'\r', L'\n');
    if (m_options.closesLastLine && !m_text.empty() && m_text.back() != L'\n') {
        m_text += L'\n';
    }
    skipComments();
}

void ScriptSource::skipComments() {
    while (m_options.comments && m_at < m_text.size() && atLineStart() && m_text[m_at] == L';') {
        m_at = std::min(m_text.find(L'\n', m_at), m_text.size() - 1) + 1;
        ++m_line;
    }
}

bool ScriptSource::isDry() const { return m_at >= m_text.size(); }

bool ScriptSource::next(const InputRequest& request, Token& token) {
    if (isDry()) {
        return false;
    }
    token = Token();
    m_answerLine = m_line;
    if (isCancel(m_text[m_at])) {
        token.cancels = true;
        ++m_at;
        skipComments();
        return true;
    }
    const auto ends = [&request](wchar_t c) {
        return c == L'\n' || isCancel(c) || (request.end == AnswerEnd::blank && isBlank(c));
    };
    const auto first = m_text.begin() + static_cast<std::ptrdiff_t>(m_at);
    const auto last = std::find_if(first, m_text.end(), ends);
    token.text.assign(first, last);
    m_at = static_cast<std::size_t>(last - m_text.begin());
    token.endsLine = last == m_text.end() || !isBlank(*last);
    if (last != m_text.end() && !isCancel(*last)) {
        m_line += *last == L'\n' ? 1 : 0;
        ++m_at;
        skipComments();
    }
    return true;
}

std::wstring ScriptSource::place() const {
    return m_options.name.empty() ? m_options.name
                                  : m_options.name + L", line " + std::to_wstring(m_answerLine);
}

std::unique_ptr<ScriptSource> openScript(const std::wstring& path, std::wstring& error) {
    QFile file(QString::fromStdWString(path));
    if (!file.open(QIODevice::ReadOnly)) {
        error = file.errorString().toStdWString();
        return nullptr;
    }
    QTextStream stream(&file);
    stream.setCodec("UTF-8");
    ScriptOptions options;
    options.name = QFileInfo(file).fileName().toStdWString();
    options.comments = true;
    return std::make_unique<ScriptSource>(stream.readAll().toStdWString(), options);
}

}  // namespace korvex
