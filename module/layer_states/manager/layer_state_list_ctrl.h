// The list of the layer states manager.
#pragma once

#include "layer_states/manager/layer_state_list_model.h"
#include "manager_ui/cells/list_ctrl.h"
#include "manager_ui/grid/layer_list_delegate.h"

/// Paints as the layer grid does. What is typed is taken by the list when the editor closes.
class KvLayerStateListItemDelegate : public KvLayerListCtrlItemDelegate {
    Q_OBJECT
public:
    using KvLayerListCtrlItemDelegate::KvLayerListCtrlItemDelegate;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
};

/// Shows the states that are not hidden and that the search finds, sorted by a column.
class CKvLayerStateListCtrl : public CKvListCtrl {
    Q_OBJECT
public:
    /// The states that are listed; the engine must outlive the list.
    explicit CKvLayerStateListCtrl(CKvLayerStateManDlg& engine, QWidget* parent = nullptr);

    KvLayerStateListModel& rows() const { return *m_model; }

    /// All states anew, sorted; what was selected stays so.
    void showStates();
    /// The text is looked for in names and descriptions; "*" and "?" stand for other characters.
    void setSearch(const QString& text);

    /// In the order of the rows.
    std::vector<CKvLayerState*> selectedStates() const;
    /// Exactly one, or null.
    CKvLayerState* selectedState() const;
    /// Makes it the only selected one, in sight and with the focus; null selects nothing.
    void SetLastSelectItem(const CKvLayerState* state);
    /// Opens the editor of a state's name, after a message when it cannot be changed.
    void editName(const CKvLayerState* state);

Q_SIGNALS:
    void selectionMade();
    /// The user has ended the editing of a name; what was typed as it is.
    void nameTyped(CKvLayerState* state, const QString& text);
    void rowChosen();

protected:
    void cellDoubleClicked(int row, int column) override;

private Q_SLOTS:
    void OnLvnEndlabeledit(QWidget* editor, QAbstractItemDelegate::EndEditHint hint);

private:
    std::vector<CKvLayerState*> foundStates() const;
    void initHeader();

    CKvLayerStateManDlg& m_engine;
    KvLayerStateListModel* m_model;
    CStdStr<wchar_t> m_search;  ///< folded; empty: all
    CKvLayerState* m_edited = nullptr;
    bool m_isShowing = false;
};
