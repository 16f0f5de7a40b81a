// Following the document, asking, keys.
#include "tests/ui/view/view_fixture.h"

#include "host/editor/editor_notices.h"

#include <QContextMenuEvent>
#include <QKeyEvent>

namespace korvex::test {
namespace {

const DrawingText kLine = DrawingText().add("0 LINE 5 A1 8 0 10 50 20 150 11 350 21 150");

TEST_F(ViewTest, RepaintsOnceAfterChanges) {
    open(kLine);
    view->grab();
    const QImage before = view->grab().toImage();
    const int paints = view->paintCount();
    run(L"LINE 50,50 350,50  LINE 50,60 350,60  CIRCLE 200,200 30");
    EXPECT_EQ(paints, view->paintCount()) << "not while commands run";
    settle();
    EXPECT_EQ(paints + 1, view->paintCount());
    const QImage drawn = view->grab().toImage();
    EXPECT_NE(before.pixel(pixel(200, 50)), drawn.pixel(pixel(200, 50)));
    run(L"U U U");
    settle();
    EXPECT_EQ(before, view->grab().toImage());
    turnOff(L"0");
    settle();
    EXPECT_NE(before.pixel(pixel(200, 150)), view->grab().toImage().pixel(pixel(200, 150)));
}

TEST_F(ViewTest, LetsAClosedDocumentGo) {
    open(kLine);
    click(pixel(200, 150));
    EXPECT_EQ("A1", selected());
    hxDocManager()->closeDocument(view->document());
    EXPECT_EQ(nullptr, view->document());
    settle();
    view->grab();
    turnWheel({10, 10}, 1);
    click({10, 10});
    QTest::keyClick(view.get(), Qt::Key_Escape);
}

TEST_F(ViewTest, ClicksAnswerWhatIsAsked) {
    open(kLine);
    std::vector<HxGePoint3d> points;
    QObject::connect(view.get(), &DrawingView::pointGiven,
                     [&](const HxGePoint3d& p) { points.push_back(p); });
    view->setAsking(DrawingView::Asking::point, HxGePoint3d(10, 10));
    click(pixel(30, 40));
    view->setAsking(DrawingView::Asking::entity);
    click(pixel(200, 150));
    view->setAsking(DrawingView::Asking::nothing);
    click(pixel(200, 150));
    view->setAsking(DrawingView::Asking::selection);
    click(pixel(200, 150));
    ASSERT_EQ(2U, points.size());
    EXPECT_NEAR(30, points[0].x, 1e-9);
    EXPECT_NEAR(40, points[0].y, 1e-9);
    EXPECT_NEAR(150, points[1].y, 1e-9);
    EXPECT_EQ("A1", selected());
}

TEST_F(ViewTest, RightClicksAreEnterWhileSomethingIsAsked) {
    open(kLine);
    QSignalSpy entered(view.get(), &DrawingView::enterPressed);
    QSignalSpy menu(view.get(), &QWidget::customContextMenuRequested);
    const auto rightClick = [&] {
        QContextMenuEvent event(QContextMenuEvent::Mouse, {5, 5}, view->mapToGlobal({5, 5}));
        QApplication::sendEvent(view.get(), &event);
    };
    rightClick();
    view->setAsking(DrawingView::Asking::point);
    rightClick();
    EXPECT_EQ(1, entered.count());
    EXPECT_EQ(1, menu.count());
}

TEST_F(ViewTest, KeysThatAreNotItsOwnAreForwarded) {
    open(kLine);
    QString typed;
    QObject::connect(view.get(), &DrawingView::keyTyped, [&](QKeyEvent* event) { typed += event->text(); });
    QSignalSpy cancelled(view.get(), &DrawingView::cancelPressed);
    QTest::keyClicks(view.get(), "la 7");
    QTest::keyClick(view.get(), Qt::Key_Plus, Qt::ControlModifier);
    QTest::keyClick(view.get(), Qt::Key_Escape);
    EXPECT_EQ("la 7", typed);
    EXPECT_EQ(1, cancelled.count());
    view->setAsking(DrawingView::Asking::point);
    QTest::keyClick(view.get(), Qt::Key_Escape);
    EXPECT_EQ(2, cancelled.count());
}

TEST_F(ViewTest, LightsUpWhatCommandsAndModulesAskFor) {
    open(kLine);
    moveTo({5, 5});
    const QImage plain = view->grab().toImage();
    const auto look = [&] { return view->grab().toImage().pixel(pixel(200, 150)); };
    view->setHighlighted({byHandle(0xA1)});
    EXPECT_NE(plain.pixel(pixel(200, 150)), look());
    view->setHighlighted({});
    EXPECT_EQ(plain.pixel(pixel(200, 150)), look());
    zds_name name = {0, 0};
    ASSERT_EQ(Hx::eOk, hxdbGetZdsName(name, byHandle(0xA1)));
    hxedRedraw(name, kHxRedrawHighlight);
    EXPECT_NE(plain.pixel(pixel(200, 150)), look());
    hxedRedraw(nullptr, kHxRedraw);
    EXPECT_NE(plain.pixel(pixel(200, 150)), look()) << "redrawing alone unlights nothing";
    hxedRedraw(name, kHxRedrawUnhighlight);
    EXPECT_EQ(plain.pixel(pixel(200, 150)), look());
}

TEST_F(ViewTest, ScreensAreToldUntilTheyAreRemoved) {
    int told = 0;
    int first = 0;
    ScreenHooks hooks;
    hooks.redrawAll = [&](int) {
        ++told;
        removeScreenHooks(first);
    };
    first = addScreenHooks(hooks);
    hooks.redrawAll = [&](int) { ++told; };
    const int second = addScreenHooks(hooks);
    hxedRedraw(nullptr, kHxRedraw);
    hxedRedraw(nullptr, kHxRedraw);
    EXPECT_EQ(3, told);
    removeScreenHooks(second);
    hxedRedraw(nullptr, kHxRedraw);
    EXPECT_EQ(3, told);
}

}  // namespace
}  // namespace korvex::test
