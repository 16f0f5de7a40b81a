// The host's end of the dynamic linker.
#pragma once

#include "sdk/hxrx.h"

#include <functional>
#include <string>

struct link_map;

namespace korvex {

HxRxDynamicLinker& dynamicLinker();

/// Sends every module the message that the host quits, the last one first. They are no longer listed then;
/// their code stays.
void quitModules();

/// What those who call into modules have to say when one is to go.
struct CodeWatch {
    /// Why the library's code must stay for now, as the end of a sentence; empty when it may go.
    std::function<std::wstring(const link_map* library)> whyInUse;
    /// The code goes next: what leads there is to be taken back.
    std::function<void(const link_map* library)> leaves;
};
void addCodeWatch(CodeWatch watch);

}  // namespace korvex
