// The module's answers when the host asks about the layer palette.
#pragma once

#include "hxui.h"

class VrexLayerCuixManager : public IVrexPalettePropManager {
public:
    int GetPaletteProperties(int& visible, int& dockPosition, int& reserved1, int& reserved2, int& width,
                             int& height, int& left, int& top) override;
    int SetPaletteProperties(int visible, int dockPosition, int reserved1, int reserved2, int width,
                             int height, int left, int top, int reserved3) override;
    QWidget* GetPaletteWnd() override;
};
