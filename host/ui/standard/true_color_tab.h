// True colours by hue, saturation and luminance, or by red, green and blue.
#pragma once

#include "host/ui/standard/color_tab.h"

#include <QColor>

#include <optional>

class QBoxLayout;
class QComboBox;
class QLineEdit;
class QSpinBox;
class QStackedWidget;

namespace korvex {

class GradientBar;
class HueField;

class TrueColorTab : public ColorTab {
    Q_OBJECT
public:
    enum Model { Hsl, Rgb };

    TrueColorTab(const HxCmColor& layerColor, QWidget* parent);

    void showColor(const HxCmColor& color) override;
    void takeFocus() override;
    QString fault() override;
    Model model() const;
    void setModel(Model model);

private:
    struct Channel {
        GradientBar* bar;
        QSpinBox* number;
    };

    QWidget* makeHslPart();
    QWidget* makeRgbPart();
    QWidget* makeTexts();
    QSpinBox* addNumber(const char* name, const QString& text, int maximum, QBoxLayout& layout);
    QLineEdit* addText(const char* name, const QString& accessibleName, const QString& toolTip);
    void takeHsl();
    void takeRgb();
    void takeText(const std::optional<QColor>& color);
    void setColor(const QColor& color);
    void choose();
    void showAll();
    void showTexts();

    HxCmColor m_layerColor;
    QColor m_color = Qt::black;
    int m_hue = 0;  ///< kept while the colour is a grey or black, which have none
    int m_saturation = 0;
    int m_luminance = 0;
    bool m_isShowing = false;

    QComboBox* m_model;
    QStackedWidget* m_parts;
    HueField* m_field;
    GradientBar* m_luminanceBar;
    QSpinBox* m_hslNumbers[3];
    Channel m_channels[3];
    QLineEdit* m_rgb;
    QLineEdit* m_hex;
};

}  // namespace korvex
