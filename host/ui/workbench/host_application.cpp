// Keeps exceptions out of Qt's event loops.
#include "host/ui/workbench/host_application.h"

#include "host/editor/editor.h"
#include "sdk/hxconfig.h"

namespace korvex {

HostApplication::HostApplication(int& count, char** arguments) : QApplication(count, arguments) {
    // The command processor decides when the program ends, and dialogs come and go without a window.
    setQuitOnLastWindowClosed(false);
}

bool HostApplication::notify(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (const HxErrorStatusException& error) {
        editor().failure(L"Something went wrong in a window: " + std::wstring(Hx::errorText(error.status())) +
                         L".");
    } catch (const std::exception& error) {
        editor().failure(L"Something went wrong in a window: " +
                         QString::fromLocal8Bit(error.what()).toStdWString() + L".");
    }
    return true;
}

}  // namespace korvex
