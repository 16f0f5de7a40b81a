// A line of text that is cut with an ellipsis where there is no room, whole in its tool tip.
#pragma once

#include <QLabel>
#include <QPainter>
#include <QStyle>

namespace korvex {

class ElidedLabel : public QLabel {
public:
    explicit ElidedLabel(QWidget* parent = nullptr) : QLabel(parent) {
        setTextFormat(Qt::PlainText);
        setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width());
        style()->drawItemText(&painter, contentsRect(), Qt::AlignLeft | Qt::AlignVCenter, palette(),
                              isEnabled(), shown, foregroundRole());
    }
};

}  // namespace korvex
