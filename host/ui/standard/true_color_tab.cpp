// The tab of true colours: two models of the same colour, and its texts.
#include "host/ui/standard/true_color_tab.h"

#include "host/ui/standard/color_text.h"
#include "host/ui/standard/gradient_bar.h"
#include "host/ui/standard/hue_field.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QStackedWidget>

#include <cmath>

namespace korvex {

namespace {

constexpr int kPerCent = 100;

QColor fromHsl(int hue, int saturation, int luminance) {
    return QColor::fromHslF((hue % HueField::kLargestHue) / 360.0, saturation / 100.0, luminance / 100.0)
        .toRgb();
}

QString hexText(const QColor& color) { return color.name().toUpper(); }

int perCent(double part) { return static_cast<int>(std::lround(part * kPerCent)); }

struct ChannelText {
    const char* number;
    const char* bar;
    const char* label;
    const char* name;
};
constexpr ChannelText kChannels[] = {
    {"IDC_COLOR_RED", "IDC_COLOR_RED_BAR", QT_TR_NOOP("&Red:"), QT_TR_NOOP("Red")},
    {"IDC_COLOR_GREEN", "IDC_COLOR_GREEN_BAR", QT_TR_NOOP("&Green:"), QT_TR_NOOP("Green")},
    {"IDC_COLOR_BLUE", "IDC_COLOR_BLUE_BAR", QT_TR_NOOP("Bl&ue:"), QT_TR_NOOP("Blue")},
};

/// The colour with one of its channels replaced.
QColor withChannel(QColor color, int channel, int value) {
    switch (channel) {
    case 0: color.setRed(value); break;
    case 1: color.setGreen(value); break;
    default: color.setBlue(value);
    }
    return color;
}

}  // namespace

TrueColorTab::TrueColorTab(const HxCmColor& layerColor, QWidget* parent)
    : ColorTab(parent), m_layerColor(layerColor), m_model(new QComboBox(this)),
      m_parts(new QStackedWidget(this)) {
    m_model->setObjectName("IDC_COLOR_MODEL");
    m_model->setAccessibleName(tr("Color model"));
    m_model->addItems({tr("HSL"), tr("RGB")});
    auto* const modelLabel = new QLabel(tr("Color &model:"), this);
    modelLabel->setBuddy(m_model);
    m_parts->addWidget(makeHslPart());
    m_parts->addWidget(makeRgbPart());
    connect(m_model, QOverload<int>::of(&QComboBox::currentIndexChanged), m_parts,
            &QStackedWidget::setCurrentIndex);

    auto* const top = new QHBoxLayout;
    top->addWidget(modelLabel);
    top->addWidget(m_model);
    top->addStretch();
    auto* const layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(m_parts, 1);
    layout->addWidget(makeTexts());
    showAll();
}

QSpinBox* TrueColorTab::addNumber(const char* name, const QString& text, int maximum, QBoxLayout& layout) {
    auto* const number = new QSpinBox(this);
    number->setObjectName(name);
    number->setAccessibleName(QString(text).remove('&').remove(':'));
    number->setRange(0, maximum);
    auto* const label = new QLabel(text, this);
    label->setBuddy(number);
    layout.addWidget(label);
    layout.addWidget(number);
    return number;
}

QWidget* TrueColorTab::makeHslPart() {
    auto* const part = new QWidget(this);
    m_field = new HueField(part);
    m_field->setObjectName("IDC_COLOR_HUE_FIELD");
    m_field->setAccessibleName(tr("Hue and saturation"));
    m_luminanceBar = new GradientBar(Qt::Vertical, kPerCent, part);
    m_luminanceBar->setObjectName("IDC_COLOR_LUMINANCE_BAR");
    m_luminanceBar->setAccessibleName(tr("Luminance"));
    auto* const numbers = new QHBoxLayout;
    m_hslNumbers[0] = addNumber("IDC_COLOR_HUE", tr("&Hue:"), HueField::kLargestHue, *numbers);
    numbers->addStretch();
    m_hslNumbers[1] = addNumber("IDC_COLOR_SATURATION", tr("&Saturation:"), kPerCent, *numbers);
    numbers->addStretch();
    m_hslNumbers[2] = addNumber("IDC_COLOR_LUMINANCE", tr("&Luminance:"), kPerCent, *numbers);
    for (QSpinBox* number : m_hslNumbers) {
        connect(number, QOverload<int>::of(&QSpinBox::valueChanged), this, &TrueColorTab::takeHsl);
    }
    connect(m_field, &HueField::moved, this, [this](int hue, int saturation) {
        m_isShowing = true;
        m_hslNumbers[0]->setValue(hue);
        m_hslNumbers[1]->setValue(saturation);
        m_isShowing = false;
        takeHsl();
    });
    connect(m_luminanceBar, &QAbstractSlider::valueChanged, m_hslNumbers[2], &QSpinBox::setValue);
    auto* const layout = new QGridLayout(part);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_field, 0, 0);
    layout->addWidget(m_luminanceBar, 0, 1);
    layout->addLayout(numbers, 1, 0, 1, 2);
    layout->setRowStretch(0, 1);
    return part;
}

QWidget* TrueColorTab::makeRgbPart() {
    auto* const part = new QWidget(this);
    auto* const layout = new QGridLayout(part);
    layout->setContentsMargins(0, 0, 0, 0);
    for (int i = 0; i < 3; ++i) {
        const ChannelText& text = kChannels[i];
        auto* const label = new QLabel(tr(text.label), part);
        auto* const bar = new GradientBar(Qt::Horizontal, 255, part);
        auto* const number = new QSpinBox(part);
        bar->setObjectName(text.bar);
        bar->setAccessibleName(tr(text.name));
        number->setObjectName(text.number);
        number->setAccessibleName(tr(text.name));
        number->setRange(0, 255);
        label->setBuddy(number);
        connect(bar, &QAbstractSlider::valueChanged, number, &QSpinBox::setValue);
        connect(number, QOverload<int>::of(&QSpinBox::valueChanged), this, &TrueColorTab::takeRgb);
        layout->addWidget(label, i, 0);
        layout->addWidget(bar, i, 1);
        layout->addWidget(number, i, 2);
        m_channels[i] = {bar, number};
    }
    layout->setRowStretch(3, 1);
    return part;
}

QLineEdit* TrueColorTab::addText(const char* name, const QString& accessibleName, const QString& toolTip) {
    auto* const edit = new QLineEdit(this);
    edit->setObjectName(name);
    edit->setAccessibleName(accessibleName);
    edit->setToolTip(toolTip);
    return edit;
}

QWidget* TrueColorTab::makeTexts() {
    auto* const part = new QWidget(this);
    m_rgb = addText("IDC_COLOR_RGB", tr("Color as red, green, blue"), tr("Three numbers from 0 to 255"));
    m_hex = addText("IDC_COLOR_HEX", tr("Color as hexadecimal number"), tr("Six digits, such as #FF8000"));
    connect(m_rgb, &QLineEdit::textEdited, this, [this](const QString& text) {
        takeText(readRgb(text));
        m_hex->setText(hexText(m_color));
    });
    connect(m_hex, &QLineEdit::textEdited, this, [this](const QString& text) {
        takeText(readHex(text));
        m_rgb->setText(rgbText(m_color));
    });
    auto* const layout = new QHBoxLayout(part);
    layout->setContentsMargins(0, 0, 0, 0);
    const std::pair<QLineEdit*, QString> rows[] = {{m_rgb, tr("R,G,&B:")}, {m_hex, tr("He&x:")}};
    for (const auto& [edit, text] : rows) {
        auto* const label = new QLabel(text, part);
        label->setBuddy(edit);
        layout->addWidget(label);
        layout->addWidget(edit, 1);
    }
    return part;
}

TrueColorTab::Model TrueColorTab::model() const { return static_cast<Model>(m_model->currentIndex()); }

void TrueColorTab::setModel(Model model) { m_model->setCurrentIndex(model); }

void TrueColorTab::takeFocus() { m_model->setFocus(); }

void TrueColorTab::showColor(const HxCmColor& color) {
    setColor(seenColor(color, m_layerColor));
    showAll();
    showTexts();
}

/// The colour of the RGB numbers; hue and saturation stay where it has none.
void TrueColorTab::setColor(const QColor& color) {
    if (color == m_color) {
        return;  // keep the hue and saturation that led to it
    }
    m_color = color;
    const QColor hsl = color.toHsl();
    m_luminance = perCent(hsl.lightnessF());
    const bool hasSaturation = m_luminance > 0 && m_luminance < kPerCent;
    m_saturation = hasSaturation ? perCent(hsl.hslSaturationF()) : m_saturation;
    m_hue = hsl.hslHue() >= 0 && hasSaturation ? hsl.hslHue() : m_hue;
}

void TrueColorTab::takeHsl() {
    if (m_isShowing) {
        return;
    }
    m_hue = m_hslNumbers[0]->value();
    m_saturation = m_hslNumbers[1]->value();
    m_luminance = m_hslNumbers[2]->value();
    m_color = fromHsl(m_hue, m_saturation, m_luminance);
    showTexts();
    choose();
}

void TrueColorTab::takeRgb() {
    if (m_isShowing) {
        return;
    }
    setColor(
        QColor(m_channels[0].number->value(), m_channels[1].number->value(), m_channels[2].number->value()));
    showTexts();
    choose();
}

void TrueColorTab::takeText(const std::optional<QColor>& color) {
    if (color) {
        setColor(*color);
        choose();
    }
}

void TrueColorTab::choose() {
    showAll();
    Q_EMIT chosen(HxCmColor::byRgb(static_cast<std::uint8_t>(m_color.red()),
                                   static_cast<std::uint8_t>(m_color.green()),
                                   static_cast<std::uint8_t>(m_color.blue())));
}

/// Everything but the texts, which may be half typed.
void TrueColorTab::showAll() {
    m_isShowing = true;
    const int hsl[] = {m_hue, m_saturation, m_luminance};
    const int rgb[] = {m_color.red(), m_color.green(), m_color.blue()};
    m_field->setPlace(m_hue, m_saturation);
    m_luminanceBar->setColors({fromHsl(m_hue, m_saturation, 0), fromHsl(m_hue, m_saturation, kPerCent / 2),
                               fromHsl(m_hue, m_saturation, kPerCent)});
    m_luminanceBar->setValue(m_luminance);
    for (int i = 0; i < 3; ++i) {
        m_hslNumbers[i]->setValue(hsl[i]);
        m_channels[i].bar->setColors({withChannel(m_color, i, 0), withChannel(m_color, i, 255)});
        m_channels[i].bar->setValue(rgb[i]);
        m_channels[i].number->setValue(rgb[i]);
    }
    m_isShowing = false;
}

void TrueColorTab::showTexts() {
    m_rgb->setText(rgbText(m_color));
    m_hex->setText(hexText(m_color));
}

QString TrueColorTab::fault() {
    QLineEdit* const wrong = !readRgb(m_rgb->text()) ? m_rgb : !readHex(m_hex->text()) ? m_hex : nullptr;
    if (!wrong) {
        return {};
    }
    wrong->setFocus();
    wrong->selectAll();
    return wrong == m_rgb
               ? tr("\"%1\" is no color: type three numbers from 0 to 255, such as 255,128,0.")
                     .arg(m_rgb->text())
               : tr("\"%1\" is no color: type six hexadecimal digits, such as FF8000.").arg(m_hex->text());
}

}  // namespace korvex
