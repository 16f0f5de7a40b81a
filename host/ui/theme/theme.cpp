// Applies a theme to the application and follows the system variable.
#include "host/ui/theme/theme.h"

#include "host/base/dynamic_linker.h"
#include "host/db/kernel/text_fold.h"
#include "host/editor/system_variables.h"
#include "host/ui/theme/theme_colors.h"
#include "host/ui/theme/theme_style.h"
#include "sdk/hxed.h"
#include "sdk/hxui.h"

#include <QApplication>
#include <QPointer>
#include <QToolTip>

#include <algorithm>
#include <vector>

namespace korvex {

namespace {

constexpr int kDesktopPoints = 9;
constexpr wchar_t kVariable[] = L"COLORTHEME";
constexpr char kModuleFunction[] = "VrexUpdateLayerMgrUIStyle";

bool wantsDark() { return integerVariable(kVariable) == 0; }

/// What the palette does not say.
QString styleSheet(const ThemeColors& colors) {
    return QString("QToolTip { color: %1; background-color: %2; border: 1px solid %3; padding: 2px; }")
        .arg(colors.toolTipText.name(), colors.toolTip.name(), colors.border.name());
}

/// Modules paint some things by the theme themselves.
void tellModules() {
    const HxRxDynamicLinker& linker = dynamicLinker();
    for (int i = 0; i < linker.moduleCount(); ++i) {
        using Function = void (*)();
        if (void* function = linker.functionOf(linker.moduleName(i).c_str(), kModuleFunction)) {
            reinterpret_cast<Function>(function)();
        }
    }
}

class Theme : public HxEditorReactor {
public:
    void start() {
        if (!m_isStarted) {
            m_isStarted = true;
            hxedEditor()->addReactor(this);
            QApplication::setStyle(new ThemeStyle);
            if (QGuiApplication::platformName() == "offscreen") {
                // It has a font of its own, far larger than a desktop's.
                QFont font = QApplication::font();
                font.setPointSize(kDesktopPoints);
                QApplication::setFont(font);
            }
            apply(wantsDark());
        }
    }
    bool isStarted() const { return m_isStarted; }
    bool isDark() const { return m_isDark; }

    void dress(QWidget* widget) {
        m_dressed.erase(std::remove(m_dressed.begin(), m_dressed.end(), nullptr), m_dressed.end());
        if (std::find(m_dressed.begin(), m_dressed.end(), widget) == m_dressed.end()) {
            m_dressed.emplace_back(widget);
        }
        widget->setPalette(QApplication::palette());
        widget->setFont(QApplication::font());
    }

    void sysVarChanged(const wchar_t* name, bool success) override {
        if (success && equalNames(name, kVariable) && wantsDark() != m_isDark) {
            apply(wantsDark());
            tellModules();
        }
    }

private:
    void apply(bool dark) {
        m_isDark = dark;
        const ThemeColors& colors = korvex::themeColors(dark);
        const QPalette palette = themePalette(colors);
        QApplication::setPalette(palette);
        QToolTip::setPalette(palette);
        qApp->setStyleSheet(styleSheet(colors));
        for (const QPointer<QWidget>& widget : m_dressed) {
            if (widget) {
                widget->setPalette(palette);
            }
        }
    }

    bool m_isStarted = false;
    bool m_isDark = true;
    std::vector<QPointer<QWidget>> m_dressed;  ///< by hxuiApplyStyle
};

/// Lives as long as the process: the editor may tell it of changes until the end.
Theme& theme() {
    static auto* const kTheme = new Theme;
    return *kTheme;
}

}  // namespace

void startTheme() { theme().start(); }

bool isDark() { return theme().isStarted() ? theme().isDark() : wantsDark(); }

const ThemeColors& themeColors() { return themeColors(isDark()); }

}  // namespace korvex

bool hxuiIsDarkTheme() { return korvex::isDark(); }

void hxuiApplyStyle(QWidget* widget) {
    if (widget) {
        korvex::startTheme();
        korvex::theme().dress(widget);
    }
}
