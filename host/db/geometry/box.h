// Axis-aligned boxes of the view plane and of space, empty, bounded or unbounded.
#pragma once

#include "hxge.h"

#include <limits>

namespace korvex {

/// A point of the view plane.
struct Point2 {
    double x = 0, y = 0;
};

/// A closed interval; empty when made. Its ends may be infinite.
struct Range {
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();

    static Range all() {
        return {-std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
    }
    bool isEmpty() const { return !(low <= high); }
    bool isBounded() const { return std::isfinite(low) && std::isfinite(high); }
    bool contains(double v) const { return low <= v && v <= high; }
    bool contains(const Range& o) const { return low <= o.low && o.high <= high; }
    bool intersects(const Range& o) const { return low <= o.high && o.low <= high; }
    /// NaN adds nothing.
    void add(double v) {
        low = v < low ? v : low;
        high = v > high ? v : high;
    }
    void add(const Range& o) {
        low = o.low < low ? o.low : low;
        high = o.high > high ? o.high : high;
    }
    double size() const { return isEmpty() ? 0 : high - low; }
};

/// A box of the view plane; empty when made. An empty box intersects nothing.
struct Box {
    Range x, y;

    static Box all() { return {Range::all(), Range::all()}; }
    static Box around(Point2 centre, double halfSize) {
        return {{centre.x - halfSize, centre.x + halfSize}, {centre.y - halfSize, centre.y + halfSize}};
    }
    bool isEmpty() const { return x.isEmpty() || y.isEmpty(); }
    /// Empty boxes count as unbounded, too.
    bool isBounded() const { return x.isBounded() && y.isBounded(); }
    bool contains(Point2 p) const { return x.contains(p.x) && y.contains(p.y); }
    bool contains(const Box& o) const { return x.contains(o.x) && y.contains(o.y); }
    bool intersects(const Box& o) const { return x.intersects(o.x) && y.intersects(o.y); }
    void add(Point2 p) {
        x.add(p.x);
        y.add(p.y);
    }
    void add(const Box& o) {
        x.add(o.x);
        y.add(o.y);
    }
    /// Of a bounded box.
    Point2 centre() const { return {x.low + 0.5 * (x.high - x.low), y.low + 0.5 * (y.high - y.low)}; }
    /// The box around this one after the transformation, taken to lie at z = 0.
    Box transformed(const HxGeMatrix3d& m) const;
};

/// A box of space; empty when made.
struct Box3d {
    Range x, y, z;

    static Box3d all() { return {Range::all(), Range::all(), Range::all()}; }
    bool isEmpty() const { return x.isEmpty() || y.isEmpty() || z.isEmpty(); }
    bool isBounded() const { return x.isBounded() && y.isBounded() && z.isBounded(); }
    bool intersects(const Box3d& o) const {
        return x.intersects(o.x) && y.intersects(o.y) && z.intersects(o.z);
    }
    void add(const HxGePoint3d& p) {
        x.add(p.x);
        y.add(p.y);
        z.add(p.z);
    }
    void add(const Box3d& o) {
        x.add(o.x);
        y.add(o.y);
        z.add(o.z);
    }
    /// The box around this one after the transformation; exact where the matrix only scales and moves.
    Box3d transformed(const HxGeMatrix3d& m) const;
    /// The same, seen along z.
    Box inView(const HxGeMatrix3d& toView) const;
};

}  // namespace korvex
