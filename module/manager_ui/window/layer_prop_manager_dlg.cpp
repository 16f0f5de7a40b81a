// The content of the layer manager.
#include "layer_prop_manager_dlg.h"

#include "search_edit.h"

#include "frame/module_state.h"
#include "frame/util/resource_text.h"
#include "manager_ui/filters/filter_tree_ctrl.h"
#include "manager_ui/grid/layer_list_ctrl.h"
#include "manager_ui/palette/layer_manager_wnd.h"
#include "model/layer_prop_manager.h"
#include "model/palette_doc_reactor.h"

#include "hxdoc.h"
#include "hxed.h"
#include "hxlyfilter.h"
#include "hxui.h"

#include <QCheckBox>
#include <QHeaderView>
#include <QLayout>
#include <QShortcut>
#include <QSplitter>
#include <QToolButton>

#include <algorithm>
#include <utility>

namespace {

/// From here on, filters are suspected to be there by mistake.
constexpr int kManyFilters = 128;

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
    CheckLayerFilterNumber(kManyFilters);  // in the dialog's transaction: Cancel brings them back
    buildControls();
    initColumns();
    initPlacement();
    UpdateUIStyle();
    refreshDlgLayers(m_database, true);
    if (!m_isPalette) avoidEmptyFilter();
    m_firstFilter = currentFilterName();
    m_list->SetCurLayerSelected();
    m_list->setFocus();
    return HxUiBaseDialog::OnInitDialog();
}

void KvLayerPropManagerDlg::buildControls() {
    m_controls = makeManagerControls(*this, !m_isPalette);
    m_tree = m_controls.tree;
    m_list = m_controls.list;
    m_list->setDialog(this);
    if (!m_isPalette) setWindowTitle(resourceText(kStrPaletteTitle));
    connectControls();
    initOrder();
}

void KvLayerPropManagerDlg::connectControls() {
    connectTree();
    connect(m_list, &KvLayerListCtrl::columnsReset, this, &KvLayerPropManagerDlg::resetColumns);
    connect(m_list, &KvLayerListCtrl::sorted, this, &KvLayerPropManagerDlg::rememberOrder);
    connect(m_list, &KvLayerListCtrl::currentLayerSet, this,
            &KvLayerPropManagerDlg::UpdateCurrentLayerInfoField);
    connect(m_list->horizontalHeader(), SIGNAL(sectionResized(int, int, int)),
            SLOT(OnHdnItemChanged(int, int, int)));
    connect(m_controls.invert, SIGNAL(toggled(bool)), SLOT(OnBnClickedCheckInvertfilter(bool)));
    connect(m_controls.search, SIGNAL(searchTextChanged(const QString&)),
            SLOT(OnEnChangeEditSearch(const QString&)));
    connect(m_controls.splitter, &QSplitter::splitterMoved, this, &KvLayerPropManagerDlg::OnSplitterMoved);
    connect(m_controls.collapse, SIGNAL(clicked()), SLOT(collapseFilters()));
    connect(m_controls.expand, SIGNAL(clicked()), SLOT(expandFilters()));
    const std::pair<KvManagerButton, const char*> buttons[] = {
        {kButtonNewPropertyFilter, SLOT(OnButtonNewPropertyFilter())},
        {kButtonNewGroupFilter, SLOT(OnButtonNewGroupFilter())},
        {kButtonLayerStates, SLOT(OnButtonLayerStatesManager())},
        {kButtonNew, SLOT(OnButtonNew())},
        {kButtonDelete, SLOT(OnButtonDelete())},
        {kButtonSetCurrent, SLOT(OnButtonSetCurrent())},
    };
    for (const auto& [button, slot] : buttons) {
        connect(m_controls.buttons[button], SIGNAL(clicked()), slot);
    }
    auto* const find = new QShortcut(QKeySequence::Find, this);
    find->setContext(Qt::WidgetWithChildrenShortcut);
    connect(find, &QShortcut::activated, m_controls.search, [this] {
        m_controls.search->setFocus(Qt::ShortcutFocusReason);
        m_controls.search->selectAll();
    });
    if (m_isPalette) return;
    connect(GetDlgItem("IDOK"), SIGNAL(clicked()), SLOT(OnOK()));
    connect(GetDlgItem("IDCANCEL"), SIGNAL(clicked()), SLOT(OnCancel()));
}

// ---- order of the rows: kept by the palette, or per document ----

void KvLayerPropManagerDlg::initOrder() {
    int column = kColName;
    bool descending = false;
    if (m_palette) {
        m_palette->getSortInfo(column, descending);
    } else if (const KvLayerPaletteDocReactor* const documents = paletteDocReactor()) {
        const KvLayerSortInfo order = documents->sortInfo(curDoc());
        column = order.column;
        descending = order.descending;
    }
    m_list->setSortInfo(column, !descending);
}

void KvLayerPropManagerDlg::rememberOrder(int column, bool descending) {
    if (m_palette) {
        m_palette->setSortInfo(column, descending);
    } else if (KvLayerPaletteDocReactor* const documents = paletteDocReactor()) {
        documents->setSortInfo(curDoc(), {column, descending});
    }
}

// ---- columns ----

void KvLayerPropManagerDlg::initColumns() {
    if (shownColumnCount(GetDatabase()) == kModelColumnCount) {
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
    return ::GetColInfoFromReg(gridKind(), columns,
                               m_columnSet == KvColumnSet::modelSpace ? kModelColumnCount : kColumnCount);
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

/// The grid's header knows; what it tells is kept with the rest.
void KvLayerPropManagerDlg::OnHdnItemChanged(int /*column*/, int /*before*/, int /*now*/) {
    rememberColumns();
}

void KvLayerPropManagerDlg::resetColumns() {
    const ModuleResources resources;
    m_columns = defaultColumns(m_columnSet);
    m_list->setColumns(m_columns);
    SaveColInfoInReg();
}

void KvLayerPropManagerDlg::updateTileMode() {
    const bool isModel = shownColumnCount(GetDatabase()) == kModelColumnCount;
    if (isModel == (m_columnSet == KvColumnSet::modelSpace)) return;
    SaveColInfoInReg();
    initColumns();
}

// ---- rows ----

HxDbDatabase* KvLayerPropManagerDlg::GetDatabase() const {
    return m_manager ? m_manager->listedDatabase() : m_database;
}

void KvLayerPropManagerDlg::setDatabase(HxDbDatabase* database) {
    if (database != GetDatabase()) ClearDlgData();
}

/// The manager works on the current drawing; a mark may be older and name another.
void KvLayerPropManagerDlg::refreshDlgLayers(HxDbDatabase* /*database*/, bool changed) {
    const ModuleResources resources;
    const KvLayerGridView view = m_list->takeView();
    const HxDbDatabase* const before = GetDatabase();
    m_manager->ReloadLayers();
    m_erased.clear();
    const bool isSame = before && before == GetDatabase();
    reloadFilters(isSame);
    if (!isSame) recallFilter(m_isPalette);
    updateTileMode();
    m_list->setManager(m_manager.get());
    UpdateFiltersTree();
    UpdateLayerList(false);
    if (!changed) m_list->restoreView(view);
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
    if (!m_manager || !m_list) return;
    clearRows();
    m_manager->ClearData();
    m_erased.clear();
    m_made.clear();
    UpdateCurrentLayerInfoField();
    UpdateTotalLayersInfoField(CStdStr<wchar_t>());
    UpdateTBlayerState();
}

/// What points into the manager's layers and filters.
void KvLayerPropManagerDlg::clearRows() {
    m_list->ShowLayers({}, false);
    m_tree->showFilters(nullptr, nullptr);
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
    const ModuleResources resources;
    const CStdStr<wchar_t> before = currentFilterName();
    reloadFilters(true);
    UpdateFiltersTree();
    if (currentFilterName() == before) {
        showSameFilter();
    } else {
        UpdateLayerList(true);
    }
}

void KvLayerPropManagerDlg::UpdateFiltersTree() {
    m_tree->showFilters(m_manager->GetRootFilter(), m_manager->GetCurrentFilter());
}

// ---- look ----

void KvLayerPropManagerDlg::UpdateUIStyle() {
    if (!m_list) return;
    const bool light = usesLightIcons(m_isPalette);
    m_list->InitImageList(light);
    m_tree->setLight(light);
    showToolIcons(m_controls, light);
    hxuiApplyStyle(this);
}

void KvLayerPropManagerDlg::AdjustFrameSize() {
    if (layout()) layout()->activate();
}

CStdStr<wchar_t> KvLayerPropManagerDlg::currentFilterName() const {
    const HxLyLayerFilter* const filter = m_manager->GetCurrentFilter();
    return filter ? filter->name() : CStdStr<wchar_t>();
}

// ---- the end of the dialog; the palette is closed by its panel, not by Esc in its content ----

void KvLayerPropManagerDlg::OnOK() {
    if (m_isPalette) return;
    const bool isOtherFilter = currentFilterName() != m_firstFilter;
    hxedSetInvertLayerFilterFlag(m_controls.invert->isChecked());
    hxedSetUseCurrentFilterFlag(isOtherFilter);
    if (isOtherFilter) m_manager->SaveLayerFilters(true);  // what fails, fails again in Commit
    const ModuleResources resources;
    const Hx::ErrorStatus status = m_manager->Commit(false);
    if (status == Hx::eNotTopTransaction) {
        MessageBox(ResourceString(kStrNotKeptYet).c_str(), nullptr, MB_OK | MB_ICONWARNING);
        return;
    }
    if (status != Hx::eOk) {
        MessageBox(ResourceString(kStrFiltersNotStored).c_str(), nullptr, MB_OK | MB_ICONWARNING);
    }
    savePlacement();
    clearRows();
    HxUiBaseDialog::OnOK();
}

void KvLayerPropManagerDlg::OnCancel() {
    if (m_isPalette) return;
    savePlacement();
    clearRows();
    m_manager->Cancel();
    HxUiBaseDialog::OnCancel();
}
