// The program korvex.
#include "host/app/session.h"
#include "host/ui/workbench/host_application.h"

#include <clocale>
#include <cstdio>

namespace {

constexpr char kVersion[] = "1.0";

/// No display that windows could be shown on.
bool hasNoDisplay() {
    return qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") &&
           qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

/// Qt's own messages. Users have no use for those about a bare machine without a folder for session files,
/// and about what windows cannot do that are not on a screen.
void showQtMessage(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type != QtDebugMsg && !message.startsWith("QStandardPaths: XDG_RUNTIME_DIR") &&
        !message.startsWith("This plugin does not support")) {
        korvex::printError(message);
    }
}

}  // namespace

int main(int argc, char** argv) {
    QStringList arguments;
    for (int i = 0; i < argc; ++i) {
        arguments << QString::fromUtf8(argv[i]);
    }
    korvex::Options options;
    QString error;
    if (!korvex::readOptions(arguments, options, error)) {
        korvex::printError(error);
        return 1;
    }
    if (options.help || options.version) {
        const QCoreApplication application(argc, argv);
        const QString text = options.help ? korvex::helpText() : QString("korvex %1\n").arg(kVersion);
        std::fputs(text.toUtf8().constData(), stdout);
        return 0;
    }
    if (!options.headless && hasNoDisplay()) {
        korvex::printError("there is no display: running without windows (--headless)");
        options.headless = true;
    }
    if (options.headless) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    } else {
        QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
        QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    }
    qInstallMessageHandler(showQtMessage);
    korvex::HostApplication application(argc, argv);
    QApplication::setApplicationName("korvex");
    QApplication::setApplicationVersion(kVersion);
    // Numbers are written with a point, whatever the user's language.
    std::setlocale(LC_NUMERIC, "C");
    return korvex::runSession(options);
}
