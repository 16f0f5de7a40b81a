// Viewports: from the entity's own groups, or from the extended data where drawings of R12 keep the view.
#include "host/db/geometry/shape_readers.h"

namespace korvex {

namespace {

constexpr double kDegree = kTurn / 360;
constexpr int kPerspective = 0x1, kClipped = 0x10000, kOff = 0x20000;

ViewportWindow windowOf(const EntityFields& fields) {
    ViewportWindow window;
    window.centre = fields.point(10);
    window.width = std::fabs(fields.real(40));
    window.height = std::fabs(fields.real(41));
    window.status = fields.integer(68, 1 + (fields.integer(69) != 1));
    window.id = fields.integer(69);
    window.viewCentre = {fields.point(12).x, fields.point(12).y};
    window.viewHeight = fields.real(45);
    window.twist = fields.angle(51);
    window.direction = fields.has(16) ? fields.vector(16) : HxGeVector3d(0, 0, 1);
    window.target = fields.point(17);
    const int flags = fields.integer(90);
    window.perspective = (flags & kPerspective) != 0;
    window.off = (flags & kOff) != 0;
    window.clip = flags & kClipped ? fields.handle() : 0;
    return window;
}

/// The list that "1000 MVIEW" begins: points and reals in a fixed order.
void readOldView(std::string_view groups, const GroupFormat& format, ViewportWindow& window) {
    bool inView = false;
    int points = 0;
    int reals = 0;
    HxGePoint3d point;
    GroupCursor cursor(groups, format);
    while (cursor.next()) {
        const int code = cursor.code();
        if (code == 1000 && cursor.raw() == "MVIEW") {
            inView = true;
        } else if (inView && readCoordinate(cursor, 1010, point) && code == 1030) {
            if (points == 0) {
                window.target = point;
            } else if (points == 1) {
                window.direction = {point.x, point.y, point.z};
            }
            ++points;
        } else if (inView && code == 1040) {
            const double value = cursor.asReal();
            switch (reals++) {
            case 0: window.twist = value * kDegree; break;
            case 1: window.viewHeight = value; break;
            case 2: window.viewCentre.x = value; break;
            case 3: window.viewCentre.y = value; break;
            default: break;
            }
        }
    }
}

bool isUsableWindow(const ViewportWindow& w) {
    return isUsable(w.centre) && isUsable(w.width) && isUsable(w.height) && isUsable(w.viewCentre.x) &&
           isUsable(w.viewCentre.y) && isUsable(w.viewHeight) && isUsable(w.twist) && isUsable(w.target) &&
           isUsable(w.direction);
}

}  // namespace

Shape viewportShape(std::string_view groups, const GroupFormat& format) {
    const EntityFields fields(groups, format);
    ViewportWindow window = windowOf(fields);
    if (!fields.has(45)) {
        readOldView(groups, format, window);
    }
    Shape shape;
    if (!isUsableWindow(window)) {
        return shape;
    }
    const Box frame = window.frame();
    const double z = window.centre.z;
    shape.path.moveTo({frame.x.low, frame.y.low, z});
    shape.path.lineTo({frame.x.high, frame.y.low, z});
    shape.path.lineTo({frame.x.high, frame.y.high, z});
    shape.path.lineTo({frame.x.low, frame.y.high, z});
    shape.path.close();
    shape.kind = ShapeKind::viewport;
    shape.window = std::make_shared<const ViewportWindow>(window);
    return shape;
}

}  // namespace korvex
