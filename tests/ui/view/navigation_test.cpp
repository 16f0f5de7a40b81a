// Zooming and panning by hand: what is seen changes, the drawing does not.
#include "tests/ui/view/view_fixture.h"

namespace korvex::test {
namespace {

const DrawingText kLine = DrawingText().add("0 LINE 5 A1 8 0 10 50 20 50 11 350 21 250");

TEST_F(ViewTest, WheelKeepsThePointUnderTheCursor) {
    open(kLine);
    const QPoint at(300, 80);
    const HxGePoint3d before = pointAt(at);
    EXPECT_NEAR(300, before.x, 1e-9);
    EXPECT_NEAR(220, before.y, 1e-9);
    turnWheel(at, 3);
    EXPECT_NEAR(before.x, pointAt(at).x, 1e-9);
    EXPECT_NEAR(before.y, pointAt(at).y, 1e-9);
    EXPECT_LT(screenView(database()).height, 200);
    turnWheel(at, -3);
    EXPECT_NEAR(300, screenView(database()).height, 1e-9);
    turnWheel(at, -2000);
    turnWheel(at, 4000);
    EXPECT_GT(screenView(database()).height, 0) << "never so far that nothing comes back";
}

TEST_F(ViewTest, DragsScrollsAndKeysPan) {
    open(kLine);
    drag({100, 100}, {130, 80}, Qt::MiddleButton);
    EXPECT_NEAR(170, screenView(database()).center.x, 1e-9);
    EXPECT_NEAR(130, screenView(database()).center.y, 1e-9);
    moveTo({10, 10});
    EXPECT_NEAR(170, screenView(database()).center.x, 1e-9) << "not after the button is up";
    turnWheel({200, 150}, 1, Qt::ShiftModifier);
    EXPECT_NEAR(110, screenView(database()).center.x, 1e-9);
    QTest::keyClick(view.get(), Qt::Key_Right, Qt::ControlModifier);
    EXPECT_NEAR(150, screenView(database()).center.x, 1e-9);
    QTest::keyClick(view.get(), Qt::Key_Up, Qt::ControlModifier);
    EXPECT_NEAR(160, screenView(database()).center.y, 1e-9);
    QTest::keyClick(view.get(), Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_NEAR(375, screenView(database()).height, 1e-9);
}

TEST_F(ViewTest, DoubleMiddleClickShowsEverything) {
    open(kLine);
    look(5000, 5000, 10);
    send(QEvent::MouseButtonDblClick, {50, 50}, Qt::MiddleButton, Qt::MiddleButton);
    EXPECT_NEAR(200, screenView(database()).center.x, 1e-9);
    EXPECT_NEAR(150, screenView(database()).center.y, 1e-9);
    EXPECT_NEAR(300 * 0.75 * 1.05, screenView(database()).height, 1e-9);
}

TEST_F(ViewTest, TheDrawingIsLeftAsItIs) {
    open(kLine);
    QSignalSpy changes(view.get(), &DrawingView::viewChanged);
    turnWheel({10, 10}, 2);
    drag({100, 100}, {130, 80}, Qt::MiddleButton);
    QTest::keyClick(view.get(), Qt::Key_Left, Qt::ControlModifier);
    EXPECT_GE(changes.count(), 3);
    EXPECT_FALSE(database().isModified());
    EXPECT_EQ(0U, undoSteps());
    const std::wstring copy = path("copy.dxf");
    ASSERT_EQ(Hx::eOk, database().saveAs(copy.c_str()));
    std::ifstream saved(std::string(copy.begin(), copy.end()), std::ios::binary);
    EXPECT_EQ(kLine.text(), std::string(std::istreambuf_iterator<char>(saved), {}));
}

TEST_F(ViewTest, TheViewOfTheDrawingComesBackWhenCommandsChangeIt) {
    view->setDocument(editor().documents().current());
    view->show();
    settle();
    run(L"ZOOM 0,0 40,30");
    const double kept = screenView(database()).height;
    EXPECT_NEAR(30 * 1.05, kept, 1e-9);
    turnWheel({200, 150}, 4);
    EXPECT_LT(screenView(database()).height, kept / 2);
    EXPECT_NEAR(screenView(database()).height, variableValue(*findSystemVariable(L"VIEWSIZE")).real, 1e-9)
        << "commands go by what is seen";
    run(L"ZOOM 0,0 40,30");
    EXPECT_NEAR(kept, screenView(database()).height, 1e-9) << "also to the view that the drawing has already";
    run(L"ZOOM 0,0 80,60");
    turnWheel({200, 150}, 1);
    run(L"U");
    EXPECT_NEAR(kept, screenView(database()).height, 1e-9);
}

TEST_F(ViewTest, EverySpaceHasItsOwnView) {
    open(DrawingText(kLine).add("0 LINE 5 A2 67 1 8 0 10 0 20 0 11 10 21 10"));
    look(7, 8, 90);
    run(L"TILEMODE 0");
    look(1, 2, 30);
    run(L"TILEMODE 1");
    EXPECT_NEAR(90, screenView(database()).height, 1e-9);
    run(L"TILEMODE 0");
    EXPECT_NEAR(30, screenView(database()).height, 1e-9);
}

TEST_F(ViewTest, TheWindowIsTheMeasureOfPicks) {
    open(kLine);
    EXPECT_NEAR(3, pickBoxHalfSize(database()), 1e-9) << "PICKBOX pixels of a unit each";
    view->resize(400, 600);
    settle();
    EXPECT_NEAR(1.5, pickBoxHalfSize(database()), 1e-9);
    EXPECT_NEAR(2.0 / 3, currentView(database()).aspect, 1e-9);
    view.reset();
    EXPECT_NEAR(4.0 / 3, currentView(database()).aspect, 1e-9) << "without a window 800 by 600";
}

TEST_F(ViewTest, PansPaintOnlyWhatComesIn) {
    open(kLine);
    view->grab();
    drag({200, 150}, {150, 130}, Qt::MiddleButton);
    const QImage scrolled = view->grab().toImage();
    view->setDark(true);
    EXPECT_EQ(view->grab().toImage(), scrolled);
}

}  // namespace
}  // namespace korvex::test
