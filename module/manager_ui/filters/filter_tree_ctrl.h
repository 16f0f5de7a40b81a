// The tree of layer filters.
#pragma once

#include <QTreeWidget>

class HxLyLayerFilter;
class KvLayerListCtrl;
class KvLayerPropManagerDlg;
Q_DECLARE_OPAQUE_POINTER(HxLyLayerFilter*)
Q_DECLARE_METATYPE(HxLyLayerFilter*)

/// Shows a tree of filters. Items hold pointers to filters: before those go, clear() or showFilters() another
/// tree. Rows of the layer grid can be dropped on group filters.
class CKvUiTreeCtrl : public QTreeWidget {
    Q_OBJECT
public:
    explicit CKvUiTreeCtrl(QWidget* parent = nullptr);

    /// Shows the tree from its root (null empties it), all of it expanded but what the user had closed, with
    /// one filter selected. Sends no signal.
    void showFilters(HxLyLayerFilter* root, HxLyLayerFilter* selected);
    /// The filter of the selected item; null for none.
    HxLyLayerFilter* selectedFilter() const;
    void setLight(bool light);
    /// The manager's window, whose actions keys call; null: there are none.
    void setDialog(KvLayerPropManagerDlg* dialog) { m_dialog = dialog; }
    /// Opens the editor of the selected filter's name; nothing when it keeps its name.
    void editSelected();
    bool isEditing() const { return state() == EditingState; }
    /// Null for an item that is null.
    static HxLyLayerFilter* filterOf(const QTreeWidgetItem* item);

    /// What users read: system filters have texts of their own.
    static QString displayName(const HxLyLayerFilter& filter);

Q_SIGNALS:
    /// The selected rows of a grid were dropped on a group filter.
    void layersDropped(HxLyLayerFilter* group);

protected:
    /// Del deletes the selected filter, F2 renames it.
    void keyPressEvent(QKeyEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    QTreeWidgetItem* itemOf(HxLyLayerFilter& filter, HxLyLayerFilter* selected);
    QIcon iconOf(const HxLyLayerFilter& filter) const;

    bool m_light = false;
    KvLayerPropManagerDlg* m_dialog = nullptr;
};
