// Makes the workbench and takes it down.
#include "host/app/window_run.h"

#include "host/base/dynamic_linker.h"
#include "host/base/text.h"
#include "host/editor/editor.h"
#include "host/ui/script/script_driver.h"
#include "host/ui/script/ui_commands.h"
#include "host/ui/standard/standard_commands.h"
#include "host/ui/workbench/main_window.h"
#include "host/ui/workbench/ui_settings.h"
#include "host/ui/workbench/workbench.h"
#include "sdk/hxdialog.h"
#include "sdk/hxui.h"

#include <QCoreApplication>
#include <QTimer>

namespace korvex {

WindowRun::WindowRun(bool headless) : m_headless(headless) {
    startUiCommands();
    startStandardCommands();
    setUnattended(headless);
    setMainWindowMaker([this] { return make(); });
    if (!headless) {
        make()->show();
        setMainWindowMaker([this] { return m_workbench.get(); });
    }
}

WindowRun::~WindowRun() {
    if (m_workbench) {
        m_workbench->keepPlacement();
    }
    setMainWindowMaker(nullptr);
}

namespace {

/// By what a module answers for its palette; null for one that has none.
IVrexPalettePropManager* paletteOf(const wchar_t* module) {
    using Getter = IVrexPalettePropManager* (*)();
    const auto get = reinterpret_cast<Getter>(dynamicLinker().functionOf(module, "GetCuixManager"));
    return get ? get() : nullptr;
}

template <class Use>
void forEachPalette(Use use) {
    for (int i = 0; i < dynamicLinker().moduleCount(); ++i) {
        const CStdStr<wchar_t> module = dynamicLinker().moduleName(i);
        if (IVrexPalettePropManager* palette = paletteOf(module.c_str())) {
            use("Palette." + toQString(module).toUtf8(), *palette);
        }
    }
}

}  // namespace

/// Where it stood the module keeps itself, when it is asked.
void WindowRun::keepPalettes() const {
    if (m_headless) {
        return;
    }
    forEachPalette([](const QByteArray& setting, IVrexPalettePropManager& palette) {
        int visible = 0;
        int rest[7] = {};
        palette.GetPaletteProperties(visible, rest[0], rest[1], rest[2], rest[3], rest[4], rest[5], rest[6]);
        keepUiSetting(setting.constData(), visible ? "1" : "0");
    });
}

void WindowRun::restorePalettes() {
    if (m_headless) {
        return;
    }
    forEachPalette([](const QByteArray& setting, IVrexPalettePropManager& palette) {
        if (uiSetting(setting.constData()) == "1") {
            palette.SetPaletteProperties(1, 0, 0, 0, 0, 0, 0, 0, 0);
        }
    });
}

Workbench* WindowRun::make() {
    m_workbench =
        std::make_unique<Workbench>(m_headless ? Workbench::Placement::fixed : Workbench::Placement::kept);
    if (m_headless) {
        m_workbench->show();
        // Whoever asked may take a picture at once.
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    }
    return m_workbench.get();
}

void WindowRun::letUserAnswer() {
    if (m_headless) {
        return;
    }
    editor().input().append(m_workbench->makeSource());
    QObject::connect(&m_workbench->dialogue(), &Dialogue::asked, m_workbench.get(), [this] {
        if (m_workbench->dialogue().request() && !m_troubles.isEmpty()) {
            QTimer::singleShot(0, m_workbench.get(), [this] { showTroubles(); });
        }
    });
}

void WindowRun::showTroubles() {
    const QString text = m_troubles.join("\n\n");
    m_troubles.clear();
    if (!text.isEmpty()) {
        hxuiMessageBox(m_workbench.get(), text.toStdWString().c_str(), nullptr, MB_OK | MB_ICONWARNING);
    }
}

}  // namespace korvex
