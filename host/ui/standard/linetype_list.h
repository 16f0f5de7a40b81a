// A list of linetypes with samples of their lines.
#pragma once

#include <QStyledItemDelegate>
#include <QTreeWidget>

#include <string>
#include <vector>

namespace korvex {

/// A row: name, sample, description.
class LinetypeList : public QTreeWidget {
    Q_OBJECT
public:
    explicit LinetypeList(QWidget* parent);

    /// `dashes` as a linetype file has them; none: a solid line.
    QTreeWidgetItem* add(const QString& name, const std::vector<double>& dashes, const QString& description);
};

/// Draws a pattern along a cell, so that it is seen at least twice.
class LinetypeSampleDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
};

}  // namespace korvex
