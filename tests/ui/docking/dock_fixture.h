// A frame with a drawing in its middle, and panels as modules make them.
#pragma once

#include "sdk/hxdock.h"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>
#include <memory>

namespace korvex::test {

/// Places its content by hand, as palettes do.
class EditPanel : public HxUiDockPanel {
public:
    explicit EditPanel(HxUiDockFrameWindow* frame, const char* name = "panel") : HxUiDockPanel(frame) {
        setObjectName(name);
        setCaption(QString(name).toStdWString().c_str());
        setMinimumWidth(100);
        content = new QLineEdit(this);
        setGeometry(0, 0, 300, 250);
    }
    void setVisible(bool visible) override {
        if (content) {
            shown.push_back(visible);
        }
        HxUiDockPanel::setVisible(visible);
    }
    QToolButton* button(const char* name) { return titleBarWidget()->findChild<QToolButton*>(name); }

    QLineEdit* content = nullptr;
    std::vector<bool> shown;  ///< what setVisible was told

protected:
    void resizeEvent(QResizeEvent* event) override {
        if (content) {
            content->setGeometry(2, titleHeight() + 2, width() - 4, height() - titleHeight() - 6);
        }
        HxUiDockPanel::resizeEvent(event);
    }
};

class DockTest : public ::testing::Test {
protected:
    DockTest() { start(); }

    void start() {
        frame = std::make_unique<HxUiDockFrameWindow>();
        drawing = new QPlainTextEdit;
        frame->setCentralWidget(drawing);
        frame->setGeometry(20, 30, 760, 600);
        frame->show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(frame.get()));
    }
    EditPanel* shownPanel(const char* name = "panel", int side = kHxDockLeft) {
        auto* panel = new EditPanel(frame.get(), name);
        EXPECT_TRUE(frame->dockPanel(panel, nullptr, side, kHxDockWhole));
        panel->show();
        QTest::qWait(1);
        return panel;
    }

    std::unique_ptr<HxUiDockFrameWindow> frame;
    QPlainTextEdit* drawing = nullptr;
};

}  // namespace korvex::test
