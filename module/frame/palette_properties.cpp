// The module's answers when the host asks about the layer palette.
#include "palette_properties.h"

#include "module_state.h"
#include "palette_commands.h"
#include "palette_settings.h"

#include <QWidget>

/// Width and height are the differences of the inclusive corners, one less than the pixels: the host's
/// customisation files hold them so.
int VrexLayerCuixManager::GetPaletteProperties(int& visible, int& dockPosition, int& /*reserved1*/,
                                               int& /*reserved2*/, int& width, int& height, int& left,
                                               int& top) {
    KvPalettePanel* const palette = layerPalette();
    if (!palette) {
        visible = 0;
        return 0;
    }
    const QRect place = palette->widget()->geometry();
    visible = palette->widget()->isVisible() ? 1 : 0;
    dockPosition = palette->isFloating() ? 0 : palette->dockPosition();
    width = place.right() - place.left();
    height = place.bottom() - place.top();
    left = place.left();
    top = place.top();
    SavePaletteSet();
    return 1;
}

int VrexLayerCuixManager::SetPaletteProperties(int visible, int /*dockPosition*/, int /*reserved1*/,
                                               int /*reserved2*/, int /*width*/, int /*height*/, int /*left*/,
                                               int /*top*/, int /*reserved3*/) {
    if (visible == 0) {
        LayerCloseCmd();
    } else if (visible != -1) {
        LayerPaletteCmd(true);
    }
    return 1;
}

QWidget* VrexLayerCuixManager::GetPaletteWnd() {
    KvPalettePanel* const palette = layerPalette();
    return palette ? palette->widget() : nullptr;
}
