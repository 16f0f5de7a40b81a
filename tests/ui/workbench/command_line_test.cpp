// Typing on the command line of the window: what ends an answer, what comes back, what is completed.
#include "tests/ui/workbench/workbench_fixture.h"

#include <QClipboard>
#include <QListWidget>
#include <QSplitter>

namespace korvex::test {
namespace {

class CommandLineTest : public WorkbenchTest {
protected:
    QListWidget& list() { return widget<QListWidget>("CompletionList"); }
    /// Clicks where the prompt shows a word.
    void clickWord(const QString& word) {
        auto& label = widget<QLabel>("CommandPrompt");
        const int before = label.fontMetrics().horizontalAdvance(prompt().section(word, 0, 0));
        QTest::mouseClick(&label, Qt::LeftButton, Qt::NoModifier, QPoint(before + 4, label.height() / 2));
    }
};

TEST_F(CommandLineTest, SpaceEndsWordsAndEnterRepeatsTheCommand) {
    user->types("circle 5,5 2 ");
    user->presses(Qt::Key_Return);
    user->types("8,8 3 ");
    user->work();
    EXPECT_EQ(entities(), 2);
    EXPECT_TRUE(history().contains("Command: circle")) << history().toStdString();
    EXPECT_TRUE(history().contains("Command: CIRCLE"));
}

TEST_F(CommandLineTest, SpaceBelongsToNames) {
    user->enters("-layer");
    user->enters("N");
    user->enters("two words");
    user->presses(Qt::Key_Return);
    user->work();
    EXPECT_TRUE(hasLayer(L"two words"));
}

TEST_F(CommandLineTest, ALineWithBlanksIsSeveralAnswers) {
    user->then([this] {
        edit().setText("circle 5,5 2");
        QTest::keyClick(&edit(), Qt::Key_Return);
    });
    user->work();
    EXPECT_EQ(entities(), 1);
}

TEST_F(CommandLineTest, PastedLinesRunAsLines) {
    user->then([this] {
        QApplication::clipboard()->setText("circle 1,1 2\ncircle 5,5\n3\nline 0,0 1,1\n");
        QTest::keySequence(&edit(), QKeySequence::Paste);
    });
    user->presses(Qt::Key_Return);  // ends the line
    user->work();
    EXPECT_EQ(entities(), 3);
    EXPECT_TRUE(edit().text().isEmpty());
}

TEST_F(CommandLineTest, ArrowsBringEarlierAnswersBack) {
    user->enters("lupred");
    user->enters("circle");
    user->presses(Qt::Key_Escape);
    user->types("x");
    user->presses(Qt::Key_Up);
    user->then([this] { EXPECT_EQ(edit().text(), "circle"); });
    user->presses(Qt::Key_Up);
    user->then([this] { EXPECT_EQ(edit().text(), "lupred"); });
    user->presses(Qt::Key_Up);
    user->then([this] { EXPECT_EQ(edit().text(), "lupred"); });
    user->presses(Qt::Key_Down);
    user->presses(Qt::Key_Down);
    user->then([this] { EXPECT_EQ(edit().text(), "x") << "what was being typed comes back"; });
    user->presses(Qt::Key_Escape);
    user->work();
}

TEST_F(CommandLineTest, CompletesCommandsVariablesAndKeywords) {
    user->types("layf");
    user->presses(Qt::Key_Tab);
    user->then([this] { EXPECT_EQ(edit().text().toUpper(), "LAYFRZ"); });
    user->presses(Qt::Key_Return);
    user->then([this] { EXPECT_TRUE(prompt().startsWith("Pick an object")) << prompt().toStdString(); });
    user->presses(Qt::Key_Tab);
    user->then([this] {
        EXPECT_TRUE(list().isVisible());
        EXPECT_EQ(list().item(0)->text(), "Settings");
    });
    user->presses(Qt::Key_Tab);
    user->presses(Qt::Key_Return);
    user->then([this] { EXPECT_TRUE(prompt().contains("Viewports")) << prompt().toStdString(); });
    user->presses(Qt::Key_Escape);
    user->presses(Qt::Key_Escape);
    user->atCommandPrompt([this] { QTest::keyClicks(&edit(), "lupr"); });
    user->then([this] { EXPECT_TRUE(list().isVisible()); });
    user->presses(Qt::Key_Down);
    user->presses(Qt::Key_Return);
    user->then([this] { EXPECT_TRUE(prompt().contains("LUPREC")) << prompt().toStdString(); });
    user->presses(Qt::Key_Escape);
    user->work();
}

TEST_F(CommandLineTest, EscLeavesTheListThenTheCommand) {
    user->types("la");
    user->then([this] { EXPECT_TRUE(list().isVisible()); });
    user->presses(Qt::Key_Escape);
    user->then([this] {
        EXPECT_FALSE(list().isVisible());
        EXPECT_EQ(edit().text(), "la");
    });
    user->presses(Qt::Key_Escape);
    user->then([this] { EXPECT_TRUE(edit().text().isEmpty()); });
    user->enters("circle");
    user->types("5,");
    user->presses(Qt::Key_Escape);
    user->atCommandPrompt([this] { EXPECT_TRUE(edit().text().isEmpty()); });
    user->work();
    EXPECT_EQ(entities(), 0);
    EXPECT_TRUE(history().endsWith("*Cancel*")) << history().toStdString();
}

TEST_F(CommandLineTest, KeywordsAreClickedAndReachedByKeys) {
    user->enters("layfrz");
    user->then([this] { clickWord("Settings"); });
    user->then([this] { EXPECT_TRUE(prompt().contains("Viewports")) << prompt().toStdString(); });
    user->presses(Qt::Key_Escape);
    user->enters("zoom");
    user->then([this] {
        auto& label = widget<QLabel>("CommandPrompt");
        QTest::keyClick(&edit(), Qt::Key_Tab, Qt::ShiftModifier);
        EXPECT_TRUE(label.hasFocus());
        QTest::keyClick(&label, Qt::Key_Return);  // Shift+Tab came to the last link
    });
    user->then([this] {
        EXPECT_TRUE(prompt().contains("first corner")) << prompt().toStdString();
        EXPECT_TRUE(edit().hasFocus());
    });
    user->presses(Qt::Key_Escape);
    user->work();
}

TEST_F(CommandLineTest, LongPromptsKeepNoWindowWide) {
    user->then([this] { window->resize(1200, 700); });
    user->enters("-layer");
    user->then([this] {
        window->resize(620, 500);
        QCoreApplication::processEvents();
        EXPECT_EQ(window->width(), 620);
        const auto& label = widget<QLabel>("CommandPrompt");
        EXPECT_GE(label.height(), label.heightForWidth(label.width()));
        EXPECT_GT(edit().width(), 100);
    });
    user->presses(Qt::Key_Escape);
    user->work();
}

TEST_F(CommandLineTest, TypingAnywhereReachesIt) {
    user->then([this] {
        window->view().setFocus();
        QTest::keyClicks(&window->view(), "ci");
        documentTabs().setFocus();
        QTest::keyClick(&documentTabs(), Qt::Key_R);
        QTest::keyClicks(QApplication::focusWidget(), "cle");
        EXPECT_EQ(edit().text(), "circle");
        QTest::keyClick(&edit(), Qt::Key_Return);
    });
    user->then([this] { QTest::keyClick(&window->view(), Qt::Key_Escape); });
    user->atCommandPrompt([] {});
    user->work();
}

TEST_F(CommandLineTest, F2EnlargesTheHistory) {
    user->then([this] {
        auto& pane = widget<QPlainTextEdit>("CommandHistory");
        const int before = pane.height();
        QTest::keyClick(&edit(), Qt::Key_F2);
        QCoreApplication::processEvents();
        EXPECT_GT(pane.height(), 2 * before);
        QTest::keyClick(&edit(), Qt::Key_F2);
        QCoreApplication::processEvents();
        EXPECT_EQ(pane.height(), before);
    });
    user->work();
}

TEST_F(CommandLineTest, TransparentCommandsNest) {
    user->enters("circle");
    user->enters("'luprec");
    user->then([this] { EXPECT_TRUE(prompt().contains("LUPREC")) << prompt().toStdString(); });
    user->enters("3");
    user->then([this] { EXPECT_TRUE(prompt().contains("center")) << prompt().toStdString(); });
    user->enters("5,5");
    user->enters("1");
    user->work();
    EXPECT_EQ(variable(L"LUPREC"), L"3");
    EXPECT_EQ(entities(), 1);
}

}  // namespace
}  // namespace korvex::test
