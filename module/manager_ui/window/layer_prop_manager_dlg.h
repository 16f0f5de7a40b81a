// The content of the layer manager: filter tree, grid, information lines.
#pragma once

#include "manager_controls.h"

#include "frame/util/column_settings.h"
#include "manager_ui/grid/layer_column.h"
#include "model/layer_shower.h"

#include "hxdbid.h"
#include "hxdbsymtb.h"
#include "hxdialog.h"

#include <QAbstractItemDelegate>

#include <functional>
#include <memory>
#include <unordered_set>
#include <vector>

class HxDbLayerTableRecord;
class HxLyLayerFilter;
class HxLyLayerGroup;
class QTreeWidgetItem;
class KvLayerData;
class KvLayerManagerWnd;
class KvLayerPropManager;

/// The Layer Properties Manager. One class for two uses, chosen by setIsPalette before OnInitDialog: the
/// content of the palette, which changes the drawing at once, and a dialog of its own, whose changes OK keeps
/// and Cancel takes back.
class KvLayerPropManagerDlg : public HxUiBaseDialog, public KvLayerShower {
    Q_OBJECT
public:
    KvLayerPropManagerDlg(HxDbDatabase* database, QWidget* parent);
    ~KvLayerPropManagerDlg() override;

    void setIsPalette(bool isPalette) { m_isPalette = isPalette; }
    bool isPalette() const { return m_isPalette; }
    /// The palette that it is the content of; null for a dialog.
    void setParentWnd(KvLayerManagerWnd* palette) { m_palette = palette; }
    bool OnInitDialog() override;
    /// OnInitDialog for the palette, whose content is never run as a dialog.
    void InitPalette() { OnInitDialog(); }

    /// Shows the layers of the current filter anew, and the lines below; the selection stays when wanted.
    void UpdateLayerList(bool keepSelection);
    /// These layers have changed: their rows are filled anew where they are; those of new layers come, those
    /// of erased ones go.
    void UpdateLayerList(const HxArray<HxDbObjectId>& layers);
    /// Search, inversion and the current filter give way when they leave the layer out.
    void showLayer(HxDbObjectId layer) override;
    /// Everything from the drawing; `changed`: it is another drawing than before. Null empties the manager.
    void refreshDlgLayers(HxDbDatabase* database, bool changed);
    /// The columns of the space that is current now.
    void updateTileMode();
    /// All rows are filled anew where they are.
    void refreshRows();
    /// Finds out anew which layers are in use.
    void updateUsage();
    /// Another layer is current.
    void updateCurLayer();
    void UpdateTotalLayersInfoField(const CStdStr<wchar_t>& filterName);
    void UpdateCurrentLayerInfoField();
    // ---- filters ----

    /// Filters from the drawing, then the tree and the rows.
    void ReLoadFilter();
    /// The tree alone, from the manager's filters.
    void UpdateFiltersTree();
    /// Every filter, as the tree shows them from top to bottom.
    std::vector<HxLyLayerFilter*> allFilters() const;
    /// Makes the filter of that name current, here and in the tree.
    void selectFilter(const wchar_t* name);
    /// The current filter is a group, and rows are selected that could leave it.
    bool canRemoveFromGroup() const;
    void RemoveSelectedFromGroup();
    /// The selected layers join the group of that name and those that it lies in.
    void AddSelectedToGroup(const wchar_t* name);
    /// A new group of the selected layers becomes current.
    void NewGroupOfSelected();
    /// As LAYERFILTERALERT says: 1 deletes all filters, however few, without asking; 2 asks whether to, when
    /// the drawing has more of them than `threshold` and than layers; otherwise they stay.
    void CheckLayerFilterNumber(int threshold);

    void setLayerDataValid(const HxDbLayerTableRecord* record, bool valid);
    void ClearDlgData();
    /// Delete and Set current are for layers that are shown.
    void UpdateTBlayerState();

    void InitModelColInfo();
    void InitPaperColInfo();
    /// Widths and positions of the current set from the profile, 13 or 19 of them; false when any is missing.
    bool GetColInfoFromReg(tagKvLayerListInfo* columns);
    /// Both sets to the profile, the shown one as it is now.
    bool SaveColInfoInReg();

    // ---- placement ----

    /// Takes the positions into the profile: of the splitter alone for the palette.
    void SaveWindowPos(int x, int y, int width, int height, int split);
    /// The dialog's rectangle as it was last; false, and nothing set, when it was never kept.
    bool ReadWindowPos(int& x, int& y, int& width, int& height);
    /// Columns, rectangle and splitter, as they are now.
    void savePlacement();

    /// Fits its parts into its size.
    void AdjustFrameSize();
    /// Colours and icons of the host's theme.
    void UpdateUIStyle();

    /// The drawing whose layers are shown; null for none.
    HxDbDatabase* GetDatabase() const;
    /// Empties the manager unless it shows that drawing already.
    void setDatabase(HxDbDatabase* database);
    KvLayerListCtrl& list() const { return *m_list; }
    CKvUiTreeCtrl& tree() const { return *m_tree; }
    KvLayerPropManager* manager() const { return m_manager.get(); }
    QCheckBox& invertBox() const { return *m_controls.invert; }

public Q_SLOTS:
    void OnTvnSelchangedTree();
    void OnBnClickedCheckInvertfilter(bool checked);
    void OnEnChangeEditSearch(const QString& text);
    void OnSplitterMoved(int position);
    void OnHdnItemChanged(int column, int before, int now);
    void collapseFilters();
    void expandFilters();

    /// Makes a layer that is like the selected one, and asks for its name.
    void OnButtonNew();
    /// Erases the selected layers; those that must stay are counted in a message.
    void OnButtonDelete();
    /// Makes the layer of the row with the focus current.
    void OnButtonSetCurrent();
    /// Moves all objects of the selected layers to another layer, which the user chooses, and erases them.
    void MergeSelectLayersTo();
    void OnButtonLayerStatesManager();
    void OnLayerStateSave();

    // The filter tree and its context menu; all work on the selected filter.
    void OnDblclkLayerFilterTree(QTreeWidgetItem* item, int column);
    void OnTvnEndlabeleditLayerFilterTree(QWidget* editor, QAbstractItemDelegate::EndEditHint hint);
    void ShowContextMenu(const QPoint& at);
    void OnButtonNewPropertyFilter();
    void OnButtonNewGroupFilter();
    void OnMenuNewPropertyFilter();
    void OnMenuNewGroupFilter();
    void OnMenuVisibilityOn();
    void OnMenuVisibilityOff();
    void OnMenuVisibilityThawed();
    void OnMenuVisibilityFrozen();
    void OnMenuLockLock();
    void OnMenuLockUnlock();
    void OnMenuViewportFreeze();
    void OnMenuViewportThaw();
    /// Freezes every layer that is not in the filter; in the active viewport only.
    void OnMenuIsolateGroupAllViewports();
    void OnMenuIsolateGroupActiveViewportOnly();
    void OnMenuConvertToGroupFilter();
    void OnMenuFilterRename();
    /// With the filters nested in it, after a question.
    void OnMenuFilterDelete();

    void OnOK() override;
    void OnCancel() override;

private:
    void buildControls();
    void initColumns();
    void initColumns(KvColumnSet set);
    void rememberColumns();
    void resetColumns();
    void connectControls();
    void initPlacement();
    void clearRows();
    void initOrder();
    void rememberOrder(int column, bool descending);
    void showFilterPane(bool show, int width);
    HxArray<KvLayerData*> shownLayers();
    void updateInfo();
    void workWithLayerStates(const wchar_t* command, void (*run)(QWidget*));
    void tellCounts(int text, int selected, int failed);
    void showInOrder(const std::vector<HxDbObjectId>& layers);
    void addToCurrentGroups(const HxDbLayerTableRecord& layer);
    void setSearch(const QString& text);
    bool isShown(HxDbObjectId layer) const;
    void showEntries(const std::vector<KvLayerData*>& gone, const std::vector<KvLayerData*>& come);
    void showSameFilter();
    void rememberFilter();
    void recallFilter(bool withSearch);
    void avoidEmptyFilter();
    void reloadFilters(bool keepsCurrent);
    void connectTree();
    CStdStr<wchar_t> currentFilterName() const;
    HxLyLayerFilter* filterNamed(const wchar_t* name) const;
    void showFilter(HxLyLayerFilter& filter);
    bool saveLayerFilters();
    bool filtersChanged();
    void addToGroup(HxLyLayerGroup* group, const std::vector<HxDbObjectId>& layers);
    static void joinGroups(HxLyLayerGroup& group, const std::vector<HxDbObjectId>& layers);
    QString tellHidden(const HxLyLayerGroup& group, const std::vector<HxDbObjectId>& layers) const;
    void makeGroup(HxLyLayerFilter& parent, const std::vector<HxDbObjectId>& layers, int undoName);
    HxLyLayerFilter* parentForNew() const;
    void removeExcessFilters();
    void editPropertyFilter(HxLyLayerFilter& filter);
    std::vector<HxDbObjectId> layersOfFilter(bool inverted) const;
    void changeFilterLayers(int undoName, const std::function<void(HxDbLayerTableRecord&)>& change);
    void freezeLayers(int undoName, std::vector<HxDbObjectId> layers);
    void freezeInViewport(int undoName, bool freeze, const std::vector<HxDbObjectId>& layers);
    KvGridKind gridKind() const { return m_isPalette ? KvGridKind::palette : KvGridKind::dialog; }

    HxDbDatabase* m_database;  ///< the one that it was made for
    bool m_isPalette = true;
    KvLayerManagerWnd* m_palette = nullptr;
    std::unique_ptr<KvLayerPropManager> m_manager;
    std::vector<tagKvLayerListInfo> m_columns;                        ///< in display order
    std::vector<tagKvLayerListInfo> m_modelColumns, m_layoutColumns;  ///< as last seen; empty: never shown
    KvColumnSet m_columnSet = KvColumnSet::modelSpace;

    ManagerControls m_controls;
    CKvUiTreeCtrl* m_tree = nullptr;  ///< these two of m_controls
    KvLayerListCtrl* m_list = nullptr;
    int m_split = 0;  ///< width of the filter pane while it is shown
    bool m_isPaneShown = true;
    QString m_search;                           ///< what is searched for; empty: nothing
    std::unique_ptr<HxLyLayerFilter> m_found;   ///< accepts the names that are searched for
    CStdStr<wchar_t> m_firstFilter;             ///< the current one when the dialog opened
    std::unordered_set<HxDbObjectId> m_erased;  ///< layers of the list whose rows have gone with them
    std::unordered_set<HxDbObjectId> m_made;    ///< made here since the list was made: they stay in it
};
