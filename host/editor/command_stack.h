// The commands that the host and its modules have registered.
#pragma once

#include "sdk/hxcmd.h"

#include <string>
#include <string_view>
#include <vector>

namespace korvex {

/// Beside HxCommandFlags: the command runs in the current document when there is one, and without one when
/// there is none.
constexpr int kDocumentOptional = 0x1000;
/// The command does what a user does with mouse and keyboard: the document is not busy with it, and nothing
/// is locked or marked for undo.
constexpr int kStandsForUser = 0x2000;

/// One registered command.
struct Command {
    std::wstring global;
    std::wstring local;
    int flags = 0;
    HxCommandFunction function = nullptr;
    void* uiContext = nullptr;
    int functionCode = -1;
    void* resourceHandle = nullptr;

    bool has(int flag) const { return (flags & flag) != 0; }
};

/// Name of the group that holds the host's own commands.
extern const wchar_t* const kHostCommandGroup;

class CommandStack : public HxEdCommandStack {
public:
    Hx::ErrorStatus addCommand(const wchar_t* group, const wchar_t* globalName, const wchar_t* localName,
                               int flags, HxCommandFunction function, void* uiContext, int functionCode,
                               void* resourceHandle) override;
    Hx::ErrorStatus removeCmd(const wchar_t* group, const wchar_t* globalName) override;
    Hx::ErrorStatus removeGroup(const wchar_t* group) override;
    bool lookupCmd(const wchar_t* name, CStdStr<wchar_t>* globalName) const override;

    /// A second name of a host command.
    void addAlias(const wchar_t* alias, const wchar_t* globalName);

    /// The command that a typed name means, with its prefixes "_" and "."; null when there is none. Valid
    /// until commands are added or removed.
    const Command* find(std::wstring_view typed) const;
    /// The names that users type, one for each command, in alphabetical order.
    std::vector<std::wstring> names() const;
    /// The command whose name looks most like it, for a hint; empty when none does.
    std::wstring suggestion(std::wstring_view typed) const;

private:
    struct Group {
        std::wstring name;
        std::vector<Command> commands;
    };
    struct Alias {
        std::wstring name;
        std::wstring global;
    };
    Group* group(std::wstring_view name);

    std::vector<Group> m_groups;
    std::vector<Alias> m_aliases;
};

}  // namespace korvex
