// The command stack: commands of the host and of modules, in groups.
#pragma once

#include "hxrx.h"

/// A command's body. It talks to the user through hxed.h.
using HxCommandFunction = void (*)();

/// Bits of a command's flag word.
enum HxCommandFlags : int {
    HXCMD_MODAL = 0,
    HXCMD_TRANSPARENT = 1,  ///< may run inside another command, with ' before its name
    HXCMD_USEPICKSET = 2,   ///< takes the pick-first selection
    HXCMD_NOUNDOMARK = 4,   ///< changes nothing in the drawing: no undo step
    HXCMD_NOACTIONRECORDING = 8,
    HXCMD_SESSION = 16,  ///< belongs to no drawing: no lock, no undo step; may open and close documents
};

/// The registered commands. In the system registry as "VREX_REGISTERED_COMMANDS".
class HXSDK_API HxEdCommandStack : public HxRxObject {
public:
    HX_DECLARE_MEMBERS(HxEdCommandStack)
    /// Adds a command to a group. Names are found without regard to case; global names also with "_" before
    /// them; commands of groups added later win, but "." before a name asks for the host's own. An empty
    /// local name means the global one. `uiContext`, `functionCode` and `resourceHandle` are kept for the
    /// caller (null, -1, null for none). eDuplicateKey when the group has the name, eInvalidInput for an
    /// empty name or null function.
    virtual Hx::ErrorStatus addCommand(const wchar_t* group, const wchar_t* globalName,
                                       const wchar_t* localName, int flags, HxCommandFunction function,
                                       void* uiContext = nullptr, int functionCode = -1,
                                       void* resourceHandle = nullptr) = 0;
    /// eKeyNotFound.
    virtual Hx::ErrorStatus removeCmd(const wchar_t* group, const wchar_t* globalName) = 0;
    virtual Hx::ErrorStatus removeGroup(const wchar_t* group) = 0;
    /// True when a command of that global or local name exists; `globalName` (may be null) gets its global
    /// name.
    virtual bool lookupCmd(const wchar_t* name, CStdStr<wchar_t>* globalName = nullptr) const = 0;
};
