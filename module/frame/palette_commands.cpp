// The commands that show and hide the layer manager.
#include "palette_commands.h"

#include "module_state.h"
#include "resource_text.h"
#include "unavailable.h"

#include "hxed.h"
#include "hxui.h"

#include <QWidget>

void LayerCmd2() {
    resbuf mode = {};
    if (hxedGetVar(L"LayerDlgMode", &mode) == RTNORM && mode.resval.rint == 0) {
        ClassicLayerDlgCmd();
    } else {
        LayerPaletteCmd(true);
    }
}

void ClassicLayerDlgCmd() { tellUnavailable(L"CLASSICLAYER"); }

void LayerPaletteCmd(bool /*loadSettings*/) { tellUnavailable(L"LAYERPALETTE"); }

void LayerPaletteCmd() { LayerPaletteCmd(true); }

void LayerCloseCmd() {
    const ModuleResources resources;
    hxuiMainAppService()->setLayerPaletteVisible(false);
    KvPalettePanel* const palette = layerPalette();
    if (palette && palette->widget()->isVisible() && hxuiMainWindow()) palette->showPanel(false);
}
