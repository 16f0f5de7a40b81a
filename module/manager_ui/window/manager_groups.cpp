// Layers of the grid in group filters, and filters chosen from outside of the tree.
#include "frame/util/format_message.h"
#include "layer_prop_manager_dlg.h"

#include "frame/util/resource_text.h"
#include "manager_ui/filters/filter_tree_ctrl.h"
#include "manager_ui/grid/layer_list_ctrl.h"
#include "model/auto_layer_record.h"
#include "model/edit_guard.h"
#include "model/layer_prop_manager.h"

#include "hxlyfilter.h"

#include <QCheckBox>

#include <algorithm>

namespace {

void appendFilters(HxLyLayerFilter& filter, std::vector<HxLyLayerFilter*>& all) {
    all.push_back(&filter);
    for (HxLyLayerFilter* const nested : filter.getNestedFilters()) {
        appendFilters(*nested, all);
    }
}

}  // namespace

/// What is in a group shows only if it is in the groups around it, too.
void KvLayerPropManagerDlg::joinGroups(HxLyLayerGroup& group, const std::vector<HxDbObjectId>& layers) {
    for (HxLyLayerFilter* each = &group; each; each = each->parent()) {
        HxLyLayerGroup* const around = HxLyLayerGroup::cast(each);
        if (!around) continue;
        for (const HxDbObjectId layer : layers) {
            around->addLayerId(layer);
        }
    }
}

std::vector<HxLyLayerFilter*> KvLayerPropManagerDlg::allFilters() const {
    std::vector<HxLyLayerFilter*> all;
    if (HxLyLayerFilter* const root = m_manager->GetRootFilter()) appendFilters(*root, all);
    return all;
}

HxLyLayerFilter* KvLayerPropManagerDlg::filterNamed(const wchar_t* name) const {
    HxLyLayerFilter* const root = m_manager->GetRootFilter();
    return root && root->name() == name ? root : m_manager->FindFilter(name);
}

void KvLayerPropManagerDlg::selectFilter(const wchar_t* name) {
    HxLyLayerFilter* const filter = filterNamed(name);
    if (filter) showFilter(*filter);
}

/// Marks it in the tree, too.
void KvLayerPropManagerDlg::showFilter(HxLyLayerFilter& filter) {
    m_manager->SetCurrentFilter(&filter);
    UpdateFiltersTree();
    UpdateLayerList(true);
}

/// The tree, and which filter is selected. What cannot be stored is not shown either, as it would be lost.
bool KvLayerPropManagerDlg::saveLayerFilters() {
    m_manager->SaveLayerFilters(true);  // filters without records get marks with them
    const Hx::ErrorStatus status = m_manager->SaveLayerFilters(false);
    if (status == Hx::eOk) return true;
    const ModuleResources resources;
    const KvString text = status == Hx::eNotApplicable ? kStrFiltersHaveNoPlace : kStrFiltersNotStored;
    MessageBox(ResourceString(text).c_str(), nullptr, MB_OK | MB_ICONWARNING);
    ReLoadFilter();
    return false;
}

/// Filters of the tree have changed: they are stored, and shown.
bool KvLayerPropManagerDlg::filtersChanged() {
    if (!saveLayerFilters()) return false;
    UpdateFiltersTree();
    UpdateLayerList(true);
    return true;
}

bool KvLayerPropManagerDlg::canRemoveFromGroup() const {
    const HxLyLayerFilter* const filter = m_manager->GetCurrentFilter();
    return filter && filter->isIdFilter() && !m_controls.invert->isChecked() &&
           !m_list->selectedIds().empty();
}

void KvLayerPropManagerDlg::RemoveSelectedFromGroup() {
    auto* const group = HxLyLayerGroup::cast(m_manager->GetCurrentFilter());
    if (!group || !m_list->canEdit()) return;
    const ModuleResources resources;
    const KvLayerUndoAndLockWorker guard(m_isPalette, ResourceString(kStrUndoRemoveFromGroup).c_str());
    HxArray<HxDbObjectId> leaving;
    for (const HxDbObjectId layer : m_list->selectedIds()) {
        leaving.append(layer);
    }
    group->removeLayerIds(leaving);
    filtersChanged();
}

void KvLayerPropManagerDlg::AddSelectedToGroup(const wchar_t* name) {
    addToGroup(HxLyLayerGroup::cast(filterNamed(name)), m_list->selectedIds());
}

void KvLayerPropManagerDlg::addToGroup(HxLyLayerGroup* group, const std::vector<HxDbObjectId>& layers) {
    if (!group || layers.empty() || !m_list->canEdit()) return;
    const ModuleResources resources;
    QString hidden;
    {
        const KvLayerUndoAndLockWorker guard(m_isPalette, ResourceString(kStrUndoAddToGroup).c_str());
        joinGroups(*group, layers);
        hidden = tellHidden(*group, layers);
        if (!filtersChanged()) return;
    }
    if (!hidden.isEmpty()) MessageBox(hidden.toStdWString().c_str(), nullptr, MB_OK | MB_ICONINFORMATION);
}

/// Which of a group's layers a filter around it leaves out; empty when it shows them all.
QString KvLayerPropManagerDlg::tellHidden(const HxLyLayerGroup& group,
                                          const std::vector<HxDbObjectId>& layers) const {
    const HxLyLayerFilter* around = group.parent();
    while (around && around->kind() != HxLyLayerFilter::kProperty) {
        around = around->parent();
    }
    if (!around) return {};
    const auto hidden = std::count_if(layers.begin(), layers.end(), [&](HxDbObjectId layer) {
        const KvAutoLayerRecordPtr record(m_list->transactions(), m_manager->FindLayer(layer), true);
        return record.object() && !group.filter(record.object());
    });
    if (hidden == 0) return {};
    return formatMessage(resourceText(kStrDroppedAreHidden),
                         {QString::number(hidden), QString::number(layers.size()),
                          CKvUiTreeCtrl::displayName(group), CKvUiTreeCtrl::displayName(*around)});
}

void KvLayerPropManagerDlg::NewGroupOfSelected() {
    const std::vector<HxDbObjectId> layers = m_list->selectedIds();
    HxLyLayerFilter* const root = m_manager->GetRootFilter();
    if (!root || layers.empty() || !m_list->canEdit()) return;
    makeGroup(*root, layers, kStrUndoNewGroup);
}

/// It becomes the current filter, and its name is asked for.
void KvLayerPropManagerDlg::makeGroup(HxLyLayerFilter& parent, const std::vector<HxDbObjectId>& layers,
                                      int undoName) {
    const ModuleResources resources;
    auto made = std::make_unique<HxLyLayerGroup>();
    for (const HxDbObjectId layer : layers) {
        made->addLayerId(layer);
    }
    const CStdStr<wchar_t> name = m_manager->GetNextFilterName(ResourceString(kStrNewGroupName).c_str());
    if (made->setName(name.c_str()) != Hx::eOk || parent.addNested(made.get()) != Hx::eOk) return;
    HxLyLayerGroup* const group = made.release();
    {
        const KvLayerUndoAndLockWorker guard(m_isPalette, ResourceString(undoName).c_str());
        m_manager->SetCurrentFilter(group);
        if (!filtersChanged()) return;
    }
    m_tree->editSelected();
}
