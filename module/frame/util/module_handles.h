// The module and its resource library.
#pragma once

#include "hxresource.h"

/// The module itself; null before the host has attached it.
HxModuleHandle moduleInstance();
void setModuleInstance(HxModuleHandle instance);

/// The resource library; null while it is not loaded.
HxModuleHandle globalResInstance();
void setGlobalResInstance(HxModuleHandle library);
