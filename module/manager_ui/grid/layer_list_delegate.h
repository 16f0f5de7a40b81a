// Paints the cells of the layer grid.
#pragma once

#include <QStyledItemDelegate>

/// Icons in the middle, swatches and line samples left of their texts, overrides on blue, greyed cells pale.
class KvLayerListCtrlItemDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    /// The text of a cell that is too narrow for it, and what an icon means.
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;
    /// A text that is being typed is left alone.
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

protected:
    /// Tab takes what was typed and stays in the row.
    bool eventFilter(QObject* editor, QEvent* event) override;
};
