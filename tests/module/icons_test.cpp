// The module's icons can be made out on the host's grounds.
#include "tests/module/module_fixture.h"

#include "host/ui/theme/theme_colors.h"
#include "manager_ui/window/manager_controls.h"

#include <QDir>
#include <QIcon>
#include <QImage>
#include <QPainter>

#include <cmath>

namespace korvex::test {
namespace {

constexpr int kSize = 96;
constexpr int kGap = 3;
constexpr double kReadable = 3;  ///< contrast of a shape with its ground

double luminance(const QColor& color) {
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}
double contrast(const QColor& a, const QColor& b) {
    const double one = luminance(a) + 0.05;
    const double other = luminance(b) + 0.05;
    return std::max(one, other) / std::min(one, other);
}

/// What of a picture is seen as a figure: the marked pixels and all that they enclose.
class Figure {
public:
    template <class IsMarked>
    explicit Figure(const IsMarked& isMarked) {
        std::vector<QPoint> rest{QPoint(-1, -1)};
        while (!rest.empty()) {  // from outside, as far as no marked pixel is in the way
            const QPoint at = rest.back();
            rest.pop_back();
            const bool isInside = at.x() >= 0 && at.y() >= 0 && at.x() < kSize && at.y() < kSize;
            if (at.x() < -1 || at.y() < -1 || at.x() > kSize || at.y() > kSize || m_outside[cell(at)] ||
                (isInside && isMarked(at))) {
                continue;
            }
            m_outside[cell(at)] = true;
            for (const QPoint step : {QPoint(1, 0), QPoint(-1, 0), QPoint(0, 1), QPoint(0, -1)}) {
                rest.push_back(at + step);
            }
        }
    }
    double area() const { return static_cast<double>(std::count(m_outside.begin(), m_outside.end(), false)); }

private:
    static std::size_t cell(QPoint at) {
        return static_cast<std::size_t>((at.y() + 1) * (kSize + 2) + at.x() + 1);
    }
    std::vector<bool> m_outside = std::vector<bool>((kSize + 2) * (kSize + 2), false);
};

/// The share of an icon's figure that stands out against a ground: 1 for all of it.
double shareSeen(const QString& file, const QColor& ground) {
    const QImage icon = QIcon(file).pixmap(kSize, kSize).toImage();
    EXPECT_EQ(icon.width(), kSize) << file.toStdString();
    QImage shown(kSize, kSize, QImage::Format_RGB32);
    shown.fill(ground);
    QPainter(&shown).drawImage(0, 0, icon);
    const auto isNear = [](QPoint at, const auto& isMarked) {  // gaps of less than a sixteenth do not count
        for (int x = std::max(at.x() - kGap, 0); x <= std::min(at.x() + kGap, kSize - 1); ++x) {
            for (int y = std::max(at.y() - kGap, 0); y <= std::min(at.y() + kGap, kSize - 1); ++y) {
                if (isMarked(QPoint(x, y))) return true;
            }
        }
        return false;
    };
    // Dark icons have an edge besides, to be seen on light grounds: what counts is the figure of their twins.
    const QImage figure = QIcon(QString(file).remove("_dark").remove("DARK_")).pixmap(kSize, kSize).toImage();
    const auto isDrawn = [&](QPoint at) { return figure.pixelColor(at).alphaF() > 0.5; };
    const auto isSeen = [&](QPoint at) { return contrast(shown.pixelColor(at), ground) >= kReadable; };
    const Figure drawn([&](QPoint at) { return isNear(at, isDrawn); });
    const Figure seen([&](QPoint at) { return isNear(at, isSeen); });
    return seen.area() / drawn.area();
}

using Icons = ModuleTest;

TEST_F(Icons, AreChosenByTheThemeThatIsSet) {
    const auto put = [](const VrexVariant& theme) {
        vrexConfig()->setValue(kHxConfigUser, L"COLORTHEME", theme);
    };
    const auto expectByKind = [](const char* what) {
        EXPECT_FALSE(usesLightIcons(true)) << what;
        EXPECT_TRUE(usesLightIcons(false)) << what;
    };
    expectByKind("nothing is set");
    put(VrexVariant(std::int32_t(0)));
    expectByKind("dark");
    put(VrexVariant(std::int32_t(7)));
    expectByKind("something else");
    put(VrexVariant(std::int32_t(1)));
    EXPECT_TRUE(usesLightIcons(true));
    EXPECT_TRUE(usesLightIcons(false));
}

/// The dialog has the light icons in the dark theme, too.
TEST_F(Icons, StandOutInBothThemes) {
    const QStringList files =
        QDir(":/KvLayerManager")
            .entryList({"image_*", "IDR_TOOLBAR_*", "IDR_TREE_*", "IDR_LSTATE_*", "IDB_*"}, QDir::Files);
    ASSERT_GE(files.size(), 60);
    for (const bool isDark : {false, true}) {
        for (const QColor& ground : {themeColors(isDark).window, themeColors(isDark).base}) {
            for (const QString& file : files) {
                EXPECT_GE(shareSeen(":/KvLayerManager/" + file, ground), 0.8)
                    << file.toStdString() << " on " << ground.name().toStdString();
            }
        }
    }
}

TEST_F(Icons, ThoseOfDisabledButtonsLookDifferent) {
    for (const char* const name : {"CREATE", "DEL", "CURRENT"}) {
        for (const QString& form : {QString(), QString("DARK_")}) {
            const auto picture = [&](const QString& kind) {
                return QIcon(":/KvLayerManager/IDR_TOOLBAR_LAYER_" + kind + form + name)
                    .pixmap(kSize, kSize)
                    .toImage();
            };
            const QImage enabled = picture("");
            const QImage disabled = picture("DISABLE_");
            int colored = 0;
            int grey = 0;
            for (int at = 0; at < kSize * kSize; ++at) {
                const QPoint point(at % kSize, at / kSize);
                if (disabled.pixelColor(point).alphaF() < 0.5) continue;
                EXPECT_LT(disabled.pixelColor(point).saturationF(), 0.25) << name;
                (enabled.pixelColor(point).saturationF() > 0.4 ? colored : grey) += 1;
            }
            EXPECT_GT(colored, (colored + grey) / 5) << name;
        }
    }
}

}  // namespace
}  // namespace korvex::test
