#include "layer_states/preview/preview_picture.h"

#include <QPainter>

KvPreviewPicture::KvPreviewPicture(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void KvPreviewPicture::setPicture(const QImage& picture, const QString& note) {
    m_picture = picture;
    m_text = note;
    update();
}

void KvPreviewPicture::setText(const QString& text) {
    m_picture = QImage();
    m_text = text;
    update();
}

void KvPreviewPicture::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const QRect area = rect().adjusted(1, 1, -1, -1);
    if (m_picture.isNull()) {
        const int margin = fontMetrics().height();
        painter.setPen(palette().color(QPalette::Disabled, QPalette::WindowText));
        painter.drawText(area.adjusted(margin, margin, -margin, -margin), Qt::AlignCenter | Qt::TextWordWrap,
                         m_text);
    } else {
        painter.setRenderHint(QPainter::SmoothPixmapTransform,
                              m_picture.size() != area.size() * m_picture.devicePixelRatio());
        painter.drawImage(area, m_picture);
        if (!m_text.isEmpty()) drawNote(painter, area);
    }
    painter.setPen(palette().color(QPalette::Mid));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

/// On a ground of its own, as the drawing may have any colour there.
void KvPreviewPicture::drawNote(QPainter& painter, const QRect& area) const {
    const int margin = fontMetrics().height() / 4;
    QRect words = painter.boundingRect(area.adjusted(margin, margin, -margin, -margin),
                                       Qt::AlignLeft | Qt::AlignBottom | Qt::TextWordWrap, m_text);
    painter.fillRect(words.adjusted(-margin, -margin, margin, margin), palette().color(QPalette::Window));
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(words, Qt::AlignLeft | Qt::AlignBottom | Qt::TextWordWrap, m_text);
}
