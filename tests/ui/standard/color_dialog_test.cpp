// The colour dialog, worked as a user does.
#include "tests/ui/standard/dialog_fixture.h"

#include "host/editor/color_books.h"
#include "sdk/hxstddlg.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>

namespace korvex::test {
namespace {

class ColorDialogTest : public StandardDialogTest {
protected:
    /// What comes back when `work` is done in the dialog that shows `color`.
    HxCmColor choose(HxCmColor color, bool allowMeta, const std::function<void(QDialog&)>& work) {
        inDialog("IDD_TRUECOLOR", work,
                 [&] { m_ok = hxedSetColorDialogTrueColor(color, allowMeta, HxCmColor::byIndex(3)); });
        return color;
    }
    static void enter(QDialog& dialog) { QTest::keyClick(dialog.focusWidget(), Qt::Key_Return); }
    static QString tab(QDialog& dialog) {
        return control<QTabWidget>(dialog, "IDC_COLOR_TABS").currentWidget()->objectName();
    }
    static void openTab(QDialog& dialog, Qt::Key mnemonic) {
        QTest::keyClick(&dialog, mnemonic, Qt::AltModifier);
    }
    /// Clicks on the field with that tool tip.
    static void clickField(QDialog& dialog, const char* grid, const QString& toolTip,
                           Qt::KeyboardModifiers modifiers = {}) {
        auto& view = control<QAbstractItemView>(dialog, grid);
        const QAbstractItemModel& model = *view.model();
        for (int row = 0; row < model.rowCount(); ++row) {
            for (int column = 0; column < model.columnCount(); ++column) {
                const QModelIndex index = model.index(row, column);
                if (index.data(Qt::ToolTipRole).toString() == toolTip) {
                    view.scrollTo(index);
                    QTest::mouseClick(view.viewport(), Qt::LeftButton, modifiers,
                                      view.visualRect(index).center());
                    return;
                }
            }
        }
        ADD_FAILURE() << "no field " << toolTip.toStdString();
    }

    bool m_ok = false;
};

TEST_F(ColorDialogTest, IndexByMouse) {
    const HxCmColor color = choose(HxCmColor::byIndex(1), false, [](QDialog& dialog) {
        clickField(dialog, "IDC_COLOR_PALETTE", "Color 176, RGB 0,0,76");
        EXPECT_EQ(control<QLineEdit>(dialog, "IDC_COLOR_TEXT").text(), "176");
        EXPECT_EQ(control<QLabel>(dialog, "IDC_COLOR_NEW_TEXT").text(), "Color 176");
        clickField(dialog, "IDC_COLOR_GREYS", "Color 252, RGB 132,132,132");
        EXPECT_TRUE(
            control<QAbstractItemView>(dialog, "IDC_COLOR_PALETTE").selectionModel()->selection().isEmpty());
        click(dialog, "IDOK");
    });
    EXPECT_TRUE(m_ok);
    EXPECT_EQ(color, HxCmColor::byIndex(252));
}

TEST_F(ColorDialogTest, IndexByKeyboard) {
    HxCmColor color = choose(HxCmColor::byIndex(10), false, [](QDialog& dialog) {
        auto& palette = control<QAbstractItemView>(dialog, "IDC_COLOR_PALETTE");
        palette.setFocus();
        QTest::keyClick(&palette, Qt::Key_Right);  // 20
        QTest::keyClick(&palette, Qt::Key_Down);   // 21
        EXPECT_EQ(control<QLabel>(dialog, "IDC_COLOR_POINTED_INDEX").text(), "Index color: 21");
        enter(dialog);
    });
    EXPECT_EQ(color, HxCmColor::byIndex(21));
    color = choose(HxCmColor::byIndex(10), false, [](QDialog& dialog) {
        QTest::keyClicks(dialog.focusWidget(), " Cyan");  // the text field has the focus, its text is marked
        enter(dialog);
    });
    EXPECT_EQ(color, HxCmColor::byIndex(4));
}

TEST_F(ColorDialogTest, TabMovesWithoutChoosing) {
    const HxCmColor color = choose(HxCmColor::byRgb(1, 2, 3), true, [](QDialog& dialog) {
        openTab(dialog, Qt::Key_I);
        std::set<QString> stops;
        for (int i = 0; i < 20; ++i) {
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
            stops.insert(dialog.focusWidget()->objectName());
        }
        for (const char* stop :
             {"IDC_COLOR_PALETTE", "IDC_COLOR_STANDARD", "IDC_COLOR_GREYS", "IDC_COLOR_BYLAYER",
              "IDC_COLOR_BYBLOCK", "IDC_COLOR_TEXT", "IDOK", "IDCANCEL"}) {
            EXPECT_TRUE(stops.count(stop)) << stop;
        }
        click(dialog, "IDOK");
    });
    EXPECT_EQ(color, HxCmColor::byRgb(1, 2, 3));
}

TEST_F(ColorDialogTest, RefusesWhatIsNoColor) {
    const HxCmColor color = choose(HxCmColor::byIndex(1), false, [](QDialog& dialog) {
        for (const char* text : {"256", "0", "mauve", "ByLayer"}) {
            type(dialog, "IDC_COLOR_TEXT", text);
            enter(dialog);
            EXPECT_TRUE(dialog.isVisible()) << text;
            EXPECT_TRUE(control<QLabel>(dialog, "IDC_COLOR_FAULT").text().contains(text)) << text;
        }
        type(dialog, "IDC_COLOR_TEXT", "5");
        EXPECT_TRUE(control<QLabel>(dialog, "IDC_COLOR_FAULT").isHidden());
        enter(dialog);
    });
    EXPECT_EQ(color, HxCmColor::byIndex(5));
}

TEST_F(ColorDialogTest, MetaColorsOnlyWhenAllowed) {
    HxCmColor color = choose(HxCmColor::byIndex(1), true, [](QDialog& dialog) {
        click(dialog, "IDC_COLOR_BYLAYER");
        EXPECT_EQ(control<QLabel>(dialog, "IDC_COLOR_NEW_TEXT").text(), "ByLayer");
        click(dialog, "IDOK");
    });
    EXPECT_TRUE(color.isByLayer());
    color = choose(color, true, [](QDialog& dialog) {
        EXPECT_TRUE(control<QPushButton>(dialog, "IDC_COLOR_BYLAYER").isChecked());
        type(dialog, "IDC_COLOR_TEXT", "byblock");
        enter(dialog);
    });
    EXPECT_TRUE(color.isByBlock());
    color = choose(color, false, [](QDialog& dialog) {
        EXPECT_TRUE(control<QPushButton>(dialog, "IDC_COLOR_BYLAYER").isHidden());
        EXPECT_FALSE(control<QPushButton>(dialog, "IDOK").isEnabled());  // until a color is chosen
        clickField(dialog, "IDC_COLOR_STANDARD", "Red (1), RGB 255,0,0");
        click(dialog, "IDOK");
    });
    EXPECT_EQ(color, HxCmColor::byIndex(1));
}

TEST_F(ColorDialogTest, CancelLeavesTheColor) {
    const HxCmColor given = HxCmColor::byIndex(30);
    EXPECT_EQ(choose(given, false,
                     [](QDialog& dialog) {
                         type(dialog, "IDC_COLOR_TEXT", "5");
                         QTest::keyClick(&dialog, Qt::Key_Escape);
                     }),
              given);
    EXPECT_FALSE(m_ok);
}

TEST_F(ColorDialogTest, TrueColorInBothModels) {
    const HxCmColor color = choose(HxCmColor::byRgb(10, 20, 30), false, [](QDialog& dialog) {
        EXPECT_EQ(tab(dialog), "IDC_COLOR_TAB_TRUE");
        EXPECT_EQ(control<QSpinBox>(dialog, "IDC_COLOR_GREEN").value(), 20);
        type(dialog, "IDC_COLOR_RGB", "255, 128,0");
        EXPECT_EQ(control<QLineEdit>(dialog, "IDC_COLOR_HEX").text(), "#FF8000");
        EXPECT_EQ(control<QSpinBox>(dialog, "IDC_COLOR_HUE").value(), 30);
        EXPECT_EQ(control<QSpinBox>(dialog, "IDC_COLOR_LUMINANCE").value(), 50);
        control<QComboBox>(dialog, "IDC_COLOR_MODEL").setFocus();
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Down);
        type(dialog, "IDC_COLOR_BLUE", "7");
        EXPECT_EQ(control<QLineEdit>(dialog, "IDC_COLOR_RGB").text(), "255,128,7");
        QTest::keyClick(&control<QWidget>(dialog, "IDC_COLOR_RED_BAR"), Qt::Key_Left);
        enter(dialog);
    });
    EXPECT_EQ(color, HxCmColor::byRgb(254, 128, 7));
    choose(color, false, [](QDialog& dialog) {
        EXPECT_EQ(control<QComboBox>(dialog, "IDC_COLOR_MODEL").currentText(), "RGB");  // remembered
    });
}

TEST_F(ColorDialogTest, TrueColorKeepsItsHueThroughBlack) {
    const HxCmColor color = choose(HxCmColor::byRgb(0, 0, 255), false, [](QDialog& dialog) {
        type(dialog, "IDC_COLOR_LUMINANCE", "0");
        EXPECT_EQ(control<QLineEdit>(dialog, "IDC_COLOR_HEX").text(), "#000000");
        type(dialog, "IDC_COLOR_LUMINANCE", "50");
        EXPECT_EQ(control<QLineEdit>(dialog, "IDC_COLOR_HEX").text(), "#0000FF");
        auto& field = control<QWidget>(dialog, "IDC_COLOR_HUE_FIELD");
        QTest::mouseClick(&field, Qt::LeftButton, {}, QPoint(4, 4));  // the upper left corner
        QTest::keyClick(&field, Qt::Key_Down, Qt::ShiftModifier);
        EXPECT_EQ(control<QSpinBox>(dialog, "IDC_COLOR_HUE").value(), 0);
        EXPECT_EQ(control<QSpinBox>(dialog, "IDC_COLOR_SATURATION").value(), 90);
        click(dialog, "IDOK");
    });
    EXPECT_EQ(color, HxCmColor::byRgb(242, 13, 13));
}

TEST_F(ColorDialogTest, RefusesHalfATrueColor) {
    choose(HxCmColor::byRgb(1, 2, 3), false, [](QDialog& dialog) {
        type(dialog, "IDC_COLOR_RGB", "1,2");
        enter(dialog);
        EXPECT_TRUE(control<QLabel>(dialog, "IDC_COLOR_FAULT").text().contains("three numbers"));
        type(dialog, "IDC_COLOR_RGB", "1,2,4");
        type(dialog, "IDC_COLOR_HEX", "12345");
        enter(dialog);
        EXPECT_TRUE(control<QLabel>(dialog, "IDC_COLOR_FAULT").text().contains("six hexadecimal"));
    });
}

TEST_F(ColorDialogTest, ColorOfABook) {
    const HxCmColor color = choose(HxCmColor::byIndex(1), false, [](QDialog& dialog) {
        openTab(dialog, Qt::Key_K);
        auto& books = control<QComboBox>(dialog, "IDC_COLOR_BOOK");
        books.setCurrentIndex(books.findText("Tidewater Hues"));
        auto& pages = control<QListWidget>(dialog, "IDC_COLOR_PAGES");
        pages.setFocus();
        QTest::keyClicks(&pages, "Blues");
        auto& colors = control<QListWidget>(dialog, "IDC_COLOR_BOOK_COLORS");
        clickField(dialog, "IDC_COLOR_BOOK_COLORS", "Cobalt Vivid, RGB 64,0,255");
        EXPECT_EQ(control<QLabel>(dialog, "IDC_COLOR_NEW_TEXT").text(), "Cobalt Vivid (Tidewater Hues)");
        QTest::keyClick(&colors, Qt::Key_Right);
        enter(dialog);
    });
    EXPECT_EQ(color.getDictionaryKey(), L"Tidewater Hues$Cobalt Deep");
    EXPECT_EQ(color.red(), 50);
    EXPECT_EQ(color.green(), 9);
    EXPECT_EQ(color.blue(), 174);
    choose(color, false, [](QDialog& dialog) {
        EXPECT_EQ(tab(dialog), "IDC_COLOR_TAB_BOOKS");
        EXPECT_EQ(control<QListWidget>(dialog, "IDC_COLOR_PAGES").currentItem()->text(), "Blues");
        EXPECT_EQ(control<QListWidget>(dialog, "IDC_COLOR_BOOK_COLORS").selectedItems().first()->text(),
                  "Cobalt Deep");
    });
}

TEST_F(ColorDialogTest, SearchesInABook) {
    const HxCmColor color = choose(HxCmColor::byIndex(1), false, [](QDialog& dialog) {
        openTab(dialog, Qt::Key_K);
        control<QComboBox>(dialog, "IDC_COLOR_BOOK").setCurrentText("Tidewater Hues");
        auto& colors = control<QListWidget>(dialog, "IDC_COLOR_BOOK_COLORS");
        type(dialog, "IDC_COLOR_SEARCH", "nope");
        EXPECT_EQ(colors.count(), 0);
        EXPECT_FALSE(control<QLabel>(dialog, "IDC_COLOR_BOOK_NOTE").text().isEmpty());
        type(dialog, "IDC_COLOR_SEARCH", "IRIS v");
        ASSERT_EQ(colors.count(), 1);
        colors.setFocus();
        QTest::keyClick(&colors, Qt::Key_Space);
        click(dialog, "IDOK");
    });
    EXPECT_EQ(color.colorName(), L"Iris Vivid");
}

TEST_F(ColorDialogTest, EnterTakesTheFirstColorFoundThenEndsTheDialog) {
    const HxCmColor color = choose(HxCmColor::byIndex(1), false, [](QDialog& dialog) {
        openTab(dialog, Qt::Key_K);
        control<QComboBox>(dialog, "IDC_COLOR_BOOK").setCurrentText("Tidewater Hues");
        type(dialog, "IDC_COLOR_SEARCH", "nope");
        enter(dialog);
        EXPECT_TRUE(dialog.isVisible());
        type(dialog, "IDC_COLOR_SEARCH", "iris");
        enter(dialog);
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(control<QLabel>(dialog, "IDC_COLOR_NEW_TEXT").text(), "Iris Mist (Tidewater Hues)");
        enter(dialog);
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_TRUE(m_ok);
    EXPECT_EQ(color.colorName(), L"Iris Mist");
}

TEST_F(ColorDialogTest, BooksThatAreDamagedOrMissing) {
    QDir().mkpath(colorBookFolder());
    QFile file(QDir(colorBookFolder()).filePath("mine.cbk"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("book: Mine\npage: P\nRed 1,2\n");
    file.close();
    HxCmColor given = HxCmColor::byRgb(1, 2, 3);
    given.setNames(L"Red", L"Mine");
    const HxCmColor color = choose(given, false, [](QDialog& dialog) {
        EXPECT_EQ(tab(dialog), "IDC_COLOR_TAB_BOOKS");
        EXPECT_TRUE(control<QPlainTextEdit>(dialog, "IDC_COLOR_BOOK_FAULTS")
                        .toPlainText()
                        .contains("mine.cbk\", line 3"));
        EXPECT_TRUE(control<QLabel>(dialog, "IDC_COLOR_BOOK_NOTE").text().contains("\"Mine\""));
        EXPECT_GT(control<QComboBox>(dialog, "IDC_COLOR_BOOK").count(), 0);
        click(dialog, "IDOK");
    });
    EXPECT_EQ(color, given);
}

TEST_F(ColorDialogTest, EveryControlHasAName) {
    choose(HxCmColor::byIndex(1), true, [](QDialog& dialog) {
        for (const QWidget* each : dialog.findChildren<QWidget*>()) {
            const bool takesKeys = each->focusPolicy() & Qt::TabFocus && each->isEnabled();
            const bool isOurs = !each->objectName().isEmpty() && !each->objectName().startsWith("qt_");
            if (takesKeys && isOurs && !qobject_cast<const QPushButton*>(each) &&
                !qobject_cast<const QTabWidget*>(each) && !qobject_cast<const QTabBar*>(each)) {
                EXPECT_FALSE(each->accessibleName().isEmpty()) << each->objectName().toStdString();
            }
        }
    });
}

}  // namespace
}  // namespace korvex::test
