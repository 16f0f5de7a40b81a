// The answer of functions that this version does not have yet.
#include "exported_functions.h"
#include "resource_text.h"

#include "hxads.h"

/// Says on the command line that it is not available.
void LayIso() {
    const ModuleResources resources;
    hxutPrintf(ResourceString(kStrNotAvailable).c_str(), L"LayIso");
}

/// There is no record that could be restored, since none is ever made.
int LayUnisoNew() { return 0; }
