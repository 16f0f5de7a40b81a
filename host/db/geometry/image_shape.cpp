// Images and masks: frames that vectors of one pixel span, whole or clipped.
#include "host/db/geometry/shape_readers.h"

#include <algorithm>

namespace korvex {

namespace {

/// Two corners of a rectangle, or a polygon; in pixels from the centre of the upper left one, y down.
std::vector<HxGePoint3d> clipPoints(std::string_view groups, const GroupFormat& format) {
    std::vector<HxGePoint3d> points;
    bool isClipped = true;
    for (EntityCursor cursor(groups, format); cursor.next();) {
        if (cursor.code() == 14) {
            points.emplace_back();
        }
        if (!points.empty()) {
            readCoordinate(*cursor, 14, points.back());
        }
        isClipped = cursor.code() == 280 ? cursor->asInteger() != 0 : isClipped;
    }
    if (points.size() == 2) {
        const HxGePoint3d a = points[0];
        const HxGePoint3d b = points[1];
        points = {{a.x, a.y}, {b.x, a.y}, {b.x, b.y}, {a.x, b.y}};
    }
    return isClipped && points.size() > 2 ? points : std::vector<HxGePoint3d>();
}

Shape frame(std::string_view groups, const GroupFormat& format) {
    const EntityFields fields(groups, format);
    const double width = fields.point(13).x;
    const double height = fields.point(13).y;
    std::vector<HxGePoint3d> corners = clipPoints(groups, format);
    if (corners.empty()) {
        corners = {{-0.5, height - 0.5}, {width - 0.5, height - 0.5}, {width - 0.5, -0.5}, {-0.5, -0.5}};
    }
    Shape shape;
    for (const HxGePoint3d& p : corners) {
        shape.path.lineTo(fields.point(10) + fields.vector(11) * (p.x + 0.5) +
                          fields.vector(12) * (height - 0.5 - p.y));
    }
    shape.path.close();
    shape.kind = shape.path.isEmpty() ? ShapeKind::none : ShapeKind::curves;
    return shape;
}

}  // namespace

Shape imageShape(std::string_view groups, const GroupFormat& format) { return frame(groups, format); }

Shape maskShape(std::string_view groups, const GroupFormat& format) {
    Shape shape = frame(groups, format);
    shape.isMask = true;
    return shape;
}

}  // namespace korvex
