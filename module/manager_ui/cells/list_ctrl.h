// A table over rows in an order of their own.
#pragma once

#include "manager_ui/cells/cell_table.h"
#include "manager_ui/cells/sorted_rows.h"

/// Rows are known by column 0. A click on a header sorts by it, again the other way round; the selection
/// stays.
class CKvListCtrl : public KvCellTable {
    Q_OBJECT
public:
    /// Takes the rows over.
    explicit CKvListCtrl(KvSortedRows* rows, QWidget* parent = nullptr);

    /// Widths in average letters of the font, more where a header needs it. One column takes the room that
    /// the others leave, and is never narrower than that.
    void setColumnLetters(const std::vector<int>& letters, int filling);
    int GetItemCount() const { return m_rows->rowCount(); }
    /// The first selected row behind one (-1: of all); -1 when there is none.
    int GetNextItem(int row) const;
    /// Makes it the only selected one, in sight and with the focus; nothing is selected when there is no such
    /// row.
    void SetLastSelectItem(int row);
    void ClearSelectItemState() { selectionModel()->clearSelection(); }
    /// Selected rows by their places in the data, in the order of the rows.
    std::vector<int> selectedPlaces() const { return m_rows->placesAt(selectedRowNumbers()); }

public Q_SLOTS:
    void slotSectionClicked(int column);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    int leastWidthOf(int column) const;

    KvSortedRows* m_rows;
    int m_filling = -1;  ///< the column that takes the room; -1 none
    int m_leastFilling = 0;
};
