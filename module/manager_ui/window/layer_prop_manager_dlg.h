// The content of the layer manager: filter tree, grid, information lines.
#pragma once

#include "frame/column_settings.h"
#include "manager_ui/grid/layer_column.h"

#include "hxdbid.h"
#include "hxdialog.h"

#include <memory>
#include <vector>

class CKvUiTreeCtrl;
class HxDbLayerTableRecord;
class KvLayerListCtrl;
class KvLayerManagerWnd;
class KvLayerPropManager;
class QLabel;
class QSplitter;

/// The Layer Properties Manager. One class for two uses, chosen by setIsPalette before OnInitDialog: the
/// content of the palette, and a dialog of its own.
class KvLayerPropManagerDlg : public HxUiBaseDialog {
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
    /// These layers have changed: their rows come, go, move or are filled anew.
    void UpdateLayerList(const HxArray<HxDbObjectId>& layers);
    /// Everything from the drawing; `changed`: it is another drawing than before. Null empties the manager.
    void refreshDlgLayers(HxDbDatabase* database, bool changed);
    /// The columns of the space that is current now.
    void updateTileMode();
    /// Another layer is current.
    void updateCurLayer();
    void UpdateTotalLayersInfoField(const CStdStr<wchar_t>& filterName);
    void UpdateCurrentLayerInfoField();
    /// Filters from the drawing, then the tree and the rows.
    void ReLoadFilter();
    /// The tree alone, from the manager's filters.
    void UpdateFiltersTree();
    void setLayerDataValid(const HxDbLayerTableRecord* record, bool valid);
    void ClearDlgData();

    void InitModelColInfo();
    void InitPaperColInfo();
    /// Widths and positions of the current set from the profile; false when any is missing.
    bool GetColInfoFromReg(tagKvLayerListInfo* columns);
    /// Both sets to the profile, the shown one as it is now.
    bool SaveColInfoInReg();

    /// Fits its parts into its size.
    void AdjustFrameSize();
    /// Colours and icons of the host's theme.
    void UpdateUIStyle();

    HxDbDatabase* GetDatabase() const { return m_database; }
    void setDatabase(HxDbDatabase* database) { m_database = database; }
    KvLayerListCtrl& list() const { return *m_list; }
    CKvUiTreeCtrl& tree() const { return *m_tree; }
    KvLayerPropManager* manager() const { return m_manager.get(); }

public Q_SLOTS:
    void OnTvnSelchangedTree();
    void OnOK() override;
    void OnCancel() override;

private:
    void buildControls();
    void initColumns();
    void initColumns(KvColumnSet set);
    void rememberColumns();
    void resetColumns();
    bool isShown(HxDbObjectId layer) const;
    void placeRow(HxDbObjectId layer);
    void reloadFilters(bool keepsCurrent);
    KvGridKind gridKind() const { return m_isPalette ? KvGridKind::palette : KvGridKind::dialog; }

    HxDbDatabase* m_database;
    bool m_isPalette = true;
    KvLayerManagerWnd* m_palette = nullptr;
    std::unique_ptr<KvLayerPropManager> m_manager;
    std::vector<tagKvLayerListInfo> m_columns;                        ///< in display order
    std::vector<tagKvLayerListInfo> m_modelColumns, m_layoutColumns;  ///< as last seen; empty: never shown
    KvColumnSet m_columnSet = KvColumnSet::modelSpace;

    QSplitter* m_splitter = nullptr;
    CKvUiTreeCtrl* m_tree = nullptr;
    KvLayerListCtrl* m_list = nullptr;
    QLabel* m_statistics = nullptr;
    QLabel* m_currentLayer = nullptr;
};
