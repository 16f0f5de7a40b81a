// The simple kinds of entities, and the table of all kinds.
#include "host/db/geometry/entity_shape.h"

#include "host/db/geometry/shape_readers.h"

#include <algorithm>

namespace korvex {

namespace {

Shape curves(Path path, ShapeKind kind = ShapeKind::curves) {
    Shape shape;
    shape.kind = path.isEmpty() ? ShapeKind::none : kind;
    shape.path = std::move(path);
    return shape;
}

Shape lineShape(const EntityFields& fields) {
    Path path;
    path.moveTo(fields.point(10));
    path.lineTo(fields.point(11));
    return curves(std::move(path));
}

Shape pointShape(const EntityFields& fields) {
    Path path;
    path.moveTo(fields.point(10));
    return curves(std::move(path), ShapeKind::point);
}

Shape endlessShape(const EntityFields& fields, bool bothWays) {
    Path path;
    path.ray(fields.point(10), fields.vector(11), bothWays);
    return curves(std::move(path));
}

Shape rayShape(const EntityFields& fields) { return endlessShape(fields, false); }
Shape xlineShape(const EntityFields& fields) { return endlessShape(fields, true); }

Shape circleOf(const EntityFields& fields, double from, double sweep) {
    Path path;
    path.arc(circularArc(fields.point(10), fields.real(40), from, sweep));
    path.transform(fields.plane());
    return curves(std::move(path));
}

Shape circleShape(const EntityFields& fields) { return circleOf(fields, 0, kTurn); }
Shape arcShape(const EntityFields& fields) {
    return circleOf(fields, fields.angle(50), sweepBetween(fields.angle(50), fields.angle(51)));
}

Shape ellipseShape(const EntityFields& fields) {
    EllipticArc arc;
    arc.centre = fields.point(10);
    arc.u = fields.vector(11);
    arc.v = fields.extrusion().normal().cross(arc.u) * fields.real(40, 1);
    arc.from = fields.real(41);
    arc.sweep = sweepBetween(arc.from, fields.real(42, kTurn));
    Path path;
    path.arc(arc);
    return curves(std::move(path));
}

/// The corners of groups 10 to 13 in the given order; three when the last is missing.
Path corners(const EntityFields& fields, const std::array<int, 4>& order) {
    Path path;
    for (const int code : order) {
        if (code == 13 && !fields.has(13)) {
            continue;
        }
        path.lineTo(fields.point(code));
    }
    path.close();
    return path;
}

Shape solidShape(const EntityFields& fields) {
    Path path = corners(fields, {10, 11, 13, 12});
    path.transform(fields.plane());
    Shape shape = curves(std::move(path), ShapeKind::area);
    shape.filling = Filling::evenOdd;
    return shape;
}

/// Bits of group 70 hide edges; the plane of a face is its own.
Shape faceShape(const EntityFields& fields) {
    std::vector<HxGePoint3d> points{fields.point(10), fields.point(11), fields.point(12)};
    points.push_back(fields.has(13) ? fields.point(13) : points.back());
    Path path;
    for (std::size_t i = 0; i < 4; ++i) {
        if ((fields.integer(70) >> i & 1) == 0) {
            path.moveTo(points[i]);
            path.lineTo(points[(i + 1) % 4]);
        }
    }
    return curves(std::move(path));
}

Shape reference(BlockPlacement placement) {
    Shape shape;
    const bool usable = isUsable(placement.position) && isUsable(placement.scale) &&
                        isUsable(placement.rotation) && isUsable(placement.columnSpacing) &&
                        isUsable(placement.rowSpacing);
    if (!placement.block.empty() && usable) {
        shape.kind = ShapeKind::reference;
        shape.placement = std::make_shared<const BlockPlacement>(std::move(placement));
    }
    return shape;
}

Shape insertShape(const EntityFields& fields) {
    constexpr int kMostCells = 32767;
    BlockPlacement placement;
    placement.block = fields.text(2);
    placement.position = fields.point(10);
    placement.scale = {fields.real(41, 1), fields.real(42, 1), fields.real(43, 1)};
    placement.rotation = fields.angle(50);
    placement.extrusion = fields.extrusion();
    placement.columns = std::min(std::max(fields.integer(70, 1), 1), kMostCells);
    placement.rows = std::min(std::max(fields.integer(71, 1), 1), kMostCells);
    placement.columnSpacing = fields.real(44);
    placement.rowSpacing = fields.real(45);
    return reference(std::move(placement));
}

Shape dimensionShape(const EntityFields& fields) {
    BlockPlacement placement;
    placement.block = fields.text(2);
    placement.asItIs = true;
    return reference(std::move(placement));
}

/// A table is drawn by a block along its direction.
Shape tableShape(const EntityFields& fields) {
    BlockPlacement placement;
    placement.block = fields.text(2);
    placement.position = fields.point(10);
    placement.extrusion = fields.extrusion();
    if (fields.has(11)) {
        placement.rotation = std::atan2(fields.point(11).y, fields.point(11).x);
    }
    return reference(std::move(placement));
}

Shape attributeShape(const EntityFields& fields) { return lineTextShape(fields, "ATTRIB"); }
Shape definitionShape(const EntityFields& fields) { return lineTextShape(fields, "ATTDEF"); }
Shape textShape(const EntityFields& fields) { return lineTextShape(fields, "TEXT"); }

Shape splineShape(std::string_view groups, const GroupFormat& format) {
    SplineData data;
    for (EntityCursor cursor(groups, format); cursor.next();) {
        const int code = cursor.code();
        const auto point = [&](int base, std::vector<HxGePoint3d>& points) {
            if (code == base) {
                points.emplace_back();
            }
            if (!points.empty()) {
                readCoordinate(*cursor, base, points.back());
            }
        };
        const auto tangent = [&](int base, HxGeVector3d& v) {
            HxGePoint3d p(v.x, v.y, v.z);
            readCoordinate(*cursor, base, p);
            v = {p.x, p.y, p.z};
        };
        switch (code) {
        case 70: data.ends.periodic = (cursor->asInteger() & 2) != 0; break;
        case 71: data.degree = static_cast<int>(std::min<long long>(cursor->asInteger(), 1000)); break;
        case 40: data.knots.push_back(cursor->asReal()); break;
        case 41: data.weights.push_back(cursor->asReal()); break;
        default:
            point(10, data.control);
            point(11, data.fit);
            tangent(12, data.ends.startTangent);
            tangent(13, data.ends.endTangent);
        }
    }
    Path path;
    path.splineTo(data.curve());
    return curves(std::move(path));
}

/// Group 72: 0 straight, 1 a spline through the vertices.
Shape leaderShape(std::string_view groups, const GroupFormat& format) {
    std::vector<HxGePoint3d> points;
    bool smooth = false;
    for (EntityCursor cursor(groups, format); cursor.next();) {
        if (cursor.code() == 10) {
            points.emplace_back();
        }
        if (!points.empty()) {
            readCoordinate(*cursor, 10, points.back());
        }
        smooth = cursor.code() == 72 ? cursor->asInteger() == 1 : smooth;
    }
    Path path;
    if (smooth && points.size() > 2) {
        path.splineTo(splineThrough(points, FitEnds()));
        return curves(std::move(path));
    }
    for (const HxGePoint3d& p : points) {
        path.lineTo(p);
    }
    return curves(std::move(path));
}

struct FieldsReader {
    std::string_view type;
    Shape (*read)(const EntityFields& fields);
};
constexpr FieldsReader kFieldsReaders[] = {
    {"LINE", lineShape},
    {"INSERT", insertShape},
    {"CIRCLE", circleShape},
    {"ARC", arcShape},
    {"TEXT", textShape},
    {"MTEXT", paragraphShape},
    {"ATTRIB", attributeShape},
    {"ATTDEF", definitionShape},
    {"POINT", pointShape},
    {"ELLIPSE", ellipseShape},
    {"SOLID", solidShape},
    {"TRACE", solidShape},
    {"3DFACE", faceShape},
    {"DIMENSION", dimensionShape},
    {"LARGE_RADIAL_DIMENSION", dimensionShape},
    {"ARC_DIMENSION", dimensionShape},
    {"ACAD_TABLE", tableShape},
    {"RAY", rayShape},
    {"XLINE", xlineShape},
    {"3DLINE", lineShape},
};

struct GroupsReader {
    std::string_view type;
    Shape (*read)(std::string_view groups, const GroupFormat& format);
};
constexpr GroupsReader kGroupsReaders[] = {
    {"LWPOLYLINE", lightPolylineShape},
    {"HATCH", hatchShape},
    {"SPLINE", splineShape},
    {"VIEWPORT", viewportShape},
    {"LEADER", leaderShape},
    {"IMAGE", imageShape},
    {"WIPEOUT", maskShape},
};

template <class Reader, std::size_t n>
const Reader* find(const Reader (&readers)[n], std::string_view type) {
    const auto found =
        std::find_if(readers, readers + n, [&](const Reader& reader) { return reader.type == type; });
    return found == readers + n ? nullptr : found;
}

bool isHidden(std::string_view groups, const GroupFormat& format) {
    for (EntityCursor cursor(groups, format); cursor.nextShared();) {
        if (cursor.code() == shared_group::kVisibility) {
            return cursor->asInteger() != 0;
        }
    }
    return false;
}

}  // namespace

double sweepBetween(double from, double to) {
    const double sweep = std::fmod(to - from, kTurn);
    if (std::fabs(sweep) < 1e-12) {
        return kTurn;
    }
    return sweep < 0 ? sweep + kTurn : sweep;
}

EllipticArc circularArc(const HxGePoint3d& centre, double radius, double from, double sweep) {
    EllipticArc arc;
    arc.centre = centre;
    arc.u = {radius, 0};
    arc.v = {0, radius};
    arc.from = from;
    arc.sweep = sweep;
    return arc;
}

SplineCurve SplineData::curve() {
    if (control.size() >= 2) {
        return makeSpline(degree, std::move(knots), std::move(weights), std::move(control));
    }
    return splineThrough(fit, ends);
}

Shape entityShape(const EntityRecord& entity, const std::vector<EntityRecord>& vertices,
                  const GroupFormat& format) {
    if (const FieldsReader* reader = find(kFieldsReaders, entity.type)) {
        const EntityFields fields(entity.groups, format);
        return fields.isHidden() ? Shape() : reader->read(fields);
    }
    const GroupsReader* reader = find(kGroupsReaders, entity.type);
    if ((!reader && entity.type != "POLYLINE") || isHidden(entity.groups, format)) {
        return {};
    }
    return reader ? reader->read(entity.groups, format) : polylineShape(entity.groups, vertices, format);
}

}  // namespace korvex
