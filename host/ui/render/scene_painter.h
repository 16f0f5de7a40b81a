// Draws a space of a drawing, model space or a layout, as it looks in a view.
#pragma once

#include "sdk/hxdbid.h"
#include "sdk/hxge.h"

#include <QColor>
#include <QRectF>

#include <chrono>
#include <memory>
#include <vector>

class HxDbDatabase;
class QPainter;

namespace korvex {

class AssumedLayers;

/// What is looked at, and from where.
struct SceneView {
    HxDbDatabase* database = nullptr;
    HxDbObjectId space;     ///< block record of model space or of a layout
    HxDbObjectId viewport;  ///< the floating viewport that is worked in, or null: its frozen layers and
                            ///< overrides count in model space, its frame is marked on paper
    HxGeMatrix3d toView;    ///< from the space to device-independent pixels of the painter, y down
    const AssumedLayers* assumed = nullptr;  ///< what layers are taken to be; null: as they are
};

/// How long a paint may take, and how careful it is.
struct SceneEffort {
    /// It stops then; what it has not come to is left out.
    std::chrono::steady_clock::time_point until = std::chrono::steady_clock::time_point::max();
    /// Solid hairlines, edges in place of fillings. What is large comes first, and neighbours far from each
    /// other: a paint that stops early shows something everywhere.
    bool isCoarse = false;
};

/// Colours and what else is a matter of taste.
struct SceneStyle {
    QColor background;   ///< behind model space
    QColor paper;        ///< the sheet of a layout
    QColor desk;         ///< what the sheet lies on
    QColor ink;          ///< colour index 7 in model space
    QColor paperInk;     ///< colour index 7 on paper
    QColor highlight;    ///< of paintHighlighted
    QColor activeFrame;  ///< of the viewport that is worked in
    bool lineweights = false;
    double pixelsPerMillimetre = 96 / 25.4;  ///< device-independent; for lineweights in model space
    int lockedFade = 50;  ///< per cent that what is on locked layers fades into the background

    static SceneStyle dark();
    static SceneStyle light();
    static SceneStyle ofTheme(bool isDark) { return isDark ? dark() : light(); }
};

/// Keeps what it has read of the drawings from one paint to the next, and hears of their changes: make one
/// for each window and keep it. A drawing may be closed between paints.
class ScenePainter {
public:
    ScenePainter();
    ~ScenePainter();
    ScenePainter(const ScenePainter&) = delete;
    ScenePainter& operator=(const ScenePainter&) = delete;

    /// Fills the window (device-independent pixels) with the background and all that is seen there. Nothing
    /// is thrown; what is damaged is left out. The painter may be moved and scaled, but not turned.
    void paint(QPainter& painter, const QRectF& window, const SceneView& view, const SceneStyle& style,
               const SceneEffort& effort = SceneEffort());
    /// Draws one object over what is there: innermost object first, then the references that hold it, as a
    /// pick gives them. Of an object of model space on a layout, through every viewport that shows it.
    void paintHighlighted(QPainter& painter, const QRectF& window, const SceneView& view,
                          const SceneStyle& style, const std::vector<HxDbObjectId>& path);

    /// The same for many objects at once, which costs far less than one after the other.
    void paintHighlighted(QPainter& painter, const QRectF& window, const SceneView& view,
                          const SceneStyle& style, const std::vector<std::vector<HxDbObjectId>>& paths);

    /// False when the last paint left something out because the drawing holds too much for one paint, or
    /// for the time that it had.
    bool isComplete() const;
    /// Memory that is kept for the drawings.
    std::size_t bytes() const;

private:
    class Imp;
    std::unique_ptr<Imp> m_imp;
};

}  // namespace korvex
