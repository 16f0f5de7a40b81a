// What the host calls by name, besides the entry point.
#include "exported_functions.h"

#include "frame_app.h"
#include "module_state.h"
#include "palette_commands.h"
#include "resource_text.h"

IVrexPalettePropManager* GetCuixManager() { return GetCuixManagerUtil(); }

void VrexUpdateLayerMgrUIStyle() { VrexUpdateLayerMgrUIStyleUtil(); }

void LayerDialog() { LayerCmd2(); }

int LayUniso() { return 1; }

void VrexUpdateLayerMgrUIStyleUtil() {
    const ModuleResources resources;
    if (KvPalettePanel* const palette = layerPalette()) palette->UpdateUIStyle();
}
