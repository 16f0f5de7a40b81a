// The style of all widgets.
#pragma once

#include <QProxyStyle>

namespace korvex {

/// Fusion, but for check boxes and radio buttons, whose outlines it takes from shades that are lost on a dark
/// ground, and for what has the keyboard: Fusion frames that only once the Tab key was used.
class ThemeStyle : public QProxyStyle {
    Q_OBJECT
public:
    ThemeStyle() : QProxyStyle("Fusion") {}
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
};

}  // namespace korvex
