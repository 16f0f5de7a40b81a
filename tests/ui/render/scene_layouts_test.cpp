// Layouts: the sheet, and what viewports show of model space.
#include "tests/ui/render/scene_fixture.h"

namespace korvex::test {
namespace {

/// Two windows on paper, both at scale 1, that show the same part of model space: lines on RED at height 20
/// and on GREEN at 40, both reaching beyond the windows' edges; frames on BLUE.
SceneText twoWindows(const std::string& left = "", const std::string& right = "") {
    const std::string lines = line("RED", -500, 20.5, 500, 20.5) + line("GREEN", -500, 40.5, 500, 40.5);
    const auto window = [](const std::string& handle, const std::string& centre, int number,
                           const std::string& more) {
        return "0 VIEWPORT | 5 " + handle + " | 67 1 | 8 BLUE | 10 " + centre +
               " | 20 60 | 40 60 | 41 80 | 68 " + std::to_string(number) + " | 69 " + std::to_string(number) +
               " | 12 30 | 22 40 | 45 80 | 16 0 | 26 0 | 36 1 | 17 0 | 27 0 | 37 0 | " +
               (more.empty() ? "90 0" : more) + "\n";
    };
    return SceneText().add(lines).add(window("A1", "50", 2, left)).add(window("A2", "140", 3, right));
}

/// In paper coordinates: the windows reach from 20 to 80 and from 110 to 170, model y is 20 less than paper
/// y.
constexpr double kLeft = 50, kRight = 140, kRedLine = 40.5, kGreenLine = 60.5;

TEST_F(SceneTest, ViewportsClipWhatTheyShow) {
    load(twoWindows());
    paint(paper());
    EXPECT_EQ(kRed, at(kLeft, kRedLine));
    EXPECT_EQ(kGreen, at(kRight, kGreenLine));
    EXPECT_EQ(style.paper.rgb(), at(95, kRedLine)) << "between the windows";
    EXPECT_EQ(style.paper.rgb(), at(15, kRedLine));
    EXPECT_EQ(kBlue, at(20, 50)) << "the frame";
    freeze(*database, L"BLUE");
    paint(paper());
    EXPECT_EQ(style.paper.rgb(), at(20, 50));
    EXPECT_EQ(kRed, at(kLeft, kRedLine)) << "a window is one also without its frame";
}

TEST_F(SceneTest, EveryViewportHasItsOwnLayers) {
    load(twoWindows());
    const HxDbObjectId left = byHandle(0xA1);
    const HxDbObjectId right = byHandle(0xA2);
    {
        const HxDbObjectPointer<HxDbViewport> window(left, HxDb::kForWrite);
        HxArray<HxDbObjectId> layers;
        layers.append(layer(L"RED"));
        ASSERT_EQ(Hx::eOk, window->freezeLayersInViewport(layers));
        const HxDbObjectPointer<HxDbLayerTableRecord> green(layer(L"GREEN"), HxDb::kForWrite);
        ASSERT_EQ(Hx::eOk, green->setColor(HxCmColor::byRgb(10, 20, 30), right));
        ASSERT_EQ(Hx::eOk, green->setTransparency(HxCmTransparency(51), left));
    }
    paint(paper());
    EXPECT_EQ(style.paper.rgb(), at(kLeft, kRedLine)) << "frozen in this one";
    EXPECT_EQ(kRed, at(kRight, kRedLine));
    EXPECT_EQ(qRgb(10, 20, 30), at(kRight, kGreenLine)) << "another colour in this one";
    EXPECT_NEAR(200, qRed(at(kLeft, kGreenLine)), 3) << "and seen through in the other";
    EXPECT_GT(qGreen(at(kLeft, kGreenLine)), 240);
    SceneView inside = model();
    inside.viewport = left;
    paint(inside);
    EXPECT_EQ(kBlack, at(50, 20.5)) << "also when the viewport fills the screen";
    inside.viewport = HxDbObjectId();
    paint(inside);
    EXPECT_EQ(kRed, at(50, 20.5));
}

TEST_F(SceneTest, ViewportsAreBoundedByTheirClipEntity) {
    load(twoWindows("90 65536 | 340 B1")
             .add("0 CIRCLE | 5 B1 | 67 1 | 8 RED | 10 50 | 20 50.5 | 40 20")
             .add(line("RED", 25.5, -500, 25.5, 500)));
    paint(paper());
    EXPECT_EQ(kRed, at(45, kRedLine)) << "within the circle";
    EXPECT_EQ(style.paper.rgb(), at(24, kRedLine)) << "within the frame, but not the circle";
    EXPECT_EQ(kRed, at(115, kRedLine)) << "the other has a frame only";
    EXPECT_EQ(kRed, at(45.5, 50)) << "the line at 25.5 in model space, 20 farther on paper";
    EXPECT_EQ(style.paper.rgb(), at(45.5, 85));
}

TEST_F(SceneTest, ViewportsScaleAndTurn) {
    load(SceneText()
             .add(line("RED", 1000, 2000.0, 1010, 2000.0))
             .add("0 VIEWPORT | 5 A1 | 67 1 | 8 0 | 10 100 | 20 100 | 40 100 | 41 100 | 68 2 | 69 2 | 12 0 | "
                  "22 0 | 45 50 | "
                  "51 90 | 16 0 | 26 0 | 36 1 | 17 1000.25 | 27 2000 | 37 0 | 90 0"));
    paint(paper());
    EXPECT_EQ(kRed, at(100.2, 110)) << "twice as large, a quarter turned: upwards from the middle";
    EXPECT_EQ(style.paper.rgb(), at(110, 100.2));
    EXPECT_GE(count(kRed, 95, 95, 105, 125), 20);
}

TEST_F(SceneTest, SheetsLieOnADesk) {
    load(twoWindows().header("9 $PLIMMIN | 10 10 | 20 5 | 9 $PLIMMAX | 10 180 | 20 150"));
    paint(paper());
    EXPECT_EQ(style.paper.rgb(), at(12, 148));
    EXPECT_EQ(style.desk.rgb(), at(5, 100));
    EXPECT_EQ(style.desk.rgb(), at(100, 170));
    SceneView worked = paper();
    worked.viewport = byHandle(0xA2);
    paint(worked);
    EXPECT_EQ(style.activeFrame.rgb(), at(110, 50)) << "the window that is worked in";
    EXPECT_EQ(kBlue, at(20, 50));
}

/// A sheet of 100 by 60 millimetres with margins of 1, 2, 3 and 4 from the left on, counter-clockwise.
SceneText plotted(const std::string& settings, const std::string& limits) {
    return SceneText()
        .blockRecords(
            "0 BLOCK_RECORD | 5 24 | 2 *Model_Space\n0 BLOCK_RECORD | 5 25 | 2 *Paper_Space | 340 30")
        .objects("0 DICTIONARY | 5 C | 330 0 | 100 AcDbDictionary | 3 ACAD_LAYOUT | 350 1A\n"
                 "0 DICTIONARY | 5 1A | 330 C | 100 AcDbDictionary | 3 Sheet | 350 30\n"
                 "0 LAYOUT | 5 30 | 330 1A | 100 AcDbPlotSettings | 1 | 40 1 | 41 2 | 42 3 | 43 4 | 44 100 | "
                 "45 60 | "
                 "142 1 | 143 1 | " +
                 settings + " | 100 AcDbLayout | 1 Sheet | 70 1 | 71 1 | " + limits + " | 330 25");
}

TEST_F(SceneTest, SheetsHaveTheSizeAndMarginsOfTheirLayout) {
    const auto sheet = [&](const std::string& settings, const std::string& limits) {
        load(plotted(settings, limits));
        SceneView view = paper();
        view.toView = HxGeMatrix3d::translation({20, -20}) * view.toView;
        paint(view);
        return std::vector<int>{
            count(style.paper.rgb(), 0, 50, kSize, 51), count(style.paper.rgb(), 50, 0, 51, kSize),
            count(style.paper.rgb(), 0, 50, 20, 51), count(style.paper.rgb(), 50, 0, 51, 20)};
    };
    const std::string noLimits = "10 0 | 20 0 | 11 12 | 21 9";
    EXPECT_EQ((std::vector<int>{100, 60, 1, 2}), sheet("72 1 | 73 0", noLimits))
        << "width, height, left, bottom";
    EXPECT_EQ((std::vector<int>{60, 100, 4, 1}), sheet("72 1 | 73 1", noLimits)) << "a quarter turned";
    EXPECT_EQ((std::vector<int>{100, 60, 0, 0}), sheet("72 1 | 73 0", "10 0 | 20 0 | 11 100 | 21 60"))
        << "its limits tell where it lies";
    EXPECT_EQ(style.desk.rgb(), at(150, 100));
}

}  // namespace
}  // namespace korvex::test
