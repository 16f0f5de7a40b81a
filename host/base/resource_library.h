// What the host itself needs of resource libraries beside the functions that modules call.
#pragma once

struct link_map;

namespace korvex {

/// Takes back what a library loaded with LoadResourceDll and did not free.
void freeResourcesOf(const link_map* library);

}  // namespace korvex
