// What scripts can do with windows: PICTURE, CLICK, TYPE, PRESS, CHOOSE, TICK, LOOK, DELAY, END.
#pragma once

#include <array>
#include <string>

namespace korvex {

struct ActionResult {
    bool isAction = false;  ///< the line begins with the name of one
    std::wstring trouble;   ///< what was not done and why; empty when all went well
};

/// Does what a line says: "CLICK IDOK". Returns when whatever it opens has been closed.
ActionResult performAction(const std::wstring& line);

/// "CLICK, TYPE ... or END", for messages.
std::wstring actionNames();

/// One of the actions as a command: what to ask for when it is typed alone.
struct ActionCommand {
    const wchar_t* name;
    const wchar_t* prompt;
};
constexpr std::size_t kActionCount = 9;
const std::array<ActionCommand, kActionCount>& actionCommands();

}  // namespace korvex
