// Runs the program's work from the first module to the last drawing.
#include "host/app/session.h"

#include "host/app/window_run.h"
#include "host/base/dynamic_linker.h"
#include "host/base/log.h"
#include "host/editor/command_processor.h"
#include "host/editor/documents.h"
#include "host/editor/editor.h"
#include "host/ui/docking/idle_notifier.h"

#include <QCoreApplication>
#include <QDir>
#include <QEvent>
#include <QFileInfo>
#include <QTextStream>

#include <cstdio>

namespace korvex {

namespace {

constexpr char kLayerModule[] = "KvLayerManager.hrx";

void printText(std::FILE* to, const QString& text) {
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), to);
    std::fflush(to);
}

QString toQt(std::wstring_view text) {
    return QString::fromWCharArray(text.data(), static_cast<int>(text.size()));
}

HxRxDynamicLinker& linker() { return *HxRxDynamicLinker::cast(hxrxSysRegistry()->at(L"DynamicLinker")); }

/// The layer manager's file; empty when it is not beside the program.
QString layerModule() {
    for (const char* folder : {".", "../module"}) {
        const QString path =
            QDir(QCoreApplication::applicationDirPath()).filePath(QString(folder) + "/" + kLayerModule);
        if (QFileInfo::exists(path)) {
            return QDir::cleanPath(path);
        }
    }
    return {};
}

bool loadModule(const QString& path, WindowRun& windows) {
    CStdStr<wchar_t> error;
    if (linker().loadModule(path.toStdWString().c_str(), &error) == Hx::eOk) {
        return true;
    }
    printError(toQt(error));
    windows.tell(toQt(error));
    return false;
}

bool loadModules(const Options& options, WindowRun& windows) {
    bool good = true;
    const QString layers = layerModule();
    if (layers.isEmpty()) {
        printError(QString("%1 is neither beside the program nor in ../module: LAYER and its kin are missing")
                       .arg(kLayerModule));
    } else {
        good = loadModule(layers, windows);
    }
    for (const QString& path : options.modules) {
        good = loadModule(path, windows) && good;
    }
    return good;
}

bool openFiles(const QStringList& files, WindowRun& windows) {
    bool good = true;
    DocumentManager& documents = editor().documents();
    for (const QString& file : files) {
        HxApDocument* document = nullptr;
        CStdStr<wchar_t> error;
        if (documents.openDocument(file.toStdWString().c_str(), document, &error) != Hx::eOk) {
            printError(file + ": " + toQt(error));
            windows.tell(file + ": " + toQt(error));
            good = false;
        }
    }
    if (documents.documentCount() > 0) {
        documents.activateDocument(documents.all().front());
    } else if (files.isEmpty() || !windows.isHeadless()) {
        documents.newDocument();
    }
    return good;
}

std::unique_ptr<ScriptSource> sourceOf(const ScriptToRun& script, int number, std::wstring& error) {
    if (script.isFile && script.text != "-") {
        return openScript(script.text.toStdWString(), error);
    }
    ScriptOptions options;
    QString text = script.text;
    if (script.isFile) {
        QTextStream in(stdin);
        in.setCodec("UTF-8");
        text = in.readAll();
        options.comments = true;
        options.name = L"standard input";
    } else {
        options.name = L"-c " + std::to_wstring(number);
    }
    return std::make_unique<ScriptSource>(text.toStdWString(), options);
}

bool queueScripts(const std::vector<ScriptToRun>& scripts, WindowRun& windows) {
    bool good = true;
    int strings = 0;
    for (const ScriptToRun& script : scripts) {
        std::wstring error;
        std::unique_ptr<ScriptSource> source = sourceOf(script, script.isFile ? 0 : ++strings, error);
        if (source) {
            editor().input().append(std::move(source));
        } else {
            printError(script.text + ": the script can not be read: " + toQt(error));
            windows.tell(script.text + ": the script can not be read: " + toQt(error));
            good = false;
        }
    }
    return good;
}

/// Tells of changes that are lost, closes the drawings, and takes the modules out, the last one first.
void takeDown() {
    DocumentManager& documents = editor().documents();
    for (Document* document : documents.all()) {
        if (document->database()->isModified()) {
            printError(QString("note: the changes to \"%1\" were not saved").arg(toQt(document->docTitle())));
        }
        documents.closeDocument(document);
    }
    for (int i = linker().moduleCount() - 1; i >= 0; --i) {
        linker().unloadModule(linker().moduleName(i).c_str());
    }
    quitModules();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

}  // namespace

void printError(const QString& text) { printText(stderr, "korvex: " + text + "\n"); }

namespace {

/// Where the dialogue, failures and the log go. In a window the dialogue has its place there.
void prepare(Editor& host, bool headless) {
    if (headless) {
        host.console().setWriter([](std::wstring_view text) { printText(stdout, toQt(text)); });
    }
    host.console().setFailureWriter([&host](std::wstring_view text) {
        if (!host.input().isInteractive()) {
            printError(toQt(text));
        }
    });
    setLogHook([&host, headless](Severity severity, const std::wstring& message) {
        printError((severity == Severity::Note ? "note: " : "") + toQt(message));
        if (!headless && severity == Severity::Warning) {
            host.console().message(message);
        }
    });
    host.setIdleHandler([&host] {
        if (!host.input().isInteractive()) {
            QCoreApplication::processEvents();
            IdleNotifier::notifyAll();
        }
    });
}

}  // namespace

int runSession(const Options& options) {
    Editor& host = editor();
    prepare(host, options.headless);
    WindowRun windows(options.headless);
    // A window stays for the user, whatever went wrong; headless nothing is run on half a start.
    bool good = loadModules(options, windows);
    good = (good || !options.headless) && openFiles(options.files, windows) && good;
    good = (good || !options.headless) && queueScripts(options.scripts, windows) && good;
    if (good || !options.headless) {
        windows.letUserAnswer();
        windows.restorePalettes();
        host.processor().runAll();
        windows.keepPalettes();
    }
    good = good && (!options.headless || host.console().failures() == 0);
    takeDown();
    return good ? 0 : 1;
}

}  // namespace korvex
