// Where answers come from: a script's text, the command line and the mouse.
#pragma once

#include "sdk/hxge.h"

#include <memory>
#include <optional>
#include <string>

class HxApDocument;

namespace korvex {

/// What ends an answer: a blank or the end of the line, or only the end of the line (names and texts, which
/// may hold blanks).
enum class AnswerEnd { blank, line };

/// What a prompt asks for.
struct InputRequest {
    enum class Wants { command, keyword, number, point, entity, text };

    AnswerEnd end = AnswerEnd::blank;
    std::wstring prompt;
    Wants wants = Wants::command;
    std::wstring keywords;            ///< accepted besides, as hxedInitGet takes them
    std::optional<HxGePoint3d> base;  ///< points are shown with a line from here
    bool nested = false;              ///< entities: also those inside of blocks
};

/// One answer as it was given.
struct Token {
    std::wstring text;                 ///< empty: Enter
    bool cancels = false;              ///< the user gave up the running command (Esc)
    bool interrupted = false;          ///< nothing was answered: see who is to answer now, and ask again
    bool endsLine = true;              ///< false: the same line goes on behind it
    std::optional<HxGePoint3d> point;  ///< clicked, in the current space
};

/// Gives the answers that prompts ask for, one after the other.
class InputSource {
public:
    virtual ~InputSource() = default;
    /// The next answer. The request's prompt is for sources that show it themselves. False when there is none
    /// and never will be.
    virtual bool next(const InputRequest& request, Token& token) = 0;
    /// Other input has come: one that waits stops doing so and gives Token::interrupted.
    virtual void interrupt() {}
    /// There is no further answer, as far as is known without waiting.
    virtual bool isDry() const = 0;
    /// Prompts and answers are shown on the command line.
    virtual bool echoes() const { return true; }
    /// Someone sits before it: an answer may be long in coming, Enter repeats commands.
    virtual bool isInteractive() const { return false; }
    /// Where the last answer stood, for messages: "layers.scr, line 3"; empty when that says nothing.
    virtual std::wstring place() const { return {}; }
    /// The document whose commands these are; null for whichever is active.
    virtual HxApDocument* document() const { return nullptr; }
    /// That document is to become the active one, and not only the current one.
    virtual bool activates() const { return true; }
};

}  // namespace korvex
