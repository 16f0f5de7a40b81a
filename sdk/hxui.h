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

    /// Begins an edit of a document outside of a command: locks it, and makes one undo step of everything
    /// until the end, shown under `name` (null: a general one), unless `withUndo` is false. Operations nest,
    /// the outermost makes the step. 0 when the document is not open; else a handle for the end.
    int beginGuardedOperation(class HxApDocument* document, const wchar_t* name = nullptr,
                              bool withUndo = true);
    /// Ends it in reverse order: undo step, lock. Inner ones that were not ended are ended with it. False for
    /// a handle that is not in use; a document that was closed meanwhile is fine.
    bool endGuardedOperation(int handle);

private:
    bool m_layerPaletteVisible = false;
    int m_notices = 0;
};

/// Never null.
HXSDK_API HxUiMainAppService* hxuiMainAppService();

/// The main window (HxUiDockFrameWindow, hxdock.h). It belongs to the host. In a run without a display it is
/// made when it is first asked for; null in programs that have none.
HXSDK_API QWidget* hxuiMainWindow();

/// The user's theme ("COLORTHEME" 0 dark, else light). When it changes, the host calls
/// VrexUpdateLayerMgrUIStyle of the modules that export it, after its own widgets have changed.
HXSDK_API bool hxuiIsDarkTheme();
/// Gives a widget that does not inherit it (a window of its own) the host's colours and fonts.
HXSDK_API void hxuiApplyStyle(QWidget* widget);

/// Shows the progress of a long piece of work while it lives: after half a second, with a Cancel button and
/// Esc when it may be cancelled. Nests; only the outermost is shown. No other input gets through.
class HXSDK_API HxUiProgress {
public:
    /// `total` in any unit; 0 or less: unknown.
    HxUiProgress(const wchar_t* label, long long total, bool canCancel = true);
    ~HxUiProgress();
    HxUiProgress(const HxUiProgress&) = delete;
    HxUiProgress& operator=(const HxUiProgress&) = delete;
    /// How much is done. False when the user gave up; cheap enough for every item.
    bool step(long long done);
    bool isCancelled() const;

private:
    struct State;
    State* m_state;
};

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
