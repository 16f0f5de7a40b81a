// What is drawn over the drawing and moves with the mouse: cursor, rubber band, selection window, grips.
#pragma once

#include <QColor>
#include <QPointF>
#include <QRectF>
#include <QString>

#include <vector>

class QPainter;

namespace korvex {

/// Colours of the marks, by what lies behind them.
struct MarkColors {
    QColor line;      ///< cursor and rubber band
    QColor halo;      ///< around them, so that they are seen on anything
    QColor window;    ///< frame of a window selection; its fill is the same, faint
    QColor crossing;  ///< frame of a crossing selection
    QColor grip;
    QColor gripFrame;

    static MarkColors on(const QColor& background);
};

/// How the cursor looks.
struct CursorLook {
    bool arms = false;
    double box = 0;  ///< half the side of the pick box in pixels; 0: none
};

void drawCursor(QPainter& painter, const QPointF& at, const CursorLook& look, const MarkColors& colors);
/// What drawCursor may touch.
QRectF cursorArea(const QPointF& at, const CursorLook& look);
void drawRubberBand(QPainter& painter, const QPointF& from, const QPointF& to, const MarkColors& colors);
/// Solid for a window, dashed for a crossing selection.
void drawSelectionWindow(QPainter& painter, const QRectF& window, bool crossing, const MarkColors& colors);
/// A line of text in the lower left corner.
void drawNote(QPainter& painter, const QRectF& window, const QString& text, const MarkColors& colors);
void drawGrips(QPainter& painter, const std::vector<QPointF>& grips, const MarkColors& colors);

}  // namespace korvex
