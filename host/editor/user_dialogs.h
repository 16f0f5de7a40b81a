// What a user before a window is asked and told in dialogs instead of on the command line.
#pragma once

#include "host/editor/ask.h"

#include <string>
#include <vector>

namespace korvex {

/// The dialogs of the host's own commands. Implemented by the window.
class UserDialogs {
public:
    virtual ~UserDialogs() = default;
    /// What is to become of a drawing's changes before it goes.
    virtual YesNoCancel askToSave(const std::wstring& title) = 0;
    /// Drawings to open; none when the user gave up.
    virtual std::vector<std::wstring> askFilesToOpen() = 0;
    /// The file to save under, after the user agreed to replace one that exists; empty when they gave up.
    /// `current` is the drawing's path or title.
    virtual std::wstring askFileToSave(const std::wstring& current) = 0;
    /// Something was not done; the text says what, why, and what to do.
    virtual void tellFailure(const std::wstring& text) = 0;
};

}  // namespace korvex
