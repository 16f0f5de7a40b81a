// The slider with a gradient.
#include "host/ui/standard/gradient_bar.h"

#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>

namespace korvex {

namespace {

constexpr int kMargin = 5;  ///< room for the marker's ends and the focus frame
constexpr int kThickness = 24;
constexpr int kLength = 120;
constexpr int kPageStep = 10;

}  // namespace

GradientBar::GradientBar(Qt::Orientation orientation, int maximum, QWidget* parent)
    : QAbstractSlider(parent) {
    setOrientation(orientation);
    setRange(0, maximum);
    setPageStep(kPageStep);
    setFocusPolicy(Qt::StrongFocus);
    const bool isUpright = orientation == Qt::Vertical;
    setSizePolicy(isUpright ? QSizePolicy::Fixed : QSizePolicy::Expanding,
                  isUpright ? QSizePolicy::Expanding : QSizePolicy::Fixed);
}

void GradientBar::setColors(std::vector<QColor> colors) {
    m_colors = std::move(colors);
    update();
}

QSize GradientBar::sizeHint() const {
    return orientation() == Qt::Vertical ? QSize(kThickness, kLength) : QSize(kLength, kThickness);
}

QSize GradientBar::minimumSizeHint() const { return sizeHint(); }

QRect GradientBar::groove() const { return rect().adjusted(kMargin, kMargin, -kMargin, -kMargin); }

int GradientBar::positionOfValue() const {
    const QRect area = groove();
    const bool isUpright = orientation() == Qt::Vertical;
    const int length = (isUpright ? area.height() : area.width()) - 1;
    const int offset = value() * length / qMax(1, maximum());
    return isUpright ? area.bottom() - offset : area.left() + offset;
}

void GradientBar::moveTo(const QPoint& position) {
    const QRect area = groove();
    const bool isUpright = orientation() == Qt::Vertical;
    const int length = qMax(1, (isUpright ? area.height() : area.width()) - 1);
    const int offset = isUpright ? area.bottom() - position.y() : position.x() - area.left();
    setValue((qBound(0, offset, length) * maximum() + length / 2) / length);
}

void GradientBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRect area = groove();
    const bool isUpright = orientation() == Qt::Vertical;
    QLinearGradient gradient(isUpright ? area.bottomLeft() : area.topLeft(),
                             isUpright ? area.topLeft() : area.topRight());
    for (std::size_t i = 0; i < m_colors.size(); ++i) {
        gradient.setColorAt(static_cast<double>(i) /
                                static_cast<double>(qMax<std::size_t>(1, m_colors.size() - 1)),
                            m_colors[i]);
    }
    painter.setPen(palette().color(QPalette::Mid));
    painter.setBrush(gradient);
    painter.drawRect(area.adjusted(0, 0, -1, -1));
    const int at = positionOfValue();
    const QRect marker = isUpright ? QRect(area.left() - 3, at - 2, area.width() + 6, 5)
                                   : QRect(at - 2, area.top() - 3, 5, area.height() + 6);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.setBrush(palette().color(QPalette::Window));
    painter.drawRect(marker.adjusted(0, 0, -1, -1));
    if (hasFocus()) {
        QStyleOptionFocusRect option;
        option.initFrom(this);
        option.rect = rect();
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
}

void GradientBar::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        moveTo(event->pos());
    }
}

void GradientBar::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons() & Qt::LeftButton) {
        moveTo(event->pos());
    }
}

}  // namespace korvex
