// The layer palette.
#include "layer_manager_wnd.h"

#include "frame/module_state.h"
#include "manager_ui/filters/filter_tree_ctrl.h"
#include "manager_ui/grid/layer_list_ctrl.h"
#include "manager_ui/window/layer_prop_manager_dlg.h"

#include "hxui.h"

namespace {

constexpr int kMinimumWidth = 100;
constexpr int kSideMargin = 2;

}  // namespace

KvLayerManagerWnd::KvLayerManagerWnd(HxUiDockFrameWindow* frame) : HxUiDockPanel(frame), m_frame(frame) {
    setObjectName("KvLayerManagerWnd");
    connect(frame, SIGNAL(OnIdle()), SLOT(OnUpdateCmdUI()));
    setMinimumWidth(kMinimumWidth);
    m_content = new KvLayerPropManagerDlg(curDocDatabase(), this);
    m_content->setWindowFlags(Qt::Widget);
    m_content->setIsPalette(true);
    m_content->setParentWnd(this);
    hxuiApplyStyle(this);
}

KvLayerManagerWnd::~KvLayerManagerWnd() {
    forgetLayerPalette(*this);
    m_content->savePlacement();
    delete m_content;
}

void KvLayerManagerWnd::initDialog() { m_content->InitPalette(); }

// ---- marks ----

void KvLayerManagerWnd::SetDirtyNeedRefreshAll(HxDbDatabase* database) {
    m_refreshDatabase = database;
    m_dirty |= kDirtyAll;
}

void KvLayerManagerWnd::SetDirtyNeedRefreshListItem(HxDbObjectId layer) {
    m_dirty |= kDirtyItems;
    if (m_isDirtyItem.insert(layer).second) m_dirtyItems.append(layer);
}

void KvLayerManagerWnd::clearDirtyFlag() {
    m_refreshDatabase = nullptr;
    m_dirtyItems.removeAll();
    m_isDirtyItem.clear();
    m_dirty = 0;
}

/// The marks are taken before they are shown: what comes up while showing waits for the next time. All wait
/// while the user types a name, whose row might go. Marks are of the current drawing: another one that is
/// still shown goes first.
void KvLayerManagerWnd::OnUpdateCmdUI() {
    if (m_dirty == 0 || !isVisible()) return;
    if (m_content->list().isEditing() || m_content->tree().isEditing()) return;
    const unsigned dirty = m_dirty;
    HxDbDatabase* const database = m_refreshDatabase;
    const HxArray<HxDbObjectId> items = m_dirtyItems;
    clearDirtyFlag();
    if ((dirty & kDirtyAll) || m_content->GetDatabase() != curDocDatabase()) {
        refreshWndLayers(database, true);
        return;
    }
    if (dirty & kDirtyFilter) updateDlgLayerTree();
    if (dirty & kDirtyItems) updateDlgLayerList(items);
    if (dirty & kDirtyList) updateDlgLayerList();
    if ((dirty & kDirtyUsage) && m_isEnabled) m_content->updateUsage();
}

// ---- showing ----

void KvLayerManagerWnd::refreshWndLayers(HxDbDatabase* database, bool changed) {
    m_content->refreshDlgLayers(database, changed);
    m_content->list().SetCurLayerSelected();
    m_missesChanges = false;
}

void KvLayerManagerWnd::updateCurLayer() {
    if (m_isEnabled) m_content->updateCurLayer();
}

void KvLayerManagerWnd::showLayer(HxDbObjectId layer) { m_content->showLayer(layer); }

void KvLayerManagerWnd::updateTileMode() { m_content->updateTileMode(); }

void KvLayerManagerWnd::updateDlgLayerList() {
    if (m_isEnabled) m_content->refreshRows();
}

void KvLayerManagerWnd::updateDlgLayerList(const HxArray<HxDbObjectId>& layers) {
    if (m_isEnabled) m_content->UpdateLayerList(layers);
}

void KvLayerManagerWnd::updateDlgLayerTree() {
    if (m_isEnabled) m_content->ReLoadFilter();
}

void KvLayerManagerWnd::setLayerDataValid(const HxDbLayerTableRecord* record, bool valid) {
    m_content->setLayerDataValid(record, valid);
}

// ---- data ----

HxDbDatabase* KvLayerManagerWnd::GetDatabase() const { return m_content->GetDatabase(); }
void KvLayerManagerWnd::setDatabase(HxDbDatabase* database) { m_content->setDatabase(database); }
void KvLayerManagerWnd::clearDlgData() { m_content->ClearDlgData(); }

void KvLayerManagerWnd::clearDocData(HxApDocument* document) {
    HxDbDatabase* const database = document ? document->database() : nullptr;
    if (!database) return;
    if (m_content->GetDatabase() == database) m_content->ClearDlgData();
    HxArray<HxDbObjectId> others;
    for (const HxDbObjectId item : m_dirtyItems) {
        if (item.database() != database)
            others.append(item);
        else
            m_isDirtyItem.erase(item);
    }
    m_dirtyItems = others;
}

// ---- order, columns, look ----

void KvLayerManagerWnd::getSortInfo(int& column, bool& descending) const {
    column = m_sortColumn;
    descending = m_sortsDescending;
}

void KvLayerManagerWnd::setSortInfo(int column, bool descending) {
    m_sortColumn = column;
    m_sortsDescending = descending;
}

bool KvLayerManagerWnd::SaveWndLayerListColInfoInReg() { return m_content && m_content->SaveColInfoInReg(); }
void KvLayerManagerWnd::AdjustFrameSize() { m_content->AdjustFrameSize(); }

void KvLayerManagerWnd::UpdateUIStyle() {
    hxuiApplyStyle(this);
    m_content->UpdateUIStyle();
}

// ---- the panel ----

/// Not all that happens is marked while it is hidden: it comes up with everything read anew.
void KvLayerManagerWnd::setVisible(bool visible) {
    if (isVisible() && !visible) {
        m_content->savePlacement();
        m_missesChanges = true;
    }
    if (visible && m_missesChanges) refreshWndLayers(curDocDatabase(), true);
    hxuiMainAppService()->setLayerPaletteVisible(visible);
    HxUiDockPanel::setVisible(visible);
}

void KvLayerManagerWnd::showPanel(bool visible) {
    setVisible(visible);
    m_frame->RecalcLayout();
}

void KvLayerManagerWnd::resizeEvent(QResizeEvent* event) {
    const int title = titleHeight();
    m_content->move(kSideMargin, title + 2);
    m_content->setFixedSize(std::max(width() - 2 * kSideMargin, 0), std::max(height() - title - 6, 0));
    HxUiDockPanel::resizeEvent(event);
}
