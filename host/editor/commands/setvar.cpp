// SETVAR: lists, shows and sets system variables.
#include "host/editor/commands/setvar.h"

#include "host/db/values/wildcard.h"
#include "host/editor/command_processor.h"
#include "host/editor/commands/host_commands.h"
#include "host/editor/editor.h"

namespace korvex {

namespace {

void list() {
    Answer which = askWord({L"Enter variable(s) to list <*>:"});
    if (which.isCancelled()) {
        return;
    }
    const std::wstring pattern = which.isNone() ? L"*" : which.text;
    std::size_t shown = 0;
    for (const SystemVariable* variable : systemVariables()) {
        if (matchesPattern(variable->name, pattern)) {
            std::wstring name = variable->name;
            name.resize(std::max<std::size_t>(name.size() + 1, 24), L' ');
            editor().console().message(name + valueText(variableValue(*variable)) +
                                       (variable->readOnly ? L"  (read-only)" : L""));
            ++shown;
        }
    }
    if (shown == 0) {
        editor().processor().fail(L"No variable matches \"" + pattern + L"\".");
    }
}

Answer askValue(const SystemVariable& variable, const std::wstring& text) {
    const Prompt prompt{text};
    return variable.type == RTSTR ? askName(prompt) : askWord(prompt);
}

}  // namespace

void askSystemVariable(const SystemVariable& variable) {
    const std::wstring name = variable.name;
    const std::wstring current = valueText(variableValue(variable));
    if (variable.readOnly) {
        editor().console().message(name + L" = " + current + L" (read-only)");
        return;
    }
    const Answer answer = askValue(variable, L"Enter new value for " + name + L" <" + current + L">:");
    if (answer.isNone() || answer.isCancelled()) {
        return;
    }
    VariableValue value;
    if (!valueFromText(variable, answer.text, value)) {
        editor().processor().fail(L"\"" + answer.text + L"\" is no value for " + name + L", which is now " +
                                  current + L".");
        return;
    }
    const std::wstring why = setVariable(variable, value);
    if (!why.empty()) {
        editor().processor().fail(why);
    }
}

void setvarCommand() {
    const Answer answer = askWord({L"Enter variable name or [?]:"});
    if (!answer.isValue()) {
        return;
    }
    if (answer.text == L"?") {
        list();
    } else if (const SystemVariable* variable = findSystemVariable(answer.text.c_str())) {
        askSystemVariable(*variable);
    } else {
        editor().processor().fail(L"There is no system variable \"" + answer.text +
                                  L"\": SETVAR ? lists them.");
    }
}

}  // namespace korvex
