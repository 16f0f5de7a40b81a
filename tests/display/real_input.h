// Mouse and keyboard of the display itself: what they do goes through X server and window manager.
#pragma once

#include "tests/ui/workbench/workbench_fixture.h"

#include <QProcess>
#include <QWindow>

#include <algorithm>

namespace korvex::test {

/// With the actions of scripts.
class DisplayTest : public DrawingWorkbenchTest {
protected:
    void SetUp() override {
        startUiCommands();
        DrawingWorkbenchTest::SetUp();
    }
};

/// The arguments are those of xdotool.
inline void byHand(const QStringList& arguments) {
    EXPECT_EQ(QProcess::execute("xdotool", arguments), 0) << arguments.join(' ').toStdString();
}

inline void moveTo(const QPoint& place) {
    const double scale = qApp->devicePixelRatio();
    byHand({"mousemove", QString::number(qRound(place.x() * scale)),
            QString::number(qRound(place.y() * scale))});
}

inline QPoint middleOf(const QWidget& widget) { return widget.mapToGlobal(widget.rect().center()); }

/// Begins to drag at a place: so far that it is no click any more.
inline void grabAt(const QPoint& place) {
    moveTo(place);
    byHand({"mousedown", "1"});
    for (const int far : {8, 16, 24}) {
        moveTo(place + QPoint(far, 3));
    }
}

/// The condition, and as long as it does not hold the mouse trembles: moves that come fast reach a window as
/// one, and it may wait for the next.
inline std::function<bool()> trembling(std::function<bool()> condition) {
    return [condition = std::move(condition), step = 2]() mutable {
        if (condition()) {
            return true;
        }
        step = -step;
        byHand({"mousemove_relative", "--", QString::number(step), "0"});
        return false;
    };
}

inline void letGo() { byHand({"mouseup", "1"}); }

/// Something is being dragged: the picture under the mouse is shown.
inline bool isDragging() {
    const QWindowList windows = QGuiApplication::allWindows();
    return std::any_of(windows.begin(), windows.end(), [](const QWindow* window) {
        return window->inherits("QShapedPixmapWindow") && window->isVisible();
    });
}

/// Counts events of a type that widgets get.
class EventCount : public QObject {
public:
    explicit EventCount(std::vector<QEvent::Type> types) : m_types(std::move(types)) {
        qApp->installEventFilter(this);
    }
    int count = 0;

protected:
    bool eventFilter(QObject* object, QEvent* event) override {
        const bool counts = std::find(m_types.begin(), m_types.end(), event->type()) != m_types.end();
        count += counts && object->isWidgetType() ? 1 : 0;
        return false;
    }

private:
    std::vector<QEvent::Type> m_types;
};

}  // namespace korvex::test
