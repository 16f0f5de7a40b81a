// The tab with the palette of the 255 indices.
#include "host/ui/standard/index_color_tab.h"

#include "host/base/text.h"
#include "host/ui/standard/color_grid.h"
#include "host/ui/standard/color_text.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace korvex {

namespace {

constexpr int kHues = 24;
constexpr int kTones = 10;
constexpr int kFirstHue = 10;

/// Hues in columns; even tones above, the darkest on top, odd ones below, the darkest at the bottom, so that
/// the purest of both meet in the middle.
std::vector<int> hueIndexes() {
    std::vector<int> all;
    for (const int tone : {8, 6, 4, 2, 0, 1, 3, 5, 7, 9}) {
        for (int hue = 0; hue < kHues; ++hue) {
            all.push_back(kFirstHue + hue * kTones + tone);
        }
    }
    return all;
}

std::vector<int> indexRange(int first, int last) {
    std::vector<int> all;
    for (int index = first; index <= last; ++index) {
        all.push_back(index);
    }
    return all;
}

QString nameOf(int index) {
    return toQString(HxCmColor::byIndex(static_cast<std::int16_t>(index)).colorNameForDisplay());
}

std::vector<ColorField> fieldsOf(const std::vector<int>& indexes) {
    std::vector<ColorField> fields;
    for (const int index : indexes) {
        const QColor color = indexColor(index);
        const QString name =
            index <= 7 ? QStringLiteral("%1 (%2)").arg(nameOf(index)).arg(index) : nameOf(index);
        fields.push_back({color, QStringLiteral("%1, RGB %2").arg(name, rgbText(color)), index});
    }
    return fields;
}

}  // namespace

IndexColorTab::IndexColorTab(bool allowMetaColors, QWidget* parent)
    : ColorTab(parent), m_allowMetaColors(allowMetaColors), m_text(new QLineEdit(this)),
      m_pointedIndex(new QLabel(this)), m_pointedRgb(new QLabel(this)) {
    ColorGrid* const hues =
        addGrid("IDC_COLOR_PALETTE", tr("Index colors 10 to 249"), hueIndexes(), kHues, kTones / 2);
    ColorGrid* const standard =
        addGrid("IDC_COLOR_STANDARD", tr("Standard colors 1 to 9"), indexRange(1, 9), 9);
    ColorGrid* const greys = addGrid("IDC_COLOR_GREYS", tr("Greys 250 to 255"), indexRange(250, 255), 6);
    m_byLayer = addMetaButton("IDC_COLOR_BYLAYER", tr("By&Layer"), HxCmColor::kIndexByLayer);
    m_byBlock = addMetaButton("IDC_COLOR_BYBLOCK", tr("By&Block"), HxCmColor::kIndexByBlock);
    m_pointedIndex->setObjectName("IDC_COLOR_POINTED_INDEX");
    m_pointedRgb->setObjectName("IDC_COLOR_POINTED_RGB");
    m_text->setObjectName("IDC_COLOR_TEXT");
    m_text->setAccessibleName(tr("Color"));
    m_text->setToolTip(m_allowMetaColors
                           ? tr("An index from 1 to 255, a name such as red, ByLayer or ByBlock")
                           : tr("An index from 1 to 255, or a name such as red"));
    connect(m_text, &QLineEdit::textEdited, this, &IndexColorTab::readText);
    auto* const textLabel = new QLabel(tr("&Color:"), this);
    textLabel->setBuddy(m_text);

    auto* const pointed = new QHBoxLayout;
    pointed->addWidget(m_pointedIndex);
    pointed->addStretch();
    pointed->addWidget(m_pointedRgb);
    auto* const small = new QGridLayout;
    small->setHorizontalSpacing(12);
    small->addWidget(standard, 0, 0, Qt::AlignLeft | Qt::AlignVCenter);
    small->addWidget(m_byLayer, 0, 2);
    small->addWidget(m_byBlock, 0, 3);
    small->addWidget(greys, 1, 0, Qt::AlignLeft | Qt::AlignVCenter);
    small->addWidget(textLabel, 1, 1, Qt::AlignRight | Qt::AlignVCenter);
    small->addWidget(m_text, 1, 2, 1, 2);
    small->setColumnStretch(1, 1);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(hues, 0, Qt::AlignHCenter);
    layout->addLayout(pointed);
    layout->addSpacing(6);
    layout->addLayout(small);
    layout->addStretch();
    QWidget* before = hues;
    for (QWidget* stop : std::initializer_list<QWidget*>{standard, greys, m_byLayer, m_byBlock, m_text}) {
        setTabOrder(before, stop);
        before = stop;
    }
    point(-1);
}

ColorGrid* IndexColorTab::addGrid(const char* name, const QString& title, const std::vector<int>& indexes,
                                  int columns, int gapRow) {
    auto* const grid = new ColorGrid(fieldsOf(indexes), columns, this, gapRow);
    grid->setObjectName(name);
    grid->setAccessibleName(title);
    connect(grid, &ColorGrid::chosen, this, &IndexColorTab::choose);
    connect(grid, &ColorGrid::pointedAt, this, &IndexColorTab::point);
    connect(grid, &ColorGrid::leftAll, this, [this] { point(m_index); });
    connect(grid, &QAbstractItemView::doubleClicked, this, &ColorTab::confirmed);
    m_grids.push_back(grid);
    return grid;
}

QPushButton* IndexColorTab::addMetaButton(const char* name, const QString& text, int index) {
    auto* const button = new QPushButton(text, this);
    button->setObjectName(name);
    button->setAccessibleName(nameOf(index));
    button->setCheckable(true);
    button->setAutoDefault(false);
    button->setVisible(m_allowMetaColors);
    connect(button, &QPushButton::clicked, this, [this, index] { choose(index); });
    return button;
}

void IndexColorTab::takeFocus() {
    m_text->setFocus();
    m_text->selectAll();
}

void IndexColorTab::choose(int index) {
    const HxCmColor color = HxCmColor::byIndex(static_cast<std::int16_t>(index));
    showColor(color);
    Q_EMIT chosen(color);
}

void IndexColorTab::showColor(const HxCmColor& color) {
    mark(color);
    m_text->setText(color.isByColor() ? QString() : toQString(color.colorNameForDisplay()).remove("Color "));
}

void IndexColorTab::mark(const HxCmColor& color) {
    m_index = color.isByColor() ? -1 : color.colorIndex();
    for (ColorGrid* grid : m_grids) {
        grid->setChosen(m_index);
    }
    m_byLayer->setChecked(color.isByLayer());
    m_byBlock->setChecked(color.isByBlock());
    point(m_index);
}

/// Tells index and true colour of a field.
void IndexColorTab::point(int index) {
    const bool isIndex = index >= 1 && index <= 255;
    m_pointedIndex->setText(isIndex ? tr("Index color: %1").arg(index) : tr("Index color:"));
    m_pointedRgb->setText(isIndex ? tr("Red, Green, Blue: %1").arg(rgbText(indexColor(index)))
                                  : tr("Red, Green, Blue:"));
}

void IndexColorTab::readText(const QString& text) {
    if (const std::optional<HxCmColor> color = readIndexColor(text, m_allowMetaColors)) {
        mark(*color);
        Q_EMIT chosen(*color);
    }
}

QString IndexColorTab::fault() {
    const QString text = m_text->text().trimmed();
    if (text.isEmpty() || readIndexColor(text, m_allowMetaColors)) {
        return {};
    }
    m_text->setFocus();
    m_text->selectAll();
    return m_allowMetaColors
               ? tr("\"%1\" is no color: type 1 to 255, a name such as red, ByLayer or ByBlock.").arg(text)
               : tr("\"%1\" is no color: type 1 to 255, or a name such as red.").arg(text);
}

}  // namespace korvex
