// What is dragged: panels to sides of the window, rows onto groups, files onto the window.
#include "sdk/hxdock.h"
#include "tests/display/real_input.h"

#include <QDrag>
#include <QMimeData>
#include <QRubberBand>
#include <QTableView>
#include <QTreeWidget>
#include <QUrl>

namespace korvex::test {
namespace {

class Drag : public DisplayTest {
protected:
    HxUiDockPanel& palette() { return widget<HxUiDockPanel>("KvLayerManagerWnd"); }
    QPoint title() { return palette().titleBarWidget()->mapToGlobal(QPoint(40, 10)); }
    QPoint inWindow(double x, double y) {
        return window->mapToGlobal(
            QPoint(static_cast<int>(window->width() * x), static_cast<int>(window->height() * y)));
    }
    /// Takes the palette by its title and lets it go at a place, where it is to dock, or in the air.
    void carries(double x, double y, int side) {
        user->then([this] { grabAt(title()); });
        user->when(trembling([this] { return palette().isFloating(); }), [this, x, y] {
            moveTo(inWindow(0.5, 0.5));
            moveTo(inWindow(x, y) + QPoint(1, 1));
            moveTo(inWindow(x, y));
        });
        user->when(trembling([this, side, x, y] {
                       const auto* const place = window->findChild<QRubberBand*>();
                       return side == kHxDockNone ? (QCursor::pos() - inWindow(x, y)).manhattanLength() < 8
                                                  : place && place->isVisible();
                   }),
                   [] { letGo(); });
        user->when(
            [this, side] {
                return palette().currentDockPosition() == side &&
                       !(QApplication::mouseButtons() & Qt::LeftButton);
            },
            [] {});
    }
    /// Lets go of something once whoever is under the mouse has answered: it hears of the next move then.
    void overIt(EventCount& moves) {
        auto heard = std::make_shared<int>(0);
        user->when(trembling([&moves] { return moves.count > 0; }),
                   [&moves, heard] { *heard = moves.count; });
        user->when(trembling([&moves, heard] { return moves.count > *heard; }), [] { letGo(); });
    }
};

TEST_F(Drag, PanelsThatAreDroppedAtASideGetTheSizeTheyHadThere) {
    constexpr int kWidth = 340;
    user->enters("LAYERPALETTE");
    user->then([this] { window->resizeDocks({&palette()}, {kWidth}, Qt::Horizontal); });
    user->when([this] { return palette().width() == kWidth; }, [] {});
    carries(0.5, 0.5, kHxDockNone);
    carries(0.99, 0.5, kHxDockRight);
    user->when([this] { return palette().width() == kWidth; }, [] {});
    carries(0.5, 0.5, kHxDockNone);
    carries(0.5, 0.94, kHxDockBottom);
    user->when([this] { return palette().height() > 150; },
               [this] { EXPECT_LE(palette().height(), window->height() / 2); });
    user->work();
}

TEST_F(Drag, RowsAreDroppedOnGroups) {
    EventCount overTarget({QEvent::DragMove});
    const auto tree = [this]() -> QTreeWidget& { return widget<QTreeWidget>("IDC_LAYER_FILTER_TREE"); };
    const auto grid = [this]() -> QTableView& { return widget<QTableView>("IDC_LIST_LAYERS_LIST"); };
    const auto group = [tree] { return tree().findItems("Mine", Qt::MatchExactly | Qt::MatchRecursive); };
    const auto rowOf = [grid](const char* layer) {
        const QAbstractItemModel& model = *grid().model();
        return model.match(model.index(0, 1), Qt::DisplayRole, layer, 1, Qt::MatchExactly).value(0);
    };
    run(L"LAYERPALETTE\nCLICK IDC_BUTTON_NEW_GROUPFILTER\nPRESS focus Ctrl+A\nTYPE focus Mine\n"
        L"PRESS focus Enter\n");
    user->when([group] { return group().size() == 1; },
               [tree] { tree().setCurrentItem(tree().topLevelItem(0)); });
    user->when([rowOf] { return rowOf("NOTES").isValid(); },
               [grid, rowOf] {
                   grid().setCurrentIndex(rowOf("NOTES"));
                   grabAt(grid().viewport()->mapToGlobal(grid().visualRect(rowOf("NOTES")).center()));
               });
    const auto moves = [tree, group] {
        const QPoint target =
            tree().viewport()->mapToGlobal(tree().visualItemRect(group().value(0)).center());
        moveTo(target);
    };
    user->when(trembling(isDragging), moves);
    overIt(overTarget);
    user->when([] { return !isDragging(); }, [tree, group] { tree().setCurrentItem(group()[0]); });
    user->when([grid] { return grid().model()->rowCount() == 1; },
               [grid] { EXPECT_EQ(grid().model()->index(0, 1).data().toString(), "NOTES"); });
    user->work();
}

/// As a file manager: its only file can be dragged out of it.
class FileSource : public QWidget {
public:
    explicit FileSource(const QString& file) : m_file(file) {
        setGeometry(20, 20, 100, 100);
        setWindowFlag(Qt::X11BypassWindowManagerHint);
    }

protected:
    void mousePressEvent(QMouseEvent*) override {}
    void mouseMoveEvent(QMouseEvent*) override {
        if (!m_isDragged) {
            m_isDragged = true;
            auto* const drag = new QDrag(this);
            auto* const data = new QMimeData;
            data->setUrls({QUrl::fromLocalFile(m_file)});
            drag->setMimeData(data);
            drag->exec(Qt::CopyAction);
        }
    }

private:
    QString m_file;
    bool m_isDragged = false;
};

TEST_F(Drag, FilesThatAreDroppedAreOpened) {
    FileSource source(QString::fromStdWString(path("plan.dxf")));
    EventCount over({QEvent::DragEnter, QEvent::DragMove});
    user->then([this, &source] {
        window->move(200, 100);
        source.show();
    });
    user->when([&source] { return source.windowHandle() && source.windowHandle()->isExposed(); },
               [&source] { grabAt(middleOf(source)); });
    user->when(trembling(isDragging), [this] { moveTo(middleOf(window->view())); });
    overIt(over);
    user->when([] { return editor().documents().all().size() == 3; }, [] {});
    user->atCommandPrompt([this] { EXPECT_EQ(documentTabs().count(), 3); });
    user->work();
}

}  // namespace
}  // namespace korvex::test
