// The workbench's menus and toolbar: commands as typed input, and what the window itself does.
#pragma once

#include <QObject>

#include <functional>
#include <map>
#include <vector>

class QAction;
class QActionGroup;
class QMainWindow;
class QMenu;
class QToolBar;

namespace korvex {

class Dialogue;
struct MenuRow;

class WorkbenchActions : public QObject {
    Q_OBJECT
public:
    /// Fills the window's menu bar and makes its toolbar.
    WorkbenchActions(QMainWindow& window, Dialogue& dialogue);

    /// What there is a drawing and a command for; ticks, names of undo steps.
    void refresh();
    /// Ticks and undo steps alone, which may change at any time.
    void refreshState();
    /// The action of an object name ("ActionOpen"); null when there is none.
    QAction* action(const QString& name) const;
    /// What an action of the window does when it is triggered.
    void bind(const char* name, const std::function<void()>& handler);

private:
    QAction* add(const MenuRow& row);
    QMenu* menu(const QString& title);
    void makeToolBar();
    void fillRecent();
    void openRecent(const QString& path);
    void fillPanels();
    void undo();
    void redo();
    void refreshUndo();
    bool isAvailable(const MenuRow& row) const;

    QMainWindow& m_window;
    Dialogue& m_dialogue;
    std::map<QString, QMenu*> m_menus;
    std::vector<std::pair<const MenuRow*, QAction*>> m_rows;
    QActionGroup* m_themes;
    QToolBar* m_toolBar = nullptr;
};

}  // namespace korvex
