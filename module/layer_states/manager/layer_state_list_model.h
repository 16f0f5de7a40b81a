// The rows of the layer states manager: states, with cells that are found out when they are first seen.
#pragma once

#include "layer_states/manager/layer_state_man_dlg.h"

#include "manager_ui/cells/sorted_rows.h"

#include <QIcon>

/// The mark is shown first.
enum KvStatesColumn : int {
    kStatesName,
    kStatesMark,  ///< of the state that was restored last
    kStatesSpace,
    kStatesSame,
    kStatesLayers,
    kStatesDescription,
    kStatesColumnCount,
};

/// How many layers a state names and whether the drawing is as it says is found out for rows that somebody
/// looks at, and kept.
class KvLayerStateListModel : public KvSortedRows {
    Q_OBJECT
    /// Rows that somebody has looked at.
    Q_PROPERTY(int seenStates READ seenStates)
public:
    /// The engine must outlive the model.
    explicit KvLayerStateListModel(CKvLayerStateManDlg& engine, QObject* parent = nullptr);

    void setMark(const QIcon& mark) { m_mark = mark; }
    void setStates(std::vector<CKvLayerState*> states);
    /// Null when there is no such row, and for a state that is gone by now.
    CKvLayerState* stateAt(int row) const;
    /// -1 when it has no row.
    int rowOf(const CKvLayerState* state) const;
    /// The state is another than before.
    void refresh(const CKvLayerState* state);
    /// What is known of all states is found out anew: states or layers have changed.
    void forgetSeen() { m_seen.clear(); }

    int seenStates() const { return static_cast<int>(m_seen.size()); }

    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

protected:
    int placeCount() const override { return static_cast<int>(m_states.size()); }
    std::wstring_view nameAt(int place) const override;
    std::vector<std::int64_t> keysOf(int column) const override;

private:
    QString textOf(CKvLayerState* state, int column) const;
    int layerCount(const CKvLayerState* state) const;
    bool isSameAsDrawing(CKvLayerState* state) const;
    std::vector<std::int64_t> textKeys(int column) const;
    /// Model, Layout, or the reference that the state comes from.
    QString spaceOf(const CKvLayerState* state) const;
    bool isMarked(const CKvLayerState* state) const;

    struct Seen {
        int layers = -1;  ///< not counted yet
        int isSame = -1;  ///< not compared yet
    };
    CKvLayerStateManDlg& m_engine;
    QIcon m_mark;
    std::vector<CKvLayerState*> m_states;
    mutable std::unordered_map<const CKvLayerState*, Seen> m_seen;
};
