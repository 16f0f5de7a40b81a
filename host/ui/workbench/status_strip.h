// The status bar: coordinates, current layer, space, what runs or a hint.
#pragma once

#include "sdk/hxge.h"

#include <QStatusBar>
#include <QTimer>

class QLabel;
class QToolButton;

namespace korvex {

class Dialogue;

class StatusStrip : public QStatusBar {
    Q_OBJECT
public:
    explicit StatusStrip(Dialogue& dialogue, QWidget* parent = nullptr);

    void refresh();
    /// Whether the drawing is isolated, which may change at any time.
    void refreshIsolation();
    void showCoordinates(const HxGePoint3d& point);
    /// For a few seconds in place of what runs.
    void showHint(const QString& text);

protected:
    void changeEvent(QEvent* event) override;

private:
    void refreshLayer();
    void refreshSpace();
    void refreshCommand();
    void switchSpace();

    Dialogue& m_dialogue;
    QLabel* m_command;
    QLabel* m_coordinates;
    QToolButton* m_layer;
    QToolButton* m_space;
    QToolButton* m_isolated;
    QTimer m_hintTime;
};

}  // namespace korvex
