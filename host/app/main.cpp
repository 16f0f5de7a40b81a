// The program korvex.
#include "host/app/session.h"

#include <QApplication>

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
    if (options.headless || hasNoDisplay()) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    qInstallMessageHandler(showQtMessage);
    QApplication application(argc, argv);
    QApplication::setApplicationName("korvex");
    // Numbers are written with a point, whatever the user's language.
    std::setlocale(LC_NUMERIC, "C");
    if (!options.headless) {
        korvex::printError("this build has no workbench window: running without one (--headless)");
    }
    return korvex::runSession(options);
}
