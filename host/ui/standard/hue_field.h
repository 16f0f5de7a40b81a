// A field of hues from left to right and saturations from bottom to top.
#pragma once

#include <QImage>
#include <QWidget>

namespace korvex {

/// Chosen by mouse, or by arrow keys (with Shift in steps of ten).
class HueField : public QWidget {
    Q_OBJECT
public:
    static constexpr int kLargestHue = 360;
    static constexpr int kLargestSaturation = 100;

    explicit HueField(QWidget* parent);

    int hue() const { return m_hue; }
    int saturation() const { return m_saturation; }
    /// Values beyond their range are cut. Emits nothing.
    void setPlace(int hue, int saturation);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// The user moved the mark.
    void moved(int hue, int saturation);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QRect area() const;
    void moveTo(int hue, int saturation);
    void moveToPoint(const QPoint& position);
    void paintField(const QSize& size);

    int m_hue = 0;
    int m_saturation = 0;
    QImage m_field;
};

}  // namespace korvex
