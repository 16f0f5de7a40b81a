// Answers from text: script files, command strings, strings that modules send.
#pragma once

#include "host/editor/input_source.h"

namespace korvex {

/// How a text is read.
struct ScriptOptions {
    std::wstring name;                 ///< for messages; empty: no places are told
    bool comments = false;             ///< lines that begin with ";" are skipped
    bool closesLastLine = true;        ///< a line end is added when the text does not end with one
    bool echo = true;                  ///< InputSource::echoes
    HxApDocument* document = nullptr;  ///< InputSource::document
    bool activates = true;             ///< InputSource::activates
};

/// Text cut into answers as prompts ask for them. Every blank, tab or line end outside of a name ends one
/// answer, so two in a row are an Enter. A carriage return before a line end belongs to it. The characters
/// 3 and 27 cancel.
class ScriptSource : public InputSource {
public:
    ScriptSource(std::wstring text, ScriptOptions options);

    bool next(const InputRequest& request, Token& token) override;
    bool isDry() const override;
    bool echoes() const override { return m_options.echo; }
    std::wstring place() const override;
    HxApDocument* document() const override { return m_options.document; }
    bool activates() const override { return m_options.activates; }

private:
    bool atLineStart() const { return m_at == 0 || m_text[m_at - 1] == L'\n'; }
    void skipComments();

    std::wstring m_text;
    ScriptOptions m_options;
    std::size_t m_at = 0;
    std::size_t m_line = 1;
    std::size_t m_answerLine = 1;
};

/// A script file with its comments; null with the reason in `error` when it cannot be read. The text is
/// UTF-8, or UTF-16 with a byte order mark.
std::unique_ptr<ScriptSource> openScript(const std::wstring& path, std::wstring& error);

}  // namespace korvex
