// Small drawings painted to pictures in which a drawing unit is a pixel, and what is seen at a place.
#pragma once

#include "host/ui/render/scene_painter.h"
#include "tests/io/drawing_support.h"

#include <QImage>
#include <QPainter>

namespace korvex::test {

/// A drawing written as pairs (see drawing_support.h). Layers RED (1), GREEN (3) and BLUE (5) are there.
class SceneText {
public:
    /// Groups after the name, such as "62 1 | 70 4".
    SceneText& layer(const std::string& name, const std::string& groups) {
        m_layers += "0 LAYER | 5 " + handle() + " | 2 " + name + " | 6 Continuous | " + groups + "\n";
        return *this;
    }
    /// Dashes as "49 4 | 49 -4".
    SceneText& linetype(const std::string& name, const std::string& dashes) {
        m_linetypes += "0 LTYPE | 5 " + handle() + " | 2 " + name + " | 70 0 | 3 | 72 65 | " + dashes + "\n";
        return *this;
    }
    SceneText& block(const std::string& name, const std::string& entities,
                     const std::string& groups = "70 0") {
        m_blocks += "0 BLOCK | 5 " + handle() + " | 8 0 | 2 " + name + " | 10 0 | 20 0 | " + groups + "\n" +
                    entities + "\n0 ENDBLK | 5 " + handle() + " | 8 0\n";
        return *this;
    }
    SceneText& add(const std::string& entities) {
        m_entities += entities + "\n";
        return *this;
    }
    SceneText& header(const std::string& values) {
        m_header += " | " + values;
        return *this;
    }
    SceneText& blockRecords(const std::string& records) {
        m_blockRecords += records + "\n";
        return *this;
    }
    SceneText& objects(const std::string& records) {
        m_objects += records + "\n";
        return *this;
    }

    std::string text() const {
        const std::string standard = "0 LAYER | 5 10 | 2 0 | 70 0 | 62 7 | 6 Continuous\n0 LAYER | 5 11 | 2 "
                                     "RED | 70 0 | 62 1 | 6 Continuous\n"
                                     "0 LAYER | 5 12 | 2 GREEN | 70 0 | 62 3 | 6 Continuous\n0 LAYER | 5 13 "
                                     "| 2 BLUE | 70 0 | 62 5 | 6 Continuous\n";
        return drawing(
            "0 SECTION | 2 HEADER | 9 $ACADVER | 1 AC1018 | 9 $TILEMODE | 70 1" + m_header +
            " | 0 ENDSEC\n0 SECTION | 2 TABLES\n0 TABLE | 2 LTYPE | 5 5 | 70 9\n" + m_linetypes +
            "0 ENDTAB\n0 TABLE | 2 LAYER | 5 2 | 70 9\n" + standard + m_layers +
            "0 ENDTAB\n0 TABLE | 2 BLOCK_RECORD | 5 1 | 70 9\n" + m_blockRecords +
            "0 ENDTAB | 0 ENDSEC\n0 SECTION | 2 BLOCKS\n" +
            "0 BLOCK | 5 20 | 8 0 | 2 *Model_Space | 70 0 | 10 0 | 20 0 | 0 ENDBLK | 5 21 | 8 0\n"
            "0 BLOCK | 5 22 | 8 0 | 2 *Paper_Space | 70 0 | 10 0 | 20 0 | 0 ENDBLK | 5 23 | 8 0\n" +
            m_blocks + "0 ENDSEC\n0 SECTION | 2 ENTITIES\n" + m_entities +
            "0 ENDSEC\n0 SECTION | 2 OBJECTS\n" + m_objects + "0 ENDSEC\n0 EOF");
    }

private:
    /// From F000 up; the tests name their own below that.
    std::string handle() {
        char buffer[20];
        std::snprintf(buffer, sizeof buffer, "%X", m_next++);
        return buffer;
    }

    std::string m_header, m_linetypes, m_layers, m_blocks, m_entities, m_blockRecords, m_objects;
    unsigned m_next = 0xF000;
};

/// "0 LINE ..." on a layer, with more groups.
inline std::string line(const std::string& layer, double x0, double y0, double x1, double y1,
                        const std::string& more = "") {
    return "0 LINE | 8 " + layer + (more.empty() ? "" : " | " + more) + " | 10 " + std::to_string(x0) +
           " | 20 " + std::to_string(y0) + " | 11 " + std::to_string(x1) + " | 21 " + std::to_string(y1) +
           "\n";
}

class SceneTest : public ::testing::Test {
protected:
    static constexpr int kSize = 200;
    static constexpr QRgb kUntouched = 0xFF010203;

    SceneTest() {
        style.background = qRgb(0, 0, 0);
        style.paper = qRgb(250, 250, 250);
        style.desk = qRgb(90, 90, 90);
        style.ink = Qt::white;
        style.paperInk = Qt::black;
    }

    ~SceneTest() override { hxdbSetWorkingDatabase(nullptr); }

    void load(const SceneText& text) {
        database = opened(text.text());
        hxdbSetWorkingDatabase(database.get());
    }
    HxDbObjectId byHandle(std::uint64_t handle) const {
        return HxDbObjectId(test::byHandle(*database, handle));
    }
    HxDbObjectId layer(const wchar_t* name) const { return recordId(*database, TableKind::layer, name); }

    SceneView view(HxDbObjectId space, double scale = 1) const {
        SceneView view;
        view.database = database.get();
        view.space = space;
        view.toView = HxGeMatrix3d::translation({0, kSize}) * HxGeMatrix3d::scaling(scale, -scale, 1);
        return view;
    }
    SceneView model(double scale = 1) const { return view(database->modelSpaceId(), scale); }
    SceneView paper() const { return view(database->paperSpaceId()); }

    void paint(const SceneView& of) {
        picture = QImage(kSize, kSize, QImage::Format_RGB32);
        picture.fill(kUntouched);
        QPainter on(&picture);
        painter.paint(on, QRectF(0, 0, kSize, kSize), of, style);
    }
    void paint() { paint(model()); }

    /// The pixel that a point of the drawing falls into.
    QRgb at(double x, double y) const {
        return picture.pixel(static_cast<int>(std::floor(x)), static_cast<int>(std::floor(kSize - y)));
    }
    /// Pixels of a colour within a rectangle of the drawing.
    int count(QRgb color, double left, double bottom, double right, double top) const {
        int found = 0;
        for (double y = bottom + 0.5; y < top; ++y) {
            for (double x = left + 0.5; x < right; ++x) {
                found += at(x, y) == color ? 1 : 0;
            }
        }
        return found;
    }
    /// Pixels of any but the background.
    int ink(double left, double bottom, double right, double top) const {
        const int area = static_cast<int>((right - left) * (top - bottom));
        return area - count(style.background.rgb(), left, bottom, right, top);
    }

    SceneStyle style = SceneStyle::dark();
    std::unique_ptr<HxDbDatabase> database;
    ScenePainter painter;
    QImage picture;
};

constexpr QRgb kRed = 0xFFFF0000, kGreen = 0xFF00FF00, kBlue = 0xFF0000FF, kWhite = 0xFFFFFFFF,
               kBlack = 0xFF000000, kYellow = 0xFFFFFF00;

}  // namespace korvex::test
