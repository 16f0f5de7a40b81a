// The list of the edit dialog: the state's layers, edited by clicks on their cells.
#pragma once

#include "layer_states/edit/edit_layer_state_model.h"
#include "manager_ui/cells/cell_delegate.h"
#include "manager_ui/cells/list_ctrl.h"

#include <functional>
#include <unordered_set>

class HxDbDatabase;

/// As the layer grid's cells.
class KvEditLayerStateListItemDelegate : public KvCellDelegate {
    Q_OBJECT
public:
    using KvCellDelegate::KvCellDelegate;
};

/// Owns the entries that are edited. What a click chooses goes to all selected rows.
class CKvEditLayerStateListCtrl : public CKvListCtrl {
    Q_OBJECT
public:
    explicit CKvEditLayerStateListCtrl(QWidget* parent = nullptr);
    ~CKvEditLayerStateListCtrl() override;

    /// The drawing whose linetypes and plot styles are offered; null: none.
    void setDatabase(HxDbDatabase* database);
    /// Takes the array over; null: no rows.
    void SetLayerStateInfoArray(KvLayerStateInfoArray* entries);
    KvLayerStateInfoArray* GetLayerStateInfoArray() const { return m_entries; }
    /// The caller owns them now; the list is empty.
    KvLayerStateInfoArray* takeLayerStateInfoArray();

    /// Whether a layer is among the entries, as the host compares names.
    bool FindLayerIsEqual(const CStdStr<wchar_t>& name);
    /// Takes entries over: they are the last rows, selected, until the next sort.
    void append(const std::vector<CKvLayerStateInfo*>& entries);
    /// Removes the selected rows from list and entries.
    void removeSelected();

    /// What a click on a cell of the row with the focus does to all selected rows.
    void OnClickSubItemLayerstateList(int column);
    /// The row with the focus becomes the state's current layer; the user is told why when it cannot be.
    void SetCurrentLayer();

    KvEditLayerStateModel& rows() const { return *m_model; }

Q_SIGNALS:
    void addWanted();
    void removeWanted();
    /// Entries were changed, added or removed.
    void edited();

protected:
    bool isClickedColumn(int column) const override;
    void cellClicked(int row, int column) override;
    void cellDoubleClicked(int row, int column) override;
    QString nameAt(int row) const override;
    bool keyEdits(QKeyEvent* event) override;

private:
    /// A row for each entry.
    void FillLayerList();

    using Change = std::function<void(CKvLayerStateInfo&)>;
    void change(const Change& change);
    void toggle(int flag, const CKvLayerStateInfo& clicked);
    void pickColor(const CKvLayerStateInfo& clicked);
    void pickLinetype(const CKvLayerStateInfo& clicked);
    void pickLineweight(const CKvLayerStateInfo& clicked);
    void pickTransparency(const CKvLayerStateInfo& clicked);
    void pickPlotStyle(const CKvLayerStateInfo& clicked);
    void tell(int text, const CStdStr<wchar_t>& layer);

    KvEditLayerStateModel* m_model;
    KvLayerStateInfoArray* m_entries = nullptr;
    HxDbDatabase* m_database = nullptr;
    std::unordered_set<std::wstring> m_foldedNames;  ///< of the entries; empty: not known yet
};
