// Goes along the path of a shape.
#include "host/ui/view/grips.h"

#include <algorithm>

namespace korvex {

namespace {

bool isSame(const HxGePoint3d& a, const HxGePoint3d& b) { return a.x == b.x && a.y == b.y && a.z == b.z; }

class Grips {
public:
    explicit Grips(std::size_t most) : m_most(most) {}

    void add(const HxGePoint3d& point) {
        if (!isFull() && (m_points.empty() || !isSame(m_points.back(), point))) {
            m_points.push_back(point);
        }
    }
    void add(const PathSegment& step) {
        switch (step.verb) {
        case PathVerb::move: add(step.end); break;
        case PathVerb::line:
            add(step.start + (step.end - step.start) * 0.5);
            add(step.end);
            break;
        case PathVerb::arc: addArc(step); break;
        case PathVerb::spline:
            add(step.start);
            add(step.end);
            break;
        case PathVerb::ray:
        case PathVerb::xline: add(step.start); break;
        }
    }
    bool isFull() const { return m_points.size() >= m_most; }
    std::vector<HxGePoint3d> take() { return std::move(m_points); }

private:
    void addArc(const PathSegment& step) {
        const bool isWhole = isSame(step.start, step.end);
        const int parts = isWhole ? 4 : 2;
        for (int i = 1; i < parts; ++i) {
            add(step.arc.pointAt(step.arc.from + step.arc.sweep * i / parts));
        }
        add(step.end);
        add(step.arc.centre);
    }

    std::vector<HxGePoint3d> m_points;
    std::size_t m_most;
};

HxGePoint3d firstPoint(const Path& path) {
    HxGePoint3d point;
    path.forEach([&](const PathSegment& step) {
        point = step.verb == PathVerb::move ? step.end : step.start;
        return false;
    });
    return point;
}

HxGePoint3d middle(const Box3d& box) {
    return {(box.x.low + box.x.high) / 2, (box.y.low + box.y.high) / 2, (box.z.low + box.z.high) / 2};
}

}  // namespace

std::vector<HxGePoint3d> gripPoints(const Shape& shape, std::size_t most) {
    Grips grips(most);
    switch (shape.kind) {
    case ShapeKind::none: break;
    case ShapeKind::reference:
        if (!shape.placement->asItIs) {
            grips.add(HxGeMatrix3d::planeToWorld(shape.placement->extrusion) * shape.placement->position);
        }
        break;
    case ShapeKind::text: grips.add(firstPoint(shape.path)); break;
    case ShapeKind::hatch: {
        const Box3d box = extents(shape);
        if (!box.isEmpty()) {
            grips.add(middle(box));
        }
        break;
    }
    case ShapeKind::viewport: grips.add(shape.window->centre); [[fallthrough]];
    case ShapeKind::point:
    case ShapeKind::curves:
    case ShapeKind::area:
        shape.path.forEach([&](const PathSegment& step) {
            grips.add(step);
            return !grips.isFull();
        });
        break;
    }
    return grips.take();
}

}  // namespace korvex
