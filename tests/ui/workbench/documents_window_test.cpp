// Drawings in the window: opening, tabs, closing with unsaved changes, damaged files, drops, recent files.
#include "host/ui/workbench/recent_files.h"
#include "tests/ui/workbench/workbench_fixture.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QMimeData>
#include <QUrl>

namespace korvex::test {
namespace {

class DocumentsWindowTest : public DrawingWorkbenchTest {
protected:
    QString file(const char* name) { return QString::fromStdWString(path(name)); }
    void drop(const QStringList& files) {
        QList<QUrl> urls;
        for (const QString& name : files) {
            urls << QUrl::fromLocalFile(name);
        }
        QMimeData data;
        data.setUrls(urls);
        const QPoint place = window->rect().center();
        QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window.get(), &enter);
        EXPECT_EQ(enter.isAccepted(), !files.isEmpty());
        QDropEvent event(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window.get(), &event);
    }
    void writeDamaged(const char* name) {
        write(name, "  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n 10\nabc\n  0\nENDSEC\n  0\nEOF\n");
    }
    int openDrawings() { return editor().documents().documentCount(); }
    QString activeTitle() {
        const Document* const active = editor().documents().active();
        return active ? QString::fromWCharArray(active->docTitle()) : QString();
    }
    /// A change, then the tab's close button, then a button of the question.
    void closeChanged(const char* button) {
        user->types("circle 400,400 5 ");
        user->atCommandPrompt([this] {
            EXPECT_TRUE(documentTabs().tabText(1).endsWith('*'));
            QTest::mouseClick(documentTabs().tabButton(1, QTabBar::RightSide), Qt::LeftButton);
        });
        user->inDialog([button](QWidget& box) { clickButton(box, button); });
        user->atCommandPrompt([] {});
        user->work();
    }
};

TEST_F(DocumentsWindowTest, OpensByMenuAndFileDialog) {
    user->then([this] { clickMenu("File"); });
    user->inMenu([](QMenu& menu) { clickEntry(menu, "ActionOpen"); });
    user->inDialog([this](QWidget& dialog) {
        auto* const files = qobject_cast<QFileDialog*>(&dialog);
        ASSERT_NE(files, nullptr);
        auto* const name = dialog.findChild<QLineEdit*>("fileNameEdit");
        name->setText(file("plan.dxf"));
        QTest::keyClick(name, Qt::Key_Return);
    });
    user->when([this] { return openDrawings() == 3; }, [] {});
    user->atCommandPrompt([this] {
        EXPECT_EQ(documentTabs().tabText(documentTabs().currentIndex()), "plan.dxf");
        EXPECT_EQ(documentTabs().tabToolTip(documentTabs().currentIndex()), file("plan.dxf"));
        EXPECT_TRUE(window->windowTitle().startsWith("plan.dxf"));
        EXPECT_EQ(recent_files::all().value(0), file("plan.dxf"));
    });
    user->work();
}

TEST_F(DocumentsWindowTest, TabsSwitchByClickAndKeysButNotUnderACommand) {
    user->then([this] { clickTab(documentTabs(), 0); });
    user->then([this] {
        EXPECT_EQ(editor().documents().active(), editor().documents().all().front());
        EXPECT_EQ(window->view().document(), editor().documents().active());
        QTest::keyClick(window.get(), Qt::Key_Tab, Qt::ControlModifier);
    });
    user->then([this] { EXPECT_EQ(activeTitle(), "floor.dxf"); });
    user->enters("LINE");
    user->then([this] { clickTab(documentTabs(), 0); });
    user->then([this] {
        EXPECT_EQ(activeTitle(), "floor.dxf");
        EXPECT_EQ(documentTabs().currentIndex(), 1);
        EXPECT_TRUE(widget<QLabel>("StatusCommand").text().contains("LINE is running"));
        EXPECT_TRUE(window->dialogue().isAsking());
    });
    user->presses(Qt::Key_Escape);
    user->atCommandPrompt([this] { clickTab(documentTabs(), 0, Qt::MiddleButton); });
    user->when([this] { return openDrawings() == 1; }, [] {});
    user->work();
    EXPECT_EQ(documentTabs().count(), 1);
}

TEST_F(DocumentsWindowTest, YesSavesAndCloses) {
    closeChanged("IDYES");
    EXPECT_EQ(openDrawings(), 1);
    HxDbDatabase saved(false);
    ASSERT_EQ(saved.readDwgFile(path("floor.dxf").c_str()), Hx::eOk);
    QFile text(file("floor.dxf"));
    ASSERT_TRUE(text.open(QIODevice::ReadOnly));
    EXPECT_TRUE(text.readAll().contains("CIRCLE"));
}

TEST_F(DocumentsWindowTest, NoClosesAndLosesTheChanges) {
    closeChanged("IDNO");
    EXPECT_EQ(openDrawings(), 1);
    QFile text(file("floor.dxf"));
    ASSERT_TRUE(text.open(QIODevice::ReadOnly));
    EXPECT_FALSE(text.readAll().contains("CIRCLE"));
}

TEST_F(DocumentsWindowTest, CancelKeepsItOpen) {
    closeChanged("IDCANCEL");
    EXPECT_EQ(openDrawings(), 2);
    EXPECT_TRUE(editor().documents().active()->database()->isModified());
}

TEST_F(DocumentsWindowTest, ADamagedDrawingGivesABoxAndOpensNothing) {
    writeDamaged("bad.dxf");
    QString told;
    user->then([this] { drop({file("bad.dxf")}); });
    user->inDialog([&told](QWidget& box) {
        for (const QTextEdit* text : box.findChildren<QTextEdit*>()) {
            told += text->toPlainText();
        }
        for (const QLabel* text : box.findChildren<QLabel*>()) {
            told += text->text();
        }
        clickButton(box, "IDOK");
    });
    user->work();
    EXPECT_TRUE(told.contains("bad.dxf")) << told.toStdString();
    EXPECT_TRUE(told.contains("line 8, group 10")) << told.toStdString();
    EXPECT_EQ(openDrawings(), 2);
}

TEST_F(DocumentsWindowTest, DropsOpenEvenUnderACommand) {
    write("second.dxf", SmallDrawing().text());
    user->enters("LINE");
    user->then([this] { drop({file("plan.dxf"), file("second.dxf")}); });
    user->when([this] { return openDrawings() == 4; }, [] {});
    user->work();
    EXPECT_EQ(activeTitle(), "second.dxf");
    EXPECT_TRUE(failures.empty());
}

TEST_F(DocumentsWindowTest, AMissingRecentDrawingLeavesTheList) {
    recent_files::add(file("gone.dxf"));
    recent_files::add(file("plan.dxf"));
    auto& menu = widget<QMenu>("MenuOpenRecent");
    user->then([&menu] {
        Q_EMIT menu.aboutToShow();
        EXPECT_TRUE(menu.actions().value(0)->text().contains("plan.dxf"));
        EXPECT_TRUE(menu.actions().value(1)->text().contains("missing"));
        menu.actions().value(1)->trigger();
    });
    user->inDialog([](QWidget& box) { clickButton(box, "IDOK"); });
    user->then([&menu] { menu.actions().value(0)->trigger(); });
    user->when([this] { return openDrawings() == 3; }, [] {});
    user->work();
    EXPECT_FALSE(recent_files::all().contains(file("gone.dxf")));
    EXPECT_EQ(recent_files::all().value(0), file("plan.dxf"));
}

TEST_F(DocumentsWindowTest, RemembersTenDrawingsTheLatestFirst) {
    for (int i = 0; i < 12; ++i) {
        recent_files::add(QString("/drawings/%1.dxf").arg(i));
    }
    recent_files::add("/drawings/5.dxf");
    EXPECT_EQ(recent_files::all().size(), 10);
    EXPECT_EQ(recent_files::all().value(0), "/drawings/5.dxf");
    EXPECT_EQ(recent_files::all().count("/drawings/5.dxf"), 1);
}

TEST_F(DocumentsWindowTest, ClosingTheWindowCancelsTheCommandAndAsksForEachDrawing) {
    user->types("circle 400,400 5 ");
    user->enters("LINE");
    user->then([this] { window->close(); });
    user->inDialog([](QWidget& box) { clickButton(box, "IDCANCEL"); });
    user->atCommandPrompt([this] {
        EXPECT_TRUE(window->isVisible());
        EXPECT_EQ(openDrawings(), 2);
        window->close();
    });
    user->inDialog([](QWidget& box) { clickButton(box, "IDNO"); });
    user->work();
    EXPECT_TRUE(editor().processor().isQuitting());
    EXPECT_EQ(openDrawings(), 0);
}

TEST_F(DocumentsWindowTest, ADrawingMayGoWhileThePromptWaits) {
    user->then([] {
        for (Document* document : editor().documents().all()) {
            editor().documents().closeDocument(document);
        }
    });
    user->then([this] {
        EXPECT_EQ(documentTabs().count(), 0);
        EXPECT_FALSE(layoutTabs().isVisible());
        EXPECT_EQ(window->windowTitle(), "KORVEX");
    });
    user->enters("circle");
    user->enters("NEW");
    user->types("circle 1,1 1 ");
    user->work();
    EXPECT_EQ(failures, Lines{L"CIRCLE needs a drawing, and none is open: use NEW or OPEN first."});
    EXPECT_EQ(entities(), 1);
}

}  // namespace
}  // namespace korvex::test
