// The layers of a state in the edit dialog's list.
#pragma once

#include "layer_states/records/layer_state.h"
#include "manager_ui/cells/sorted_rows.h"
#include "manager_ui/grid/layer_icons.h"

enum KvStateColumn : int {
    kStateColName,
    kStateColOn,
    kStateColFreeze,
    kStateColLock,
    kStateColColor,
    kStateColLinetype,
    kStateColLineweight,
    kStateColTransparency,
    kStateColPlotStyle,
    kStateColPlot,
    kStateColNewVpFreeze,
    kStateColumnCount,
};

/// One row an entry, whose cells are made when they are asked for.
class KvEditLayerStateModel : public KvSortedRows {
    Q_OBJECT
public:
    explicit KvEditLayerStateModel(QObject* parent);

    /// Lineweights in inches, else in millimetres; plot styles that follow the colours cannot be chosen.
    void setUnits(bool inInches, bool hasNamedPlotStyles);
    void setIcons(const KvLayerIcons& icons) { m_icons = icons; }
    /// The entries must outlive their rows. Null: none. The same ones again after some were removed.
    void setEntries(const KvLayerStateInfoArray* entries);
    void entriesAppended(int count) { showAppended(count); }
    void entriesChanged() { emitChanged(); }
    /// Null for a row that there is not.
    CKvLayerStateInfo* entryAt(int row) const;
    /// Whether the cells of a column are shown grey.
    bool isGreyed(int column) const { return column == kStateColPlotStyle && !m_hasNamedPlotStyles; }

    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

protected:
    int placeCount() const override;
    std::wstring_view nameAt(int place) const override;
    std::vector<std::int64_t> keysOf(int column) const override;

private:
    QString textOf(const CKvLayerStateInfo& entry, int column) const;
    QVariant payloadOf(const CKvLayerStateInfo& entry, int column) const;

    const KvLayerStateInfoArray* m_entries = nullptr;
    KvLayerIcons m_icons;
    bool m_inInches = false;
    bool m_hasNamedPlotStyles = false;
};

/// The flag that a column's icon shows; 0 for columns without icons.
int flagOfColumn(int column);
