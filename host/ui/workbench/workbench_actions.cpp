// The table of the menus, and the actions that are no plain commands.
#include "host/ui/workbench/workbench_actions.h"

#include "host/db/kernel/journal.h"
#include "host/editor/command_stack.h"
#include "host/editor/documents.h"
#include "host/editor/editor.h"
#include "host/editor/keywords.h"
#include "host/editor/layer_isolation.h"
#include "host/editor/system_variables.h"
#include "host/ui/theme/theme.h"
#include "host/ui/workbench/dialogue.h"
#include "host/ui/workbench/recent_files.h"
#include "sdk/hxdialog.h"
#include "sdk/hxui.h"

#include <QAction>
#include <QActionGroup>
#include <QDir>
#include <QFileInfo>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>

namespace korvex {

/// An entry of a menu. One without a text is a separator.
struct MenuRow {
    const char* menu;
    const char* text;
    const char* name;      ///< of the action
    const char* command;   ///< typed input; null: the window does it itself
    const char* icon;      ///< null for none
    const char* shortcut;  ///< null for none
    const char* tip;
    bool needsDrawing;
};

namespace {

constexpr bool kDrawing = true;
constexpr bool kAlways = false;

constexpr char kFile[] = "&File";
constexpr char kEdit[] = "&Edit";
constexpr char kView[] = "&View";
constexpr char kTheme[] = "&View/&Theme";
constexpr char kRecent[] = "&File/Open &Recent";
constexpr char kPanels[] = "&View/&Panels";
constexpr char kLayer[] = "&Layer";
constexpr char kTools[] = "&Tools";
constexpr char kHelp[] = "&Help";

#define KORVEX_SEPARATOR(menu) \
    { menu, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, kAlways }

constexpr MenuRow kRows[] = {
    {kFile, "&New", "ActionNew", "_.NEW\n", "new", "Ctrl+N", "Begins an empty drawing", kAlways},
    {kFile, "&Open...", "ActionOpen", "_.OPEN\n", "open", "Ctrl+O", "Opens drawings", kAlways},
    {kRecent, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, kAlways},
    KORVEX_SEPARATOR(kFile),
    {kFile, "&Save", "ActionSave", "_.QSAVE\n", "save", "Ctrl+S", "Saves the drawing", kDrawing},
    {kFile, "Save &As...", "ActionSaveAs", "_.SAVEAS\n", "saveas", "Ctrl+Shift+S",
     "Saves the drawing under another name", kDrawing},
    KORVEX_SEPARATOR(kFile),
    {kFile, "&Close", "ActionClose", "_.CLOSE\n", "close", "Ctrl+W", "Closes the drawing", kDrawing},
    {kFile, "E&xit", "ActionExit", nullptr, nullptr, "Ctrl+Q", "Closes all drawings and ends the program",
     kAlways},

    {kEdit, "&Undo", "ActionUndo", nullptr, "undo", "Ctrl+Z", "Takes the last step back", kDrawing},
    {kEdit, "&Redo", "ActionRedo", nullptr, "redo", "Ctrl+Y", "Does what was undone again", kDrawing},
    KORVEX_SEPARATOR(kEdit),
    {kEdit, "&Erase", "ActionErase", "_.ERASE\n", "erase", "Del",
     "Erases the selected objects, or asks for some", kDrawing},
    KORVEX_SEPARATOR(kEdit),
    {kEdit, "Select &All", "ActionSelectAll", nullptr, nullptr, "Ctrl+A",
     "Selects all objects of the current space", kDrawing},
    {kEdit, "&Deselect", "ActionDeselect", nullptr, nullptr, "Ctrl+Shift+A", "Selects nothing", kDrawing},

    {kView, "Zoom &Extents", "ActionZoomExtents", nullptr, "zoom-extents", "Ctrl+0", "Shows everything",
     kDrawing},
    {kView, "Zoom &Window", "ActionZoomWindow", "'_.ZOOM\n_Window\n", "zoom-window", nullptr,
     "Shows what lies between two corners", kDrawing},
    {kView, "Zoom &In", "ActionZoomIn", nullptr, "zoom-in", "Ctrl++", "Shows half as much, twice as large",
     kDrawing},
    {kView, "Zoom &Out", "ActionZoomOut", nullptr, "zoom-out", "Ctrl+-", "Shows twice as much", kDrawing},
    {kView, "&Pan", "ActionPan", "'_.PAN\n", "pan", nullptr,
     "Moves what is shown from one point to another; dragging with the middle button does so at any time",
     kDrawing},
    KORVEX_SEPARATOR(kView),
    {kView, "&Redraw", "ActionRedraw", "'_.REDRAW\n", nullptr, nullptr, "Paints the view anew", kDrawing},
    {kView, "Re&gen", "ActionRegen", "_.REGEN\n", "regen", "F5", "Works the drawing out and paints it anew",
     kDrawing},
    KORVEX_SEPARATOR(kView),
    {kTheme, "&Dark", "ActionThemeDark", "'COLORTHEME\n0\n", nullptr, nullptr, "Light on dark", kAlways},
    {kTheme, "&Light", "ActionThemeLight", "'COLORTHEME\n1\n", nullptr, nullptr, "Dark on light", kAlways},
    {kPanels, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, kAlways},
    {kView, "Larger &Command Line", "ActionEnlarge", nullptr, nullptr, nullptr,
     "Gives the command history more room, or less again (F2)", kAlways},

    {kLayer, "&Layer Properties Manager", "ActionLayer", "LAYER\n", "layers", "Ctrl+L",
     "Shows all layers and their properties", kDrawing},
    {kLayer, "Layer &Palette", "ActionLayerPalette", nullptr, nullptr, nullptr,
     "Shows or hides the layer palette", kDrawing},
    {kLayer, "Layer &Dialog", "ActionLayerDialog", "CLASSICLAYER\n", nullptr, nullptr,
     "The layer manager as a dialog, with OK and Cancel", kDrawing},
    KORVEX_SEPARATOR(kLayer),
    {kLayer, "&Freeze by Pick", "ActionLayfrz", "LAYFRZ\n", "layer-freeze", nullptr,
     "Freezes the layers of objects that are clicked", kDrawing},
    {kLayer, "&Isolate", "ActionLayiso", "LAYISO\n", "layer-isolate", nullptr,
     "Hides or locks all layers but those of the objects that are selected or clicked", kDrawing},
    {kLayer, "&Unisolate", "ActionLayuniso", "LAYUNISO\n", "layer-unisolate", nullptr,
     "Brings the layers back to what they were before Isolate", kDrawing},
    {kLayer, "&Merge Layers", "ActionLaymrg", "-LAYMRG\n", nullptr, nullptr,
     "Moves everything of some layers to another and removes them", kDrawing},
    KORVEX_SEPARATOR(kLayer),
    {kLayer, "Layer &States...", "ActionLayerStates", "LAYERSTATE\n", "layer-states", nullptr,
     "Saves and restores the situation of all layers", kDrawing},
    {kLayer, "Sa&ve Layer State...", "ActionLayerStateSave", "LAYERSTATESAVE\n", nullptr, nullptr,
     "Saves the situation of all layers under a name", kDrawing},
    KORVEX_SEPARATOR(kLayer),
    {kLayer, "Layers on the &Command Line", "ActionLayerLine", "-LAYER\n", nullptr, nullptr,
     "-LAYER: makes and changes layers by typing", kDrawing},
    {kLayer, "Layers in &Viewports", "ActionVplayer", "VPLAYER\n", nullptr, nullptr,
     "VPLAYER: layers in viewports of a layout, by typing", kDrawing},

    {kTools, "&Run Script...", "ActionScript", nullptr, nullptr, nullptr,
     "Runs the commands of a script file", kAlways},
    {kTools, "Load &Module...", "ActionLoadModule", nullptr, nullptr, nullptr,
     "Loads a module with further commands", kAlways},
    {kTools, "&Modules", "ActionModules", "HRX\n?\n", nullptr, nullptr, "Lists the loaded modules", kAlways},
    KORVEX_SEPARATOR(kTools),
    {kTools, "System &Variables", "ActionVariables", "'SETVAR\n?\n*\n", nullptr, nullptr,
     "Lists all system variables", kAlways},

    {kHelp, "&Commands", "ActionCommands", nullptr, "help", "F1", "Lists all commands", kAlways},
    KORVEX_SEPARATOR(kHelp),
    {kHelp, "&About KORVEX", "ActionAbout", nullptr, "app", nullptr, "Which program this is", kAlways},
};

constexpr const char* kToolBar[] = {
    "ActionNew",    "ActionOpen",        "ActionSave",
    nullptr,        "ActionUndo",        "ActionRedo",
    nullptr,        "ActionZoomExtents", "ActionZoomWindow",
    "ActionZoomIn", "ActionZoomOut",     "ActionPan",
    nullptr,        "ActionLayer",       "ActionLayfrz",
    "ActionLayiso", "ActionLayuniso",    "ActionLayerStates",
};

Document* active() { return editor().documents().active(); }

/// The command that a row types, without its prefixes and answers.
QString commandOf(const MenuRow& row) {
    return row.command ? QString(row.command).section('\n', 0, 0).remove('\'') : QString();
}

/// The text with the name of a step: "Undo LAYFRZ".
QString stepText(const QString& text, const std::wstring& step) {
    const QString name = QString::fromStdWString(step);
    return name.isEmpty() ? text : text + ' ' + QString(name).replace('&', "&&");
}

}  // namespace

WorkbenchActions::WorkbenchActions(QMainWindow& window, Dialogue& dialogue)
    : QObject(&window), m_window(window), m_dialogue(dialogue), m_themes(new QActionGroup(this)) {
    for (const MenuRow& row : kRows) {
        add(row);
    }
    for (const char* name : {"ActionThemeDark", "ActionThemeLight"}) {
        action(name)->setCheckable(true);
        m_themes->addAction(action(name));
    }
    action("ActionLayerPalette")->setCheckable(true);
    action("ActionRedo")->setShortcuts({QKeySequence("Ctrl+Y"), QKeySequence("Ctrl+Shift+Z")});
    action("ActionZoomIn")->setShortcuts({QKeySequence("Ctrl++"), QKeySequence("Ctrl+=")});
    bind("ActionUndo", [this] { undo(); });
    bind("ActionRedo", [this] { redo(); });
    bind("ActionLayerPalette", [this] {
        m_dialogue.run(hxuiMainAppService()->isLayerPaletteVisible() ? "LAYERCLOSE\n" : "LAYERPALETTE\n");
        refresh();
    });
    connect(menu(kRecent), &QMenu::aboutToShow, this, &WorkbenchActions::fillRecent);
    connect(menu(kPanels), &QMenu::aboutToShow, this, &WorkbenchActions::fillPanels);
    for (const char* title : {kFile, kEdit, kView, kLayer}) {
        connect(menu(title), &QMenu::aboutToShow, this, &WorkbenchActions::refresh);
    }
    makeToolBar();
    refresh();
}

QMenu* WorkbenchActions::menu(const QString& title) {
    QMenu*& entry = m_menus[title];
    if (!entry) {
        const int slash = title.indexOf('/');
        const QString own = title.mid(slash + 1);
        entry = slash < 0 ? m_window.menuBar()->addMenu(own) : menu(title.left(slash))->addMenu(own);
        entry->setObjectName("Menu" + QString(own).remove('&').remove(' '));
        entry->setToolTipsVisible(true);
    }
    return entry;
}

QAction* WorkbenchActions::add(const MenuRow& row) {
    QMenu* const into = menu(row.menu);
    if (!row.text) {
        // A menu that fills itself has a row only for its place.
        return into == m_menus[kRecent] || into == m_menus[kPanels] ? nullptr : into->addSeparator();
    }
    QAction* const made = into->addAction(tr(row.text));
    made->setObjectName(row.name);
    made->setStatusTip(tr(row.tip));
    if (row.icon) {
        made->setIcon(themeIcon(row.icon));
    }
    if (row.shortcut) {
        made->setShortcut(QKeySequence(row.shortcut));
    }
    made->setToolTip(row.shortcut
                         ? tr("%1 (%2)").arg(tr(row.tip), made->shortcut().toString(QKeySequence::NativeText))
                         : tr(row.tip));
    if (row.command) {
        connect(made, &QAction::triggered, this, [this, &row] { m_dialogue.run(row.command); });
    }
    m_rows.emplace_back(&row, made);
    return made;
}

QAction* WorkbenchActions::action(const QString& name) const {
    for (const auto& [row, made] : m_rows) {
        if (made->objectName() == name) {
            return made;
        }
    }
    return nullptr;
}

void WorkbenchActions::bind(const char* name, const std::function<void()>& handler) {
    connect(action(name), &QAction::triggered, this, handler);
}

void WorkbenchActions::makeToolBar() {
    m_toolBar = m_window.addToolBar(tr("Main toolbar"));
    m_toolBar->setObjectName("MainToolBar");
    m_toolBar->setToolButtonStyle(Qt::ToolButtonIconOnly);
    for (const char* name : kToolBar) {
        if (name) {
            m_toolBar->addAction(action(name));
        } else {
            m_toolBar->addSeparator();
        }
    }
}

/// The drawing is there, and so is the command.
bool WorkbenchActions::isAvailable(const MenuRow& row) const {
    if (row.needsDrawing && !active()) {
        return false;
    }
    const std::wstring command = commandOf(row).toStdWString();
    return command.empty() || editor().commands().find(command) || findSystemVariable(command.c_str());
}

void WorkbenchActions::refresh() {
    for (const auto& [row, made] : m_rows) {
        made->setEnabled(isAvailable(*row));
    }
    refreshState();
}

void WorkbenchActions::refreshState() {
    refreshUndo();
    action("ActionLayuniso")->setEnabled(active() && isIsolated(*active()->database()));
    action(isDark() ? "ActionThemeDark" : "ActionThemeLight")->setChecked(true);
    action("ActionLayerPalette")->setChecked(hxuiMainAppService()->isLayerPaletteVisible());
}

void WorkbenchActions::refreshUndo() {
    QAction* const undoAction = action("ActionUndo");
    QAction* const redoAction = action("ActionRedo");
    const Document* const document = active();
    const bool canUndo = document && document->undo().undoCount() > 0;
    const bool canRedo = document && document->undo().redoCount() > 0;
    undoAction->setEnabled(canUndo || m_dialogue.isAsking());
    redoAction->setEnabled(canRedo);
    undoAction->setText(stepText(tr("&Undo"), canUndo ? journal(*document->database()).undoName() : L""));
    redoAction->setText(stepText(tr("&Redo"), canRedo ? journal(*document->database()).redoName() : L""));
}

/// A command that offers Undo takes its own last step back, any other is given up before.
void WorkbenchActions::undo() {
    const InputRequest* const request = m_dialogue.request();
    KeywordList keywords;
    if (request && keywords.assign(request->keywords) &&
        keywords.match(L"_Undo").match == KeywordList::Match::one) {
        m_dialogue.answer("_Undo");
        return;
    }
    m_dialogue.run("_.U\n");
}

void WorkbenchActions::redo() {
    // REDO asks how many only when there are several.
    const Document* const document = active();
    if (document) {
        m_dialogue.run(document->undo().redoCount() > 1 ? "_.REDO\n1\n" : "_.REDO\n");
    }
}

void WorkbenchActions::fillRecent() {
    QMenu* const recent = menu(kRecent);
    recent->clear();
    int number = 0;
    for (const QString& path : recent_files::all()) {
        const bool isThere = QFileInfo::exists(path);
        const QString name = QDir::toNativeSeparators(path).replace('&', "&&");
        ++number;
        const QString text = QString(number <= 9 ? "&%1  %2" : "%1  %2").arg(number).arg(name);
        QAction* const entry = recent->addAction(isThere ? text : tr("%1  (missing)").arg(text));
        entry->setToolTip(isThere ? path : tr("This file is gone; a click takes it off the list"));
        connect(entry, &QAction::triggered, this, [this, path] { openRecent(path); });
    }
    if (number == 0) {
        recent->addAction(tr("No drawings yet"))->setEnabled(false);
        return;
    }
    recent->addSeparator();
    connect(recent->addAction(tr("&Clear List")), &QAction::triggered, this, [] { recent_files::clear(); });
}

void WorkbenchActions::openRecent(const QString& path) {
    if (QFileInfo::exists(path)) {
        m_dialogue.run("_.OPEN\n" + path + '\n');
        return;
    }
    recent_files::remove(path);
    const QString text = tr("The drawing \"%1\" is not there any more. It was taken off the list of recent "
                            "drawings; if it was "
                            "moved, open it from where it is now.")
                             .arg(QDir::toNativeSeparators(path));
    hxuiMessageBox(&m_window, text.toStdWString().c_str(), nullptr, MB_OK | MB_ICONINFORMATION);
}

void WorkbenchActions::fillPanels() {
    QMenu* const panels = menu(kPanels);
    panels->clear();
    const std::unique_ptr<QMenu> known(m_window.createPopupMenu());
    if (known) {
        panels->addActions(known->actions());
    }
}

}  // namespace korvex
