// The layer grid.
#pragma once

#include "layer_cells.h"
#include "layer_icons.h"

#include "manager_ui/cells/cell_table.h"

#include "hxdbid.h"
#include "hxstring.h"

#include <QAbstractItemDelegate>

#include <vector>

class HxDbTransactionManager;
class KvLayerData;
class KvLayerListModel;
class KvLayerPropManager;
class KvLayerPropManagerDlg;
class QAction;

/// What the user sees of a grid's rows: found again by the layers' ids after a reload.
struct KvLayerGridView {
    std::vector<HxDbObjectId> selected;
    HxDbObjectId current;  ///< the row with the focus
    int column = 1;        ///< of the cell with the focus
    int top = 0;           ///< how far it is scrolled
    int left = 0;
};

/// One row a layer, one column a property, for a palette or a dialog. The layers are the manager's: before it
/// lets go of one, the row must go (RemoveLayerData, ShowLayers).
class KvLayerListCtrl : public KvCellTable {
    Q_OBJECT
public:
    explicit KvLayerListCtrl(QWidget* parent = nullptr);
    ~KvLayerListCtrl() override;

    /// Loads the icons of the light or the dark theme.
    void InitImageList(bool light);
    /// Columns in display order, with headers and widths, and a row for each of the manager's layers. A row
    /// height of 0 is that of the font. A null manager empties the grid.
    void InitList(KvLayerPropManager* manager, const std::vector<tagKvLayerListInfo>& columns,
                  int rowHeight = 0);
    void setManager(KvLayerPropManager* manager) { m_manager = manager; }
    /// The columns alone, when the space changes.
    void setColumns(const std::vector<tagKvLayerListInfo>& columns);
    /// Positions and widths as the user left them, in the order of identities.
    std::vector<tagKvLayerListInfo> columns() const;

    /// The row is the layer's from now on, its cells made anew; nothing for a row that there is not.
    void SetRowItemData(int row, KvLayerData* layer);
    void refreshLayer(HxDbObjectId layer);
    void refreshLayers(const std::vector<HxDbObjectId>& layers);
    void refreshRows();
    void AddLayerData(KvLayerData* layer);
    void RemoveLayerData(KvLayerData* layer);
    /// -1 when it has no row.
    int FindLayerData(const KvLayerData* layer) const;
    /// Replaces the rows, in the order of the last sort; `keepSelection` selects again those that stay.
    void ShowLayers(const HxArray<KvLayerData*>& layers, bool keepSelection);

    /// Gives a layer without one a row, at its place in the order. Null is fine.
    void placeRow(KvLayerData* layer);
    /// Takes the rows of other layers away and gives these theirs; all are filled anew, and those that were
    /// there keep their order.
    void updateRows(const HxArray<KvLayerData*>& layers);

    /// The layers of all rows, from top to bottom.
    std::vector<HxDbObjectId> order() const;

    KvLayerGridView view() const;
    /// The view, and no rows.
    KvLayerGridView takeView();
    void restoreView(const KvLayerGridView& view);

    /// The current layer of the drawing changed: its mark moves.
    void updateCLayerItemData();
    /// Selects the current layer's row alone and scrolls to it.
    void SetCurLayerSelected();
    /// Makes the layer's row the only selected one, in sight and with the focus; nothing when it has none.
    void SelectLayer(HxDbObjectId layer);
    /// Null, and row -1, when the current layer has no row.
    KvLayerData* getCurrentCLayerData(int& row) const;

    bool ItemIsSelected(int row) const;
    /// In row order.
    void SelectedLayers(HxArray<KvLayerData*>& layers, HxArray<int>& rows) const;
    std::vector<HxDbObjectId> selectedIds() const;
    /// The row of the first layer from `start` whose name matches (case ignored); -1 for none.
    int FindItem(const wchar_t* name, int start) const;

    /// The drawing that the layers are of; null without a manager or layers.
    HxDbDatabase* GetDatabase() const;
    /// Where records are opened: null for a palette, which opens them itself.
    HxDbTransactionManager* transactions() const;
    KvLayerListModel& rows() const { return *m_model; }
    KvLayerPropManager* manager() const { return m_manager; }

    /// Sorts by the column at a display position, keeping the selection.
    void Sort(int column, bool ascending);
    int sortColumn() const { return m_sortColumn; }
    /// The identity of that column.
    int sortedBy() const;
    bool isSortAscending() const { return m_ascending; }
    /// The order of rows that are shown from now on.
    void setSortInfo(int column, bool ascending);

    /// Goes to the next layer, after the last one to the first, whose name starts with the letter.
    void LoactedByFirstChar(wchar_t letter);

    // ---- editing (manager_ui/editing) ----

    /// The manager's window, whose actions the context menu and keys call; null: there are none.
    void setDialog(KvLayerPropManagerDlg* dialog) { m_dialog = dialog; }
    KvLayerPropManagerDlg* dialog() const { return m_dialog; }
    /// Whether edits are allowed now: they are not in the palette while a command runs that layers must stay
    /// for, which the user is told, nor while another drawing than the current one is still shown.
    bool canEdit();
    /// What a click on the cell does, to all selected layers; columns are identities.
    void OnClickSubItemLayersList(int row, int column);
    /// Opens the editor of the layer's name or description; nothing when it has no row, or may not be
    /// renamed, which the user is told.
    void EditLayerName(HxDbLayerTableRecord* layer);
    void EditLayerDescription(HxDbLayerTableRecord* layer);
    /// The name of the selected row.
    void SetEditLayerName();
    /// Nothing for a layer that is frozen or of an external reference.
    void makeLayerCurrent(HxDbObjectId layer);

Q_SIGNALS:
    /// The user sorted by a column, or the sorted column stands at another place.
    void sorted(int column, bool descending);
    /// The user made another layer current here.
    void currentLayerSet();
    /// The user wants the columns as they are by default.
    void columnsReset();

public Q_SLOTS:
    /// A header was clicked, by display position.
    void OnHdnItemclick(int column);
    /// Whether the cell's editor may open; what it edits is remembered until it closes.
    bool OnLvnBeginlabeledit(int row, int column);
    /// The editor closes: what was typed becomes the layer's name or description, unless it was given up.
    void OnLvnEndlabeledit(QWidget* editor, QAbstractItemDelegate::EndEditHint hint);
    /// Carries out the action that was picked in the context menu.
    void MenuPick();

protected:
    void paintEvent(QPaintEvent* event) override;
    bool isClickedColumn(int column) const override;
    void cellClicked(int row, int column) override;
    void cellDoubleClicked(int row, int column) override;
    QString nameAt(int row) const override;
    /// Space is a click on the cell with the focus; in the palette Enter makes the row's layer current, in
    /// the dialog it is OK.
    bool keyEdits(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void startDrag(Qt::DropActions actions) override;
    bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;

private:
    bool fill(KvLayerData* layer, KvLayerCells& cells);
    class MyComp comparison() const;
    std::vector<KvLayerData*> sortedLayers(std::vector<KvLayerData*> layers) const;
    void selectRows(const std::vector<HxDbObjectId>& ids);
    void selectAllButCurrent();
    void invertSelection();
    void freezeInViewports(const wchar_t* format);
    void isolateSelected();
    void endIsolation();
    void removeOverrides(bool inAll);
    void showHeaderMenu(const QPoint& at);
    void showColumn(int column, bool show);
    void showSortMark();
    void keepSorted(int column);
    void columnMoved(int from, int to);
    void copySelection() const;
    void renameLayer(HxDbObjectId layer, const QString& name);
    void describeLayer(HxDbObjectId layer, const QString& description);
    void editCell(const HxDbLayerTableRecord* layer, int column);

    KvLayerListModel* m_model;
    KvLayerPropManagerDlg* m_dialog = nullptr;
    const QAction* m_picked = nullptr;  ///< while it is carried out
    HxDbObjectId m_edited;              ///< the layer whose editor is open
    int m_editedColumn = -1;
    KvLayerPropManager* m_manager = nullptr;
    HxDbObjectId m_currentLayer;
    int m_sortColumn = 1;
    bool m_ascending = true;
    bool m_isArranging = false;                          ///< columns are being put into their places
    const KvLayerCellContext* m_paintContext = nullptr;  ///< while it paints
};
