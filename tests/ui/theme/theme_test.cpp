// Dark and light at run time: what is painted, and that it is seen.
#include "tests/editor/editor_fixture.h"

#include "host/ui/theme/theme.h"
#include "host/ui/theme/theme_icon.h"
#include "sdk/hxui.h"

#include <QApplication>
#include <QCheckBox>
#include <QImage>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <cmath>

namespace korvex::test {
namespace {

double luminance(const QColor& color) {
    const auto part = [](double v) { return v <= 0.03928 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4); };
    return 0.2126 * part(color.redF()) + 0.7152 * part(color.greenF()) + 0.0722 * part(color.blueF());
}

double contrast(const QColor& a, const QColor& b) {
    const double x = luminance(a);
    const double y = luminance(b);
    return (std::max(x, y) + 0.05) / (std::min(x, y) + 0.05);
}

/// The best contrast of any pixel with the ground, which is the first pixel.
double bestContrast(const QImage& image) {
    double best = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            best = std::max(best, contrast(image.pixelColor(x, y), image.pixelColor(0, 0)));
        }
    }
    return best;
}

class ThemeTest : public EditorTest {
protected:
    ThemeTest() { startTheme(); }
    ~ThemeTest() override { run(L"COLORTHEME 0\n"); }

    static QImage picture(QWidget& widget) {
        widget.setAutoFillBackground(true);
        widget.ensurePolished();
        widget.resize(widget.sizeHint());
        return widget.grab().toImage();
    }
};

TEST_F(ThemeTest, SwitchesAtRunTime) {
    QLabel label("A text");
    const QImage darkIcon = themeIcon("open").pixmap(16, 16).toImage();
    for (const bool dark : {true, false, true}) {
        run(dark ? L"COLORTHEME 0\n" : L"COLORTHEME 1\n");
        EXPECT_EQ(hxuiIsDarkTheme(), dark);
        const QImage image = picture(label);
        EXPECT_EQ(luminance(image.pixelColor(0, 0)) < 0.5, dark);
        EXPECT_GE(bestContrast(image), 4.5);
        EXPECT_EQ(themeIcon("open").pixmap(16, 16).toImage() == darkIcon, dark);
    }
}

TEST_F(ThemeTest, EmptyBoxesAreSeenAndMarksTellThemApart) {
    for (const wchar_t* theme : {L"COLORTHEME 0\n", L"COLORTHEME 1\n"}) {
        run(theme);
        QCheckBox box;
        QRadioButton button;
        for (QAbstractButton* one : std::initializer_list<QAbstractButton*>{&box, &button}) {
            const QImage empty = picture(*one);
            EXPECT_GE(bestContrast(empty), 3) << "its outline";
            one->setChecked(true);
            EXPECT_NE(picture(*one), empty);
        }
    }
}

TEST_F(ThemeTest, DisabledAndSelectedTextsCanBeRead) {
    for (const wchar_t* theme : {L"COLORTHEME 0\n", L"COLORTHEME 1\n"}) {
        run(theme);
        const QPalette palette = QApplication::palette();
        EXPECT_GE(contrast(palette.color(QPalette::Text), palette.color(QPalette::Base)), 7);
        EXPECT_GE(contrast(palette.color(QPalette::HighlightedText), palette.color(QPalette::Highlight)),
                  4.5);
        EXPECT_GE(contrast(palette.color(QPalette::Disabled, QPalette::Text), palette.color(QPalette::Base)),
                  3);
        EXPECT_GE(contrast(palette.color(QPalette::ToolTipText), palette.color(QPalette::ToolTipBase)), 4.5);
    }
}

/// How many pixels the keyboard's focus changes so that they are seen.
int framedPixels(QWidget& window, QWidget& control) {
    const auto shown = [&control] { return control.grab().toImage().convertToFormat(QImage::Format_RGB32); };
    window.setFocus();
    const QImage without = shown();
    control.setFocus();
    const QImage with = shown();
    int count = 0;
    for (int y = 0; y < with.height(); ++y) {
        for (int x = 0; x < with.width(); ++x) {
            count += contrast(with.pixelColor(x, y), without.pixelColor(x, y)) >= 3 ? 1 : 0;
        }
    }
    return count;
}

TEST_F(ThemeTest, WhatHasTheKeyboardIsFramed) {
    for (const wchar_t* theme : {L"COLORTHEME 0\n", L"COLORTHEME 1\n"}) {
        run(theme);
        QWidget window;
        window.setFocusPolicy(Qt::StrongFocus);
        QVBoxLayout column(&window);
        auto* const button = new QPushButton("A button", &window);
        auto* const tool = new QToolButton(&window);
        auto* const box = new QCheckBox("A box", &window);
        auto* const table = new QTableWidget(3, 3, &window);
        auto* const tree = new QTreeWidget(&window);
        for (QWidget* const control :
             {static_cast<QWidget*>(button), static_cast<QWidget*>(tool), static_cast<QWidget*>(box),
              static_cast<QWidget*>(table), static_cast<QWidget*>(tree)}) {
            control->setFocusPolicy(Qt::StrongFocus);
            column.addWidget(control);
        }
        tree->addTopLevelItem(new QTreeWidgetItem({"An item"}));
        tree->setCurrentItem(tree->topLevelItem(0), 0, QItemSelectionModel::NoUpdate);
        table->setCurrentCell(1, 1, QItemSelectionModel::NoUpdate);
        window.show();
        QApplication::setActiveWindow(&window);
        for (QWidget* const control : window.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
            EXPECT_GT(framedPixels(window, *control), 30) << control->metaObject()->className();
        }
        table->selectAll();
        table->setCurrentCell(1, 1, QItemSelectionModel::NoUpdate);
        EXPECT_GT(framedPixels(window, *table), 30) << "a selected cell";
    }
}

}  // namespace
}  // namespace korvex::test
