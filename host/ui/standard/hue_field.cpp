// The field of hues and saturations.
#include "host/ui/standard/hue_field.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>

namespace korvex {

namespace {

constexpr int kMargin = 4;
constexpr int kMark = 4;  ///< half the mark's size
constexpr int kLargeStep = 10;
constexpr double kLuminance = 0.5;

}  // namespace

HueField::HueField(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setCursor(Qt::CrossCursor);
}

void HueField::setPlace(int hue, int saturation) {
    m_hue = qBound(0, hue, kLargestHue);
    m_saturation = qBound(0, saturation, kLargestSaturation);
    setAccessibleDescription(tr("Hue %1, saturation %2").arg(m_hue).arg(m_saturation));
    update();
}

QSize HueField::sizeHint() const { return {240, 150}; }

QSize HueField::minimumSizeHint() const { return {140, 100}; }

QRect HueField::area() const { return rect().adjusted(kMargin, kMargin, -kMargin, -kMargin); }

void HueField::moveTo(int hue, int saturation) {
    setPlace(hue, saturation);
    QAccessibleEvent event(this, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&event);
    Q_EMIT moved(m_hue, m_saturation);
}

void HueField::moveToPoint(const QPoint& position) {
    const QRect field = area();
    moveTo((position.x() - field.left()) * kLargestHue / qMax(1, field.width() - 1),
           (field.bottom() - position.y()) * kLargestSaturation / qMax(1, field.height() - 1));
}

void HueField::paintField(const QSize& size) {
    m_field = QImage(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        auto* const line = reinterpret_cast<QRgb*>(m_field.scanLine(y));
        const double saturation = 1 - static_cast<double>(y) / qMax(1, size.height() - 1);
        for (int x = 0; x < size.width(); ++x) {
            line[x] = QColor::fromHslF(static_cast<double>(x) / size.width(), saturation, kLuminance).rgb();
        }
    }
}

void HueField::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRect field = area();
    const QSize pixels = field.size() * devicePixelRatioF();
    if (m_field.size() != pixels) {
        paintField(pixels);
    }
    painter.drawImage(field, m_field);
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(field.adjusted(0, 0, -1, -1));
    const QPoint mark(field.left() + m_hue * (field.width() - 1) / kLargestHue,
                      field.bottom() - m_saturation * (field.height() - 1) / kLargestSaturation);
    painter.setRenderHint(QPainter::Antialiasing);
    for (const auto& [color, width] : {std::pair(Qt::black, 3.0), std::pair(Qt::white, 1.5)}) {
        painter.setPen(QPen(color, width));
        painter.drawEllipse(mark, kMark, kMark);
    }
    if (hasFocus()) {
        QStyleOptionFocusRect option;
        option.initFrom(this);
        option.rect = rect();
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
}

void HueField::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        moveToPoint(event->pos());
    }
}

void HueField::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons() & Qt::LeftButton) {
        moveToPoint(event->pos());
    }
}

void HueField::keyPressEvent(QKeyEvent* event) {
    const int step = event->modifiers() & Qt::ShiftModifier ? kLargeStep : 1;
    switch (event->key()) {
    case Qt::Key_Left: moveTo(m_hue - step, m_saturation); break;
    case Qt::Key_Right: moveTo(m_hue + step, m_saturation); break;
    case Qt::Key_Up: moveTo(m_hue, m_saturation + step); break;
    case Qt::Key_Down: moveTo(m_hue, m_saturation - step); break;
    default: QWidget::keyPressEvent(event);
    }
}

}  // namespace korvex
