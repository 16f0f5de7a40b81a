// What the host calls by name, besides the entry point.
#pragma once

#include "hxtypes.h"

class IVrexPalettePropManager;

/// How the host asks about the palette; null before initialisation.
HX_EXPORT IVrexPalettePropManager* GetCuixManager();
/// The host's user-interface style has changed: the palette, if there is one, repaints itself.
HX_EXPORT void VrexUpdateLayerMgrUIStyle();
/// The layer manager as the command LAYER opens it.
HX_EXPORT void LayerDialog();

/// Records how the layers stand, before the host isolates some.
HX_EXPORT void LayIso();
/// Ends the isolation: 1, or 0 when nothing was recorded.
HX_EXPORT int LayUnisoNew();
/// Does nothing: 1. Older hosts call it.
HX_EXPORT int LayUniso();

/// LAYERSTATESAVE.
HX_EXPORT void LayerStateSaveCmd();
