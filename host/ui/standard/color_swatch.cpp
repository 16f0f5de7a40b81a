// The field that shows one colour.
#include "host/ui/standard/color_swatch.h"

#include <QPainter>

namespace korvex {

ColorSwatch::ColorSwatch(QWidget* parent) : QFrame(parent) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void ColorSwatch::setColor(const QColor& color, const QString& description) {
    m_color = color;
    setToolTip(description);
    setAccessibleDescription(description);
    update();
}

QSize ColorSwatch::sizeHint() const {
    const int height = fontMetrics().height() + 10;
    return {height * 2, height};
}

void ColorSwatch::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRect frame = rect().adjusted(0, 0, -1, -1);
    painter.setPen(palette().color(QPalette::Mid));
    painter.setBrush(m_color.isValid() ? m_color : palette().color(QPalette::Base));
    painter.drawRect(frame);
    if (!m_color.isValid()) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(palette().color(QPalette::WindowText));
        painter.drawLine(frame.bottomLeft(), frame.topRight());
    }
}

}  // namespace korvex
