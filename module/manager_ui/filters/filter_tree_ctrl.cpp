// The tree of layer filters.
#include "filter_tree_ctrl.h"

#include "frame/util/resource_text.h"
#include "manager_ui/grid/layer_list_ctrl.h"
#include "manager_ui/window/layer_prop_manager_dlg.h"

#include "hxlyfilter.h"

#include <QDropEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QSet>
#include <QSignalBlocker>
#include <QTreeWidgetItemIterator>

namespace {

constexpr int kFilterRole = Qt::UserRole;
constexpr int kNameRole =
    Qt::UserRole + 1;  ///< the filter's own name, by which closed branches are known again

QString toQt(const CStdStr<wchar_t>& text) {
    return QString::fromWCharArray(text.c_str(), static_cast<int>(text.size()));
}

QSet<QString> closedBranches(QTreeWidget& tree) {
    QSet<QString> names;
    for (QTreeWidgetItemIterator at(&tree); *at; ++at) {
        if ((*at)->childCount() > 0 && !(*at)->isExpanded()) names << (*at)->data(0, kNameRole).toString();
    }
    return names;
}

}  // namespace

CKvUiTreeCtrl::CKvUiTreeCtrl(QWidget* parent) : QTreeWidget(parent) {
    setObjectName("IDC_LAYER_FILTER_TREE");
    setHeaderHidden(true);
    setColumnCount(1);
    setUniformRowHeights(true);
    setContextMenuPolicy(Qt::CustomContextMenu);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    viewport()->setAcceptDrops(true);
    setDropIndicatorShown(false);
}

HxLyLayerFilter* CKvUiTreeCtrl::filterOf(const QTreeWidgetItem* item) {
    return item ? item->data(0, kFilterRole).value<HxLyLayerFilter*>() : nullptr;
}

void CKvUiTreeCtrl::setLight(bool light) {
    m_light = light;
    for (QTreeWidgetItemIterator at(this); *at; ++at) {
        if (const HxLyLayerFilter* const filter = filterOf(*at)) (*at)->setIcon(0, iconOf(*filter));
    }
}

QString CKvUiTreeCtrl::displayName(const HxLyLayerFilter& filter) {
    switch (filter.kind()) {
    case HxLyLayerFilter::kAll: return resourceText(kStrFilterAll);
    case HxLyLayerFilter::kAllUsed: return resourceText(kStrFilterAllUsed);
    case HxLyLayerFilter::kAllNonXref: return resourceText(kStrFilterAllNonXref);
    case HxLyLayerFilter::kXrefRoot: return resourceText(kStrFilterXref);
    case HxLyLayerFilter::kViewportOverrides: return resourceText(kStrFilterViewportOverrides);
    default: return toQt(filter.name());
    }
}

QIcon CKvUiTreeCtrl::iconOf(const HxLyLayerFilter& filter) const {
    const char* name = "PROPFILTER";
    switch (filter.kind()) {
    case HxLyLayerFilter::kAll: name = "ALL"; break;
    case HxLyLayerFilter::kXrefRoot:
    case HxLyLayerFilter::kXref: name = "XREF"; break;
    case HxLyLayerFilter::kViewportOverrides: name = "VP"; break;
    case HxLyLayerFilter::kGroup: name = "GROUPFILTER"; break;
    default: break;
    }
    return QIcon(QString(":/KvLayerManager/IDR_TREE_LAYERFILTER_%1%2").arg(m_light ? "" : "DARK_", name));
}

QTreeWidgetItem* CKvUiTreeCtrl::itemOf(HxLyLayerFilter& filter, HxLyLayerFilter* selected) {
    auto* const item = new QTreeWidgetItem({displayName(filter)});
    item->setIcon(0, iconOf(filter));
    item->setToolTip(0, item->text(0));
    if (filter.allowRename()) item->setFlags(item->flags() | Qt::ItemIsEditable);
    item->setData(0, kFilterRole, QVariant::fromValue(&filter));
    item->setData(0, kNameRole, toQt(filter.name()));
    for (HxLyLayerFilter* const nested : filter.getNestedFilters()) {
        item->addChild(itemOf(*nested, selected));
    }
    return item;
}

void CKvUiTreeCtrl::showFilters(HxLyLayerFilter* root, HxLyLayerFilter* selected) {
    const ModuleResources resources;
    const QSignalBlocker silence(this);
    const QSet<QString> closed = closedBranches(*this);
    clear();
    if (!root) return;
    addTopLevelItem(itemOf(*root, selected));
    expandAll();
    for (QTreeWidgetItemIterator at(this); *at; ++at) {
        if (closed.contains((*at)->data(0, kNameRole).toString())) (*at)->setExpanded(false);
        if (filterOf(*at) == selected) setCurrentItem(*at);
    }
}

HxLyLayerFilter* CKvUiTreeCtrl::selectedFilter() const {
    const QList<QTreeWidgetItem*> items = selectedItems();
    return items.isEmpty() ? nullptr : filterOf(items.front());
}

void CKvUiTreeCtrl::editSelected() {
    QTreeWidgetItem* const item = currentItem();
    if (item && item->flags() & Qt::ItemIsEditable) editItem(item);
}

void CKvUiTreeCtrl::keyPressEvent(QKeyEvent* event) {
    if (m_dialog && event->key() == Qt::Key_Delete) {
        m_dialog->OnMenuFilterDelete();
    } else if (m_dialog && event->key() == Qt::Key_F2) {
        m_dialog->OnMenuFilterRename();
    } else {
        QTreeWidget::keyPressEvent(event);
    }
}

// ---- rows of the grid are dropped ----

namespace {

bool comesFromGrid(const QDropEvent& event) { return qobject_cast<KvLayerListCtrl*>(event.source()); }

}  // namespace

void CKvUiTreeCtrl::dragEnterEvent(QDragEnterEvent* event) {
    if (comesFromGrid(*event)) event->acceptProposedAction();
}

void CKvUiTreeCtrl::dragMoveEvent(QDragMoveEvent* event) {
    const QTreeWidgetItem* const item = itemAt(event->pos());
    const HxLyLayerFilter* const filter = filterOf(item);
    if (comesFromGrid(*event) && filter && filter->isIdFilter()) {
        event->acceptProposedAction();
        event->accept(visualItemRect(item));
    } else {
        event->ignore();
    }
}

void CKvUiTreeCtrl::dropEvent(QDropEvent* event) {
    HxLyLayerFilter* const filter = filterOf(itemAt(event->pos()));
    if (!comesFromGrid(*event) || !filter || !filter->isIdFilter()) return;
    event->acceptProposedAction();
    emit layersDropped(filter);
}
