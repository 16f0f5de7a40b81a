// The main window as a frame for panels: docking, layout, idle signal, moving between panels by keyboard.
#include "host/ui/docking/dock_panel_parts.h"
#include "host/ui/theme/theme.h"

#include <QApplication>
#include <QLayout>
#include <QShortcut>

#include <algorithm>

using korvex::areaOf;

namespace korvex {

namespace {

struct Side {
    int side;
    Qt::DockWidgetArea area;
    Qt::Orientation across;  ///< the way in which another column or row is added there
    Qt::Corner corners[2];
};
constexpr Side kSides[] = {
    {kHxDockLeft, Qt::LeftDockWidgetArea, Qt::Horizontal, {Qt::TopLeftCorner, Qt::BottomLeftCorner}},
    {kHxDockRight, Qt::RightDockWidgetArea, Qt::Horizontal, {Qt::TopRightCorner, Qt::BottomRightCorner}},
    {kHxDockTop, Qt::TopDockWidgetArea, Qt::Vertical, {Qt::TopLeftCorner, Qt::TopRightCorner}},
    {kHxDockBottom, Qt::BottomDockWidgetArea, Qt::Vertical, {Qt::BottomLeftCorner, Qt::BottomRightCorner}},
};

const Side* findSide(int side) {
    for (const Side& known : kSides) {
        if (known.side == side) {
            return &known;
        }
    }
    return nullptr;
}

/// The widget within that had the keyboard last, or the first in the order of the Tab key; null for none.
QWidget* focusTarget(QWidget& part) {
    if (QWidget* last = part.focusWidget()) {
        return last;
    }
    QWidget* at = &part;
    do {
        const bool takes = (at->focusPolicy() & Qt::TabFocus) && at->isEnabled() && at->isVisible();
        if (takes && (at == &part || part.isAncestorOf(at))) {
            return at;
        }
        at = at->nextInFocusChain();
    } while (at && at != &part);
    return nullptr;
}

}  // namespace

Qt::DockWidgetArea areaOf(int side) {
    const Side* known = findSide(side);
    return known ? known->area : Qt::NoDockWidgetArea;
}

int sideOf(Qt::DockWidgetArea area) {
    for (const Side& known : kSides) {
        if (known.area == area) {
            return known.side;
        }
    }
    return kHxDockNone;
}

}  // namespace korvex

HxUiDockFrameWindow::HxUiDockFrameWindow(QWidget* parent) : QMainWindow(parent), m_parts(new Parts(*this)) {
    korvex::startTheme();
    setDockNestingEnabled(true);
    auto* next = new QShortcut(Qt::Key_F6, this);
    connect(next, &QShortcut::activated, this, [this] { focusNextPanel(true); });
    auto* previous = new QShortcut(int(Qt::SHIFT) | int(Qt::Key_F6), this);
    connect(previous, &QShortcut::activated, this, [this] { focusNextPanel(false); });
}

HxUiDockFrameWindow::~HxUiDockFrameWindow() {
    for (HxUiDockPanel* panel : m_parts->panels) {
        panel->m_parts->frame = nullptr;
    }
    delete m_parts;
}

bool HxUiDockFrameWindow::dockPanel(HxUiDockPanel* panel, HxUiDockPanel* beside, int alignment, int share) {
    const std::vector<HxUiDockPanel*>& all = m_parts->panels;
    const auto isOurs = [&all](HxUiDockPanel* one) {
        return std::find(all.begin(), all.end(), one) != all.end();
    };
    const korvex::Side* side = korvex::findSide(alignment);
    const bool isBesideGood = !beside || (isOurs(beside) && beside != panel);
    if (!isOurs(panel) || !side || !isBesideGood || (share != kHxDockWhole && share != kHxDockTabbed)) {
        return false;
    }
    const bool isShown = !panel->isHidden();
    const QSize own = panel->sizeHint();
    if (panel->objectName().isEmpty()) {
        panel->setObjectName(panel->metaObject()->className());
    }
    if (share == kHxDockTabbed && !beside) {
        const auto found = std::find_if(all.begin(), all.end(), [&](HxUiDockPanel* one) {
            return one != panel && one->currentDockPosition() == alignment;
        });
        beside = found != all.end() ? *found : nullptr;
    }
    if (panel->isFloating()) {
        panel->setFloating(false);
    }
    layout()->removeWidget(panel);
    if (share == kHxDockTabbed && beside && !beside->isFloating()) {
        tabifyDockWidget(beside, panel);
    } else {
        for (const Qt::Corner corner : side->corners) {
            setCorner(corner, side->area);
        }
        addDockWidget(side->area, panel, side->across);
    }
    if (isShown == panel->isHidden()) {
        panel->setVisible(isShown);
    }
    panel->m_parts->isNew = true;
    giveSize(*panel, own);
    return true;
}

/// Makes the column or row of a shown, docked panel so wide or high.
void HxUiDockFrameWindow::giveSize(HxUiDockPanel& panel, const QSize& size) {
    const korvex::Side* side = korvex::findSide(panel.currentDockPosition());
    if (side && panel.isVisible()) {
        panel.m_parts->isNew = false;
        resizeDocks({&panel}, {side->across == Qt::Horizontal ? size.width() : size.height()}, side->across);
    }
}

void HxUiDockFrameWindow::undockPanel(HxUiDockPanel* panel) {
    if (panel && panel->m_parts->frame == this) {
        removeDockWidget(panel);
    }
}

void HxUiDockFrameWindow::RecalcLayout() {
    layout()->invalidate();
    layout()->activate();
}

void HxUiDockFrameWindow::notifyIdle() {
    if (!m_parts->isTellingIdle) {
        m_parts->isTellingIdle = true;
        emit OnIdle();
        m_parts->isTellingIdle = false;
    }
}

void HxUiDockFrameWindow::focusNextPanel(bool forward) {
    std::vector<QWidget*> parts;
    if (centralWidget()) {
        parts.push_back(centralWidget());
    }
    for (HxUiDockPanel* panel : m_parts->panels) {
        if (panel->isVisible()) {
            parts.push_back(panel);
        }
    }
    QWidget* now = QApplication::focusWidget();
    const auto at = std::find_if(parts.begin(), parts.end(), [now](QWidget* part) {
        return now && (part == now || part->isAncestorOf(now));
    });
    const std::size_t count = parts.size();
    // From elsewhere the way forward begins with the drawing.
    std::size_t index = at != parts.end() ? static_cast<std::size_t>(at - parts.begin())
                        : forward         ? count - 1
                                          : 0;
    for (std::size_t i = 0; i < count; ++i) {
        index = (index + (forward ? 1 : count - 1)) % count;
        QWidget* part = parts[index];
        part->raise();
        if (QWidget* target = korvex::focusTarget(*part)) {
            target->window()->activateWindow();
            target->setFocus(Qt::ShortcutFocusReason);
            return;
        }
    }
}
