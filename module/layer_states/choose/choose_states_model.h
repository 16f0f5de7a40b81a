// The states of another drawing, with ticks.
#pragma once

#include "layer_states/records/layer_state_map.h"
#include "manager_ui/cells/sorted_rows.h"

enum KvChooseColumn : int {
    kChooseColName,
    kChooseColLayers,
    kChooseColImport,
    kChooseColDescription,
};

/// One row a state that is not hidden. How many layers it has is counted when it is first shown.
class KvChooseStatesModel : public KvSortedRows {
    Q_OBJECT
public:
    /// `ours` are those that the states come to; both must outlive the model.
    KvChooseStatesModel(const KvLayerStateMap& ours, const KvLayerStateMap& theirs);

    int count() const { return placeCount(); }
    CKvLayerState* stateAt(int place) const { return m_states[static_cast<std::size_t>(place)].state; }
    bool isTicked(int place) const { return m_states[static_cast<std::size_t>(place)].isTicked; }
    /// Places in the data.
    void tick(const std::vector<int>& places, bool isTicked);

    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

Q_SIGNALS:
    void ticked();

protected:
    int placeCount() const override { return static_cast<int>(m_states.size()); }
    std::wstring_view nameAt(int place) const override;
    std::vector<std::int64_t> keysOf(int column) const override;

private:
    /// What an import of a state does.
    enum class Import { isNew, replaces, hidesReference };
    struct Row {
        CKvLayerState* state = nullptr;
        Import import = Import::isNew;
        bool isTicked = false;
        mutable int layers = -1;  ///< not counted yet
    };
    int layersOf(const Row& row) const;
    QString textOf(const Row& row, int column) const;

    const KvLayerStateMap& m_theirs;
    std::vector<Row> m_states;
};
