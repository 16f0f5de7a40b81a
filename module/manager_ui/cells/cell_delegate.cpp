// Paints the cells of the module's tables.
#include "cell_delegate.h"

#include "cell_roles.h"

#include "manager_ui/grid/lineweight_text.h"

#include "hxed.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace {

constexpr int kIconSize = 16;
constexpr int kMargin = 4;
constexpr int kSwatchSize = 12;
constexpr int kSampleWidth = 22;

/// Bylayer and the like have no colour of their own: shown as the index that stands in for them.
QColor swatchColor(const HxCmColor& color) {
    if (color.isByColor()) return {color.red(), color.green(), color.blue()};
    return QColor(static_cast<QRgb>(hxedGetRGB(color.colorIndex())));
}

void drawSwatch(QPainter& painter, const QRect& cell, const HxCmColor& color, const QColor& frame) {
    QRect swatch(cell.left() + kMargin, cell.center().y() - kSwatchSize / 2 + 1, kSwatchSize, kSwatchSize);
    painter.setPen(frame);
    painter.setBrush(swatchColor(color));
    painter.drawRect(swatch.adjusted(0, 0, -1, -1));
}

void drawSample(QPainter& painter, const QRect& cell, int lineweight, const QColor& ink) {
    const int thickness = getThicknessFromLineweight(lineweight);
    const int top = cell.center().y() - (thickness - 1) / 2;
    painter.fillRect(cell.left() + kMargin, top, kSampleWidth, thickness, ink);
}

void drawMark(QPainter& painter, const QRect& cell, const QIcon& mark) {
    const QRect place(cell.left() + kMargin, cell.center().y() - kIconSize / 2 + 1, kIconSize, kIconSize);
    mark.paint(&painter, place);
}

/// Where the text begins: behind the swatch, the sample or the mark.
int drawPayload(QPainter& painter, const QRect& cell, const QVariant& payload, const QColor& ink) {
    if (payload.canConvert<LayerListColorItemData>()) {
        drawSwatch(painter, cell, payload.value<LayerListColorItemData>().color, ink);
        return 2 * kMargin + kSwatchSize;
    }
    if (payload.canConvert<LayerListLineweightItemData>()) {
        drawSample(painter, cell, payload.value<LayerListLineweightItemData>().lineweight, ink);
        return 2 * kMargin + kSampleWidth;
    }
    if (payload.canConvert<KvMarkItemData>()) {
        drawMark(painter, cell, payload.value<KvMarkItemData>().mark);
        return 2 * kMargin + kIconSize;
    }
    return kMargin;
}

/// A part of one colour, the rest of another.
QColor mixed(const QColor& a, const QColor& b, double part) {
    const auto mix = [part](int x, int y) { return static_cast<int>(x * part + y * (1 - part)); };
    return {mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue())};
}

/// Selected rows are pale, so that icons and grey texts can be told from them.
void paleSelection(QPalette& palette) {
    constexpr double kStrength = 0.32;
    palette.setColor(QPalette::Highlight, mixed(palette.color(QPalette::Active, QPalette::Highlight),
                                                palette.color(QPalette::Active, QPalette::Base), kStrength));
}

QColor inkOf(const QStyleOptionViewItem& option, bool overridden, bool greyed) {
    if (greyed) return option.palette.color(QPalette::Disabled, QPalette::Text);
    return overridden ? QColor(Qt::black) : option.palette.color(QPalette::Active, QPalette::Text);
}

}  // namespace

void KvCellDelegate::paint(QPainter* painter, const QStyleOptionViewItem& given,
                           const QModelIndex& index) const {
    QStyleOptionViewItem option = given;
    paleSelection(option.palette);
    const bool overridden = index.data(kRoleOverridden).toBool();
    const bool greyed = index.data(kRoleGreyed).toBool();
    const QStyle& style = option.widget ? *option.widget->style() : *QApplication::style();
    painter->save();
    style.drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, option.widget);
    if (overridden) {
        painter->fillRect(option.rect.adjusted(1, 1, -1, -1), index.data(Qt::BackgroundRole).value<QColor>());
    }
    const QVariant icon = index.data(Qt::DecorationRole);
    if (icon.isValid()) {
        const QRect place =
            QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, {kIconSize, kIconSize}, option.rect);
        icon.value<QIcon>().paint(painter, place, Qt::AlignCenter, greyed ? QIcon::Disabled : QIcon::Normal);
    } else {
        const QColor ink = inkOf(option, overridden, greyed);
        const int begin = drawPayload(*painter, option.rect, index.data(kRolePayload), ink);
        const QRect room = option.rect.adjusted(begin, 0, -kMargin, 0);
        const QString text = index.data(Qt::DisplayRole).toString();
        painter->setPen(ink);
        painter->setFont(option.font);
        painter->drawText(room, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                          option.fontMetrics.elidedText(text, Qt::ElideRight, room.width()));
    }
    if (option.state & QStyle::State_HasFocus) {
        QStyleOptionFocusRect focus;
        focus.QStyleOption::operator=(option);
        focus.rect = option.rect;
        style.drawPrimitive(QStyle::PE_FrameFocusRect, &focus, painter, option.widget);
    }
    painter->restore();
}

QSize KvCellDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const int height = std::max(kIconSize, option.fontMetrics.height()) + kMargin;
    if (index.data(Qt::DecorationRole).isValid()) return {kIconSize + 2 * kMargin, height};
    const QVariant payload = index.data(kRolePayload);
    int width =
        option.fontMetrics.horizontalAdvance(index.data(Qt::DisplayRole).toString()) + 2 * kMargin + 2;
    if (payload.canConvert<LayerListColorItemData>()) width += kSwatchSize + kMargin;
    if (payload.canConvert<LayerListLineweightItemData>()) width += kSampleWidth + kMargin;
    if (payload.canConvert<KvMarkItemData>()) width += kIconSize + kMargin;
    return {width, height};
}

bool KvCellDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                               const QModelIndex& index) {
    if (event->type() != QEvent::ToolTip || !index.isValid()) {
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    }
    const bool isIcon = index.data(Qt::DecorationRole).isValid();
    const bool isCut = sizeHint(option, index).width() > option.rect.width();
    QStringList lines;
    if (isIcon || isCut) lines << index.data(Qt::AccessibleTextRole).toString();
    const QString why = index.data(Qt::ToolTipRole).toString();
    if (!why.isEmpty()) lines << why;
    const QString text = lines.join('\n');
    QToolTip::showText(event->globalPos(), text, view->viewport(), option.rect);
    return true;
}
