// Drawings of mixed entities, of any size.
#pragma once

#include <cmath>
#include <random>
#include <string>

namespace korvex {

/// Text of a drawing: groups as a code and a value.
class Groups {
public:
    Groups& operator()(int code, const std::string& value) {
        m_text += std::to_string(code) + "\n" + value + "\n";
        return *this;
    }
    Groups& operator()(int code, double value) { return (*this)(code, std::to_string(value)); }
    const std::string& text() const { return m_text; }

private:
    std::string m_text;
};

/// Of ten entities four are lines, two polylines, one each an arc, a circle, a text, a reference; on 20
/// layers, in the density of a floor plan. Coordinates as in a survey.
class MixedDrawing {
public:
    explicit MixedDrawing(int entities) : m_side(std::sqrt(entities) * 10) {
        tables();
        blocks();
        m_out(0, "SECTION")(2, "ENTITIES");
        for (int i = 0; i < entities; ++i) {
            entity(i);
        }
        m_out(0, "ENDSEC")(0, "EOF");
    }
    const std::string& text() const { return m_out.text(); }

private:
    static constexpr double kEast = 450000, kNorth = 5200000;

    void tables() {
        m_out(0, "SECTION")(2, "HEADER")(9, "$ACADVER")(1, "AC1015")(9, "$TILEMODE")(70, "1")(0, "ENDSEC");
        m_out(0, "SECTION")(2, "TABLES")(0, "TABLE")(2, "LTYPE")(70, "1");
        m_out(0, "LTYPE")(2, "DASHED")(70, "0")(3, "")(72, "65")(73, "2")(40, 3.0)(49, 2.0)(74, "0")(
            49, -1.0)(74, "0");
        m_out(0, "ENDTAB")(0, "TABLE")(2, "LAYER")(70, "20");
        for (int i = 0; i < 20; ++i) {
            m_out(0, "LAYER")(2, "L" + std::to_string(i))(70, "0")(62, std::to_string(i + 1))(
                6, i % 5 == 0 ? "DASHED" : "Continuous");
        }
        m_out(0, "ENDTAB")(0, "ENDSEC");
    }
    void blocks() {
        m_out(0, "SECTION")(2, "BLOCKS")(0, "BLOCK")(8, "0")(2, "DOOR")(70, "0")(10, 0.0)(20, 0.0);
        m_out(0, "LINE")(8, "0")(10, 0.0)(20, 0.0)(11, 9.0)(21, 0.0);
        m_out(0, "LINE")(8, "0")(10, 0.0)(20, 0.0)(11, 0.0)(21, 9.0);
        m_out(0, "ARC")(8, "0")(10, 0.0)(20, 0.0)(40, 9.0)(50, 0.0)(51, 90.0);
        m_out(0, "ENDBLK")(8, "0")(0, "ENDSEC");
    }
    double any(double most) { return std::uniform_real_distribution<double>(0, most)(m_random); }

    void entity(int i) {
        const double x = kEast + any(m_side);
        const double y = kNorth + any(m_side);
        const std::string layer = "L" + std::to_string(m_random() % 20);
        switch (i % 10) {
        case 4:
        case 5:
            m_out(0, "LWPOLYLINE")(8, layer)(90, "5")(70, "0");
            for (int k = 0; k < 5; ++k) {
                m_out(10, x + any(15))(20, y + any(15));
            }
            break;
        case 6: m_out(0, "ARC")(8, layer)(10, x)(20, y)(40, 2 + any(8))(50, 0.0)(51, any(350)); break;
        case 7: m_out(0, "CIRCLE")(8, layer)(10, x)(20, y)(40, 1 + any(4)); break;
        case 8: m_out(0, "TEXT")(8, layer)(10, x)(20, y)(40, 2.5)(1, "Room " + std::to_string(i)); break;
        case 9: m_out(0, "INSERT")(8, layer)(2, "DOOR")(10, x)(20, y)(50, any(360)); break;
        default: m_out(0, "LINE")(8, layer)(10, x)(20, y)(11, x + any(20) - 10)(21, y + any(20) - 10);
        }
    }

    double m_side;
    std::mt19937 m_random{1};
    Groups m_out;
};

}  // namespace korvex
