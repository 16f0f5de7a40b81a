// The main window as a frame that panels dock in.
#pragma once

#include "hxtypes.h"

#include <QDockWidget>
#include <QMainWindow>

class HxUiDockPanel;

/// Where a panel lies, and how it takes its place there.
enum HxUiDockAlignment : int {
    kHxDockNone = 0,  ///< it floats
    kHxDockLeft = 1,
    kHxDockRight = 2,
    kHxDockTop = 3,
    kHxDockBottom = 4,
    kHxDockWhole = 5,   ///< beside all panels that are there: it takes the whole side
    kHxDockTabbed = 6,  ///< behind or before another panel, in one place
};

/// What a user may do with a panel.
enum HxUiDockingStyle : int {
    kHxDockFixed = 0,     ///< stays where it is docked
    kHxDockOnly = 1,      ///< moves between the sides
    kHxDockAndFloat = 2,  ///< moves between the sides and floats
};

/// The main window.
class HXSDK_API HxUiDockFrameWindow : public QMainWindow {
    Q_OBJECT
public:
    explicit HxUiDockFrameWindow(QWidget* parent = nullptr);
    ~HxUiDockFrameWindow() override;

    /// Docks a panel at a side (kHxDockLeft to kHxDockBottom); `share` is kHxDockWhole, or kHxDockTabbed with
    /// `beside` (may be null otherwise). A hidden panel stays hidden. False for a null panel or an alignment
    /// that is no side.
    bool dockPanel(HxUiDockPanel* panel, HxUiDockPanel* beside, int alignment, int share);
    /// Takes a panel out of the frame's care; it stays its maker's.
    void undockPanel(HxUiDockPanel* panel);
    /// Lays out the panels anew at once.
    void RecalcLayout();

    /// Emits OnIdle; by the host's loop when nothing is left to do.
    void notifyIdle();

Q_SIGNALS:
    /// The event queue is empty, no command runs and no modal dialog is open.
    void OnIdle();
};

/// A panel with a title bar, docked in the frame or floating. Whoever derives from it places its content
/// itself (resizeEvent), below titleHeight().
class HXSDK_API HxUiDockPanel : public QDockWidget {
    Q_OBJECT
public:
    explicit HxUiDockPanel(HxUiDockFrameWindow* frame);
    ~HxUiDockPanel() override;

    /// What the title bar shows; the window title stays.
    void setCaption(const wchar_t* caption);
    const wchar_t* caption() const;
    /// HxUiDockingStyle; other values change nothing.
    void setDockingStyle(int style);
    int dockingStyle() const;
    /// HxUiDockAlignment: a side, or kHxDockNone while it floats.
    int currentDockPosition() const;
    /// Docks it at a side; 0 floats it; other values change nothing.
    void setCurrentDockPosition(int position);
    /// Takes it off the frame, with its top-left corner at a place on the screen (moved so that the title bar
    /// stays within reach).
    void floatAt(int left, int top);
    /// Pixels from the panel's top to where content may begin.
    int titleHeight() const;

Q_SIGNALS:
    /// The user closed it by its title bar; it is hidden already.
    void closedByUser();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    struct Parts;
    Parts* m_parts;
};
