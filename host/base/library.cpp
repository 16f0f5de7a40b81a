// Opens and closes shared libraries and looks after the list of open ones.
#include "host/base/library.h"

#include "host/base/log.h"
#include "host/base/meta_types.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <dlfcn.h>
#include <link.h>
#include <memory>

namespace korvex {
namespace {

std::vector<std::unique_ptr<HxModule>>& openLibraries() {
    static auto& libraries = *new std::vector<std::unique_ptr<HxModule>>;  // modules may ask until the end
    return libraries;
}

std::unique_ptr<HxModule> takeOut(HxModule* library) {
    auto& all = openLibraries();
    const auto found =
        std::find_if(all.begin(), all.end(), [&](const auto& one) { return one.get() == library; });
    std::unique_ptr<HxModule> taken = std::move(*found);
    all.erase(found);
    return taken;
}

}  // namespace

QString programFile() { return QFile::symLinkTarget("/proc/self/exe"); }

QStringList searchFolders() {
    QStringList folders = qEnvironmentVariable("KORVEX_MODULE_PATH").split(':', Qt::SkipEmptyParts);
    const QDir program(QFileInfo(programFile()).path());
    folders << program.path() << QDir::cleanPath(program.filePath("../module"));
    return folders;
}

QString findLibrary(const QString& name, const QStringList& folders) {
    if (name.contains('/')) {
        return QFileInfo(name).isFile() ? QFileInfo(name).canonicalFilePath() : QString();
    }
    for (const QString& folder : folders) {
        const QFileInfo file(QDir(folder), name);
        if (!name.isEmpty() && file.isFile()) {
            return file.canonicalFilePath();
        }
    }
    return {};
}

HxModule* openLibrary(const QString& path, std::wstring& reason) {
    void* const handle = dlopen(QFile::encodeName(path).constData(), RTLD_NOW | RTLD_LOCAL);
    if (!handle) {
        const char* const error = dlerror();
        reason = fromUtf8(error ? error : "unknown reason");
        return nullptr;
    }
    auto library = std::make_unique<HxModule>();
    library->path = path;
    library->handle = handle;
    link_map* map = nullptr;
    dlinfo(handle, RTLD_DI_LINKMAP, &map);
    library->map = map;
    openLibraries().push_back(std::move(library));
    return openLibraries().back().get();
}

void closeLibrary(HxModule* library) {
    const std::unique_ptr<HxModule> owned = takeOut(library);
    const auto& all = openLibraries();
    const bool isLast =
        std::none_of(all.begin(), all.end(), [&](const auto& other) { return other->map == library->map; });
    const QByteArray path = QFile::encodeName(library->path);
    if (isLast && !unregisterMetaTypes(library->map)) {
        dlopen(path.constData(), RTLD_NOW | RTLD_NOLOAD | RTLD_NODELETE);
    }
    dlclose(library->handle);
    void* const still = isLast ? dlopen(path.constData(), RTLD_NOW | RTLD_NOLOAD) : nullptr;
    if (still) {
        dlclose(still);
        log(Severity::Note, L"The code of " + quotedPath(library->path) +
                                L" stays in memory: something of it is still in use, or it was built without "
                                L"-fno-gnu-unique.");
    }
}

bool isLibrary(const HxModule* library) {
    const auto& all = openLibraries();
    return std::any_of(all.begin(), all.end(), [&](const auto& one) { return one.get() == library; });
}

HxModule* resourceLibraryOf(const QString& path) {
    const auto& all = openLibraries();
    const auto found = std::find_if(
        all.begin(), all.end(), [&](const auto& one) { return one->path == path && !one->loadedBy.empty(); });
    return found == all.end() ? nullptr : found->get();
}

std::vector<HxModule*> allLibraries() {
    std::vector<HxModule*> all;
    for (const auto& library : openLibraries()) {
        all.push_back(library.get());
    }
    return all;
}

void* exportOf(const HxModule& library, const char* name) {
    void* const address = dlsym(library.handle, name);
    return address && libraryAt(address) == library.map ? address : nullptr;
}

const link_map* libraryAt(const void* address) {
    Dl_info info;
    link_map* map = nullptr;
    return dladdr1(address, &info, reinterpret_cast<void**>(&map), RTLD_DL_LINKMAP) != 0 ? map : nullptr;
}

QString fileOf(const link_map* library) {
    const QString name = library ? QFile::decodeName(library->l_name) : QString();
    return name.isEmpty() ? programFile() : name;
}

}  // namespace korvex
