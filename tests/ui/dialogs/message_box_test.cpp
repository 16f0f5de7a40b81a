// Message boxes: what they show, what their buttons, keys and closing give.
#include "host/ui/dialogs/message_box.h"

#include "tests/ui/dialogs/trial_dialog.h"

#include <QClipboard>
#include <QScreen>
#include <QTextEdit>
#include <QTimer>

namespace korvex::test {
namespace {

class MessageBoxTest : public DialogTest {
protected:
    /// Shows a box, does something with it, gives its result.
    int show(unsigned type, const std::function<void(QWidget&)>& act, const wchar_t* text = L"Text") {
        QTimer::singleShot(0, [&act] {
            QWidget* const box = QApplication::activeModalWidget();
            ASSERT_TRUE(box);
            act(*box);
        });
        return hxuiMessageBox(nullptr, text, nullptr, type);
    }
    static std::function<void(QWidget&)> presses(Qt::Key key) {
        return [key](QWidget& box) { QTest::keyClick(&box, key); };
    }
    static std::function<void(QWidget&)> clicks(const char* button) {
        return [button](QWidget& box) { box.findChild<QPushButton*>(button)->click(); };
    }
};

TEST_F(MessageBoxTest, CanBeClosedButNotHiddenOrEnlarged) {
    show(MB_OK, [](QWidget& box) {
        EXPECT_TRUE(box.windowFlags() & Qt::CustomizeWindowHint) << "else the window manager adds its own";
        EXPECT_FALSE(box.windowFlags() & Qt::WindowMinMaxButtonsHint);
        EXPECT_TRUE(box.windowFlags() & Qt::WindowCloseButtonHint);
        box.close();
    });
}

TEST_F(MessageBoxTest, GivesWhatWasPressed) {
    EXPECT_EQ(show(MB_YESNOCANCEL, clicks("IDYES")), IDYES);
    EXPECT_EQ(show(MB_YESNOCANCEL, clicks("IDNO")), IDNO);
    EXPECT_EQ(show(MB_RETRYCANCEL, clicks("IDRETRY")), IDRETRY);
    EXPECT_EQ(show(MB_OKCANCEL, presses(Qt::Key_Return)), IDOK);
    EXPECT_EQ(show(MB_OKCANCEL | MB_DEFBUTTON2, presses(Qt::Key_Return)), IDCANCEL);
    EXPECT_EQ(show(MB_YESNOCANCEL | MB_DEFBUTTON3, presses(Qt::Key_Return)), IDCANCEL);
    EXPECT_EQ(show(MB_OK | MB_DEFBUTTON3, presses(Qt::Key_Return)), IDOK);
}

TEST_F(MessageBoxTest, TakesEscAndClosingForTheSafeAnswer) {
    const auto closes = [](QWidget& box) { box.close(); };
    EXPECT_EQ(show(MB_OK, presses(Qt::Key_Escape)), IDOK);
    EXPECT_EQ(show(MB_YESNO, presses(Qt::Key_Escape)), IDNO);
    EXPECT_EQ(show(MB_YESNO, closes), IDNO);
    EXPECT_EQ(show(MB_YESNOCANCEL, closes), IDCANCEL);
}

TEST_F(MessageBoxTest, ShowsPlainTextThatCanBeCopied) {
    const wchar_t text[] = L"Layer <b>\"A & B\"</b>\nis frozen.";
    show(
        MB_OK | MB_ICONWARNING,
        [&](QWidget& box) {
            EXPECT_EQ(box.windowTitle(), "KORVEX");
            EXPECT_EQ(box.objectName(), "MessageBox");
            const auto* const shown = box.findChild<QTextEdit*>("MessageText");
            EXPECT_EQ(shown->toPlainText().toStdWString(), text);
            EXPECT_TRUE(box.findChild<QWidget*>("MessageIcon"));
            QTest::keyClick(&box, Qt::Key_C, Qt::ControlModifier);
            EXPECT_EQ(QApplication::clipboard()->text().toStdWString(), text);
            box.close();
        },
        text);
}

TEST_F(MessageBoxTest, StaysOnTheScreenWhateverTheText) {
    const std::wstring longName(2000, L'W');
    std::wstring many;
    for (int i = 0; i < 500; ++i) {
        many += L"A-WALL-" + std::to_wstring(i) + L"\n";
    }
    for (const std::wstring& text : {longName, many}) {
        show(
            MB_OK,
            [](QWidget& box) {
                const QSize room = box.screen()->availableGeometry().size();
                EXPECT_LE(box.width(), room.width());
                EXPECT_LE(box.height(), room.height());
                box.close();
            },
            text.c_str());
    }
}

class ScriptedBoxTest : public DialogTest {
protected:
    /// What the box gave that a script answers.
    int ask(unsigned type, const std::wstring& lines) {
        int answer = 0;
        define(L"ASK", [&] { answer = hxuiMessageBox(nullptr, L"Overwrite \"Plan A\"?", nullptr, type); });
        shown = run(L"ASK\n" + lines);
        editor().commands().removeGroup(L"TEST");
        return answer;
    }
    std::wstring shown;
};

TEST_F(ScriptedBoxTest, TakesTheScriptsNextLine) {
    EXPECT_EQ(ask(MB_YESNO | MB_DEFBUTTON2, L"Yes\n"), IDYES);
    EXPECT_TRUE(contains(shown, L"KORVEX: Overwrite \"Plan A\"? [Yes/No] <No>: Yes\n")) << shown;
    EXPECT_EQ(ask(MB_YESNO, L"n\n"), IDNO);
    EXPECT_EQ(ask(MB_YESNO | MB_DEFBUTTON2, L"\n"), IDNO);
    EXPECT_EQ(ask(MB_YESNOCANCEL, L"CANC\n"), IDCANCEL);
    EXPECT_EQ(ask(MB_YESNO, L"\x1b\n"), IDNO);
    EXPECT_TRUE(failures.empty());
}

TEST_F(ScriptedBoxTest, AsksAgainAfterAWrongAnswer) {
    EXPECT_EQ(ask(MB_YESNO, L"Maybe\nY\n"), IDYES);
    ASSERT_EQ(failures.size(), 1U);
    EXPECT_TRUE(contains(failures[0], L"\"Maybe\" does not tell which button is meant: [Yes/No]"));
}

TEST_F(ScriptedBoxTest, FailsWithTheAnswerOfEscWhenTheScriptEnds) {
    EXPECT_EQ(ask(MB_YESNO, L""), IDNO);
    ASSERT_EQ(failures.size(), 1U);
    EXPECT_TRUE(contains(failures[0], L"before the message was answered: No is taken"));
    EXPECT_TRUE(contains(shown, L"Overwrite \"Plan A\"?"));
}

TEST_F(ScriptedBoxTest, CanBePhotographedFirst) {
    const std::wstring file = path("box.png");
    EXPECT_EQ(ask(MB_YESNO | MB_ICONQUESTION, L"PICTURE " + file + L"\nLOOK IDNO\nY\n"), IDYES);
    const QImage image(QString::fromStdWString(file));
    EXPECT_GT(image.width(), 150);
    EXPECT_TRUE(hasContent(image));
    EXPECT_TRUE(contains(shown, L"IDNO: \"No\"\n"));
}

}  // namespace
}  // namespace korvex::test
