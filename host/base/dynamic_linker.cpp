// Loads modules step by step, each step with its way back, and unloads them without leaving a trace.
#include "host/base/dynamic_linker.h"

#include "host/base/library.h"
#include "host/base/log.h"
#include "host/base/resource_library.h"
#include "sdk/hxconfig.h"
#include "sdk/hxmodule.h"

#include <QApplication>
#include <QFileInfo>
#include <QPointer>
#include <QWidget>

#include <algorithm>
#include <cstring>
#include <memory>

namespace korvex {
namespace {

/// A module from the start of loading to the end of unloading. Its address is the packet of its messages.
struct Module {
    std::wstring name;
    HxModule* library = nullptr;
    HxEntryPoint entryPoint = nullptr;
    HxDllMain dllMain = nullptr;  ///< may be null
    bool isBusy = false;          ///< being loaded or unloaded
    bool isPrepared = false;
    bool isMdiAware = false;
    bool isLocked = true;
};

/// What went wrong, for the caller of the linker.
struct Outcome {
    Hx::ErrorStatus status = Hx::eOk;
    std::wstring error;
};

std::vector<CodeWatch>& codeWatches() {
    static auto& watches = *new std::vector<CodeWatch>;
    return watches;
}

std::wstring whyInUse(const link_map* library) {
    for (const CodeWatch& watch : codeWatches()) {
        std::wstring why = watch.whyInUse(library);
        if (!why.empty()) {
            return why;
        }
    }
    return {};
}

/// Widgets whose class lies in the library; they would outlive their code.
void deleteWidgetsOf(const link_map* library) {
    if (!qobject_cast<QApplication*>(QCoreApplication::instance())) {
        return;
    }
    std::vector<QPointer<QWidget>> left;
    for (QWidget* widget : QApplication::allWidgets()) {
        const void* functions = nullptr;
        std::memcpy(&functions, static_cast<const void*>(widget), sizeof functions);
        if (libraryAt(functions) == library) {
            left.emplace_back(widget);
        }
    }
    for (const QPointer<QWidget>& widget : left) {
        delete widget.data();
    }
}

/// Deletes the objects that hang on the library's code, and takes back what it loaded.
void clearAway(HxModule* library) {
    if (QCoreApplication::instance()) {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    deleteWidgetsOf(library->map);  // also those that an outer event loop was to delete
    for (const CodeWatch& watch : codeWatches()) {
        watch.leaves(library->map);
    }
    freeResourcesOf(library->map);
}

/// Sends a message; false, with a reason, unless the module answers kRetOK.
bool send(Module& module, HxAppMessage message, std::wstring& reason) {
    try {
        const int answer = module.entryPoint(message, &module);
        reason = L"it answers with " + std::to_wstring(answer);
        return answer == kRetOK;
    } catch (const HxErrorStatusException& error) {
        reason = Hx::errorText(error.status());
    } catch (const std::exception& error) {
        reason = fromUtf8(error.what());
    } catch (...) {
        reason = L"it throws an exception";
    }
    return false;
}

void detach(Module& module) {
    if (module.dllMain) {
        module.dllMain(module.library, kProcessDetach, nullptr);
    }
}

/// Takes an initialised module, or one that failed at it, out of memory.
void takeOutOfMemory(Module& module) {
    clearAway(module.library);
    detach(module);
    closeLibrary(module.library);
}

class DynamicLinker : public HxRxDynamicLinker {
public:
    Hx::ErrorStatus loadModule(const wchar_t* path, CStdStr<wchar_t>* error) override {
        return report(load(viewOf(path)), error);
    }
    Hx::ErrorStatus unloadModule(const wchar_t* name, CStdStr<wchar_t>* error) override {
        return report(unload(viewOf(name)), error);
    }
    bool isModuleLoaded(const wchar_t* name) const override { return find(m_modules, viewOf(name)); }
    int moduleCount() const override { return static_cast<int>(m_modules.size()); }
    CStdStr<wchar_t> moduleName(int at) const override { return isPosition(at) ? modules(at).name : L""; }
    CStdStr<wchar_t> modulePath(int at) const override {
        return isPosition(at) ? toWide(modules(at).library->path) : L"";
    }
    void* functionOf(const wchar_t* name, const char* function) const override;

    Hx::ErrorStatus prepareApp(void* packet) override {
        Module* const module = ofPacket(packet);
        if (module) {
            module->isPrepared = true;
        }
        return module ? Hx::eOk : Hx::eInvalidInput;
    }
    Hx::ErrorStatus registerAppMDIAware(void* packet) override {
        return mark(packet, &Module::isMdiAware, true);
    }
    Hx::ErrorStatus unlockApplication(void* packet) override {
        return mark(packet, &Module::isLocked, false);
    }
    Hx::ErrorStatus lockApplication(void* packet) override { return mark(packet, &Module::isLocked, true); }
    bool isAppMDIAware(const wchar_t* name) const override {
        const Module* const module = find(m_modules, viewOf(name));
        return module && module->isMdiAware;
    }
    bool isApplicationLocked(const wchar_t* name) const override {
        const Module* const module = find(m_modules, viewOf(name));
        return module && module->isLocked;
    }

    void quit();

private:
    using Modules = std::vector<std::unique_ptr<Module>>;

    Outcome load(std::wstring_view path);
    Outcome open(const QString& file);
    Outcome initialise(std::unique_ptr<Module> owned);
    Outcome unload(std::wstring_view name);

    static Hx::ErrorStatus report(const Outcome& outcome, CStdStr<wchar_t>* error) {
        if (error) {
            *error = outcome.error;
        }
        return outcome.status;
    }
    static Module* find(const Modules& modules, std::wstring_view name) {
        const std::wstring wanted = foldCase(name);
        const auto found = std::find_if(modules.begin(), modules.end(),
                                        [&](const auto& one) { return foldCase(one->name) == wanted; });
        return found == modules.end() ? nullptr : found->get();
    }
    static std::unique_ptr<Module> takeOut(Modules& modules, const Module* module) {
        const auto found = std::find_if(modules.begin(), modules.end(),
                                        [&](const auto& one) { return one.get() == module; });
        std::unique_ptr<Module> taken = std::move(*found);
        modules.erase(found);
        return taken;
    }
    Module* ofPacket(const void* packet) const {
        for (const Modules* modules : {&m_modules, &m_loading}) {
            for (const auto& module : *modules) {
                if (module.get() == packet) {
                    return module.get();
                }
            }
        }
        return nullptr;
    }
    Hx::ErrorStatus mark(void* packet, bool Module::*what, bool value) {
        Module* const module = ofPacket(packet);
        if (!module || !module->isPrepared) {
            return module ? Hx::eInvalidContext : Hx::eInvalidInput;
        }
        module->*what = value;
        return Hx::eOk;
    }
    bool isPosition(int at) const { return at >= 0 && at < moduleCount(); }
    const Module& modules(int at) const { return *m_modules[static_cast<std::size_t>(at)]; }

    Modules m_modules;
    Modules m_loading;
};

Outcome DynamicLinker::load(std::wstring_view path) {
    const QString given = toQString(path);
    const QStringList folders = searchFolders();
    const QString file = findLibrary(given, folders);
    if (file.isEmpty()) {
        const std::wstring places =
            given.contains('/') ? L"." : L" in " + toWide(folders.join(", ")) + L". Give the full path.";
        return {Hx::eFileNotFound, L"There is no module file " + quotedPath(given) + places};
    }
    const std::wstring name = toWide(QFileInfo(file).fileName());
    if (find(m_modules, name) || find(m_loading, name)) {
        return {Hx::eDuplicateKey, L"The module \"" + name + L"\" is loaded already. Unload it first."};
    }
    return open(file);
}

Outcome DynamicLinker::open(const QString& file) {
    std::wstring reason;
    HxModule* const library = openLibrary(file, reason);
    if (!library) {
        return {Hx::eFileAccessErr, quotedPath(file) + L" is no library that can be loaded: " + reason +
                                        L". Install the module again."};
    }
    auto module = std::make_unique<Module>();
    module->name = toWide(QFileInfo(file).fileName());
    module->library = library;
    module->entryPoint = reinterpret_cast<HxEntryPoint>(exportOf(*library, "hxrxEntryPoint"));
    module->dllMain = reinterpret_cast<HxDllMain>(exportOf(*library, "DllMain"));
    const auto version = reinterpret_cast<HxGetApiVersion>(exportOf(*library, "hxrxGetApiVersion"));
    if (!module->entryPoint || !version) {
        const wchar_t* const missing = module->entryPoint ? L"hxrxGetApiVersion" : L"hxrxEntryPoint";
        closeLibrary(library);
        return {Hx::eNotApplicable, quotedPath(file) + L" is no module: it exports no " + missing + L"."};
    }
    const std::uint32_t year = version() >> 16U;
    if (year != kHxApiVersion >> 16U) {
        closeLibrary(library);
        return {Hx::eNotApplicable, quotedPath(file) + L" was made for version " + std::to_wstring(year) +
                                        L" of the interface, this program has version " +
                                        std::to_wstring(kHxApiVersion >> 16U) +
                                        L". Install the module that belongs to it."};
    }
    return initialise(std::move(module));
}

Outcome DynamicLinker::initialise(std::unique_ptr<Module> owned) {
    Module& module = *owned;
    m_loading.push_back(std::move(owned));
    module.isBusy = true;
    std::wstring reason = L"its DllMain refuses";
    const bool attached = !module.dllMain || module.dllMain(module.library, kProcessAttach, nullptr) != 0;
    const bool good = attached && send(module, kInitAppMsg, reason);
    std::unique_ptr<Module> taken = takeOut(m_loading, &module);
    module.isBusy = false;
    if (good) {
        m_modules.push_back(std::move(taken));
        return {};
    }
    const std::wstring path = quotedPath(module.library->path);
    if (attached) {
        takeOutOfMemory(module);
    } else {
        closeLibrary(module.library);
    }
    return {Hx::eRefused, path + L" could not be initialised: " + reason +
                              L". Look for an earlier message, or install the module again."};
}

Outcome DynamicLinker::unload(std::wstring_view name) {
    const std::wstring shown = L"The module \"" + std::wstring(name) + L"\" ";
    Module* const module = find(m_modules, name);
    if ((module && module->isBusy) || find(m_loading, name)) {
        return {Hx::eInvalidContext, shown + L"is being loaded or unloaded. Try again when that is done."};
    }
    if (!module) {
        return {Hx::eKeyNotFound, shown + L"is not loaded."};
    }
    if (module->isLocked) {
        return {Hx::eRefused, shown + L"stays loaded until the program ends."};
    }
    const std::wstring why = whyInUse(module->library->map);
    if (!why.empty()) {
        return {Hx::eRefused, shown + L"is in use: " + why};
    }
    module->isBusy = true;
    std::wstring reason;
    const bool good = send(*module, kUnloadAppMsg, reason);
    module->isBusy = false;
    if (!good) {
        return {Hx::eRefused, shown + L"refuses to be unloaded: " + reason + L"."};
    }
    const std::unique_ptr<Module> taken = takeOut(m_modules, module);
    takeOutOfMemory(*taken);
    return {};
}

void* DynamicLinker::functionOf(const wchar_t* name, const char* function) const {
    if (!function) {
        return nullptr;
    }
    for (const auto& module : m_modules) {
        const bool isAsked = !name || module.get() == find(m_modules, name);
        void* const found = isAsked ? exportOf(*module->library, function) : nullptr;
        if (found) {
            return found;
        }
    }
    return nullptr;
}

void DynamicLinker::quit() {
    while (!m_modules.empty()) {
        const std::unique_ptr<Module> module = takeOut(m_modules, m_modules.back().get());
        std::wstring reason;
        if (!send(*module, kQuitMsg, reason)) {
            log(Severity::Warning,
                L"The module \"" + module->name + L"\" failed at the end: " + reason + L".");
        }
        detach(*module);
    }
}

DynamicLinker& linker() {
    static auto& only = *new DynamicLinker;
    return only;
}

}  // namespace

HxRxDynamicLinker& dynamicLinker() { return linker(); }

void quitModules() { linker().quit(); }

void addCodeWatch(CodeWatch watch) { codeWatches().push_back(std::move(watch)); }

}  // namespace korvex
