// What a dock panel and its frame keep of each other.
#pragma once

#include "host/ui/docking/dock_title_bar.h"
#include "host/ui/docking/idle_notifier.h"
#include "sdk/hxdock.h"

#include <string>
#include <vector>

struct HxUiDockPanel::Parts {
    HxUiDockFrameWindow* frame = nullptr;  ///< null when it is gone
    korvex::DockTitleBar* title = nullptr;
    std::wstring caption;
    int style = kHxDockAndFloat;
    QSize lastSize;          ///< that it had of its own: not the length of the side that it is docked at
    QSize released;          ///< lastSize when the user let it go; on its way to a side it has others
    QSize docked;            ///< the width it last had as a column, the height as a row; 0 before
    bool isCarried = false;  ///< the user moves it by its title bar; until it has taken its place
    bool isNew = false;      ///< at its side: it was not shown there yet
    bool isClosing = false;  ///< the user closes it; it is still shown
};

struct HxUiDockFrameWindow::Parts {
    explicit Parts(HxUiDockFrameWindow& frame) : idle(frame) {}
    korvex::IdleNotifier idle;
    std::vector<HxUiDockPanel*> panels;  ///< all that live, in the order of their making
    bool isTellingIdle = false;
};

namespace korvex {

/// The dock area of a HxUiDockAlignment; none for what is no side.
Qt::DockWidgetArea areaOf(int side);
/// The HxUiDockAlignment of a dock area; kHxDockNone for no area.
int sideOf(Qt::DockWidgetArea area);

}  // namespace korvex
