// The context menu of the filter tree: what is done with all layers of a filter at once.
#include "layer_prop_manager_dlg.h"

#include "frame/util/resource_text.h"
#include "manager_ui/editing/layer_change.h"
#include "manager_ui/editing/viewport_overrides.h"
#include "manager_ui/filters/filter_tree_ctrl.h"
#include "manager_ui/grid/layer_list_ctrl.h"
#include "model/edit_guard.h"
#include "model/layer_data.h"
#include "model/layer_prop_manager.h"

#include "hxdoc.h"
#include "hxlyfilter.h"

#include <QMenu>

namespace {

struct MenuRow {
    const char* action;
    const char* slot;
};
const MenuRow kMenu[] = {
    {"IDM_ADD_PROPFILTER", SLOT(OnMenuNewPropertyFilter())},
    {"IDM_ADD_GROUPFILTER", SLOT(OnMenuNewGroupFilter())},
    {"IDM_ON", SLOT(OnMenuVisibilityOn())},
    {"IDM_OFF", SLOT(OnMenuVisibilityOff())},
    {"IDM_THAWED", SLOT(OnMenuVisibilityThawed())},
    {"IDM_FROZEN", SLOT(OnMenuVisibilityFrozen())},
    {"IDM_LOCK", SLOT(OnMenuLockLock())},
    {"IDM_UNLOCK", SLOT(OnMenuLockUnlock())},
    {"IDM_VP_FREEZE", SLOT(OnMenuViewportFreeze())},
    {"IDM_VP_THAW", SLOT(OnMenuViewportThaw())},
    {"IDM_VP_ALLISO", SLOT(OnMenuIsolateGroupAllViewports())},
    {"IDM_VP_ACTIVEISO", SLOT(OnMenuIsolateGroupActiveViewportOnly())},
    {"IDM_CONVERTTOGROUPFILTER", SLOT(OnMenuConvertToGroupFilter())},
    {"IDM_RENAME_FILTER", SLOT(OnMenuFilterRename())},
    {"IDM_DELETE_FILTER", SLOT(OnMenuFilterDelete())},
};

void enable(const QMenu& menu, const char* name, bool enabled) {
    if (auto* const action = menu.findChild<QAction*>(name)) action->setEnabled(enabled);
    if (auto* const submenu = menu.findChild<QMenu*>(name)) submenu->setEnabled(enabled);
}

/// What the filter allows, in the space that is current.
void enableItems(const QMenu& menu, const HxLyLayerFilter& filter, const HxDbDatabase& database) {
    const HxLyLayerFilter* const parent = filter.parent();
    const bool isUsers = filter.kind() == HxLyLayerFilter::kProperty;
    enable(menu, "IDM_ADD_PROPFILTER", filter.allowNested());
    enable(menu, "IDM_ADD_GROUPFILTER", filter.allowNested());
    enable(menu, "IDM_VIEWPORT", !database.tilemode());
    const bool isActive = !activeViewport(&database).isNull();
    enable(menu, "IDM_VP_FREEZE", isActive);
    enable(menu, "IDM_VP_THAW", isActive);
    enable(menu, "IDM_VP_ACTIVEISO", isActive);
    enable(menu, "IDM_VP_ALLISO", !database.tilemode());
    enable(menu, "IDM_CONVERTTOGROUPFILTER", isUsers && parent && parent->allowNested());
    enable(menu, "IDM_RENAME_FILTER", filter.allowRename());
    enable(menu, "IDM_DELETE_FILTER", filter.allowDelete());
}

}  // namespace

/// In the dialog the document is busy with the dialog's own command.
void KvLayerPropManagerDlg::ShowContextMenu(const QPoint& at) {
    const ModuleResources resources;
    const HxApDocument* const document = curDoc();
    if (!document || (m_isPalette && !document->isQuiescent()) || !m_list->canEdit()) return;
    const HxLyLayerFilter* const filter = m_tree->selectedFilter();
    const std::unique_ptr<QMenu> menu(hxuiLoadMenu("IDR_LAYERFILTER_POPUP_MENU", m_tree));
    if (!filter || !menu) return;
    delete menu->findChild<QAction*>("IDM_MODIFY_FILTER");
    for (const MenuRow& row : kMenu) {
        if (auto* const action = menu->findChild<QAction*>(row.action)) {
            // Later, when the menu has given the keyboard back.
            connect(action, SIGNAL(triggered()), this, row.slot, Qt::QueuedConnection);
        }
    }
    enableItems(*menu, *filter, *document->database());
    menu->exec(m_tree->viewport()->mapToGlobal(at));
}

// ---- layers of the filter ----

/// Those that the selected filter accepts, or all others of the drawing.
std::vector<HxDbObjectId> KvLayerPropManagerDlg::layersOfFilter(bool inverted) const {
    std::vector<HxDbObjectId> ids;
    for (const KvLayerData* const data :
         m_manager->GetFilteredLayers(m_tree->selectedFilter(), inverted ? 1 : 0)) {
        ids.push_back(data->layerId());
    }
    return ids;
}

void KvLayerPropManagerDlg::changeFilterLayers(int undoName,
                                               const std::function<void(HxDbLayerTableRecord&)>& change) {
    const ModuleResources resources;
    if (m_list->canEdit()) changeLayers(*m_list, layersOfFilter(false), resourceText(undoName), change);
}

void KvLayerPropManagerDlg::OnMenuVisibilityOn() {
    changeFilterLayers(kStrUndoFilterOn, [](HxDbLayerTableRecord& layer) {
        if (layer.isOff()) layer.setIsOff(false);
    });
}

void KvLayerPropManagerDlg::OnMenuVisibilityOff() {
    const ModuleResources resources;
    if (!m_list->canEdit()) return;
    std::vector<HxDbObjectId> layers = layersOfFilter(false);
    askAboutCurrent(*m_list, layers);
    changeLayers(*m_list, layers, resourceText(kStrUndoFilterOff), [](HxDbLayerTableRecord& layer) {
        if (!layer.isOff()) layer.setIsOff(true);
    });
    dropPickFirst();
}

void KvLayerPropManagerDlg::OnMenuVisibilityThawed() {
    changeFilterLayers(kStrUndoFilterThaw, [](HxDbLayerTableRecord& layer) {
        if (layer.isFrozen()) layer.setIsFrozen(false);
    });
}

void KvLayerPropManagerDlg::freezeLayers(int undoName, std::vector<HxDbObjectId> layers) {
    const ModuleResources resources;
    leaveCurrentThawed(*m_list, layers);
    changeLayers(*m_list, layers, resourceText(undoName), [](HxDbLayerTableRecord& layer) {
        if (!layer.isFrozen()) layer.setIsFrozen(true);
    });
    dropPickFirst();
}

void KvLayerPropManagerDlg::OnMenuVisibilityFrozen() {
    if (m_list->canEdit()) freezeLayers(kStrUndoFilterFreeze, layersOfFilter(false));
}

void KvLayerPropManagerDlg::OnMenuIsolateGroupAllViewports() {
    if (m_list->canEdit()) freezeLayers(kStrUndoFilterIsolate, layersOfFilter(true));
}

void KvLayerPropManagerDlg::OnMenuLockLock() {
    changeFilterLayers(kStrUndoFilterLock, [](HxDbLayerTableRecord& layer) {
        if (!layer.isLocked()) layer.setIsLocked(true);
    });
}

void KvLayerPropManagerDlg::OnMenuLockUnlock() {
    changeFilterLayers(kStrUndoFilterUnlock, [](HxDbLayerTableRecord& layer) {
        if (layer.isLocked()) layer.setIsLocked(false);
    });
}

// ---- the active viewport ----

void KvLayerPropManagerDlg::freezeInViewport(int undoName, bool freeze,
                                             const std::vector<HxDbObjectId>& layers) {
    const ModuleResources resources;
    if (activeViewport(m_manager->GetDatabase()).isNull() || !m_list->canEdit()) return;
    {
        const KvLayerUndoAndLockWorker guard(m_isPalette, ResourceString(undoName).c_str());
        setFrozenInViewport(*m_manager, freeze, layers);
    }
    refreshRows();
    if (freeze) dropPickFirst();
}

void KvLayerPropManagerDlg::OnMenuViewportFreeze() {
    freezeInViewport(kStrUndoFilterVpFreeze, true, layersOfFilter(false));
}

void KvLayerPropManagerDlg::OnMenuViewportThaw() {
    freezeInViewport(kStrUndoFilterVpThaw, false, layersOfFilter(false));
}

void KvLayerPropManagerDlg::OnMenuIsolateGroupActiveViewportOnly() {
    freezeInViewport(kStrUndoFilterIsolate, true, layersOfFilter(true));
}
