// A panel that docks in the frame window: title bar, floating, closing, its keys.
#include "host/ui/docking/dock_panel_parts.h"
#include "host/ui/theme/theme.h"
#include "host/ui/theme/theme_colors.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>
#include <QStyle>
#include <QTimer>

#include <algorithm>

namespace {

constexpr int kReach = 60;  ///< pixels of a title bar that stay on a screen

QDockWidget::DockWidgetFeatures featuresOf(int style) {
    QDockWidget::DockWidgetFeatures features = QDockWidget::DockWidgetClosable;
    if (style >= kHxDockOnly) features |= QDockWidget::DockWidgetMovable;
    if (style >= kHxDockAndFloat) features |= QDockWidget::DockWidgetFloatable;
    return features;
}

/// The screen that a place lies on, or the one nearest to it.
QRect screenFor(const QPoint& place) {
    QRect nearest;
    int least = 0;
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect area = screen->availableGeometry();
        const QPoint inside(std::clamp(place.x(), area.left(), area.right()),
                            std::clamp(place.y(), area.top(), area.bottom()));
        const int distance = (inside - place).manhattanLength();
        if (nearest.isNull() || distance < least) {
            nearest = area;
            least = distance;
        }
    }
    return nearest;
}

/// What a panel has that was dropped at a side: what it had at a side of that kind, or as a floating one, but
/// no more than half of the frame.
QSize droppedSize(const QSize& docked, const QSize& floating, const QSize& frame) {
    const auto choose = [](int before, int own, int room) {
        return before > 0 ? before : std::min(own, room / 2);
    };
    return {choose(docked.width(), floating.width(), frame.width()),
            choose(docked.height(), floating.height(), frame.height())};
}

bool isColumn(int side) { return side == kHxDockLeft || side == kHxDockRight; }
bool isRow(int side) { return side == kHxDockTop || side == kHxDockBottom; }

}  // namespace

HxUiDockPanel::HxUiDockPanel(HxUiDockFrameWindow* frame) : QDockWidget(frame), m_parts(new Parts) {
    m_parts->frame = frame;
    m_parts->title = new korvex::DockTitleBar(*this);
    setTitleBarWidget(m_parts->title);
    setFeatures(featuresOf(m_parts->style));
    setFocusPolicy(Qt::NoFocus);
    hide();
    if (frame) {
        frame->m_parts->panels.push_back(this);
    }
    connect(m_parts->title, &korvex::DockTitleBar::sideChosen, this, &HxUiDockPanel::setCurrentDockPosition);
    connect(this, &QDockWidget::featuresChanged, m_parts->title, [this] { m_parts->title->updateButtons(); });
    connect(this, &QDockWidget::topLevelChanged, this, [this](bool floats) {
        m_parts->title->updateButtons();
        if (floats) {
            keepWithinReach();
        } else if (m_parts->isCarried) {
            // The frame's own docking gives a panel that is dropped as little room as it can do with; it is
            // at it now.
            QTimer::singleShot(0, this, [this] {
                m_parts->isCarried = false;
                m_parts->lastSize = m_parts->released;
                if (m_parts->frame && m_parts->frame->tabifiedDockWidgets(this).isEmpty()) {
                    m_parts->frame->giveSize(
                        *this, droppedSize(m_parts->docked, m_parts->lastSize, m_parts->frame->size()));
                }
            });
        }
        QResizeEvent placed(size(), size());
        QApplication::sendEvent(this, &placed);
    });
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
        m_parts->title->setActive(now && (now == this || isAncestorOf(now)));
    });
}

HxUiDockPanel::~HxUiDockPanel() {
    disconnect(qApp, nullptr, this, nullptr);
    if (m_parts->frame) {
        m_parts->frame->undockPanel(this);
        std::vector<HxUiDockPanel*>& panels = m_parts->frame->m_parts->panels;
        panels.erase(std::remove(panels.begin(), panels.end(), this), panels.end());
    }
    delete m_parts;
}

void HxUiDockPanel::setCaption(const wchar_t* caption) {
    m_parts->caption = caption ? caption : L"";
    const QString text = QString::fromStdWString(m_parts->caption);
    m_parts->title->setCaption(text);
    setAccessibleName(text);
    if (windowTitle().isEmpty()) {
        setWindowTitle(text);
    }
}

const wchar_t* HxUiDockPanel::caption() const { return m_parts->caption.c_str(); }

void HxUiDockPanel::setDockingStyle(int style) {
    if (style >= kHxDockFixed && style <= kHxDockAndFloat) {
        m_parts->style = style;
        setFeatures(featuresOf(style));
    }
}

int HxUiDockPanel::dockingStyle() const { return m_parts->style; }

int HxUiDockPanel::currentDockPosition() const {
    if (isFloating() || !m_parts->frame) {
        return kHxDockNone;
    }
    auto* self = const_cast<HxUiDockPanel*>(this);
    return korvex::sideOf(m_parts->frame->dockWidgetArea(self));
}

void HxUiDockPanel::setCurrentDockPosition(int position) {
    if (position == kHxDockNone) {
        setFloating(true);
    } else if (m_parts->frame && korvex::areaOf(position) != Qt::NoDockWidgetArea &&
               position != currentDockPosition()) {
        m_parts->frame->dockPanel(this, nullptr, position, kHxDockWhole);
    }
}

void HxUiDockPanel::floatAt(int left, int top) {
    setFloating(true);
    move(left, top);
    keepWithinReach();
}

/// Moves a floating panel so that a part of its title bar, and all of its height, can be caught.
void HxUiDockPanel::keepWithinReach() {
    const QRect screen = screenFor(pos());
    const int reach = std::min(kReach, width());
    const int title = titleHeight();
    const QPoint place(std::clamp(x(), screen.left() + reach - width(), screen.right() + 1 - reach),
                       std::clamp(y(), screen.top(), std::max(screen.top(), screen.bottom() + 1 - title)));
    if (place != pos()) {
        move(place);
    }
}

/// The frame around a floating panel counts always, so that content need not move when it docks.
int HxUiDockPanel::titleHeight() const {
    const int border = style()->pixelMetric(QStyle::PM_DockWidgetFrameWidth, nullptr, this);
    return m_parts->title->sizeHint().height() + border;
}

QSize HxUiDockPanel::sizeHint() const {
    const QSize least = QDockWidget::sizeHint().expandedTo(minimumSize());
    const QSize own =
        m_parts->lastSize.isValid() || !testAttribute(Qt::WA_Resized) ? m_parts->lastSize : size();
    return own.expandedTo(least);
}

bool HxUiDockPanel::event(QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress: m_parts->isCarried = true; break;
    case QEvent::MouseButtonRelease:
        // Let go as a floating one it may still be on its way to a side.
        m_parts->isCarried = m_parts->isCarried && isFloating();
        m_parts->released = m_parts->lastSize;
        break;
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress:
        if (handleKey(event)) {
            return true;
        }
        break;
    case QEvent::Show:
        if (m_parts->frame && m_parts->isNew) {
            const QSize own = sizeHint();
            const bool handled = QDockWidget::event(event);
            m_parts->frame->giveSize(*this, own);
            return handled;
        }
        break;
    case QEvent::Hide:
        if (m_parts->isClosing) {
            m_parts->isClosing = false;
            const bool handled = QDockWidget::event(event);
            emit closedByUser();
            return handled;
        }
        break;
    default: break;
    }
    return QDockWidget::event(event);
}

/// Keys that nothing inside of the panel wanted.
bool HxUiDockPanel::handleKey(QEvent* event) {
    auto* key = static_cast<QKeyEvent*>(event);
    const bool closes = key->key() == Qt::Key_F4 && key->modifiers() == Qt::ControlModifier;
    const bool leaves = key->key() == Qt::Key_Escape && key->modifiers() == Qt::NoModifier;
    const bool asks = key->key() == Qt::Key_Minus && key->modifiers() == Qt::AltModifier;
    if (event->type() == QEvent::ShortcutOverride) {
        if (closes || asks) {
            event->accept();
        }
        return closes || asks;
    }
    if (asks) {
        m_parts->title->showMenu(mapToGlobal(QPoint(0, titleHeight())));
    } else if (closes || leaves) {
        if (closes && (features() & DockWidgetClosable)) {
            close();
        }
        if (QWidget* drawing = m_parts->frame ? m_parts->frame->centralWidget() : nullptr) {
            m_parts->frame->activateWindow();
            drawing->setFocus(Qt::OtherFocusReason);
        }
    }
    event->setAccepted(closes || leaves || asks);
    return event->isAccepted();
}

void HxUiDockPanel::resizeEvent(QResizeEvent* event) {
    QDockWidget::resizeEvent(event);
    const int side = currentDockPosition();
    m_parts->lastSize = m_parts->lastSize.isValid() ? m_parts->lastSize : size();
    if (m_parts->isCarried && side != kHxDockNone) {
        return;  // not yet the size it is going to have
    }
    if (!isRow(side)) m_parts->lastSize.setWidth(width());
    if (!isColumn(side)) m_parts->lastSize.setHeight(height());
    if (isColumn(side)) m_parts->docked.setWidth(width());
    if (isRow(side)) m_parts->docked.setHeight(height());
}

void HxUiDockPanel::closeEvent(QCloseEvent* event) {
    m_parts->isClosing = isVisible();
    QDockWidget::closeEvent(event);
    m_parts->isClosing = m_parts->isClosing && event->isAccepted();
}

void HxUiDockPanel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Window));
    if (isFloating()) {
        painter.setPen(korvex::themeColors().border);
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}
