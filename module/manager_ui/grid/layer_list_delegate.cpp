// The editors in the cells of the layer grid.
#include "layer_list_delegate.h"

#include <QKeyEvent>
#include <QLineEdit>

void KvLayerListCtrlItemDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
    const auto* const line = qobject_cast<QLineEdit*>(editor);
    if (!line || !line->isModified()) QStyledItemDelegate::setEditorData(editor, index);
}

bool KvLayerListCtrlItemDelegate::eventFilter(QObject* editor, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Tab || key == Qt::Key_Backtab) {
            auto* const widget = qobject_cast<QWidget*>(editor);
            emit commitData(widget);
            emit closeEditor(widget, NoHint);
            return true;
        }
    }
    return QStyledItemDelegate::eventFilter(editor, event);
}
