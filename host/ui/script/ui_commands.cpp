// PICTURE, CLICK ... at the command prompt.
#include "host/ui/script/ui_commands.h"

#include "host/editor/command_stack.h"
#include "host/editor/commands/command_support.h"
#include "host/editor/editor.h"
#include "host/ui/script/actions.h"
#include "host/ui/script/script_driver.h"

#include <QCoreApplication>

namespace korvex {

namespace {

constexpr int kFlags = HXCMD_TRANSPARENT | HXCMD_NOUNDOMARK | kStandsForUser;

/// The rest of the line is the action's.
template <std::size_t at>
void runAction() {
    const ActionCommand& command = actionCommands()[at];
    const Answer answer = askText({command.prompt});
    if (answer.isCancelled()) {
        return;
    }
    const ActionResult result = performAction(std::wstring(command.name) + L" " + answer.text);
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);  // what widgets do after the event
    if (!result.trouble.empty()) {
        refuse(result.trouble);
    }
}

template <std::size_t... at>
void registerAll(std::index_sequence<at...> /*positions*/) {
    CommandStack& stack = editor().commands();
    (stack.addCommand(kHostCommandGroup, actionCommands()[at].name, nullptr, kFlags, runAction<at>, nullptr,
                      -1, nullptr),
     ...);
}

}  // namespace

void startUiCommands() {
    watchModalLoops();
    registerAll(std::make_index_sequence<kActionCount>());
}

}  // namespace korvex
