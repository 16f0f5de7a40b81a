// Draws icons from SVG files, whose two colours stand for those of the theme.
#include "host/ui/theme/theme_icon.h"

#include "host/ui/theme/theme.h"
#include "host/ui/theme/theme_colors.h"

#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

namespace korvex {

namespace {

constexpr char kLineColor[] = "#404040";
constexpr char kAccentColor[] = "#2468c8";

class ThemeIconEngine : public QIconEngine {
public:
    ThemeIconEngine(QString name, QByteArray picture)
        : m_name(std::move(name)), m_picture(std::move(picture)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        const ThemeColors& colors = themeColors(isDark());
        const bool isDisabled = mode == QIcon::Disabled;
        QByteArray picture = m_picture;
        picture.replace(kLineColor, (isDisabled ? colors.iconDisabled : colors.iconLine).name().toLatin1());
        picture.replace(kAccentColor,
                        (isDisabled ? colors.iconDisabled : colors.iconAccent).name().toLatin1());
        QSvgRenderer(picture).render(painter, QRectF(rect));
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        const bool isDisabled = mode == QIcon::Disabled;
        const QString key = QString("korvex-icon/%1/%2x%3/%4%5")
                                .arg(m_name)
                                .arg(size.width())
                                .arg(size.height())
                                .arg(isDark())
                                .arg(isDisabled);
        QPixmap pixmap;
        if (!QPixmapCache::find(key, &pixmap)) {
            pixmap = QPixmap(size);
            pixmap.fill(Qt::transparent);
            QPainter painter(&pixmap);
            paint(&painter, QRect(QPoint(), size), mode, state);
            painter.end();
            QPixmapCache::insert(key, pixmap);
        }
        return pixmap;
    }

    QList<QSize> availableSizes(QIcon::Mode, QIcon::State) const override {
        return {QSize(16, 16), QSize(24, 24), QSize(32, 32), QSize(48, 48)};
    }
    QString iconName() const override { return m_name; }
    QIconEngine* clone() const override { return new ThemeIconEngine(*this); }

private:
    QString m_name;
    QByteArray m_picture;
};

}  // namespace

QIcon themeIcon(const QString& name) {
    QFile file(":/korvex/icons/" + name + ".svg");
    return file.open(QIODevice::ReadOnly) ? QIcon(new ThemeIconEngine(name, file.readAll())) : QIcon();
}

}  // namespace korvex
