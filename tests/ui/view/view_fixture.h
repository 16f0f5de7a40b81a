// A drawing in a window that gets real mouse and key events.
#pragma once

#include "host/editor/selection.h"
#include "host/editor/view.h"
#include "host/ui/view/drawing_view.h"
#include "tests/editor/editor_fixture.h"
#include "tests/editor/pick/pick_fixture.h"

#include <QApplication>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

#include <fstream>
#include <iterator>

namespace korvex::test {

/// A window of 400 by 300 pixels over a drawing; at first it shows (0,0) to (400,300) pixel by unit.
class ViewTest : public EditorTest {
protected:
    ViewTest() {
        view = std::make_unique<DrawingView>();
        view->resize(400, 300);
    }

    void open(const DrawingText& drawing) {
        const std::wstring file = path("drawing.dxf");
        std::ofstream(std::string(file.begin(), file.end()), std::ios::binary) << drawing.text();
        openFile(file);
        look(200, 150, 300);
    }
    void openFile(const std::wstring& file) {
        HxApDocument* document = nullptr;
        CStdStr<wchar_t> error;
        ASSERT_EQ(Hx::eOk, hxDocManager()->openDocument(file.c_str(), document, &error))
            << testing::PrintToString(std::wstring(error));
        view->setDocument(static_cast<Document*>(document));
        view->show();
        settle();
    }
    void look(double x, double y, double height) {
        View wanted;
        wanted.center = {x, y};
        wanted.height = height;
        setScreenView(database(), wanted);
        view->update();
        settle();
    }
    static void settle() {
        for (int i = 0; i < 3; ++i) {
            QCoreApplication::processEvents();
        }
    }
    /// Where the view that the test set by look(200, 150, 300) shows a point.
    static QPoint pixel(double x, double y) { return {static_cast<int>(x), 300 - static_cast<int>(y)}; }

    void moveTo(const QPoint& at) {
        QMouseEvent event(QEvent::MouseMove, at, view->mapToGlobal(at), Qt::NoButton,
                          QApplication::mouseButtons(), Qt::NoModifier);
        QApplication::sendEvent(view.get(), &event);
    }
    void send(QEvent::Type type, const QPoint& at, Qt::MouseButton button, Qt::MouseButtons buttons,
              Qt::KeyboardModifiers keys = {}) {
        QMouseEvent event(type, at, view->mapToGlobal(at), button, buttons, keys);
        QApplication::sendEvent(view.get(), &event);
    }
    void click(const QPoint& at, Qt::KeyboardModifiers keys = {}) {
        QTest::mouseClick(view.get(), Qt::LeftButton, keys, at);
    }
    void drag(const QPoint& from, const QPoint& to, Qt::MouseButton button = Qt::LeftButton,
              Qt::KeyboardModifiers keys = {}) {
        send(QEvent::MouseButtonPress, from, button, button, keys);
        send(QEvent::MouseMove, (from + to) / 2, Qt::NoButton, button, keys);
        send(QEvent::MouseMove, to, Qt::NoButton, button, keys);
        send(QEvent::MouseButtonRelease, to, button, Qt::NoButton, keys);
    }
    void turnWheel(const QPoint& at, int notches, Qt::KeyboardModifiers keys = {}) {
        QWheelEvent event(at, view->mapToGlobal(at), QPoint(), QPoint(0, 120 * notches), Qt::NoButton, keys,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(view.get(), &event);
    }
    /// What was sent to the document.
    void runSent() { editor().processor().runAll(); }

    /// Handles of what is selected, in the order of selecting: "A1 A2".
    std::string selected() {
        std::string text;
        for (const HxDbObjectId& id : selectionOf(database()).objects()) {
            char buffer[20];
            std::snprintf(buffer, sizeof buffer, "%llX",
                          static_cast<unsigned long long>(id.handle().value()));
            text += (text.empty() ? "" : " ") + std::string(buffer);
        }
        return text;
    }
    std::size_t undoSteps() { return editor().documents().current()->undo().undoCount(); }
    HxDbObjectId byHandle(std::uint64_t handle) {
        HxDbObjectId id;
        EXPECT_EQ(Hx::eOk, database().getHxDbObjectId(id, false, HxDbHandle(handle)));
        return id;
    }
    void freeze(const wchar_t* name, bool frozen = true) {
        const HxDbObjectPointer<HxDbLayerTableRecord> record(layer(name), HxDb::kForWrite);
        EXPECT_EQ(Hx::eOk, record->setIsFrozen(frozen));
    }
    void turnOff(const wchar_t* name) {
        const HxDbObjectPointer<HxDbLayerTableRecord> record(layer(name), HxDb::kForWrite);
        record->setIsOff(true);
    }
    /// The point of the drawing under a pixel, as the view tells it.
    HxGePoint3d pointAt(const QPoint& at) {
        HxGePoint3d point;
        const auto connection = QObject::connect(view.get(), &DrawingView::coordinatesChanged,
                                                 [&](const HxGePoint3d& p) { point = p; });
        moveTo(at);
        QObject::disconnect(connection);
        return point;
    }

    std::unique_ptr<DrawingView> view;
};

}  // namespace korvex::test
