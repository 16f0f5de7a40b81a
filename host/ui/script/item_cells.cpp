// Finds cells of views by numbers and texts.
#include "host/ui/script/item_cells.h"

#include "host/ui/script/widget_names.h"

#include <QHeaderView>
#include <QListView>
#include <QTableView>
#include <QTreeView>

#include <limits>

namespace korvex {

namespace {

constexpr std::size_t kAll = std::numeric_limits<std::size_t>::max();

QHeaderView* columnHeader(const QAbstractItemView& view) {
    if (const auto* const table = qobject_cast<const QTableView*>(&view)) {
        return table->horizontalHeader();
    }
    const auto* const tree = qobject_cast<const QTreeView*>(&view);
    return tree ? tree->header() : nullptr;
}

bool isHiddenRow(const QAbstractItemView& view, int row) {
    if (const auto* const table = qobject_cast<const QTableView*>(&view)) {
        return table->isRowHidden(row);
    }
    const auto* const list = qobject_cast<const QListView*>(&view);
    return list && list->isRowHidden(row);
}

bool isText(const QString& shown, const QString& wanted) {
    return shown.compare(wanted, Qt::CaseInsensitive) == 0;
}

/// A number from 1 to `count` as a position; -1 when it is none.
int positionOf(const QString& text, std::size_t count) {
    bool isNumber = false;
    const int number = text.trimmed().toInt(&isNumber);
    return isNumber && number >= 1 && static_cast<std::size_t>(number) <= count ? number - 1 : -1;
}

class CellFinder {
public:
    explicit CellFinder(QAbstractItemView& view) : m_view(view), m_columns(shownColumns(view)) {}

    QModelIndex find(const QString& where) {
        if (!m_view.model() || m_columns.empty()) {
            return {};
        }
        const int comma = where.lastIndexOf(',');
        const int column = comma < 0 ? -1 : columnOf(where.mid(comma + 1).trimmed());
        const QModelIndex row = column < 0 ? QModelIndex() : rowOf(where.left(comma).trimmed());
        if (row.isValid()) {
            return row.sibling(row.row(), column);
        }
        const QModelIndex byText = cellWithText(where);
        if (byText.isValid()) {
            return byText;
        }
        const QModelIndex byNumber = rowOf(where);
        return byNumber.isValid() ? byNumber : byPath(where);
    }

private:
    const std::vector<QModelIndex>& rows() {
        if (m_rows.empty()) {
            m_rows = shownRows(m_view, kAll);
        }
        return m_rows;
    }

    /// Column by column: names, which are looked for most, stand in one of the first.
    QModelIndex cellWithText(const QString& text) {
        for (const int column : m_columns) {
            for (const QModelIndex& row : rows()) {
                const QModelIndex index = row.sibling(row.row(), column);
                if (isText(index.data().toString(), text)) {
                    return index;
                }
            }
        }
        return {};
    }

    QModelIndex rowOf(const QString& text) {
        const int position = positionOf(text, rows().size());
        return position >= 0 ? rows()[static_cast<std::size_t>(position)] : cellWithText(text);
    }

    int columnOf(const QString& text) const {
        const int position = positionOf(text, m_columns.size());
        if (position >= 0) {
            return m_columns[static_cast<std::size_t>(position)];
        }
        for (const int column : m_columns) {
            if (isText(columnText(m_view, column), text)) {
                return column;
            }
        }
        return -1;
    }

    QModelIndex childWithText(const QModelIndex& parent, const QString& text) {
        const QAbstractItemModel& model = *m_view.model();
        for (int row = 0; row < model.rowCount(parent); ++row) {
            const QModelIndex index = model.index(row, m_columns.front(), parent);
            if (isText(index.data().toString(), text)) {
                return index;
            }
        }
        return {};
    }

    QModelIndex byPath(const QString& path) {
        auto* const tree = qobject_cast<QTreeView*>(&m_view);
        QModelIndex index = m_view.rootIndex();
        for (const QString& part : path.split('/')) {
            if (tree && index.isValid()) {
                tree->expand(index.sibling(index.row(), 0));
            }
            index = childWithText(index.sibling(index.row(), 0), part);
            if (!index.isValid()) {
                return {};
            }
        }
        return index;
    }

    QAbstractItemView& m_view;
    std::vector<int> m_columns;
    std::vector<QModelIndex> m_rows;
};

}  // namespace

std::vector<int> shownColumns(const QAbstractItemView& view) {
    std::vector<int> columns;
    if (const auto* const list = qobject_cast<const QListView*>(&view)) {
        return {list->modelColumn()};
    }
    const QHeaderView* const header = columnHeader(view);
    for (int i = 0; header && i < header->count(); ++i) {
        const int column = header->logicalIndex(i);
        if (!header->isSectionHidden(column)) {
            columns.push_back(column);
        }
    }
    return columns;
}

std::vector<QModelIndex> shownRows(const QAbstractItemView& view, std::size_t limit) {
    std::vector<QModelIndex> rows;
    const std::vector<int> columns = shownColumns(view);
    const QAbstractItemModel* const model = view.model();
    if (!model || columns.empty()) {
        return rows;
    }
    if (const auto* const tree = qobject_cast<const QTreeView*>(&view)) {
        QModelIndex index = model->index(0, 0, view.rootIndex());
        if (index.isValid() && tree->isRowHidden(0, view.rootIndex())) {
            index = tree->indexBelow(index);
        }
        for (; index.isValid() && rows.size() < limit; index = tree->indexBelow(index)) {
            rows.push_back(index.sibling(index.row(), columns.front()));
        }
        return rows;
    }
    const int count = model->rowCount(view.rootIndex());
    for (int row = 0; row < count && rows.size() < limit; ++row) {
        if (!isHiddenRow(view, row)) {
            rows.push_back(model->index(row, columns.front(), view.rootIndex()));
        }
    }
    return rows;
}

QString cellText(const QModelIndex& index) {
    const QString text = index.data().toString();
    const QVariant tick = index.data(Qt::CheckStateRole);
    const QString box = !tick.isValid()                        ? QString()
                        : tick.toInt() == Qt::Checked          ? QStringLiteral("[x]")
                        : tick.toInt() == Qt::PartiallyChecked ? QStringLiteral("[-]")
                                                               : QStringLiteral("[ ]");
    if (!text.isEmpty() || !box.isEmpty()) {
        return box.isEmpty() || text.isEmpty() ? box + text : box + " " + text;
    }
    const QString spoken = index.data(Qt::AccessibleTextRole).toString();
    return spoken.isEmpty() ? index.data(Qt::ToolTipRole).toString() : spoken;
}

QString columnText(const QAbstractItemView& view, int column) {
    const QAbstractItemModel* const model = view.model();
    for (const int role : {Qt::DisplayRole, Qt::AccessibleTextRole, Qt::ToolTipRole}) {
        const QString text = model->headerData(column, Qt::Horizontal, role).toString();
        if (!text.isEmpty()) {
            return text;
        }
    }
    return {};
}

QModelIndex findCell(QAbstractItemView& view, const QString& where, QString& trouble) {
    const QModelIndex found = CellFinder(view).find(where);
    if (!found.isValid()) {
        trouble = QString("%1 shows no cell \"%2\". LOOK %1 lists its rows.").arg(controlLabel(view), where);
    }
    return found;
}

}  // namespace korvex
