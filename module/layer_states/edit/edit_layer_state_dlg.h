// Editing the layers of a saved state, without touching the drawing.
#pragma once

#include "layer_states/records/layer_state.h"

#include "hxdialog.h"

class CKvEditLayerStateListCtrl;
class HxDbDatabase;
class QAbstractButton;
class QLabel;

/// Works on a copy of a state's entries. IDOK: the caller puts the copy in their place.
class CKvEditLayerStateDlg : public HxUiBaseDialog {
    Q_OBJECT
public:
    /// `entries` (null: none) stay as they are. `database` is the drawing whose layers can be added and whose
    /// linetypes and plot styles are offered; null: none.
    CKvEditLayerStateDlg(QWidget* parent, const KvLayerStateInfoArray* entries, HxDbDatabase* database,
                         const CStdStr<wchar_t>& stateName);

    /// The edited copy after IDOK. The caller owns it (deleteEntries, or KvLayerStateMap::replaceEntries
    /// takes it over); null when it was taken before.
    KvLayerStateInfoArray* GetCloneLayerStateInfoArray();
    /// The name of the copy's current layer; empty when it has none. Before the copy is taken.
    CStdStr<wchar_t> currentLayerName() const;

protected:
    bool OnInitDialog() override;

private Q_SLOTS:
    void OnButtonAdd();
    void OnButtonDel();
    void showCount();

private:
    /// The drawing's layers that the state does not hold, in the order of their names; the caller owns the
    /// entries.
    std::vector<CKvLayerStateInfo*> GetLayerInfo() const;
    void showIcons();

    HxDbDatabase* m_database;
    CStdStr<wchar_t> m_stateName;
    CKvEditLayerStateListCtrl* m_list;
    QAbstractButton* m_add;  ///< this and those below: null when the layout could not be loaded
    QAbstractButton* m_remove;
    QLabel* m_count;
};
