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

    /// Docks a panel at a side (kHxDockLeft to kHxDockBottom) with the width or height that it has. `share`:
    /// kHxDockWhole, or kHxDockTabbed with `beside`, whose side counts then (null: any panel of that side). A
    /// hidden panel stays hidden. False, and nothing changes, for a null panel or one of another frame, an
    /// alignment that is no side, or another share.
    bool dockPanel(HxUiDockPanel* panel, HxUiDockPanel* beside, int alignment, int share);
    /// Takes a panel out of the frame's care and hides it; it stays its maker's, and may be docked again.
    void undockPanel(HxUiDockPanel* panel);
    /// Lays out the panels anew at once.
    void RecalcLayout();

    /// Emits OnIdle, unless it is being emitted. The host's loop does so whenever it runs out of events.
    void notifyIdle();
    /// Moves the keyboard focus to the next (F6) or previous (Shift+F6) of the drawing and the shown panels.
    void focusNextPanel(bool forward = true);

Q_SIGNALS:
    /// The event queue is empty, no modal dialog or menu is open, and no command is at work; one may be
    /// waiting for the user.
    void OnIdle();

private:
    friend class HxUiDockPanel;
    void giveSize(HxUiDockPanel& panel, const QSize& size);
    struct Parts;
    Parts* m_parts;
};

/// A panel with a title bar, docked in the frame or floating; the frame owns it as its child widget. Whoever
/// derives from it places its content itself, below titleHeight(), in resizeEvent, which also comes when the
/// panel begins or ceases to float. Closing hides it. Ctrl+F4 closes it from the keyboard; Esc goes back to
/// the drawing.
class HXSDK_API HxUiDockPanel : public QDockWidget {
    Q_OBJECT
public:
    /// It takes no place in the frame and is not shown before dockPanel or floatAt.
    explicit HxUiDockPanel(HxUiDockFrameWindow* frame);
    ~HxUiDockPanel() override;

    /// What the title bar shows, and tabs when there is no window title, which stays as it is. Null is empty.
    void setCaption(const wchar_t* caption);
    /// Never null; valid until it is set anew.
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
    /// The width and height that it last had of its own, or what its title bar needs.
    QSize sizeHint() const override;

Q_SIGNALS:
    /// The user closed it by its title bar; it is hidden already.
    void closedByUser();

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    friend class HxUiDockFrameWindow;
    void keepWithinReach();
    bool handleKey(QEvent* event);
    struct Parts;
    Parts* m_parts;
};
