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
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};
