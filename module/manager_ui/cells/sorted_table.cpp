// A table over rows in an order of their own.
#include "sorted_table.h"

#include <QHeaderView>

KvSortedTable::KvSortedTable(KvSortedRows* rows, QWidget* parent) : KvCellTable(0, parent), m_rows(rows) {
    rows->setParent(this);
    setModel(rows);
    setEditTriggers(NoEditTriggers);
    horizontalHeader()->setSortIndicator(rows->sortColumn(), Qt::AscendingOrder);
    connect(horizontalHeader(), SIGNAL(sectionClicked(int)), SLOT(slotSectionClicked(int)));
}

void KvSortedTable::setColumnLetters(const std::vector<int>& letters) {
    for (std::size_t column = 0; column < letters.size(); ++column) {
        const int width = letters[column] * fontMetrics().averageCharWidth();
        horizontalHeader()->resizeSection(static_cast<int>(column), width);
    }
    horizontalHeader()->setStretchLastSection(true);
}

void KvSortedTable::slotSectionClicked(int column) {
    const std::vector<int> selected = selectedPlaces();
    selectionModel()->clearSelection();  // thousands of indexes need not be carried along
    m_rows->sectionClicked(column);
    horizontalHeader()->setSortIndicator(m_rows->sortColumn(),
                                         m_rows->isAscending() ? Qt::AscendingOrder : Qt::DescendingOrder);
    selectRowNumbers(m_rows->rowsOf(selected));
}
