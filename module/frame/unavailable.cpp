// The answer of commands that this version does not have yet.
#include "unavailable.h"

#include "exported_functions.h"
#include "resource_text.h"

#include "hxads.h"

void tellUnavailable(const wchar_t* command) {
    const ModuleResources resources;
    hxutPrintf(ResourceString(kStrNotAvailable).c_str(), command);
}

void LayerStateCmd() { tellUnavailable(L"LAYERSTATE"); }

void LayerStateSaveCmd() { tellUnavailable(L"LAYERSTATESAVE"); }

void LayIso() { tellUnavailable(L"LayIso"); }

/// There is no record that could be restored, since none is ever made.
int LayUnisoNew() { return 0; }
