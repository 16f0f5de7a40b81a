// The title bar of a dock panel.
#include "host/ui/docking/dock_title_bar.h"

#include "host/ui/theme/theme.h"
#include "host/ui/theme/theme_colors.h"
#include "sdk/hxdock.h"

#include <QContextMenuEvent>
#include <QDockWidget>
#include <QHBoxLayout>
#include <QMenu>
#include <QPainter>
#include <QToolButton>

#include <algorithm>

namespace korvex {

namespace {

constexpr int kButton = 20;
constexpr int kIcon = 16;
constexpr int kMargin = 6;   ///< left of the caption
constexpr int kPadding = 3;  ///< above and below
constexpr int kFewestLetters = 4;

struct Side {
    int position;
    const char* text;
};
constexpr Side kSides[] = {{kHxDockLeft, QT_TR_NOOP("Dock at the &left")},
                           {kHxDockRight, QT_TR_NOOP("Dock at the &right")},
                           {kHxDockTop, QT_TR_NOOP("Dock at the &top")},
                           {kHxDockBottom, QT_TR_NOOP("Dock at the &bottom")}};

}  // namespace

DockTitleBar::DockTitleBar(QDockWidget& panel) : QWidget(&panel), m_panel(panel) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, kPadding, 0);
    row->setSpacing(0);
    row->addStretch(1);
    m_float = addButton("float", "dockPanelFloat");
    m_close = addButton("close", "dockPanelClose");
    m_close->setToolTip(tr("Close (Ctrl+F4)"));
    m_close->setAccessibleName(tr("Close the panel"));
    connect(m_float, &QToolButton::clicked, this, [this] { m_panel.setFloating(!m_panel.isFloating()); });
    connect(m_close, &QToolButton::clicked, &m_panel, &QWidget::close);
    updateButtons();
}

QToolButton* DockTitleBar::addButton(const char* icon, const char* name) {
    auto* button = new QToolButton(this);
    button->setObjectName(name);
    button->setIcon(themeIcon(icon));
    button->setIconSize(QSize(kIcon, kIcon));
    button->setFixedSize(kButton, kButton);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::NoFocus);
    layout()->addWidget(button);
    return button;
}

void DockTitleBar::setCaption(const QString& caption) {
    m_caption = caption;
    setAccessibleName(caption);
    updateToolTip();
    update();
}

void DockTitleBar::updateButtons() {
    const QDockWidget::DockWidgetFeatures features = m_panel.features();
    const bool floats = m_panel.isFloating();
    m_float->setVisible(features & QDockWidget::DockWidgetFloatable);
    m_close->setVisible(features & QDockWidget::DockWidgetClosable);
    m_float->setIcon(themeIcon(floats ? "dock" : "float"));
    m_float->setToolTip(floats ? tr("Dock (double click on the title)")
                               : tr("Float (double click on the title)"));
    m_float->setAccessibleName(floats ? tr("Dock the panel") : tr("Float the panel"));
    layout()->activate();
    updateToolTip();
    update();
}

void DockTitleBar::setActive(bool active) {
    if (active != m_isActive) {
        m_isActive = active;
        update();
    }
}

QSize DockTitleBar::minimumSizeHint() const {
    const int height = std::max(kButton, fontMetrics().height()) + 2 * kPadding;
    return {kMargin + fontMetrics().averageCharWidth() * kFewestLetters + 2 * kButton + kPadding, height};
}

QSize DockTitleBar::sizeHint() const {
    return minimumSizeHint() + QSize(fontMetrics().horizontalAdvance(m_caption), 0);
}

QRect DockTitleBar::captionRect() const {
    int right = width() - kPadding;
    for (const QToolButton* button : {m_float, m_close}) {
        right = button->isHidden() ? right : std::min(right, button->x() - kPadding);
    }
    return {kMargin, 0, std::max(0, right - kMargin), height()};
}

/// The whole caption, where it does not fit.
void DockTitleBar::updateToolTip() {
    const bool fits = fontMetrics().horizontalAdvance(m_caption) <= captionRect().width();
    setToolTip(fits ? QString() : m_caption);
}

void DockTitleBar::paintEvent(QPaintEvent*) {
    const ThemeColors& colors = themeColors();
    QPainter painter(this);
    painter.fillRect(rect(), m_isActive ? colors.activeTitle : colors.title);
    painter.setPen(m_isActive ? colors.activeTitleText : colors.text);
    const QRect place = captionRect();
    painter.drawText(place, Qt::AlignVCenter | Qt::AlignLeft,
                     fontMetrics().elidedText(m_caption, Qt::ElideRight, place.width()));
}

void DockTitleBar::resizeEvent(QResizeEvent*) { updateToolTip(); }

void DockTitleBar::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        updateGeometry();
        updateToolTip();
    }
}

void DockTitleBar::contextMenuEvent(QContextMenuEvent* event) {
    showMenu(event->globalPos());
    event->accept();
}

void DockTitleBar::showMenu(const QPoint& place) {
    const QDockWidget::DockWidgetFeatures features = m_panel.features();
    QMenu menu(this);
    for (const Side& side : kSides) {
        QAction* action =
            menu.addAction(tr(side.text), this, [this, side] { emit sideChosen(side.position); });
        action->setEnabled(features & QDockWidget::DockWidgetMovable);
    }
    menu.addSeparator();
    QAction* floats =
        menu.addAction(tr("&Float"), this, [this] { m_panel.setFloating(!m_panel.isFloating()); });
    floats->setCheckable(true);
    floats->setChecked(m_panel.isFloating());
    floats->setEnabled(features & QDockWidget::DockWidgetFloatable);
    QAction* close = menu.addAction(themeIcon("close"), tr("&Close"), &m_panel, &QWidget::close);
    close->setShortcut(QKeySequence(int(Qt::CTRL) | int(Qt::Key_F4)));
    close->setEnabled(features & QDockWidget::DockWidgetClosable);
    menu.exec(place);
}

}  // namespace korvex
