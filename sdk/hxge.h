// Points, vectors and transformations of drawing space. Plain values; lengths in drawing units, angles in
// radians.
#pragma once

#include <array>
#include <cmath>

struct HxGeVector3d {
    double x = 0, y = 0, z = 0;
    HxGeVector3d() = default;
    HxGeVector3d(double vx, double vy, double vz = 0) : x(vx), y(vy), z(vz) {}
    HxGeVector3d operator+(const HxGeVector3d& o) const { return {x + o.x, y + o.y, z + o.z}; }
    HxGeVector3d operator-(const HxGeVector3d& o) const { return {x - o.x, y - o.y, z - o.z}; }
    HxGeVector3d operator*(double f) const { return {x * f, y * f, z * f}; }
    double dot(const HxGeVector3d& o) const { return x * o.x + y * o.y + z * o.z; }
    HxGeVector3d cross(const HxGeVector3d& o) const {
        return {y * o.z - z * o.y, z * o.x - x * o.z, x * o.y - y * o.x};
    }
    double length() const { return std::sqrt(dot(*this)); }
    /// Unit vector of the same direction; the null vector stays null.
    HxGeVector3d normal() const {
        const double l = length();
        return l > 0 ? *this * (1.0 / l) : *this;
    }
};

struct HxGePoint3d {
    double x = 0, y = 0, z = 0;
    HxGePoint3d() = default;
    HxGePoint3d(double px, double py, double pz = 0) : x(px), y(py), z(pz) {}
    HxGePoint3d operator+(const HxGeVector3d& v) const { return {x + v.x, y + v.y, z + v.z}; }
    HxGePoint3d operator-(const HxGeVector3d& v) const { return {x - v.x, y - v.y, z - v.z}; }
    HxGeVector3d operator-(const HxGePoint3d& o) const { return {x - o.x, y - o.y, z - o.z}; }
    double distanceTo(const HxGePoint3d& o) const { return (*this - o).length(); }
};

/// Affine transformation; row-major, applied to column vectors: p' = M * p.
struct HxGeMatrix3d {
    std::array<std::array<double, 4>, 4> entry{{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}};

    static HxGeMatrix3d translation(const HxGeVector3d& v) {
        HxGeMatrix3d m;
        m.entry[0][3] = v.x;
        m.entry[1][3] = v.y;
        m.entry[2][3] = v.z;
        return m;
    }
    static HxGeMatrix3d scaling(double sx, double sy, double sz) {
        HxGeMatrix3d m;
        m.entry[0][0] = sx;
        m.entry[1][1] = sy;
        m.entry[2][2] = sz;
        return m;
    }
    static HxGeMatrix3d rotationZ(double angle) {
        HxGeMatrix3d m;
        m.entry[0][0] = m.entry[1][1] = std::cos(angle);
        m.entry[1][0] = std::sin(angle);
        m.entry[0][1] = -m.entry[1][0];
        return m;
    }
    /// From object coordinates to world coordinates for an extrusion direction (groups 210, 220, 230).
    static HxGeMatrix3d planeToWorld(const HxGeVector3d& extrusion);

    HxGeMatrix3d operator*(const HxGeMatrix3d& o) const {
        HxGeMatrix3d r;
        for (std::size_t i = 0; i < 4; ++i)
            for (std::size_t j = 0; j < 4; ++j) {
                r.entry[i][j] = 0;
                for (std::size_t k = 0; k < 4; ++k)
                    r.entry[i][j] += entry[i][k] * o.entry[k][j];
            }
        return r;
    }
    HxGePoint3d operator*(const HxGePoint3d& p) const {
        return {entry[0][0] * p.x + entry[0][1] * p.y + entry[0][2] * p.z + entry[0][3],
                entry[1][0] * p.x + entry[1][1] * p.y + entry[1][2] * p.z + entry[1][3],
                entry[2][0] * p.x + entry[2][1] * p.y + entry[2][2] * p.z + entry[2][3]};
    }
    /// The inverse transformation; the identity when there is none (a scale of 0).
    HxGeMatrix3d inverse() const;
};

inline HxGeMatrix3d HxGeMatrix3d::planeToWorld(const HxGeVector3d& extrusion) {
    const HxGeVector3d n = extrusion.length() > 0 ? extrusion.normal() : HxGeVector3d(0, 0, 1);
    constexpr double kNearAxis = 1.0 / 64.0;
    const HxGeVector3d ax =
        (std::fabs(n.x) < kNearAxis && std::fabs(n.y) < kNearAxis ? HxGeVector3d(0, 1, 0).cross(n)
                                                                  : HxGeVector3d(0, 0, 1).cross(n))
            .normal();
    const HxGeVector3d ay = n.cross(ax).normal();
    HxGeMatrix3d m;
    m.entry = {{{ax.x, ay.x, n.x, 0}, {ax.y, ay.y, n.y, 0}, {ax.z, ay.z, n.z, 0}, {0, 0, 0, 1}}};
    return m;
}

inline HxGeMatrix3d HxGeMatrix3d::inverse() const {
    const auto& e = entry;
    const double a = e[1][1] * e[2][2] - e[1][2] * e[2][1];
    const double b = e[1][2] * e[2][0] - e[1][0] * e[2][2];
    const double c = e[1][0] * e[2][1] - e[1][1] * e[2][0];
    const double det = e[0][0] * a + e[0][1] * b + e[0][2] * c;
    HxGeMatrix3d r;
    if (det == 0 || !std::isfinite(det)) return r;
    const double s = 1.0 / det;
    r.entry[0] = {a * s, (e[0][2] * e[2][1] - e[0][1] * e[2][2]) * s,
                  (e[0][1] * e[1][2] - e[0][2] * e[1][1]) * s, 0};
    r.entry[1] = {b * s, (e[0][0] * e[2][2] - e[0][2] * e[2][0]) * s,
                  (e[0][2] * e[1][0] - e[0][0] * e[1][2]) * s, 0};
    r.entry[2] = {c * s, (e[0][1] * e[2][0] - e[0][0] * e[2][1]) * s,
                  (e[0][0] * e[1][1] - e[0][1] * e[1][0]) * s, 0};
    const HxGePoint3d t = r * HxGePoint3d(e[0][3], e[1][3], e[2][3]);
    r.entry[0][3] = -t.x;
    r.entry[1][3] = -t.y;
    r.entry[2][3] = -t.z;
    return r;
}
