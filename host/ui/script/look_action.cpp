// LOOK: what a control shows, as text.
#include "host/ui/script/action_parts.h"
#include "host/ui/script/item_cells.h"
#include "host/ui/script/widget_names.h"

#include <QAbstractSpinBox>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QSlider>
#include <QTabWidget>
#include <QTextEdit>

namespace korvex {

namespace {

constexpr std::size_t kMostRows = 200;
const char* const kGap = " | ";

QString quoted(const QString& text) { return "\"" + text + "\""; }

QString listed(const QStringList& items) {
    QStringList all;
    for (const QString& item : items) {
        all << quoted(item);
    }
    return all.join(kGap);
}

QString buttonValue(const QAbstractButton& button) {
    QString value = quoted(withoutMnemonic(button.text().isEmpty() ? button.toolTip() : button.text()));
    const auto* const box = qobject_cast<const QCheckBox*>(&button);
    if (box && box->checkState() == Qt::PartiallyChecked) {
        return value + " in between";
    }
    return button.isCheckable() ? value + (button.isChecked() ? " ticked" : " clear") : value;
}

QString comboValue(const QComboBox& combo) {
    QStringList items;
    for (int i = 0; i < combo.count(); ++i) {
        items << combo.itemText(i);
    }
    return quoted(combo.currentText()) + (items.isEmpty() ? QString() : " of " + listed(items));
}

QString tabsValue(const QTabBar& bar) {
    QStringList tabs;
    for (int i = 0; i < bar.count(); ++i) {
        tabs << withoutMnemonic(bar.tabText(i));
    }
    return quoted(tabs.value(bar.currentIndex())) + " of " + listed(tabs);
}

QString menuValue(const QWidget& menu) {
    QStringList items;
    for (const QAction* action : menu.actions()) {
        if (action->isVisible() && !action->isSeparator()) {
            items << quoted(withoutMnemonic(action->text())) +
                         (action->isCheckable() ? action->isChecked() ? " ticked" : " clear" : "") +
                         (action->isEnabled() ? "" : " disabled");
        }
    }
    return items.join(kGap);
}

QString rowText(const QAbstractItemView& view, const QModelIndex& row) {
    QStringList cells;
    bool isSelected = false;
    for (const int column : shownColumns(view)) {
        const QModelIndex index = row.sibling(row.row(), column);
        cells << cellText(index);
        isSelected = isSelected || view.selectionModel()->isSelected(index);
    }
    int depth = 0;
    for (QModelIndex above = row.parent(); above.isValid() && above != view.rootIndex();
         above = above.parent()) {
        ++depth;
    }
    return QString(2 * depth, ' ') + cells.join(kGap) + (isSelected ? "  (selected)" : "");
}

/// The header and the rows, numbered as CLICK counts them.
QString viewValue(const QAbstractItemView& view) {
    const std::vector<QModelIndex> rows = shownRows(view, kMostRows + 1);
    QStringList header;
    for (const int column : shownColumns(view)) {
        header << columnText(view, column);
    }
    const bool hasHeader = !qobject_cast<const QListView*>(&view) && !header.join(QString()).isEmpty();
    QString text = hasHeader ? header.join(kGap) : QString();
    for (std::size_t i = 0; i < std::min(rows.size(), kMostRows); ++i) {
        text += QString("\n  %1: %2").arg(i + 1).arg(rowText(view, rows[i]));
    }
    if (rows.empty()) {
        text += hasHeader ? "\n  (no rows)" : "(no rows)";
    }
    return rows.size() > kMostRows ? text + QString("\n  ... only the first %1").arg(kMostRows) : text;
}

QString headerValue(const QHeaderView& header) {
    const auto* const view = qobject_cast<const QAbstractItemView*>(header.parentWidget());
    QStringList sections;
    for (const int column : view ? shownColumns(*view) : std::vector<int>()) {
        const bool isSorted = header.isSortIndicatorShown() && header.sortIndicatorSection() == column;
        sections << columnText(*view, column) + (!isSorted ? ""
                                                 : header.sortIndicatorOrder() == Qt::AscendingOrder
                                                     ? " (ascending)"
                                                     : " (descending)");
    }
    return sections.join(kGap);
}

/// Empty for controls that show nothing of their own.
QString valueOf(const QWidget& widget) {
    if (const auto* const button = qobject_cast<const QAbstractButton*>(&widget)) {
        return buttonValue(*button);
    }
    if (const auto* const edit = qobject_cast<const QLineEdit*>(&widget)) {
        return quoted(edit->text());
    }
    if (const auto* const combo = qobject_cast<const QComboBox*>(&widget)) {
        return comboValue(*combo);
    }
    if (const auto* const header = qobject_cast<const QHeaderView*>(&widget)) {
        return headerValue(*header);
    }
    if (const auto* const view = qobject_cast<const QAbstractItemView*>(&widget)) {
        return viewValue(*view);
    }
    if (const auto* const edit = qobject_cast<const QTextEdit*>(&widget)) {
        return quoted(edit->toPlainText());
    }
    if (const auto* const edit = qobject_cast<const QPlainTextEdit*>(&widget)) {
        return quoted(edit->toPlainText());
    }
    if (const auto* const spin = qobject_cast<const QAbstractSpinBox*>(&widget)) {
        return quoted(spin->text());
    }
    if (const auto* const label = qobject_cast<const QLabel*>(&widget)) {
        return label->text().isEmpty() ? QString() : quoted(label->text());
    }
    if (const auto* const tabs = qobject_cast<const QTabWidget*>(&widget)) {
        return tabsValue(*tabs->tabBar());
    }
    if (const auto* const bar = qobject_cast<const QTabBar*>(&widget)) {
        return tabsValue(*bar);
    }
    if (const auto* const progress = qobject_cast<const QProgressBar*>(&widget)) {
        return QString("%1 of %2").arg(progress->value()).arg(progress->maximum());
    }
    if (const auto* const slider = qobject_cast<const QSlider*>(&widget)) {
        return QString::number(slider->value());
    }
    if (const auto* const group = qobject_cast<const QGroupBox*>(&widget)) {
        const QString state = !group->isCheckable() ? "" : group->isChecked() ? " ticked" : " clear";
        return quoted(withoutMnemonic(group->title())) + state;
    }
    const bool isMenu = qobject_cast<const QMenu*>(&widget) || qobject_cast<const QMenuBar*>(&widget);
    return isMenu ? menuValue(widget) : QString();
}

QString stateOf(const QWidget& widget) {
    return QString(widget.isEnabled() ? "" : ", disabled") + (widget.isVisible() ? "" : ", hidden");
}

QString description(const QWidget& widget) {
    const QString value = valueOf(widget);
    const QString state = stateOf(widget);
    const bool isView = value.contains('\n') && qobject_cast<const QAbstractItemView*>(&widget);
    const QString head = isView ? value.section('\n', 0, 0) : value;
    const QString title = value.isEmpty() && widget.isWindow() ? quoted(widget.windowTitle()) : head;
    return controlLabel(widget) + ": " + title + state + (isView ? "\n" + value.section('\n', 1) : QString());
}

/// The window's title and its named controls.
QString overview(const QWidget& window) {
    QStringList lines(windowLabel(window));
    if (qobject_cast<const QMenu*>(&window)) {
        lines[0] += ": " + menuValue(window);
    }
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        const bool isInner = widget->objectName().isEmpty() || widget->objectName().startsWith("qt_");
        if (!isInner && widget->isVisible() && !valueOf(*widget).isEmpty()) {
            lines << "  " + description(*widget).replace("\n", "\n  ");
        }
    }
    return lines.join("\n");
}

}  // namespace

QString lookAction(Words words) {
    const QString name = words.next().text;
    if (name.isEmpty()) {
        const QWidget* const window = topmostWindow();
        tell(window ? overview(*window) : QString("No window is open."));
        return {};
    }
    const NamedObject found = findNamed(name);
    if (found.action) {
        tell(QString("%1: %2%3")
                 .arg(name, quoted(withoutMnemonic(found.action->text())),
                      found.action->isEnabled() ? "" : ", disabled"));
    }
    auto* const view = qobject_cast<QAbstractItemView*>(found.widget);
    if (view && !words.isEmpty()) {
        QString trouble;
        const QModelIndex index = findCell(*view, words.restAsWord(), trouble);
        if (index.isValid()) {
            tell(QString("%1 %2: %3").arg(name, words.restAsWord(), quoted(cellText(index))));
        }
        return trouble;
    }
    if (found.widget) {
        tell(description(*found.widget));
    }
    return found.trouble;
}

}  // namespace korvex
