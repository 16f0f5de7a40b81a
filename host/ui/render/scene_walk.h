// Goes through a space and all that is in it, and draws it.
#pragma once

#include "host/ui/render/canvas.h"
#include "host/ui/render/display_cache.h"
#include "host/ui/render/look_rules.h"

#include <chrono>
#include <limits>

namespace korvex {

/// What one paint may do before it stops, in units of about a line: blocks that hold each other many times
/// over would take for ever otherwise.
struct WorkBudget {
    using Clock = std::chrono::steady_clock;

    long long left = 4000000;
    Clock::time_point until = Clock::time_point::max();  ///< it is spent then, whatever is left

    bool isSpent() {
        if (left <= nextLook) {
            lookAtClock();
        }
        return left < 0;
    }

private:
    void lookAtClock() {
        constexpr long long kStep = 64;  // some microseconds
        if (until == Clock::time_point::max()) {
            nextLook = std::numeric_limits<long long>::min();
        } else if (Clock::now() < until) {
            nextLook = left - kStep;
        } else {
            left = -1;
        }
    }
    long long nextLook = std::numeric_limits<long long>::max();  ///< at the clock, when no more is left
};

/// How a space is drawn, besides its looks.
struct WalkSettings {
    double hairline = 1;                   ///< device pixels of a line without weight
    double pixelsPerMillimetre = 0;        ///< device pixels, for lineweights; 0: all lines are hairlines
    double linetypeScale = 1;              ///< of all patterns
    QRgb ground = 0;                       ///< what masks cover with
    int pointMode = 0;                     ///< $PDMODE
    double pointSize = 0;                  ///< of points in device pixels, or
    double pointUnits = 0;                 ///< in drawing units, when above 0
    bool drawsFrames = false;              ///< of viewports: on paper
    const ResolvedLook* forced = nullptr;  ///< all is drawn with this look
    double extraWidth = 0;                 ///< device pixels added to every line
    bool isCoarse = false;                 ///< see SceneEffort; there are no lineweights then
};

/// The way down to the contents of a block.
struct WalkLevel {
    const WalkLevel* outer = nullptr;
    const HxDbStub* contents = nullptr;
    int depth = 0;

    bool holds(const HxDbStub& block) const {
        for (const WalkLevel* level = this; level; level = level->outer) {
            if (level->contents == &block) {
                return true;
            }
        }
        return false;
    }
};

struct BlockGeometry;

class SceneWalk {
public:
    SceneWalk(Canvas& canvas, DisplayCache& cache, LookRules& rules, const WalkSettings& settings,
              WorkBudget& budget);

    /// All members of a space; `toDevice` takes its coordinates to device pixels.
    void drawSpace(HxDbStub& space, const HxGeMatrix3d& toDevice);
    /// One entity of a space, or one inside of references: the entity first, then the references, innermost
    /// first. Only as far as the path is sound.
    void drawPath(HxDbStub& space, const std::vector<HxDbStub*>& path, const HxGeMatrix3d& toDevice);

private:
    /// Where and in which context the members of a block are drawn.
    struct Place {
        HxDbStub& contents;
        DisplayBlock& display;
        const HxGeMatrix3d& toDevice;
        LookContext& context;
        LookTable& table;
        const WalkLevel& level;
        double stretch;  ///< device pixels in a drawing unit, at most
    };

    void drawContents(HxDbStub& contents, const HxGeMatrix3d& toDevice, LookContext& context,
                      const WalkLevel& level);
    void visitAll(const Place& place, const BlockGeometry& geometry, std::vector<std::size_t> places);
    void visit(const Place& place, std::size_t at, const Box3d& box);
    void drawItem(const Place& place, HxDbStub& entity, const DisplayItem& item, double size);
    /// What a reference draws, and what that inherits.
    struct Inside {
        HxDbStub* contents = nullptr;  ///< null when there is nothing to go into
        LookContext* context = nullptr;
        WalkLevel level;
    };
    Inside enter(const Place& place, const DisplayReference& reference, const ResolvedLook& look);
    void drawPathIn(HxDbStub& contents, const std::vector<HxDbStub*>& path, std::size_t at,
                    const HxGeMatrix3d& toDevice, LookContext& context, const WalkLevel& level);
    void drawReference(const Place& place, HxDbStub& entity, const DisplayItem& item,
                       const ResolvedLook& look, double size);
    void drawCells(const Place& place, const DisplayReference& reference, const Inside& inside);
    void drawCell(const Inside& inside, const HxGeMatrix3d& toDevice);
    void drawAttributes(const Place& place, HxDbStub& entity, LookContext& context);
    void drawAttribute(const Place& place, HxDbStub& attribute, LookContext& context);
    const ResolvedLook* token(HxDbStub& contents, LookContext& context, const WalkLevel& level, int& looks);

    void drawRuns(const Place& place, const DisplayItem& item, const ResolvedLook& look);
    void drawArc(const Place& place, HxDbStub& entity, const DisplayItem& item, const ResolvedLook& look);
    void drawShape(const Place& place, HxDbStub& entity, const DisplayItem& item, const ResolvedLook& look);
    void drawDots(const Place& place, const DisplayItem& item, const ResolvedLook& look);
    void drawPoint(Point2 at, double size);
    void drawText(const Place& place, const TextRun& run);
    void drawTextLine(const TextRun::Line& line, const QTransform& plane, double height);
    void drawMark(const TextRun::Line& line, const QTransform& plane);
    void stroke(const Place& place, const Polyline2& points, const ResolvedLook& look);
    void fillRuns(const std::vector<Polyline2>& runs, const DisplayItem& item);
    void usePen(const ResolvedLook& look);
    double patternScale(const Place& place, const ResolvedLook& look) const;

    Canvas& m_canvas;
    DisplayCache& m_cache;
    LookRules& m_rules;
    WalkSettings m_settings;
    WorkBudget& m_budget;
    Box m_window;
    std::vector<Polyline2> m_runs;
    Polyline2 m_points;
    QFont m_font;
};

}  // namespace korvex
