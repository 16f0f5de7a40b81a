// The host's main window and palettes, as far as modules meet them.
#pragma once

#include "hxrx.h"

class QWidget;

/// Receives what modules tell the host about their palettes.
class HXSDK_API HxUiMainAppService : public HxRxObject {
public:
    HX_DECLARE_MEMBERS(HxUiMainAppService)
    /// The layer palette is now shown or not; menus and toolbars follow.
    void setLayerPaletteVisible(bool visible);
    bool isLayerPaletteVisible() const { return m_layerPaletteVisible; }
    /// Times setLayerPaletteVisible was called.
    int layerPaletteNotices() const { return m_notices; }

private:
    bool m_layerPaletteVisible = false;
    int m_notices = 0;
};

/// Never null.
HXSDK_API HxUiMainAppService* hxuiMainAppService();

/// The main window; null in a run without windows. It belongs to the host.
HXSDK_API QWidget* hxuiMainWindow();

/// By this interface the host asks a module about its palette and shows or hides it.
class IVrexPalettePropManager {
public:
    virtual ~IVrexPalettePropManager() = default;
    /// 1 with the palette's state, or 0 with `visible` 0 when there is no palette. Geometry in pixels;
    /// `reserved1`, `reserved2` stay as they are.
    virtual int GetPaletteProperties(int& visible, int& dockPosition, int& reserved1, int& reserved2,
                                     int& width, int& height, int& left, int& top) = 0;
    /// `visible`: -1 leaves the palette as it is, 0 hides it, anything else shows it. Always 1.
    virtual int SetPaletteProperties(int visible, int dockPosition, int reserved1, int reserved2, int width,
                                     int height, int left, int top, int reserved3) = 0;
    /// Null when there is no palette.
    virtual QWidget* GetPaletteWnd() = 0;
};
