// The tree of layer filters.
#pragma once

#include <QTreeWidget>

class HxLyLayerFilter;
Q_DECLARE_OPAQUE_POINTER(HxLyLayerFilter*)
Q_DECLARE_METATYPE(HxLyLayerFilter*)

/// Shows a tree of filters. Items hold pointers to filters: before those go, clear() or showFilters() another
/// tree.
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

    /// What users read: system filters have texts of their own.
    static QString displayName(const HxLyLayerFilter& filter);

private:
    QTreeWidgetItem* itemOf(HxLyLayerFilter& filter, HxLyLayerFilter* selected);
    QIcon iconOf(const HxLyLayerFilter& filter) const;

    bool m_light = false;
};
