// A list of linetypes with samples of their lines.
#include "host/ui/standard/linetype_list.h"

#include <QApplication>
#include <QHeaderView>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace korvex {

namespace {

enum Column { kName, kSample, kDescription };
constexpr int kDashesRole = Qt::UserRole + 1;
constexpr int kMargin = 6;
/// Pixels that one repetition of a pattern has at most, in all and for each dash, gap or dot.
constexpr double kLongestRepetition = 60;
constexpr double kLongestElement = 14;

std::vector<double> dashesOf(const QModelIndex& index) {
    std::vector<double> dashes;
    for (const QVariant& dash : index.data(kDashesRole).toList()) {
        dashes.push_back(dash.toDouble());
    }
    return dashes;
}

void drawPattern(QPainter& painter, const QRectF& cell, const std::vector<double>& dashes,
                 const QColor& ink) {
    double length = 0;
    for (const double dash : dashes) {
        length += std::fabs(dash);
    }
    const double y = std::floor(cell.center().y());
    if (!(length > 0)) {
        painter.fillRect(QRectF(cell.left(), y, cell.width(), 1), ink);
        return;
    }
    const double longest = std::min(kLongestRepetition, kLongestElement * static_cast<double>(dashes.size()));
    const double scale = std::min(longest, cell.width() / 2) / length;
    std::size_t i = 0;
    for (double x = cell.left(); x < cell.right(); i = (i + 1) % dashes.size()) {
        const double step = std::fabs(dashes[i]) * scale;
        if (dashes[i] >= 0) {
            const double drawn = std::min(std::max(step, 1.0), cell.right() - x);
            painter.fillRect(QRectF(x, y, drawn, 1), ink);
        }
        x += std::max(step, dashes[i] == 0 ? 0.0 : 1.0);
    }
}

}  // namespace

LinetypeList::LinetypeList(QWidget* parent) : QTreeWidget(parent) {
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setHeaderLabels({tr("Linetype"), tr("Appearance"), tr("Description")});
    setItemDelegateForColumn(kSample, new LinetypeSampleDelegate(this));
    header()->setSectionResizeMode(kSample, QHeaderView::Fixed);
    header()->resizeSection(kName, 130);
    header()->resizeSection(kSample, 150);
}

QTreeWidgetItem* LinetypeList::add(const QString& name, const std::vector<double>& dashes,
                                   const QString& description) {
    auto* const item = new QTreeWidgetItem(this, {name, QString(), description});
    QVariantList list;
    for (const double dash : dashes) {
        list << dash;
    }
    item->setData(kSample, kDashesRole, list);
    item->setData(kSample, Qt::AccessibleTextRole, description);
    item->setToolTip(kDescription, description);
    return item;
}

void LinetypeSampleDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                   const QModelIndex& index) const {
    const QStyle& style = option.widget ? *option.widget->style() : *QApplication::style();
    style.drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, option.widget);
    const bool selected = option.state & QStyle::State_Selected;
    const QPalette::ColorGroup group =
        option.state & QStyle::State_Active ? QPalette::Active : QPalette::Inactive;
    drawPattern(*painter, QRectF(option.rect).adjusted(kMargin, 0, -kMargin, 0), dashesOf(index),
                option.palette.color(group, selected ? QPalette::HighlightedText : QPalette::Text));
}

}  // namespace korvex
