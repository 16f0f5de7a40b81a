// The content of the layer manager.
#include "layer_prop_manager_dlg.h"

#include "format_message.h"
#include "manager_controls.h"

#include "frame/resource_text.h"
#include "manager_ui/filters/filter_tree_ctrl.h"
#include "manager_ui/grid/layer_list_ctrl.h"
#include "manager_ui/grid/layer_list_model.h"
#include "manager_ui/palette/layer_manager_wnd.h"
#include "model/auto_layer_record.h"
#include "model/layer_data.h"
#include "model/layer_prop_manager.h"

#include "hxlyfilter.h"
#include "hxui.h"

#include <QLabel>
#include <QLayout>
#include <QSplitter>

#include <algorithm>
#include <utility>

namespace {

/// So many changed layers are placed one by one; beyond, all rows are sorted anew.
constexpr int kMostSinglePlacements = 16;

}  // namespace

KvLayerPropManagerDlg::KvLayerPropManagerDlg(HxDbDatabase* database, QWidget* parent)
    : HxUiBaseDialog(nullptr, parent), m_database(database) {
    setObjectName("KvLayerPropManagerDlg");
}

KvLayerPropManagerDlg::~KvLayerPropManagerDlg() { ClearDlgData(); }

bool KvLayerPropManagerDlg::OnInitDialog() {
    const ModuleResources resources;
    m_manager = std::make_unique<KvLayerPropManager>(m_database, m_isPalette);
    m_manager->Initialize();
    buildControls();
    initColumns();
    UpdateUIStyle();
    refreshDlgLayers(m_database, true);
    m_list->SetCurLayerSelected();
    return HxUiBaseDialog::OnInitDialog();
}

void KvLayerPropManagerDlg::buildControls() {
    const ManagerControls controls = makeManagerControls(*this);
    m_splitter = controls.splitter;
    m_tree = controls.tree;
    m_list = controls.list;
    m_statistics = controls.statistics;
    m_currentLayer = controls.currentLayer;
    connect(m_tree, SIGNAL(itemSelectionChanged()), SLOT(OnTvnSelchangedTree()));
    m_list->setDialog(this);
    connect(m_list, &KvLayerListCtrl::currentLayerSet, this,
            &KvLayerPropManagerDlg::UpdateCurrentLayerInfoField);
    connect(m_list, &KvLayerListCtrl::columnsReset, this, &KvLayerPropManagerDlg::resetColumns);
    connect(m_list, &KvLayerListCtrl::sorted, this, [this](int column, bool descending) {
        if (m_palette) m_palette->setSortInfo(column, !descending);
    });
    if (!m_palette) return;
    int column = 0;
    bool ascending = true;
    m_palette->getSortInfo(column, ascending);
    m_list->setSortInfo(column, ascending);
}

// ---- columns ----

void KvLayerPropManagerDlg::initColumns() {
    if (shownColumnCount(m_database) == kModelColumnCount) {
        InitModelColInfo();
    } else {
        InitPaperColInfo();
    }
}

void KvLayerPropManagerDlg::InitModelColInfo() { initColumns(KvColumnSet::modelSpace); }

void KvLayerPropManagerDlg::InitPaperColInfo() { initColumns(KvColumnSet::layout); }

/// From the profile whole or not at all.
void KvLayerPropManagerDlg::initColumns(KvColumnSet set) {
    const ModuleResources resources;
    std::vector<tagKvLayerListInfo> columns = defaultColumns(set);
    m_columnSet = set;
    m_columns = GetColInfoFromReg(columns.data()) ? columns : defaultColumns(set);
    std::stable_sort(m_columns.begin(), m_columns.end());
    m_list->setColumns(m_columns);
    rememberColumns();
}

bool KvLayerPropManagerDlg::GetColInfoFromReg(tagKvLayerListInfo* columns) {
    return ::GetColInfoFromReg(gridKind(), m_database, columns);
}

void KvLayerPropManagerDlg::rememberColumns() {
    (m_columnSet == KvColumnSet::modelSpace ? m_modelColumns : m_layoutColumns) = m_list->columns();
}

/// A set that was never shown is written as the profile has it, or by default.
bool KvLayerPropManagerDlg::SaveColInfoInReg() {
    if (!m_list) return false;
    const ModuleResources resources;
    rememberColumns();
    const bool isModel = m_columnSet == KvColumnSet::modelSpace;
    std::vector<tagKvLayerListInfo>& other = isModel ? m_layoutColumns : m_modelColumns;
    if (other.empty())
        other = storedColumns(gridKind(), isModel ? KvColumnSet::layout : KvColumnSet::modelSpace);
    return ::SaveColInfoInReg(gridKind(), m_modelColumns, m_layoutColumns);
}

void KvLayerPropManagerDlg::resetColumns() {
    const ModuleResources resources;
    m_columns = defaultColumns(m_columnSet);
    m_list->setColumns(m_columns);
    SaveColInfoInReg();
}

void KvLayerPropManagerDlg::updateTileMode() {
    const bool isModel = shownColumnCount(m_database) == kModelColumnCount;
    if (isModel == (m_columnSet == KvColumnSet::modelSpace)) return;
    SaveColInfoInReg();
    initColumns();
}

// ---- rows ----

/// The manager works on the current drawing; a mark may be older and name another.
void KvLayerPropManagerDlg::refreshDlgLayers(HxDbDatabase* /*database*/, bool changed) {
    const ModuleResources resources;
    const KvLayerGridView view = m_list->takeView();
    const HxDbDatabase* const before = std::exchange(m_database, m_manager->GetDatabase());
    m_manager->ReloadLayers();
    reloadFilters(before == m_database);
    updateTileMode();
    m_list->setManager(m_manager.get());
    UpdateFiltersTree();
    UpdateLayerList(false);
    if (!changed) m_list->restoreView(view);
}

void KvLayerPropManagerDlg::UpdateLayerList(bool keepSelection) {
    const ModuleResources resources;
    m_list->ShowLayers(m_manager->GetFilteredLayers(m_manager->GetCurrentFilter(), 0), keepSelection);
    UpdateCurrentLayerInfoField();
    UpdateTotalLayersInfoField(CStdStr<wchar_t>());
}

bool KvLayerPropManagerDlg::isShown(HxDbObjectId layer) const {
    KvLayerData* const data = m_manager->FindLayer(layer);
    if (!data || !data->isValid() || layer.isErased()) return false;
    const KvAutoLayerRecordPtr record(m_list->transactions(), data, true);
    const HxLyLayerFilter* const filter = m_manager->GetCurrentFilter();
    return record.object() && (!filter || filter->filter(record.object()));
}

/// Puts the layer's row where it belongs, or takes it away.
void KvLayerPropManagerDlg::placeRow(HxDbObjectId layer) {
    m_list->placeRow(m_manager->FindLayer(layer), isShown(layer));
}

void KvLayerPropManagerDlg::UpdateLayerList(const HxArray<HxDbObjectId>& layers) {
    const ModuleResources resources;
    for (const HxDbObjectId layer : layers) {
        const auto* const record = HxDbLayerTableRecord::cast(hxdbObjectPointer(layer));
        if (record && !layer.isErased()) m_manager->AddToLayers(record);
    }
    if (layers.length() > kMostSinglePlacements) {
        UpdateLayerList(true);
        return;
    }
    for (const HxDbObjectId layer : layers) {
        placeRow(layer);
    }
    UpdateCurrentLayerInfoField();
    UpdateTotalLayersInfoField(CStdStr<wchar_t>());
}

void KvLayerPropManagerDlg::updateCurLayer() {
    UpdateCurrentLayerInfoField();
    m_list->updateCLayerItemData();
    m_list->SetCurLayerSelected();
}

void KvLayerPropManagerDlg::setLayerDataValid(const HxDbLayerTableRecord* record, bool valid) {
    m_manager->setMgrLayerDataValid(record, valid);
}

void KvLayerPropManagerDlg::ClearDlgData() {
    if (!m_manager) return;
    m_list->ShowLayers({}, false);
    m_tree->showFilters(nullptr, nullptr);
    m_manager->ClearData();
    m_database = nullptr;
    UpdateCurrentLayerInfoField();
    UpdateTotalLayersInfoField(CStdStr<wchar_t>());
}

// ---- filters ----

/// The filter that the user looks through stays the current one, if there is still one of its name.
void KvLayerPropManagerDlg::reloadFilters(bool keepsCurrent) {
    const HxLyLayerFilter* const before = keepsCurrent ? m_manager->GetCurrentFilter() : nullptr;
    const CStdStr<wchar_t> name = before ? before->name() : CStdStr<wchar_t>();
    m_tree->showFilters(nullptr, nullptr);
    m_manager->ReloadFilters();
    HxLyLayerFilter* const root = m_manager->GetRootFilter();
    const bool wasRoot = before && root && root->name() == name;
    m_manager->SetCurrentFilter(wasRoot ? root : m_manager->FindFilter(name.c_str()));
    m_manager->procLayerUsageData();
}

void KvLayerPropManagerDlg::ReLoadFilter() {
    reloadFilters(true);
    UpdateFiltersTree();
    UpdateLayerList(true);
}

void KvLayerPropManagerDlg::UpdateFiltersTree() {
    m_tree->showFilters(m_manager->GetRootFilter(), m_manager->GetCurrentFilter());
}

void KvLayerPropManagerDlg::OnTvnSelchangedTree() {
    HxLyLayerFilter* const filter = m_tree->selectedFilter();
    if (!filter || filter == m_manager->GetCurrentFilter()) return;
    m_manager->SetCurrentFilter(filter);
    UpdateLayerList(true);
}

// ---- information lines ----

void KvLayerPropManagerDlg::UpdateTotalLayersInfoField(const CStdStr<wchar_t>& filterName) {
    const ModuleResources resources;
    const HxLyLayerFilter* const filter = m_manager->GetCurrentFilter();
    QString name = QString::fromStdWString(filterName);
    if (name.isEmpty() && filter) name = CKvUiTreeCtrl::displayName(*filter);
    m_statistics->setText(
        formatMessage(resourceText(kStrStatistics), {name, QString::number(m_list->rows().rowCount()),
                                                     QString::number(m_manager->validLayerCount())}));
}

void KvLayerPropManagerDlg::UpdateCurrentLayerInfoField() {
    const ModuleResources resources;
    const HxDbObjectPointer<HxDbLayerTableRecord> layer(
        m_manager->GetDatabase() ? m_manager->GetDatabase()->clayer() : HxDbObjectId(), HxDb::kForRead);
    m_currentLayer->setText(formatMessage(resourceText(kStrCurrentLayerLine),
                                          {layer ? QString::fromWCharArray(layer->name()) : QString()}));
}

// ---- look ----

void KvLayerPropManagerDlg::UpdateUIStyle() {
    if (!m_list) return;
    const bool light = usesLightIcons(m_isPalette);
    m_list->InitImageList(light);
    m_tree->setLight(light);
    hxuiApplyStyle(this);
}

void KvLayerPropManagerDlg::AdjustFrameSize() {
    if (layout()) layout()->activate();
}

void KvLayerPropManagerDlg::OnOK() {
    if (!m_isPalette) HxUiBaseDialog::OnOK();
}

/// The palette is closed by its panel, not by Esc in its content.
void KvLayerPropManagerDlg::OnCancel() {
    if (!m_isPalette) HxUiBaseDialog::OnCancel();
}
