// Draws check boxes and radio buttons that are seen on every ground.
#include "host/ui/theme/theme_style.h"

#include <QPainter>
#include <QStyleOption>

namespace korvex {

namespace {

QPalette::ColorGroup groupOf(const QStyleOption& option) {
    return option.state & QStyle::State_Enabled ? QPalette::Active : QPalette::Disabled;
}

QRectF squareIn(const QRect& rect) {
    const int side = qMin(rect.width(), rect.height()) - 1;
    return {rect.x() + (rect.width() - side) / 2 + 0.5, rect.y() + (rect.height() - side) / 2 + 0.5,
            side - 1.0, side - 1.0};
}

void prepare(QPainter& painter, const QStyleOption& option) {
    const bool isPointed = option.state & (QStyle::State_MouseOver | QStyle::State_HasFocus);
    const QPalette::ColorGroup group = groupOf(option);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(
        QPen(option.palette.color(group, isPointed ? QPalette::Link : QPalette::PlaceholderText), 1));
    painter.setBrush(option.palette.color(group, QPalette::Base));
}

void drawCheckBox(QPainter& painter, const QStyleOption& option) {
    const QRectF box = squareIn(option.rect);
    prepare(painter, option);
    painter.drawRoundedRect(box, 2, 2);
    const QColor ink = option.palette.color(groupOf(option), QPalette::Text);
    if (option.state & QStyle::State_On) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(ink, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        const double w = box.width();
        const QPointF mark[] = {box.topLeft() + QPointF(0.22 * w, 0.54 * w),
                                box.topLeft() + QPointF(0.42 * w, 0.74 * w),
                                box.topLeft() + QPointF(0.78 * w, 0.28 * w)};
        painter.drawPolyline(mark, 3);
    } else if (option.state & QStyle::State_NoChange) {
        const double inset = box.width() * 0.28;
        painter.fillRect(box.adjusted(inset, inset, -inset, -inset), ink);
    }
}

void drawRadioButton(QPainter& painter, const QStyleOption& option) {
    const QRectF circle = squareIn(option.rect);
    prepare(painter, option);
    painter.drawEllipse(circle);
    if (option.state & QStyle::State_On) {
        const double inset = circle.width() * 0.28;
        painter.setPen(Qt::NoPen);
        painter.setBrush(option.palette.color(groupOf(option), QPalette::Text));
        painter.drawEllipse(circle.adjusted(inset, inset, -inset, -inset));
    }
}

int distance(const QColor& a, const QColor& b) { return qAbs(qGray(a.rgb()) - qGray(b.rgb())); }

/// A line inside of the rectangle, of a colour that stands out from the ground.
void drawFocusFrame(QPainter& painter, const QStyleOption& option) {
    const QPalette& palette = option.palette;
    QColor line = palette.color(QPalette::Active, QPalette::Link);
    if (option.state & QStyle::State_Selected) {
        const QColor ground = palette.color(QPalette::Active, QPalette::Highlight);
        const QColor text = palette.color(QPalette::Active, QPalette::Text);
        const QColor light = palette.color(QPalette::Active, QPalette::HighlightedText);
        line = distance(text, ground) > distance(light, ground) ? text : light;
    }
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(QPen(line, 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(option.rect.adjusted(0, 0, -1, -1));
}

}  // namespace

void ThemeStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                               const QWidget* widget) const {
    switch (element) {
    case PE_IndicatorCheckBox:
    case PE_IndicatorItemViewItemCheck:
    case PE_IndicatorRadioButton:
        painter->save();
        element == PE_IndicatorRadioButton ? drawRadioButton(*painter, *option)
                                           : drawCheckBox(*painter, *option);
        painter->restore();
        break;
    case PE_FrameFocusRect:
        painter->save();
        drawFocusFrame(*painter, *option);
        painter->restore();
        break;
    default: QProxyStyle::drawPrimitive(element, option, painter, widget); break;
    }
}

void ThemeStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                             const QWidget* widget) const {
    QProxyStyle::drawControl(element, option, painter, widget);
    if (element == CE_PushButton && (option->state & State_HasFocus)) {
        constexpr int kInset = 3;
        QStyleOptionFocusRect frame;
        frame.QStyleOption::operator=(*option);
        frame.rect = option->rect.adjusted(kInset, kInset, -kInset, -kInset);
        drawPrimitive(PE_FrameFocusRect, &frame, painter, widget);
    }
}

void ThemeStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                    QPainter* painter, const QWidget* widget) const {
    const auto* const combo = qstyleoption_cast<const QStyleOptionComboBox*>(option);
    if (control == CC_ComboBox && combo) {
        QStyleOptionComboBox shown = *combo;
        shown.state |= State_KeyboardFocusChange;
        QProxyStyle::drawComplexControl(control, &shown, painter, widget);
        return;
    }
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

}  // namespace korvex
