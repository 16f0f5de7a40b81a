// What a module is made of: the functions that it exports and the messages that the host sends it.
#pragma once

#include "hxresource.h"
#include "hxrx.h"

// A module is a shared library that exports, unmangled, the three functions below. It is opened with its own
// symbols kept to itself. It should be compiled with hidden visibility and -fno-gnu-unique: a library with
// unique symbols stays in memory when it is unloaded. Qt meta types that it registers are unregistered at
// unloading, widgets of its classes that are left are deleted, and resource libraries that it did not free
// are taken back.

/// Messages of the entry point.
enum HxAppMessage : int {
    kInitAppMsg = 1,    ///< initialise; the packet is for the calls on HxRxDynamicLinker
    kUnloadAppMsg = 2,  ///< take everything back, the code goes next
    kQuitMsg = 8,       ///< the host quits; the code stays until the process ends
};

/// Results of the entry point. Anything but kRetOK from kInitAppMsg means that the module did not load and
/// has registered nothing; from kUnloadAppMsg, that it refuses to be unloaded.
enum HxAppResult : int { kRetOK = 0, kRetError = 3 };

/// Reasons of DllMain.
enum HxDllReason : std::uint32_t { kProcessDetach = 0, kProcessAttach = 1 };

/// The host's API version: the year in the upper 16 bits, which a module must match, a revision in the lower.
constexpr std::uint32_t kHxApiVersion = 0x07E50000;

/// Called once before the first message and once after the last one; `instance` is the module's own handle.
/// 0 on attaching means that the module cannot be loaded; it then gets neither a message nor the call for
/// detaching. Optional.
using HxDllMain = int (*)(HxModuleHandle instance, std::uint32_t reason, void* reserved);
/// "hxrxEntryPoint".
using HxEntryPoint = int (*)(int message, void* packet);
/// "hxrxGetApiVersion": the version that the module was compiled against.
using HxGetApiVersion = std::uint32_t (*)();

/// The module asks for no notices about threads. This host sends none in any case. False for an unknown
/// handle.
HXSDK_API bool hxDisableThreadLibraryCalls(HxModuleHandle module);
