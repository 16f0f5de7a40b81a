// SCRIPT: answers come from a file from now on.
#include "host/editor/commands/command_support.h"
#include "host/editor/commands/host_commands.h"
#include "host/editor/editor.h"

namespace korvex {

void scriptCommand() {
    const Answer path = askName({L"Enter script file name:"});
    if (!path.isValue()) {
        return;
    }
    std::wstring error;
    std::unique_ptr<ScriptSource> script = openScript(path.text, error);
    if (!script) {
        refuse(L"Script " + quoted(path.text) + L" can not be read: " + error + L".");
        return;
    }
    editor().input().push(std::move(script));
}

}  // namespace korvex
