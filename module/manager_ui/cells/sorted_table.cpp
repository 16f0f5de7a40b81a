// A table over rows in an order of their own.
#include "sorted_table.h"

#include <QHeaderView>

namespace {

constexpr int kHeaderRoom = 16;

}  // namespace

KvSortedTable::KvSortedTable(KvSortedRows* rows, QWidget* parent) : KvCellTable(0, parent), m_rows(rows) {
    rows->setParent(this);
    setModel(rows);
    setEditTriggers(NoEditTriggers);
    horizontalHeader()->setSortIndicator(rows->sortColumn(), Qt::AscendingOrder);
    connect(horizontalHeader(), SIGNAL(sectionClicked(int)), SLOT(slotSectionClicked(int)));
}

void KvSortedTable::setColumnLetters(const std::vector<int>& letters, int filling) {
    for (std::size_t column = 0; column < letters.size(); ++column) {
        const int section = static_cast<int>(column);
        const int width = letters[column] * fontMetrics().averageCharWidth();
        horizontalHeader()->resizeSection(section, std::max(width, leastWidthOf(section)));
    }
    m_filling = filling;
    m_leastFilling = horizontalHeader()->sectionSize(filling);
}

void KvSortedTable::resizeEvent(QResizeEvent* event) {
    KvCellTable::resizeEvent(event);
    if (m_filling < 0) return;
    const int room = viewport()->width() - horizontalHeader()->length();
    const int width = horizontalHeader()->sectionSize(m_filling) + room;
    horizontalHeader()->resizeSection(m_filling, std::max(width, m_leastFilling));
}

/// With room for the mark of the sorted column.
int KvSortedTable::leastWidthOf(int column) const {
    const QString text = model()->headerData(column, Qt::Horizontal).toString();
    return fontMetrics().horizontalAdvance(text) + kHeaderRoom;
}

void KvSortedTable::slotSectionClicked(int column) {
    const std::vector<int> selected = selectedPlaces();
    selectionModel()->clearSelection();  // thousands of indexes need not be carried along
    m_rows->sectionClicked(column);
    horizontalHeader()->setSortIndicator(m_rows->sortColumn(),
                                         m_rows->isAscending() ? Qt::AscendingOrder : Qt::DescendingOrder);
    selectRowNumbers(m_rows->rowsOf(selected));
}
