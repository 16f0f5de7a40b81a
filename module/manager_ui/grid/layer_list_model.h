// The rows of the layer grid: layers in order, with cells that are made when they are first asked for.
#pragma once

#include "layer_cells.h"
#include "layer_icons.h"

#include "manager_ui/cells/cell_roles.h"

#include "hxdbid.h"

#include <QAbstractTableModel>

#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

class KvLayerData;

constexpr int kRoleLayer = kRoleOfModel;  ///< KvLayerData*
Q_DECLARE_OPAQUE_POINTER(KvLayerData*)
Q_DECLARE_METATYPE(KvLayerData*)

/// A table of one row a layer and one column a property. Columns are identities (KvLayerColumn); which are
/// shown and in which order is the header's business.
class KvLayerListModel : public QAbstractTableModel {
    Q_OBJECT
    Q_PROPERTY(int filledRows READ filledRows)
public:
    /// Makes the cells of a layer; false when its record can not be opened: the row stays empty.
    using Filler = std::function<bool(KvLayerData*, KvLayerCells&)>;

    explicit KvLayerListModel(QObject* parent = nullptr);
    ~KvLayerListModel() override;

    void setFiller(Filler filler) { m_filler = std::move(filler); }
    void setIcons(const KvLayerIcons& icons);
    /// The column headers by identity; their number is the number of columns.
    void setHeaders(const std::vector<QString>& headers);

    /// Replaces all rows. The layers must outlive them.
    void setLayers(std::vector<KvLayerData*> layers);
    /// The same layers in another order: selections and current index move along.
    void reorder(const std::vector<KvLayerData*>& layers);
    const std::vector<KvLayerData*>& layers() const { return m_layers; }
    KvLayerData* layerAt(int row) const;
    /// -1 when it has no row.
    int rowOf(const KvLayerData* layer) const;
    int rowOf(HxDbObjectId layer) const;

    void append(KvLayerData* layer) { insert(rowCount(), layer); }
    void insert(int row, KvLayerData* layer);
    /// The row becomes that of another layer, or of the same with new cells; nothing for null or no row.
    void setLayerAt(int row, KvLayerData* layer);
    void removeRowAt(int row);
    /// The row's cells are made anew when next asked for.
    void refresh(int row);
    void refreshAll();
    /// Rows whose cells exist.
    int filledRows() const { return static_cast<int>(m_filled); }
    std::size_t bytes() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    const KvLayerCell* cellAt(int row, int column) const;
    void indexRows() const;
    void dropIndex();

    Filler m_filler;
    KvLayerIcons m_icons;
    std::vector<QString> m_headers;
    std::vector<KvLayerData*> m_layers;
    mutable std::vector<std::unique_ptr<KvLayerCells>> m_cells;  ///< by row; null: not made yet
    mutable std::size_t m_filled = 0;
    mutable std::unordered_map<HxDbObjectId, int> m_rows;  ///< while m_isIndexed
    mutable bool m_isIndexed = false;
    mutable int m_lookups = 0;  ///< since the rows were replaced
};
