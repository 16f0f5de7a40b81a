// A layout with two floating viewports: in and out, coordinates, zooming in one.
#include "tests/ui/view/view_fixture.h"

namespace korvex::test {
namespace {

std::string viewport(const char* handle, int number, const char* place) {
    return "0 VIEWPORT 5 " + std::string(handle) + " 67 1 8 0 " + place + " 68 " + std::to_string(number) +
           " 69 " + std::to_string(number) + " 16 0 26 0 36 1 17 0 27 0 37 0 51 0 90 32800";
}

/// The left one shows model space around (1000,1000) at 1:2, the right one around (0,0) at 1:1, turned.
class ViewportViewTest : public ViewTest {
protected:
    void openSheet() {
        const std::string sheet = viewport("B1", 1, "10 200 20 150 40 400 41 300 12 200 22 150 45 300");
        const std::string left = viewport("B2", 2, "10 100 20 150 40 150 41 200 12 1000 22 1000 45 400");
        std::string right = viewport("B3", 3, "10 300 20 150 40 150 41 200 12 0 22 0 45 200");
        right.replace(right.find("51 0"), 4, "51 90");
        open(DrawingText()
                 .add("0 LINE 5 A1 8 0 10 960 20 1000 11 1040 21 1000 0 LINE 5 A2 67 1 8 0 10 10 20 10 11 "
                      "390 21 10")
                 .add(sheet)
                 .add(left)
                 .add(right));
        run(L"TILEMODE 0");
        settle();
        look(200, 150, 300);
    }
    void doubleClick(const QPoint& at) {
        click(at);
        send(QEvent::MouseButtonDblClick, at, Qt::LeftButton, Qt::LeftButton);
        send(QEvent::MouseButtonRelease, at, Qt::LeftButton, Qt::NoButton);
        runSent();
        settle();
    }
};

TEST_F(ViewportViewTest, DoubleClicksEnterAndLeave) {
    openSheet();
    const QImage outside = view->grab().toImage();
    doubleClick(pixel(310, 150));
    EXPECT_EQ(3, database().cvport());
    EXPECT_NE(outside, view->grab().toImage()) << "its frame is bold";
    click(pixel(90, 150));
    EXPECT_EQ(2, database().cvport()) << "a click goes over to another one";
    doubleClick(pixel(200, 150));
    EXPECT_EQ(1, database().cvport());
    doubleClick(pixel(200, 30));
    EXPECT_EQ(1, database().cvport());
    EXPECT_EQ("", selected());
    EXPECT_EQ(0U, failures.size());
}

TEST_F(ViewportViewTest, CoordinatesAreThoseOfTheSpace) {
    openSheet();
    EXPECT_NEAR(110, pointAt(pixel(110, 160)).x, 1e-9) << "paper";
    run(L"MSPACE");
    settle();
    HxGePoint3d point = pointAt(pixel(110, 160));
    EXPECT_NEAR(1020, point.x, 1e-9);
    EXPECT_NEAR(1020, point.y, 1e-9);
    run(L"CVPORT 3");
    settle();
    point = pointAt(pixel(310, 170));
    EXPECT_NEAR(20, point.x, 1e-9) << "the view is turned by 90 degrees";
    EXPECT_NEAR(-10, point.y, 1e-9);
    int given = 0;
    QObject::connect(view.get(), &DrawingView::pointGiven, [&] { ++given; });
    view->setAsking(DrawingView::Asking::point);
    click(pixel(310, 170));
    EXPECT_EQ(1, given);
    click(pixel(200, 30));
    EXPECT_EQ(1, given) << "beside the viewport there is no point of model space";
}

TEST_F(ViewportViewTest, SelectsInTheViewport) {
    openSheet();
    drag(pixel(120, 160), pixel(80, 140));
    EXPECT_EQ("", selected()) << "paper takes what is on paper";
    run(L"MSPACE");
    settle();
    drag(pixel(70, 140), pixel(130, 160));
    EXPECT_EQ("A1", selected());
    run(L"PSPACE");
    EXPECT_EQ("", selected());
}

TEST_F(ViewportViewTest, ZoomsItsOwnViewAsOneStep) {
    openSheet();
    const std::size_t steps = undoSteps();
    turnWheel(pixel(110, 160), 1);
    EXPECT_EQ(steps, undoSteps()) << "from the paper the window zooms";
    look(200, 150, 300);
    run(L"MSPACE");
    settle();
    const HxGePoint3d before = pointAt(pixel(110, 160));
    for (int i = 0; i < 4; ++i) {
        turnWheel(pixel(110, 160), 1);
    }
    EXPECT_NEAR(before.x, pointAt(pixel(110, 160)).x, 1e-6);
    EXPECT_NEAR(before.y, pointAt(pixel(110, 160)).y, 1e-6);
    EXPECT_NEAR(400 / std::pow(1.25, 4), currentView(database()).height, 1e-9);
    EXPECT_NEAR(300, screenView(database()).height, 1e-9);
    EXPECT_EQ(steps + 1, undoSteps());
    drag(pixel(110, 160), pixel(90, 150), Qt::MiddleButton);
    EXPECT_EQ(steps + 2, undoSteps());
    EXPECT_NEAR(before.x, pointAt(pixel(90, 150)).x, 1e-6);
    run(L"U");
    EXPECT_NEAR(before.x, pointAt(pixel(110, 160)).x, 1e-6);
    run(L"U");
    EXPECT_NEAR(400, currentView(database()).height, 1e-9);
    EXPECT_EQ(steps, undoSteps());
}

TEST_F(ViewportViewTest, AnotherChangeEndsTheStep) {
    openSheet();
    run(L"MSPACE");
    const std::size_t steps = undoSteps();
    turnWheel(pixel(110, 160), 1);
    run(L"LINE 0,0 1,1  ");
    turnWheel(pixel(110, 160), 1);
    EXPECT_EQ(steps + 3, undoSteps());
    run(L"U U");
    EXPECT_NEAR(320, currentView(database()).height, 1e-9);
}

TEST_F(ViewportViewTest, ALockedViewStaysAndTheWindowMoves) {
    openSheet();
    run(L"MSPACE");
    {
        zds_name name = {0, 0};
        ASSERT_EQ(Hx::eOk, hxdbGetZdsName(name, byHandle(0xB2)));
        resbuf* groups = hxdbEntGet(name);
        for (resbuf* group = groups; group; group = group->rbnext) {
            if (group->restype == 90) {
                group->resval.rlong |= 0x4000;
            }
        }
        ASSERT_EQ(RTNORM, hxdbEntMod(groups));
        hxutRelRb(groups);
    }
    turnWheel(pixel(110, 160), 1);
    EXPECT_NEAR(400, currentView(database()).height, 1e-9);
    EXPECT_NEAR(240, screenView(database()).height, 1e-9);
}

}  // namespace
}  // namespace korvex::test
