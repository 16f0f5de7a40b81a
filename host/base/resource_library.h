// What the host itself needs of resource libraries beside the functions that modules call.
#pragma once

#include "sdk/hxresource.h"

struct link_map;

namespace korvex {

/// Takes back what a library loaded with LoadResourceDll and did not free.
void freeResourcesOf(const link_map* library);

/// A string as hxLoadString finds it; null when there is none. Good until the library is freed.
const wchar_t* resourceString(HxModuleHandle handle, std::uint32_t id);

}  // namespace korvex
