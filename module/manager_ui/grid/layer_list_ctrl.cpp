// The layer grid: its columns, rows, selection and sort.
#include "layer_list_ctrl.h"

#include "layer_column.h"
#include "layer_list_delegate.h"
#include "layer_list_model.h"
#include "layer_sort.h"

#include "frame/util/resource_text.h"
#include "frame/util/text_utilities.h"
#include "model/auto_layer_record.h"
#include "model/layer_data.h"
#include "model/layer_prop_manager.h"

#include "hxdbdatabase.h"
#include "hxui.h"

#include <QGuiApplication>
#include <QHeaderView>
#include <QPaintEvent>
#include <QScrollBar>

#include <algorithm>
#include <unordered_set>

namespace {

QString toQt(const CStdStr<wchar_t>& text) {
    return QString::fromWCharArray(text.c_str(), static_cast<int>(text.size()));
}

QString nameOf(HxDbTransactionManager* transactions, KvLayerData* layer) {
    const KvAutoLayerRecordPtr record(transactions, layer, true);
    return record.object() ? QString::fromWCharArray(record->name()) : QString();
}

}  // namespace

KvLayerListCtrl::KvLayerListCtrl(QWidget* parent)
    : KvCellTable(kColName, parent), m_model(new KvLayerListModel(this)) {
    setObjectName("IDC_LIST_LAYERS_LIST");
    setModel(m_model);
    auto* const delegate = new KvLayerListCtrlItemDelegate(this);
    setItemDelegate(delegate);
    connect(delegate, &QAbstractItemDelegate::closeEditor, this, &KvLayerListCtrl::OnLvnEndlabeledit);
    m_model->setFiller([this](KvLayerData* layer, KvLayerCells& cells) { return fill(layer, cells); });
    setEditTriggers(QAbstractItemView::SelectedClicked);
    setDragDropMode(QAbstractItemView::DragOnly);
    setDragEnabled(true);
    QHeaderView* const header = horizontalHeader();
    header->setSectionsMovable(true);
    header->setMinimumSectionSize(1);  // profiles may keep narrower columns than the mouse can make
    connect(header, &QHeaderView::sectionResized, header, [header](int column, int, int width) {
        const bool isDragged = QGuiApplication::mouseButtons().testFlag(Qt::LeftButton);
        if (isDragged && width > 0 && width < kLeastColumnWidth)
            header->resizeSection(column, kLeastColumnWidth);
    });
    header->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(header, &QHeaderView::sectionClicked, this,
            [this, header](int column) { OnHdnItemclick(header->visualIndex(column)); });
    connect(header, &QHeaderView::sectionMoved, this,
            [this](int, int from, int to) { columnMoved(from, to); });
    connect(header, &QHeaderView::customContextMenuRequested, this, &KvLayerListCtrl::showHeaderMenu);
}

KvLayerListCtrl::~KvLayerListCtrl() = default;

void KvLayerListCtrl::InitImageList(bool light) { m_model->setIcons(loadLayerIcons(light)); }

void KvLayerListCtrl::InitList(KvLayerPropManager* manager, const std::vector<tagKvLayerListInfo>& columns,
                               int rowHeight) {
    m_manager = manager;
    verticalHeader()->setDefaultSectionSize(rowHeight > 0 ? rowHeight : usualRowHeight());
    setColumns(columns);
    ShowLayers(manager ? manager->GetAllLayers() : HxArray<KvLayerData*>(), false);
}

void KvLayerListCtrl::setColumns(const std::vector<tagKvLayerListInfo>& columns) {
    std::vector<QString> headers(columns.size());
    for (const tagKvLayerListInfo& column : columns) {
        headers[static_cast<std::size_t>(columnOf(column))] = toQt(column.header);
    }
    QHeaderView* const header = horizontalHeader();
    const int sorted = header->logicalIndex(m_sortColumn);
    m_isArranging = true;
    m_model->setHeaders(headers);
    for (std::size_t position = 0; position < columns.size(); ++position) {
        const int column = columnOf(columns[position]);
        header->moveSection(header->visualIndex(column), static_cast<int>(position));
        header->setSectionHidden(column, columns[position].width <= 0 && column != kColName);
        if (!header->isSectionHidden(column)) {
            const int width = columns[position].width;
            header->resizeSection(column, width > 0 ? width : kLeastColumnWidth);
        }
    }
    m_isArranging = false;
    keepSorted(sorted);
    showSortMark();
}

/// The order is by the same column in another arrangement, by name if that one is not there.
void KvLayerListCtrl::keepSorted(int column) {
    QHeaderView* const header = horizontalHeader();
    if (column < 0) return;
    m_sortColumn = header->visualIndex(column < header->count() ? column : int(kColName));
    emit sorted(m_sortColumn, !m_ascending);
}

/// The user moved a column; the sorted one may be among those that it passed.
void KvLayerListCtrl::columnMoved(int from, int to) {
    if (m_isArranging) return;
    if (m_sortColumn == from) {
        m_sortColumn = to;
    } else if (from < m_sortColumn && m_sortColumn <= to) {
        --m_sortColumn;
    } else if (to <= m_sortColumn && m_sortColumn < from) {
        ++m_sortColumn;
    }
    showSortMark();
    emit sorted(m_sortColumn, !m_ascending);
}

std::vector<tagKvLayerListInfo> KvLayerListCtrl::columns() const {
    const bool isModel = m_model->columnCount() <= static_cast<int>(kModelColumnCount);
    std::vector<tagKvLayerListInfo> all =
        defaultColumns(isModel ? KvColumnSet::modelSpace : KvColumnSet::layout);
    const int shown = std::min(m_model->columnCount(), static_cast<int>(all.size()));
    for (int column = 0; column < shown; ++column) {
        tagKvLayerListInfo& info = all[static_cast<std::size_t>(column)];
        info.index = horizontalHeader()->visualIndex(column);
        info.width = horizontalHeader()->sectionSize(column);
    }
    return all;
}

// ---- rows ----

bool KvLayerListCtrl::fill(KvLayerData* layer, KvLayerCells& cells) {
    const KvAutoLayerRecordPtr record(transactions(), layer, true);
    if (!record.object()) return false;
    cells = makeLayerCells(*record.object(),
                           m_paintContext ? *m_paintContext : KvLayerCellContext(GetDatabase()));
    return true;
}

void KvLayerListCtrl::paintEvent(QPaintEvent* event) {
    const ModuleResources resources;
    const KvLayerCellContext context(GetDatabase());
    m_paintContext = &context;
    KvCellTable::paintEvent(event);
    m_paintContext = nullptr;
}

void KvLayerListCtrl::SetRowItemData(int row, KvLayerData* layer) { m_model->setLayerAt(row, layer); }

void KvLayerListCtrl::refreshLayer(HxDbObjectId layer) { m_model->refresh(m_model->rowOf(layer)); }

/// Many at once are one notice.
void KvLayerListCtrl::refreshLayers(const std::vector<HxDbObjectId>& layers) {
    constexpr std::size_t kFew = 64;
    if (layers.size() > kFew) {
        refreshRows();
        return;
    }
    for (const HxDbObjectId layer : layers) {
        refreshLayer(layer);
    }
}

void KvLayerListCtrl::refreshRows() { m_model->refreshAll(); }

void KvLayerListCtrl::AddLayerData(KvLayerData* layer) {
    if (layer && FindLayerData(layer) < 0) m_model->append(layer);
}

void KvLayerListCtrl::RemoveLayerData(KvLayerData* layer) { m_model->removeRowAt(FindLayerData(layer)); }

int KvLayerListCtrl::FindLayerData(const KvLayerData* layer) const { return m_model->rowOf(layer); }

void KvLayerListCtrl::ShowLayers(const HxArray<KvLayerData*>& layers, bool keepSelection) {
    const KvLayerGridView before = keepSelection ? view() : KvLayerGridView();
    m_model->setLayers(sortedLayers({layers.begin(), layers.end()}));
    m_currentLayer = GetDatabase() ? GetDatabase()->clayer() : HxDbObjectId();
    if (keepSelection) restoreView(before);
}

std::vector<HxDbObjectId> KvLayerListCtrl::order() const {
    std::vector<HxDbObjectId> ids;
    ids.reserve(m_model->layers().size());
    for (const KvLayerData* const layer : m_model->layers()) {
        ids.push_back(layer->layerId());
    }
    return ids;
}

KvLayerGridView KvLayerListCtrl::view() const {
    KvLayerGridView view;
    view.selected = selectedIds();
    if (const KvLayerData* const layer = m_model->layerAt(currentIndex().row()))
        view.current = layer->layerId();
    view.column = std::max(currentIndex().column(), 0);
    view.top = verticalScrollBar()->value();
    view.left = horizontalScrollBar()->value();
    return view;
}

KvLayerGridView KvLayerListCtrl::takeView() {
    const KvLayerGridView taken = view();
    m_model->setLayers({});
    return taken;
}

void KvLayerListCtrl::restoreView(const KvLayerGridView& view) {
    const int row = m_model->rowOf(view.current);
    if (row >= 0) {
        const int column = std::min(view.column, m_model->columnCount() - 1);
        selectionModel()->setCurrentIndex(m_model->index(row, column), QItemSelectionModel::NoUpdate);
    }
    selectRows(view.selected);
    verticalScrollBar()->setValue(view.top);
    horizontalScrollBar()->setValue(view.left);
}

namespace {

using Layers = std::vector<KvLayerData*>;

/// Where the layer belongs among the rows, from one of them on.
int placeIn(const MyComp& order, const Layers& rows, KvLayerData* layer, int from) {
    const KvLayerSortKey key = order.keyOf(layer);
    const auto at = std::partition_point(rows.begin() + from, rows.end(), [&](KvLayerData* other) {
        return order.lessthan(order.keyOf(other), key);
    });
    return static_cast<int>(at - rows.begin());
}

/// The rows as they are, with the others, which are sorted, at their places among them.
Layers merged(const MyComp& order, const Layers& rows, const Layers& others) {
    Layers all;
    all.reserve(rows.size() + others.size());
    int next = 0;
    for (KvLayerData* const layer : others) {
        const int place = placeIn(order, rows, layer, next);
        all.insert(all.end(), rows.begin() + next, rows.begin() + place);
        all.push_back(layer);
        next = place;
    }
    all.insert(all.end(), rows.begin() + next, rows.end());
    return all;
}

}  // namespace

void KvLayerListCtrl::placeRow(KvLayerData* layer) {
    if (!layer || m_model->rowOf(layer) >= 0) return;
    m_model->insert(placeIn(comparison(), m_model->layers(), layer, 0), layer);
}

void KvLayerListCtrl::updateRows(const HxArray<KvLayerData*>& layers) {
    std::unordered_set<const KvLayerData*> isWanted(layers.begin(), layers.end());
    Layers staying;
    for (KvLayerData* const layer : m_model->layers()) {
        if (isWanted.erase(layer) > 0) staying.push_back(layer);
    }
    Layers coming;
    std::copy_if(layers.begin(), layers.end(), std::back_inserter(coming),
                 [&](const KvLayerData* layer) { return isWanted.find(layer) != isWanted.end(); });
    if (coming.empty() && static_cast<int>(staying.size()) == m_model->rowCount()) {
        refreshRows();
        return;
    }
    const KvLayerGridView before = view();
    m_model->setLayers(merged(comparison(), staying, sortedLayers(std::move(coming))));
    restoreView(before);
}

// ---- the current layer ----

void KvLayerListCtrl::updateCLayerItemData() {
    const HxDbObjectId before = m_currentLayer;
    m_currentLayer = GetDatabase() ? GetDatabase()->clayer() : HxDbObjectId();
    refreshLayer(before);
    refreshLayer(m_currentLayer);
}

KvLayerData* KvLayerListCtrl::getCurrentCLayerData(int& row) const {
    row = GetDatabase() ? m_model->rowOf(GetDatabase()->clayer()) : -1;
    return m_model->layerAt(row);
}

void KvLayerListCtrl::SetCurLayerSelected() {
    if (GetDatabase()) SelectLayer(GetDatabase()->clayer());
}

void KvLayerListCtrl::SelectLayer(HxDbObjectId layer) {
    const int row = m_model->rowOf(layer);
    if (row < 0) return;
    makeCurrent(m_model->index(row, kColName),
                QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

// ---- selection ----

bool KvLayerListCtrl::ItemIsSelected(int row) const {
    return m_model->layerAt(row) && selectionModel()->isSelected(m_model->index(row, kColName));
}

void KvLayerListCtrl::SelectedLayers(HxArray<KvLayerData*>& layers, HxArray<int>& rows) const {
    for (const int row : selectedRowNumbers()) {
        layers.append(m_model->layerAt(row));
        rows.append(row);
    }
}

std::vector<HxDbObjectId> KvLayerListCtrl::selectedIds() const {
    HxArray<KvLayerData*> layers;
    HxArray<int> rows;
    SelectedLayers(layers, rows);
    std::vector<HxDbObjectId> ids;
    for (const KvLayerData* layer : layers) {
        ids.push_back(layer->layerId());
    }
    return ids;
}

void KvLayerListCtrl::selectRows(const std::vector<HxDbObjectId>& ids) {
    std::vector<int> rows;
    for (const HxDbObjectId id : ids) {
        const int row = m_model->rowOf(id);
        if (row >= 0) rows.push_back(row);
    }
    std::sort(rows.begin(), rows.end());
    selectRowNumbers(rows);
}

int KvLayerListCtrl::FindItem(const wchar_t* name, int start) const {
    if (!name) return -1;
    for (int row = std::max(start, 0); row < m_model->rowCount(); ++row) {
        const KvAutoLayerRecordPtr record(transactions(), m_model->layerAt(row), true);
        if (record.object() && strings_i_compare(record->name(), name) == 0) return row;
    }
    return -1;
}

// ---- where the layers come from ----

HxDbDatabase* KvLayerListCtrl::GetDatabase() const {
    return m_manager ? m_manager->listedDatabase() : nullptr;
}

HxDbTransactionManager* KvLayerListCtrl::transactions() const {
    HxDbDatabase* const database = GetDatabase();
    return database && !m_manager->isPaletteMode() ? database->transactionManager() : nullptr;
}

// ---- order ----

int KvLayerListCtrl::sortedBy() const {
    const int column = horizontalHeader()->logicalIndex(m_sortColumn);
    return column < 0 ? m_sortColumn : column;
}

MyComp KvLayerListCtrl::comparison() const { return MyComp(sortedBy(), m_ascending, this); }

std::vector<KvLayerData*> KvLayerListCtrl::sortedLayers(std::vector<KvLayerData*> layers) const {
    if (layers.size() > 1 && GetDatabase()) sortLayers(layers, comparison());
    return layers;
}

void KvLayerListCtrl::setSortInfo(int column, bool ascending) {
    m_sortColumn = column;
    m_ascending = ascending;
    showSortMark();
}

void KvLayerListCtrl::showSortMark() {
    const int column = horizontalHeader()->logicalIndex(m_sortColumn);
    horizontalHeader()->setSortIndicator(column, m_ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
}

void KvLayerListCtrl::OnHdnItemclick(int column) {
    if (!m_manager || column < 0 || column >= horizontalHeader()->count()) return;
    const ModuleResources resources;
    const bool ascending = column == m_sortColumn ? !m_ascending : true;
    Sort(column, ascending);
    emit sorted(column, !ascending);
}

void KvLayerListCtrl::Sort(int column, bool ascending) {
    if (!GetDatabase()) return;
    const std::vector<HxDbObjectId> selected = selectedIds();
    setSortInfo(column, ascending);
    selectionModel()->clearSelection();
    m_model->reorder(sortedLayers(m_model->layers()));
    selectRows(selected);
}

// ---- keyboard ----

/// Names are read from the records: the cells of rows in between are not made.
QString KvLayerListCtrl::nameAt(int row) const { return nameOf(transactions(), m_model->layerAt(row)); }

void KvLayerListCtrl::LoactedByFirstChar(wchar_t letter) {
    goToName(QString::fromWCharArray(&letter, 1), currentIndex().row() + 1);
}
