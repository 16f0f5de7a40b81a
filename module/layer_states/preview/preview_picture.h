// What the preview shows: a picture, or why there is none.
#pragma once

#include <QImage>
#include <QWidget>

class KvPreviewPicture : public QWidget {
    Q_OBJECT
public:
    explicit KvPreviewPicture(QWidget* parent);

    /// A picture; one of another size is scaled until the next comes. `note` stands in its corner (empty:
    /// none).
    void setPicture(const QImage& picture, const QString& note);
    /// Words in place of a picture.
    void setText(const QString& text);
    const QImage& picture() const { return m_picture; }
    const QString& text() const { return m_text; }

    QSize sizeHint() const override { return {320, 200}; }
    QSize minimumSizeHint() const override { return {240, 150}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void drawNote(QPainter& painter, const QRect& area) const;

    QImage m_picture;  ///< null: the text is shown
    QString m_text;    ///< in place of the picture, or in its corner
};
