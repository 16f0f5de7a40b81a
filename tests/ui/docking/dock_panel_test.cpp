// Docking, floating, closing and finding panels again, with the events that a user causes.
#include "tests/ui/docking/dock_fixture.h"

#include <QApplication>
#include <QScreen>
#include <QTabBar>

namespace korvex::test {
namespace {

TEST_F(DockTest, APanelTakesEachSideWithItsOwnSize) {
    EditPanel* panel = shownPanel();
    EXPECT_EQ(panel->currentDockPosition(), kHxDockLeft);
    EXPECT_EQ(panel->width(), 300);
    EXPECT_EQ(panel->geometry().left(), 0);
    EXPECT_GE(panel->height(), frame->height() - 2);

    panel->setCurrentDockPosition(kHxDockRight);
    QTest::qWait(1);
    EXPECT_EQ(panel->currentDockPosition(), kHxDockRight);
    EXPECT_EQ(panel->geometry().right(), frame->width() - 1);
    EXPECT_EQ(panel->width(), 300);

    panel->setCurrentDockPosition(77);
    EXPECT_EQ(panel->currentDockPosition(), kHxDockRight);
    panel->setCurrentDockPosition(kHxDockBottom);
    QTest::qWait(1);
    EXPECT_EQ(panel->currentDockPosition(), kHxDockBottom);
    EXPECT_EQ(panel->geometry().bottom(), frame->height() - 1);
    EXPECT_EQ(panel->width(), frame->width());
    panel->setCurrentDockPosition(kHxDockTop);
    EXPECT_EQ(panel->currentDockPosition(), kHxDockTop);
    panel->setCurrentDockPosition(kHxDockNone);
    EXPECT_TRUE(panel->isFloating());
    EXPECT_EQ(panel->currentDockPosition(), kHxDockNone);
}

TEST_F(DockTest, WholeTakesTheSideBesideAllOthers) {
    EditPanel* upper = shownPanel("upper", kHxDockRight);
    auto* lower = new EditPanel(frame.get(), "lower");
    frame->addDockWidget(Qt::RightDockWidgetArea, lower, Qt::Vertical);
    lower->show();
    EditPanel* below = shownPanel("below", kHxDockBottom);
    EditPanel* whole = shownPanel("whole", kHxDockRight);
    EXPECT_GE(whole->height(), frame->height() - 2);
    EXPECT_EQ(whole->width(), 300);
    EXPECT_LT(upper->height() + lower->height(), whole->height());
    EXPECT_FALSE(whole->geometry().intersects(upper->geometry()));
    EXPECT_FALSE(whole->geometry().intersects(lower->geometry()));
    EXPECT_FALSE(whole->geometry().intersects(below->geometry()));
}

TEST_F(DockTest, TabbedPanelsShareAPlace) {
    EditPanel* first = shownPanel("first");
    auto* second = new EditPanel(frame.get(), "second");
    ASSERT_TRUE(frame->dockPanel(second, first, kHxDockLeft, kHxDockTabbed));
    second->show();
    auto* third = new EditPanel(frame.get(), "third");
    ASSERT_TRUE(frame->dockPanel(third, nullptr, kHxDockLeft, kHxDockTabbed));
    third->show();
    QTest::qWait(1);
    EXPECT_EQ(frame->tabifiedDockWidgets(first).size(), 2);
    EXPECT_EQ(second->currentDockPosition(), kHxDockLeft);
    const auto* tabs = frame->findChild<QTabBar*>();
    ASSERT_TRUE(tabs);
    EXPECT_EQ(tabs->tabText(1), "second") << "the caption stands in for a window title";
}

TEST_F(DockTest, WhatIsNoPlaceChangesNothing) {
    EditPanel* panel = shownPanel();
    HxUiDockFrameWindow other;
    EditPanel foreign(&other);
    EXPECT_FALSE(frame->dockPanel(nullptr, nullptr, kHxDockLeft, kHxDockWhole));
    EXPECT_FALSE(frame->dockPanel(&foreign, nullptr, kHxDockLeft, kHxDockWhole));
    EXPECT_FALSE(frame->dockPanel(panel, &foreign, kHxDockRight, kHxDockTabbed));
    EXPECT_FALSE(frame->dockPanel(panel, nullptr, kHxDockNone, kHxDockWhole));
    EXPECT_FALSE(frame->dockPanel(panel, nullptr, kHxDockRight, 3));
    EXPECT_EQ(panel->currentDockPosition(), kHxDockLeft);
    EXPECT_TRUE(panel->isVisible());
}

TEST_F(DockTest, AHiddenPanelStaysHiddenAndNobodyIsToldOtherwise) {
    auto* panel = new EditPanel(frame.get());
    panel->shown.clear();
    ASSERT_TRUE(frame->dockPanel(panel, nullptr, kHxDockLeft, kHxDockWhole));
    QTest::qWait(1);
    EXPECT_FALSE(panel->isVisible());
    EXPECT_TRUE(panel->shown.empty());
    EXPECT_EQ(panel->currentDockPosition(), kHxDockLeft);
    panel->floatAt(100, 100);
    EXPECT_FALSE(panel->isVisible());
}

TEST_F(DockTest, HidingAndShowingKeepsTheSize) {
    EditPanel* panel = shownPanel();
    frame->resizeDocks({panel}, {222}, Qt::Horizontal);
    QTest::qWait(1);
    ASSERT_EQ(panel->width(), 222);
    panel->hide();
    frame->RecalcLayout();
    EXPECT_EQ(drawing->width(), frame->width());
    panel->show();
    frame->RecalcLayout();
    EXPECT_EQ(panel->width(), 222);

    frame->resizeDocks({panel}, {10}, Qt::Horizontal);
    QTest::qWait(1);
    EXPECT_EQ(panel->width(), 100) << "the least width";
}

TEST_F(DockTest, ContentKeepsItsPlaceBelowTheTitle) {
    EditPanel* panel = shownPanel();
    const auto expectPlaced = [panel] {
        QTest::qWait(1);
        EXPECT_EQ(panel->content->geometry(), QRect(2, panel->titleHeight() + 2, panel->width() - 4,
                                                    panel->height() - panel->titleHeight() - 6));
        EXPECT_LE(panel->titleBarWidget()->geometry().bottom(), panel->content->y());
    };
    expectPlaced();
    panel->setFloating(true);
    expectPlaced();
    panel->resize(411, 333);
    expectPlaced();
    panel->setFloating(false);
    expectPlaced();
}

TEST_F(DockTest, FloatsWhereItIsTold) {
    EditPanel* panel = shownPanel();
    panel->floatAt(150, 170);
    EXPECT_EQ(panel->geometry().topLeft(), QPoint(150, 170));
    EXPECT_TRUE(QTest::qWaitForWindowExposed(panel));
    EXPECT_TRUE(QTest::qWaitFor([panel] { return panel->geometry().topLeft() == QPoint(150, 170); }, 2000));
    EXPECT_TRUE(panel->isVisible());
    panel->setCurrentDockPosition(kHxDockRight);
    EXPECT_FALSE(panel->isFloating());
    panel->floatAt(60, 70);
    EXPECT_EQ(panel->geometry().topLeft(), QPoint(60, 70));
}

TEST_F(DockTest, TheTitleStaysWithinReach) {
    EditPanel* panel = shownPanel();
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    const QPoint places[] = {{-5000, -5000}, {5000, 5000}, {-290, 100}, {100, screen.bottom() + 40}};
    for (const QPoint& place : places) {
        panel->floatAt(place.x(), place.y());
        const QRect title(panel->pos(), QSize(panel->width(), panel->titleHeight()));
        EXPECT_GE((title & screen).width(), 60) << place.x() << ", " << place.y();
        EXPECT_GE((title & screen).height(), panel->titleHeight()) << place.x() << ", " << place.y();
    }
}

TEST_F(DockTest, DoubleClickAndButtonFloatAndDock) {
    EditPanel* panel = shownPanel();
    const QPoint caption(20, 10);
    QTest::mouseDClick(panel->titleBarWidget(), Qt::LeftButton, {}, caption);
    EXPECT_TRUE(panel->isFloating());
    EXPECT_EQ(panel->button("dockPanelFloat")->accessibleName(), "Dock the panel");
    QTest::mouseDClick(panel->titleBarWidget(), Qt::LeftButton, {}, caption);
    EXPECT_FALSE(panel->isFloating());
    EXPECT_EQ(panel->currentDockPosition(), kHxDockLeft);
    QTest::mouseClick(panel->button("dockPanelFloat"), Qt::LeftButton);
    EXPECT_TRUE(panel->isFloating());
    QTest::mouseClick(panel->button("dockPanelFloat"), Qt::LeftButton);
    EXPECT_FALSE(panel->isFloating());

    panel->setDockingStyle(kHxDockOnly);
    EXPECT_FALSE(panel->button("dockPanelFloat")->isVisible());
    QTest::mouseDClick(panel->titleBarWidget(), Qt::LeftButton, {}, caption);
    EXPECT_FALSE(panel->isFloating());
    panel->setDockingStyle(9);
    EXPECT_EQ(panel->dockingStyle(), kHxDockOnly);
}

TEST_F(DockTest, ClosingHidesAndSignalsOnce) {
    EditPanel* panel = shownPanel();
    QSignalSpy closed(panel, &HxUiDockPanel::closedByUser);
    bool wasVisible = true;
    QObject::connect(panel, &HxUiDockPanel::closedByUser, [&] { wasVisible = panel->isVisible(); });
    panel->hide();
    panel->show();
    EXPECT_EQ(closed.count(), 0) << "a program hid it";
    panel->shown.clear();
    QTest::mouseClick(panel->button("dockPanelClose"), Qt::LeftButton);
    EXPECT_EQ(closed.count(), 1);
    EXPECT_FALSE(wasVisible);
    EXPECT_EQ(panel->shown, std::vector<bool>{false});
    panel->show();
    panel->hide();
    EXPECT_EQ(closed.count(), 1);

    panel->show();
    panel->setFloating(true);
    QTest::mouseClick(panel->button("dockPanelClose"), Qt::LeftButton);
    EXPECT_EQ(closed.count(), 2);
}

bool getsFocus(const QWidget* widget) {
    return QTest::qWaitFor([widget] { return widget->hasFocus(); }, 2000);
}

TEST_F(DockTest, F6GoesAroundAndCtrlF4Closes) {
    EditPanel* left = shownPanel("left");
    EditPanel* right = shownPanel("right", kHxDockRight);
    right->setFloating(true);
    frame->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(frame.get()));
    drawing->setFocus();
    ASSERT_TRUE(drawing->hasFocus());
    QTest::keyClick(drawing, Qt::Key_F6);
    EXPECT_TRUE(left->content->hasFocus());
    QTest::keyClick(left->content, Qt::Key_F6);
    EXPECT_TRUE(getsFocus(right->content));
    QTest::keyClick(right->content, Qt::Key_F6, Qt::ShiftModifier);
    EXPECT_TRUE(getsFocus(left->content));

    QTest::keyClick(left->content, Qt::Key_F4, Qt::ControlModifier);
    EXPECT_FALSE(left->isVisible());
    EXPECT_TRUE(right->isVisible());
    EXPECT_TRUE(drawing->hasFocus());
    QTest::keyClick(drawing, Qt::Key_F4, Qt::ControlModifier);
    EXPECT_TRUE(frame->isVisible());
    QTest::keyClick(drawing, Qt::Key_F6);
    ASSERT_TRUE(getsFocus(right->content));
    QTest::keyClick(right->content, Qt::Key_Escape);
    EXPECT_TRUE(right->isVisible());
    EXPECT_TRUE(getsFocus(drawing));
}

TEST_F(DockTest, PanelsGoWithTheirMaker) {
    EditPanel* first = shownPanel("first");
    auto* second = new EditPanel(frame.get(), "second");
    frame->dockPanel(second, first, kHxDockLeft, kHxDockTabbed);
    second->show();
    EditPanel* floating = shownPanel("floating", kHxDockTop);
    floating->floatAt(10, 10);
    floating->content->setFocus();
    QTest::qWait(1);
    delete second;
    delete floating;
    frame->RecalcLayout();
    frame->focusNextPanel();
    QTest::qWait(1);
    EXPECT_TRUE(frame->findChildren<HxUiDockPanel*>() == QList<HxUiDockPanel*>{first});
    EXPECT_TRUE(first->isVisible());

    auto outliving = std::make_unique<EditPanel>(frame.get(), "outliving");
    frame->dockPanel(outliving.get(), nullptr, kHxDockRight, kHxDockWhole);
    outliving->setParent(nullptr);
    frame.reset();
    EXPECT_EQ(outliving->currentDockPosition(), kHxDockNone);
    outliving->setCurrentDockPosition(kHxDockLeft);
}

TEST_F(DockTest, TheNextRunFindsPanelsWhereTheyWere) {
    EditPanel* docked = shownPanel("docked", kHxDockRight);
    frame->resizeDocks({docked}, {210}, Qt::Horizontal);
    EditPanel* floating = shownPanel("floating");
    floating->floatAt(123, 145);
    floating->resize(321, 234);
    shownPanel("hidden", kHxDockBottom)->hide();
    const QRect place(123, 145, 321, 234);
    const auto isPlaced = [&] { return floating->geometry() == place && docked->width() == 210; };
    EXPECT_TRUE(QTest::qWaitForWindowExposed(floating));
    EXPECT_TRUE(QTest::qWaitFor(isPlaced, 2000));
    const QByteArray state = frame->saveState();

    start();
    docked = shownPanel("docked");
    floating = shownPanel("floating");
    EditPanel* hidden = shownPanel("hidden");
    ASSERT_TRUE(frame->restoreState(state));
    EXPECT_TRUE(QTest::qWaitFor(isPlaced, 2000));
    EXPECT_EQ(docked->currentDockPosition(), kHxDockRight);
    EXPECT_TRUE(floating->isFloating());
    EXPECT_FALSE(hidden->isVisible());
    EXPECT_EQ(hidden->currentDockPosition(), kHxDockBottom);
}

}  // namespace
}  // namespace korvex::test
