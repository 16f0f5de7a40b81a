// What is seen of a drawing at first, whatever view it keeps, and that looking leaves it unmodified.
#include "host/editor/view.h"
#include "sdk/hxdbdict.h"
#include "tests/editor/editor_fixture.h"
#include "tests/module/small_drawing.h"

namespace korvex::test {
namespace {

class FirstView : public EditorTest {
protected:
    ~FirstView() override { setScreenSize(0, 0); }

    /// Opens a drawing with content from 0,0 to 200,100 and dots in its corners, that keeps a view.
    void open(double x, double y, double height, double aspect) {
        SmallDrawing drawing;
        drawing.model(drawing.line("0", 0, 0, 200, 0) + drawing.line("0", 0, 100, 200, 100) +
                      drawing.line("0", 0, 0, 10, 10));
        drawing.paper(drawing.viewport(1, 5000, 5000, 10, 5000, 5000) +
                      drawing.viewport(2, 100, 50, 100, 5, 0));
        std::string text = drawing.text();
        const std::size_t start = text.find("\n12\n", text.find("*Active"));
        const std::size_t end = text.find("\n0\n", start);
        std::string view;
        const std::pair<int, double> groups[] = {{12, x}, {22, y}, {40, height}, {41, aspect}};
        for (const auto& [code, value] : groups) {
            view += "\n" + std::to_string(code) + "\n" + std::to_string(value);
        }
        text.replace(start, end - start, height > 0 ? view : "");
        m_name = "view" + std::to_string(++m_count) + ".dxf";
        write(m_name.c_str(), text);
        run(L"OPEN " + path(m_name.c_str()) + L"\n");
        EXPECT_EQ(failures, Lines());
    }
    void expect(double x, double y, double height) {
        const View view = screenView(database());
        EXPECT_NEAR(view.center.x, x, 1e-6);
        EXPECT_NEAR(view.center.y, y, 1e-6);
        EXPECT_NEAR(view.height, height, 1e-6);
        EXPECT_FALSE(database().isModified());
    }

    std::string m_name;
    int m_count = 0;
};

TEST_F(FirstView, IsOfEverythingWhereTheKeptOneShowsNextToNothing) {
    setScreenSize(800, 800);
    const double kept[][4] = {{0, 0, 0, 1}, {5000, 0, 100, 1}, {0, 0, 1500, 1}, {100, 50, 20, 1}};
    for (const auto& view : kept) {
        open(view[0], view[1], view[2], view[3]);
        expect(100, 50, 210);
    }
    open(5, 5, 8, 1);
    expect(5, 5, 8);
    run(L"ZOOM W 900,900 1000,1000\n");
    EXPECT_NEAR(screenView(database()).center.x, 950, 1e-6) << "who asks for emptiness gets it";
    run(L"U\n");
    expect(5, 5, 8);
}

TEST_F(FirstView, FollowsTheWindowsShapeUntilItIsMoved) {
    open(0, 0, 0, 0);
    setScreenSize(800, 800);
    expect(100, 50, 210);
    setScreenSize(400, 800);
    expect(100, 50, 420);
    open(100, 50, 120, 2);
    setScreenSize(1000, 500);
    expect(100, 50, 120);
    setScreenSize(500, 500);
    expect(100, 50, 200);
    setScreenView(database(), View{{7, 8, 0}, 30, 1, 0});
    setScreenSize(100, 500);
    expect(7, 8, 30);
}

TEST_F(FirstView, LayoutsAreLookedAtWithoutBeingChanged) {
    setScreenSize(800, 400);
    open(100, 50, 120, 2);
    run(L"LAYOUT S Layout1\n");
    EXPECT_FALSE(database().tilemode());
    const View sheet = screenView(database());
    EXPECT_LT(std::hypot(sheet.center.x - 100, sheet.center.y - 50), sheet.height) << "not where the view is";
    EXPECT_FALSE(database().isModified());
    run(L"LINE 0,0 1,1 \n");
    EXPECT_TRUE(database().isModified());
    run(L"U\n");
    EXPECT_FALSE(database().isModified());
    run(L"U\n");
    EXPECT_TRUE(database().tilemode()) << "going to a layout is a step";
    EXPECT_FALSE(database().isModified());
    run(L"REDO 1\n");
    run(L"LINE 0,0 1,1 \nQSAVE\nMODEL\n");
    EXPECT_FALSE(database().isModified());
    run(L"U\nLAYOUT S Layout1\nMODEL\nU\nU\n");
    EXPECT_FALSE(database().isModified());
    run(L"U\n");
    EXPECT_TRUE(database().isModified()) << "the line is gone that the file has";
    run(L"REDO 1\n");
    run(L"CLOSE\nOPEN " + path(m_name.c_str()) + L"\n");
    EXPECT_EQ(failures, Lines());
    EXPECT_FALSE(database().tilemode()) << "saved with the line";
}

}  // namespace
}  // namespace korvex::test
