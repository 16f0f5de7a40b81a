// The host's main window: drawings, command line, status bar, menus.
#pragma once

#include "host/editor/input_source.h"
#include "host/ui/workbench/dialogue.h"
#include "host/ui/workbench/window_dialogs.h"
#include "sdk/hxdock.h"

#include <memory>

class QSplitter;

namespace korvex {

class CommandLine;
class DocumentTabs;
class DrawingView;
class LayoutTabs;
class StatusStrip;
class WorkbenchActions;

/// Shows what the editor holds and follows it. There is at most one. Its input source makes it interactive;
/// without that it only shows.
class Workbench : public HxUiDockFrameWindow {
    Q_OBJECT
public:
    /// Where it appears: as it was left in the profile, and kept there; or always in the same size, and
    /// nothing is kept.
    enum class Placement { kept, fixed };

    explicit Workbench(Placement placement, QWidget* parent = nullptr);
    ~Workbench() override;

    Dialogue& dialogue() { return m_dialogue; }
    DrawingView& view() { return *m_view; }
    /// The user before this window, to lie below all other input.
    std::unique_ptr<InputSource> makeSource();

    /// Takes over what the editor shows now.
    void refresh();
    /// Keeps size, panels and the like in the profile.
    void keepPlacement() const;
    /// A sentence in the status bar for a few seconds.
    void showHint(const QString& text);

protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    class Watcher;

    void build();
    void connectParts();
    void connectView();
    void bindActions();
    void restorePlacement();
    void showRequest();
    void refreshTitle();
    void enlargeCommandLine();
    void showContextMenu(const QPoint& place);
    void selectAll();
    void deselect();
    void runScript();
    void loadModule();
    void showCommands();
    void showAbout();
    void scheduleRefresh();

    Placement m_placement;
    Dialogue m_dialogue;
    WindowDialogs m_dialogs;
    QSplitter* m_splitter = nullptr;
    DocumentTabs* m_documents = nullptr;
    DrawingView* m_view = nullptr;
    LayoutTabs* m_layouts = nullptr;
    CommandLine* m_commandLine = nullptr;
    StatusStrip* m_status = nullptr;
    WorkbenchActions* m_actions = nullptr;
    std::unique_ptr<Watcher> m_watcher;
    bool m_refreshPending = false;
    bool m_isDivided = false;  ///< drawing and command line have their heights
};

}  // namespace korvex
