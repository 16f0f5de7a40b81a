// Polylines of both kinds: runs of lines and bulges, wide ones as the areas that they cover, meshes.
#include "host/db/geometry/shape_readers.h"

#include <algorithm>

namespace korvex {

namespace {

struct Vertex {
    HxGePoint3d point;
    double bulge = 0;
    double startWidth = 0, endWidth = 0;
    int flags = 0;
    std::array<int, 4> corners{};  ///< faces of a polyface mesh
};

bool isWidth(double w) { return w > 0 && isUsable(w); }

/// The area under one segment of a polyline with width, as closed runs.
class WideSegment {
public:
    WideSegment(Path& out, const Vertex& from, const HxGePoint3d& to)
        : m_out(out), m_from(from), m_to(to), m_start(isWidth(from.startWidth) ? from.startWidth / 2 : 0),
          m_end(isWidth(from.endWidth) ? from.endWidth / 2 : 0) {}

    void add() {
        if (!(std::fabs(m_from.bulge) > 1e-9) || !(std::fabs(m_from.bulge) < 1e9)) {
            addStraight();
        } else if (m_start == m_end) {
            addRing();
        } else {
            addTapered();
        }
    }

private:
    void addStraight() {
        const HxGeVector3d along = m_to - m_from.point;
        const HxGeVector3d side = HxGeVector3d(-along.y, along.x).normal();
        m_out.moveTo(m_from.point + side * m_start);
        m_out.lineTo(m_to + side * m_end);
        m_out.lineTo(m_to - side * m_end);
        m_out.lineTo(m_from.point - side * m_start);
        m_out.close();
    }

    HxGePoint3d centre() const {
        const double bulge = m_from.bulge;
        const HxGeVector3d chord = m_to - m_from.point;
        return m_from.point + chord * 0.5 +
               HxGeVector3d(-chord.y, chord.x) * ((1 - bulge * bulge) / (4 * bulge));
    }

    void addRing() {
        const HxGePoint3d middle = centre();
        const HxGeVector3d a = (m_from.point - middle).normal();
        const HxGeVector3d b = (m_to - middle).normal();
        const double radius = m_from.point.distanceTo(middle);
        const double inner = std::max(radius - m_start, 0.0);
        m_out.moveTo(middle + a * (radius + m_start));
        m_out.bulgeTo(middle + b * (radius + m_start), m_from.bulge);
        m_out.lineTo(middle + b * inner);
        m_out.bulgeTo(middle + a * inner, -m_from.bulge);
        m_out.close();
    }

    /// Short pieces between radial lines, so that they leave no gaps.
    void addTapered() {
        constexpr double kStep = kTurn / 64;
        const double sweep = 4 * std::atan(m_from.bulge);
        const int count = static_cast<int>(std::ceil(std::fabs(sweep) / kStep));
        const HxGePoint3d middle = centre();
        const HxGeVector3d u = m_from.point - middle;
        const HxGeVector3d v(-u.y, u.x);
        const auto at = [&](int i, double side) {
            const double t = static_cast<double>(i) / count;
            const HxGeVector3d ray = u * std::cos(sweep * t) + v * std::sin(sweep * t);
            return middle + ray + ray.normal() * (side * (m_start + (m_end - m_start) * t));
        };
        for (int i = 0; i < count; ++i) {
            m_out.moveTo(at(i, 1));
            m_out.lineTo(at(i + 1, 1));
            m_out.lineTo(at(i + 1, -1));
            m_out.lineTo(at(i, -1));
            m_out.close();
        }
    }

    Path& m_out;
    const Vertex& m_from;
    const HxGePoint3d& m_to;
    double m_start, m_end;
};

Shape flatPolyline(const std::vector<Vertex>& vertices, bool closed, const HxGeMatrix3d& plane) {
    const bool wide = std::any_of(vertices.begin(), vertices.end(), [](const Vertex& v) {
        return isWidth(v.startWidth) || isWidth(v.endWidth);
    });
    Shape shape;
    const std::size_t segments =
        vertices.empty() ? 0 : vertices.size() - (closed && vertices.size() > 1 ? 0 : 1);
    if (!wide && !vertices.empty()) {
        shape.path.moveTo(vertices.front().point);
    }
    for (std::size_t i = 0; i < segments; ++i) {
        const HxGePoint3d& to = vertices[(i + 1) % vertices.size()].point;
        if (wide) {
            WideSegment(shape.path, vertices[i], to).add();
        } else {
            shape.path.bulgeTo(to, vertices[i].bulge);
        }
    }
    shape.path.transform(plane);
    shape.kind = shape.path.isEmpty() ? ShapeKind::none : ShapeKind::curves;
    shape.filling = wide ? Filling::any : Filling::none;
    return shape;
}

/// Rows of m vertices, columns of n; closed in either direction.
void addMesh(Path& path, const std::vector<Vertex>& points, std::size_t m, std::size_t n, bool closedM,
             bool closedN) {
    if (n == 0 || m == 0 || points.size() / n < m) {
        return;
    }
    for (std::size_t i = 0; i < m; ++i) {
        path.moveTo(points[i * n].point);
        for (std::size_t j = 1; j < n + (closedN ? 1 : 0); ++j) {
            path.lineTo(points[i * n + j % n].point);
        }
    }
    for (std::size_t j = 0; j < n; ++j) {
        path.moveTo(points[j].point);
        for (std::size_t i = 1; i < m + (closedM ? 1 : 0); ++i) {
            path.lineTo(points[i % m * n + j].point);
        }
    }
}

/// Faces name their corners by number from 1; a negative one begins an edge that is not seen.
void addFaces(Path& path, const std::vector<Vertex>& points, const std::vector<Vertex>& faces) {
    const auto isCorner = [&](int number) {
        return number != 0 && number > -static_cast<long long>(points.size()) - 1 &&
               number <= static_cast<long long>(points.size());
    };
    const auto pointOf = [&](int number) -> const HxGePoint3d& {
        return points[static_cast<std::size_t>(std::abs(number)) - 1].point;
    };
    for (const Vertex& face : faces) {
        std::vector<int> corners;
        std::copy_if(face.corners.begin(), face.corners.end(), std::back_inserter(corners), isCorner);
        for (std::size_t i = 0; i < corners.size(); ++i) {
            if (corners[i] > 0) {
                path.moveTo(pointOf(corners[i]));
                path.lineTo(pointOf(corners[(i + 1) % corners.size()]));
            }
        }
    }
}

Vertex readVertex(const EntityRecord& record, const GroupFormat& format, double startWidth, double endWidth) {
    const EntityFields fields(record.groups, format);
    Vertex vertex;
    vertex.point = fields.point(10);
    vertex.bulge = fields.real(42);
    vertex.startWidth = fields.real(40, startWidth);
    vertex.endWidth = fields.real(41, endWidth);
    vertex.flags = fields.integer(70);
    for (std::size_t i = 0; i < 4; ++i) {
        vertex.corners[i] = fields.integer(71 + static_cast<int>(i));
    }
    return vertex;
}

constexpr int kClosed = 1, kSplineFit = 4, kSpace = 8, kMesh = 16, kClosedN = 32, kFaces = 64;
constexpr int kFrame = 16, kMeshVertex = 64, kFace = 128;  ///< flags of vertices

Shape meshShape(const EntityFields& fields, const std::vector<Vertex>& vertices) {
    const int flags = fields.integer(70);
    Shape shape;
    if (flags & kFaces) {
        std::vector<Vertex> points, faces;
        for (const Vertex& v : vertices) {
            (v.flags & kFace && !(v.flags & kMeshVertex) ? faces : points).push_back(v);
        }
        addFaces(shape.path, points, faces);
    } else {
        const bool smooth = (flags & kSplineFit) != 0;
        const auto size = [&](int smoothCode, int code) {
            return static_cast<std::size_t>(std::max(fields.integer(smooth ? smoothCode : code), 0));
        };
        addMesh(shape.path, vertices, size(73, 71), size(74, 72), flags & kClosed, flags & kClosedN);
    }
    shape.kind = shape.path.isEmpty() ? ShapeKind::none : ShapeKind::curves;
    return shape;
}

}  // namespace

Shape lightPolylineShape(std::string_view groups, const GroupFormat& format) {
    std::vector<Vertex> vertices;
    bool closed = false;
    double width = 0, elevation = 0;
    HxGePoint3d extrusion(0, 0, 1);
    for (EntityCursor cursor(groups, format); cursor.next();) {
        const int code = cursor.code();
        if (code == 10) {
            vertices.emplace_back();
        }
        switch (code) {
        case 70: closed = (cursor->asInteger() & kClosed) != 0; break;
        case 43: width = cursor->asReal(); break;
        case 38: elevation = cursor->asReal(); break;
        default: break;
        }
        readCoordinate(*cursor, 210, extrusion);
        if (vertices.empty()) {
            continue;
        }
        Vertex& last = vertices.back();
        switch (code) {
        case 10: last.point.x = cursor->asReal(); break;
        case 20: last.point.y = cursor->asReal(); break;
        case 40: last.startWidth = cursor->asReal(); break;
        case 41: last.endWidth = cursor->asReal(); break;
        case 42: last.bulge = cursor->asReal(); break;
        default: break;
        }
    }
    for (Vertex& v : vertices) {
        v.point.z = elevation;
        if (isWidth(width)) {
            v.startWidth = v.endWidth = width;
        }
    }
    return flatPolyline(vertices, closed,
                        HxGeMatrix3d::planeToWorld({extrusion.x, extrusion.y, extrusion.z}));
}

Shape polylineShape(std::string_view groups, const std::vector<EntityRecord>& vertices,
                    const GroupFormat& format) {
    const EntityFields fields(groups, format);
    const int flags = fields.integer(70);
    std::vector<Vertex> kept;
    for (const EntityRecord& record : vertices) {
        if (record.type != "VERTEX") {
            continue;
        }
        Vertex vertex = readVertex(record, format, fields.real(40), fields.real(41));
        if (!(flags & kSplineFit) || !(vertex.flags & kFrame)) {
            kept.push_back(vertex);
        }
    }
    if (flags & (kMesh | kFaces)) {
        return meshShape(fields, kept);
    }
    const bool flat = !(flags & kSpace);
    for (Vertex& vertex : kept) {
        vertex.point.z = flat ? fields.point(10).z : vertex.point.z;
        if (!flat) {
            vertex.bulge = vertex.startWidth = vertex.endWidth = 0;
        }
    }
    return flatPolyline(kept, flags & kClosed, flat ? fields.plane() : HxGeMatrix3d());
}

}  // namespace korvex
