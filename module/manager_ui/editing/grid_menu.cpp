// The context menu of the layer grid.
#include "grid_menu.h"

#include "layer_change.h"
#include "viewport_overrides.h"

#include "frame/util/resource_text.h"
#include "manager_ui/filters/filter_tree_ctrl.h"
#include "manager_ui/grid/layer_column.h"
#include "manager_ui/grid/layer_list_ctrl.h"
#include "manager_ui/grid/layer_list_model.h"
#include "manager_ui/window/layer_prop_manager_dlg.h"
#include "model/isolation_state.h"
#include "model/layer_data.h"
#include "model/layer_prop_manager.h"

#include "hxdbdatabase.h"
#include "hxlyfilter.h"

#include <QCheckBox>
#include <QContextMenuEvent>
#include <QMenu>

namespace {

/// Builds the menu; filters are remembered by name, as the tree may be read anew while the menu is open.
class MenuMaker {
public:
    MenuMaker(KvLayerListCtrl& grid, QMenu& menu) : m_grid(grid), m_menu(menu) {}

    QAction* add(QMenu& menu, int number, const QString& text) {
        QAction* const action = menu.addAction(text);
        action->setObjectName(QString::number(number));
        return action;
    }
    QAction* add(int number, KvString text) { return add(m_menu, number, resourceText(text)); }
    void separator() { m_menu.addSeparator(); }

    void addViewportMenu() {
        if (m_grid.GetDatabase()->tilemode()) return;
        QMenu& menu = *m_menu.addMenu(resourceText(kStrMenuViewport));
        const bool isActive = !activeViewport(m_grid.GetDatabase()).isNull();
        const bool mayFreeze = m_grid.manager()->isPaletteMode();
        add(menu, kMenuFreezeInAll, resourceText(kStrMenuFreezeInAll))->setEnabled(mayFreeze);
        add(menu, kMenuFreezeInOthers, resourceText(kStrMenuFreezeInOthers))
            ->setEnabled(mayFreeze && isActive);
        menu.addSeparator();
        add(menu, kMenuRemoveOverrides, resourceText(kStrMenuRemoveOverrides))->setEnabled(isActive);
        add(menu, kMenuRemoveAllOverrides, resourceText(kStrMenuRemoveAllOverrides));
    }
    void addIsolation(std::size_t selected) {
        separator();
        add(kMenuIsolate, kStrMenuIsolate)->setEnabled(selected > 0);
        add(kMenuEndIsolation, kStrMenuEndIsolation)->setEnabled(isIsolated(*m_grid.GetDatabase()));
    }
    void addFilterMenus(const KvLayerPropManagerDlg& dialog) {
        QMenu& filters = *m_menu.addMenu(resourceText(kStrMenuFilters));
        QMenu& groups = *m_menu.addMenu(resourceText(kStrMenuAddToGroup));
        int filter = kMenuFirstFilter;
        int group = kMenuFirstGroup;
        for (const HxLyLayerFilter* const each : dialog.allFilters()) {
            const QString name = CKvUiTreeCtrl::displayName(*each).replace('&', "&&");
            if (filter == kMenuRemoveOverrides) filter = kMenuPastOverrides;
            if (filter < kMenuFirstGroup) {
                QAction* const action = add(filters, filter++, name);
                action->setData(QString::fromStdWString(each->name()));
                action->setCheckable(true);
                action->setChecked(each == m_grid.manager()->GetCurrentFilter());
            }
            if (each->isIdFilter())
                add(groups, group++, name)->setData(QString::fromStdWString(each->name()));
        }
        groups.setEnabled(!groups.isEmpty() && !m_grid.selectedIds().empty());
    }

private:
    KvLayerListCtrl& m_grid;
    QMenu& m_menu;
};

}  // namespace

void KvLayerListCtrl::contextMenuEvent(QContextMenuEvent* event) {
    if (!m_manager || !m_dialog || !canEdit()) return;
    const ModuleResources resources;
    const std::size_t selected = selectedIds().size();
    QMenu menu(this);
    MenuMaker maker(*this, menu);
    if (selected == 1) {
        maker.add(kMenuSetCurrent, kStrMenuSetCurrent);
        maker.separator();
    }
    maker.add(kMenuNew, kStrMenuNew);
    maker.add(kMenuDelete, kStrMenuDelete)->setEnabled(selected > 0);
    maker.add(kMenuNewGroup, kStrMenuNewGroup)->setEnabled(selected > 0);
    maker.separator();
    maker.add(kMenuSelectAll, kStrMenuSelectAll);
    maker.add(kMenuClearSelection, kStrMenuClearSelection);
    maker.add(kMenuSelectAllButCurrent, kStrMenuSelectAllButCurrent);
    maker.add(kMenuInvertSelection, kStrMenuInvertSelection);
    maker.separator();
    QAction* const invert = maker.add(kMenuInvertFilter, kStrMenuInvertFilter);
    invert->setCheckable(true);
    invert->setChecked(m_dialog->invertBox().isChecked());
    if (m_manager->isPaletteMode()) maker.add(kMenuMerge, kStrMenuMerge)->setEnabled(selected > 0);
    if (selected > 0) maker.addViewportMenu();
    maker.separator();
    maker.add(kMenuSaveState, kStrMenuSaveState);
    maker.add(kMenuStatesManager, kStrMenuStatesManager);
    maker.separator();
    maker.addFilterMenus(*m_dialog);
    if (m_dialog->canRemoveFromGroup()) maker.add(kMenuRemoveFromGroup, kStrMenuRemoveFromGroup);
    if (m_manager->isPaletteMode()) maker.addIsolation(selected);
    m_picked = menu.exec(event->globalPos());
    MenuPick();  // now that the menu has given the keyboard back
    m_picked = nullptr;
}

void KvLayerListCtrl::MenuPick() {
    if (!m_picked || !m_dialog) return;
    const int number = m_picked->objectName().toInt();
    switch (number) {
    case kMenuSetCurrent: return m_dialog->OnButtonSetCurrent();
    case kMenuNew: return m_dialog->OnButtonNew();
    case kMenuSelectAll: return selectAll();
    case kMenuClearSelection: return clearSelection();
    case kMenuSelectAllButCurrent: return selectAllButCurrent();
    case kMenuInvertSelection: return invertSelection();
    case kMenuInvertFilter: return m_dialog->invertBox().toggle();
    case kMenuSaveState: return m_dialog->OnLayerStateSave();
    case kMenuStatesManager: return m_dialog->OnButtonLayerStatesManager();
    case kMenuRemoveFromGroup: return m_dialog->RemoveSelectedFromGroup();
    case kMenuDelete: return m_dialog->OnButtonDelete();
    case kMenuNewGroup: return m_dialog->NewGroupOfSelected();
    case kMenuMerge: return m_dialog->MergeSelectLayersTo();
    case kMenuIsolate: return isolateSelected();
    case kMenuEndIsolation: return endIsolation();
    case kMenuFreezeInAll: return freezeInViewports(L"_.vplayer _F %ls\n_A  ");
    case kMenuFreezeInOthers: return freezeInViewports(L"_.vplayer _F %ls\n_X  ");
    case kMenuRemoveOverrides:
    case kMenuRemoveOverrides + 2: return removeOverrides(false);
    case kMenuRemoveAllOverrides:
    case kMenuRemoveAllOverrides + 2: return removeOverrides(true);
    default: break;
    }
    if (!m_manager || number < kMenuFirstFilter) return;
    const std::wstring name = m_picked->data().toString().toStdWString();
    if (number < kMenuFirstGroup) {
        m_dialog->selectFilter(name.c_str());
    } else {
        m_dialog->AddSelectedToGroup(name.c_str());
    }
}

// ---- selecting ----

void KvLayerListCtrl::selectAllButCurrent() {
    int current = -1;
    getCurrentCLayerData(current);
    std::vector<int> rows;
    for (int row = 0; row < m_model->rowCount(); ++row) {
        if (row != current) rows.push_back(row);
    }
    selectRowNumbers(rows);
}

void KvLayerListCtrl::invertSelection() {
    HxArray<KvLayerData*> layers;
    HxArray<int> selected;
    SelectedLayers(layers, selected);
    std::vector<int> rows;
    int next = 0;
    for (int row = 0; row < m_model->rowCount(); ++row) {
        if (next < selected.length() && selected[next] == row) {
            ++next;
        } else {
            rows.push_back(row);
        }
    }
    selectRowNumbers(rows);
}

// ---- isolation ----

void KvLayerListCtrl::isolateSelected() {
    if (!canEdit() || !isFreeForCommand(this)) return;
    CStdStr<wchar_t> command;
    command.Format(L"_.layiso _N %ls\n", layerNames(*this, selectedIds()).c_str());
    sendToDocument(command.c_str());
    dropPickFirst();
}

void KvLayerListCtrl::endIsolation() {
    if (canEdit() && isFreeForCommand(this)) sendToDocument(L"_.layuniso\n");
}

// ---- viewports ----

/// Not from the dialog: the command would run after its Cancel, too.
void KvLayerListCtrl::freezeInViewports(const wchar_t* format) {
    if (!canEdit() || !m_manager->isPaletteMode()) return;
    CStdStr<wchar_t> command;
    command.Format(format, layerNames(*this, selectedIds()).c_str());
    sendViewportCommand(command);
    dropPickFirst();
}

void KvLayerListCtrl::removeOverrides(bool inAll) {
    const HxDbObjectId viewport = activeViewport(GetDatabase());
    if (!canEdit() || (!inAll && viewport.isNull())) return;
    if (m_manager->isPaletteMode()) {
        CStdStr<wchar_t> command;
        command.Format(inAll ? L"'_.vplayer _M _A\n %ls\n_A  " : L"'_.vplayer _M _A\n %ls\n_C  ",
                       layerNames(*this, selectedIds()).c_str());
        sendViewportCommand(command);
        return;
    }
    const ModuleResources resources;
    const KvString name = inAll ? kStrMenuRemoveAllOverrides : kStrMenuRemoveOverrides;
    changeLayers(*this, selectedIds(), resourceText(name), [&](HxDbLayerTableRecord& layer) {
        inAll ? layer.removeAllOverrides() : layer.removeViewportOverrides(viewport);
    });
}
