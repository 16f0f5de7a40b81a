// Looks for controls by name.
#include "host/ui/script/widget_names.h"

#include "host/ui/workbench/main_window.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QHeaderView>
#include <QMenu>
#include <QTableView>
#include <QTreeView>

#include <algorithm>

namespace korvex {

namespace {

constexpr int kHintCount = 4;

template <class Object>
using List = std::vector<Object*>;

/// All widgets of the windows, the windows themselves included, each once.
List<QWidget> widgetsOf(const List<QWidget>& windows) {
    List<QWidget> all;
    for (QWidget* window : windows) {
        all.push_back(window);
        for (QWidget* widget : window->findChildren<QWidget*>()) {
            all.push_back(widget);
        }
    }
    List<QWidget> unique;
    for (QWidget* widget : all) {
        if (std::find(unique.begin(), unique.end(), widget) == unique.end()) {
            unique.push_back(widget);
        }
    }
    return unique;
}

/// Those that are visible, when some are.
List<QWidget> visibleFirst(const List<QWidget>& widgets) {
    List<QWidget> visible;
    std::copy_if(widgets.begin(), widgets.end(), std::back_inserter(visible),
                 [](const QWidget* widget) { return widget->isVisible(); });
    return visible.empty() ? widgets : visible;
}

template <class Object>
List<Object> named(const List<Object>& objects, const QString& name) {
    for (const Qt::CaseSensitivity sensitivity : {Qt::CaseSensitive, Qt::CaseInsensitive}) {
        List<Object> found;
        std::copy_if(objects.begin(), objects.end(), std::back_inserter(found), [&](const Object* object) {
            return object->objectName().compare(name, sensitivity) == 0;
        });
        if (!found.empty()) {
            return found;
        }
    }
    return {};
}

QWidget* headerOf(QWidget* view) {
    if (auto* const table = qobject_cast<QTableView*>(view)) {
        return table->horizontalHeader();
    }
    auto* const tree = qobject_cast<QTreeView*>(view);
    return tree ? tree->header() : nullptr;
}

/// One step of a path, from all that may hold it.
List<QWidget> step(const List<QWidget>& from, const QString& name, bool isFirst) {
    List<QWidget> found = named(isFirst ? from : widgetsOf(from), name);
    if (found.empty() && !isFirst && name == QLatin1String("header")) {
        for (QWidget* view : from) {
            if (QWidget* const header = headerOf(view)) {
                found.push_back(header);
            }
        }
    }
    return visibleFirst(found);
}

List<QWidget> byPath(const List<QWidget>& widgets, const QString& path) {
    List<QWidget> found = named(widgets, path);
    if (!found.empty() || !path.contains('/')) {
        return visibleFirst(found);
    }
    found = widgets;
    const QStringList names = path.split('/');
    for (int i = 0; i < names.size(); ++i) {
        found = step(found, names[i], i == 0);
    }
    return found;
}

List<QWidget> buttonsWithText(const List<QWidget>& widgets, const QString& text) {
    List<QWidget> found;
    for (QWidget* widget : widgets) {
        const auto* const button = qobject_cast<QAbstractButton*>(widget);
        if (button && withoutMnemonic(button->text()).compare(text, Qt::CaseInsensitive) == 0) {
            found.push_back(widget);
        }
    }
    return visibleFirst(found);
}

QWidget* wellKnown(const QString& name) {
    if (name == QLatin1String("focus")) {
        // Where no window manager makes a window active again after a menu, its own focus counts.
        QWidget* const focused = QApplication::focusWidget();
        return focused || !topmostWindow() ? focused : topmostWindow()->focusWidget();
    }
    if (name == QLatin1String("menu")) {
        return qobject_cast<QMenu*>(QApplication::activePopupWidget());
    }
    return name == QLatin1String("window") ? topmostWindow() : nullptr;
}

List<QAction> actionsOf(const List<QWidget>& widgets) {
    List<QAction> all;
    for (const QWidget* widget : widgets) {
        for (QAction* action : widget->actions()) {
            if (std::find(all.begin(), all.end(), action) == all.end()) {
                all.push_back(action);
            }
        }
    }
    return all;
}

QString pathOf(const QWidget& widget) {
    QString path = widget.objectName();
    for (const QWidget* parent = widget.parentWidget(); parent; parent = parent->parentWidget()) {
        if (!parent->objectName().isEmpty() && !parent->objectName().startsWith("qt_")) {
            return parent->objectName() + "/" + path;
        }
    }
    return path;
}

/// How many letters must be changed, added or left out to make one name of the other.
int distance(const QString& a, const QString& b) {
    std::vector<int> row(static_cast<std::size_t>(b.size()) + 1);
    for (std::size_t j = 0; j < row.size(); ++j) {
        row[j] = static_cast<int>(j);
    }
    for (int i = 0; i < a.size(); ++i) {
        int diagonal = row[0]++;
        for (int j = 0; j < b.size(); ++j) {
            const auto at = static_cast<std::size_t>(j) + 1;
            const int change = diagonal + (a[i] == b[j] ? 0 : 1);
            diagonal = row[at];
            row[at] = std::min({change, row[at] + 1, row[at - 1] + 1});
        }
    }
    return row.back();
}

/// "There is no ...", with the names that look most like it.
QString nothingNamed(const List<QWidget>& widgets, const QString& name) {
    std::vector<std::pair<int, QString>> near;
    const QString wanted = name.toLower();
    for (const QWidget* widget : widgets) {
        const QString other = widget->objectName().toLower();
        if (other.isEmpty() || other.startsWith("qt_")) {
            continue;
        }
        const bool isPart = other.contains(wanted) || wanted.contains(other);
        near.emplace_back(isPart ? 0 : distance(wanted, other), widget->objectName());
    }
    std::sort(near.begin(), near.end());
    near.erase(std::unique(near.begin(), near.end()), near.end());
    QStringList hints;
    for (const auto& [difference, hint] : near) {
        if (hints.size() < kHintCount && difference <= std::max(2, wanted.size() / 3)) {
            hints << hint;
        }
    }
    return QString("There is no control \"%1\" in %2. %3")
        .arg(name, topmostWindow() ? windowLabel(*topmostWindow()) : QString("any window"),
             hints.isEmpty() ? "LOOK alone lists the names."
                             : "Names that are near: " + hints.join(", ") + ".");
}

QString notUnique(const List<QWidget>& found, const QString& name) {
    QStringList paths;
    for (const QWidget* widget : found) {
        paths << pathOf(*widget);
    }
    paths.removeDuplicates();
    return QString("\"%1\" is the name of %2 controls. Put a parent before it: %3.")
        .arg(name)
        .arg(found.size())
        .arg(paths.mid(0, kHintCount).join(", "));
}

}  // namespace

QString withoutMnemonic(const QString& text) {
    QString plain = text.section('\t', 0, 0);
    for (int at = plain.indexOf('&'); at >= 0; at = plain.indexOf('&', at + 1)) {
        plain.remove(at, 1);  // of "&&" the second stays
    }
    return plain;
}

QString windowLabel(const QWidget& window) {
    if (!window.windowTitle().isEmpty()) {
        return window.windowTitle();
    }
    if (qobject_cast<const QMenu*>(&window)) {
        return "Menu";
    }
    return window.objectName().isEmpty() ? window.metaObject()->className() : window.objectName();
}

QString controlLabel(const QWidget& control) {
    const auto* const button = qobject_cast<const QAbstractButton*>(&control);
    if (!control.objectName().isEmpty()) {
        return control.objectName();
    }
    return button ? withoutMnemonic(button->text()) : QString(control.metaObject()->className());
}

QWidget* topmostWindow() {
    const auto first = openWindows();
    return first.empty() ? nullptr : first.front();
}

std::vector<QWidget*> openWindows() {
    std::vector<QWidget*> windows;
    const auto add = [&windows](QWidget* window) {
        const bool isNew = std::find(windows.begin(), windows.end(), window) == windows.end();
        if (window && window->isVisible() && isNew) {
            windows.push_back(window);
        }
    };
    add(QApplication::activePopupWidget());
    if (QWidget* const modal = QApplication::activeModalWidget()) {
        add(modal);
        return windows;
    }
    add(QApplication::activeWindow());
    add(existingMainWindow());
    for (QWidget* window : QApplication::topLevelWidgets()) {
        add(window);
    }
    return windows;
}

NamedObject findNamed(const QString& name) {
    const List<QWidget> widgets = widgetsOf(openWindows());
    List<QWidget> found = byPath(widgets, name);
    if (found.empty()) {
        if (QWidget* const known = wellKnown(name)) {
            return {known, nullptr, {}};
        }
        found = buttonsWithText(widgets, name);
    }
    if (found.size() == 1) {
        return {found.front(), nullptr, {}};
    }
    if (!found.empty()) {
        return {nullptr, nullptr, notUnique(found, name)};
    }
    const List<QAction> actions = named(actionsOf(widgets), name);
    if (!actions.empty()) {
        return {nullptr, actions.front(), {}};
    }
    return {nullptr, nullptr, nothingNamed(widgets, name)};
}

}  // namespace korvex
