// A table over rows in an order of their own.
#include "list_ctrl.h"

#include <QHeaderView>

#include <algorithm>

namespace {

constexpr int kHeaderRoom = 16;

}  // namespace

CKvListCtrl::CKvListCtrl(KvSortedRows* rows, QWidget* parent) : KvCellTable(0, parent), m_rows(rows) {
    rows->setParent(this);
    setModel(rows);
    setEditTriggers(NoEditTriggers);
    horizontalHeader()->setSortIndicator(rows->sortColumn(), Qt::AscendingOrder);
    connect(horizontalHeader(), SIGNAL(sectionClicked(int)), SLOT(slotSectionClicked(int)));
}

// ---- selection ----

int CKvListCtrl::GetNextItem(int row) const {
    const std::vector<int> rows = selectedRowNumbers();
    const auto next = std::upper_bound(rows.begin(), rows.end(), row);
    return next == rows.end() ? -1 : *next;
}

void CKvListCtrl::SetLastSelectItem(int row) {
    const QModelIndex index = m_rows->index(row, 0);
    if (index.isValid()) {
        makeCurrent(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    } else {
        ClearSelectItemState();
    }
}

// ---- columns ----

void CKvListCtrl::setColumnLetters(const std::vector<int>& letters, int filling) {
    for (std::size_t column = 0; column < letters.size(); ++column) {
        const int section = static_cast<int>(column);
        const int width = letters[column] * fontMetrics().averageCharWidth();
        horizontalHeader()->resizeSection(section, std::max(width, leastWidthOf(section)));
    }
    m_filling = filling;
    m_leastFilling = horizontalHeader()->sectionSize(filling);
}

void CKvListCtrl::resizeEvent(QResizeEvent* event) {
    KvCellTable::resizeEvent(event);
    if (m_filling < 0) return;
    const int room = viewport()->width() - horizontalHeader()->length();
    const int width = horizontalHeader()->sectionSize(m_filling) + room;
    horizontalHeader()->resizeSection(m_filling, std::max(width, m_leastFilling));
}

/// With room for the mark of the sorted column.
int CKvListCtrl::leastWidthOf(int column) const {
    const QString text = model()->headerData(column, Qt::Horizontal).toString();
    return fontMetrics().horizontalAdvance(text) + kHeaderRoom;
}

void CKvListCtrl::slotSectionClicked(int column) {
    const std::vector<int> selected = selectedPlaces();
    ClearSelectItemState();  // thousands of indexes need not be carried along
    m_rows->sectionClicked(column);
    horizontalHeader()->setSortIndicator(m_rows->sortColumn(),
                                         m_rows->isAscending() ? Qt::AscendingOrder : Qt::DescendingOrder);
    selectRowNumbers(m_rows->rowsOf(selected));
}
