// Puts the window together and keeps it up with the editor.
#include "host/ui/workbench/workbench.h"

#include "host/editor/command_processor.h"
#include "host/editor/documents.h"
#include "host/editor/editor.h"
#include "host/editor/selection.h"
#include "host/ui/progress/progress_dialog.h"
#include "host/ui/theme/theme.h"
#include "host/ui/view/drawing_view.h"
#include "host/ui/workbench/command_line.h"
#include "host/ui/workbench/command_list_dialog.h"
#include "host/ui/workbench/document_tabs.h"
#include "host/ui/workbench/layout_tabs.h"
#include "host/ui/workbench/recent_files.h"
#include "host/ui/workbench/status_strip.h"
#include "host/ui/workbench/ui_settings.h"
#include "host/ui/workbench/window_source.h"
#include "host/ui/workbench/workbench_actions.h"
#include "sdk/hxdialog.h"
#include "sdk/hxstddlg.h"

#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QScreen>
#include <QShortcut>
#include <QSplitter>
#include <QVBoxLayout>

namespace korvex {

namespace {

constexpr QSize kFirstSize(1280, 800);
constexpr int kStateVersion = 1;
constexpr const char* kContextMenu[] = {"ActionUndo",        "ActionRedo",      nullptr, "ActionErase",
                                        "ActionSelectAll",   "ActionDeselect",  nullptr, "ActionLayfrz",
                                        "ActionZoomExtents", "ActionZoomWindow"};
constexpr char kGeometry[] = "Geometry";
constexpr char kPanels[] = "Panels";
constexpr char kSplitter[] = "Splitter";

DocumentManager& documents() { return editor().documents(); }

QStringList droppedFiles(const QMimeData* data) {
    QStringList files;
    for (const QUrl& url : data->urls()) {
        if (url.isLocalFile() && !url.toLocalFile().contains('\n')) {
            files << url.toLocalFile();
        }
    }
    return files;
}

}  // namespace

/// Hears of documents and commands. It only marks: the window follows when the events are through.
class Workbench::Watcher : public HxEditorReactor, public HxApDocManagerReactor {
public:
    explicit Watcher(Workbench& window) : m_window(window) {
        hxedEditor()->addReactor(this);
        documents().addReactor(this);
    }
    ~Watcher() override {
        hxedEditor()->removeReactor(this);
        documents().removeReactor(this);
    }
    Watcher(const Watcher&) = delete;
    Watcher& operator=(const Watcher&) = delete;

    void commandWillStart(const wchar_t*) override { m_window.scheduleRefresh(); }
    void commandEnded(const wchar_t*) override { m_window.scheduleRefresh(); }
    void commandCancelled(const wchar_t*) override { m_window.scheduleRefresh(); }
    void commandFailed(const wchar_t*) override { m_window.scheduleRefresh(); }
    void sysVarChanged(const wchar_t*, bool) override { m_window.scheduleRefresh(); }
    void documentCreated(HxApDocument* document) override { noteFile(document); }
    void documentTitleUpdated(HxApDocument* document) override { noteFile(document); }
    void documentDestroyed(const wchar_t*) override { m_window.scheduleRefresh(); }
    void documentActivated(HxApDocument*) override { m_window.scheduleRefresh(); }

private:
    void noteFile(HxApDocument* document) {
        recent_files::add(QString::fromWCharArray(document->fileName()));
        m_window.scheduleRefresh();
    }

    Workbench& m_window;
};

Workbench::Workbench(Placement placement, QWidget* parent)
    : HxUiDockFrameWindow(parent), m_placement(placement), m_dialogs(this) {
    startTheme();
    setObjectName("Workbench");
    setAccessibleName(tr("KORVEX workbench"));
    setWindowIcon(themeIcon("app"));
    setAcceptDrops(true);
    build();
    m_actions = new WorkbenchActions(*this, m_dialogue);
    bindActions();
    connectParts();
    connectView();
    m_watcher = std::make_unique<Watcher>(*this);
    restorePlacement();
    editor().setDialogs(&m_dialogs);
    showProgressOver(m_placement == Placement::kept ? this : nullptr);
    editor().console().setPane([this](std::wstring_view text) {
        m_commandLine->append(QString::fromWCharArray(text.data(), static_cast<int>(text.size())));
    });
    m_view->setDark(isDark());
    refresh();
    m_commandLine->setFocus();
}

Workbench::~Workbench() {
    editor().console().setPane(nullptr);
    editor().setDialogs(nullptr);
    m_watcher.reset();
    m_dialogue.end();
}

void Workbench::build() {
    auto* work = new QWidget;
    work->setObjectName("WorkArea");
    m_documents = new DocumentTabs(m_dialogue);
    m_view = new DrawingView;
    m_view->setObjectName("DrawingView");
    m_view->setAccessibleName(tr("Drawing"));
    m_layouts = new LayoutTabs(m_dialogue);
    auto* layout = new QVBoxLayout(work);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_documents);
    layout->addWidget(m_view, 1);
    layout->addWidget(m_layouts);
    m_commandLine = new CommandLine(m_dialogue);
    m_splitter = new QSplitter(Qt::Vertical);
    m_splitter->setObjectName("WorkSplitter");
    m_splitter->addWidget(work);
    m_splitter->addWidget(m_commandLine);
    m_splitter->setStretchFactor(0, 1);
    m_splitter->setCollapsible(0, false);
    m_splitter->setCollapsible(1, false);
    setCentralWidget(m_splitter);
    m_status = new StatusStrip(m_dialogue);
    setStatusBar(m_status);
}

void Workbench::connectParts() {
    connect(&m_dialogue, &Dialogue::asked, this, &Workbench::showRequest);
    connect(m_documents, &DocumentTabs::refused, this, &Workbench::showHint);
    connect(m_commandLine, &CommandLine::enlargeAsked, this, &Workbench::enlargeCommandLine);
    connect(m_commandLine, &CommandLine::cancelledIdle, this, &Workbench::deselect);
    connect(this, &HxUiDockFrameWindow::OnIdle, this, [this] {
        m_documents->refresh();
        m_actions->refreshState();
        m_status->refreshIsolation();
        refreshTitle();
    });
    const auto onKeys = [this](const char* keys, const std::function<void()>& handler) {
        connect(new QShortcut(QKeySequence(keys), this), &QShortcut::activated, this, handler);
    };
    onKeys("Ctrl+Tab", [this] { m_documents->step(1); });
    onKeys("Ctrl+Shift+Tab", [this] { m_documents->step(-1); });
    onKeys("Ctrl+PgDown", [this] { m_layouts->step(1); });
    onKeys("Ctrl+PgUp", [this] { m_layouts->step(-1); });
}

void Workbench::connectView() {
    connect(m_view, &DrawingView::pointGiven, &m_dialogue, qOverload<const HxGePoint3d&>(&Dialogue::answer));
    connect(m_view, &DrawingView::coordinatesChanged, m_status, &StatusStrip::showCoordinates);
    connect(m_view, &DrawingView::cancelPressed, &m_dialogue, &Dialogue::cancel);
    connect(m_view, &DrawingView::enterPressed, &m_dialogue, [this] { m_dialogue.answer(QString()); });
    m_view->setContextMenuPolicy(Qt::DefaultContextMenu);
    connect(m_view, &QWidget::customContextMenuRequested, this, &Workbench::showContextMenu);
    connect(m_view, &DrawingView::keyTyped, this,
            [this](QKeyEvent* event) { m_commandLine->takeKey(*event); });
}

void Workbench::bindActions() {
    m_actions->bind("ActionExit", [this] { close(); });
    m_actions->bind("ActionSelectAll", [this] { selectAll(); });
    m_actions->bind("ActionDeselect", [this] { deselect(); });
    m_actions->bind("ActionZoomIn", [this] { m_view->zoomIn(); });
    m_actions->bind("ActionZoomOut", [this] { m_view->zoomOut(); });
    m_actions->bind("ActionZoomExtents", [this] { m_view->zoomExtents(); });
    m_actions->bind("ActionEnlarge", [this] { enlargeCommandLine(); });
    m_actions->bind("ActionScript", [this] { runScript(); });
    m_actions->bind("ActionLoadModule", [this] { loadModule(); });
    m_actions->bind("ActionCommands", [this] { showCommands(); });
    m_actions->bind("ActionAbout", [this] { showAbout(); });
    // Panels have their own use for these keys.
    for (const char* name : {"ActionErase", "ActionSelectAll"}) {
        QAction* const action = m_actions->action(name);
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        centralWidget()->addAction(action);
    }
}

std::unique_ptr<InputSource> Workbench::makeSource() { return std::make_unique<WindowSource>(&m_dialogue); }

/// Notifications come in the middle of changes, so the window looks later.
void Workbench::scheduleRefresh() {
    if (!m_refreshPending) {
        m_refreshPending = true;
        QMetaObject::invokeMethod(this, &Workbench::refresh, Qt::QueuedConnection);
    }
}

void Workbench::refresh() {
    m_refreshPending = false;
    Document* const active = documents().active();
    if (m_view->document() != active) {
        m_view->setDocument(active);
    }
    m_documents->refresh();
    m_layouts->refresh();
    m_status->refresh();
    m_actions->refresh();
    refreshTitle();
}

void Workbench::refreshTitle() {
    const Document* const active = documents().active();
    const QString product = QString::fromWCharArray(hxProductName());
    const QString title =
        active ? tr("%1[*] - %2")
                     .arg(QString::fromWCharArray(active->docTitle()).replace("[*]", "[*][*]"), product)
               : product;
    if (windowTitle() != title) {
        setWindowTitle(title);
    }
    // Titles go to the window manager even if they are the same, and its answer wakes the loop.
    const bool isChanged = active && active->database()->isModified();
    if (isWindowModified() != isChanged) {
        setWindowModified(isChanged);
    }
}

/// The view asks for what the prompt asks for.
void Workbench::showRequest() {
    using Wants = InputRequest::Wants;
    const InputRequest* const request = m_dialogue.request();
    if (m_refreshPending && request) {
        refresh();
    }
    if (!request) {
        m_view->setAsking(DrawingView::Asking::nothing);
        return;
    }
    switch (request->wants) {
    case Wants::command: m_view->setAsking(DrawingView::Asking::selection); break;
    case Wants::point: m_view->setAsking(DrawingView::Asking::point, request->base); break;
    case Wants::entity: m_view->setAsking(DrawingView::Asking::entity, request->base, request->nested); break;
    default: m_view->setAsking(DrawingView::Asking::nothing); break;
    }
    m_status->refresh();
}

void Workbench::showHint(const QString& text) { m_status->showHint(text); }

/// F2: a few lines or the lower half.
void Workbench::enlargeCommandLine() {
    const QList<int> sizes = m_splitter->sizes();
    const int all = sizes.value(0) + sizes.value(1);
    const int compact = m_commandLine->compactHeight();
    const int wanted = sizes.value(1) > compact + fontMetrics().lineSpacing() ? compact : all / 2;
    m_splitter->setSizes({all - wanted, wanted});
}

void Workbench::restorePlacement() {
    resize(kFirstSize);
    if (m_placement == Placement::fixed) {
        return;
    }
    const QSize room = screen() ? screen()->availableGeometry().size() : kFirstSize;
    resize(kFirstSize.boundedTo(room));
    // A window whose screen is gone comes back on one that is there.
    restoreGeometry(uiBytes(kGeometry));
    restoreState(uiBytes(kPanels), kStateVersion);
    m_isDivided = m_splitter->restoreState(uiBytes(kSplitter));
}

void Workbench::keepPlacement() const {
    if (m_placement == Placement::kept) {
        keepUiBytes(kGeometry, saveGeometry());
        keepUiBytes(kPanels, saveState(kStateVersion));
        keepUiBytes(kSplitter, m_splitter->saveState());
    }
}

/// Before the first time there is no height to divide.
void Workbench::showEvent(QShowEvent* event) {
    HxUiDockFrameWindow::showEvent(event);
    if (!m_isDivided) {
        m_isDivided = true;
        const int compact = m_commandLine->compactHeight();
        m_splitter->setSizes({m_splitter->height() - compact, compact});
    }
}

void Workbench::changeEvent(QEvent* event) {
    HxUiDockFrameWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && m_view) {
        m_view->setDark(isDark());
    }
}

/// QUIT asks about every drawing with changes and ends the program.
void Workbench::closeEvent(QCloseEvent* event) {
    event->ignore();
    m_dialogue.run("_.QUIT\n");
}

/// Keys that nothing in the window has a use for.
void Workbench::keyPressEvent(QKeyEvent* event) {
    const bool isText = !event->text().isEmpty() && event->text().at(0).isPrint();
    const bool isOther = event->key() == Qt::Key_Escape || event->key() == Qt::Key_F2 ||
                         event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter ||
                         event->key() == Qt::Key_Backspace;
    if ((isText || isOther) && !m_commandLine->edit()->hasFocus()) {
        m_commandLine->takeKey(*event);
        return;
    }
    HxUiDockFrameWindow::keyPressEvent(event);
}

void Workbench::dragEnterEvent(QDragEnterEvent* event) {
    if (!droppedFiles(event->mimeData()).isEmpty()) {
        event->acceptProposedAction();
    }
}

void Workbench::dropEvent(QDropEvent* event) {
    event->acceptProposedAction();
    for (const QString& file : droppedFiles(event->mimeData())) {
        m_dialogue.run("_.OPEN\n" + file + '\n');
    }
}

/// Of the drawing while no command asks.
void Workbench::showContextMenu(const QPoint& place) {
    QMenu menu(this);
    menu.setObjectName("DrawingMenu");
    const QString last = QString::fromStdWString(editor().processor().lastCommand());
    if (!last.isEmpty()) {
        connect(menu.addAction(tr("&Repeat %1").arg(QString(last).replace('&', "&&"))), &QAction::triggered,
                this, [this, last] { m_dialogue.run('_' + last + '\n'); });
        menu.addSeparator();
    }
    m_actions->refresh();
    for (const char* name : kContextMenu) {
        if (name) {
            menu.addAction(m_actions->action(name));
        } else {
            menu.addSeparator();
        }
    }
    menu.exec(m_view->mapToGlobal(place));
}

void Workbench::selectAll() {
    const Document* const active = documents().active();
    if (active && !editor().processor().isRunning()) {
        selectionOf(*active->database()).addAll();
    }
}

void Workbench::deselect() {
    if (const Document* const active = documents().active()) {
        selectionOf(*active->database()).clear();
    }
}

void Workbench::runScript() {
    HxUiFileDialog files(L"Run Script", L"HxScriptFileDlg", {tr("Scripts (*.scr)"), tr("All files (*)")});
    const QString path = files.getOpenFile(this);
    if (!path.isEmpty()) {
        m_dialogue.run("_.SCRIPT\n" + path + '\n');
    }
}

void Workbench::loadModule() {
    HxUiFileDialog files(L"Load Module", L"HxModuleFileDlg", {tr("Modules (*.hrx)"), tr("All files (*)")});
    const QString path = files.getOpenFile(this);
    if (!path.isEmpty()) {
        m_dialogue.run("_.HRX\n_Load\n" + path + '\n');
    }
}

void Workbench::showCommands() {
    CommandListDialog dialog(this);
    if (dialog.exec() == QDialog::Accepted && !dialog.chosen().isEmpty()) {
        m_dialogue.run(dialog.chosen() + '\n');
    }
}

void Workbench::showAbout() {
    const QString text =
        tr("%1 %2\n\nA CAD host with a layer manager. It shows drawings, takes commands and picks, "
           "and runs modules.")
            .arg(QString::fromWCharArray(hxProductName()), QCoreApplication::applicationVersion());
    hxuiMessageBox(this, text.toStdWString().c_str(), nullptr, MB_OK | MB_ICONINFORMATION);
}

}  // namespace korvex
