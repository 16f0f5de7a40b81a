// A colour as a framed field.
#pragma once

#include <QColor>
#include <QFrame>

namespace korvex {

/// An invalid colour shows as a crossed-out field.
class ColorSwatch : public QFrame {
    Q_OBJECT
public:
    explicit ColorSwatch(QWidget* parent);

    /// `description` is its tool tip and what assistive technology reads.
    void setColor(const QColor& color, const QString& description);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor m_color;
};

}  // namespace korvex
