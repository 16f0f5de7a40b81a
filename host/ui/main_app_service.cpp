// What modules tell the host about their palettes, and the main window that they dock in.
#include "sdk/hxui.h"

HX_DEFINE_MEMBERS(HxUiMainAppService, HxRxObject)

void HxUiMainAppService::setLayerPaletteVisible(bool visible) {
    m_layerPaletteVisible = visible;
    ++m_notices;
}

HxUiMainAppService* hxuiMainAppService() {
    static HxUiMainAppService service;
    return &service;
}
