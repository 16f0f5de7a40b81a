// What the host calls by name, besides the entry point.
#include "exported_functions.h"

#include "frame/module_state.h"
#include "frame/palette_commands.h"
#include "frame/util/resource_text.h"
#include "frame_app.h"

IVrexPalettePropManager* GetCuixManager() { return GetCuixManagerUtil(); }

void VrexUpdateLayerMgrUIStyle() { VrexUpdateLayerMgrUIStyleUtil(); }

void LayerDialog() { LayerCmd2(); }

int LayUniso() { return 1; }

void VrexUpdateLayerMgrUIStyleUtil() {
    const ModuleResources resources;
    if (KvPalettePanel* const palette = layerPalette()) palette->UpdateUIStyle();
}
