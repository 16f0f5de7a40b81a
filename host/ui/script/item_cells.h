// Cells of lists, tables and trees as a person counts and reads them.
#pragma once

#include <QModelIndex>
#include <QString>

#include <vector>

class QAbstractItemView;

namespace korvex {

/// The columns that are shown, from left to right.
std::vector<int> shownColumns(const QAbstractItemView& view);
/// The rows that are shown, from the top: not the hidden ones, nor those below closed items. At most `limit`;
/// each as the cell in the first shown column.
std::vector<QModelIndex> shownRows(const QAbstractItemView& view, std::size_t limit);

/// What a cell shows: its text, else its tick, else what it tells screen readers or as a tool tip.
QString cellText(const QModelIndex& index);
/// The header's text of a column; empty when there is none.
QString columnText(const QAbstractItemView& view, int column);

/// The cell that `where` means: a text that it shows, a path of texts through a tree ("All/Doors"), or "row",
/// or "row,column". Rows are numbers from 1, as they are shown, or texts of their cells; columns are numbers
/// from 1 or texts of the header. Opens the items of a path. Invalid, with a reason in `trouble`, when there
/// is none.
QModelIndex findCell(QAbstractItemView& view, const QString& where, QString& trouble);

}  // namespace korvex
