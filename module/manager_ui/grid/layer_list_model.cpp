// The rows of the layer grid.
#include "layer_list_model.h"

#include "layer_column.h"
#include "lineweight_text.h"

#include "frame/util/resource_text.h"
#include "model/layer_data.h"

#include <algorithm>

namespace {

QString textOf(const KvLayerCell& cell) { return cell.icon < 0 ? cell.text : iconText(cell.icon); }

QVariant whyGrey(const KvLayerCell& cell) {
    const ModuleResources resources;
    return cell.whyGrey == 0 ? QVariant() : QVariant(resourceText(cell.whyGrey));
}

bool isColorColumn(int column) { return column == kColColor || column == kColVpColor; }
bool isLineweightColumn(int column) { return column == kColLineweight || column == kColVpLineweight; }

QVariant payloadOf(const KvLayerCell& cell, int column) {
    if (isColorColumn(column)) return QVariant::fromValue(LayerListColorItemData{cell.color});
    if (isLineweightColumn(column)) return QVariant::fromValue(LayerListLineweightItemData{cell.lineweight});
    return {};
}

}  // namespace

KvLayerListModel::KvLayerListModel(QObject* parent) : QAbstractTableModel(parent) {
    qRegisterMetaType<LayerListColorItemData>("LayerListColorItemData");
    qRegisterMetaType<LayerListLineweightItemData>("LayerListLineweightItemData");
    qRegisterMetaType<KvLayerData*>("KvLayerData*");
}

KvLayerListModel::~KvLayerListModel() = default;

void KvLayerListModel::setIcons(const KvLayerIcons& icons) {
    m_icons = icons;
    if (!m_layers.empty()) {
        emit dataChanged(createIndex(0, 0), createIndex(rowCount() - 1, columnCount() - 1));
    }
}

void KvLayerListModel::setHeaders(const std::vector<QString>& headers) {
    beginResetModel();
    m_headers = headers;
    m_cells.clear();
    m_cells.resize(m_layers.size());
    m_filled = 0;
    endResetModel();
}

/// It is made when rows are asked for again and again: a drawing that is only shown needs none.
void KvLayerListModel::dropIndex() {
    m_rows.clear();
    m_isIndexed = false;
    m_lookups = 0;
}

void KvLayerListModel::indexRows() const {
    m_rows.clear();
    m_isIndexed = true;
    m_rows.reserve(m_layers.size());
    for (std::size_t row = 0; row < m_layers.size(); ++row) {
        m_rows[m_layers[row]->layerId()] = static_cast<int>(row);
    }
}

void KvLayerListModel::setLayers(std::vector<KvLayerData*> layers) {
    beginResetModel();
    m_layers = std::move(layers);
    m_cells.clear();
    m_cells.resize(m_layers.size());
    m_filled = 0;
    dropIndex();
    endResetModel();
}

void KvLayerListModel::reorder(const std::vector<KvLayerData*>& layers) {
    emit layoutAboutToBeChanged();
    std::vector<std::unique_ptr<KvLayerCells>> cells(layers.size());
    std::vector<int> newRows(m_layers.size(), -1);
    for (std::size_t row = 0; row < layers.size(); ++row) {
        const int before = rowOf(layers[row]);
        newRows[static_cast<std::size_t>(before)] = static_cast<int>(row);
        cells[row] = std::move(m_cells[static_cast<std::size_t>(before)]);
    }
    m_layers = layers;
    m_cells = std::move(cells);
    dropIndex();
    const QModelIndexList before = persistentIndexList();
    QModelIndexList after;
    after.reserve(before.size());
    for (const QModelIndex& at : before) {
        after << createIndex(newRows[static_cast<std::size_t>(at.row())], at.column());
    }
    changePersistentIndexList(before, after);
    emit layoutChanged();
}

KvLayerData* KvLayerListModel::layerAt(int row) const {
    return row >= 0 && row < rowCount() ? m_layers[static_cast<std::size_t>(row)] : nullptr;
}

int KvLayerListModel::rowOf(HxDbObjectId layer) const {
    constexpr int kFewLookups = 16;  // searches that cost what making the index does
    if (!m_isIndexed && ++m_lookups <= kFewLookups) {
        const auto at = std::find_if(m_layers.begin(), m_layers.end(),
                                     [layer](const KvLayerData* data) { return data->layerId() == layer; });
        return at == m_layers.end() ? -1 : static_cast<int>(at - m_layers.begin());
    }
    if (!m_isIndexed) indexRows();
    const auto found = m_rows.find(layer);
    return found == m_rows.end() ? -1 : found->second;
}

int KvLayerListModel::rowOf(const KvLayerData* layer) const {
    const int row = layer ? rowOf(layer->layerId()) : -1;
    return layerAt(row) == layer ? row : -1;
}

void KvLayerListModel::insert(int row, KvLayerData* layer) {
    beginInsertRows({}, row, row);
    m_layers.insert(m_layers.begin() + row, layer);
    m_cells.insert(m_cells.begin() + row, nullptr);
    dropIndex();
    endInsertRows();
}

void KvLayerListModel::setLayerAt(int row, KvLayerData* layer) {
    KvLayerData* const before = layerAt(row);
    if (!before || !layer) return;
    if (before != layer) {
        m_layers[static_cast<std::size_t>(row)] = layer;
        dropIndex();
    }
    refresh(row);
}

void KvLayerListModel::removeRowAt(int row) {
    if (!layerAt(row)) return;
    beginRemoveRows({}, row, row);
    const auto at = static_cast<std::ptrdiff_t>(row);
    if (m_cells[static_cast<std::size_t>(row)]) --m_filled;
    m_layers.erase(m_layers.begin() + at);
    m_cells.erase(m_cells.begin() + at);
    dropIndex();
    endRemoveRows();
}

void KvLayerListModel::refresh(int row) {
    if (!layerAt(row)) return;
    std::unique_ptr<KvLayerCells>& cells = m_cells[static_cast<std::size_t>(row)];
    if (cells) --m_filled;
    cells.reset();
    emit dataChanged(createIndex(row, 0), createIndex(row, columnCount() - 1));
}

void KvLayerListModel::refreshAll() {
    for (std::unique_ptr<KvLayerCells>& cells : m_cells) {
        cells.reset();
    }
    m_filled = 0;
    if (!m_layers.empty()) {
        emit dataChanged(createIndex(0, 0), createIndex(rowCount() - 1, columnCount() - 1));
    }
}

int KvLayerListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_layers.size());
}

int KvLayerListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_headers.size());
}

const KvLayerCell* KvLayerListModel::cellAt(int row, int column) const {
    if (row < 0 || row >= rowCount() || column < 0 || column >= columnCount()) return nullptr;
    std::unique_ptr<KvLayerCells>& cells = m_cells[static_cast<std::size_t>(row)];
    if (!cells) {
        auto made = std::make_unique<KvLayerCells>();
        if (!m_filler || !m_filler(m_layers[static_cast<std::size_t>(row)], *made)) return nullptr;
        cells = std::move(made);
        ++m_filled;
    }
    return &(*cells)[static_cast<std::size_t>(column)];
}

QVariant KvLayerListModel::data(const QModelIndex& index, int role) const {
    if (role == kRoleLayer) return QVariant::fromValue(layerAt(index.row()));
    if (role == Qt::DisplayRole || role == Qt::EditRole || role == Qt::DecorationRole ||
        role == Qt::AccessibleTextRole || role == Qt::ToolTipRole || role == Qt::BackgroundRole ||
        role == kRolePayload || role == kRoleOverridden || role == kRoleGreyed) {
        const KvLayerCell* const cell = cellAt(index.row(), index.column());
        if (!cell) return {};
        switch (role) {
        case Qt::DecorationRole:
            return cell->icon < 0 ? QVariant() : QVariant(m_icons[static_cast<std::size_t>(cell->icon)]);
        case Qt::AccessibleTextRole: return textOf(*cell);
        case Qt::ToolTipRole: return whyGrey(*cell);
        case Qt::BackgroundRole: return cell->overridden ? QVariant(QColor(106, 182, 226)) : QVariant();
        case kRoleOverridden: return cell->overridden;
        case kRoleGreyed: return cell->whyGrey != 0;
        case kRolePayload: return payloadOf(*cell, index.column());
        default: return cell->icon < 0 ? QVariant(cell->text) : QVariant();
        }
    }
    return {};
}

QVariant KvLayerListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole)
        return m_headers[static_cast<std::size_t>(section)];
    return {};
}

Qt::ItemFlags KvLayerListModel::flags(const QModelIndex& index) const {
    if (!layerAt(index.row())) return Qt::NoItemFlags;
    Qt::ItemFlags flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
    if (index.column() == kColName) flags |= Qt::ItemIsDragEnabled;  // dragging elsewhere selects
    if (index.column() == kColName || index.column() == kColDescription) flags |= Qt::ItemIsEditable;
    return flags;
}

std::size_t KvLayerListModel::bytes() const {
    constexpr std::size_t kMapNode = sizeof(HxDbObjectId) + sizeof(int) + 2 * sizeof(void*);
    return m_layers.capacity() * sizeof(KvLayerData*) + m_cells.capacity() * sizeof(m_cells.front()) +
           m_rows.size() * kMapNode + m_rows.bucket_count() * sizeof(void*) + m_filled * sizeof(KvLayerCells);
}
