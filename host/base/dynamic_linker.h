// The host's end of the dynamic linker.
#pragma once

#include "sdk/hxrx.h"

namespace korvex {

HxRxDynamicLinker& dynamicLinker();

/// Sends every module the message that the host quits, the last one first. They are no longer listed then;
/// their code stays.
void quitModules();

}  // namespace korvex
