// A table of rows that are edited by clicks on their cells.
#pragma once

#include <QDialog>
#include <QPersistentModelIndex>
#include <QTableView>

#include <vector>

/// Puts a table in the place of another widget of a dialog, whose layout manages it, under its name, with its
/// accessible name and at its place in the tab order; the other one is deleted. Nothing for null.
void putInPlace(QWidget* other, QTableView& table);

/// Makes a dialog as wide as a table in it needs for all its columns, as far as the screen allows.
void widenFor(const QTableView& table, QDialog& dialog);

/// Selects whole rows. A plain click on a cell of some columns does something to all selected rows; a click
/// with Shift or Ctrl selects. Typing goes to a row by its name.
class KvCellTable : public QTableView {
    Q_OBJECT
public:
    /// `nameColumn` is what rows are known by.
    explicit KvCellTable(int nameColumn, QWidget* parent = nullptr);

    /// Ascending.
    std::vector<int> selectedRowNumbers() const;
    /// These alone, which must be ascending.
    void selectRowNumbers(const std::vector<int>& rows);

    void keyboardSearch(const QString& typed) override;
    /// A text is being typed into a cell.
    bool isEditing() const { return state() == EditingState; }

protected:
    /// A click on a cell of these does something; none unless it is said.
    virtual bool isClickedColumn(int column) const;
    virtual void cellClicked(int row, int column);
    /// With the left button; its second press is no click. -1 beside the rows.
    virtual void cellDoubleClicked(int row, int column);
    virtual QString nameAt(int row) const;
    /// False: the key does what it does in every table.
    virtual bool keyEdits(QKeyEvent* event);

    /// Between a plain press of the left button on a cell and its release.
    bool isPressed() const { return m_pressed.isValid(); }
    int usualRowHeight() const;
    /// Brings the cell into view, but moves no column.
    void makeCurrent(const QModelIndex& index, QItemSelectionModel::SelectionFlags selecting);
    void goToRow(int row, bool extend);
    /// To the next row, from one on and around, whose name begins so.
    bool goToName(const QString& beginning, int from);

    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event = nullptr) const override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    int m_nameColumn;
    QPersistentModelIndex m_pressed;  ///< the cell that the left button went down on, when its release clicks
    QString m_typed;
    qint64 m_typedAt = 0;
};
