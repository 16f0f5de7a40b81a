// Paints the cells of the module's tables.
#pragma once

#include <QStyledItemDelegate>

/// Icons in the middle, swatches, line samples and marks left of their texts, overrides on blue, greyed cells
/// pale.
class KvCellDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    /// The text of a cell that is too narrow for it, and what an icon means.
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};
