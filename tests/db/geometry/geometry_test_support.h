// Shapes from groups written as in a drawing, and what tests ask of them.
#pragma once

#include "host/db/geometry/entity_shape.h"
#include "host/db/geometry/hit_test.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace korvex::test {

/// "10 1.5 20 2 ..." as groups, one code and one value without blanks after the other.
inline std::string groupsOf(const std::string& words) {
    std::string out = words;
    for (char& c : out) {
        c = c == ' ' ? '\n' : c;
    }
    return out + "\n";
}

inline Shape shapeOf(const std::string& type, const std::string& words,
                     const std::vector<std::string>& vertices = {}) {
    std::vector<std::string> kept;
    for (const std::string& vertex : vertices) {
        kept.push_back(groupsOf(vertex));
    }
    std::vector<EntityRecord> records;
    for (const std::string& groups : kept) {
        records.push_back({"VERTEX", groups});
    }
    const std::string groups = groupsOf(words);
    return entityShape({type, groups}, records, GroupFormat());
}

inline bool touches(const Shape& shape, double x, double y, double halfSize = 0.01) {
    return hits(shape, HxGeMatrix3d(), Box::around({x, y}, halfSize));
}

inline double distance(const Shape& shape, double x, double y, double halfSize) {
    return hitDistance(shape, HxGeMatrix3d(), Box::around({x, y}, halfSize));
}

inline std::string text(double v) {
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "%.17g", v);
    return buffer;
}

}  // namespace korvex::test
