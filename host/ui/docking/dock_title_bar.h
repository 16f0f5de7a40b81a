// The title bar of a dock panel.
#pragma once

#include <QWidget>

class QDockWidget;
class QToolButton;

namespace korvex {

/// Shows the caption, elided where there is no room, and buttons to float (or dock) and to close. Presses on
/// the caption go on to the panel, which is dragged or floated by them.
class DockTitleBar : public QWidget {
    Q_OBJECT
public:
    explicit DockTitleBar(QDockWidget& panel);

    void setCaption(const QString& caption);
    /// The buttons that the panel's features and state allow.
    void updateButtons();
    /// Shows that the keyboard works in the panel.
    void setActive(bool active);
    /// The menu of what the title bar offers, at a place on the screen.
    void showMenu(const QPoint& place);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// The user wants it at a side: a HxUiDockAlignment.
    void sideChosen(int side);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    QToolButton* addButton(const char* icon, const char* name);
    QRect captionRect() const;
    void updateToolTip();

    QDockWidget& m_panel;
    QString m_caption;
    QToolButton* m_float;
    QToolButton* m_close;
    bool m_isActive = false;
};

}  // namespace korvex
