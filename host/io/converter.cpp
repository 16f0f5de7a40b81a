// Runs the converter of compressed drawings.
#include "host/io/converter.h"

#include "host/base/progress.h"
#include "host/base/text.h"
#include "sdk/hxconfig.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

namespace korvex {

namespace {

constexpr const char* kVariable = "KORVEX_DWG_CONVERTER";
constexpr const wchar_t* kSetting = L"Drawings\\DwgConverter";
constexpr const wchar_t* kDefault = L"dwg2dxf";
constexpr int kStartLimit = 10000;  // milliseconds

/// Program and arguments, with the files in their places.
QStringList commandLine(const QString& command, const QString& in, const QString& out) {
    QStringList parts = QProcess::splitCommand(command);
    if (!command.contains(QStringLiteral("{in}"))) {
        parts << QStringLiteral("-o") << QStringLiteral("{out}") << QStringLiteral("{in}");
    }
    for (QString& part : parts) {
        part = part == QStringLiteral("{in}") ? in : part == QStringLiteral("{out}") ? out : part;
    }
    return parts;
}

/// The last line that the program wrote to its error output, for the message.
std::wstring lastWords(QProcess& process) {
    const QString text = QString::fromLocal8Bit(process.readAllStandardError()).trimmed();
    const QString line = text.mid(text.lastIndexOf(QLatin1Char('\n')) + 1).left(200);
    return line.isEmpty() ? L"" : L" It says: " + toWide(line);
}

/// Until the program ends or the limit is reached. False when the user gives up.
bool waitFor(QProcess& process, std::chrono::milliseconds limit) {
    constexpr long long kPatience = 50;  // milliseconds between two looks at the user
    ProgressScope progress(L"Converting the drawing", 0);
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < limit.count()) {
        if (!progress.step(clock.elapsed())) {
            return false;
        }
        const bool hasFinished =
            process.waitForFinished(static_cast<int>(std::min<long long>(kPatience, limit.count())));
        if (hasFinished || process.state() == QProcess::NotRunning) {
            return true;
        }
    }
    return true;
}

/// What went wrong in running the program; empty when nothing did.
std::wstring run(QProcess& process, const QStringList& command, std::chrono::milliseconds limit,
                 bool& isCancelled) {
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.start(command.front(), command.mid(1));
    if (!process.waitForStarted(kStartLimit)) {
        return L"it cannot be started: " + toWide(process.errorString()) + L".";
    }
    isCancelled = !waitFor(process, limit);
    if (process.state() != QProcess::NotRunning) {
        process.kill();
        process.waitForFinished(kStartLimit);
        return L"it did not finish within " + std::to_wstring(limit.count() / 1000) + L" seconds.";
    }
    if (process.exitStatus() == QProcess::CrashExit) {
        return L"it crashed." + lastWords(process);
    }
    return L"";
}

}  // namespace

bool isCompressedDrawing(std::string_view bytes) {
    constexpr std::string_view kStarts[] = {"AC10", "AC1.", "AC2."};
    for (std::string_view start : kStarts) {
        if (bytes.substr(0, start.size()) == start) {
            return true;
        }
    }
    return false;
}

std::wstring converterCommand() {
    const QString fromEnvironment = qEnvironmentVariable(kVariable);
    if (!fromEnvironment.isEmpty()) {
        return toWide(fromEnvironment);
    }
    VrexVariant setting;
    KorvexConfig* config = vrexConfig();
    if (config && config->getValue(kHxConfigUser, kSetting, setting) == 0 && *setting.asString()) {
        return setting.asString();
    }
    return kDefault;
}

Hx::ErrorStatus convertDrawing(const std::wstring& path, std::string& bytes, std::wstring& error,
                               std::chrono::milliseconds limit) {
    const QTemporaryDir folder;
    const QString out = folder.filePath(QStringLiteral("converted.dxf"));
    const QStringList command =
        commandLine(toQString(converterCommand()), QFileInfo(toQString(path)).absoluteFilePath(), out);
    const std::wstring drawing =
        L"\"" + path + L"\" is a compressed drawing, which only a converter can read";
    const std::wstring remedy =
        L" Save the drawing with group codes (DXF) where it was made, or name another "
        L"converter in the environment variable KORVEX_DWG_CONVERTER.";
    if (command.isEmpty() || QStandardPaths::findExecutable(command.front()).isEmpty()) {
        const std::wstring name = command.isEmpty() ? L"" : toWide(command.front());
        error = drawing + L"; there is no program \"" + name + L"\". Install it." + remedy;
        return Hx::eFilerError;
    }
    QProcess process;
    bool isCancelled = false;
    std::wstring reason =
        folder.isValid() ? run(process, command, limit, isCancelled) : L"there is no folder for its result.";
    if (isCancelled) {
        error = L"cancelled";
        return Hx::eCancelled;
    }
    QFile result(out);
    if (reason.empty() && !(result.open(QIODevice::ReadOnly) && result.size() > 0)) {
        reason = L"it wrote no drawing (exit status " + std::to_wstring(process.exitCode()) + L")." +
                 lastWords(process);
    }
    if (!reason.empty()) {
        error = drawing + L"; the converter \"" + toWide(command.front()) + L"\" failed: " + reason + remedy;
        return Hx::eFilerError;
    }
    bytes = result.readAll().toStdString();
    error.clear();
    return Hx::eOk;
}

}  // namespace korvex
