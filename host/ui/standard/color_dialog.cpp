// The colour dialog: three tabs for one colour, shown beside the one that was given.
#include "host/ui/standard/color_dialog.h"

#include "host/base/text.h"
#include "host/ui/standard/color_book_tab.h"
#include "host/ui/standard/color_swatch.h"
#include "host/ui/standard/color_text.h"
#include "host/ui/standard/index_color_tab.h"
#include "host/ui/standard/true_color_tab.h"
#include "sdk/hxstddlg.h"

#include <QBoxLayout>
#include <QLabel>
#include <QTabWidget>

namespace korvex {

namespace {

// What is remembered.
constexpr char kTab[] = "Tab";
constexpr char kModel[] = "ColorModel";
constexpr char kBook[] = "ColorBook";

}  // namespace

ColorDialog::ColorDialog(const HxCmColor& color, bool allowMetaColors, const HxCmColor& layerColor,
                         QWidget* parent)
    : StandardDialog("IDD_TRUECOLOR", tr("Select Color"), "HxTrueColorDlg", parent), m_color(color),
      m_layerColor(layerColor), m_hasColor(allowMetaColors || !(color.isByLayer() || color.isByBlock())),
      m_tabs(new QTabWidget(this)), m_trueColor(new TrueColorTab(layerColor, this)),
      m_books(new ColorBookTab(loadColorBooks(), this)), m_fault(makeFaultLine("IDC_COLOR_FAULT")),
      m_old(new ColorSwatch(this)), m_new(new ColorSwatch(this)), m_newText(new QLabel(this)) {
    m_tabs->setObjectName("IDC_COLOR_TABS");
    addTab(new IndexColorTab(allowMetaColors, this), "IDC_COLOR_TAB_INDEX", tr("&Index Color"));
    addTab(m_trueColor, "IDC_COLOR_TAB_TRUE", tr("&True Color"));
    addTab(m_books, "IDC_COLOR_TAB_BOOKS", tr("Color Boo&ks"));
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(m_tabs, 1);
    layout->addLayout(makeComparison());
    layout->addWidget(m_fault);
    addButtons(layout);
    recall();
    connect(m_tabs, &QTabWidget::currentChanged, this, [this] { showFault(m_fault, {}); });
    if (m_hasColor) {
        take(m_color, nullptr);
    }
    showNew();
    static_cast<ColorTab*>(m_tabs->currentWidget())->takeFocus();
}

void ColorDialog::addTab(ColorTab* tab, const char* name, const QString& title) {
    tab->setObjectName(name);
    connect(tab, &ColorTab::chosen, this, [this, tab](const HxCmColor& color) { take(color, tab); });
    connect(tab, &ColorTab::confirmed, this, [this] { onOk(); });
    m_tabs->addTab(tab, title);
}

QLayout* ColorDialog::makeComparison() {
    m_old->setObjectName("IDC_COLOR_OLD");
    m_old->setAccessibleName(tr("Old color"));
    m_old->setColor(seenColor(m_color, m_layerColor), describeColor(m_color));
    m_new->setObjectName("IDC_COLOR_NEW");
    m_new->setAccessibleName(tr("New color"));
    m_newText->setObjectName("IDC_COLOR_NEW_TEXT");
    auto* const row = new QHBoxLayout;
    row->addWidget(new QLabel(tr("Old:"), this));
    row->addWidget(m_old);
    row->addSpacing(6);
    row->addWidget(new QLabel(tr("New:"), this));
    row->addWidget(m_new);
    row->addWidget(m_newText, 1);
    return row;
}

/// The colour is the choice now; the other tabs show it.
void ColorDialog::take(const HxCmColor& color, const ColorTab* from) {
    m_color = color;
    m_hasColor = true;
    for (int i = 0; i < m_tabs->count(); ++i) {
        auto* const tab = static_cast<ColorTab*>(m_tabs->widget(i));
        if (tab != from) {
            tab->showColor(m_color);
        }
    }
    showFault(m_fault, {});
    showNew();
}

void ColorDialog::showNew() {
    const QString text = m_hasColor ? describeColor(m_color) : tr("none chosen");
    m_new->setColor(m_hasColor ? seenColor(m_color, m_layerColor) : QColor(), text);
    m_newText->setText(text);
    enableOk(m_hasColor);
}

int ColorDialog::fittingTab() const {
    if (!m_hasColor) {
        return qBound(0, settings().number(kTab, Index), m_tabs->count() - 1);
    }
    return !m_color.isByColor() ? Index : m_color.isFromBook() ? Book : True;
}

void ColorDialog::recall() {
    m_trueColor->setModel(settings().number(kModel, TrueColorTab::Hsl) == TrueColorTab::Rgb
                              ? TrueColorTab::Rgb
                              : TrueColorTab::Hsl);
    m_books->showBook(settings().text(kBook));
    m_tabs->setCurrentIndex(fittingTab());
}

void ColorDialog::remember() const {
    settings().setNumber(kTab, m_tabs->currentIndex());
    settings().setNumber(kModel, m_trueColor->model());
    settings().setText(kBook, m_books->bookName());
}

void ColorDialog::onOk() {
    const QString fault = static_cast<ColorTab*>(m_tabs->currentWidget())->fault();
    showFault(m_fault, fault);
    if (fault.isEmpty() && m_hasColor) {
        accept();
    }
}

void ColorDialog::done(int result) {
    remember();
    StandardDialog::done(result);
}

}  // namespace korvex

bool hxedSetColorDialogTrueColor(HxCmColor& color, bool allowMetaColors, const HxCmColor& layerColor,
                                 QWidget* parent) {
    korvex::ColorDialog dialog(color, allowMetaColors, layerColor, parent);
    if (!dialog.run()) {
        return false;
    }
    color = dialog.color();
    return true;
}
