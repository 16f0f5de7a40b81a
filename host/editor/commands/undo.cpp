// UNDO, U and REDO: whole commands are taken back and done again.
#include "host/editor/commands/command_support.h"
#include "host/editor/commands/host_commands.h"
#include "host/editor/documents.h"
#include "host/editor/editor.h"
#include "sdk/hxcmd.h"

namespace korvex {

namespace {

constexpr std::size_t kAll = static_cast<std::size_t>(-1);

UndoController& steps() { return editor().documents().current()->undo(); }

/// Tells which commands were undone or redone, or why none was.
void report(Hx::ErrorStatus status, const std::vector<std::wstring>& names, const wchar_t* nothing) {
    if (status == Hx::eInvalidContext) {
        refuse(L"An undo group is open: close it with UNDO End first.");
        return;
    }
    if (names.empty()) {
        say(nothing);
        return;
    }
    std::wstring text;
    for (const std::wstring& name : names) {
        text += (text.empty() ? L"" : L" ") + (name.empty() ? std::wstring(L"(changes)") : name);
    }
    say(text);
    hxedRedraw(nullptr, 1);
}

void undo(std::size_t count) {
    std::vector<std::wstring> names;
    const Hx::ErrorStatus status = steps().undo(count, names);
    report(status, names, L"Everything has been undone.");
}

void undoBack() {
    std::vector<std::wstring> names;
    const Hx::ErrorStatus status = steps().undoToMark(names);
    if (status != Hx::eKeyNotFound) {
        report(status, names, L"The mark is reached.");
    } else if (askYesNo(L"No mark is set. This will undo everything. OK?", true)) {
        undo(kAll);
    }
}

void beginGroup() {
    if (!steps().beginUserGroup()) {
        refuse(L"An undo group is open already: close it with UNDO End first.");
    }
}

void endGroup() {
    if (!steps().endUserGroup()) {
        refuse(L"No undo group is open: UNDO BEgin opens one.");
    }
}

void control() { refuse(L"Undo is always on, for all commands: there is nothing to control."); }
void mark() { steps().putMark(); }

struct Option {
    const wchar_t* keyword;
    void (*run)();
};
constexpr Option kOptions[] = {
    {L"Control", control}, {L"BEgin", beginGroup}, {L"End", endGroup}, {L"Mark", mark}, {L"Back", undoBack}};

}  // namespace

void undoCommand() {
    const Answer answer =
        askInteger({L"Enter the number of operations to undo or [Control/BEgin/End/Mark/Back] <1>:",
                    L"Control BEgin End Mark Back", RSG_NONEG | RSG_NOZERO});
    if (answer.isNone()) {
        undo(1);
    } else if (answer.isValue()) {
        undo(static_cast<std::size_t>(answer.integer));
    }
    for (const Option& option : kOptions) {
        if (answer.isKeywordOf(option.keyword)) {
            option.run();
        }
    }
}

void uCommand() { undo(1); }

void redoCommand() {
    // Most users type REDO for one step: the number is asked for only when there is more to choose from.
    std::size_t count = 1;
    if (steps().redoCount() > 1) {
        const Answer answer =
            askInteger({L"Enter number of operations or [All] <1>:", L"All", RSG_NONEG | RSG_NOZERO});
        if (answer.isCancelled()) {
            return;
        }
        count = answer.isKeywordOf(L"All") ? kAll
                : answer.isValue()         ? static_cast<std::size_t>(answer.integer)
                                           : 1;
    }
    std::vector<std::wstring> names;
    const Hx::ErrorStatus status = steps().redo(count, names);
    report(status, names, L"There is nothing to redo.");
}

}  // namespace korvex
