// Picks and points by mouse, in model space and through a viewport of a layout; undo from the menu's keys.
#include "host/editor/view.h"
#include "host/ui/view/screen_map.h"
#include "tests/ui/workbench/workbench_fixture.h"

#include <QTableView>

namespace korvex::test {
namespace {

class PickingTest : public DrawingWorkbenchTest {
protected:
    QPoint pixel(double x, double y) {
        const ScreenMap map(screenView(database()), window->view().size());
        return map.toPixel({x, y}).toPoint();
    }
    void look(double x, double y, double height) {
        View view = screenView(database());
        view.center = {x, y, 0};
        view.height = height;
        setScreenView(database(), view);
        window->view().update();
    }
    void click(double x, double y) {
        QTest::mouseMove(&window->view(), pixel(x, y));
        QTest::mouseClick(&window->view(), Qt::LeftButton, Qt::NoModifier, pixel(x, y));
    }
};

TEST_F(PickingTest, ThePaletteShowsWhatWasFrozenWhileTheCommandGoesOn) {
    const auto frozenCell = [this] {
        const QAbstractItemModel& model = *widget<QTableView>("IDC_LIST_LAYERS_LIST").model();
        const QModelIndexList found = model.match(model.index(0, 1), Qt::DisplayRole, "NOTES");
        return found.value(0).siblingAtColumn(3).data(Qt::AccessibleTextRole).toString();
    };
    user->enters("LAYERPALETTE");
    user->then([this, frozenCell] {
        look(5, 0, 40);
        EXPECT_EQ(frozenCell(), "Thawed");
    });
    user->enters("LAYFRZ");
    user->then([this] { click(5, 2); });
    user->when([frozenCell] { return frozenCell() == "Frozen"; },
               [this] { EXPECT_TRUE(window->dialogue().isAsking()); });
    user->presses(Qt::Key_Escape);
    user->work();
}

TEST_F(PickingTest, FreezesLayersOfNestedObjectsByMouse) {
    user->then([this] { look(105, 0, 40); });
    user->enters("LAYFRZ");
    user->enters("S");
    user->enters("B");
    user->enters("Entity");
    user->then([this] { click(103, 0); });
    user->then([this] {
        EXPECT_EQ(frozen(), Names{L"INNER"});
        QTest::keyClick(&edit(), Qt::Key_Z, Qt::ControlModifier);  // LAYFRZ has an Undo of its own
    });
    user->then([this] {
        EXPECT_TRUE(frozen().empty());
        EXPECT_TRUE(window->dialogue().isAsking());
        look(5, 0, 40);
    });
    user->then([this] { click(5, 2); });
    user->then([this] { click(5, -15); });  // hits nothing, and LAYFRZ asks again
    user->then([this] {
        QContextMenuEvent event(QContextMenuEvent::Mouse, pixel(5, -15));
        QCoreApplication::sendEvent(&window->view(), &event);
    });
    user->atCommandPrompt([this] {
        EXPECT_EQ(frozen(), Names{L"NOTES"});
        QTest::keyClick(&edit(), Qt::Key_Z, Qt::ControlModifier);
    });
    user->atCommandPrompt([this] {
        EXPECT_TRUE(frozen().empty());
        QTest::keyClick(&edit(), Qt::Key_Y, Qt::ControlModifier);
    });
    user->atCommandPrompt([this] { EXPECT_EQ(frozen(), Names{L"NOTES"}); });
    user->work();
    EXPECT_EQ(failures, Lines());
}

TEST_F(PickingTest, FreezesThroughAViewport) {
    user->then([this] { clickTab(layoutTabs(), 1); });
    user->when([this] { return !database().tilemode() && window->dialogue().request(); },
               [this] { look(100, 100, 120); });
    user->atCommandPrompt([this] {
        EXPECT_EQ(widget<QToolButton>("StatusSpace").text(), "PAPER");
        QTest::mouseClick(&widget("StatusSpace"), Qt::LeftButton);
    });
    user->atCommandPrompt([this] { EXPECT_EQ(widget<QToolButton>("StatusSpace").text(), "MODEL"); });
    user->enters("LAYFRZ");
    user->then([this] { click(97, 100); });  // 2,0 of model space
    user->presses(Qt::Key_Escape);
    user->work();
    EXPECT_EQ(frozenHere(), Names{L"WALLS"});
    EXPECT_TRUE(frozen().empty());
}

TEST_F(PickingTest, PointsAreClickedAndCoordinatesShown) {
    user->then([this] { look(0, 0, 40); });
    user->enters("LINE");
    user->then([this] { click(1, 1); });
    user->then([this] {
        EXPECT_EQ(window->view().asking(), DrawingView::Asking::point);
        click(11, 1);
        const QStringList shown = widget<QLabel>("StatusCoordinates").text().split(", ");
        EXPECT_NEAR(shown.value(0).toDouble(), 11, 0.1);
        EXPECT_NEAR(shown.value(1).toDouble(), 1, 0.1);
    });
    user->presses(Qt::Key_Return);
    user->atCommandPrompt([this] {
        EXPECT_EQ(window->view().asking(), DrawingView::Asking::selection);
        EXPECT_TRUE(window->isWindowModified());
        QTest::keyClick(&edit(), Qt::Key_Z, Qt::ControlModifier);
    });
    user->atCommandPrompt([this] { EXPECT_FALSE(window->isWindowModified()); });
    user->work();
}

TEST_F(PickingTest, ErasesWhatIsSelected) {
    const int before = entities();
    user->then([this] {
        look(5, 4, 40);
        click(5, 2);
        QTest::keyClick(&edit(), Qt::Key_Delete);
    });
    user->atCommandPrompt([this, before] {
        EXPECT_EQ(entities(), before - 1);
        QTest::keyClick(&edit(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(&edit(), Qt::Key_Delete);
    });
    user->atCommandPrompt([this] { EXPECT_EQ(entities(), 0); });
    user->work();
}

}  // namespace
}  // namespace korvex::test
