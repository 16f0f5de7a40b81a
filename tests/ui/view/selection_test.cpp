// Selecting while no command runs.
#include "tests/ui/view/view_fixture.h"

namespace korvex::test {
namespace {

/// Three lines side by side, 100 long from y = 100; a block with a line on its left and one far to the right.
const DrawingText kLines =
    DrawingText()
        .layer("FRAME")
        .layer("LOCKED", 4)
        .layer("FAR")
        .block("B", "10 0 20 0",
               "0 LINE 5 C1 8 0 10 0 20 0 11 0 21 20 0 LINE 5 C2 8 FAR 10 60 20 0 11 60 21 20")
        .block("OUTER", "10 0 20 0", "0 INSERT 5 C3 8 0 2 B 10 0 20 0")
        .add("0 LINE 5 A1 8 0 10 100 20 100 11 100 21 200 0 LINE 5 A2 8 FRAME 10 150 20 100 11 150 21 200 "
             "0 LINE 5 A3 8 LOCKED 10 200 20 100 11 200 21 200 0 INSERT 5 B1 8 0 2 OUTER 10 300 20 140");

TEST_F(ViewTest, ClicksAddAndShiftRemoves) {
    open(kLines);
    click(pixel(100, 150));
    click(pixel(200, 150));
    EXPECT_EQ("A1 A3", selected()) << "locked ones too";
    click(pixel(300, 150));
    EXPECT_EQ("A1 A3 B1", selected()) << "of nested ones the outermost";
    click(pixel(100, 150));
    EXPECT_EQ("A1 A3 B1", selected());
    click(pixel(200, 150), Qt::ShiftModifier);
    EXPECT_EQ("A1 B1", selected());
    QTest::keyClick(view.get(), Qt::Key_Escape);
    EXPECT_EQ("", selected());
}

TEST_F(ViewTest, WindowsTakeWhatIsInside) {
    open(kLines);
    drag(pixel(90, 90), pixel(160, 210));
    EXPECT_EQ("A1 A2", selected());
    drag(pixel(190, 90), pixel(390, 210), Qt::LeftButton, Qt::ShiftModifier);
    EXPECT_EQ("A1 A2", selected());
    drag(pixel(190, 90), pixel(330, 210));
    EXPECT_EQ("A1 A2 A3", selected()) << "of the block a part is outside";
    drag(pixel(280, 90), pixel(390, 210));
    EXPECT_EQ("A1 A2 A3 B1", selected());
    drag(pixel(140, 90), pixel(210, 210), Qt::LeftButton, Qt::ShiftModifier);
    EXPECT_EQ("A1 B1", selected());
}

TEST_F(ViewTest, CrossingTakesWhatItTouches) {
    open(kLines);
    drag(pixel(160, 160), pixel(90, 140));
    EXPECT_EQ("A1 A2", selected());
    QTest::keyClick(view.get(), Qt::Key_Escape);
    drag(pixel(350, 155), pixel(310, 145));
    EXPECT_EQ("", selected()) << "within the box of the block, but nothing is there";
    drag(pixel(365, 155), pixel(310, 145));
    EXPECT_EQ("B1", selected());
}

TEST_F(ViewTest, WindowsHeedLayersAlsoInBlocks) {
    open(kLines);
    freeze(L"FRAME");
    drag(pixel(90, 90), pixel(330, 210));
    EXPECT_EQ("A1 A3", selected());
    freeze(L"FAR");
    drag(pixel(280, 90), pixel(330, 210));
    EXPECT_EQ("A1 A3 B1", selected()) << "what is frozen in a block need not be inside";
    QTest::keyClick(view.get(), Qt::Key_Escape);
    drag(pixel(365, 155), pixel(310, 145));
    EXPECT_EQ("", selected()) << "nor is it touched";
    turnOff(L"0");
    drag(pixel(280, 90), pixel(390, 210));
    EXPECT_EQ("", selected()) << "nothing of it can be seen";
}

TEST_F(ViewTest, TwoClicksMakeAWindowThatEscDrops) {
    open(kLines);
    click(pixel(90, 90));
    moveTo(pixel(120, 150));
    click(pixel(160, 210));
    EXPECT_EQ("A1 A2", selected());
    click(pixel(180, 90));
    QTest::keyClick(view.get(), Qt::Key_Escape);
    EXPECT_EQ("A1 A2", selected()) << "first the window";
    click(pixel(220, 210));
    QTest::keyClick(view.get(), Qt::Key_Escape);
    QTest::keyClick(view.get(), Qt::Key_Escape);
    EXPECT_EQ("", selected());
}

TEST_F(ViewTest, AWindowStaysWhereItBeganWhenTheViewMoves) {
    open(kLines);
    click(pixel(90, 90));
    turnWheel({200, 150}, -1);
    const double scale = 300 / screenView(database()).height;
    click(QPoint(200 + static_cast<int>((160 - 200) * scale), 150 - static_cast<int>((210 - 150) * scale)));
    EXPECT_EQ("A1 A2", selected());
}

TEST_F(ViewTest, EraseTakesTheSelectionWithoutAsking) {
    open(kLines);
    drag(pixel(90, 90), pixel(210, 210));
    EXPECT_EQ("A1 A2 A3", selected());
    QTest::keyClick(view.get(), Qt::Key_Delete);
    runSent();
    EXPECT_TRUE(byHandle(0xA1).isErased());
    EXPECT_FALSE(byHandle(0xA3).isErased()) << "on a locked layer";
    EXPECT_EQ("", selected());
    EXPECT_EQ(1U, undoSteps());
    run(L"U");
    EXPECT_FALSE(byHandle(0xA1).isErased());
    EXPECT_EQ("", selected());
}

TEST_F(ViewTest, CommandsDropTheSelectionButThoseThatUseIt) {
    open(kLines);
    const auto select = [&] {
        QTest::keyClick(view.get(), Qt::Key_A, Qt::ControlModifier);
        EXPECT_EQ("A1 A2 A3 B1", selected());
    };
    std::string seen;
    define(
        L"USES", [&] { seen = selected(); }, HXCMD_USEPICKSET);
    define(L"PLAIN", [&] { seen = selected(); });
    select();
    run(L"ZOOM 2");
    run(L"USES");
    EXPECT_EQ("A1 A2 A3 B1", seen);
    run(L"PLAIN");
    EXPECT_EQ("", seen);
    EXPECT_EQ("", selected());
}

TEST_F(ViewTest, ModulesReadSetAndDropTheSelection) {
    open(kLines);
    HxEdPickFirstProcessor* processor = hxedPickFirstProcessor();
    HxArray<HxDbObjectId> objects;
    for (const std::uint64_t handle : {0xA3, 0xA2, 0xC1, 0xA3}) {
        objects.append(byHandle(handle));
    }
    processor->setSelection(objects);
    EXPECT_EQ("A3 A2", selected()) << "what lies in blocks is left out";
    HxArray<HxDbObjectId> read;
    processor->getSelection(read);
    ASSERT_EQ(2, read.length());
    EXPECT_EQ(byHandle(0xA3), read[0]);
    EXPECT_EQ(Hx::eInvalidInput, processor->process(1));
    EXPECT_EQ("A3 A2", selected());
    EXPECT_EQ(Hx::eOk, processor->process(kHxPickFirstDrop));
    EXPECT_EQ("", selected());
}

TEST_F(ViewTest, WhatCanBeSelectedNoMoreLeaves) {
    open(kLines);
    QTest::keyClick(view.get(), Qt::Key_A, Qt::ControlModifier);
    {
        const HxDbObjectPointer<HxDbEntity> line(byHandle(0xA1), HxDb::kForWrite);
        line->erase();
    }
    EXPECT_EQ("A2 A3 B1", selected());
    freeze(L"FRAME");
    EXPECT_EQ("A3 B1", selected());
    freeze(L"FRAME", false);
    EXPECT_EQ("A3 B1", selected()) << "it does not come back";
    database().setTilemode(false);
    EXPECT_EQ("", selected());
    database().setTilemode(true);
    EXPECT_EQ("", selected());
}

TEST_F(ViewTest, SelectedAndHoveredObjectsLookOtherwise) {
    open(kLines);
    moveTo({5, 5});
    const QImage plain = view->grab().toImage();
    click(pixel(100, 150));
    moveTo({5, 5});
    settle();
    const QImage with = view->grab().toImage();
    EXPECT_NE(plain.pixel(pixel(100, 120)), with.pixel(pixel(100, 120)));
    EXPECT_NE(plain.pixel(pixel(102, 200)), with.pixel(pixel(102, 200))) << "a grip at its end";
    QTest::keyClick(view.get(), Qt::Key_Escape);
    settle();
    EXPECT_EQ(plain, view->grab().toImage());
    moveTo(pixel(153, 150));
    QTest::qWait(60);
    EXPECT_NE(plain.pixel(pixel(150, 120)), view->grab().toImage().pixel(pixel(150, 120)));
}

}  // namespace
}  // namespace korvex::test
