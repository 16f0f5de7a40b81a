// The filter tree of the manager: which filter is current, making, renaming and deleting filters.
#include "frame/util/format_message.h"
#include "layer_prop_manager_dlg.h"
#include "search_edit.h"

#include "dialogs/property_filter_dialog.h"
#include "frame/module_state.h"
#include "frame/util/resource_text.h"
#include "frame/util/symbol_name.h"
#include "frame/util/system_variable.h"
#include "manager_ui/filters/excess_filters.h"
#include "manager_ui/filters/filter_tree_ctrl.h"
#include "manager_ui/grid/layer_list_ctrl.h"
#include "manager_ui/grid/layer_list_model.h"
#include "model/edit_guard.h"
#include "model/layer_prop_manager.h"
#include "model/palette_doc_reactor.h"

#include "hxdoc.h"
#include "hxlyfilter.h"

#include <QLineEdit>

namespace {

constexpr wchar_t kExcessCaption[] = L"Layer - Excess Layer Filters";
constexpr wchar_t kExcessText[] =
    L"There are more layer filters in this drawing than layers.Extra layer filters might have been created "
    L"in error.Too many layer filters can result in slower performance.\nWhat do you want to do?\n\nChoose "
    L"yes to delete all layer filters (recommended) \n\nChoose no to retain all layer filters";

QString nameOf(const HxLyLayerFilter& filter) { return QString::fromStdWString(filter.name()); }

}  // namespace

void KvLayerPropManagerDlg::connectTree() {
    m_tree->setDialog(this);
    connect(m_tree, SIGNAL(itemSelectionChanged()), SLOT(OnTvnSelchangedTree()));
    connect(m_tree, SIGNAL(itemDoubleClicked(QTreeWidgetItem*, int)),
            SLOT(OnDblclkLayerFilterTree(QTreeWidgetItem*, int)));
    connect(m_tree, SIGNAL(customContextMenuRequested(const QPoint&)), SLOT(ShowContextMenu(const QPoint&)));
    connect(m_tree->itemDelegate(), SIGNAL(closeEditor(QWidget*, QAbstractItemDelegate::EndEditHint)),
            SLOT(OnTvnEndlabeleditLayerFilterTree(QWidget*, QAbstractItemDelegate::EndEditHint)));
    connect(m_tree, &CKvUiTreeCtrl::layersDropped, this, [this](HxLyLayerFilter* filter) {
        addToGroup(HxLyLayerGroup::cast(filter), m_list->selectedIds());
    });
}

void KvLayerPropManagerDlg::OnTvnSelchangedTree() {
    HxLyLayerFilter* const filter = m_tree->selectedFilter();
    if (!filter || filter == m_manager->GetCurrentFilter()) return;
    m_manager->SetCurrentFilter(filter);
    UpdateLayerList(true);
}

/// A property filter is edited; other branches open and close.
void KvLayerPropManagerDlg::OnDblclkLayerFilterTree(QTreeWidgetItem* item, int /*column*/) {
    HxLyLayerFilter* const filter = CKvUiTreeCtrl::filterOf(item);
    if (filter && filter->kind() == HxLyLayerFilter::kProperty) editPropertyFilter(*filter);
}

// ---- what the palette shows of each drawing ----

void KvLayerPropManagerDlg::rememberFilter() {
    KvLayerPaletteDocReactor* const documents = m_isPalette ? paletteDocReactor() : nullptr;
    if (!documents || !GetDatabase() || GetDatabase() != curDocDatabase()) return;
    documents->setFilterInfo(curDoc(), {currentFilterName(), m_search.toStdWString().c_str()});
}

/// As the user left the drawing in the palette; else the filter that it records.
void KvLayerPropManagerDlg::recallFilter(bool withSearch) {
    const KvLayerPaletteDocReactor* const documents = paletteDocReactor();
    const KvLayerFilterInfo shown = documents ? documents->filterInfo(curDoc()) : KvLayerFilterInfo();
    m_manager->SetCurrentFilter(filterNamed(shown.filter.c_str()));
    if (!withSearch) return;
    setSearch(QString::fromStdWString(shown.search));
    m_controls.search->setText(m_search);
}

/// Nobody has chosen it here: all layers instead of none.
void KvLayerPropManagerDlg::avoidEmptyFilter() {
    HxLyLayerFilter* const root = m_manager->GetRootFilter();
    if (root && m_list->rows().rowCount() == 0) showFilter(*root);
}

// ---- new filters ----

/// Below the selected filter if it takes others, else below the root. Null when there are no filters.
HxLyLayerFilter* KvLayerPropManagerDlg::parentForNew() const {
    HxLyLayerFilter* const selected = m_tree->selectedFilter();
    return selected && selected->allowNested() ? selected : m_manager->GetRootFilter();
}

void KvLayerPropManagerDlg::OnButtonNewPropertyFilter() {
    const ModuleResources resources;
    HxLyLayerFilter* const parent = parentForNew();
    if (!parent || !m_list->canEdit()) return;
    const CStdStr<wchar_t> parentName = parent->name();
    const CStdStr<wchar_t> name = m_manager->GetNextFilterName(ResourceString(kStrNewFilterName).c_str());
    KvPropertyFilterDialog dialog(*m_manager, QString::fromStdWString(name), QString(), parent, this);
    if (dialog.DoModal() != IDOK) return;
    HxLyLayerFilter* const under = filterNamed(parentName.c_str());
    auto made = std::make_unique<HxLyLayerFilter>();
    made->setName(dialog.filterName().toStdWString().c_str());
    made->setFilterExpression(dialog.expression().toStdWString().c_str());
    if (!under || under->addNested(made.get()) != Hx::eOk) return;
    const KvLayerUndoAndLockWorker guard(m_isPalette, ResourceString(kStrUndoNewFilter).c_str());
    m_manager->SetCurrentFilter(made.release());
    filtersChanged();
}

void KvLayerPropManagerDlg::editPropertyFilter(HxLyLayerFilter& edited) {
    const ModuleResources resources;
    if (!m_list->canEdit()) return;
    const CStdStr<wchar_t> before = edited.name();
    KvPropertyFilterDialog dialog(*m_manager, nameOf(edited),
                                  QString::fromStdWString(edited.filterExpression()), edited.parent(), this);
    if (dialog.DoModal() != IDOK) return;
    HxLyLayerFilter* const filter = filterNamed(before.c_str());  // the tree may have been read anew
    if (!filter) return;
    const KvLayerUndoAndLockWorker guard(m_isPalette, ResourceString(kStrUndoEditFilter).c_str());
    if (dialog.filterName() != nameOf(*filter)) filter->setName(dialog.filterName().toStdWString().c_str());
    filter->setFilterExpression(dialog.expression().toStdWString().c_str());
    m_manager->SetCurrentFilter(filter);
    filtersChanged();
}

void KvLayerPropManagerDlg::OnButtonNewGroupFilter() {
    HxLyLayerFilter* const parent = parentForNew();
    if (parent && m_list->canEdit()) makeGroup(*parent, {}, kStrUndoNewGroup);
}

void KvLayerPropManagerDlg::OnMenuNewPropertyFilter() { OnButtonNewPropertyFilter(); }

void KvLayerPropManagerDlg::OnMenuNewGroupFilter() { OnButtonNewGroupFilter(); }

void KvLayerPropManagerDlg::OnMenuConvertToGroupFilter() {
    HxLyLayerFilter* const filter = m_tree->selectedFilter();
    if (!filter || !m_list->canEdit()) return;
    HxLyLayerFilter* const parent =
        filter->parent() && filter->parent()->allowNested() ? filter->parent() : m_manager->GetRootFilter();
    makeGroup(*parent, layersOfFilter(false), kStrUndoConvertFilter);
}

// ---- renaming and deleting ----

void KvLayerPropManagerDlg::OnMenuFilterRename() {
    const HxLyLayerFilter* const filter = m_tree->selectedFilter();
    if (filter && filter->allowRename() && m_list->canEdit()) m_tree->editSelected();
}

void KvLayerPropManagerDlg::OnTvnEndlabeleditLayerFilterTree(QWidget* editor,
                                                             QAbstractItemDelegate::EndEditHint hint) {
    const ModuleResources resources;
    const auto* const line = qobject_cast<QLineEdit*>(editor);
    HxLyLayerFilter* const filter = m_tree->selectedFilter();
    if (!line || !filter) return;
    const QString name = line->text().trimmed();
    if (hint == QAbstractItemDelegate::RevertModelCache || name == nameOf(*filter)) {
        UpdateFiltersTree();
        return;
    }
    const std::wstring wanted = name.toStdWString();
    int refusal = 0;
    if (!kv_isvalidname(wanted.c_str())) refusal = kStrFilterNameInvalid;
    if (refusal == 0 && m_list->canEdit()) {
        const KvLayerUndoAndLockWorker guard(m_isPalette, ResourceString(kStrUndoRenameFilter).c_str());
        const Hx::ErrorStatus status = filter->setName(wanted.c_str());
        if (status == Hx::eOk && !saveLayerFilters()) return;
        if (status != Hx::eOk) refusal = kStrFilterNameDuplicate;
    }
    UpdateFiltersTree();
    updateInfo();
    if (refusal == 0) return;
    MessageBox(formatMessage(resourceText(refusal), {name}).toStdWString().c_str(), nullptr,
               MB_OK | MB_ICONWARNING);
}

void KvLayerPropManagerDlg::OnMenuFilterDelete() {
    const ModuleResources resources;
    const HxLyLayerFilter* const selected = m_tree->selectedFilter();
    if (!selected || !selected->allowDelete() || !m_list->canEdit()) return;
    const CStdStr<wchar_t> name = selected->name();
    const int question =
        selected->getNestedFilters().isEmpty() ? kStrDeleteFilterQuestion : kStrDeleteFiltersQuestion;
    if (MessageBox(formatMessage(resourceText(question), {nameOf(*selected)}).toStdWString().c_str(), nullptr,
                   MB_YESNO | MB_ICONWARNING | MB_DEFBUTTON2) != IDYES)
        return;
    HxLyLayerFilter* const filter = filterNamed(name.c_str());
    HxLyLayerFilter* const parent = filter ? filter->parent() : nullptr;
    if (!parent || parent->removeNested(filter) != Hx::eOk) return;
    const KvLayerUndoAndLockWorker guard(m_isPalette, ResourceString(kStrUndoDeleteFilter).c_str());
    m_manager->SetCurrentFilter(parent);
    m_tree->showFilters(nullptr, nullptr);
    removeAllFiltersTree(filter);
    delete filter;
    filtersChanged();
}

// ---- more filters than layers ----

void KvLayerPropManagerDlg::CheckLayerFilterNumber(int threshold) {
    const int alert = shortVariable(L"LAYERFILTERALERT", 0);
    if (alert == 1) {
        removeExcessFilters();
    } else if (alert == 2) {
        const int filters = getLayerFiltersNumber();
        if (filters <= threshold || getLayersNumber() >= filters) return;
        const int answer = MessageBox(ResourceString(kStrExcessFilters, kExcessText).c_str(),
                                      ResourceString(kStrExcessFiltersCaption, kExcessCaption).c_str(),
                                      MB_YESNO | MB_ICONWARNING);
        if (answer == IDYES) removeExcessFilters();
    }
}

/// One undo step in the palette; nothing when there are none.
void KvLayerPropManagerDlg::removeExcessFilters() {
    if (getLayerFiltersNumber() == 0) return;
    const KvLayerUndoAndLockWorker guard(m_isPalette, ResourceString(kStrUndoDeleteFilter).c_str());
    removeAllFiltersTree();
}
