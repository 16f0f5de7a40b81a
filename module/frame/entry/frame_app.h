// Registering and taking back all that the module offers.
#pragma once

#include "hxtypes.h"

class IVrexPalettePropManager;

/// Registers the service "KvLayerApps", by which others see that the layer manager is there.
void registerLayerService();

/// Registers the service and the commands, and makes the reactors and the palette property interface; what
/// is there already stays.
void initLayerManagerFrameApp();
/// Takes all of it back, and the palette. The status of removing the command group.
Hx::ErrorStatus unloadLayerManagerFrameApp();

/// Null before initialisation.
IVrexPalettePropManager* GetCuixManagerUtil();
void VrexUpdateLayerMgrUIStyleUtil();
