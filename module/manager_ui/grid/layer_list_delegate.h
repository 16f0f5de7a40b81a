// Paints and edits the cells of the layer grid.
#pragma once

#include "manager_ui/cells/cell_delegate.h"

class KvLayerListCtrlItemDelegate : public KvCellDelegate {
    Q_OBJECT
public:
    using KvCellDelegate::KvCellDelegate;
    /// A text that is being typed is left alone.
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;

protected:
    /// Tab takes what was typed and stays in the row.
    bool eventFilter(QObject* editor, QEvent* event) override;
};
