// The layer palette.
#pragma once

#include "frame/palette_panel.h"

#include "hxdock.h"

#include <memory>
#include <unordered_set>

class KvLayerPropManagerDlg;

/// A dock panel with the layer manager in it. Notifications only mark what has changed; when the host is
/// idle, the palette shows it.
class KvLayerManagerWnd : public HxUiDockPanel, public KvPalettePanel {
    Q_OBJECT
public:
    explicit KvLayerManagerWnd(HxUiDockFrameWindow* frame);
    ~KvLayerManagerWnd() override;

    void initDialog();
    /// Reloads the content and selects the current layer's row.
    void refreshWndLayers(HxDbDatabase* database, bool changed) override;
    void updateDlgLayerList();
    void updateDlgLayerList(const HxArray<HxDbObjectId>& layers);
    void updateDlgLayerTree();
    bool SaveWndLayerListColInfoInReg();
    void AdjustFrameSize();
    void UpdateUIStyle() override;
    /// By which column, by display position, the rows were sorted last, and whether the greatest come first.
    void getSortInfo(int& column, bool& descending) const;
    void setSortInfo(int column, bool descending);
    KvLayerPropManagerDlg& content() const { return *m_content; }

    // KvPalettePanel
    QWidget* widget() override { return this; }
    bool isFloating() const override { return HxUiDockPanel::isFloating(); }
    int dockPosition() const override { return currentDockPosition(); }
    void setDockPosition(int position) override { setCurrentDockPosition(position); }
    void floatAt(int left, int top) override { HxUiDockPanel::floatAt(left, top); }
    void showPanel(bool visible) override;
    void showLayer(HxDbObjectId layer) override;

    // KvLayerPaletteMarks
    bool isPaletteVisible() const override { return isVisible(); }
    bool isWndEnabled() const override { return m_isEnabled; }
    void setWndEnabled(bool enabled) override { m_isEnabled = enabled; }
    void SetDirtyNeedRefreshAll(HxDbDatabase* database) override;
    void SetDirtyNeedRefreshList() override { m_dirty |= kDirtyList; }
    void SetDirtyNeedRefreshListItem(HxDbObjectId layer) override;
    void SetDirtyNeedRefreshFilter() override { m_dirty |= kDirtyFilter; }
    void SetDirtyUsage() override { m_dirty |= kDirtyUsage; }
    void setRefreshDb(HxDbDatabase* database) override { m_refreshDatabase = database; }
    void clearDirtyFlag() override;
    void updateCurLayer() override;
    void updateTileMode() override;
    void setLayerDataValid(const HxDbLayerTableRecord* record, bool valid) override;
    HxDbDatabase* GetDatabase() const override;
    void setDatabase(HxDbDatabase* database) override;
    void clearDlgData() override;
    void clearDocData(HxApDocument* document) override;
    std::int16_t savedNomutt() const override { return m_savedNomutt; }
    void setSavedNomutt(std::int16_t value) override { m_savedNomutt = value; }

public Q_SLOTS:
    /// Shows what was marked. Nothing while it is hidden: the marks stay.
    void OnUpdateCmdUI();
    void setVisible(bool visible) override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    enum Dirty : unsigned {
        kDirtyAll = 1,
        kDirtyList = 2,
        kDirtyItems = 4,
        kDirtyFilter = 8,
        kDirtyUsage = 16
    };

    KvLayerPropManagerDlg* m_content = nullptr;
    HxUiDockFrameWindow* m_frame;
    bool m_isEnabled = true;       ///< false while the layer table is open for change
    bool m_missesChanges = false;  ///< it has been hidden since it was filled
    int m_sortColumn = 1;
    bool m_sortsDescending = false;
    std::int16_t m_savedNomutt = -1;
    unsigned m_dirty = 0;
    HxDbDatabase* m_refreshDatabase = nullptr;
    HxArray<HxDbObjectId> m_dirtyItems;
    std::unordered_set<HxDbObjectId> m_isDirtyItem;
};
