// A slider whose groove shows what its values mean as a gradient of colours.
#pragma once

#include <QAbstractSlider>
#include <QColor>

#include <vector>

namespace korvex {

/// Horizontal with low values on the left, or vertical with low values at the bottom. The value follows mouse
/// and keyboard as with any slider.
class GradientBar : public QAbstractSlider {
    Q_OBJECT
public:
    GradientBar(Qt::Orientation orientation, int maximum, QWidget* parent);

    /// From the lowest value to the highest, at equal distances.
    void setColors(std::vector<QColor> colors);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    QRect groove() const;
    int positionOfValue() const;
    void moveTo(const QPoint& position);

    std::vector<QColor> m_colors;
};

}  // namespace korvex
