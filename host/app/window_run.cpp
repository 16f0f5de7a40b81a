// Makes the workbench and takes it down.
#include "host/app/window_run.h"

#include "host/editor/editor.h"
#include "host/ui/script/script_driver.h"
#include "host/ui/script/ui_commands.h"
#include "host/ui/standard/standard_commands.h"
#include "host/ui/workbench/main_window.h"
#include "host/ui/workbench/workbench.h"
#include "sdk/hxdialog.h"

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
