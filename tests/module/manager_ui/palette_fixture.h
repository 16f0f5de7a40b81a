// The layer palette of the built module in a main window.
#pragma once

#include "tests/module/module_fixture.h"

#include "host/ui/workbench/main_window.h"
#include "sdk/hxdock.h"
#include "sdk/hxui.h"

#include <QFile>
#include <QHeaderView>
#include <QTableView>
#include <QTest>

namespace korvex::test {

/// What one row of the grid shows: the texts of its cells, icons by their meaning.
using Row = QStringList;
using Rows = std::vector<Row>;

class PaletteTest : public DrawingTest {
protected:
    void SetUp() override {
        setMainWindowMaker([] {
            auto* const frame = new HxUiDockFrameWindow;
            frame->resize(1200, 700);
            frame->show();
            return frame;
        });
        DrawingTest::SetUp();
        QApplication::setActiveWindow(&frame());
    }
    void TearDown() override {
        DrawingTest::TearDown();
        delete existingMainWindow();
        setMainWindowMaker(nullptr);
    }

    void showPalette() {
        run(L"LAYERPALETTE\n");
        ASSERT_TRUE(grid());
        idle();
    }
    HxUiDockFrameWindow& frame() { return *qobject_cast<HxUiDockFrameWindow*>(hxuiMainWindow()); }
    HxUiDockPanel* panel() { return frame().findChild<HxUiDockPanel*>("KvLayerManagerWnd"); }
    QTableView* grid() { return frame().findChild<QTableView*>("IDC_LIST_LAYERS_LIST"); }
    /// The host has nothing to do.
    void idle() {
        QCoreApplication::processEvents();
        frame().notifyIdle();
        QCoreApplication::processEvents();
    }

    void clickHeader(int column) {
        QHeaderView& header = *grid()->horizontalHeader();
        QTest::mouseClick(header.viewport(), Qt::LeftButton, Qt::NoModifier,
                          QPoint(header.sectionViewportPosition(column) + 8, header.height() / 2));
    }

    /// What a save of the drawing writes, but for the time of saving.
    QByteArray bytes() {
        run(L"SAVEAS " + path("now.dxf") + L"\n");
        QFile file(QString::fromStdWString(path("now.dxf")));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        QByteArray text = file.readAll();
        for (const char* const name : {"$TDUPDATE", "$TDUUPDATE", "$TDINDWG", "$TDUSRTIMER"}) {
            const int at = text.indexOf(name);
            if (at < 0) continue;
            const int value = text.indexOf('\n', text.indexOf('\n', at) + 1) + 1;
            text.remove(value, text.indexOf('\n', value) - value);
        }
        return text;
    }

    Row rowAt(int row) {
        const QAbstractItemModel& model = *grid()->model();
        Row cells;
        for (int column = 0; column < model.columnCount(); ++column) {
            const QModelIndex at = model.index(row, column);
            const QVariant text = at.data(Qt::DisplayRole);
            cells << (text.isValid() ? text : at.data(Qt::AccessibleTextRole)).toString();
        }
        return cells;
    }
    Rows rows() {
        Rows all;
        for (int row = 0; row < grid()->model()->rowCount(); ++row) {
            all.push_back(rowAt(row));
        }
        return all;
    }
    QStringList names() {
        QStringList all;
        for (int row = 0; row < grid()->model()->rowCount(); ++row) {
            all << grid()->model()->index(row, 1).data().toString();
        }
        return all;
    }
    /// The row of a layer; empty when it has none.
    Row row(const QString& name) {
        const int at = names().indexOf(name);
        return at < 0 ? Row() : rowAt(at);
    }
};

}  // namespace korvex::test
