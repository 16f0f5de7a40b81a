// CLICK, TICK and CHOOSE: what a user does with the mouse.
#include "host/ui/script/action_parts.h"
#include "host/ui/script/item_cells.h"
#include "host/ui/script/real_events.h"
#include "host/ui/script/widget_names.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QListView>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QRadioButton>
#include <QStyleOptionButton>
#include <QStyleOptionGroupBox>
#include <QTabWidget>
#include <QToolBar>

#include <optional>

namespace korvex {

namespace {

/// How long a sub-menu may take to open, in milliseconds.
constexpr int kMenuDelay = 1000;

/// Where to click: a point of a widget.
struct Target {
    QPointer<QWidget> widget;
    QPoint point;
};

QString noItem(const QWidget& widget, const QString& item) {
    return QString("%1 has no item \"%2\". LOOK %1 lists them.").arg(controlLabel(widget), item);
}

/// "12,34"; nothing for other texts.
std::optional<QPoint> pointOf(const QString& text) {
    bool isX = false;
    bool isY = false;
    const QPoint point(text.section(',', 0, 0).toInt(&isX), text.section(',', 1).toInt(&isY));
    return isX && isY ? std::optional(point) : std::nullopt;
}

/// The middle of a button's box, since not all of a check box's width takes clicks; else of the widget.
QPoint middleOf(const QWidget& widget) {
    if (qobject_cast<const QCheckBox*>(&widget) || qobject_cast<const QRadioButton*>(&widget)) {
        QStyleOptionButton option;
        option.initFrom(&widget);
        const auto part = qobject_cast<const QCheckBox*>(&widget) ? QStyle::SE_CheckBoxIndicator
                                                                  : QStyle::SE_RadioButtonIndicator;
        return widget.style()->subElementRect(part, &option, &widget).center();
    }
    const auto* const group = qobject_cast<const QGroupBox*>(&widget);
    if (group && group->isCheckable()) {
        QStyleOptionGroupBox option;
        option.initFrom(group);
        option.text = group->title();
        option.subControls =
            QStyle::SC_GroupBoxCheckBox | QStyle::SC_GroupBoxLabel | QStyle::SC_GroupBoxFrame;
        return group->style()
            ->subControlRect(QStyle::CC_GroupBox, &option, QStyle::SC_GroupBoxCheckBox, group)
            .center();
    }
    return widget.rect().center();
}

/// The view may show only a part of the cell.
QRect visiblePart(QAbstractItemView& view, const QModelIndex& index) {
    view.scrollTo(index);
    return view.visualRect(index) & view.viewport()->rect();
}

bool cellTarget(QAbstractItemView& view, const QString& where, bool atBox, Target& target, QString& trouble) {
    const QModelIndex index = findCell(view, where, trouble);
    if (!index.isValid()) {
        return false;
    }
    QRect place = visiblePart(view, index);
    if (atBox) {
        QStyleOptionViewItem option;
        option.initFrom(&view);
        option.rect = view.visualRect(index);
        option.features = QStyleOptionViewItem::HasCheckIndicator;
        place = view.style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, &view);
    }
    if (place.isEmpty()) {
        trouble = QString("The cell \"%1\" of %2 is too small to be clicked.").arg(where, controlLabel(view));
        return false;
    }
    target = {view.viewport(), place.center()};
    return true;
}

int tabOf(const QTabBar& bar, const QString& item) {
    for (int i = 0; i < bar.count(); ++i) {
        if (withoutMnemonic(bar.tabText(i)).compare(item, Qt::CaseInsensitive) == 0) {
            return i;
        }
    }
    const int number = item.toInt();
    return number >= 1 && number <= bar.count() ? number - 1 : -1;
}

int sectionOf(const QHeaderView& header, const QString& item) {
    const auto* const view = qobject_cast<const QAbstractItemView*>(header.parentWidget());
    int shown = 0;
    for (int i = 0; i < header.count(); ++i) {
        const int section = header.logicalIndex(i);
        if (header.isSectionHidden(section)) {
            continue;
        }
        const QString text = view ? columnText(*view, section) : QString();
        if (text.compare(item, Qt::CaseInsensitive) == 0 || QString::number(++shown) == item) {
            return section;
        }
    }
    return -1;
}

QAction* actionOf(const QWidget& holder, const QString& item) {
    for (QAction* action : holder.actions()) {
        const bool isIt = action->objectName() == item ||
                          withoutMnemonic(action->text()).compare(item, Qt::CaseInsensitive) == 0;
        if (isIt && action->isVisible() && !action->isSeparator()) {
            return action;
        }
    }
    return nullptr;
}

bool tabTarget(QTabBar& bar, const QString& item, Target& target, QString& trouble) {
    const int tab = tabOf(bar, item);
    if (tab < 0) {
        trouble = noItem(bar, item);
        return false;
    }
    target = {&bar, bar.tabRect(tab).center()};
    return true;
}

bool sectionTarget(QHeaderView& header, const QString& item, Target& target, QString& trouble) {
    const int section = sectionOf(header, item);
    if (section < 0) {
        trouble = noItem(header, item);
        return false;
    }
    const int along = header.sectionViewportPosition(section) + header.sectionSize(section) / 2;
    target = {header.viewport(), header.orientation() == Qt::Horizontal ? QPoint(along, header.height() / 2)
                                                                        : QPoint(header.width() / 2, along)};
    return true;
}

/// `Holder` is a menu or a menu bar.
template <class Holder>
bool actionTarget(Holder& holder, const QString& item, Target& target, QString& trouble) {
    QAction* const action = actionOf(holder, item);
    if (!action || !action->isEnabled()) {
        trouble = action ? QString("\"%1\" is disabled.").arg(item) : noItem(holder, item);
        return false;
    }
    target = {&holder, holder.actionGeometry(action).center()};
    return true;
}

/// The place that an item's text or a point means in a control.
bool findTarget(QWidget& widget, const QString& where, Target& target, QString& trouble) {
    const bool isPixels = where.startsWith('@');
    if (where.isEmpty()) {
        target = {&widget, middleOf(widget)};
        return true;
    }
    auto* const header = qobject_cast<QHeaderView*>(&widget);
    auto* const view = qobject_cast<QAbstractItemView*>(&widget);
    if (header && !isPixels) {
        return sectionTarget(*header, where, target, trouble);
    }
    if (view && !isPixels) {
        return cellTarget(*view, where, false, target, trouble);
    }
    if (auto* const tabs = qobject_cast<QTabWidget*>(&widget); tabs && !isPixels) {
        return tabTarget(*tabs->tabBar(), where, target, trouble);
    }
    if (auto* const bar = qobject_cast<QTabBar*>(&widget); bar && !isPixels) {
        return tabTarget(*bar, where, target, trouble);
    }
    if (auto* const menu = qobject_cast<QMenu*>(&widget); menu && !isPixels) {
        return actionTarget(*menu, where, target, trouble);
    }
    if (auto* const bar = qobject_cast<QMenuBar*>(&widget); bar && !isPixels) {
        return actionTarget(*bar, where, target, trouble);
    }
    const auto point = pointOf(isPixels ? where.mid(1) : where);
    if (!point) {
        trouble = QString("\"%1\" is no place in %2: enter x,y in pixels.").arg(where, controlLabel(widget));
        return false;
    }
    target = {view ? view->viewport() : &widget, *point};
    return true;
}

/// Clicks where a user could.
QString clickTarget(const Target& target, const MouseClick& click) {
    QWidget& widget = *target.widget;
    if (!widget.rect().contains(target.point)) {
        return QString("%1,%2 is outside of %3, which is %4 x %5.")
            .arg(target.point.x())
            .arg(target.point.y())
            .arg(controlLabel(widget))
            .arg(widget.width())
            .arg(widget.height());
    }
    const QPoint inWindow = widget.mapTo(widget.window(), target.point);
    QWidget* const hit = widget.window()->childAt(inWindow);
    if (!widget.isWindow() && hit != &widget && !widget.isAncestorOf(hit)) {
        return QString("%1 is hidden there%2.")
            .arg(controlLabel(widget), hit ? " behind " + controlLabel(*hit) : QString());
    }
    clickAt(widget, target.point, click);
    return {};
}

/// Takes words that say how to click off the front.
MouseClick takeClick(Words& words) {
    MouseClick click;
    for (;;) {
        Words ahead = words;
        const Word word = ahead.next();
        if (word.is("right") || word.is("middle")) {
            click.button = word.is("right") ? Qt::RightButton : Qt::MiddleButton;
        } else if (word.is("double")) {
            click.isDouble = true;
        } else if (word.is("shift") || word.is("ctrl") || word.is("alt")) {
            click.modifiers |= word.is("shift")  ? Qt::ShiftModifier
                               : word.is("ctrl") ? Qt::ControlModifier
                                                 : Qt::AltModifier;
        } else if (!word.is("left")) {
            return click;
        }
        words = ahead;
    }
}

/// A button of a tool bar, an item of the open menu, or the action itself.
QString clickAction(QAction& action) {
    if (!action.isEnabled()) {
        return QString("\"%1\" is disabled.").arg(withoutMnemonic(action.text()));
    }
    for (QWidget* holder : action.associatedWidgets()) {
        auto* const bar = qobject_cast<QToolBar*>(holder);
        QWidget* const button = bar ? bar->widgetForAction(&action) : nullptr;
        if (button && button->isVisible()) {
            return clickTarget({button, button->rect().center()}, {});
        }
        auto* const menu = qobject_cast<QMenu*>(holder);
        if (menu && menu->isVisible()) {
            return clickTarget({menu, menu->actionGeometry(&action).center()}, {});
        }
    }
    action.trigger();
    return {};
}

QString chooseInCombo(QComboBox& combo, const QString& item) {
    int at = combo.findText(item, Qt::MatchFixedString | Qt::MatchCaseSensitive);
    at = at < 0 ? combo.findText(item, Qt::MatchFixedString) : at;
    if (at < 0) {
        return noItem(combo, item);
    }
    focusOn(combo);
    combo.showPopup();
    QAbstractItemView* const view = combo.view();
    view->setCurrentIndex(combo.model()->index(at, combo.modelColumn(), combo.rootModelIndex()));
    pressKey(*view, Qt::Key_Return, Qt::NoModifier, "\r");
    return {};
}

/// Goes through sub-menus, as the mouse does; all but the last item of the path open one.
template <class Holder>
QString chooseInMenu(Holder& holder, const QString& path) {
    Target target;
    QString trouble;
    const bool isWhole = actionOf(holder, path) != nullptr;
    const QString first = isWhole ? path : path.section('/', 0, 0);
    const QString rest = isWhole ? QString() : path.section('/', 1);
    if (!actionTarget(holder, first, target, trouble)) {
        return trouble;
    }
    QMenu* const below = rest.isEmpty() ? nullptr : actionOf(holder, first)->menu();
    if (!rest.isEmpty() && !below) {
        return noItem(holder, path);
    }
    trouble = clickTarget(target, {});
    if (!below || !trouble.isEmpty()) {
        return trouble;
    }
    letTimePass(kMenuDelay, [below] { return below->isVisible(); });
    return below->isVisible() ? chooseInMenu(*below, rest)
                              : QString("The menu \"%1\" does not open.").arg(first);
}

QString chooseInView(QAbstractItemView& view, const QString& item) {
    Target target;
    QString trouble;
    return cellTarget(view, item, false, target, trouble) ? clickTarget(target, {}) : trouble;
}

/// 0, 1 or 2 of a control that can be ticked; nothing of others.
std::optional<int> tickOf(const QWidget& widget) {
    if (const auto* const box = qobject_cast<const QCheckBox*>(&widget)) {
        return box->checkState() == Qt::PartiallyChecked ? 2 : box->isChecked() ? 1 : 0;
    }
    const auto* const button = qobject_cast<const QAbstractButton*>(&widget);
    const auto* const group = qobject_cast<const QGroupBox*>(&widget);
    if (button && button->isCheckable()) {
        return button->isChecked() ? 1 : 0;
    }
    return group && group->isCheckable() ? std::optional(group->isChecked() ? 1 : 0) : std::nullopt;
}

/// Clicks until it is as wanted; three states are the most that there are.
QString tickControl(QWidget& widget, int wanted) {
    if (!tickOf(widget)) {
        return QString("%1 cannot be ticked.").arg(controlLabel(widget));
    }
    const QPointer<QWidget> left(&widget);
    for (int i = 0; i < 2 && left && tickOf(widget) != wanted; ++i) {
        const QString trouble = clickTarget({&widget, middleOf(widget)}, {});
        if (!trouble.isEmpty()) {
            return trouble;
        }
    }
    return left && tickOf(widget) != wanted ? QString("%1 does not take the tick.").arg(controlLabel(widget))
                                            : QString();
}

QString tickCell(QAbstractItemView& view, const QString& where, int wanted) {
    QString trouble;
    const QPersistentModelIndex index = findCell(view, where, trouble);
    const auto state = [&index] {
        const int tick = index.data(Qt::CheckStateRole).toInt();
        return tick == Qt::PartiallyChecked ? 2 : tick == Qt::Checked ? 1 : 0;
    };
    if (index.isValid() && !index.data(Qt::CheckStateRole).isValid()) {
        return QString("The cell \"%1\" of %2 cannot be ticked.").arg(where, controlLabel(view));
    }
    for (int i = 0; i < 2 && index.isValid() && state() != wanted; ++i) {
        Target target;
        trouble = cellTarget(view, where, true, target, trouble) ? clickTarget(target, {}) : trouble;
    }
    return trouble.isEmpty() && index.isValid() && state() != wanted
               ? QString("The cell \"%1\" of %2 does not take the tick.").arg(where, controlLabel(view))
               : trouble;
}

}  // namespace

QString clickAction(Words words) {
    Words ahead = words;
    const NamedObject found = findNamed(ahead.next().text);
    if (found.action) {
        return clickAction(*found.action);
    }
    QString trouble;
    QWidget* const widget = usableControl(words, trouble);
    if (!widget) {
        return trouble;
    }
    const MouseClick click = takeClick(words);
    Target target;
    return findTarget(*widget, words.restAsWord(), target, trouble) ? clickTarget(target, click) : trouble;
}

QString tickAction(Words words) {
    QString trouble;
    QWidget* const widget = usableControl(words, trouble);
    if (!widget) {
        return trouble;
    }
    const QString rest = words.rest().trimmed();
    const QString value = rest.section(' ', -1);
    if (value != "0" && value != "1" && value != "2") {
        return QString("\"%1\" is no tick: enter 0 for clear, 1 for ticked, 2 for in between.").arg(value);
    }
    const QString where = Words(rest.left(rest.size() - 1)).restAsWord();
    auto* const view = qobject_cast<QAbstractItemView*>(widget);
    return view ? tickCell(*view, where, value.toInt()) : tickControl(*widget, value.toInt());
}

QString chooseAction(Words words) {
    QString trouble;
    QWidget* const widget = usableControl(words, trouble);
    if (!widget) {
        return trouble;
    }
    const QString item = words.restAsWord();
    if (auto* const combo = qobject_cast<QComboBox*>(widget)) {
        return chooseInCombo(*combo, item);
    }
    if (auto* const menu = qobject_cast<QMenu*>(widget)) {
        return chooseInMenu(*menu, item);
    }
    if (auto* const bar = qobject_cast<QMenuBar*>(widget)) {
        return chooseInMenu(*bar, item);
    }
    if (auto* const view = qobject_cast<QAbstractItemView*>(widget);
        view && !qobject_cast<QHeaderView*>(widget)) {
        return chooseInView(*view, item);
    }
    Target target;
    return findTarget(*widget, item, target, trouble) ? clickTarget(target, {}) : trouble;
}

}  // namespace korvex
